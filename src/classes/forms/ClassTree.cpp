// SPDX-License-Identifier: GPL-3.0-or-later
#include "classes/forms/ClassTree.h"

#include "classes/Classification.h"
#include "items/ItemKind.h"
#include "widgets/IconStore.h"
#include "widgets/ItemListModel.h"
#include "widgets/Reading.h"

#include <QSignalBlocker>

namespace tessaranth {

namespace {

enum Role { KindRole = Qt::UserRole, NodeRole, IdRole };

} // namespace

ClassTree::ClassTree(const FormContext& context, Style style, QWidget* parent)
    : QTreeWidget(parent), m_context(context), m_style(style) {
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setDragDropMode(QAbstractItemView::DropOnly);
    setDragDropOverwriteMode(true); // onto a node, never between two
    // What is dropped beside a node that takes nothing would land here.
    invisibleRootItem()->setFlags(Qt::ItemIsEnabled);
    for (const ItemKind& kind : itemKinds()) {
        if (!kind.isCard())
            continue;
        // In messages and here the custom cards go by the short name.
        const QString name = style == Style::Manage ? kind.messageLabel.chopped(2) : kind.listCaption;
        add(invisibleRootItem(), {kind.number, Root, 0}, name, kind.iconKey, 0);
    }
    connect(this, &QTreeWidget::currentItemChanged, this, &ClassTree::placeChanged);
}

QString ClassTree::caption(const QString& name, int cards) const {
    return m_style == Style::Browse ? name + QStringLiteral(" (%1)").arg(cards) : name;
}

QTreeWidgetItem* ClassTree::add(QTreeWidgetItem* parent, const Place& place, const QString& name,
                                const QString& iconKey, int cards) {
    auto* item = new QTreeWidgetItem(parent, {caption(name, cards)});
    item->setToolTip(0, name);
    item->setIcon(0, m_context.icons.icon(iconKey));
    item->setData(0, KindRole, place.kind);
    item->setData(0, NodeRole, place.node);
    item->setData(0, IdRole, place.id);
    item->setFlags(
        Qt::ItemIsEnabled | Qt::ItemIsSelectable |
        (place.node == SubCategory && place.kind == m_dropKind ? Qt::ItemIsDropEnabled : Qt::NoItemFlags));
    return item;
}

// ---- filling

void ClassTree::fill(int kind) {
    const Place before = place();
    const bool isFirst = topLevelItem(0)->childCount() == 0;
    const bool isRead = readInto(this, m_context.session, [&] {
        const QSignalBlocker blocker(this);
        for (int i = 0; i < topLevelItemCount(); ++i)
            if (QTreeWidgetItem* root = topLevelItem(i); kind == 0 || placeOf(root).kind == kind)
                fillRoot(root);
        if (isFirst)
            for (QTreeWidgetItemIterator it(this); *it; ++it)
                (*it)->setExpanded(placeOf(*it).node != Category);
        if (before.kind != 0)
            setPlace(before);
    });
    if (isRead)
        emit placeChanged();
}

void ClassTree::fillRoot(QTreeWidgetItem* root) {
    const int kind = placeOf(root).kind;
    QSet<qint64> open;
    const QTreeWidgetItem* categories = m_style == Style::Manage ? root->child(Categories - 1) : root;
    const bool isOpen = categories && categories->isExpanded();
    for (int i = 0; categories && i < categories->childCount(); ++i)
        if (const QTreeWidgetItem* item = categories->child(i); item->isExpanded())
            open.insert(placeOf(item).id);
    qDeleteAll(root->takeChildren());
    fillBelow(root, kind);
    for (const qint64 id : open)
        if (QTreeWidgetItem* item = find({kind, Category, id}))
            item->setExpanded(true);
    if (QTreeWidgetItem* item = find({kind, Categories, 0}))
        item->setExpanded(isOpen);
}

void ClassTree::fillBelow(QTreeWidgetItem* root, int kind) {
    QTreeWidgetItem* top = root;
    if (m_style == Style::Manage) {
        add(root, {kind, GlobalView, 0}, QStringLiteral("Global view"), QStringLiteral("Table"), 0);
        top = add(root, {kind, Categories, 0}, QStringLiteral("Categories"), QStringLiteral("Class"), 0);
    }
    const Classification::Tree tree = *Classification(m_context.session, kind).tree();
    for (const Classification::Node& category : tree.categories) {
        QTreeWidgetItem* item =
            add(top, {kind, Category, category.id}, category.name, QStringLiteral("TvClass"), category.cards);
        for (const Classification::SubNode& sub : category.subCategories)
            add(item, {kind, SubCategory, sub.id}, sub.name, QStringLiteral("TvSubClass"), sub.cards);
    }
    if (m_style == Style::Browse) {
        root->setText(0, caption(itemKind(kind)->listCaption, tree.cards));
        add(root, {kind, Unclassified, 0}, QStringLiteral("Unclassified"), QStringLiteral("TvSubClass"),
            tree.unclassified);
    }
}

// ---- places

ClassTree::Place ClassTree::placeOf(const QTreeWidgetItem* item) {
    if (!item)
        return {};
    return {item->data(0, KindRole).toInt(), Node(item->data(0, NodeRole).toInt()),
            item->data(0, IdRole).toLongLong()};
}

QTreeWidgetItem* ClassTree::find(const Place& place) const {
    for (QTreeWidgetItemIterator it(const_cast<ClassTree*>(this)); *it; ++it)
        if (placeOf(*it) == place)
            return *it;
    return nullptr;
}

void ClassTree::setPlace(const Place& place) {
    QTreeWidgetItem* item = find(place);
    setCurrentItem(item ? item : find({place.kind, Root, 0}));
}

qint64 ClassTree::category() const {
    const Place at = place();
    return at.node == SubCategory ? placeOf(currentItem()->parent()).id : at.node == Category ? at.id : 0;
}

// ---- dropping

void ClassTree::setDropKind(int kind) {
    if (kind == m_dropKind)
        return;
    m_dropKind = kind;
    for (QTreeWidgetItemIterator it(this); *it; ++it)
        if (const Place at = placeOf(*it); at.node == SubCategory)
            (*it)->setFlags((*it)->flags().setFlag(Qt::ItemIsDropEnabled, at.kind == kind));
}

QStringList ClassTree::mimeTypes() const { return {ItemListModel::dragType}; }

bool ClassTree::dropMimeData(QTreeWidgetItem* parent, int, const QMimeData* data, Qt::DropAction) {
    const Place target = placeOf(parent);
    const QList<qint64> cards = ItemListModel::droppedIds(data);
    if (target.node != SubCategory || target.kind != m_dropKind || cards.isEmpty())
        return false;
    emit cardsDropped(target.kind, target.id, cards);
    return true;
}

} // namespace tessaranth
