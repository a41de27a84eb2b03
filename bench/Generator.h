// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace tessaranth {

/// Writes a synthetic catalog of any size, the same for the same seed: few composers and performers hold much
/// of it, most hold little; three titles of four hold an accent, the hardest case for sorting; labels,
/// sources and works are missing here and there as in real collections. 100,000 recordings have a million
/// tracks.
void generateCatalog(const QString& path, int recordings, quint32 seed);

} // namespace tessaranth
