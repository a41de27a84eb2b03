// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <vector>

namespace tessaranth {

/// One line of the key-name file WKeys.dat: language number, key number and name, separated by
/// semicolons; UTF-8, lines end with CR LF. Languages are numbered like the platform's primary languages:
/// German 7, English 9, French 12, Italian 16 (MS-LCID, primary language identifiers).
struct KeyNameLine {
    int language = 0;
    int key = 0;
    QString name;
};

/// Throws FileError when the file cannot be read, a line is of another form, or there is none.
std::vector<KeyNameLine> readKeyNames(const QString& path);
/// Throws FileError when the file cannot be written.
void writeKeyNames(const QString& path, const std::vector<KeyNameLine>& lines);

/// The language number of the user's interface, English where the catalog ships no names for it.
int interfaceLanguage();
constexpr int englishLanguage = 9;

} // namespace tessaranth
