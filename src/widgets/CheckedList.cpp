// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/CheckedList.h"

#include "widgets/ItemListModel.h"

namespace tessaranth {

CheckedList::CheckedList(ItemListModel* list) : QIdentityProxyModel(list), m_list(list) {
    setSourceModel(list);
}

void CheckedList::setChecked(const QSet<qint64>& ids) {
    m_checked = ids;
    boxesChanged();
}

void CheckedList::setMixed(const QSet<qint64>& ids) {
    m_mixed = ids;
    m_half = ids;
    m_checked -= ids;
    boxesChanged();
}

void CheckedList::boxesChanged() {
    if (rowCount() > 0)
        emit dataChanged(index(0, 0), index(rowCount() - 1, 0), {Qt::CheckStateRole});
}

QVariant CheckedList::data(const QModelIndex& index, int role) const {
    if (role != Qt::CheckStateRole || index.column() != 0)
        return QIdentityProxyModel::data(index, role);
    const qint64 id = m_list->id(mapToSource(index));
    return m_half.contains(id) ? Qt::PartiallyChecked : m_checked.contains(id) ? Qt::Checked : Qt::Unchecked;
}

bool CheckedList::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::CheckStateRole || !index.isValid())
        return false;
    const qint64 id = m_list->id(mapToSource(index));
    const int state = value.toInt();
    if (state == Qt::PartiallyChecked && !m_mixed.contains(id))
        return false;
    m_checked.remove(id);
    m_half.remove(id);
    if (state == Qt::Checked) {
        m_checked.insert(id);
    } else if (state == Qt::PartiallyChecked) {
        m_half.insert(id);
    }
    emit dataChanged(index, index, {Qt::CheckStateRole});
    emit toggled(id, state == Qt::Checked);
    return true;
}

// The states follow each other as they do when the mouse clicks the box.
void CheckedList::toggle(const QModelIndex& at) {
    const QModelIndex box = at.siblingAtColumn(0);
    const int state = box.data(Qt::CheckStateRole).toInt();
    const bool tristate = flags(box).testFlag(Qt::ItemIsUserTristate);
    setData(box,
            tristate               ? (state + 1) % 3
            : state == Qt::Checked ? Qt::Unchecked
                                   : Qt::Checked,
            Qt::CheckStateRole);
}

Qt::ItemFlags CheckedList::flags(const QModelIndex& index) const {
    const Qt::ItemFlags flags = QIdentityProxyModel::flags(index);
    if (index.column() != 0)
        return flags;
    const bool mixed = m_mixed.contains(m_list->id(mapToSource(index)));
    return flags | Qt::ItemIsUserCheckable | (mixed ? Qt::ItemIsUserTristate : Qt::NoItemFlags);
}

} // namespace tessaranth
