// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/ItemListModel.h"

#include "store/TextOrder.h"
#include "widgets/IconStore.h"

#include <QFont>
#include <QMimeData>
#include <algorithm>
#include <numeric>

namespace tessaranth {

ItemListModel::ItemListModel(const IconStore& icons, QObject* parent)
    : QAbstractTableModel(parent), m_icons(icons) {}

void ItemListModel::setList(ItemList list) {
    beginResetModel();
    m_list = std::move(list);
    m_order.clear();
    endResetModel();
}

qint64 ItemListModel::id(const QModelIndex& index) const {
    return index.isValid() ? m_list.id(listRow(index.row())) : 0;
}

QString ItemListModel::iconKey(const QModelIndex& index) const {
    return index.isValid() ? m_list.iconKey(listRow(index.row())) : QString();
}

QModelIndex ItemListModel::indexOf(qint64 wanted) const {
    for (int row = 0; row < m_list.rowCount(); ++row)
        if (m_list.id(listRow(row)) == wanted)
            return index(row, 0);
    return {};
}

int ItemListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_list.rowCount();
}

int ItemListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_list.columnCount();
}

QVariant ItemListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const int row = listRow(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return m_list.text(row, index.column());
    case Qt::DecorationRole: {
        const QString& own = m_list.cellIconKey(row, index.column());
        if (!own.isEmpty())
            return m_icons.icon(own);
        return index.column() == 0 ? QVariant(m_icons.icon(m_list.iconKey(row))) : QVariant();
    }
    case Qt::FontRole: {
        if (!m_list.isBold(row))
            return {};
        QFont bold; // what it leaves unset comes from the view
        bold.setBold(true);
        return bold;
    }
    case Qt::TextAlignmentRole:
        return int(m_list.headings()[size_t(index.column())].numeric ? Qt::AlignRight | Qt::AlignVCenter
                                                                     : Qt::AlignLeft | Qt::AlignVCenter);
    default:
        return {};
    }
}

QVariant ItemListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section >= m_list.columnCount())
        return {};
    return m_list.headings()[size_t(section)].caption;
}

void ItemListModel::sort(int column, Qt::SortOrder order) {
    if (column >= m_list.columnCount())
        return;
    emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    const QModelIndexList before = persistentIndexList();
    std::vector<int> rowsBefore;
    for (const QModelIndex& index : before)
        rowsBefore.push_back(listRow(index.row()));

    m_order.resize(column < 0 ? 0 : size_t(m_list.rowCount()));
    std::iota(m_order.begin(), m_order.end(), 0);
    if (column >= 0) {
        const ItemList::Heading& heading = m_list.headings()[size_t(column)];
        const auto compare = [&](int a, int b) {
            if (heading.inOrder)
                return a - b;
            const QString& left = m_list.text(a, column);
            const QString& right = m_list.text(b, column);
            if (heading.numeric) {
                const double difference = left.toDouble() - right.toDouble();
                return difference < 0 ? -1 : difference > 0 ? 1 : 0;
            }
            return TextOrder::compareNatural(left, right);
        };
        std::stable_sort(m_order.begin(), m_order.end(), [&](int a, int b) {
            return order == Qt::AscendingOrder ? compare(a, b) < 0 : compare(b, a) < 0;
        });
    }

    if (!before.isEmpty()) {
        std::vector<int> place(size_t(m_list.rowCount()));
        for (int row = 0; row < m_list.rowCount(); ++row)
            place[size_t(listRow(row))] = row;
        QModelIndexList after;
        for (qsizetype i = 0; i < before.size(); ++i)
            after.push_back(index(place[size_t(rowsBefore[size_t(i)])], before[i].column()));
        changePersistentIndexList(before, after);
    }
    emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

QList<qint64> ItemListModel::droppedIds(const QMimeData* data) {
    QList<qint64> ids;
    for (const QByteArray& line : data->data(dragType).split('\n'))
        if (const qint64 id = line.toLongLong())
            ids.push_back(id);
    return ids;
}

QMimeData* ItemListModel::mimeData(const QModelIndexList& indexes) const {
    QByteArray ids;
    for (const QModelIndex& index : indexes)
        if (index.column() == 0)
            ids += QByteArray::number(id(index)) + '\n';
    auto* data = new QMimeData;
    data->setData(dragType, ids);
    return data;
}

Qt::ItemFlags ItemListModel::flags(const QModelIndex& index) const {
    return index.isValid() ? QAbstractTableModel::flags(index) | Qt::ItemIsDragEnabled : Qt::NoItemFlags;
}

} // namespace tessaranth
