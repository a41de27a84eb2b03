// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileWriter.h"

#include "platform/Errors.h"
#include "platform/FileReader.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QRegularExpression>

#ifdef Q_OS_WIN
#include <io.h>
#include <qt_windows.h>
#else
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

// QSaveFile is not used: it keeps small data in a buffer, and its commit() overlooks that writing the buffer
// failed, so that a full disk leaves an empty file and says nothing; and it syncs neither file nor folder.

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("Files", text); }

constexpr qsizetype bufferSize = 1 << 16;
/// Long names must leave room for what is added.
constexpr qsizetype keptOfName = 50;
const QLatin1String suffix(".tsrpart");
const char* const companions[] = {"-wal", "-shm", "-journal"};

[[noreturn]] void refuse(const QString& path, const QString& reason) {
    throw FileError(tr("%1 cannot be written: %2").arg(QDir::toNativeSeparators(path), reason));
}

/// Where a link leads in the end, which need not exist.
QString targetOf(const QString& path) {
    QString target = path;
    for (int links = 0; links < 40 && QFileInfo(target).isSymLink(); ++links)
        target = QFileInfo(target).symLinkTarget();
    return target;
}

QString temporaryName(const QString& target) {
    const QFileInfo info(target);
    const auto number = QRandomGenerator::system()->generate();
    return QStringLiteral("%1/%2.%3")
               .arg(info.path(), info.fileName().left(keptOfName))
               .arg(number, 8, 16, QLatin1Char('0')) +
           suffix;
}

#ifdef Q_OS_WIN

QString lastError() { return systemReason(int(GetLastError())); }
const wchar_t* wide(const QString& path) { return reinterpret_cast<const wchar_t*>(path.utf16()); }

// A file that is open cannot be removed there: that is the hold.
bool hold(const QFile&) { return true; }
bool removeUnheld(const QString& path) { return QFile::remove(path); }

bool sync(const QFile& file) { return FlushFileBuffers(HANDLE(_get_osfhandle(file.handle()))); }
void syncFolder(const QString&) {}

bool rename(QFile& file, const QString& to, Existing existing) {
    const QString from = file.fileName();
    file.close();
    return MoveFileExW(wide(from), wide(to),
                       MOVEFILE_WRITE_THROUGH |
                           (existing == Existing::Replace ? MOVEFILE_REPLACE_EXISTING : 0));
}

bool isOtherDisk() { return GetLastError() == ERROR_NOT_SAME_DEVICE; }

#else

QString lastError() { return systemReason(errno); }

/// Tells the start of another process that this file is being written. False when such a start was quicker
/// and has removed it.
bool hold(const QFile& file) {
    struct stat status {};
    ::flock(file.handle(), LOCK_EX);
    return ::fstat(file.handle(), &status) == 0 && status.st_nlink > 0;
}

bool removeUnheld(const QString& path) {
    const QByteArray name = QFile::encodeName(path);
    const int handle = ::open(name.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    // Removed before the lock is given back, or the writer that takes it next would lose its file.
    const bool removed =
        handle >= 0 && ::flock(handle, LOCK_EX | LOCK_NB) == 0 && ::unlink(name.constData()) == 0;
    if (handle >= 0)
        ::close(handle);
    return removed;
}

bool sync(const QFile& file) { return ::fsync(file.handle()) == 0; }

// What is written stands by now; a file system that syncs no folders changes nothing about that.
void syncFolder(const QString& folder) {
    const int handle = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0)
        return;
    ::fsync(handle);
    ::close(handle);
}

/// A second name and the end of the first: nothing is replaced, whoever else is at work.
bool renameToFree(const QByteArray& from, const QByteArray& to) {
#ifdef RENAME_NOREPLACE
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0)
        return true;
    if (errno != EINVAL && errno != ENOSYS)
        return false;
#endif
    return ::link(from.constData(), to.constData()) == 0 && ::unlink(from.constData()) == 0;
}

bool rename(const QFile& file, const QString& to, Existing existing) {
    const QByteArray from = QFile::encodeName(file.fileName());
    const QByteArray target = QFile::encodeName(to);
    return existing == Existing::Refuse ? renameToFree(from, target)
                                        : ::rename(from.constData(), target.constData()) == 0;
}

bool isOtherDisk() { return errno == EXDEV; }

#endif

/// A buffer before the file that remembers the first failure: a later write that succeeds must not hide it.
class Target final : public QIODevice {
public:
    explicit Target(QFile& file) : m_file(file) { open(QIODevice::WriteOnly | QIODevice::Unbuffered); }

    bool isSequential() const override { return true; }
    const QString& failure() const { return m_failure; }

    bool flush() {
        const char* data = m_buffer.constData();
        for (qint64 left = m_buffer.size(); left > 0 && m_failure.isEmpty();) {
            const qint64 written = m_file.write(data, left);
            if (written <= 0)
                m_failure = reasonOf(m_file);
            data += written;
            left -= written;
        }
        m_buffer.clear();
        if (!m_failure.isEmpty())
            setErrorString(m_failure);
        return m_failure.isEmpty();
    }

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char* data, qint64 size) override {
        m_buffer.append(data, size);
        return m_buffer.size() < bufferSize || flush() ? size : -1;
    }

private:
    QFile& m_file;
    QByteArray m_buffer;
    QString m_failure;
};

/// What a database library puts beside the file it is given.
void removeCompanions(const QString& path) {
    for (const char* companion : companions)
        QFile::remove(path + QLatin1String(companion));
}

} // namespace

struct FileWriter::Impl {
    Impl(const QString& target, Existing found) : path(target), existing(found) {}

    QString path; ///< where the file will stand
    Existing existing;
    QFile file;
    std::unique_ptr<Target> target;
    bool isDone = false;
};

FileWriter::FileWriter(const QString& path, Existing existing)
    : m_impl(std::make_unique<Impl>(targetOf(path), existing)) {
    const QFileInfo before(m_impl->path);
    if (before.isDir())
        refuse(path, tr("it is a folder"));
    if (before.exists() && !before.isFile())
        refuse(path, tr("it is no file"));
    if (before.exists() && existing == Existing::Refuse)
        refuse(path, tr("it exists already"));
    if (before.exists() && !before.isWritable())
        refuse(path, tr("permission denied"));
    QFile& file = m_impl->file;
    do {
        file.close();
        file.setFileName(temporaryName(m_impl->path));
        if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered))
            refuse(path, reasonOf(file));
    } while (!hold(file));
    if (before.exists())
        file.setPermissions(before.permissions());
    m_impl->target = std::make_unique<Target>(file);
}

FileWriter::~FileWriter() {
    if (m_impl->isDone)
        return;
    m_impl->file.close();
    QFile::remove(temporaryPath());
    removeCompanions(temporaryPath());
}

QIODevice& FileWriter::device() { return *m_impl->target; }

void FileWriter::write(QByteArrayView bytes) {
    if (m_impl->target->write(bytes.data(), bytes.size()) != bytes.size())
        refuse(m_impl->path, m_impl->target->failure());
}

void FileWriter::setTime(const QDateTime& modified) {
    if (m_impl->target->flush())
        m_impl->file.setFileTime(modified, QFileDevice::FileModificationTime);
}

QString FileWriter::temporaryPath() const { return m_impl->file.fileName(); }

void FileWriter::commit() {
    if (!m_impl->target->flush())
        refuse(m_impl->path, m_impl->target->failure());
    if (!sync(m_impl->file) || !rename(m_impl->file, m_impl->path, m_impl->existing))
        refuse(m_impl->path, lastError());
    m_impl->isDone = true;
    m_impl->file.close();
    syncFolder(QFileInfo(m_impl->path).path());
}

void writeFile(const QString& path, QByteArrayView bytes, Existing existing) {
    FileWriter file(path, existing);
    file.write(bytes);
    file.commit();
}

void copyFile(const QString& from, const QString& to, Existing existing) {
    QFile source(from);
    openToRead(source);
    FileWriter copy(to, existing);
    QByteArray block;
    while (!(block = source.read(1 << 20)).isEmpty())
        copy.write(block);
    if (source.error() != QFileDevice::NoError)
        throw FileError(tr("%1 cannot be read: %2").arg(QDir::toNativeSeparators(from), reasonOf(source)));
    copy.setTime(QFileInfo(from).lastModified());
    copy.commit();
}

void moveFile(const QString& from, const QString& to) {
    if (isTaken(to))
        refuse(to, tr("it exists already"));
    QFile source(from);
    if (rename(source, to, Existing::Refuse)) {
        syncFolder(QFileInfo(to).path());
        return;
    }
    if (!isOtherDisk())
        refuse(to, lastError());
    copyFile(from, to, Existing::Refuse);
    if (!source.remove())
        throw FileError(tr("%1 cannot be removed: %2").arg(QDir::toNativeSeparators(from), reasonOf(source)));
}

void removeLeftovers(const QString& folder) {
    static const QRegularExpression ours(
        QStringLiteral("^(.+\\.[0-9a-f]{8}\\.tsrpart)(-wal|-shm|-journal)?$"));
    QDirIterator entries(folder, {QLatin1Char('*') + suffix + QLatin1Char('*')},
                         QDir::Files | QDir::Hidden | QDir::NoSymLinks);
    while (entries.hasNext()) {
        entries.next();
        const auto match = ours.match(entries.fileName());
        const QString main = folder + u'/' + match.captured(1);
        if (match.hasMatch() && (!isTaken(main) || removeUnheld(main)))
            removeCompanions(main);
    }
}

} // namespace tessaranth
