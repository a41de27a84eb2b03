// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Connection.h"

#include "store/ConnectionImpl.h"
#include "store/RowImage.h"
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
    ChangeLog& log = m_impl->connection->log;
    const ChangeLog::Mark mark = log.mark();
    try {
        return m_impl->statement->executeStep();
    } catch (const SQLite::Exception& error) {
        log.cutBack(mark); // SQLite has taken back what the statement had done before it failed
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
    if (statement.kind != SqlStatement::Kind::Select)
        requireTransaction();
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

Query Connection::boundQuery(const QByteArray& statement,
                             const std::vector<const RowImage::Cell*>& parameters) {
    Query run = queryStatement({SqlStatement::Kind::Select, statement, {}, {}, {}});
    int index = 0;
    for (const RowImage::Cell* cell : parameters)
        RowImage::bind(*run.m_impl->statement, ++index, *cell);
    return run;
}

int Connection::executeNative(const QByteArray& statement,
                              const std::vector<const RowImage::Cell*>& parameters) {
    requireTransaction();
    boundQuery(statement, parameters).next();
    return m_impl->database.getChanges();
}

std::optional<qint64> Connection::singleNative(const QByteArray& statement,
                                               const std::vector<const RowImage::Cell*>& parameters) {
    Query run = boundQuery(statement, parameters);
    return run.next() ? std::optional(run.integer(0)) : std::nullopt;
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
        requireTransaction();
        changeColumn(translated.change);
        m_impl->shapeChanged = true;
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
        m_impl->shapeChanged = true;
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
    requireTransaction();
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
    m_impl->log.forgetSchema();
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
    const ChangeLog::Mark mark = m_impl->log.mark();
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
        m_impl->log.cutBack(mark);
        throw sqlError(error);
    }
    schemaChanged();
}

// ---- transactions

// Both guards of the change log: what is written outside a transaction would be announced by nobody, and what
// is written to a table whose columns it does not know would be passed over.
void Connection::requireTransaction() const {
    if (m_impl->transactionDepth == 0 || sqlite3_get_autocommit(m_impl->database.getHandle()) != 0)
        throw SqlError(QStringLiteral("a change of the catalog outside a transaction"));
    m_impl->log.learn([this](const QString& table) { return columnsOf(table); });
}

CatalogChanges Connection::changes() {
    CatalogChanges changes = m_impl->log.changes([this](qint64 placedWork) {
        const RowImage::Cell id{0, 'i', placedWork, 0, {}};
        return singleNative("SELECT RecID FROM CompOnRec WHERE CompOnRecID = ?", {&id}).value_or(0);
    });
    for (const CatalogChanges::Merge& merge : std::as_const(m_impl->merges))
        changes.noteMerge(merge.from, merge.to);
    if (m_impl->shapeChanged)
        changes.noteEverything();
    return changes;
}

void Connection::setAnnouncer(std::function<void(const CatalogChanges&)> announcer) {
    m_impl->announcer = std::move(announcer);
}

void Connection::setKeeper(ChangeKeeper* keeper) {
    m_impl->keeper = keeper;
    m_impl->log.setKeeper(keeper);
}

void Connection::touch(const CardRef& thing) { m_impl->log.note(thing, CatalogChanges::How::Changed); }

// In a catalog without the table, which is not up to date or in which somebody dropped it, there is no token;
// then the history ends at the next opening.
void Connection::storeToken(qint64 token) {
    const RowImage::Cell cell{0, 'i', token, 0, {}};
    if (columns(QStringLiteral("TsrHistory")).empty())
        return;
    sqlite3* handle = m_impl->database.getHandle();
    const sqlite3_int64 last =
        sqlite3_last_insert_rowid(handle); // of the operation, for whoever asks after it
    boundQuery("INSERT OR REPLACE INTO TsrHistory (HistoryID, Token) VALUES (1, ?)", {&cell}).next();
    sqlite3_set_last_insert_rowid(handle, last);
}

Transaction::Transaction(Connection& connection, const QString& words)
    : m_connection(connection), m_words(words) {
    begin(true);
}

Transaction::Transaction(Connection& connection, Unrecorded) : m_connection(connection) { begin(false); }

void Transaction::begin(bool recorded) {
    Connection::Impl& impl = *m_connection.m_impl;
    if (impl.transactionDepth == 0) {
        m_connection.runBare("BEGIN IMMEDIATE");
        impl.log.begin(recorded);
        impl.shapeChanged = false;
        impl.merges.clear();
    }
    ++impl.transactionDepth;
}

void Transaction::merge(const CardRef& from, const CardRef& to) {
    m_connection.m_impl->merges.push_back({from, to});
}

void Transaction::commit() {
    Connection::Impl& impl = *m_connection.m_impl;
    m_open = false;
    if (--impl.transactionDepth > 0)
        return;
    if (std::exchange(impl.innerFailed, false)) {
        m_connection.undo();
        throw SqlError(QStringLiteral("a part of the operation failed, so nothing of it was kept"));
    }
    CatalogChanges changes;
    try {
        changes = m_connection.changes();
        if (impl.keeper) {
            const bool breaks = impl.shapeChanged || impl.log.hasUnrecorded();
            if (const auto token = impl.keeper->prepare({m_words, impl.log.rows(), changes, breaks}))
                m_connection.storeToken(*token);
        }
        m_connection.runBare("COMMIT");
    } catch (const Error&) {
        m_connection.undo();
        throw;
    }
    impl.log.end();
    if (impl.keeper)
        impl.keeper->committed();
    m_connection.tellNotices();
    if (impl.announcer)
        impl.announcer(changes);
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
    m_impl->log.end();
    if (m_impl->keeper)
        m_impl->keeper->cancelled();
    m_impl->notices.clear(); // with the transaction what they tell of is undone
    schemaChanged();
}

} // namespace tessaranth
