// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/RecordedTables.h"

#include <QByteArray>
#include <QStringList>
#include <functional>
#include <memory>
#include <vector>

struct sqlite3;
struct sqlite3_value;

namespace tessaranth {

/// A row that a transaction inserted, changed or deleted.
struct RowChange {
    enum class Kind : quint8 { Inserted, Changed, Deleted };
    Kind kind;
    const RecordedTable* table;
    qint64 key; ///< the row's key; of a link the number of its row, which a compact changes
    QByteArray
        before;       ///< RowImage: whole when deleted, of a link also when changed; else the columns changed
    QByteArray after; ///< the same of what came
};

/// Keeps the rows of a transaction as they come: the history.
class ChangeKeeper {
public:
    virtual ~ChangeKeeper() = default;
    /// Rows are numbered from 1 within a transaction. Must not throw: it is called by SQLite.
    virtual void keep(qint64 number, const RowChange& change) noexcept = 0;
    virtual void cutBack(qint64 number) noexcept = 0; ///< the rows after this one did not happen after all

    /// What a transaction has come to.
    struct Ending {
        QString words;
        qint64 rows; ///< kept and not cut back
        const CatalogChanges& changes;
        bool breaks; ///< it changed what cannot be taken back
    };
    /// Called before the catalog is committed. Answers with the token that goes into the catalog with it, if
    /// any. What it throws takes the transaction back.
    virtual std::optional<qint64> prepare(const Ending& ending) = 0;
    virtual void committed() noexcept = 0; ///< the catalog has it
    virtual void cancelled() noexcept = 0; ///< the transaction was undone, prepared or not
};

/// What the open transaction does to the rows of the catalog, seen by SQLite's pre-update hook: also the rows
/// of a DELETE with a join, of a trigger, of a table of links. It is cut back where a statement fails or a
/// savepoint is rolled back. The connection drives it.
class ChangeLog {
public:
    /// Must come before the first statement is prepared: a DELETE of all rows prepared earlier would be
    /// shortened by SQLite and change rows unseen.
    explicit ChangeLog(sqlite3* handle);
    ~ChangeLog();
    ChangeLog(const ChangeLog&) = delete;
    ChangeLog& operator=(const ChangeLog&) = delete;

    /// The keeper may be null; it must outlive the log or be taken back. Not within a transaction.
    void setKeeper(ChangeKeeper* keeper) { m_keeper = keeper; }

    using ColumnsOf = std::function<QStringList(const QString& table)>;
    /// Begins a transaction. With `recorded` false no row is kept; that there was one is.
    void begin(bool recorded);
    void end(); ///< forgets everything about the transaction
    /// To be called before anything is written: asks for the columns when they are not known (any more).
    void learn(const ColumnsOf& columnsOf);
    void forgetSchema();

    /// A place in the log to cut back to.
    struct Mark {
        qint64 rows;
        size_t notes;
    };
    Mark mark() const { return {m_rows, m_notes.size()}; }
    void cutBack(const Mark& mark);

    qint64 rows() const { return m_rows; } ///< recorded and not cut back
    bool hasUnrecorded() const { return m_unrecorded; }
    /// What happened so far. `recordingOf` gives the recording on which a placed work stands, 0 for none.
    CatalogChanges changes(const std::function<qint64(qint64 placedWork)>& recordingOf) const;
    /// For what happened outside the rows, such as a file of a card.
    void note(const CardRef& thing, CatalogChanges::How how) { m_notes.push_back({thing, how}); }

    /// Called by SQLite.
    void onRow(int operation, const char* table, qint64 keyBefore, qint64 keyAfter);

private:
    struct Meaning {
        const RowMeaning* meaning;
        int column;
        int codeColumn;
    };
    struct Table {
        const RecordedTable* table = nullptr;
        int key = -1;
        int columns = 0;
        std::vector<Meaning> meanings;
        std::vector<bool> ignored; ///< by column
    };
    struct Note {
        CardRef thing;
        CatalogChanges::How how;
    };
    enum class Side { Before, After };

    const Table* tableOf(const char* name);
    bool isChange(const Table& table, QByteArray& before, QByteArray& after);
    QByteArray wholeRow(const Table& table, Side side);
    void noteRow(const Table& table, Side side, CatalogChanges::How how);
    sqlite3_value* value(Side side, int column) const;

    sqlite3* m_handle;
    ChangeKeeper* m_keeper = nullptr;
    std::vector<Table> m_tables;
    const Table* m_last = nullptr; ///< rows come in runs of one table
    QByteArray m_lastName;
    std::vector<Note> m_notes;
    qint64 m_rows = 0;
    bool m_open = false;
    bool m_recorded = true;
    bool m_unrecorded = false;
};

} // namespace tessaranth
