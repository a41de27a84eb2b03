// SPDX-License-Identifier: GPL-3.0-or-later
// What the connection does for the word index: reading its words, living without it, taking its remains away.
#include "store/ConnectionImpl.h"
#include "store/TextIndex.h"

#include <QCoreApplication>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("Connection", text); }

/// In a catalog that is only looked at, tables in memory may be made all the same.
class Writable {
public:
    explicit Writable(SQLite::Database& database)
        : m_database(database), m_was(database.execAndGet("PRAGMA query_only").getInt() != 0) {
        if (m_was)
            m_database.exec("PRAGMA query_only = OFF");
    }
    ~Writable() {
        if (m_was)
            m_database.tryExec("PRAGMA query_only = ON");
    }

private:
    SQLite::Database& m_database;
    bool m_was;
};

/// While it lives, the parts of an index may be dropped like any table, and the schema be written.
class Undefended {
public:
    explicit Undefended(sqlite3* handle) : m_handle(handle) {
        sqlite3_db_config(m_handle, SQLITE_DBCONFIG_DEFENSIVE, -1, &m_was);
        sqlite3_db_config(m_handle, SQLITE_DBCONFIG_DEFENSIVE, 0, nullptr);
    }
    ~Undefended() { sqlite3_db_config(m_handle, SQLITE_DBCONFIG_DEFENSIVE, m_was, nullptr); }

private:
    sqlite3* m_handle;
    int m_was = 0;
};

} // namespace

Query Connection::indexTerms(const QByteArray& table) {
    try {
        const Writable writable(m_impl->database);
        const std::string terms = "temp.terms_of_" + table.toStdString();
        m_impl->database.exec("CREATE VIRTUAL TABLE IF NOT EXISTS " + terms + " USING fts5vocab(main, " +
                              table.toStdString() + ", instance)");
    } catch (const SQLite::Exception& error) {
        throw sqlError(error);
    }
    return queryNative("SELECT term, doc FROM temp.terms_of_" + table);
}

void Connection::dropRemains(const QByteArray& index, const QByteArrayList& parts) {
    try {
        m_impl->idle.clear();
        const Undefended undefended(m_impl->database.getHandle());
        m_impl->database.exec("PRAGMA writable_schema = ON");
        SQLite::Statement forget(
            m_impl->database,
            "DELETE FROM sqlite_schema WHERE type = 'table' AND name = ?1 AND rootpage = 0");
        forget.bind(1, index.toStdString());
        forget.exec();
        m_impl->database.exec("PRAGMA writable_schema = RESET");
        for (const QByteArray& part : parts)
            m_impl->database.exec("DROP TABLE IF EXISTS " + part.toStdString());
    } catch (const SQLite::Exception& error) {
        m_impl->database.tryExec("PRAGMA writable_schema = OFF");
        throw sqlError(error);
    }
    schemaChanged();
}

int Connection::change(const SqlStatement& statement) {
    try {
        Query run = queryStatement(statement);
        while (run.next()) {
        }
        return m_impl->database.getChanges();
    } catch (const SqlError& error) {
        const int changed = changeWithoutIndex(statement, error.reason());
        if (changed < 0)
            throw;
        return changed;
    }
}

// The index serves the search only, so it must not stand between the user and his catalog: when a statement
// goes through without our triggers, they were at fault, and they stay away until the index is made anew.
// Otherwise everything is as before, and so is the error.
int Connection::changeWithoutIndex(const SqlStatement& statement, const QString& reason) {
    SQLite::Database& database = m_impl->database;
    const int code = sqlite3_errcode(database.getHandle()) & 0xff;
    // An error that has undone the transaction must not be followed by half of it.
    const bool undone = m_impl->transactionDepth > 0 && sqlite3_get_autocommit(database.getHandle()) != 0;
    if ((code != SQLITE_ERROR && code != SQLITE_CORRUPT) || undone)
        return -1;
    try {
        SQLite::Savepoint savepoint(database, "without_index");
        if (TextIndex(*this).dropTriggers() == 0)
            return -1;
        Query run = queryStatement(statement);
        while (run.next()) {
        }
        const int changed = database.getChanges();
        savepoint.release();
        notice(
            tr("The word index of the quick search is damaged: %1\nWhat you changed has been stored all the "
               "same. The next quick search makes the index anew.")
                .arg(reason));
        return changed;
    } catch (const SQLite::Exception&) {
        return -1;
    } catch (const SqlError&) {
        return -1;
    }
}

void Connection::setNotice(std::function<void(const QString&)> notice) { m_impl->tell = std::move(notice); }

// Not before the operation stands: what is told in its middle may be taken back.
void Connection::notice(const QString& text) {
    if (m_impl->transactionDepth > 0)
        m_impl->notices << text;
    else if (m_impl->tell)
        m_impl->tell(text);
}

void Connection::tellNotices() {
    for (const QString& text : std::exchange(m_impl->notices, {}))
        notice(text);
}

} // namespace tessaranth
