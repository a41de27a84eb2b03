// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/BrowseTree.h"

#include "classes/Classification.h"
#include "classes/forms/ClassTree.h"
#include "classes/forms/frmClassItem.h"
#include "items/ItemKind.h"
#include "items/OpenCards.h"
#include "store/Session.h"
#include "widgets/FormHelpers.h"
#include "widgets/IconStore.h"
#include "widgets/ItemColours.h"
#include "widgets/ItemListModel.h"
#include "widgets/Reading.h"

#include <QAction>
#include <QHeaderView>
#include <QLabel>
#include <QSplitter>
#include <QTreeView>
#include <QVBoxLayout>

namespace tessaranth {

BrowseTree::BrowseTree(const FormContext& context, QWidget* parent) : QWidget(parent), m_context(context) {
    setObjectName(QStringLiteral("browse"));
    buildUi();
    m_pause.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, &BrowseTree::refresh);
    connect(m_tree, &ClassTree::placeChanged, this, &BrowseTree::fillList);
    connect(m_tree, &ClassTree::cardsDropped, this, &BrowseTree::drop, Qt::QueuedConnection);
    connect(m_list, &QTreeView::activated, this, [this](const QModelIndex& index) {
        if (m_cards)
            m_cards->openCard(itemKind(m_tree->place().kind)->code, m_model->id(index));
    });
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { m_classify->setEnabled(!selectedCards().empty()); });
    connect(m_classify, &QAction::triggered, this, &BrowseTree::classify);
}

void BrowseTree::buildUi() {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);
    m_tree = new ClassTree(m_context, ClassTree::Style::Browse);
    m_tree->setObjectName(QStringLiteral("tvBrowse"));
    m_tree->setAccessibleName(tr("Classifications"));
    m_model = new ItemListModel(m_context.icons, this);
    m_list = FormHelpers::itemView(this, QStringLiteral("lvBrowse"), m_model, true);
    m_list->setAccessibleName(tr("Cards of the chosen node"));
    m_list->setDragDropMode(QAbstractItemView::DragOnly);
    m_list->setContextMenuPolicy(Qt::ActionsContextMenu);
    m_classify = new QAction(m_context.icons.icon(QStringLiteral("Class")), tr("Classify"), this);
    m_classify->setObjectName(QStringLiteral("mnuBrowseClassify"));
    m_classify->setToolTip(tr("Classify the items"));
    m_classify->setShortcut(QKeySequence(QStringLiteral("Ctrl+T")));
    m_classify->setShortcutContext(Qt::WidgetShortcut);
    m_classify->setEnabled(false);
    m_list->addAction(m_classify);
    auto* splitter = new QSplitter(Qt::Vertical);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(m_tree);
    splitter->addWidget(m_list);
    FormHelpers::keepSplitter(splitter, m_context.session.arrangements(), QStringLiteral("Browse"));
    layout->addWidget(splitter, 1);
    m_count = new QLabel;
    m_count->setObjectName(QStringLiteral("browseCount"));
    layout->addWidget(m_count);
}

void BrowseTree::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (m_isRead)
        return;
    m_isRead = true;
    m_tree->fill();
    if (!m_tree->currentItem())
        m_tree->setCurrentItem(m_tree->topLevelItem(0));
}

void BrowseTree::refresh() {
    emit outdated();
    if (m_isRead)
        m_tree->fill();
}

void BrowseTree::cardChanged() {
    emit outdated();
    if (isVisible())
        m_pause.start();
    else
        m_isRead = false;
}

void BrowseTree::fillList() {
    const ClassTree::Place at = m_tree->place();
    if (at.kind == 0)
        return;
    const ItemKind& kind = *itemKind(at.kind);
    Classification reader(m_context.session, at.kind);
    ItemList list;
    readInto(m_list, m_context.session, [&] {
        return at.node == ClassTree::SubCategory    ? reader.items(at.id, list)
               : at.node == ClassTree::Category     ? reader.itemsOfCategory(at.id, list)
               : at.node == ClassTree::Unclassified ? reader.unclassified(list)
                                                    : reader.all(list);
    });
    m_model->setList(std::move(list));
    const QHeaderView* header = m_list->header();
    if (header->sortIndicatorSection() == 0)
        m_model->sort(0, header->sortIndicatorOrder());
    paintInItemColours(m_list, m_context.session.configuration(), kind.colourPrefix);
    m_tree->setDropKind(at.kind);
    m_count->setText(kind.countCaption + QString::number(m_model->rowCount()));
    m_classify->setEnabled(false);
}

std::vector<qint64> BrowseTree::selectedCards() const { return FormHelpers::selectedIds(m_list, m_model); }

void BrowseTree::classify() {
    const int kind = m_tree->place().kind;
    Classification classes(m_context.session, kind, m_cards);
    const QString name = m_list->selectionModel()->selectedRows().value(0).data().toString();
    if (frmClassItem::classify(classes, m_context.icons, selectedCards(), name, window()))
        m_tree->fill(kind);
}

void BrowseTree::drop(int kind, qint64 subCategory, const QList<qint64>& cards) {
    if (Classification(m_context.session, kind, m_cards).put({cards.begin(), cards.end()}, subCategory))
        m_tree->fill(kind);
}

} // namespace tessaranth
