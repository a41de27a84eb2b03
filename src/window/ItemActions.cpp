// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/ItemActions.h"

#include "classes/forms/frmClass.h"
#include "classes/forms/frmClassItem.h"
#include "items/CMIT.h"
#include "items/OpenCards.h"
#include "items/forms/frmListManager.h"
#include "items/forms/frmMigrate.h"
#include "items/forms/frmNewUserDef.h"
#include "items/forms/frmPers.h"
#include "items/forms/frmPersSearch.h"
#include "recordings/forms/frmRec.h"
#include "recordings/forms/frmRecCheck.h"
#include "store/Session.h"
#include "widgets/IconStore.h"
#include "widgets/WindowProgress.h"
#include "window/BrowseTree.h"
#include "window/Toolbox.h"
#include "works/forms/frmCatalog.h"
#include "works/forms/frmWorkEditor.h"

#include <QAction>
#include <QTreeView>

namespace tessaranth {

namespace {

constexpr unsigned bit(int kind) { return 1u << kind; }
constexpr unsigned composers = bit(ItemKind::Composer);
constexpr unsigned persons = composers | bit(ItemKind::Performer);
constexpr unsigned cards = persons | bit(ItemKind::Recording) | bit(ItemKind::Custom);

} // namespace

// clang-format off
const std::vector<ItemActions::Row>& ItemActions::rows() {
    using S = Selection;
    static const std::vector<Row> table{
    {"mnuToolboxGoto", "GoToCard", "Go to Card", "Go to card", "Go to card", "", cards, S::Some, &ItemActions::goToCards},
    {"mnuToolboxRefresh", "Refresh", "Refresh", "Refresh list", "Refresh list", "F5", cards, S::Any, &ItemActions::refresh},
    {"mnuToolboxAdd", "New", "New", "Add a new item", "Add new item", "Ins", cards, S::Any, &ItemActions::createOne},
    {"mnuToolboxEdit", "Edit", "Edit", "Edit the selected item", "Edit item", "F2", cards, S::One, &ItemActions::edit},
    {"mnuToolboxDelete", "Delete", "Delete", "Delete the selected item(s)", "Delete item", "Del", cards, S::Some, &ItemActions::remove},
    {"mnuToolboxMigrate", "AU", "Migrate", "Migrate the selected item", "Migrate item", "", cards, S::One, &ItemActions::merge},
    {"mnuToolboxCatalog", "Catalog", "Catalog", "Manage composer catalog", "", "Ctrl+K", composers, S::One, &ItemActions::manageCatalog},
    {"mnuToolboxWork", "Comp", "New work", "Add new work to current composer", "", "Alt+Ins", composers, S::One, &ItemActions::addWork},
    {"mnuItemsClassify", "Class", "Classify", "Classify the items", "", "Ctrl+T", cards, S::Some, &ItemActions::classify},
    {"mnuToolboxFilter", "Filter", "Filter", "Apply filter", "Apply filter", "", cards, S::Any, &ItemActions::filter},
    {"mnuToolboxFilterRemove", "Clear", "Filter remove", "Show all items again", "", "", cards, S::Filtered, &ItemActions::removeFilter}};
    return table;
}
// clang-format on

ItemActions::ItemActions(const FormContext& context, Toolbox& toolbox, OpenCards& openCards, QWidget* window)
    : QObject(window), m_context(context), m_toolbox(toolbox), m_cards(openCards), m_window(window) {
    addActions();
    m_toolbox.browse().setOpenCards(&m_cards);
    connect(&m_toolbox, &Toolbox::selectionChanged, this, &ItemActions::enable);
    connect(&m_toolbox, &Toolbox::kindChanged, this, &ItemActions::enable);
    enable();
}

void ItemActions::addActions() {
    QList<QAction*> onBar;
    QList<QAction*> all;
    for (const Row& row : rows()) {
        auto* action = new QAction(m_context.icons.icon(QLatin1String(row.iconKey)), tr(row.text), this);
        action->setObjectName(QLatin1String(row.key));
        const bool isOnBar = *row.barTip != '\0';
        action->setToolTip(tr(isOnBar ? row.barTip : row.tip));
        action->setStatusTip(tr(row.tip));
        action->setShortcut(QKeySequence(QLatin1String(row.shortcut)));
        // The list's own keys would else act while a card has the focus.
        action->setShortcutContext(row.selection == Selection::Any ? Qt::WindowShortcut : Qt::WidgetShortcut);
        connect(action, &QAction::triggered, this, row.run);
        m_actions.push_back(action);
        all.push_back(action);
        if (isOnBar)
            onBar.push_back(action);
    }
    m_toolbox.setActions(onBar, all);
    // The button takes a filter off that is on; the key always goes to the box.
    auto* toBox = new QAction(this);
    toBox->setShortcut(QKeySequence(QStringLiteral("Ctrl+L")));
    connect(toBox, &QAction::triggered, &m_toolbox, &Toolbox::focusFilter);
    m_toolbox.addAction(toBox);
}

void ItemActions::enable() {
    const size_t selected = m_toolbox.selectedIds().size();
    const bool isFiltered = m_toolbox.isFiltered();
    const auto holds = [&](Selection selection) {
        return selection == Selection::Any || (selection == Selection::Some && selected > 0) ||
               (selection == Selection::One && selected == 1) ||
               (selection == Selection::Filtered && isFiltered);
    };
    for (size_t i = 0; i < m_actions.size(); ++i) {
        const Row& row = rows()[i];
        m_actions[i]->setEnabled((row.kinds & bit(m_toolbox.kind())) != 0 && holds(row.selection));
        if (row.run == &ItemActions::filter)
            m_actions[i]->setIconText(isFiltered ? tr("Filter") + QStringLiteral(" \u00ab") : tr("Filter"));
    }
}

qint64 ItemActions::runEditor(int kind, qint64 id) {
    const auto idOf = [](auto&& form) { return form.exec() == QDialog::Accepted ? form.id() : 0; };
    switch (kind) {
    case ItemKind::Recording:
        return idOf(frmRec(m_context, id, &m_cards, m_window));
    case ItemKind::Custom:
        return idOf(frmNewUserDef(m_context, id, &m_cards, m_window));
    default:
        return idOf(frmPers(m_context, kind, id, m_window));
    }
}

void ItemActions::create(int kind) {
    const qint64 id = runEditor(kind, 0);
    if (id == 0)
        return;
    m_toolbox.showKind(kind);
    m_toolbox.refresh();
    m_toolbox.select(id);
    m_toolbox.view()->setFocus(); // Enter opens its card
}

void ItemActions::manage(int kind) {
    frmListManager form(m_context, kind, &m_cards, m_window);
    form.exec();
    if (form.hasChanged())
        m_toolbox.refresh();
}

void ItemActions::importMany(int kind) {
    frmPersSearch form(m_context, kind, {}, m_window, frmPersSearch::Mode::ImportMany);
    if (form.exec() == QDialog::Accepted)
        m_toolbox.refresh();
}

void ItemActions::createOne() { create(m_toolbox.kind()); }

void ItemActions::edit() {
    const std::vector<qint64> ids = m_toolbox.selectedIds();
    const int kind = m_toolbox.kind();
    if (ids.size() != 1 || runEditor(kind, ids.front()) == 0)
        return;
    m_toolbox.refresh();
    m_cards.reloadCard(OpenCards::key(itemKind(kind)->code, ids.front()));
}

void ItemActions::remove() {
    CMIT items(m_context.session);
    items.setOpenCards(&m_cards);
    if (!items.ConfermaEliminazione(m_toolbox.kind(), m_toolbox.selectedNames(), m_toolbox.selectedIds()))
        return;
    WindowProgress progress(m_window);
    items.EliminaItem(m_toolbox.kind(), m_toolbox.selectedIds(), progress);
    m_toolbox.refresh();
}

void ItemActions::merge() {
    const std::vector<qint64> ids = m_toolbox.selectedIds();
    if (ids.size() != 1)
        return;
    frmMigrate form(m_context, m_toolbox.kind(), ids.front(), &m_cards, m_window);
    if (form.exec() != QDialog::Accepted)
        return;
    m_toolbox.refresh();
    m_toolbox.select(form.target());
}

void ItemActions::manageCatalog() {
    const std::vector<qint64> ids = m_toolbox.selectedIds();
    if (ids.size() != 1 || m_toolbox.kind() != ItemKind::Composer)
        return;
    frmCatalog(m_context, ids.front(), &m_cards, m_window).exec();
    m_cards.reloadCard(OpenCards::key(QStringLiteral("Cps"), ids.front()));
}

void ItemActions::addWork() {
    const std::vector<qint64> ids = m_toolbox.selectedIds();
    if (ids.size() != 1 || m_toolbox.kind() != ItemKind::Composer)
        return;
    frmWorkEditor(m_context, ids.front(), 0, m_window).exec();
    m_cards.reloadCard(OpenCards::key(QStringLiteral("Cps"), ids.front()));
}

void ItemActions::classify() {
    Classification classes(m_context.session, m_toolbox.kind(), &m_cards);
    const QString name = m_toolbox.selectedNames().value(0);
    if (frmClassItem::classify(classes, m_context.icons, m_toolbox.selectedIds(), name, m_window))
        m_toolbox.browse().refresh();
}

void ItemActions::manageClasses() {
    if (!m_classes) {
        m_classes = new frmClass(m_context, m_cards, m_window);
        m_classes->setAttribute(Qt::WA_DeleteOnClose);
        connect(&m_toolbox.browse(), &BrowseTree::outdated, m_classes, &frmClass::setOutdated);
        connect(m_classes, &frmClass::classesChanged, &m_toolbox.browse(), &BrowseTree::refresh);
    }
    bringUp(m_classes);
}

void ItemActions::checkRecordings() {
    if (!m_check) {
        m_check = new frmRecCheck(m_context, m_cards, m_window);
        connect(&m_toolbox.browse(), &BrowseTree::outdated, m_check, &frmRecCheck::setOutdated);
    }
    bringUp(m_check);
}

void ItemActions::bringUp(QWidget* form) {
    form->show();
    form->raise();
    form->activateWindow();
}

void ItemActions::refresh() { m_toolbox.refresh(); }

void ItemActions::goToCards() {
    for (const qint64 id : m_toolbox.selectedIds())
        m_cards.openCard(itemKind(m_toolbox.kind())->code, id);
}

// A second time it takes the filter away: the button says so by its mark.
void ItemActions::filter() {
    if (m_toolbox.isFiltered())
        removeFilter();
    else
        m_toolbox.focusFilter();
}

void ItemActions::removeFilter() { m_toolbox.clearFilter(); }

} // namespace tessaranth
