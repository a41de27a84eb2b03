// SPDX-License-Identifier: GPL-3.0-or-later
#include "attachments/forms/RelationsPanel.h"

#include "attachments/forms/frmNewRelations.h"
#include "items/OpenCards.h"

namespace tessaranth {

RelationsPanel::RelationsPanel(const CardContext& context, QWidget* parent)
    : ListPanel(context,
                {QStringLiteral("lvRel"), QStringLiteral("Related to"), tr("Relationships"),
                 tr("No relationships yet.\nPress Ins to relate this card to others.")},
                parent),
      m_relations(context.session, {context.code, context.id}) {
    addEntry(
        QStringLiteral("mnuCardRelGoTo"), tr("&Open the card"), {}, [this] { GoToRelationCard(); },
        [this] { return hasOne(); });
    addEntry(QStringLiteral("mnuCardRelManage"), tr("&Manage relationships..."), QStringLiteral("Ins"),
             [this] { Manage_Relations(); });
    setDefaultCommand(QStringLiteral("mnuCardRelGoTo"));
    load();
}

bool RelationsPanel::readList(ItemList& list) {
    if (!m_relations.LoadRelations(m_related))
        return false;
    list = CardRelations::list(m_related);
    return true;
}

void RelationsPanel::Manage_Relations() {
    frmNewRelations form(m_context, {m_context.code, m_context.id}, this);
    if (form.exec() != QDialog::Accepted)
        return;
    load();
    for (const CardOwner& card : form.changedCards())
        m_context.cards.reloadCard(OpenCards::key(card.code, card.id));
}

void RelationsPanel::GoToRelationCard() {
    const qint64 row = theOne();
    for (const CardRelations::Related& one : m_related)
        if (one.row() == row)
            return m_context.cards.openCard(one.card.code, one.card.id);
}

} // namespace tessaranth
