// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
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

/// The drives that a path can begin with: "C:" and the like, or where file systems are mounted, without those
/// that the kernel keeps for itself. No trailing separator, save for the root.
QStringList driveNames();

/// The drive at the beginning of a path of any system: its letter and colon, or the place where the file
/// system is mounted or, now that it is not, was probably mounted. Empty for other paths.
QString driveOf(const QString& path);

/// True for the drive itself and for what lies on it, whatever the letter case.
bool isBelow(const QString& path, const QString& drive);

/// What kind of file it is, in words of the system, for example "MP3 audio".
QString fileTypeName(const QString& fileName);

} // namespace tessaranth
