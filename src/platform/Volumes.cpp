// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Volumes.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QRegularExpression>
#include <QStorageInfo>

#ifdef Q_OS_WIN
#include <qt_windows.h>
#endif

namespace tessaranth {

namespace {

/// The file itself or the nearest folder above it that exists.
QString existingPath(const QString& fileName) {
    QString path = QDir::cleanPath(QFileInfo(fileName).absoluteFilePath());
    while (!QFileInfo::exists(path)) {
        const QString parent = QFileInfo(path).path();
        if (parent == path)
            break;
        path = parent;
    }
    return path;
}

#ifdef Q_OS_WIN
QString typeOf(const QStorageInfo& storage) {
    switch (GetDriveTypeW(
        reinterpret_cast<const wchar_t*>(QDir::toNativeSeparators(storage.rootPath()).utf16()))) {
    case DRIVE_FIXED:
        return QStringLiteral("Fixed");
    case DRIVE_REMOVABLE:
        return QStringLiteral("Removable");
    case DRIVE_CDROM:
        return QStringLiteral("CD-ROM");
    case DRIVE_REMOTE:
        return QStringLiteral("Remote");
    case DRIVE_RAMDISK:
        return QStringLiteral("RAM disk");
    default:
        return QStringLiteral("Unknown");
    }
}
#else
/// The kernel keeps the flag with the disk, not with its partitions, which stand below it.
std::optional<bool> isRemovable(const QByteArray& device) {
    const QString node = QFileInfo(QString::fromUtf8(device)).canonicalFilePath();
    const QString block =
        QFileInfo(QStringLiteral("/sys/class/block/") + QFileInfo(node).fileName()).canonicalFilePath();
    if (node.isEmpty() || block.isEmpty())
        return std::nullopt;
    for (const QString& place : {block, QFileInfo(block).path()}) {
        QFile flag(place + QStringLiteral("/removable"));
        if (flag.open(QIODevice::ReadOnly))
            return flag.read(1) == "1";
    }
    return std::nullopt;
}

QString typeOf(const QStorageInfo& storage) {
    return volumeType(storage.fileSystemType(), isRemovable(storage.device()));
}
#endif

} // namespace

QString volumeType(const QByteArray& fileSystem, std::optional<bool> isRemovable) {
    static const struct {
        const char* type;
        QList<QByteArray> fileSystems;
    } words[] = {{"CD-ROM", {"iso9660", "udf", "cdfs"}},
                 {"Remote",
                  {"nfs", "nfs4", "cifs", "smb3", "smbfs", "afs", "ncpfs", "9p", "fuse.sshfs", "fuse.rclone",
                   "fuse.gvfsd-fuse", "davfs", "fuse.davfs", "ceph", "glusterfs", "fuse.glusterfs"}},
                 {"RAM disk", {"tmpfs", "ramfs"}}};
    for (const auto& word : words) {
        if (word.fileSystems.contains(fileSystem))
            return QString::fromLatin1(word.type);
    }
    if (isRemovable)
        return *isRemovable ? QStringLiteral("Removable") : QStringLiteral("Fixed");
    // Without a device of its own: what lies on a disk all the same, such as a container's layers.
    static const QList<QByteArray> onDisk{"overlay", "btrfs", "zfs", "bcachefs", "apfs", "hfs"};
    return onDisk.contains(fileSystem) ? QStringLiteral("Fixed") : QStringLiteral("Unknown");
}

Volume volumeOf(const QString& fileName) {
    if (fileName.isEmpty())
        return {QString(), QStringLiteral("Unknown")};
    const QStorageInfo storage(existingPath(fileName));
    if (!storage.isValid())
        return {QString(), QStringLiteral("Unknown")};
    return {storage.displayName(), typeOf(storage)};
}

QStringList driveNames() {
    QStringList names;
    static const QRegularExpression kernels(
        QStringLiteral("^/(proc|sys|dev|boot|snap|etc|run(?!/media/)|var/lib)(/|$)"));
    for (const QStorageInfo& storage : QStorageInfo::mountedVolumes()) {
        QString root = storage.rootPath();
        if (kernels.match(root).hasMatch())
            continue;
        if (root.size() > 1 && root.endsWith(u'/'))
            root.chop(1);
        names.push_back(root);
    }
    names.removeDuplicates();
    names.sort();
    return names;
}

QString driveOf(const QString& path) {
    // A removable disk that is away was mounted in a folder of its own below one of these.
    static const QRegularExpression known(QStringLiteral(
        "^([A-Za-z]:|/run/media/[^/]+/[^/]+|/media/[^/]+/[^/]+|/(?:mnt|media|Volumes)/[^/]+)"));
    const QRegularExpressionMatch match = known.match(path);
    if (path.startsWith(u'/')) {
        QString longest;
        for (const QString& drive : driveNames())
            if (drive.size() > longest.size() && isBelow(path, drive))
                longest = drive;
        if (longest.size() > 1)
            return longest;
        return match.hasMatch() ? match.captured(1) : QStringLiteral("/");
    }
    return match.captured(1);
}

bool isBelow(const QString& path, const QString& drive) {
    if (!path.startsWith(drive, Qt::CaseInsensitive))
        return false;
    return path.size() == drive.size() || drive.endsWith(u'/') || path[drive.size()] == u'/' ||
           path[drive.size()] == u'\\';
}

QString fileTypeName(const QString& fileName) {
    static const QMimeDatabase types;
    return types.mimeTypeForFile(fileName).comment();
}

} // namespace tessaranth
