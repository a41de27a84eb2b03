// SPDX-License-Identifier: GPL-3.0-or-later
#include "cd/DiscDetector.h"

#include "cd/Radar.h"
#include "items/OpenCards.h"
#include "recordings/RecordingLists.h"

namespace tessaranth {

DiscDetector::DiscDetector(Session& session, Radar& radar, DiscReader& reader, OpenCards& cards,
                           QObject* parent)
    : QObject(parent), m_session(session), m_reader(reader), m_cards(cards) {
    connect(&radar, &Radar::discInserted, this, &DiscDetector::identify);
}

void DiscDetector::identify(const QString& volumeName) {
    const QString discId = m_reader.discId(volumeName);
    std::vector<qint64> recordings;
    if (discId.isEmpty() || !RecordingLists::withDisc(m_session, discId, recordings))
        return;
    for (const qint64 recording : recordings)
        m_cards.openCard(QStringLiteral("Rec"), recording);
    if (recordings.empty())
        emit unknownDisc(discId);
}

} // namespace tessaranth
