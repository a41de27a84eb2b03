// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Programs.h"
#include "web/BrowserSearch.h"

namespace tessaranth {

class CardWindows;
class Desktop;
class Session;

/// The commands that lead out of the program: to others that the system has, and to the web.
class OutsideCommands {
public:
    OutsideCommands(Session& session, const CardWindows& cards) : m_session(session), m_cards(cards) {}

    void start(Program program);
    /// Looks for the item of the active card.
    void search(WebSearch kind);
    void openSite();

private:
    void open(const QUrl& url);

    Session& m_session;
    const CardWindows& m_cards;
};

} // namespace tessaranth
