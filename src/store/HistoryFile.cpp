// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/HistoryFile.h"

#include "store/ConnectionImpl.h"

#include <QCoreApplication>
#include <QRandomGenerator>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("History", text); }

constexpr int applicationId = 0x54535248; // "TSRH"
constexpr int formatVersion = 1;

const char* const schema = R"(
    CREATE TABLE History (Id INTEGER NOT NULL);
    CREATE TABLE States (State INTEGER PRIMARY KEY AUTOINCREMENT, Token INTEGER NOT NULL, Position INTEGER NOT NULL);
    CREATE TABLE Steps (Step INTEGER PRIMARY KEY AUTOINCREMENT, State INTEGER NOT NULL, At TEXT NOT NULL,
        Words TEXT NOT NULL, RowCount INTEGER NOT NULL, Cards INTEGER NOT NULL, Bytes INTEGER NOT NULL);
    CREATE TABLE StepRows (Step INTEGER NOT NULL, Number INTEGER NOT NULL, Kind INTEGER NOT NULL,
        TableName TEXT NOT NULL, Key INTEGER NOT NULL, Before BLOB, After BLOB,
        PRIMARY KEY (Step, Number)) WITHOUT ROWID;
    CREATE TABLE StepFiles (Step INTEGER NOT NULL, Number INTEGER NOT NULL, Folder INTEGER NOT NULL,
        Name TEXT NOT NULL, Before INTEGER NOT NULL, After INTEGER NOT NULL,
        PRIMARY KEY (Step, Number)) WITHOUT ROWID;
)";

/// Whatever is done with the file throws what the rest of the program knows.
template<typename Job>
auto translated(const Job& job) {
    try {
        return job();
    } catch (const SQLite::Exception& error) {
        throw sqlError(error);
    }
}

} // namespace

struct HistoryFile::Impl {
    explicit Impl(const std::string& path) : database(path, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE) {}

    SQLite::Statement& prepared(const char* sql) {
        auto& statement = statements[sql];
        if (!statement)
            statement = std::make_unique<SQLite::Statement>(database, sql);
        statement->tryReset();
        return *statement;
    }

    SQLite::Database database;
    std::unordered_map<const char*, StatementHandle> statements;
};

HistoryFile::HistoryFile(const QString& path) {
    try {
        m_impl = std::make_unique<Impl>(path.toStdString());
        SQLite::Database& database = m_impl->database;
        database.exec("PRAGMA locking_mode = EXCLUSIVE; BEGIN EXCLUSIVE; COMMIT");
        const bool isNew = database.execAndGet("SELECT COUNT(*) FROM sqlite_schema").getInt() == 0;
        if (!isNew && (database.execAndGet("PRAGMA application_id").getInt() != applicationId ||
                       database.execAndGet("PRAGMA user_version").getInt() != formatVersion))
            throw ForeignHistory(tr("%1 is not a history of this program.").arg(path));
        // The catalog is what must survive a power cut; a history that lost its last steps ends there.
        database.exec("PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL; PRAGMA cache_size = -2048");
        if (isNew)
            define();
        m_id = database.execAndGet("SELECT Id FROM History").getInt64();
        // Every table answers, or the file is none that can be worked with.
        for (const char* table : {"States", "Steps", "StepRows", "StepFiles"})
            SQLite::Statement(database, std::string("SELECT * FROM ") + table + " LIMIT 1").executeStep();
    } catch (const SQLite::Exception& error) {
        const QString reason = tr("%1: %2").arg(path, QString::fromUtf8(error.what()));
        const int code = error.getErrorCode() & 0xff; // an error in the statement: a table is missing
        if (code == SQLITE_NOTADB || code == SQLITE_CORRUPT || code == SQLITE_ERROR)
            throw ForeignHistory(reason);
        throw FileError(reason);
    }
}

HistoryFile::~HistoryFile() = default;

void HistoryFile::define() {
    SQLite::Transaction transaction(m_impl->database);
    m_impl->database.exec(schema);
    m_impl->database.exec("PRAGMA application_id = " + std::to_string(applicationId));
    m_impl->database.exec("PRAGMA user_version = " + std::to_string(formatVersion));
    m_impl->database.exec("INSERT INTO History (Id) VALUES (" +
                          std::to_string(QRandomGenerator::system()->generate()) + ")");
    transaction.commit();
}

void HistoryFile::run(const char* statement, std::initializer_list<qint64> numbers) {
    SQLite::Statement& prepared = m_impl->prepared(statement);
    int index = 0;
    for (const qint64 number : numbers)
        prepared.bind(++index, int64_t(number));
    prepared.exec();
}

// ---- states

bool HistoryFile::goTo(qint64 token) {
    return translated([&] {
        SQLite::Statement found(m_impl->database,
                                "SELECT State, Position FROM States WHERE Token = ? ORDER BY State DESC");
        found.bind(1, int64_t(token));
        if (!found.executeStep())
            return false;
        const qint64 state = found.getColumn(0).getInt64();
        m_position = found.getColumn(1).getInt64();
        found.reset();
        SQLite::Transaction transaction(m_impl->database);
        dropSteps("State > ?1", {state});
        run("DELETE FROM States WHERE State > ?1", {state});
        transaction.commit();
        return true;
    });
}

void HistoryFile::start(qint64 token) {
    translated([&] {
        abandonStep();
        SQLite::Transaction transaction(m_impl->database);
        dropSteps("1 = 1", {});
        run("DELETE FROM States");
        m_position = 0;
        addState(token);
        transaction.commit();
    });
}

void HistoryFile::addState(qint64 token) {
    run("INSERT INTO States (Token, Position) VALUES (?1, ?2)", {token, m_position});
}

// A state in which a dropped step had been the last one cannot be gone to any more.
void HistoryFile::dropSteps(const char* condition, std::initializer_list<qint64> numbers) {
    const std::string which = std::string("SELECT Step FROM Steps WHERE ") + condition;
    const auto bindAll = [&](SQLite::Statement& statement) {
        int index = 0;
        for (const qint64 number : numbers)
            statement.bind(++index, int64_t(number));
    };
    SQLite::Statement files(m_impl->database,
                            "SELECT Step, Number, Folder, Name FROM StepFiles WHERE Step IN (" + which + ")");
    bindAll(files);
    while (files.executeStep())
        m_dropped.push_back({files.getColumn(0).getInt64(), files.getColumn(1).getInt64(),
                             files.getColumn(2).getInt(), QString::fromUtf8(files.getColumn(3).getText()),
                             false, false});
    for (const std::string& statement : {"DELETE FROM StepRows WHERE Step IN (" + which + ")",
                                         "DELETE FROM StepFiles WHERE Step IN (" + which + ")",
                                         "DELETE FROM States WHERE Position IN (" + which + ")",
                                         std::string("DELETE FROM Steps WHERE ") + condition}) {
        SQLite::Statement run(m_impl->database, statement);
        bindAll(run);
        run.exec();
    }
}

// ---- one step

qint64 HistoryFile::beginStep() {
    return translated([&] {
        m_impl->database.exec("BEGIN IMMEDIATE");
        run("INSERT INTO Steps (State, At, Words, RowCount, Cards, Bytes) VALUES (0, '', '', 0, 0, 0)");
        m_step = m_impl->database.getLastInsertRowid();
        return m_step;
    });
}

void HistoryFile::addRow(qint64 number, const RowChange& change) {
    translated([&] {
        SQLite::Statement& row = m_impl->prepared("INSERT INTO StepRows (Step, Number, Kind, TableName, Key, "
                                                  "Before, After) VALUES (?, ?, ?, ?, ?, ?, ?)");
        row.bind(1, int64_t(m_step));
        row.bind(2, int64_t(number));
        row.bind(3, int(change.kind));
        row.bindNoCopy(4, change.table->name);
        row.bind(5, int64_t(change.key));
        row.bindNoCopy(6, change.before.constData(), int(change.before.size()));
        row.bindNoCopy(7, change.after.constData(), int(change.after.size()));
        row.exec();
    });
}

void HistoryFile::cutBack(qint64 number) {
    translated([&] { run("DELETE FROM StepRows WHERE Step = ?1 AND Number > ?2", {m_step, number}); });
}

void HistoryFile::addFile(const StepFile& file) {
    translated([&] {
        SQLite::Statement& row = m_impl->prepared(
            "INSERT INTO StepFiles (Step, Number, Folder, Name, Before, After) VALUES (?, ?, ?, ?, ?, ?)");
        row.bind(1, int64_t(m_step));
        row.bind(2, int64_t(file.number));
        row.bind(3, file.folder);
        row.bind(4, file.name.toStdString());
        row.bind(5, int(file.before));
        row.bind(6, int(file.after));
        row.exec();
    });
}

void HistoryFile::commitStep(qint64 token, const HistoryStep& step, const Limits& limits) {
    translated([&] {
        dropSteps("Step > ?1 AND Step < ?2", {m_position, m_step});
        const qint64 previous = m_position;
        m_position = m_step;
        try {
            addState(token);
            SQLite::Statement& row =
                m_impl->prepared("UPDATE Steps SET State = ?1, At = ?2, Words = ?3, RowCount = ?4, Cards = "
                                 "?5, Bytes = ?6 WHERE Step = ?7");
            row.bind(1, int64_t(m_impl->database.getLastInsertRowid()));
            row.bind(2, step.at.toStdString());
            row.bind(3, step.words.toStdString());
            row.bind(4, int64_t(step.rows));
            row.bind(5, int64_t(step.cards));
            row.bind(6, int64_t(step.bytes));
            row.bind(7, int64_t(m_step));
            row.exec();
            prune(limits);
            m_impl->database.exec("COMMIT");
        } catch (const SQLite::Exception&) {
            m_position = previous;
            throw;
        }
    });
}

void HistoryFile::prune(const Limits& limits) {
    SQLite::Statement& sum = m_impl->prepared("SELECT COUNT(*), SUM(Bytes) FROM Steps");
    sum.executeStep();
    qint64 steps = sum.getColumn(0).getInt64();
    qint64 bytes = sum.getColumn(1).getInt64();
    sum.reset();
    if (steps > limits.steps || bytes > limits.bytes) {
        SQLite::Statement oldest(m_impl->database, "SELECT Step, Bytes FROM Steps ORDER BY Step");
        qint64 last = 0;
        while ((steps > limits.steps || bytes > limits.bytes) && oldest.executeStep()) {
            last = oldest.getColumn(0).getInt64();
            bytes -= oldest.getColumn(1).getInt64();
            --steps;
        }
        oldest.reset();
        dropSteps("Step <= ?1", {last});
        // Before the first step that is left, the catalog was in the state that the last one gone left.
        run("DELETE FROM States WHERE Position < ?1 AND Position <> ?2", {last, m_position});
    }
    constexpr qint64 statesKept = 1000;
    run("DELETE FROM States WHERE State <= (SELECT MAX(State) FROM States) - ?1", {statesKept});
}

void HistoryFile::abandonStep() {
    m_step = 0;
    if (sqlite3_get_autocommit(m_impl->database.getHandle()) == 0)
        m_impl->database.tryExec("ROLLBACK");
}

void HistoryFile::dropStep() {
    translated([&] {
        SQLite::Transaction transaction(m_impl->database);
        const qint64 step = m_position;
        dropSteps("Step = ?1", {step});
        SQLite::Statement before(m_impl->database, "SELECT Position FROM States ORDER BY State DESC LIMIT 1");
        m_position = before.executeStep() ? before.getColumn(0).getInt64() : 0;
        before.reset();
        transaction.commit();
    });
}

void HistoryFile::move(qint64 position, qint64 token) {
    translated([&] {
        SQLite::Transaction transaction(m_impl->database);
        const qint64 previous = std::exchange(m_position, position);
        try {
            addState(token);
            transaction.commit();
        } catch (const SQLite::Exception&) {
            m_position = previous;
            throw;
        }
    });
}

void HistoryFile::moveBack(qint64 position) {
    translated([&] {
        m_position = position;
        run("DELETE FROM States WHERE State = (SELECT MAX(State) FROM States)");
    });
}

// ---- reading

std::vector<HistoryStep> HistoryFile::steps() {
    return translated([&] {
        std::vector<HistoryStep> steps;
        SQLite::Statement run(m_impl->database,
                              "SELECT Step, At, Words, RowCount, Cards, Bytes FROM Steps ORDER BY Step");
        while (run.executeStep())
            steps.push_back({run.getColumn(0).getInt64(), QString::fromUtf8(run.getColumn(1).getText()),
                             QString::fromUtf8(run.getColumn(2).getText()), run.getColumn(3).getInt64(),
                             run.getColumn(4).getInt64(), run.getColumn(5).getInt64(),
                             run.getColumn(0).getInt64() > m_position});
        return steps;
    });
}

std::optional<HistoryStep> HistoryFile::step(qint64 number) {
    for (HistoryStep& step : steps())
        if (step.number == number)
            return std::move(step);
    return std::nullopt;
}

void HistoryFile::eachRow(qint64 step, bool fromTheLast, const std::function<bool(const RowChange&)>& use) {
    translated([&] {
        SQLite::Statement run(m_impl->database, std::string("SELECT Kind, TableName, Key, Before, After FROM "
                                                            "StepRows WHERE Step = ? ORDER BY Number") +
                                                    (fromTheLast ? " DESC" : ""));
        run.bind(1, int64_t(step));
        const auto bytes = [&](int column) {
            const SQLite::Column cell = run.getColumn(column);
            return QByteArray(static_cast<const char*>(cell.getBlob()), cell.getBytes());
        };
        while (run.executeStep()) {
            const QByteArray name = run.getColumn(1).getText();
            const RecordedTable* table = recordedTable(name);
            if (!table)
                throw SqlError(tr("The history names a table %1 that the catalog does not have.")
                                   .arg(QString::fromUtf8(name)));
            if (!use({RowChange::Kind(run.getColumn(0).getInt()), table, run.getColumn(2).getInt64(),
                      bytes(3), bytes(4)}))
                return;
        }
    });
}

std::vector<StepFile> HistoryFile::files(qint64 step) {
    return translated([&] {
        std::vector<StepFile> files;
        SQLite::Statement run(m_impl->database, "SELECT Number, Folder, Name, Before, After FROM StepFiles "
                                                "WHERE Step = ? ORDER BY Number");
        run.bind(1, int64_t(step));
        while (run.executeStep())
            files.push_back({step, run.getColumn(0).getInt64(), run.getColumn(1).getInt(),
                             QString::fromUtf8(run.getColumn(2).getText()), run.getColumn(3).getInt() != 0,
                             run.getColumn(4).getInt() != 0});
        return files;
    });
}

std::vector<StepFile> HistoryFile::takeDropped() { return std::exchange(m_dropped, {}); }

} // namespace tessaranth
