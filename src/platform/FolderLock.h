// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace tessaranth {

/// Keeps the other processes of the program off a folder while something in it is read, changed and written
/// back. It lasts milliseconds, ends with the process however that ends, and leaves no file behind. Taken
/// twice in one process it would wait for itself.
class FolderLock {
public:
    /// Waits for another process, ten seconds at most. A folder that does not exist, or whose file system
    /// knows no locks, is not locked, and `isFree` says true: what follows meets the true reason.
    explicit FolderLock(const QString& folder);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

    /// False when another process did not let go.
    bool isFree() const { return m_free; }

private:
#ifdef Q_OS_WIN
    void* m_handle = nullptr;
#else
    int m_handle = -1;
#endif
    bool m_free = true;
};

} // namespace tessaranth
