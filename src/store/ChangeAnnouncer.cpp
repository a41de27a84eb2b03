// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/ChangeAnnouncer.h"

#include <QTimer>
#include <memory>

namespace tessaranth {

void ChangeAnnouncer::announce(const CatalogChanges& changes) {
    if (!changes.isEmpty())
        Q_EMIT committed(changes);
}

void ChangeAnnouncer::subscribe(QObject* owner, Listener listener) {
    // Empty while nothing waits to be told.
    auto waiting = std::make_shared<CatalogChanges>();
    connect(this, &ChangeAnnouncer::committed, owner,
            [owner, waiting, listener](const CatalogChanges& changes) {
                const bool isFirst = waiting->isEmpty();
                waiting->add(changes);
                // What was added and removed again within one event leaves nothing to tell, yet the call is
                // on its way.
                if (isFirst)
                    QTimer::singleShot(0, owner, [waiting, listener] {
                        const CatalogChanges told = std::exchange(*waiting, {});
                        if (!told.isEmpty())
                            listener(told);
                    });
            });
}

} // namespace tessaranth
