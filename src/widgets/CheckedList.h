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
    /// Rows with a third state, half-checked, in which they are from now on.
    void setMixed(const QSet<qint64>& ids);
    const QSet<qint64>& halfChecked() const { return m_half; }
    /// Takes a row's box to its next state, whatever the index's column.
    void toggle(const QModelIndex& index);

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

signals:
    void toggled(qint64 id, bool on);

private:
    void boxesChanged();

    ItemListModel* m_list;
    QSet<qint64> m_checked;
    QSet<qint64> m_mixed;
    QSet<qint64> m_half; ///< those of `m_mixed` that are half-checked
};

} // namespace tessaranth
