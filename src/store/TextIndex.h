// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMap>
#include <QStringList>
#include <span>
#include <vector>

namespace tessaranth {

class Connection;
class Progress;

/// The words of one table's texts, to be searched by their beginnings without regard to case and accents.
struct TextIndexTable {
    /// A table whose rows decide what is indexed: a change of `columns` indexes anew the rows that meet
    /// `rows`, where "@" stands for the row that changes.
    struct Watch {
        const char* table;
        const char* columns;
        const char* rows;
    };
    const char* name;
    const char* select; ///< the row's key and its text, in SQLite's words, without WHERE
    std::vector<Watch> watches;
};

/// Word indexes inside the catalog (SQLite's FTS5), kept current by triggers of the file itself, so that no
/// writer can forget them and a kill leaves both or neither. They hold no text, only words; they are made
/// when first asked for, left out of `Connection::tables()`, and dropped by anything that rebuilds tables.
class TextIndex {
public:
    explicit TextIndex(Connection& connection) : m_connection(connection) {}

    /// All indexes, named "Quick" and the item's code or table.
    static std::span<const TextIndexTable> tables();
    /// The statement that makes each table and trigger in this version, by its name.
    static const QMap<QByteArray, QByteArray>& definitions();
    static bool isTable(const QByteArray& name);
    /// True for the tables, and for the names that triggers and inner tables of any version have.
    static bool isPart(const QByteArray& name);

    /// True when every table and trigger is there as this version of the program makes it, and nothing
    /// besides.
    bool isCurrent() const;
    bool isAbsent() const;       ///< nothing of any index is in the file, not even a remainder
    QStringList present() const; ///< names of the index tables and triggers that are there
    /// Makes what is missing or out of date, in one transaction, also over the remains of a broken one. False
    /// when the user stopped it: nothing has changed then. Throws SqlError.
    bool build(Progress& progress);
    void drop();
    /// Takes only the triggers away, so that nothing is written to an index that cannot be written; what is
    /// left is out of date. The number taken away.
    int dropTriggers();

    /// Keys of at most `limit` rows with a word beginning with each of `words`; rows that hold the whole
    /// words first. Throws SqlError.
    std::vector<qint64> find(const char* table, const QStringList& words, int limit) const;
    /// The words of a typed text as the index cuts them: runs of letters and digits.
    static QStringList words(const QString& text);

private:
    Connection& m_connection;
};

} // namespace tessaranth
