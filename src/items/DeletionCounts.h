// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <vector>

namespace tessaranth {

class Connection;

/// What goes with items that are about to be deleted and what else loses something, as the end of the
/// question:
/// "\n\nDeleted too: 22 works, 1 picture\nChanged: 9 recordings". Empty when nothing hangs off them. `code`
/// is that of an item kind, "Comp" for works, or the table of a composer's genres or main works. Throws
/// SqlError.
QString deletionCounts(Connection& connection, const QString& code, const std::vector<qint64>& ids);

/// The end of a question about selected rows: "\n\nSelected: 3"; empty for one.
QString selectedCount(size_t rows);

} // namespace tessaranth
