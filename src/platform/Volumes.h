// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace tessaranth {

/// The volume that holds a file. `type` is "Fixed", "Removable", "CD-ROM", "Remote", "RAM disk" or
/// "Unknown".
struct Volume {
    QString name; ///< its label, or where it is mounted when it has none
    QString type;
};

/// Of the volume that holds a file, or that would hold it: the file need not exist.
Volume volumeOf(const QString& fileName);

/// The type word for a file system of Linux; `isRemovable` is unknown for what is no block device.
QString volumeType(const QByteArray& fileSystem, std::optional<bool> isRemovable);

/// What kind of file it is, in words of the system, for example "MP3 audio".
QString fileTypeName(const QString& fileName);

} // namespace tessaranth
