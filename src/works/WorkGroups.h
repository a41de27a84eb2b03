// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/NameTable.h"

namespace tessaranth {

class Session;

/// What the work editor groups a composer's works by: his main works and his own genres. An operation that
/// fails reports it through the session's messages.
class WorkGroups {
public:
    enum Kind { MainWorks, Genres };
    using Group = NameTable::Row;

    WorkGroups(Session& session, qint64 composer) : m_session(session), m_composer(composer) {}

    std::vector<Group> groups(Kind kind); ///< by name
    /// Asks for a name and adds it: its key, or 0 when cancelled or refused.
    qint64 add(Kind kind);
    /// The same with a name that is known already; one that the composer has is refused.
    qint64 addNamed(Kind kind, const QString& name);
    qint64 find(Kind kind, const QString& name); ///< 0 when there is none

private:
    Session& m_session;
    qint64 m_composer;
};

} // namespace tessaranth
