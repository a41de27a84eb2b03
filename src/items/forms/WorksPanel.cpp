// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/forms/WorksPanel.h"

#include "items/CWKS.h"
#include "items/OpenCards.h"
#include "items/forms/frmCatalog.h"
#include "items/forms/frmWorkEditor.h"
#include "store/Session.h"
#include "ui/CardColours.h"

#include <QTreeView>

namespace tessaranth {

namespace {
const QString workCode = QStringLiteral("Comp");
} // namespace

WorksPanel::WorksPanel(const CardContext& context, QWidget* parent)
    : CardListPanel(context, QStringLiteral("lvComp"), tr("Works"), parent) {
    const Configuration& configuration = context.session.configuration();
    const CardColours card = CardColours::read(configuration, context.code);
    QPalette colours = m_view->palette();
    const QColor works = readableOn(configuration.colour(QStringLiteral("WksFC")), card.back);
    for (const auto group : {QPalette::Active, QPalette::Inactive})
        colours.setColor(group, QPalette::Text, works);
    m_view->setPalette(colours);

    const auto one = [this] { return hasOne(); };
    addMenuCommand(QStringLiteral("mnuCardCompManageAdd"), tr("&New work..."), QStringLiteral("New"),
                   [this] { edit(0); });
    addMenuCommand(
        QStringLiteral("mnuCardCompManageEdit"), tr("&Edit work..."), QStringLiteral("Edit"),
        [this] { edit(selected().front()); }, one);
    addMenuCommand(
        QStringLiteral("mnuCardCompManageRemove"), tr("&Remove work(s)..."), QStringLiteral("Delete"),
        [this] { remove(); }, [this] { return hasSome(); });
    addMenuCommand(QStringLiteral("mnuCardCompManageCatalog"), tr("&Catalog..."), QStringLiteral("Catalog"),
                   [this] { manageCatalog(); });
    addMenuCommand(QStringLiteral("mnuCardCompManageRefresh"), tr("Re&fresh"), QStringLiteral("Refresh"),
                   [this] { load(); });
}

bool WorksPanel::read(ItemList& list) { return CWKS(m_context.session).ElencoInLvC(m_context.id, list); }

void WorksPanel::open(qint64 id) { m_context.cards.openCard(workCode, id); }

void WorksPanel::edit(qint64 work) {
    frmWorkEditor editor(m_context.session, m_context.icons, m_context.id, work, window());
    if (editor.exec() != QDialog::Accepted)
        return;
    load();
    m_context.cards.reloadCard(OpenCards::key(workCode, editor.workId()));
}

void WorksPanel::remove() {
    const std::vector<qint64> works = selected();
    CWKS manager(m_context.session);
    if (!(works.size() == 1 ? manager.EliminaWork(works.front()) : manager.EliminaWorkBatch(works)))
        return;
    for (const qint64 work : works)
        m_context.cards.closeCard(OpenCards::key(workCode, work));
    load();
}

void WorksPanel::manageCatalog() {
    frmCatalog(m_context.session, m_context.icons, m_context.id, window()).exec();
    load();
}

} // namespace tessaranth
