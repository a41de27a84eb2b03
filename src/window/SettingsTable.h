// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace tessaranth {

/// One setting as the settings window shows it. The table has all of them but the colours, page by page.
struct SettingRow {
    enum class Type { Flag, Text, Number, Colour, Folder, File, Choice, Password };
    QString page;
    QString caption; ///< with its mnemonic
    QString section; ///< of the configuration file
    QString key;
    Type type = Type::Text;
    int least = 0; ///< of a number; the words of a choice stand in `choices`
    int most = 0;
    QStringList choices;  ///< what is stored
    QStringList captions; ///< how it is called, in the same order
    QString hint;         ///< shown below, may be empty
};

const std::vector<SettingRow>& settingRows();

/// What the configured text means when it is empty or unreadable, such as a number out of its range.
QString settingOr(const SettingRow& row, const QString& stored);
/// Why a value cannot be stored; empty when it can. Folders and files are looked for on the disk.
QString settingFault(const SettingRow& row, const QString& value);

/// Moves the files of one data folder into another that exists; nothing is replaced there. The number moved,
/// or -1 with a reason when one could not be: those already moved are then back in their place.
int moveDataFiles(const QString& from, const QString& to, QString& reason);

} // namespace tessaranth
