// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/ItemList.h"

namespace tessaranth {

class Session;

/// The recordings of a composer ("Cps") or performer ("Pfr"), by title, each with its carrier's icon. False
/// when the reading failed, of which the user has been told; the list is as it was then.
bool LoadRecordings(Session& session, const QString& code, qint64 person, ItemList& list);

/// The recordings that contain a work, in the same columns.
bool readWorkRecordings(Session& session, qint64 work, ItemList& list);

} // namespace tessaranth
