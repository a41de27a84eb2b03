// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/OrderedTree.h"

#include <QDropEvent>
#include <QHeaderView>
#include <numeric>

namespace tessaranth {

OrderedTree::OrderedTree(QWidget* parent, const QString& objectName, const QString& accessibleName,
                         const QStringList& headings)
    : QTreeWidget(parent) {
    setObjectName(objectName);
    setAccessibleName(accessibleName);
    setHeaderLabels(headings);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setDragDropMode(QAbstractItemView::InternalMove);
    setDragDropOverwriteMode(false);
    header()->setStretchLastSection(false);
}

std::vector<int> OrderedTree::selectedRows() const {
    std::vector<int> rows;
    for (const QModelIndex& index : selectionModel()->selectedRows())
        if (!index.parent().isValid())
            rows.push_back(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

void OrderedTree::selectRows(const std::vector<int>& rows) {
    QItemSelection selection;
    for (const int row : rows)
        selection.select(model()->index(row, 0), model()->index(row, columnCount() - 1));
    if (!rows.empty())
        selectionModel()->setCurrentIndex(model()->index(rows.front(), 0), QItemSelectionModel::NoUpdate);
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    if (!rows.empty())
        scrollTo(currentIndex());
}

void OrderedTree::fitColumns(int stretched) {
    constexpr int margin = 16;
    for (int column = 0; column < columnCount(); ++column) {
        header()->setSectionResizeMode(column,
                                       column == stretched ? QHeaderView::Stretch : QHeaderView::Interactive);
        if (column == stretched)
            continue;
        resizeColumnToContents(column);
        setColumnWidth(column, columnWidth(column) + margin);
    }
}

// A drop that counts as a move would have the view delete the rows that were dragged.
void OrderedTree::dropEvent(QDropEvent* event) {
    if (event->source() != this) {
        event->ignore();
        return;
    }
    QTreeWidgetItem* target = itemAt(event->position().toPoint());
    const bool behind = target && event->position().y() > visualItemRect(target).center().y();
    event->setDropAction(Qt::IgnoreAction);
    event->accept();
    setState(NoState);
    emit rowsDropped(target, behind || !target);
}

std::vector<int> numbersFrom(int first, size_t count) {
    std::vector<int> numbers(count);
    std::iota(numbers.begin(), numbers.end(), first);
    return numbers;
}

} // namespace tessaranth
