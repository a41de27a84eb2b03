// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Recordset.h"

#include "store/Connection.h"
#include "store/RowFilter.h"

namespace tessaranth {

namespace {

Field fieldOf(const ColumnInfo& column) {
    Field field{column.name, Field::Type::Text, column.width};
    if (column.type == QLatin1String("INTEGER"))
        field.type = Field::Type::Integer;
    else if (column.type == QLatin1String("BOOLEAN"))
        field.type = Field::Type::Boolean;
    else if (column.type == QLatin1String("DATETIME"))
        field.type = Field::Type::Date;
    else if (column.type == QLatin1String("REAL"))
        field.type = Field::Type::Number;
    return field;
}

} // namespace

Recordset::Recordset(std::vector<Field> fields) : m_fields(std::move(fields)) {}

Recordset Recordset::open(Connection& connection, const QString& statement) {
    const SqlStatement translated = connection.translateUpdatable(statement);
    if (translated.kind != SqlStatement::Kind::Select)
        throw SqlError(QStringLiteral("only a query opens a record set: ") + statement);
    Recordset set({});
    set.m_connection = &connection;
    set.m_table = translated.rowTable;
    Query run = connection.queryStatement(translated);
    const int first = set.m_table.isEmpty() ? 0 : 1;
    for (int column = first; column < run.columnCount(); ++column)
        set.m_fields.push_back(
            fieldOf(ColumnInfo::fromDeclaration(run.columnName(column), run.declaredType(column))));
    while (run.next()) {
        Row row;
        row.key = first ? run.integer(0) : 0;
        row.cells.reserve(set.m_fields.size());
        for (int column = first; column < run.columnCount(); ++column)
            row.cells.push_back(run.value(column));
        set.m_visible.push_back(int(set.m_rows.size()));
        set.m_rows.push_back(std::move(row));
    }
    return set;
}

int Recordset::fieldIndex(const QString& name) const {
    for (size_t i = 0; i < m_fields.size(); ++i)
        if (m_fields[i].name.compare(name, Qt::CaseInsensitive) == 0)
            return int(i);
    return -1;
}

void Recordset::setFilter(const QString& condition) {
    m_visible.clear();
    if (condition.trimmed().isEmpty()) {
        for (size_t i = 0; i < m_rows.size(); ++i)
            m_visible.push_back(int(i));
        return;
    }
    const RowFilter filter(condition, [this](const QString& name) { return fieldIndex(name); });
    for (size_t i = 0; i < m_rows.size(); ++i)
        if (filter.accepts(m_rows[i].cells))
            m_visible.push_back(int(i));
}

int Recordset::indexOf(int row) const {
    if (row < 0 || row >= rowCount())
        throw SqlError(QStringLiteral("the record set has no row %1").arg(row));
    return m_visible[size_t(row)];
}

Recordset::Row& Recordset::rowAt(int row) { return m_rows[size_t(indexOf(row))]; }

const Value& Recordset::value(int row, int field) const {
    static const Value null;
    if (row < 0 || row >= rowCount() || field < 0 || size_t(field) >= m_fields.size())
        return null;
    return m_rows[size_t(m_visible[size_t(row)])].cells[size_t(field)];
}

const Value& Recordset::value(int row, const QString& field) const { return value(row, fieldIndex(field)); }

int Recordset::add(const Assignments& values) {
    Row row;
    row.cells.resize(m_fields.size());
    if (m_connection) {
        row.key = insert(values);
        reread(row);
    } else {
        assign(row, values);
    }
    m_visible.push_back(int(m_rows.size()));
    m_rows.push_back(std::move(row));
    return rowCount() - 1;
}

void Recordset::update(int row, const Assignments& values) {
    Row& target = rowAt(row);
    if (!m_connection) {
        assign(target, values);
        return;
    }
    requireTable();
    SqlStatement statement;
    statement.kind = SqlStatement::Kind::Update;
    statement.sql = "UPDATE " + quotedName(m_table.toUtf8()) + " SET ";
    for (const auto& [name, value] : values) {
        statement.parameters.push_back(value);
        statement.sql += (statement.parameters.size() > 1 ? ", " : "") + columnName(name) + " = ?" +
                         QByteArray::number(qsizetype(statement.parameters.size()));
    }
    statement.parameters.push_back(target.key);
    statement.sql += " WHERE rowid = ?" + QByteArray::number(qsizetype(statement.parameters.size()));
    m_connection->change(statement);
    reread(target);
}

void Recordset::remove(int row) {
    const int index = indexOf(row);
    if (m_connection) {
        requireTable();
        SqlStatement statement;
        statement.kind = SqlStatement::Kind::Delete;
        statement.sql = "DELETE FROM " + quotedName(m_table.toUtf8()) + " WHERE rowid = ?1";
        statement.parameters.push_back(m_rows[size_t(index)].key);
        m_connection->change(statement);
    }
    m_rows.erase(m_rows.begin() + index);
    m_visible.erase(m_visible.begin() + row);
    for (int& visible : m_visible)
        if (visible > index)
            --visible;
}

// ---- writing through

void Recordset::requireTable() const {
    if (m_table.isEmpty())
        throw SqlError(QStringLiteral("the rows of this record set belong to no single table"));
}

QByteArray Recordset::columnName(const QString& field) const {
    for (const ColumnInfo& column : m_connection->columns(m_table))
        if (column.name.compare(field, Qt::CaseInsensitive) == 0)
            return quotedName(column.name.toUtf8());
    throw SqlError(QStringLiteral("%1 has no column %2").arg(m_table, field));
}

qint64 Recordset::insert(const Assignments& values) {
    requireTable();
    SqlStatement statement;
    statement.kind = SqlStatement::Kind::Insert;
    QByteArray columns;
    QByteArray places;
    for (const auto& [name, value] : values) {
        statement.parameters.push_back(value);
        const char* comma = statement.parameters.size() > 1 ? ", " : "";
        columns += comma + columnName(name);
        places += QByteArray(comma) + '?' + QByteArray::number(qsizetype(statement.parameters.size()));
    }
    statement.sql = "INSERT INTO " + quotedName(m_table.toUtf8()) +
                    (values.empty() ? " DEFAULT VALUES" : " (" + columns + ") VALUES (" + places + ')');
    m_connection->change(statement);
    return m_connection->lastKey();
}

void Recordset::assign(Row& row, const Assignments& values) {
    for (const auto& [name, value] : values) {
        const int index = fieldIndex(name);
        if (index < 0)
            throw SqlError(QStringLiteral("the record set has no field %1").arg(name));
        row.cells[size_t(index)] = value;
    }
}

// The row as stored: defaults of the table and conversions of the database included.
void Recordset::reread(Row& row) {
    SqlStatement statement;
    statement.sql = "SELECT ";
    for (size_t i = 0; i < m_fields.size(); ++i)
        statement.sql += (i ? ", " : "") + quotedName(m_fields[i].name.toUtf8());
    statement.sql += " FROM " + quotedName(m_table.toUtf8()) + " WHERE rowid = ?1";
    statement.parameters.push_back(row.key);
    Query run = m_connection->queryStatement(statement);
    if (!run.next())
        throw SqlError(QStringLiteral("the row has been deleted meanwhile"));
    for (size_t i = 0; i < m_fields.size(); ++i)
        row.cells[i] = run.value(int(i));
}

} // namespace tessaranth
