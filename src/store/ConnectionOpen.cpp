// SPDX-License-Identifier: GPL-3.0-or-later
// Opening, checking and copying the catalog file.
#include "store/ConnectionImpl.h"

#include "platform/Clock.h"
#include "platform/FileReader.h"
#include "platform/FileWriter.h"
#include "store/LikePattern.h"
#include "store/TextIndex.h"
#include "store/TextOrder.h"
#include "store/UpgradeSteps.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QUrl>
#include <QtEndian>

namespace tessaranth {

namespace {

using Kind = OpenError::Kind;

QString tr(const char* text) { return QCoreApplication::translate("Connection", text); }

constexpr int headerSize = 100; // of the database file, see "Database File Format" of SQLite

int pageSize(const QByteArray& header) {
    const int size = qFromBigEndian<quint16>(header.constData() + 16);
    return size == 1 ? 65536 : size;
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

int authorize(void*, int action, const char* first, const char* second, const char*, const char*) {
    switch (action) {
    case SQLITE_ATTACH: // a compact attaches a nameless file of its own
        return first && *first == 0 ? SQLITE_OK : SQLITE_DENY;
    case SQLITE_CREATE_VTABLE:
    case SQLITE_DROP_VTABLE:
        return second && QByteArrayView(second).startsWith("fts5") ? SQLITE_OK : SQLITE_DENY;
    default:
        return SQLITE_OK;
    }
}

} // extern "C"

/// The first of many, in one line.
QString listed(const QStringList& things) {
    constexpr qsizetype most = 8;
    QString text = things.mid(0, most).join(QStringLiteral(", "));
    if (things.size() > most)
        text += tr(" and %1 more").arg(things.size() - most);
    return text;
}

} // namespace

void checkCatalogFile(const QString& path, Connection::Mode mode) {
    const QFileInfo info(path);
    if (!info.exists())
        throw OpenError(Kind::Missing, tr("The catalog %1 does not exist.").arg(path));
    if (info.isDir())
        throw OpenError(Kind::Folder, tr("%1 is a folder, not a catalog.").arg(path));
    if (!isPlainFile(path, Links::Follow)) // a pipe would be waited for
        throw OpenError(Kind::NotACatalog, tr("The file %1 is not a catalog.").arg(path));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) // before the next check: what cannot be read is not "read-only"
        throw OpenError(Kind::NoAccess, tr("The catalog %1 cannot be read: %2").arg(path, reasonOf(file)));
    // A file marked read-only stays untouched even where the system would let us write it, as for root.
    constexpr QFile::Permissions anyWrite = QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
    if (mode == Connection::Mode::Normal && (!info.isWritable() || !(info.permissions() & anyWrite)))
        throw OpenError(Kind::ReadOnly, tr("The catalog %1 is read-only.").arg(path));
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
    const QString reason = reasonOf(error);
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

// A catalog may come from anybody. Our own triggers must run, so the schema stays trusted; whatever else a
// file may bring along is refused by what it is made of, and cannot reach other files in any case.
void lockSafely(SQLite::Database& database) {
    sqlite3* handle = database.getHandle();
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    // Until the catalog is accepted nothing is written, not even what a log beside it holds.
    sqlite3_db_config(handle, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    sqlite3_set_authorizer(handle, authorize, nullptr);
    database.setBusyTimeout(1000);
    database.exec("PRAGMA cell_size_check = ON");
    database.exec("PRAGMA locking_mode = EXCLUSIVE");
    database.exec("BEGIN EXCLUSIVE");
    database.exec("COMMIT");
}

void checkShape(const CatalogShape& shape, const QString& path, int newestUpgrade) {
    if (!shape.isACatalog())
        throw OpenError(Kind::NotACatalog, tr("The file %1 is a database, but not a catalog: it lacks %2.")
                                               .arg(path, listed(shape.missing)));
    if (shape.newestUpgrade > newestUpgrade || shape.newestOwnUpgrade > newestOwnUpgradeCode)
        throw OpenError(Kind::Newer,
                        tr("The catalog %1 was written by a newer version of the program.").arg(path));
    if (!shape.missing.isEmpty())
        throw OpenError(Kind::Incomplete,
                        tr("The catalog %1 is not whole: it lacks %2.").arg(path, listed(shape.missing)));
    if (!shape.foreign.isEmpty())
        throw OpenError(
            Kind::Foreign,
            tr("The catalog %1 holds things that this program did not make and that could do harm: "
               "%2. It was not opened.")
                .arg(path, listed(shape.foreign)));
}

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

std::unique_ptr<Connection::Impl> Connection::Impl::toRead(const QString& catalog, const Clock& clock,
                                                           const SchemaView& view) {
    const ReadingPlace place = ReadingPlace::of(catalog);
    const bool immutable = place.way == ReadingPlace::Way::Immutable;
    const QString file =
        immutable ? QString::fromLatin1(QUrl::fromLocalFile(QFileInfo(place.file).absoluteFilePath())
                                            .toEncoded(QUrl::FullyEncoded)) +
                        QStringLiteral("?immutable=1")
                  : place.file;
    auto impl = std::make_unique<Impl>(
        file.toStdString(), immutable ? SQLite::OPEN_READONLY | SQLite::OPEN_URI : SQLite::OPEN_READWRITE,
        clock, view);
    impl->copied = place.folder;
    // What a log beside the catalog holds is read, but not brought home: nothing changes by being looked at.
    sqlite3_db_config(impl->database.getHandle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    return impl;
}

Connection::Connection(const QString& path) : m_path(path) {}

Connection::~Connection() {
    if (m_impl)
        m_impl->idle.clear();
}

std::unique_ptr<Connection> Connection::open(const QString& path, const Clock& clock, int newestUpgrade,
                                             Mode mode) {
    checkCatalogFile(path, mode);
    std::unique_ptr<Connection> connection(new Connection(path));
    try {
        connection->m_impl =
            mode == Mode::Inspect
                ? Impl::toRead(path, clock, *connection)
                : std::make_unique<Impl>(path.toStdString(), SQLite::OPEN_READWRITE, clock, *connection);
        SQLite::Database& database = connection->m_impl->database;
        lockSafely(database);
        const CatalogShape shape = shapeOf(database);
        checkShape(shape, path, newestUpgrade);
        for (const OwnTable& table : ownTables()) // each begins with a sound page
            if (!table.isAdded)
                SQLite::Statement(database, "SELECT 1 FROM " + table.name.toStdString() + " LIMIT 1")
                    .executeStep();
        database.exec(mode == Mode::Inspect ? "PRAGMA query_only = ON"
                                            : "PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL");
        database.exec("PRAGMA foreign_keys = OFF; PRAGMA temp_store = MEMORY; PRAGMA cache_size = -32768");
        connection->m_impl->registerFunctions();
        if (mode == Mode::Normal) {
            sqlite3_db_config(database.getHandle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr);
            if (shape.hasOldIndex)
                TextIndex(*connection).drop();
        }
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
        throw std::runtime_error(verdict);
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
    try {
        m_impl->idle.clear();
        FileWriter copy(target);
        writeCopy(m_impl->database, copy.temporaryPath().toStdString(), progress);
        settle(target);
        copy.commit();
    } catch (const FileError&) {
        throw;
    } catch (const SQLite::Exception& error) {
        throw FileError(tr("%1 cannot be written: %2").arg(target, reasonOf(error)));
    } catch (const std::exception& error) {
        throw FileError(tr("%1 cannot be written: %2").arg(target, QString::fromUtf8(error.what())));
    }
    if (progress)
        progress(100);
}

} // namespace tessaranth
