// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Loopback.h"

#include <QDir>
#include <QtGlobal>

#ifdef Q_OS_LINUX
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

namespace tessaranth {

#ifdef Q_OS_LINUX

namespace {

/// The port, in network order, where a descriptor waits for connections by TCP; 0 when it does not.
in_port_t listeningPort(int descriptor) {
    int listens = 0;
    socklen_t size = sizeof(listens);
    if (getsockopt(descriptor, SOL_SOCKET, SO_ACCEPTCONN, &listens, &size) != 0 || listens == 0)
        return 0;
    sockaddr_storage address = {};
    size = sizeof(address);
    if (getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &size) != 0)
        return 0;
    if (address.ss_family == AF_INET)
        return reinterpret_cast<const sockaddr_in&>(address).sin_port;
    return address.ss_family == AF_INET6 ? reinterpret_cast<const sockaddr_in6&>(address).sin6_port
                                         : in_port_t(0);
}

// A socket that listens cannot be bound anew, so another takes the place of its descriptor: whoever polls the
// descriptor sees no difference.
bool listenOnLoopback(int descriptor, in_port_t port) {
    const int fresh = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (fresh < 0)
        return false;
    const bool isReplaced = dup3(fresh, descriptor, O_CLOEXEC) == descriptor;
    close(fresh);
    const int yes = 1;
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = port;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return isReplaced && setsockopt(descriptor, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof(yes)) == 0 &&
           bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0 &&
           listen(descriptor, SOMAXCONN) == 0;
}

} // namespace

int confineServersToLoopback() {
    int count = 0;
    for (const QString& name : QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::Files | QDir::System)) {
        const int descriptor = name.toInt();
        const in_port_t port = listeningPort(descriptor);
        if (port == 0)
            continue;
        if (!listenOnLoopback(descriptor, port))
            return -1;
        ++count;
    }
    return count;
}

#else

int confineServersToLoopback() { return -1; }

#endif

} // namespace tessaranth
