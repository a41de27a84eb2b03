// SPDX-License-Identifier: GPL-3.0-or-later
#include "recordings/forms/WorksPanel.h"

#include "items/CardOwner.h"
#include "items/OpenCards.h"
#include "recordings/forms/frmRecList.h"
#include "store/Session.h"
#include "widgets/CardColours.h"
#include "works/CWKS.h"
#include "works/forms/frmCatalog.h"
#include "works/forms/frmWorkEditor.h"

#include <QTreeView>

namespace tessaranth {

namespace {
const QString workCode = QStringLiteral("Comp");
} // namespace

WorksPanel::WorksPanel(const CardContext& context, QWidget* parent)
    : ListPanel(context,
                {QStringLiteral("lvComp"), QStringLiteral("Title"), tr("Works"),
                 tr("No works yet.\nPress Ins to add one, or import them into the composer's catalog.")},
                parent) {
    const auto one = [this] { return hasOne(); };
    // ShowWorkAsCard
    addEntry(
        QStringLiteral("mnuCardCompManageShow"), tr("&Show work card"), {},
        [this] { m_context.cards.openCard(workCode, theOne()); }, one);
    addEntry(QStringLiteral("mnuCardCompManageAdd"), tr("&New work..."), QStringLiteral("Ins"),
             [this] { New_Work(); });
    addEntry(
        QStringLiteral("mnuCardCompManageEdit"), tr("&Edit work..."), QStringLiteral("F2"),
        [this] { Edit_Work(theOne()); }, one);
    addEntry(
        QStringLiteral("mnuCardCompManageRemove"), tr("&Remove work(s)..."), QStringLiteral("Del"),
        [this] { Remove_Work(); }, [this] { return hasSome(); });
    addEntry(
        QStringLiteral("mnuCardCompManageOnRec"), tr("On rec&ordings..."), {}, [this] { listRecordings(); },
        one);
    addEntry(QStringLiteral("mnuCardCompManageCatalog"), tr("&Catalog..."), {}, [this] { Manage_Catalog(); });
    addEntry(QStringLiteral("mnuCardCompManageRefresh"), tr("Re&fresh"), QStringLiteral("F5"),
             [this] { load(); });
    setDefaultCommand(QStringLiteral("mnuCardCompManageShow"));
    load();
}

// The list of works has a colour of its own.
void WorksPanel::paint() {
    const Configuration& configuration = m_context.session.configuration();
    const QColor back = CardColours::read(configuration, m_context.code).back;
    QPalette colours;
    for (const auto group : {QPalette::Active, QPalette::Inactive})
        colours.setColor(group, QPalette::Text,
                         readableOn(configuration.colour(QStringLiteral("WksFC")), back));
    view()->setPalette(colours);
}

bool WorksPanel::readList(ItemList& list) {
    paint();
    return CWKS(m_context.session).ElencoInLvC(m_context.id, list);
}

void WorksPanel::Edit_Work(qint64 work) {
    const CardOwner edited = work == 0 ? CardOwner{m_context.code, m_context.id} : CardOwner{workCode, work};
    if (!edited.require(m_context.session))
        return load();
    frmWorkEditor editor(m_context, m_context.id, work, window());
    if (editor.exec() != QDialog::Accepted)
        return;
    load();
    m_context.cards.reloadCard(OpenCards::key(workCode, editor.workId()));
}

void WorksPanel::Remove_Work() {
    const std::vector<qint64> works = selected();
    CWKS manager(m_context.session);
    manager.setOpenCards(&m_context.cards);
    if (works.size() == 1 ? manager.EliminaWork(works.front()) : manager.EliminaWorkBatch(works))
        load();
}

void WorksPanel::listRecordings() {
    const qint64 work = theOne();
    const QString name = CWKS(m_context.session).work(work).title;
    frmRecList(m_context, work, name, &m_context.cards, window()).exec();
}

void WorksPanel::Manage_Catalog() {
    frmCatalog(m_context, m_context.id, &m_context.cards, window()).exec();
    load();
}

} // namespace tessaranth
