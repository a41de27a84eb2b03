// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/CatalogFault.h"

namespace tessaranth {

class Session;

/// What can be wrong between the catalog and the files of its pictures, documents and logos, for
/// CatalogCheck: missing, empty, unreadable, or without a row. Mending never deletes a file.
CatalogFaults fileFaults(Session& session);

} // namespace tessaranth
