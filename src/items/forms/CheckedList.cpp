// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/forms/CheckedList.h"

#include "ui/ItemListModel.h"

namespace tessaranth {

CheckedList::CheckedList(ItemListModel* list) : QIdentityProxyModel(list), m_list(list) {
    setSourceModel(list);
}

void CheckedList::setChecked(const QSet<qint64>& ids) {
    m_checked = ids;
    if (rowCount() > 0)
        emit dataChanged(index(0, 0), index(rowCount() - 1, 0), {Qt::CheckStateRole});
}

QVariant CheckedList::data(const QModelIndex& index, int role) const {
    if (role == Qt::CheckStateRole && index.column() == 0)
        return m_checked.contains(m_list->id(mapToSource(index))) ? Qt::Checked : Qt::Unchecked;
    return QIdentityProxyModel::data(index, role);
}

bool CheckedList::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::CheckStateRole || !index.isValid())
        return false;
    const qint64 id = m_list->id(mapToSource(index));
    const bool on = value.toInt() == Qt::Checked;
    if (on)
        m_checked.insert(id);
    else
        m_checked.remove(id);
    emit dataChanged(index, index, {Qt::CheckStateRole});
    emit toggled(id, on);
    return true;
}

Qt::ItemFlags CheckedList::flags(const QModelIndex& index) const {
    const Qt::ItemFlags flags = QIdentityProxyModel::flags(index);
    return index.column() == 0 ? flags | Qt::ItemIsUserCheckable : flags;
}

} // namespace tessaranth
