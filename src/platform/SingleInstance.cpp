// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/SingleInstance.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QLocalServer>
#include <QLocalSocket>
#include <QLockFile>

#ifdef Q_OS_WIN
#include <qt_windows.h>
#endif

namespace tessaranth {

namespace {

constexpr int patience = 2000; ///< milliseconds for the other instance to answer

/// Folders are one whatever link leads to them; the name must be short, for it becomes a socket's path.
QString serverName(const QString& folder) {
    const QString canonical = QFileInfo(folder).canonicalFilePath();
    const QByteArray place = (canonical.isEmpty() ? QDir::cleanPath(folder) : canonical).toUtf8();
    return QStringLiteral("tessaranth-") +
           QString::fromLatin1(QCryptographicHash::hash(place, QCryptographicHash::Sha1).toHex().left(16));
}

void askToShow(const QString& name) {
#ifdef Q_OS_WIN
    // Only the process that the user has just started may give the foreground away.
    AllowSetForegroundWindow(ASFW_ANY);
#endif
    QLocalSocket socket;
    socket.connectToServer(name);
    if (socket.waitForConnected(patience))
        socket.disconnectFromServer();
}

} // namespace

struct SingleInstance::Impl {
    explicit Impl(const QString& folder)
        : lock(folder + QStringLiteral("/tessaranth.lock")), name(serverName(folder)) {
        // A session of days is no stale lock; one whose process is gone is taken over at once.
        lock.setStaleLockTime(0);
    }
    QLockFile lock;
    QString name;
    QLocalServer server;
};

SingleInstance::SingleInstance(const QString& applicationFolder)
    : m_impl(std::make_unique<Impl>(applicationFolder)) {
    QObject::connect(&m_impl->server, &QLocalServer::newConnection, &m_impl->server, [this] {
        while (QLocalSocket* socket = m_impl->server.nextPendingConnection())
            delete socket; // the connection is the message
        if (activated)
            activated();
    });
}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::acquire() {
    if (!m_impl->lock.tryLock(0)) {
        if (m_impl->lock.error() != QLockFile::LockFailedError)
            return true;
        askToShow(m_impl->name);
        return false;
    }
    // With the lock held, what answers to the name can only be left over from a process that was killed.
    QLocalServer::removeServer(m_impl->name);
    m_impl->server.setSocketOptions(QLocalServer::UserAccessOption);
    m_impl->server.listen(m_impl->name);
    return true;
}

} // namespace tessaranth
