// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileReader.h"

#include "platform/Errors.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("Files", text); }

[[noreturn]] void refuse(const QString& path, const QString& reason) {
    throw FileError(tr("%1 cannot be read: %2").arg(QDir::toNativeSeparators(path), reason));
}

QString asReason(QString text) {
    // "No space left on device" behind a colon; an abbreviation stays as it is.
    if (text.size() > 1 && text[1].isLower())
        text[0] = text[0].toLower();
    return text;
}

#ifdef Q_OS_UNIX
/// The error of the system, 0 when it is known; the mode of what stands there.
int statusOf(const QString& path, Links links, mode_t& mode) {
    struct stat status {};
    const QByteArray name = QFile::encodeName(path);
    const int result =
        links == Links::Follow ? ::stat(name.constData(), &status) : ::lstat(name.constData(), &status);
    mode = status.st_mode;
    return result == 0 ? 0 : errno;
}

QString wordsFor(mode_t mode) {
    return S_ISDIR(mode) ? tr("it is a folder") : S_ISLNK(mode) ? tr("it is a link") : tr("it is no file");
}
#endif

} // namespace

QString systemReason(int error) { return asReason(qt_error_string(error)); }

QString reasonOf(const QFile& file) { return asReason(file.errorString()); }

#ifdef Q_OS_UNIX

bool isPlainFile(const QString& path, Links links) {
    mode_t mode = 0;
    return statusOf(path, links, mode) == 0 && S_ISREG(mode);
}

bool isTaken(const QString& path) {
    mode_t mode = 0;
    return statusOf(path, Links::Refuse, mode) == 0;
}

void openToRead(QFile& file, Links links) {
    const QString path = file.fileName();
    mode_t mode = 0;
    if (const int error = statusOf(path, links, mode))
        refuse(path, systemReason(error));
    if (!S_ISREG(mode))
        refuse(path, wordsFor(mode));
    // Asked again of what was opened: between the two another may have put something else there.
    const int flags = O_RDONLY | O_CLOEXEC | O_NONBLOCK | (links == Links::Refuse ? O_NOFOLLOW : 0);
    const int handle = ::open(QFile::encodeName(path).constData(), flags);
    if (handle < 0)
        refuse(path, systemReason(errno));
    struct stat status {};
    if (::fstat(handle, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(handle);
        refuse(path, tr("it is no file"));
    }
    if (!file.open(handle, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(handle);
        refuse(path, reasonOf(file));
    }
}

#else

bool isPlainFile(const QString& path, Links links) {
    const QFileInfo info(path);
    return info.isFile() && (links == Links::Follow || !info.isSymLink());
}

bool isTaken(const QString& path) {
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

void openToRead(QFile& file, Links links) {
    if (QFileInfo(file.fileName()).exists() && !isPlainFile(file.fileName(), links))
        refuse(file.fileName(), tr("it is no file"));
    if (!file.open(QIODevice::ReadOnly))
        refuse(file.fileName(), reasonOf(file));
}

#endif

QByteArray readFile(const QString& path, qint64 atMost, Links links) {
    QFile file(path);
    openToRead(file, links);
    if (file.size() > atMost)
        refuse(path, tr("it is larger than %1 MB").arg(atMost >> 20));
    QByteArray bytes = file.read(atMost + 1); // it may grow meanwhile
    if (file.error() != QFileDevice::NoError)
        refuse(path, reasonOf(file));
    if (bytes.size() > atMost)
        refuse(path, tr("it is larger than %1 MB").arg(atMost >> 20));
    return bytes;
}

} // namespace tessaranth
