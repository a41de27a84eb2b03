// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/forms/RecordingsPanel.h"

#include "items/CardRecordings.h"
#include "items/OpenCards.h"

namespace tessaranth {

RecordingsPanel::RecordingsPanel(const CardContext& context, QWidget* parent)
    : ListPanel(context,
                {QStringLiteral("lvRec"), QStringLiteral("Title"), tr("On recordings"),
                 tr("On no recording yet.\nArtists are put on a recording in the recording's editor.")},
                parent) {
    addEntry(
        QStringLiteral("mnuCardRecGoto"), tr("&Go to card"), {},
        [this] { m_context.cards.openCard(QStringLiteral("Rec"), theOne()); }, [this] { return hasOne(); });
    addEntry(QStringLiteral("mnuCardRecRefresh"), tr("Re&fresh"), QStringLiteral("F5"), [this] { load(); });
    setDefaultCommand(QStringLiteral("mnuCardRecGoto"));
    load();
}

bool RecordingsPanel::readList(ItemList& list) {
    return LoadRecordings(m_context.session, m_context.code, m_context.id, list);
}

} // namespace tessaranth
