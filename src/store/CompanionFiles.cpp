// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/CompanionFiles.h"

#include "platform/Errors.h"
#include "store/KeyNamesFile.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("CompanionFiles", text); }

const char* const names[] = {"tsrthres.dll", "tsrcps.dll", "tsrpfr.dll", "WKeys.dat"};

constexpr qint64 endSize = 64; // bytes looked at, at either end

/// The form that rcc writes: "qres", version, offsets of tree, data and names, all big-endian; the tree comes
/// last and consists of nodes of 22 bytes (since version 2).
bool isResourceLibrary(QFile& file) {
    const QByteArray head = file.read(endSize);
    if (head.size() < 24 || !head.startsWith("qres"))
        return false;
    const qint64 tree = qFromBigEndian<quint32>(head.constData() + 8);
    return tree < file.size() && (file.size() - tree) % 22 == 0;
}

bool isRecordSet(QFile& file) {
    const QByteArray head = file.read(endSize);
    file.seek(qMax<qint64>(0, file.size() - endSize));
    return (head.startsWith("<?xml") || head.startsWith("<xml")) &&
           file.readAll().trimmed().endsWith("</xml>");
}

} // namespace

std::span<const char* const> companionFiles() { return names; }

QString companionDamage(const QString& path) {
    const QString name = QFileInfo(path).fileName();
    if (name == QLatin1String("WKeys.dat")) {
        try {
            readKeyNames(path);
            return {};
        } catch (const FileError& error) {
            return error.reason();
        }
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return tr("%1 cannot be read: %2").arg(path, file.errorString());
    const bool sound = name == QLatin1String("tsrthres.dll") ? isResourceLibrary(file) : isRecordSet(file);
    return sound ? QString() : tr("The file %1 is damaged. Install the program again.").arg(path);
}

} // namespace tessaranth
