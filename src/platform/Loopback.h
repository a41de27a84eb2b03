// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessaranth {

/// Has every TCP server of this process answer on 127.0.0.1 only, on the ports where they listen now. Made
/// for Qt's VNC plugin, which asks for no password, listens on every interface and, up to the Qt of today,
/// takes no address. Whoever has begun to connect is cut off. Returns the number of servers that answer so;
/// -1 when one could not be confined, which then answers nobody, and on a system where this cannot be done.
int confineServersToLoopback();

} // namespace tessaranth
