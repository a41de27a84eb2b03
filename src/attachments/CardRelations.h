// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/CardOwner.h"
#include "store/ItemList.h"

#include <QSet>
#include <vector>

namespace tessaranth {

class Session;

/// Relations between custom cards on one side and composers, performers and recordings on the other, seen
/// from a card of either side. An operation that fails reports it through the session's messages and
/// answers false.
class CardRelations {
public:
    CardRelations(Session& session, CardOwner card) : m_session(session), m_card(std::move(card)) {}

    struct Related {
        CardOwner card;
        QString name;
        /// Tells it apart in a list, where ids of cards of different kinds are alike.
        qint64 row() const;
    };
    /// Composers, performers, recordings, each by name; or the custom cards by name.
    bool LoadRelations(std::vector<Related>& related);
    /// One row for each, with its `row()` as the id.
    static ItemList list(const std::vector<Related>& related);

    /// The kinds (1 to 4) that this card can be related to.
    std::vector<int> kinds() const;
    /// Ids of the related cards of one of these kinds. Throws SqlError.
    QSet<qint64> related(int kind);
    /// Relates this card to some cards of a kind, and ends its relation to others, in one transaction. What
    /// is as wished already, and a card that is gone, is passed over.
    bool change(int kind, const QSet<qint64>& add, const QSet<qint64>& remove);

private:
    bool isCustom() const;
    QString rowsOf(int kind) const;

    Session& m_session;
    CardOwner m_card;
};

} // namespace tessaranth
