// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// What the sources of Connection share; nobody else includes it.

#include "store/CatalogShape.h"
#include "store/ChangeLog.h"
#include "store/Connection.h"
#include "store/ReadingPlace.h"

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

    Impl(const std::string& path, int flags, const Clock& c, const SchemaView& view)
        : clock(c), database(path, flags), dialect(view) {}
    /// The same for a catalog that is only looked at.
    static std::unique_ptr<Impl> toRead(const QString& catalog, const Clock& clock, const SchemaView& view);

    /// Each statement is prepared by itself. `alone`: there must be one only, as in what the file itself
    /// holds, where a second one would be somebody's trick.
    void run(const QByteArray& statements, bool alone);
    StatementHandle take(const QByteArray& sql);
    void giveBack(const QByteArray& sql, StatementHandle statement);
    void readSchema();
    void registerFunctions();

    const Clock& clock;
    std::shared_ptr<QTemporaryDir>
        copied; ///< the folder of a private copy; goes after the database is closed
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
    std::function<void(const QString&)> tell;
    QStringList notices; ///< to be told once the open transaction stands
};

SqlError sqlError(const SQLite::Exception& error);

/// Refuses what cannot be a catalog before SQLite sees it; throws OpenError.
void checkCatalogFile(const QString& path, Connection::Mode mode = Connection::Mode::Normal);
OpenError openError(const QString& path, const SQLite::Exception& error);
/// Makes what a file of a stranger could do harmless, and takes the lock for good without writing a byte.
void lockSafely(SQLite::Database& database);
/// Throws OpenError for a catalog of a newer version, one that lacks something, or one that holds what is not
/// ours.
void checkShape(const CatalogShape& shape, const QString& path, int newestUpgrade);

} // namespace tessaranth
