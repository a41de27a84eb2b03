// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace tessaranth {

/// Measures the program on a catalog and prints a table in Markdown, each figure beside what the bare SQLite
/// library needs for the same on the same file. Figures are medians of `repeat` warm runs. The catalog is
/// worked on as a copy in `folder`, an application folder with the shipped companion files.
int runBench(const QString& catalog, const QString& folder, int repeat);

} // namespace tessaranth
