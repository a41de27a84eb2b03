// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FolderLock.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>

#ifdef Q_OS_WIN
#include <qt_windows.h>
#else
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#endif

namespace tessaranth {

namespace {

constexpr int patience = 10'000; ///< milliseconds
constexpr int pause = 2;

/// Until `attempt` answers true; false when it did not within the time.
template<typename Attempt>
bool insist(const Attempt& attempt) {
    QElapsedTimer timer;
    timer.start();
    while (!attempt()) {
        if (timer.elapsed() > patience)
            return false;
        QThread::msleep(pause);
    }
    return true;
}

} // namespace

#ifdef Q_OS_WIN

FolderLock::FolderLock(const QString& folder) {
    const QString name = QDir::toNativeSeparators(folder + QStringLiteral("/tessaranth-write.lock"));
    m_free = insist([&] {
        HANDLE handle = CreateFileW(reinterpret_cast<const wchar_t*>(name.utf16()), GENERIC_WRITE, 0, nullptr,
                                    OPEN_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE | FILE_ATTRIBUTE_HIDDEN, nullptr);
        const DWORD error = GetLastError();
        if (handle != INVALID_HANDLE_VALUE)
            m_handle = handle;
        return m_handle || (error != ERROR_SHARING_VIOLATION && error != ERROR_DELETE_PENDING);
    });
}

FolderLock::~FolderLock() {
    if (m_handle)
        CloseHandle(m_handle);
}

#else

FolderLock::FolderLock(const QString& folder)
    : m_handle(::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (m_handle >= 0)
        m_free = insist([this] {
            return ::flock(m_handle, LOCK_EX | LOCK_NB) == 0 || (errno != EWOULDBLOCK && errno != EINTR);
        });
}

FolderLock::~FolderLock() {
    if (m_handle >= 0)
        ::close(m_handle);
}

#endif

} // namespace tessaranth
