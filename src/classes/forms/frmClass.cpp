// SPDX-License-Identifier: GPL-3.0-or-later
#include "classes/forms/frmClass.h"

#include "classes/forms/frmClassItem.h"
#include "items/ItemKind.h"
#include "items/OpenCards.h"
#include "store/Session.h"
#include "widgets/FormHelpers.h"
#include "widgets/Help.h"
#include "widgets/IconStore.h"
#include "widgets/ItemColours.h"
#include "widgets/ItemListModel.h"

#include <QAction>
#include <QEvent>
#include <QHeaderView>
#include <QLabel>
#include <QMenuBar>
#include <QSplitter>
#include <QToolBar>
#include <QTreeView>
#include <QVBoxLayout>

namespace tessaranth {

frmClass::frmClass(const FormContext& context, OpenCards& cards, QWidget* parent)
    : QDialog(parent), m_context(context), m_cards(cards), m_commands(this, context.icons) {
    setObjectName(QStringLiteral("frmClass"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setWindowTitle(QStringLiteral("Manage classifications"));
    buildUi();
    buildCommands();
    m_tree->fill();
    m_tree->setCurrentItem(m_tree->topLevelItem(0));
    m_tree->setFocus();
}

void frmClass::buildUi() {
    auto* layout = new QVBoxLayout(this);
    m_menus = new QMenuBar(this);
    layout->setMenuBar(m_menus);
    layout->addWidget(
        FormHelpers::head(m_context.icons, QStringLiteral("Class"), QStringLiteral("Class"),
                          QStringLiteral("Add/Edit/Remove categories and subcategories. Assign the items.")));
    m_bar = new QToolBar;
    m_bar->setIconSize(QSize(18, 18));
    m_bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_bar->setAccessibleName(tr("Commands of the classifications"));
    layout->addWidget(m_bar);

    m_tree = new ClassTree(m_context, ClassTree::Style::Manage);
    m_tree->setObjectName(QStringLiteral("TV"));
    m_tree->setAccessibleName(tr("Categories and sub-categories"));
    m_model = new ItemListModel(m_context.icons, this);
    m_list = FormHelpers::itemView(this, QStringLiteral("LV"), m_model, true);
    m_list->setAccessibleName(tr("Cards"));
    m_list->setDragDropMode(QAbstractItemView::DragOnly);
    auto* splitter = new QSplitter;
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(m_tree);
    splitter->addWidget(m_list);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({280, 660});
    FormHelpers::keepSplitter(splitter, m_context.session.arrangements(), QStringLiteral("frmClass"));
    layout->addWidget(splitter, 1);

    auto* status = new QHBoxLayout;
    status->addWidget(FormHelpers::quietLabel(QStringLiteral("Classifications")));
    status->addStretch();
    m_count = new QLabel;
    m_count->setObjectName(QStringLiteral("count"));
    status->addWidget(m_count);
    layout->addLayout(status);
    resize(960, 620);

    connect(m_tree, &ClassTree::placeChanged, this, &frmClass::fillList);
    connect(m_tree, &ClassTree::cardsDropped, this, &frmClass::drop, Qt::QueuedConnection);
    connect(m_list, &QTreeView::activated, this, &frmClass::openCard);
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, &frmClass::enable);
}

// ---- commands

// The given captions are the same for categories and sub-categories; the menus and the words in the tool bar
// tell them apart.
std::vector<frmClass::Entry> frmClass::commands() {
    const QString file = tr("&File");
    const QString category = tr("&Category");
    const QString sub = tr("&Sub-category");
    const QString items = tr("&Items");
    const auto level = [this](Level which) { return [this, which] { return stands(which); }; };
    const auto card = [this] { return !selectedCards().empty(); };
    return {{"mnuFileReport",
             file,
             tr("&Report"),
             "Make a report from list",
             "Report",
             {},
             {},
             [] { return false; }},
            {"mnuFileClose", file, tr("E&xit"), "Close the form", "Exit", "Ctrl+W", [this] { close(); }, {}},
            {"mnuCatNewCat",
             category,
             tr("&Add"),
             "Add a new category",
             "TvClass",
             "Ctrl+N",
             [this] { add(Classification::Category); },
             {}},
            {"mnuCatRenameCat", category, tr("&Rename"), "Rename selected category", "Rename", "F2",
             [this] { rename(Classification::Category); }, level(Classification::Category)},
            {"mnuCatRemoveCat", category, tr("&Delete"), "Delete selected category", "Delete", "Del",
             [this] { remove(Classification::Category); }, level(Classification::Category)},
            {"mnuCatNewSubCat", sub, tr("&Add"), "Add a new sub-category", "TvSubClass", "Ctrl+Shift+N",
             [this] { add(Classification::SubCategory); }, [this] { return m_tree->category() != 0; }},
            {"mnuCatRenameSubCat", sub, tr("&Rename"), "Rename selected sub-category", "Rename", "F2",
             [this] { rename(Classification::SubCategory); }, level(Classification::SubCategory)},
            {"mnuCatRemoveSubCat", sub, tr("&Delete"), "Delete selected sub-category", "Delete", "Del",
             [this] { remove(Classification::SubCategory); }, level(Classification::SubCategory)},
            {"mnuItemsClassify", items, tr("&Class"), "Classify the items", "Class", "Ctrl+K",
             [this] { classify(); }, card},
            {"mnuHelpHelp",
             tr("&Help"),
             tr("&Help"),
             tr("Show the help of this window"),
             "Help",
             "F1",
             [this] { Help::request(this); },
             {}}};
}

QAction* frmClass::makeAction(const Entry& entry) {
    // In the list of cards Del must not delete the category.
    const bool isOfTree = entry.shortcut == QLatin1String("Del") || entry.shortcut == QLatin1String("F2");
    QAction* action = m_commands.add({QLatin1String(entry.key), entry.caption, entry.tip, entry.iconKey,
                                      entry.shortcut, entry.run, entry.possible, !isOfTree});
    if (isOfTree)
        m_tree->addAction(action);
    return action;
}

void frmClass::buildCommands() {
    QMenu* menu = nullptr;
    for (const Entry& entry : commands()) {
        if (!menu || menu->title() != entry.menu) {
            menu = m_menus->addMenu(entry.menu);
            menu->setToolTipsVisible(true);
            if (m_bar->actions().size() > 0)
                m_bar->addSeparator();
            if (entry.menu == tr("&Category") || entry.menu == tr("&Sub-category"))
                m_bar->addWidget(FormHelpers::quietLabel(QString(entry.menu).remove(u'&')));
        }
        QAction* action = makeAction(entry);
        menu->addAction(action);
        m_bar->addAction(action);
    }
    buildTreeKeys();
    addContextMenus();
}

// Ins adds what stands beside the node chosen, and below a category its first sub-category.
void frmClass::buildTreeKeys() {
    m_tree->addAction(m_commands.add(
        {QStringLiteral("insert"),
         {},
         {},
         {},
         QStringLiteral("Ins"),
         [this] { add(m_tree->category() != 0 ? Classification::SubCategory : Classification::Category); },
         {}}));
}

void frmClass::addContextMenus() {
    const auto menu = [this](const QString& key) {
        return qobject_cast<QMenu*>(findChild<QAction*>(key)->associatedObjects().value(0));
    };
    QMenu* category = menu(QStringLiteral("mnuCatNewCat"));
    QMenu* sub = menu(QStringLiteral("mnuCatNewSubCat"));
    QMenu* items = menu(QStringLiteral("mnuItemsClassify"));
    for (QWidget* view : {static_cast<QWidget*>(m_tree), static_cast<QWidget*>(m_list)})
        view->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_tree, &QWidget::customContextMenuRequested, this, [this, category, sub](const QPoint& at) {
        (stands(Classification::SubCategory) ? sub : category)->popup(m_tree->viewport()->mapToGlobal(at));
    });
    connect(m_list, &QWidget::customContextMenuRequested, this,
            [this, items](const QPoint& at) { items->popup(m_list->viewport()->mapToGlobal(at)); });
}

void frmClass::enable() { m_commands.enable(); }

bool frmClass::stands(Level level) const {
    const ClassTree::Node node = m_tree->place().node;
    return node == (level == Classification::Category ? ClassTree::Category : ClassTree::SubCategory);
}

void frmClass::add(Level level) {
    const ClassTree::Place at = m_tree->place();
    const qint64 added = classes().add(level, level == Classification::SubCategory ? m_tree->category() : 0);
    if (added == 0)
        return;
    m_tree->fill(at.kind);
    m_tree->setPlace(
        {at.kind, level == Classification::Category ? ClassTree::Category : ClassTree::SubCategory, added});
    tellChange();
}

void frmClass::rename(Level level) {
    const ClassTree::Place at = m_tree->place();
    if (!classes().rename(level, at.id))
        return;
    m_tree->fill(at.kind);
    tellChange();
}

void frmClass::remove(Level level) {
    const ClassTree::Place at = m_tree->place();
    const qint64 category = level == Classification::SubCategory ? m_tree->category() : 0;
    if (!classes().remove(level, at.id))
        return;
    m_tree->fill(at.kind);
    m_tree->setPlace({at.kind, category != 0 ? ClassTree::Category : ClassTree::Categories, category});
    tellChange();
}

// Whoever listens tells everybody, this window too.
void frmClass::tellChange() {
    emit classesChanged();
    m_isOutdated = false;
}

void frmClass::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && m_isOutdated)
        m_tree->fill();
    QDialog::changeEvent(event);
}

// ---- cards

void frmClass::fillList() {
    const ClassTree::Place at = m_tree->place();
    if (at.kind == 0)
        return;
    const ItemKind& kind = *itemKind(at.kind);
    ItemList list({{kind.list.headings.front()}});
    Classification reader = classes();
    bool isRead = true;
    if (at.node == ClassTree::SubCategory)
        isRead = reader.items(at.id, list);
    else if (at.node == ClassTree::Category)
        isRead = reader.itemsOfCategory(at.id, list);
    else if (at.node == ClassTree::GlobalView)
        isRead = reader.globalView(list);
    if (!isRead)
        return;
    m_isOutdated = false;
    m_model->setList(std::move(list));
    const QHeaderView* header = m_list->header();
    if (header->sortIndicatorSection() >= 0 && header->sortIndicatorSection() < m_model->columnCount())
        m_model->sort(header->sortIndicatorSection(), header->sortIndicatorOrder());
    paintInItemColours(m_list, m_context.session.configuration(), kind.colourPrefix);
    FormHelpers::fitColumns(m_list);
    if (m_model->columnCount() > 1)
        m_list->setColumnWidth(0, qMin(m_list->columnWidth(0), 300)); // so that categories are in sight
    m_tree->setDropKind(at.kind);
    m_count->setText(kind.countCaption + QString::number(m_model->rowCount()));
    enable();
}

std::vector<qint64> frmClass::selectedCards() const { return FormHelpers::selectedIds(m_list, m_model); }

void frmClass::classify() {
    Classification classification = classes();
    const QString name = m_list->selectionModel()->selectedRows().value(0).data().toString();
    if (frmClassItem::classify(classification, m_context.icons, selectedCards(), name, this))
        fillList();
}

void frmClass::drop(int kind, qint64 subCategory, const QList<qint64>& cards) {
    if (Classification(m_context.session, kind, &m_cards).put({cards.begin(), cards.end()}, subCategory))
        fillList();
}

void frmClass::openCard(const QModelIndex& index) {
    m_cards.openCard(itemKind(kind())->code, m_model->id(index));
}

} // namespace tessaranth
