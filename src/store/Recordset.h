// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/Value.h"

#include <QStringList>
#include <utility>
#include <vector>

namespace tessaranth {

class Connection;

/// One column of a record set. `width` in characters for texts, 0 for none.
struct Field {
    enum class Type { Text, Integer, Number, Boolean, Date };
    QString name;
    Type type = Type::Text;
    int width = 0;
};

/// The rows of a statement, fetched whole; or of a file. Rows of a set opened on one table (or on a join
/// that selects columns of one table only) can be added, updated and deleted, which writes the catalog at
/// once. Field names compare without regard to case. Failing calls throw SqlError or FileError.
class Recordset {
public:
    using Assignments = std::vector<std::pair<QString, Value>>;

    explicit Recordset(std::vector<Field> fields); ///< an empty one in memory
    static Recordset open(Connection& connection, const QString& statement);
    /// Opens a file written by `save`. Throws FileError for anything else; `maxRows` guards against
    /// files that would fill the memory.
    static Recordset load(const QString& path, int maxRows = 1'000'000);
    /// Writes the visible rows to a file (temporary name, then renamed).
    void save(const QString& path) const;

    const std::vector<Field>& fields() const { return m_fields; }
    int fieldIndex(const QString& name) const; ///< -1 when there is no such field

    /// Shows only the rows that meet a condition such as "CompID = 3 AND Pos = 1" or
    /// "(CpsLname LIKE '%x%') OR (CpsFname LIKE '%x%')"; an empty text shows all again.
    void setFilter(const QString& condition);

    int rowCount() const { return int(m_visible.size()); } ///< of the rows shown
    bool isEmpty() const { return m_visible.empty(); }
    /// Null when there is no such row or field; a change of a row that is none throws SqlError.
    const Value& value(int row, int field) const;
    const Value& value(int row, const QString& field) const;

    int add(const Assignments& values); ///< the new row's number, last of the rows shown
    void update(int row, const Assignments& values);
    void remove(int row); ///< the rows after it move up by one

private:
    struct Row {
        qint64 key = 0;
        std::vector<Value> cells;
    };
    int indexOf(int row) const; ///< into m_rows
    Row& rowAt(int row);
    void requireTable() const;
    QByteArray columnName(const QString& field) const;
    qint64 insert(const Assignments& values);
    void assign(Row& row, const Assignments& values);
    void reread(Row& row);

    Connection* m_connection = nullptr;
    QString m_table; ///< the table written to; empty for a set that is in memory or cannot be written
    std::vector<Field> m_fields;
    std::vector<Row> m_rows;
    std::vector<int> m_visible; ///< indexes into m_rows
};

} // namespace tessaranth
