// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/KeyNamesFile.h"

#include "platform/Errors.h"
#include "platform/FileReader.h"
#include "platform/FileWriter.h"

#include <QCoreApplication>
#include <QLocale>
#include <algorithm>

namespace tessaranth {

namespace {

constexpr qsizetype longestName = 50; // the width of WKeys.KeyName

bool isSound(const KeyNameLine& line) {
    const auto isBad = [](QChar c) {
        return !(c.isPrint() || c.isSurrogate()) || c == QChar::ReplacementCharacter;
    };
    return line.language > 0 && line.key > 0 && !line.name.isEmpty() && line.name.size() <= longestName &&
           std::none_of(line.name.begin(), line.name.end(), isBad);
}

} // namespace

std::vector<KeyNameLine> readKeyNames(const QString& path) {
    constexpr qint64 largest = 16 << 20;
    std::vector<KeyNameLine> lines;
    // A catalog is filled once, so a line that cannot be read would be missing from it for good.
    const QStringList texts = QString::fromUtf8(readFile(path, largest)).split(u'\n');
    if (!texts.back().isEmpty())
        throw FileError(
            QCoreApplication::translate("KeyNames", "The file %1 is damaged: its end is missing.").arg(path));
    for (qsizetype i = 0; i < texts.size(); ++i) {
        if (texts[i].trimmed().isEmpty())
            continue;
        const KeyNameLine line{texts[i].section(u';', 0, 0).toInt(), texts[i].section(u';', 1, 1).toInt(),
                               texts[i].section(u';', 2).trimmed()};
        if (!isSound(line))
            throw FileError(
                QCoreApplication::translate("KeyNames", "The file %1 is damaged: line %2 holds no key name.")
                    .arg(path)
                    .arg(i + 1));
        lines.push_back(line);
    }
    if (lines.empty())
        throw FileError(
            QCoreApplication::translate("KeyNames", "The file %1 is damaged: it holds no key names.")
                .arg(path));
    return lines;
}

void writeKeyNames(const QString& path, const std::vector<KeyNameLine>& lines) {
    QByteArray text;
    for (const KeyNameLine& line : lines)
        text += QStringLiteral("%1;%2;%3\r\n").arg(line.language).arg(line.key).arg(line.name).toUtf8();
    writeFile(path, text);
}

int interfaceLanguage() {
    switch (QLocale().language()) {
    case QLocale::German:
        return 7;
    case QLocale::French:
        return 12;
    case QLocale::Italian:
        return 16;
    default:
        return englishLanguage;
    }
}

} // namespace tessaranth
