// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/CardHeading.h"
#include "store/ItemList.h"

#include <QString>
#include <vector>

namespace tessaranth {

class Session;

/// A recording as its card shows it, area by area. An operation that fails reports it through the session's
/// messages, answers false and leaves what it was to fill as it was.
class RecordingContents {
public:
    struct Specs {
        std::vector<CardLine> lines;
        QString carrierIcon;
        QString labelName;
        QString logoFile; ///< the label's picture; empty when it has none
    };
    struct Artists {
        ItemList list; ///< composers ("c"), then performers ("p")
        int composers = 0;
        int performers = 0;
    };
    struct Works {
        ItemList list;      ///< a row's id is the work's; performers joined by " / "
        QString performers; ///< last names of everybody on the recording, on one line
    };
    struct Tracks {
        ItemList list; ///< a heading row (id 0, bold) before the first track of each disc
        int count = 0;
        int discs = 0;
    };

    RecordingContents(Session& session, qint64 recording) : m_session(session), m_id(recording) {}

    bool LoadRecSpecs(Specs& specs);
    bool LoadRecArtists(Artists& artists);
    bool LoadRecContents(Works& works);
    bool LoadRecTracks(Tracks& tracks);

private:
    QString performersOf(qint64 placedWork);

    Session& m_session;
    qint64 m_id;
};

} // namespace tessaranth
