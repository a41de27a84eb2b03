// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <span>

namespace tessaranth {

/// Names of the files that must stand beside the program, in the order in which start-up looks for them.
std::span<const char* const> companionFiles();

/// Why the companion file at `path` cannot be used, in a sentence for the user; empty for a sound one. The
/// archives are looked at from both ends only: reading them whole would cost every start more than opening
/// the catalog.
QString companionDamage(const QString& path);

} // namespace tessaranth
