// SPDX-License-Identifier: GPL-3.0-or-later
// Catalogs: one is refused with a reason, or it holds nothing that is not ours and every table can be read.
// The input is laid over a small sound catalog: after "SQL:" as statements, else as patches of four bytes of
// place and length and the bytes themselves, or whole when it begins as a database does.
#include "Demand.h"
#include "Silent.h"
#include "platform/Clock.h"
#include "platform/Progress.h"
#include "store/CatalogShape.h"
#include "store/CatalogTemplate.h"
#include "store/CleanedCopy.h"
#include "store/Cleanup.h"
#include "store/Recordset.h"
#include "store/Session.h"
#include "store/Upgrade.h"
#include "store/UpgradeSteps.h"

#include <QFile>
#include <QTemporaryDir>
#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>

using namespace tessaranth;

namespace {

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray soundCatalog(const QString& path) {
    writeCatalogTemplate(path, {});
    SQLite::Database database(path.toStdString(), SQLite::OPEN_READWRITE);
    database.exec("PRAGMA page_size = 512");
    SQLite::Statement indexes(database, "SELECT name FROM sqlite_schema WHERE type = 'index' AND sql > ''");
    std::vector<std::string> names;
    while (indexes.executeStep())
        names.push_back(indexes.getColumn(0).getString());
    indexes.reset();
    for (const std::string& name : names)
        database.exec("DROP INDEX " + name);
    database.exec("INSERT INTO Rec (RecTitle) VALUES ('One'); INSERT INTO Cps (CpsLname) VALUES ('Bach')");
    database.exec("VACUUM");
    return contentOf(path);
}

int refuseFiles(void*, int action, const char*, const char*, const char*, const char*) {
    return action == SQLITE_ATTACH ? SQLITE_DENY : SQLITE_OK;
}

/// What a stranger did to it; long runs are of no interest.
void runStatements(const QString& path, const QByteArray& statements) {
    SQLite::Database database(path.toStdString(), SQLite::OPEN_READWRITE);
    sqlite3* handle = database.getHandle();
    sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, 1 << 20);
    sqlite3_set_authorizer(handle, refuseFiles, nullptr);
    sqlite3_progress_handler(
        handle, 100'000, [](void*) { return 1; }, nullptr);
    sqlite3_exec(handle, statements.constData(), nullptr, nullptr, nullptr);
}

QByteArray patched(QByteArray bytes, QByteArrayView patches) {
    while (patches.size() > 4) {
        const auto byte = [&](int i) { return size_t(static_cast<unsigned char>(patches[i])); };
        const auto place = qsizetype((byte(0) << 16 | byte(1) << 8 | byte(2)) % size_t(bytes.size()));
        const qsizetype length = std::min({qsizetype(byte(3)), patches.size() - 4, bytes.size() - place});
        bytes.replace(place, length, patches.sliced(4, length).toByteArray());
        patches = patches.sliced(4 + length);
    }
    return bytes;
}

void demandOnlyOurs(Connection& connection) {
    Query foreign = connection.queryNative(
        "SELECT name FROM sqlite_schema WHERE type IN ('trigger', 'view') OR sql LIKE 'CREATE VIRTUAL%'");
    while (foreign.next())
        demand(foreign.text(0).startsWith(QLatin1String("Quick")), "what runs is ours");
    for (const OwnTable& table : ownTables()) {
        try {
            Recordset::open(connection, QStringLiteral("SELECT * FROM ") + QString::fromUtf8(table.name));
        } catch (const SqlError& error) {
            demand(!error.reason().isEmpty(), "a failed read has a reason");
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    static const QTemporaryDir folder;
    static const QString path = folder.filePath(QStringLiteral("Tessaranth.tsb"));
    static const QByteArray sound = soundCatalog(folder.filePath(QStringLiteral("sound.tsb")));
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    for (const char* companion : {"-wal", "-journal", "-shm"})
        QFile::remove(path + QLatin1String(companion));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return 0;
    const bool isSql = bytes.startsWith("SQL:");
    file.write(isSql ? sound : bytes.startsWith("SQLite format 3") ? bytes : patched(sound, bytes));
    file.close();
    if (isSql)
        runStatements(path, bytes.mid(4));
    SilentMessages messages;
    const SystemClock clock;
    NoProgress progress;
    const QString copy = folder.filePath(QStringLiteral("copy.tsb"));
    QFile::remove(copy);
    try {
        Session session(folder.path(), messages, clock);
        session.setDatabasePath(path);
        session.setConnection(Connection::open(path, clock, newestUpgradeCode));
        demandOnlyOurs(session.connection());
        Upgrade(session).run(progress);
        Cleanup(session).inspect(progress, [](const Cleanup::StepResult&) {});
        demandOnlyOurs(session.connection());
    } catch (const OpenError& error) {
        demand(!error.reason().isEmpty(), "a refusal has a reason");
        if (error.kind() != OpenError::Kind::Foreign)
            return 0;
        try {
            CleanedCopy::write(path, copy, progress);
            Connection::open(copy, clock, newestUpgradeCode);
        } catch (const OpenError& again) {
            demand(false, again.what());
        } catch (const Error& failed) {
            demand(!failed.reason().isEmpty(), "a failed copy has a reason");
        }
    } catch (const Error& error) {
        demand(!error.reason().isEmpty(), "a refusal has a reason");
    }
    return 0;
}
