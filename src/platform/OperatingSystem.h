// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace tessaranth {

/// What the platform says about its version, as in the Windows structure OSVERSIONINFO.
struct SystemVersion {
    enum class Platform { Win32s = 0, Windows9x = 1, WindowsNt = 2 };
    Platform platform = Platform::WindowsNt;
    int major = 0;
    int minor = 0;
    int build = 0;
};

/// One of "95", "95OSR2", "98", "98SE", "ME", "NT3", "NT31", "NT35", "NT351", "NT4", "2000", "XP", "VISTA"
/// and "Windows 3.x". Everything after Vista counts as "VISTA".
QString operatingSystemName(const SystemVersion& version);
/// The name of the running system; one that is no Windows counts as the newest.
QString operatingSystemName();

/// Why the program does not run on a system; empty when it does.
QString versionGateMessage(const QString& operatingSystem);

/// True when the user belongs to the machine's administrators. False on systems that do not know them.
bool isAdministrator(const QString& operatingSystem);

} // namespace tessaranth
