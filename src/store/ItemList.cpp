// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/ItemList.h"

#include "store/TextOrder.h"

namespace tessaranth {

const QString& ItemList::cellIconKey(int row, int column) const {
    return m_iconKeys[column == m_cellIconColumn ? m_rows[size_t(row)].cellIcon : 0];
}

ItemList ItemList::narrowed(const QString& text) const {
    const QStringList words = TextOrder::fold(text).split(u' ', Qt::SkipEmptyParts);
    if (words.isEmpty())
        return *this;
    ItemList found(m_headings);
    for (int row = 0; row < rowCount(); ++row) {
        QString line;
        for (int column = 0; column < columnCount(); ++column)
            line += this->text(row, column) + u'\t';
        line = TextOrder::fold(line);
        if (!std::all_of(words.begin(), words.end(),
                         [&](const QString& word) { return line.contains(word); }))
            continue;
        const int added = found.addRow(id(row), iconKey(row), {});
        found.setBold(added, isBold(row));
        for (int column = 0; column < columnCount(); ++column) {
            found.setText(added, column, this->text(row, column));
            if (!cellIconKey(row, column).isEmpty())
                found.setCellIcon(added, column, cellIconKey(row, column));
        }
    }
    return found;
}

void ItemList::reserve(int rows) {
    m_rows.reserve(size_t(rows));
    m_cells.reserve(size_t(rows) * m_headings.size());
}

int ItemList::addRow(qint64 id, const QString& iconKey, std::initializer_list<QString> cells) {
    m_rows.push_back({id, iconIndex(iconKey), 0});
    size_t column = 0;
    for (auto it = cells.begin(); it != cells.end() && column < m_headings.size(); ++it, ++column)
        m_cells.push_back(*it);
    m_cells.resize(m_rows.size() * m_headings.size());
    return rowCount() - 1;
}

void ItemList::setCellIcon(int row, int column, const QString& iconKey) {
    m_cellIconColumn = column;
    m_rows[size_t(row)].cellIcon = iconIndex(iconKey);
}

quint16 ItemList::iconIndex(const QString& key) {
    const auto [it, isNew] = m_iconIndex.try_emplace(key, quint16(m_iconKeys.size()));
    if (isNew)
        m_iconKeys.push_back(key);
    return it->second;
}

} // namespace tessaranth
