// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/KeyNamesFile.h"

#include "platform/Errors.h"

#include <QCoreApplication>
#include <QFile>
#include <QLocale>
#include <QSaveFile>

namespace tessaranth {

std::vector<KeyNameLine> readKeyNames(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw FileError(
            QCoreApplication::translate("KeyNames", "%1 cannot be read: %2").arg(path, file.errorString()));
    std::vector<KeyNameLine> lines;
    const QStringList texts = QString::fromUtf8(file.readAll()).split(QStringLiteral("\r\n"));
    for (const QString& text : texts) {
        const KeyNameLine line{text.section(u';', 0, 0).toInt(), text.section(u';', 1, 1).toInt(),
                               text.section(u';', 2).trimmed()};
        if (line.language > 0 && line.key > 0 && !line.name.isEmpty())
            lines.push_back(line);
    }
    return lines;
}

void writeKeyNames(const QString& path, const std::vector<KeyNameLine>& lines) {
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly)) {
        for (const KeyNameLine& line : lines)
            file.write(
                QStringLiteral("%1;%2;%3\r\n").arg(line.language).arg(line.key).arg(line.name).toUtf8());
        if (file.commit())
            return;
    }
    throw FileError(
        QCoreApplication::translate("KeyNames", "%1 cannot be written: %2").arg(path, file.errorString()));
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
