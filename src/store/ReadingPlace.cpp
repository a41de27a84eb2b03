// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/ReadingPlace.h"

#include "platform/Errors.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace tessaranth {

namespace {

bool canBeWritten(const QFileInfo& catalog) {
    // A file marked read-only stays untouched even where the system would let us write it, as for root.
    constexpr QFile::Permissions anyWrite = QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
    return catalog.isWritable() && (catalog.permissions() & anyWrite) &&
           QFileInfo(catalog.absolutePath()).isWritable() &&
           (QFileInfo(catalog.absolutePath()).permissions() & anyWrite);
}

} // namespace

ReadingPlace ReadingPlace::of(const QString& catalog) {
    if (canBeWritten(QFileInfo(catalog)))
        return {Way::InPlace, catalog, {}};
    const QStringList logs{QStringLiteral("-wal"), QStringLiteral("-journal")};
    bool hasLog = false;
    for (const QString& log : logs)
        hasLog = hasLog || QFileInfo(catalog + log).size() > 0;
    if (!hasLog)
        return {Way::Immutable, catalog, {}};
    auto folder = std::make_shared<QTemporaryDir>();
    const QString copy = folder->filePath(QStringLiteral("catalog.tsb"));
    for (const QString& part : QStringList{QString()} + logs) {
        if (!part.isEmpty() && !QFileInfo::exists(catalog + part))
            continue;
        QFile source(catalog + part);
        if (!folder->isValid() || !source.copy(copy + part))
            throw FileError(
                QCoreApplication::translate("Connection", "%1 cannot be copied in order to be read: %2")
                    .arg(catalog + part, source.errorString()));
        QFile::setPermissions(copy + part, QFile::ReadOwner | QFile::WriteOwner);
    }
    return {Way::Copy, copy, folder};
}

} // namespace tessaranth
