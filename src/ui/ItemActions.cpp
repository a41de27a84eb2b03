// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ItemActions.h"

#include "items/CMIT.h"
#include "items/forms/frmCatalog.h"
#include "items/forms/frmListManager.h"
#include "items/forms/frmMigrate.h"
#include "items/forms/frmPers.h"
#include "items/forms/frmPersSearch.h"
#include "items/forms/frmWorkEditor.h"
#include "store/Session.h"
#include "ui/IconStore.h"
#include "ui/Toolbox.h"
#include "ui/WindowProgress.h"

#include <QAction>

namespace tessaranth {

namespace {

bool isPerson(int kind) { return kind == ItemKind::Composer || kind == ItemKind::Performer; }

} // namespace

ItemActions::ItemActions(Session& session, const IconStore& icons, Toolbox& toolbox, OpenCards& cards,
                         QWidget* window)
    : QObject(window), m_session(session), m_icons(icons), m_toolbox(toolbox), m_cards(cards),
      m_window(window) {
    add("mnuToolboxAdd", "New", tr("New"), tr("Add a new item"), "Ins", &ItemActions::createOne);
    add("mnuToolboxEdit", "Edit", tr("Edit"), tr("Edit the selected item"), "F2", &ItemActions::edit);
    add("mnuToolboxDelete", "Delete", tr("Delete"), tr("Delete the selected item(s)"), "Del",
        &ItemActions::remove);
    add("mnuToolboxMigrate", "AU", tr("Migrate"), tr("Migrate the selected item"), "", &ItemActions::merge);
    add("mnuCardCompManageCatalog", "Catalog", tr("Catalog"), tr("Manage composer catalog"), "Ctrl+K",
        &ItemActions::manageCatalog);
    add("mnuToolboxRefresh", "Refresh", tr("Refresh"), tr("Refresh list"), "F5", &ItemActions::refresh);
    add("mnuCardCompManageAdd", "Comp", tr("New work"), tr("Add new work to current composer"), "Alt+Ins",
        &ItemActions::addWork);
    m_toolbox.setActions(m_actions);
    connect(&m_toolbox, &Toolbox::selectionChanged, this, &ItemActions::enable);
    connect(&m_toolbox, &Toolbox::kindChanged, this, &ItemActions::enable);
    connect(&m_toolbox, &Toolbox::activated, this, &ItemActions::edit);
    enable();
}

QAction* ItemActions::add(const QString& key, const QString& iconKey, const QString& text, const QString& tip,
                          const QString& shortcut, void (ItemActions::*run)()) {
    auto* action = new QAction(m_icons.icon(iconKey), text, this);
    action->setObjectName(key);
    action->setToolTip(tip);
    action->setShortcut(QKeySequence(shortcut));
    action->setShortcutContext(Qt::WidgetShortcut);
    connect(action, &QAction::triggered, this, run);
    m_actions.push_back(action);
    return action;
}

void ItemActions::enable() {
    const size_t selected = m_toolbox.selectedIds().size();
    const bool person = isPerson(m_toolbox.kind());
    const bool oneComposer = m_toolbox.kind() == ItemKind::Composer && selected == 1;
    // In the order in which the actions are added.
    const bool states[] = {
        person, person && selected == 1, selected > 0, selected == 1, oneComposer, true, oneComposer};
    for (qsizetype i = 0; i < m_actions.size(); ++i)
        m_actions[i]->setEnabled(states[i]);
}

void ItemActions::create(int kind) {
    frmPers form(m_session, m_icons, kind, 0, m_window);
    if (form.exec() != QDialog::Accepted)
        return;
    m_toolbox.showKind(kind);
    m_toolbox.refresh();
    m_toolbox.select(form.id());
}

void ItemActions::manage(int kind) {
    frmListManager form(m_session, m_icons, kind, &m_cards, m_window);
    form.exec();
    if (form.hasChanged())
        m_toolbox.refresh();
}

void ItemActions::importMany(int kind) {
    frmPersSearch form(m_session, m_icons, kind, {}, m_window, frmPersSearch::Mode::ImportMany);
    if (form.exec() == QDialog::Accepted)
        m_toolbox.refresh();
}

void ItemActions::createOne() { create(m_toolbox.kind()); }

void ItemActions::edit() {
    const std::vector<qint64> ids = m_toolbox.selectedIds();
    if (ids.size() != 1 || !isPerson(m_toolbox.kind()))
        return;
    frmPers form(m_session, m_icons, m_toolbox.kind(), ids.front(), m_window);
    if (form.exec() == QDialog::Accepted)
        m_toolbox.refresh();
}

void ItemActions::remove() {
    CMIT items(m_session);
    items.setOpenCards(&m_cards);
    if (!items.ConfermaEliminazione(m_toolbox.kind(), m_toolbox.selectedNames()))
        return;
    WindowProgress progress(m_window);
    items.EliminaItem(m_toolbox.kind(), m_toolbox.selectedIds(), progress);
    m_toolbox.refresh();
}

void ItemActions::merge() {
    const std::vector<qint64> ids = m_toolbox.selectedIds();
    if (ids.size() != 1)
        return;
    frmMigrate form(m_session, m_icons, m_toolbox.kind(), ids.front(), &m_cards, m_window);
    if (form.exec() != QDialog::Accepted)
        return;
    m_toolbox.refresh();
    m_toolbox.select(form.target());
}

void ItemActions::manageCatalog() {
    const std::vector<qint64> ids = m_toolbox.selectedIds();
    if (ids.size() == 1 && m_toolbox.kind() == ItemKind::Composer)
        frmCatalog(m_session, m_icons, ids.front(), m_window).exec();
}

void ItemActions::addWork() {
    const std::vector<qint64> ids = m_toolbox.selectedIds();
    if (ids.size() == 1 && m_toolbox.kind() == ItemKind::Composer)
        frmWorkEditor(m_session, m_icons, ids.front(), 0, m_window).exec();
}

void ItemActions::refresh() { m_toolbox.refresh(); }

} // namespace tessaranth
