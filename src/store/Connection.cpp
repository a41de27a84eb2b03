// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Connection.h"

#include "store/ConnectionImpl.h"
#include "store/TableDefinition.h"
#include "store/TextIndex.h"

#include <QCoreApplication>

namespace tessaranth {

namespace {

constexpr size_t keptStatements = 256;

bool isStorageFailure(int code) {
    switch (code & 0xff) {
    case SQLITE_FULL:
    case SQLITE_IOERR:
    case SQLITE_NOMEM:
    case SQLITE_CORRUPT:
    case SQLITE_READONLY:
    case SQLITE_CANTOPEN:
    case SQLITE_NOTADB:
        return true;
    default:
        return false;
    }
}

void bindAll(SQLite::Statement& statement, const std::vector<Value>& parameters) {
    for (size_t i = 0; i < parameters.size(); ++i) {
        const int index = int(i) + 1;
        const auto& data = parameters[i].data();
        if (const auto* whole = std::get_if<qint64>(&data))
            statement.bind(index, int64_t(*whole));
        else if (const auto* number = std::get_if<double>(&data))
            statement.bind(index, *number);
        else if (const auto* text = std::get_if<QString>(&data))
            statement.bind(index, text->toStdString());
        else
            statement.bind(index);
    }
}

} // namespace

QString reasonOf(const SQLite::Exception& error) {
    return (error.getErrorCode() & 0xff) == SQLITE_FULL
               ? QCoreApplication::translate("Connection", "no space left on device")
               : QString::fromUtf8(error.what());
}

SqlError sqlError(const SQLite::Exception& error) {
    const QString reason = reasonOf(error);
    const int code = error.getErrorCode() & 0xff;
    return isStorageFailure(code)
               ? SqlError::storageFailure(reason, code == SQLITE_CORRUPT || code == SQLITE_NOTADB)
               : SqlError(reason);
}

// ---- prepared statements

StatementHandle Connection::Impl::take(const QByteArray& sql) {
    const auto found = idle.find(sql);
    if (found != idle.end()) {
        StatementHandle statement = std::move(found->second);
        idle.erase(found);
        return statement;
    }
    return std::make_unique<SQLite::Statement>(database, sql.constData());
}

void Connection::Impl::giveBack(const QByteArray& sql, StatementHandle statement) {
    if (statement->tryReset() != SQLITE_OK)
        return; // a statement that failed is not kept
    statement->clearBindings();
    if (idle.size() >= keptStatements)
        idle.erase(idle.begin());
    idle.emplace(sql, std::move(statement));
}

struct Query::Impl {
    Connection::Impl* connection = nullptr;
    QByteArray sql;
    StatementHandle statement;
    ~Impl() {
        if (statement)
            connection->giveBack(sql, std::move(statement));
    }
};

Query::Query(std::unique_ptr<Impl> impl) : m_impl(std::move(impl)) {}
Query::Query(Query&&) noexcept = default;
Query::~Query() = default;

bool Query::next() {
    try {
        return m_impl->statement->executeStep();
    } catch (const SQLite::Exception& error) {
        throw sqlError(error);
    }
}

int Query::columnCount() const { return m_impl->statement->getColumnCount(); }

QString Query::columnName(int column) const {
    return QString::fromUtf8(m_impl->statement->getColumnName(column));
}

QString Query::declaredType(int column) const {
    try {
        return QString::fromUtf8(m_impl->statement->getColumnDeclaredType(column)).toUpper();
    } catch (const SQLite::Exception&) {
        return {};
    }
}

bool Query::isNull(int column) const { return m_impl->statement->isColumnNull(column); }

QString Query::text(int column) const {
    const SQLite::Column cell = m_impl->statement->getColumn(column);
    const char* bytes = cell.getText();
    return QString::fromUtf8(bytes, cell.getBytes());
}

qint64 Query::integer(int column) const { return m_impl->statement->getColumn(column).getInt64(); }

Value Query::value(int column) const {
    const SQLite::Column cell = m_impl->statement->getColumn(column);
    if (cell.isNull())
        return {};
    if (cell.isInteger())
        return Value(qint64(cell.getInt64()));
    if (cell.isFloat())
        return Value(cell.getDouble());
    return Value(text(column));
}

// ---- running statements

Query Connection::queryNative(const QByteArray& statement, const std::vector<Value>& parameters) {
    return queryStatement({SqlStatement::Kind::Select, statement, parameters, {}, {}});
}

Query Connection::queryStatement(const SqlStatement& statement) {
    try {
        auto impl = std::make_unique<Query::Impl>();
        impl->connection = m_impl.get();
        impl->sql = statement.sql;
        impl->statement = m_impl->take(statement.sql);
        bindAll(*impl->statement, statement.parameters);
        return Query(std::move(impl));
    } catch (const SQLite::Exception& error) {
        throw sqlError(error);
    }
}

SqlStatement Connection::translateUpdatable(const QString& statement) const {
    return m_impl->dialect.translate(statement, JetSql::Use::Updatable);
}

bool Connection::returnsRows(const QString& statement) const {
    return m_impl->dialect.translate(statement).kind == SqlStatement::Kind::Select;
}

Query Connection::query(const QString& statement) {
    const SqlStatement translated = m_impl->dialect.translate(statement);
    if (translated.kind == SqlStatement::Kind::ChangeColumn)
        throw SqlError(QStringLiteral("the statement returns no rows"));
    return queryStatement(translated);
}

int Connection::execute(const QString& statement) {
    const SqlStatement translated = m_impl->dialect.translate(statement);
    if (translated.kind == SqlStatement::Kind::ChangeColumn) {
        changeColumn(translated.change);
        return 0;
    }
    switch (translated.kind) {
    case SqlStatement::Kind::Insert:
    case SqlStatement::Kind::Update:
    case SqlStatement::Kind::Delete:
        return change(translated);
    default:
        break;
    }
    Query run = queryStatement(translated);
    while (run.next()) {
    }
    switch (translated.kind) {
    case SqlStatement::Kind::CreateTable:
    case SqlStatement::Kind::AddColumn:
        schemaChanged();
        return 0;
    default:
        return 0;
    }
}

bool Connection::attempt(const QString& statement) {
    try {
        execute(statement);
        return true;
    } catch (const SqlError& error) {
        if (error.isStorageFailure())
            throw;
        return false;
    }
}

Value Connection::single(const QString& statement) {
    Query run = query(statement);
    return run.next() ? run.value(0) : Value();
}

bool Connection::exists(const QString& statement) { return query(statement).next(); }

qint64 Connection::lastKey() const { return m_impl->database.getLastInsertRowid(); }

void Connection::Impl::run(const QByteArray& statements, bool alone) {
    const char* rest = statements.constData();
    while (*rest != 0) {
        sqlite3_stmt* prepared = nullptr;
        const char* tail = nullptr;
        int code = sqlite3_prepare_v2(database.getHandle(), rest, -1, &prepared, &tail);
        const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> owner(prepared, sqlite3_finalize);
        if (code != SQLITE_OK)
            throw SQLite::Exception(database.getHandle(), code);
        rest = tail;
        if (!prepared)
            continue; // blanks or a comment
        if (alone && !QByteArrayView(rest).trimmed().isEmpty())
            throw SqlError(
                QStringLiteral("the definition of a table or index holds more than one statement"));
        do
            code = sqlite3_step(prepared);
        while (code == SQLITE_ROW);
        if (code != SQLITE_DONE)
            throw SQLite::Exception(database.getHandle(), code);
    }
}

void Connection::runNative(const QByteArray& statements) {
    try {
        m_impl->run(statements, false);
    } catch (const SQLite::Exception& error) {
        throw sqlError(error);
    }
    schemaChanged();
}

// ---- the catalog's tables

ColumnInfo ColumnInfo::fromDeclaration(const QString& name, const QString& declaredType) {
    const QString declared = declaredType.toUpper();
    return {name, declared.section(u'(', 0, 0).trimmed(),
            declared.section(u'(', 1).section(u')', 0, 0).toInt()};
}

void Connection::schemaChanged() {
    m_impl->schema.clear();
    m_impl->textColumns.clear();
    m_impl->dialect.forgetSchema();
}

void Connection::Impl::readSchema() {
    if (!schema.isEmpty())
        return;
    SQLite::Statement run(database,
                          "SELECT m.name, c.name, c.type FROM sqlite_schema m JOIN "
                          "pragma_table_info(m.name) c WHERE m.type = 'table' AND m.name NOT LIKE "
                          "'sqlite!_%' ESCAPE '!' AND m.name NOT LIKE 'Quick%' ORDER BY m.name, c.cid");
    while (run.executeStep()) {
        const QString table = QString::fromUtf8(run.getColumn(0).getText());
        const ColumnInfo column = ColumnInfo::fromDeclaration(QString::fromUtf8(run.getColumn(1).getText()),
                                                              QString::fromUtf8(run.getColumn(2).getText()));
        if (column.isText())
            textColumns.insert(column.name.toLower());
        TableInfo& info = schema[table.toLower()];
        info.name = table;
        info.columns.push_back(column);
    }
}

QStringList Connection::tables() const {
    m_impl->readSchema();
    QStringList names;
    for (const auto& info : std::as_const(m_impl->schema))
        names.push_back(info.name);
    names.sort(Qt::CaseInsensitive);
    return names;
}

const std::vector<ColumnInfo>& Connection::columns(const QString& table) const {
    static const std::vector<ColumnInfo> none;
    m_impl->readSchema();
    const auto found = m_impl->schema.constFind(table.toLower());
    return found == m_impl->schema.constEnd() ? none : found->columns;
}

QStringList Connection::columnsOf(const QString& table) const {
    QStringList names;
    for (const ColumnInfo& column : columns(table))
        names.push_back(column.name);
    return names;
}

bool Connection::isTextColumn(const QString& column) const {
    m_impl->readSchema();
    return m_impl->textColumns.contains(column.toLower());
}

// The highest key ever given must outlive the rebuilding, or a deleted card's number would be given again.
static void keepSequence(SQLite::Database& database, const QByteArray& table, qint64 last) {
    SQLite::Statement remove(database, "DELETE FROM sqlite_sequence WHERE name = ?1 COLLATE NOCASE");
    remove.bind(1, table.toStdString());
    remove.exec();
    SQLite::Statement add(database, "INSERT INTO sqlite_sequence (name, seq) VALUES (?1, ?2)");
    add.bind(1, table.toStdString());
    add.bind(2, int64_t(last));
    add.exec();
}

// SQLite cannot change a column's type or default in place, so the table is written anew, in the order of
// steps that SQLite's documentation of ALTER TABLE prescribes.
void Connection::changeColumn(const ColumnChange& change) {
    TextIndex(*this).drop(); // its triggers name tables that are about to be rebuilt
    const QByteArray table = change.table.toUtf8();
    try {
        // A savepoint and not a Transaction: a change that fails is undone by itself and may be skipped.
        SQLite::Database& database = m_impl->database;
        SQLite::Savepoint savepoint(database, "change");
        SQLite::Statement definition(
            database, "SELECT sql FROM sqlite_schema WHERE type = 'table' AND name = ? COLLATE NOCASE");
        definition.bind(1, table.toStdString());
        if (!definition.executeStep())
            throw SqlError(QStringLiteral("there is no table %1").arg(change.table));
        const QByteArray old = definition.getColumn(0).getText();
        const QByteArray changed = withColumnChanged(old, change, "tsr_rebuilt");
        if (changed.isEmpty())
            throw SqlError(QStringLiteral("%1 has no column %2").arg(change.table, change.column));
        QByteArrayList restore;
        SQLite::Statement indexes(database,
                                  "SELECT sql FROM sqlite_schema WHERE type = 'index' AND tbl_name = ? "
                                  "COLLATE NOCASE AND sql IS NOT NULL");
        indexes.bind(1, table.toStdString());
        while (indexes.executeStep())
            restore.push_back(indexes.getColumn(0).getText());
        SQLite::Statement sequence(database, "SELECT seq FROM sqlite_sequence WHERE name = ? COLLATE NOCASE");
        sequence.bind(1, table.toStdString());
        const std::optional<qint64> last =
            sequence.executeStep() ? std::optional<qint64>(sequence.getColumn(0).getInt64()) : std::nullopt;
        indexes.reset();
        sequence.reset();
        definition.reset();

        m_impl->idle.clear();
        QByteArrayList names;
        for (const QString& column : columnsOf(change.table))
            names << quotedName(column.toUtf8());
        const QByteArray columns = names.join(", ");
        const QByteArray quotedTable = quotedName(table);
        m_impl->run(changed, true);
        m_impl->run("INSERT INTO tsr_rebuilt (" + columns + ") SELECT " + columns + " FROM " + quotedTable,
                    true);
        m_impl->run("DROP TABLE " + quotedTable, true);
        m_impl->run("ALTER TABLE tsr_rebuilt RENAME TO " + quotedTable, true);
        for (const QByteArray& statement : std::as_const(restore))
            m_impl->run(statement, true);
        if (last)
            keepSequence(database, table, *last);
        savepoint.release();
    } catch (const SQLite::Exception& error) {
        throw sqlError(error);
    }
    schemaChanged();
}

// ---- transactions

Transaction::Transaction(Connection& connection) : m_connection(connection) {
    if (m_connection.m_impl->transactionDepth++ == 0)
        m_connection.runBare("BEGIN IMMEDIATE");
}

void Transaction::commit() {
    m_open = false;
    if (--m_connection.m_impl->transactionDepth > 0)
        return;
    if (std::exchange(m_connection.m_impl->innerFailed, false)) {
        m_connection.undo();
        throw SqlError(QStringLiteral("a part of the operation failed, so nothing of it was kept"));
    }
    try {
        m_connection.runBare("COMMIT");
    } catch (const SqlError&) {
        m_connection.undo();
        throw;
    }
    m_connection.tellNotices();
}

Transaction::~Transaction() {
    if (!m_open)
        return;
    if (--m_connection.m_impl->transactionDepth > 0) {
        m_connection.m_impl->innerFailed = true;
        return;
    }
    m_connection.m_impl->innerFailed = false;
    m_connection.undo();
}

void Connection::runBare(const char* statement) {
    try {
        m_impl->database.exec(statement);
    } catch (const SQLite::Exception& error) {
        throw sqlError(error);
    }
}

void Connection::undo() {
    // A full disk may have undone everything already; rolling back twice would be an error of its own.
    if (sqlite3_get_autocommit(m_impl->database.getHandle()) == 0)
        m_impl->database.tryExec("ROLLBACK");
    m_impl->notices.clear(); // with the transaction what they tell of is undone
    schemaChanged();
}

} // namespace tessaranth
