// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace tessaranth {

class Clock;
class Messages;
class Progress;

/// Writes the sample collection (data/sample) as a new catalog. The file appears whole or not at all. Throws
/// FileError when it exists already or cannot be written, or when the sample's tables do not fit together.
/// The key names are read from WKeys.dat in the application folder.
void writeSampleCatalog(const QString& path, const QString& applicationFolder, const Clock& clock,
                        Progress& progress);

} // namespace tessaranth
