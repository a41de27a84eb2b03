// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QString;
class QTreeView;

namespace tessaranth {

class Configuration;

/// Paints a list in the configured colours of an item kind (colour prefix "Cps", "Pfr", "Rec" or "Cus"): back
/// and fore colour for rows, the two swapped for the selection, so that it is always as readable as the rows.
void paintInItemColours(QTreeView* view, const Configuration& configuration, const QString& prefix);

} // namespace tessaranth
