// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// What the sources of Connection share; nobody else includes it.

#include "store/ChangeLog.h"
#include "store/Connection.h"

#include <QHash>
#include <QSet>
#include <SQLiteCpp/Backup.h>
#include <SQLiteCpp/SQLiteCpp.h>
#include <SQLiteCpp/Savepoint.h>
#include <sqlite3.h>
#include <unordered_map>

namespace tessaranth {

using StatementHandle = std::unique_ptr<SQLite::Statement>;

struct Connection::Impl {
    struct TableInfo {
        QString name;
        std::vector<ColumnInfo> columns;
    };
    struct ByteHash {
        size_t operator()(const QByteArray& bytes) const { return qHash(bytes); }
    };

    Impl(const std::string& path, const Clock& c, const SchemaView& view)
        : clock(c), database(path, SQLite::OPEN_READWRITE), dialect(view) {}

    StatementHandle take(const QByteArray& sql);
    void giveBack(const QByteArray& sql, StatementHandle statement);
    void readSchema();
    void registerFunctions();

    const Clock& clock;
    SQLite::Database database;
    ChangeLog log{database.getHandle()}; ///< before any statement is prepared
    ChangeKeeper* keeper = nullptr;
    std::function<void(const CatalogChanges&)> announcer;
    JetSql dialect;
    std::unordered_multimap<QByteArray, StatementHandle, ByteHash> idle;
    QHash<QString, TableInfo> schema; ///< by lower-case name; read when first asked for
    QSet<QString> textColumns;
    int transactionDepth = 0;
    bool innerFailed = false;            ///< a transaction within the open one was left without commit
    bool shapeChanged = false;           ///< the open transaction changed a table's definition
    QList<CatalogChanges::Merge> merges; ///< of the open transaction
};

SqlError sqlError(const SQLite::Exception& error);

} // namespace tessaranth
