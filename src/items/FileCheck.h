// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

namespace tessaranth {

class Session;

/// Full paths of the picture and document files that the catalog names by their ids and that do not exist,
/// pictures first, each by id. Throws SqlError.
QStringList missingFiles(Session& session);

} // namespace tessaranth
