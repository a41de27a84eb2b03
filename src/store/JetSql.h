// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/Value.h"

#include <QByteArray>
#include <QStringList>
#include <memory>
#include <optional>
#include <vector>

namespace tessaranth {

/// What the dialect has to know of the open catalog: which columns exist and which hold text.
class SchemaView {
public:
    virtual ~SchemaView() = default;
    /// Columns of a table in their order, as declared; empty when there is no such table.
    /// Table and column names compare without regard to case.
    virtual QStringList columnsOf(const QString& table) const = 0;
    /// True when any table has a text column of this name.
    virtual bool isTextColumn(const QString& column) const = 0;
};

/// A change of one column that SQLite has no statement for; Connection carries it out.
struct ColumnChange {
    QString table;
    QString column;
    std::optional<QByteArray> type; ///< new declared type, in SQLite's words
    bool setsDefault = false;
    QByteArray defaultValue; ///< SQLite literal; empty: the column has no default
};

/// A statement in SQLite's words. Literals of queries and of changes to rows are taken out as
/// parameters, so that statements which differ in an id or a name only share one prepared statement.
struct SqlStatement {
    enum class Kind { Select, Insert, Update, Delete, CreateTable, AddColumn, ChangeColumn };
    Kind kind = Kind::Select;
    QByteArray sql; ///< UTF-8; parameters are ?1, ?2 ...; empty for ChangeColumn
    std::vector<Value> parameters;
    ColumnChange change; ///< for ChangeColumn
    QString rowTable;    ///< for updatable queries: the table whose rowid is the first column
};

/// Reads the catalog's SQL dialect and writes SQLite's.
///
/// Covered: SELECT [DISTINCT] with nested INNER, LEFT and RIGHT joins, WHERE, GROUP BY, HAVING, ORDER BY;
/// sub-selects after IN; INSERT .. VALUES; UPDATE; DELETE [*|T.*] FROM, with joins; CREATE TABLE with
/// COUNTER, LONG, BIT, DATE and VARCHAR(n) columns; ALTER TABLE .. ADD COLUMN and .. ALTER COLUMN;
/// IsNull, Now, First, Count, Max, Min, Sum; True and False; texts in single or double quotes.
/// Anything else is an SqlError with the position where reading stopped.
class JetSql {
public:
    explicit JetSql(const SchemaView& schema);
    ~JetSql();

    enum class Use {
        Plain,
        Updatable ///< adds the rowid of the one table whose columns are selected as the first column
    };
    SqlStatement translate(QStringView statement, Use use = Use::Plain) const;

    /// Must be called after the catalog's tables or columns changed.
    void forgetSchema();

private:
    class Cache;
    const SchemaView& m_schema;
    std::unique_ptr<Cache> m_cache;
};

/// Doubles every "'" so that the text can stand between single quotes in a statement.
QString quoted(const QString& text);

/// A name of a table or column for a statement in SQLite's words, whatever is in it.
QByteArray quotedName(const QByteArray& name);

/// `quoted`, with the wildcards of LIKE bracketed, so that "100%" finds "100%" and nothing else.
QString quotedPattern(const QString& text);

} // namespace tessaranth
