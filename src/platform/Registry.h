// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace tessaranth {

/// Records where the program stands and its version, for the user and for the machine. Windows only; a hive
/// that this user may not write is left alone.
void recordInstallation(const QString& applicationFolder, const QString& version);

/// What web requests call themselves: the user's own setting on Windows, else a fixed text.
QString userAgent();

} // namespace tessaranth
