// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/forms/RecordingsPanel.h"

#include "items/CardRecordings.h"
#include "items/OpenCards.h"

namespace tessaranth {

RecordingsPanel::RecordingsPanel(const CardContext& context, QWidget* parent)
    : CardListPanel(context, QStringLiteral("lvRec"), tr("On recordings"), parent) {
    addMenuCommand(
        QStringLiteral("mnuCardRecGoto"), tr("&Go to card"), QStringLiteral("GoToCard"),
        [this] { open(selected().front()); }, [this] { return hasOne(); });
    addMenuCommand(QStringLiteral("mnuCardRecRefresh"), tr("Re&fresh"), QStringLiteral("Refresh"),
                   [this] { load(); });
}

bool RecordingsPanel::read(ItemList& list) {
    return readCardRecordings(m_context.session, m_context.code, m_context.id, list);
}

void RecordingsPanel::open(qint64 id) { m_context.cards.openCard(QStringLiteral("Rec"), id); }

} // namespace tessaranth
