// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash> // the hash of a QString, for the standard containers
#include <QString>
#include <unordered_map>
#include <vector>

namespace tessaranth {

/// What every list of the program shows: headings and rows of texts, each row with the id of its item and
/// the key of its icon. Filled by the core; shown by views, written by reports and by the command line.
class ItemList {
public:
    struct Heading {
        QString caption;
        bool numeric = false; ///< the column sorts as numbers
        bool inOrder = false; ///< the rows come in the order of this column
    };

    ItemList() = default;
    explicit ItemList(std::vector<Heading> headings) : m_headings(std::move(headings)) {}

    const std::vector<Heading>& headings() const { return m_headings; }
    int columnCount() const { return int(m_headings.size()); }
    int rowCount() const { return int(m_rows.size()); }

    const QString& text(int row, int column) const { return m_cells[cell(row, column)]; }
    qint64 id(int row) const { return m_rows[size_t(row)].id; }
    const QString& iconKey(int row) const { return m_iconKeys[m_rows[size_t(row)].icon]; }
    /// Icon of one cell, such as a recording's carrier; empty for none.
    const QString& cellIconKey(int row, int column) const;

    /// The rows that hold every word of a text, whatever its letter case.
    ItemList narrowed(const QString& text) const;

    void reserve(int rows);
    /// Adds a row; missing cells are empty, texts are stored as given. Returns its number.
    int addRow(qint64 id, const QString& iconKey, std::initializer_list<QString> cells);
    void setText(int row, int column, const QString& text) { m_cells[cell(row, column)] = text; }
    /// Gives the cells of one column their own icons; only one column of a list has them.
    void setCellIcon(int row, int column, const QString& iconKey);
    /// Draws a row in bold, such as a work that is in the collection.
    void setBold(int row, bool bold) { m_rows[size_t(row)].bold = bold; }
    bool isBold(int row) const { return m_rows[size_t(row)].bold; }

private:
    struct Row {
        qint64 id;
        quint16 icon;
        quint16 cellIcon;
        bool bold = false;
    };
    size_t cell(int row, int column) const { return size_t(row) * m_headings.size() + size_t(column); }
    quint16 iconIndex(const QString& key);

    std::vector<Heading> m_headings;
    std::vector<QString> m_cells; ///< row by row, so that a list of 100,000 rows is one block
    std::vector<Row> m_rows;
    std::vector<QString> m_iconKeys{QString()};
    std::unordered_map<QString, quint16> m_iconIndex{{QString(), 0}};
    int m_cellIconColumn = -1;
};

} // namespace tessaranth
