// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/CatalogChanges.h"

#include <QObject>
#include <functional>

namespace tessaranth {

/// Tells whoever shows the catalog what was committed: every operation, undo and redo, once each. Whoever
/// reads the catalog again for it subscribes; whoever only counts or tests connects to the signal.
class ChangeAnnouncer : public QObject {
    Q_OBJECT
public:
    using Listener = std::function<void(const CatalogChanges&)>;

    /// Calls `listener` while `owner` lives, once at the end of each event in which something was committed,
    /// with all that happened in it: 1,000 operations in a loop are one call. Needs an event loop.
    void subscribe(QObject* owner, Listener listener);

    /// Called by the connection after a commit; nothing is told of empty changes.
    void announce(const CatalogChanges& changes);

Q_SIGNALS:
    /// At once, from within the operation: its caller has not gone on yet. Read nothing here.
    void committed(const tessaranth::CatalogChanges& changes);
};

} // namespace tessaranth
