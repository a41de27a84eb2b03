// SPDX-License-Identifier: GPL-3.0-or-later
// Opening, checking and copying the catalog file.
#include "store/ConnectionImpl.h"

#include "platform/Clock.h"
#include "store/LikePattern.h"
#include "store/TextOrder.h"
#include "store/UpgradeSteps.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>
#include <filesystem>
#include <limits>

namespace tessaranth {

namespace {

using Kind = OpenError::Kind;

QString tr(const char* text) { return QCoreApplication::translate("Connection", text); }

// The tables that a catalog of any age has; later versions added the others.
const char* const baseTables[] = {"Cps",          "Pfr",           "Rec",
                                  "UserDef",      "Compositions",  "MainWorks",
                                  "CpsGenres",    "Personages",    "Genres",
                                  "Labels",       "Supports",      "Sources",
                                  "CpsOnRec",     "PfrOnRec",      "CompOnRec",
                                  "CompOnRecPfr", "Images",        "Cards",
                                  "Media",        "Web",           "Relations",
                                  "CpsClass",     "CpsSubCat",     "CpsSubCatJoin",
                                  "PfrClass",     "PfrSubCat",     "PfrSubCatJoin",
                                  "RecClass",     "RecSubCat",     "RecSubCatJoin",
                                  "UserDefClass", "UserDefSubCat", "UserDefSubCatJoin"};

constexpr int headerSize = 100; // of the database file, see "Database File Format" of SQLite

int pageSize(const QByteArray& header) {
    const int size = qFromBigEndian<quint16>(header.constData() + 16);
    return size == 1 ? 65536 : size;
}

void checkFile(const QString& path) {
    const QFileInfo info(path);
    if (!info.exists())
        throw OpenError(Kind::Missing, tr("The catalog %1 does not exist.").arg(path));
    if (info.isDir())
        throw OpenError(Kind::Folder, tr("%1 is a folder, not a catalog.").arg(path));
    // A file marked read-only stays untouched even where the system would let us write it, as for root.
    constexpr QFile::Permissions anyWrite = QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
    if (!info.isWritable() || !(info.permissions() & anyWrite))
        throw OpenError(Kind::ReadOnly, tr("The catalog %1 is read-only.").arg(path));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw OpenError(Kind::NoAccess,
                        tr("The catalog %1 cannot be read: %2").arg(path, file.errorString()));
    const QByteArray head = file.read(headerSize);
    if (head.isEmpty())
        throw OpenError(Kind::NotACatalog, tr("The file %1 is empty; it is not a catalog.").arg(path));
    if (!head.startsWith(QByteArrayView("SQLite format 3\0", 16)))
        throw OpenError(Kind::NotACatalog, tr("The file %1 is not a catalog.").arg(path));
    // SQLite takes a file of less than a page for an empty database and would write a new one into it.
    if (head.size() < headerSize || file.size() < pageSize(head))
        throw OpenError(Kind::Damaged, tr("The catalog %1 is damaged: its end is missing.").arg(path));
}

OpenError openError(const QString& path, const SQLite::Exception& error) {
    const QString reason = QString::fromUtf8(error.what());
    switch (error.getErrorCode() & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return {Kind::Locked, tr("The catalog %1 is in use by another program.").arg(path)};
    case SQLITE_CORRUPT:
        return {Kind::Damaged, tr("The catalog %1 is damaged: %2").arg(path, reason)};
    case SQLITE_NOTADB:
        return {Kind::NotACatalog, tr("The file %1 is not a catalog.").arg(path)};
    case SQLITE_READONLY:
        return {Kind::ReadOnly, tr("The catalog %1 is read-only.").arg(path)};
    default:
        return {Kind::NoAccess, tr("The catalog %1 cannot be opened: %2").arg(path, reason)};
    }
}

extern "C" {

int compareTexts(void*, int sizeA, const void* a, int sizeB, const void* b) {
    return TextOrder::compareUtf8({static_cast<const char*>(a), size_t(sizeA)},
                                  {static_cast<const char*>(b), size_t(sizeB)});
}

std::string_view textOf(sqlite3_value* value) {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return {bytes, bytes ? size_t(sqlite3_value_bytes(value)) : 0};
}

// SQLite calls like(pattern, text). The compiled pattern lives as long as the statement's parameter.
void likeText(sqlite3_context* context, int, sqlite3_value** values) {
    if (sqlite3_value_type(values[0]) == SQLITE_NULL || sqlite3_value_type(values[1]) == SQLITE_NULL)
        return;
    auto* pattern = static_cast<LikePattern*>(sqlite3_get_auxdata(context, 0));
    if (!pattern) {
        auto compiled = std::make_unique<LikePattern>(textOf(values[0]));
        const bool matches = compiled->matches(textOf(values[1]));
        sqlite3_result_int(context, matches ? 1 : 0);
        sqlite3_set_auxdata(context, 0, compiled.release(),
                            [](void* p) { delete static_cast<LikePattern*>(p); });
        return;
    }
    sqlite3_result_int(context, pattern->matches(textOf(values[1])) ? 1 : 0);
}

void nowText(sqlite3_context* context, int, sqlite3_value**) {
    const auto* clock = static_cast<const Clock*>(sqlite3_user_data(context));
    const QByteArray now = clock->now().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")).toUtf8();
    sqlite3_result_text(context, now.constData(), int(now.size()), SQLITE_TRANSIENT);
}

} // extern "C"

} // namespace

void Connection::Impl::registerFunctions() {
    sqlite3* handle = database.getHandle();
    sqlite3_create_collation_v2(handle, "TSR", SQLITE_UTF8, nullptr, compareTexts, nullptr);
    constexpr int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
    sqlite3_create_function_v2(handle, "like", 2, flags, nullptr, likeText, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(handle, "tsr_now", 0, SQLITE_UTF8, const_cast<Clock*>(&clock), nowText,
                               nullptr, nullptr, nullptr);
    // In the catalog's SQL a text in double quotes is a text; a misspelt column must not pass as one.
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
}

Connection::Connection(const QString& path) : m_path(path) {}

Connection::~Connection() {
    if (m_impl)
        m_impl->idle.clear();
}

std::unique_ptr<Connection> Connection::open(const QString& path, const Clock& clock, int newestUpgrade,
                                             Mode mode) {
    checkFile(path);
    std::unique_ptr<Connection> connection(new Connection(path));
    try {
        connection->m_impl = std::make_unique<Impl>(path.toStdString(), clock, *connection);
        SQLite::Database& database = connection->m_impl->database;
        database.setBusyTimeout(1000);
        database.exec("PRAGMA locking_mode = EXCLUSIVE");
        // Takes the lock for good without writing a byte.
        database.exec("BEGIN EXCLUSIVE; COMMIT");
        for (const char* table : baseTables) {
            if (!database.tableExists(table))
                throw OpenError(Kind::NotACatalog,
                                tr("The file %1 is a database, but not a catalog: it has no table %2.")
                                    .arg(path, QLatin1String(table)));
            SQLite::Statement(database, std::string("SELECT 1 FROM ") + table + " LIMIT 1").executeStep();
        }
        const auto newestBelow = [&](int code) {
            return database
                .execAndGet("SELECT COALESCE(MAX(DbUpgradeCode), 0) FROM DbUpgrades WHERE DbUpgradeCode < " +
                            std::to_string(code))
                .getInt();
        };
        if (database.tableExists("DbUpgrades") &&
            (newestBelow(firstOwnUpgradeCode) > newestUpgrade ||
             newestBelow(std::numeric_limits<int>::max()) > std::max(newestUpgrade, newestOwnUpgradeCode)))
            throw OpenError(Kind::Newer,
                            tr("The catalog %1 was written by a newer version of the program.").arg(path));
        database.exec(mode == Mode::Inspect ? "PRAGMA query_only = ON"
                                            : "PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL");
        database.exec("PRAGMA foreign_keys = OFF; PRAGMA temp_store = MEMORY; PRAGMA cache_size = -32768");
        connection->m_impl->registerFunctions();
    } catch (const SQLite::Exception& error) {
        throw openError(path, error);
    }
    return connection;
}

// ---- the file as a whole

qint64 Connection::changesOfSession() const { return sqlite3_total_changes64(m_impl->database.getHandle()); }

qint64 Connection::freePages() { return m_impl->database.execAndGet("PRAGMA freelist_count").getInt64(); }

QStringList Connection::integrityFaults() {
    QStringList faults;
    try {
        SQLite::Statement run(m_impl->database, "PRAGMA integrity_check");
        while (run.executeStep()) {
            const QString line = QString::fromUtf8(run.getColumn(0).getText());
            if (line != QLatin1String("ok"))
                faults.push_back(line);
        }
    } catch (const SQLite::Exception& error) {
        faults.push_back(QString::fromUtf8(error.what()));
    }
    return faults;
}

void Connection::compact() {
    m_impl->idle.clear();
    runBare("VACUUM");
    runBare("PRAGMA wal_checkpoint(TRUNCATE)");
}

namespace {

/// Pages copied between two reports of progress.
constexpr int pagesPerStep = 2000;

void writeCopy(SQLite::Database& source, const std::string& file, const std::function<void(int)>& progress) {
    SQLite::Database copy(file, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
    {
        SQLite::Backup backup(copy, source);
        while (backup.executeStep(pagesPerStep) != SQLITE_DONE) {
            const int total = backup.getTotalPageCount();
            if (progress && total > 0)
                progress((total - backup.getRemainingPageCount()) * 100 / total);
        }
    }
    // One plain file: a copy in write-ahead mode would grow companions where it lands.
    copy.exec("PRAGMA journal_mode = DELETE");
    const std::string verdict = copy.execAndGet("PRAGMA integrity_check").getString();
    if (verdict != "ok")
        throw FileError(QString::fromStdString(verdict));
}

} // namespace

namespace {

/// A log left behind by a killed program belongs to the file that is about to be replaced; SQLite would play
/// it into the new one. So it is first brought home into the old file, which thereby stays whole should the
/// copy fail.
void settle(const QString& target) {
    const QString log = target + QStringLiteral("-wal");
    const QString journal = target + QStringLiteral("-journal");
    if (!QFileInfo::exists(log) && !QFileInfo::exists(journal))
        return;
    try {
        if (QFileInfo::exists(target)) {
            SQLite::Database old(target.toStdString(), SQLite::OPEN_READWRITE);
            old.exec("PRAGMA locking_mode = EXCLUSIVE; PRAGMA journal_mode = DELETE");
        }
    } catch (const SQLite::Exception& error) {
        const int code = error.getErrorCode() & 0xff;
        if (code != SQLITE_NOTADB && code != SQLITE_CORRUPT)
            throw;
    }
    for (const QString& file : {log, target + QStringLiteral("-shm"), journal})
        QFile::remove(file);
}

} // namespace

void Connection::copyTo(const QString& target, const std::function<void(int)>& progress) {
    const QString temporary = target + QStringLiteral(".new");
    QFile::remove(temporary);
    try {
        m_impl->idle.clear();
        writeCopy(m_impl->database, temporary.toStdString(), progress);
        settle(target);
        std::filesystem::rename(temporary.toStdU16String(), target.toStdU16String());
    } catch (const std::exception& error) {
        QFile::remove(temporary);
        QFile::remove(temporary + QStringLiteral("-journal"));
        throw FileError(tr("%1 cannot be written: %2").arg(target, QString::fromUtf8(error.what())));
    }
    if (progress)
        progress(100);
}

} // namespace tessaranth
