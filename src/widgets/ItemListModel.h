// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/ItemList.h"

#include <QAbstractTableModel>

namespace tessaranth {

class IconStore;

/// Shows an ItemList in any view. Sorting reorders an index and never touches the list; texts sort as
/// collectors expect (Op. 2 before Op. 10), numeric columns as numbers, equal rows keep their order.
class ItemListModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit ItemListModel(const IconStore& icons, QObject* parent = nullptr);

    /// Shows another list, in its own order.
    void setList(ItemList list);
    const ItemList& list() const { return m_list; }

    qint64 id(const QModelIndex& index) const; ///< 0 for no row
    /// The row's icon, which tells kinds apart in a list of several; empty for no row.
    QString iconKey(const QModelIndex& index) const;
    QModelIndex indexOf(qint64 id) const; ///< invalid when no row has it

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    /// Column -1 gives the list's own order back.
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

    /// The key under which item views carry rows by drag and drop: ids, one a line.
    inline static const QString dragType = QStringLiteral("application/x-tessaranth-items");
    QStringList mimeTypes() const override { return {dragType}; }
    static QList<qint64> droppedIds(const QMimeData* data); ///< what was dragged; empty for other things
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    int listRow(int row) const { return m_order.empty() ? row : m_order[size_t(row)]; }

    const IconStore& m_icons;
    ItemList m_list;
    std::vector<int> m_order; ///< empty: the list's own order
};

} // namespace tessaranth
