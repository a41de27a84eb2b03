// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace tessaranth {

class OpenCards;
class Session;

/// The user's own cards.
class CustomCards {
public:
    /// `cards`: the open cards, of which the changed one is asked to reload; may be null.
    explicit CustomCards(Session& session, OpenCards* cards = nullptr) : m_session(session), m_cards(cards) {}

    /// Adds a card (id 0, which gets the new key) or gives one another title. Refused, with a message,
    /// without a title, with one too long, and with one that another card has.
    bool save(qint64& id, const QString& title);

private:
    Session& m_session;
    OpenCards* m_cards;
};

} // namespace tessaranth
