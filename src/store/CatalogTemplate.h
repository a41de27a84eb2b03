// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/KeyNamesFile.h"

#include <QString>
#include <vector>

namespace tessaranth {

/// Writes an empty catalog of the current level: the tables and indexes of data/schema, every upgrade code
/// recorded, the names of the musical keys filled in. Replaces a file that stands there. Throws FileError.
void writeCatalogTemplate(const QString& path, const std::vector<KeyNameLine>& keyNames);
/// The same into a file that is empty so far; one that fails leaves it half done.
void fillCatalogTemplate(const QString& path, const std::vector<KeyNameLine>& keyNames);

} // namespace tessaranth
