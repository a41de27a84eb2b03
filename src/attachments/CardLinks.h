// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/CardOwner.h"
#include "store/ItemList.h"

#include <vector>

namespace tessaranth {

class Session;

struct WebLink {
    qint64 id = 0; ///< 0 for a new one
    QString url;
    QString alias; ///< what is shown in its place
};

/// The web links of a card. An operation that fails reports it through the session's messages and answers
/// false.
class CardLinks {
public:
    CardLinks(Session& session, CardOwner card) : m_session(session), m_card(std::move(card)) {}

    bool LoadWeb(ItemList& list); ///< by alias
    WebLink link(qint64 id);      ///< an empty one (id 0) when there is none; throws SqlError
    /// Adds a link, or changes the one whose id is given; a new one gets its id. Without an alias the
    /// address is shown. Refused without an address or with an alias too long.
    bool save(WebLink& link);
    bool Remove_Web(const std::vector<qint64>& ids); ///< asks

    /// Opens the link. One that is no address of the web, of a file server or of a mailbox can do anything
    /// on this computer: it is shown as text, and opened only when the user says so.
    bool OpenWeb(qint64 id);

private:
    Session& m_session;
    CardOwner m_card;
};

} // namespace tessaranth
