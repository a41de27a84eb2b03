// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIdentityProxyModel>
#include <QSet>

namespace tessaranth {

class ItemListModel;

/// Gives each row of a list a box that can be checked. What is checked is kept by the ids, so that it
/// outlives a list that is narrowed or read again.
class CheckedList final : public QIdentityProxyModel {
    Q_OBJECT

public:
    explicit CheckedList(ItemListModel* list);

    const QSet<qint64>& checked() const { return m_checked; }
    void setChecked(const QSet<qint64>& ids);

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

signals:
    void toggled(qint64 id, bool on);

private:
    ItemListModel* m_list;
    QSet<qint64> m_checked;
};

} // namespace tessaranth
