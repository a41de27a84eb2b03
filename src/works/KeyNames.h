// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/ItemList.h"

namespace tessaranth {

class Session;

/// The names of the musical keys as the user's language has them. An operation that fails, or a name that
/// is refused, is reported through the session's messages and answered with false.
class KeyNames {
public:
    explicit KeyNames(Session& session) : m_session(session) {}

    /// The names by key; a row's id is its WKeysID.
    bool list(ItemList& list);
    /// Gives a row (by WKeysID) another name of 1 to 50 characters; the session's key list follows.
    bool rename(qint64 id, const QString& name);

private:
    Session& m_session;
};

} // namespace tessaranth
