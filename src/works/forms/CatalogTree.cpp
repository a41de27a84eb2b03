// SPDX-License-Identifier: GPL-3.0-or-later
#include "works/forms/CatalogTree.h"

#include "widgets/IconStore.h"
#include "widgets/ItemListModel.h"

#include <QSignalBlocker>

namespace tessaranth {

namespace {

enum Role { BranchRole = Qt::UserRole, NodeRole };

} // namespace

CatalogTree::CatalogTree(const IconStore& icons, QWidget* parent) : QTreeWidget(parent), m_icons(icons) {
    setHeaderHidden(true);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setDragDropMode(QAbstractItemView::DropOnly);
    setDragDropOverwriteMode(true); // onto a node, never between two
    // What is dropped beside a node that takes nothing would land here.
    invisibleRootItem()->setFlags(Qt::ItemIsEnabled);
    setUniformRowHeights(true);
    connect(this, &QTreeWidget::currentItemChanged, this, &CatalogTree::placeChanged);
}

void CatalogTree::fill(ComposerCatalog& catalog) {
    const Place before = place();
    {
        const QSignalBlocker blocker(this);
        clear();
        for (const CatalogBranch& branch : catalogBranches()) {
            auto* top = new QTreeWidgetItem(this, {branch.caption});
            top->setData(0, BranchRole, branch.number);
            top->setIcon(0, m_icons.icon(QStringLiteral("Catalog")));
            top->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
            for (const ComposerCatalog::Node& node : catalog.nodes(branch.number)) {
                auto* item = new QTreeWidgetItem(top, {node.name});
                item->setData(0, BranchRole, branch.number);
                item->setData(0, NodeRole, node.id);
                item->setToolTip(0, node.name);
                item->setIcon(0,
                              m_icons.icon(branch.number == CatalogBranch::Genres ? QStringLiteral("Genre")
                                                                                  : QStringLiteral("Comp")));
                item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDropEnabled |
                               Qt::ItemNeverHasChildren);
            }
            top->setExpanded(true);
        }
        setPlace(before);
    }
    emit placeChanged();
}

CatalogTree::Place CatalogTree::placeOf(const QTreeWidgetItem* item) {
    if (!item)
        return {};
    const QVariant node = item->data(0, NodeRole);
    return {Branch(item->data(0, BranchRole).toInt()),
            node.isValid() ? std::optional(node.toLongLong()) : std::nullopt};
}

CatalogTree::Place CatalogTree::place() const { return placeOf(currentItem()); }

void CatalogTree::setPlace(const Place& wanted) {
    QTreeWidgetItem* found = topLevelItem(wanted.branch);
    for (QTreeWidgetItemIterator it(this); *it; ++it)
        if (placeOf(*it) == wanted)
            found = *it;
    setCurrentItem(found);
}

std::vector<qint64> CatalogTree::selectedNodes(Branch branch) const {
    std::vector<qint64> ids;
    for (const QTreeWidgetItem* item : selectedItems()) {
        const Place selected = placeOf(item);
        if (selected.branch == branch && selected.node.value_or(0) != 0)
            ids.push_back(*selected.node);
    }
    return ids;
}

QStringList CatalogTree::mimeTypes() const { return {ItemListModel::dragType}; }

bool CatalogTree::dropMimeData(QTreeWidgetItem* parent, int, const QMimeData* data, Qt::DropAction) {
    const Place target = placeOf(parent);
    const QList<qint64> works = ItemListModel::droppedIds(data);
    if (!target.node || works.isEmpty())
        return false;
    emit worksDropped(target.branch, *target.node, works);
    return true;
}

} // namespace tessaranth
