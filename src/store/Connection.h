// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/CatalogChanges.h"
#include "store/JetSql.h"
#include "store/SqlError.h"
#include "store/Value.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace tessaranth {

class ChangeKeeper;
class Clock;

namespace RowImage {
struct Cell;
}

/// Why a catalog file could not be opened; `reason()` says it in a sentence for the user.
class OpenError : public Error {
public:
    enum class Kind {
        Missing,
        Folder,
        NotACatalog,
        Damaged,
        Incomplete, ///< tables, columns or keys of its version are missing
        Foreign,    ///< whole, but holds what is not of this program; see CleanedCopy
        Newer,
        ReadOnly,
        Locked,
        NoAccess
    };
    OpenError(Kind kind, const QString& reason) : Error(reason), m_kind(kind) {}
    Kind kind() const { return m_kind; }

private:
    Kind m_kind;
};

/// A running query: forward only. Holds its prepared statement until it is destroyed.
class Query {
public:
    ~Query();
    Query(Query&&) noexcept;
    Query& operator=(Query&&) = delete;

    bool next(); ///< steps to the next row, the first at the first call; throws SqlError
    int columnCount() const;
    QString columnName(int column) const;
    QString declaredType(int column) const; ///< of the table's column; empty for an expression
    bool isNull(int column) const;
    QString text(int column) const; ///< Null gives an empty text
    qint64 integer(int column) const;
    Value value(int column) const;

private:
    friend class Connection;
    struct Impl;
    explicit Query(std::unique_ptr<Impl> impl);
    std::unique_ptr<Impl> m_impl;
};

/// One column of a catalog table. `width` is the declared size of a text column in characters, 0 for
/// none.
struct ColumnInfo {
    QString name;
    QString type; ///< declared type, upper case, without its width
    int width = 0;
    static ColumnInfo fromDeclaration(const QString& name, const QString& declaredType);
    bool isText() const { return type == QLatin1String("VARCHAR") || type == QLatin1String("TEXT"); }
};

/// The one connection to the catalog, opened so that no other process may use the file meanwhile.
/// Statements are in the catalog's dialect (JetSql). Failing calls throw SqlError.
class Connection final : public SchemaView {
public:
    enum class Mode {
        Normal,
        Inspect ///< nothing is written, not even the journal mode; changes fail
    };
    /// Opens an existing catalog; throws OpenError and leaves the file untouched when it is not a whole
    /// catalog of this or an older version. `newestUpgrade` is the highest upgrade code that this program
    /// knows. `clock` must outlive the connection.
    static std::unique_ptr<Connection> open(const QString& path, const Clock& clock, int newestUpgrade,
                                            Mode mode = Mode::Normal);
    ~Connection() override;

    const QString& path() const { return m_path; }

    /// False for a statement that changes the catalog: that one goes to `execute`.
    bool returnsRows(const QString& statement) const;
    Query query(const QString& statement);
    /// A query in SQLite's own words, with its parameters ?1, ?2 ...: for what the dialect has no words for.
    Query queryNative(const QByteArray& statement, const std::vector<Value>& parameters = {});
    /// Runs a statement that returns no rows; answers with the number of rows it changed.
    int execute(const QString& statement);
    /// Runs a statement of which a failure is skipped; false when it failed. A full or failing disk still
    /// throws, since then nothing of the operation may stand. Only for steps of an upgrade: all that is lost
    /// is the step's own effect, it stays unrecorded and is tried again at the next start. In a merge, a
    /// deletion or an editor's apply a statement left out would tear links apart, so those `execute`.
    bool attempt(const QString& statement);
    /// The first cell of the first row; Null when there is no row.
    Value single(const QString& statement);
    bool exists(const QString& statement); ///< true when the query returns a row
    qint64 lastKey() const;                ///< key of the row added last

    /// Runs statements in SQLite's own words, several separated by ";": for the shipped schema only.
    void runNative(const QByteArray& statements);

    QStringList tables() const;                                         ///< the catalog's own tables, by name
    const std::vector<ColumnInfo>& columns(const QString& table) const; ///< empty for an unknown table
    QStringList columnsOf(const QString& table) const override;
    bool isTextColumn(const QString& column) const override;

    qint64 changesOfSession() const; ///< rows changed since the catalog was opened
    qint64 freePages();              ///< unused pages in the file, each 4 KB as a rule
    QStringList integrityFaults();   ///< empty for a whole catalog
    void compact();                  ///< rebuilds the file without its free space
    /// What is told to the user about the catalog as a whole, as that its word index was given up so that a
    /// change could be stored. Called when no transaction is open.
    void setNotice(std::function<void(const QString&)> notice);
    /// The words of a word index with the rows that hold them, sorted by both; also in a catalog that is only
    /// looked at. Throws SqlError for an index that cannot be read.
    Query indexTerms(const QByteArray& table);
    /// Takes an index that FTS5 cannot open out of the file: its own table is forgotten and its parts are
    /// dropped as plain tables. Inside a transaction. Throws SqlError.
    void dropRemains(const QByteArray& index, const QByteArrayList& parts);
    /// Copies the catalog as it stands into a new file, checks it and renames it over `target`; throws
    /// FileError and leaves what stood at `target` when anything fails.
    void copyTo(const QString& target, const std::function<void(int percentage)>& progress = {});

    /// Told of every commit that changed something in the tables of the catalog.
    void setAnnouncer(std::function<void(const CatalogChanges&)> announcer);
    /// Keeps the rows of every transaction from now on; null for nobody. Must outlive the connection or be
    /// taken back. Not within a transaction.
    void setKeeper(ChangeKeeper* keeper);
    /// Within a transaction: something of this thing changed that is in no row, such as its file.
    void touch(const CardRef& thing);
    /// A change in SQLite's own words with its parameters in their order; the number of rows it changed.
    int executeNative(const QByteArray& statement, const std::vector<const RowImage::Cell*>& parameters);
    /// The number in the first cell of the first row; nothing when there is no row.
    std::optional<qint64> singleNative(const QByteArray& statement,
                                       const std::vector<const RowImage::Cell*>& parameters);

    struct Impl;

private:
    friend class Transaction;
    friend class Recordset;
    explicit Connection(const QString& path);
    void changeColumn(const ColumnChange& change);
    void runBare(const char* statement);
    void requireTransaction() const;
    CatalogChanges changes();
    void storeToken(qint64 token);
    Query boundQuery(const QByteArray& statement, const std::vector<const RowImage::Cell*>& parameters);
    void undo();
    void schemaChanged();
    SqlStatement translateUpdatable(const QString& statement) const;
    Query queryStatement(const SqlStatement& statement);
    int change(const SqlStatement& statement); ///< the number of rows that it inserts, updates or deletes
    int changeWithoutIndex(const SqlStatement& statement, const QString& reason);
    void notice(const QString& text);
    void tellNotices();

    QString m_path;
    std::unique_ptr<Impl> m_impl;
};

/// Everything run while it lives stands or falls together; undone unless committed. A transaction inside
/// another joins it; when the inner one is left without commit, the outer one cannot be committed. The
/// tables of the catalog can be changed only within one: outside, a statement that would throws SqlError.
/// What it changed is announced at the commit and becomes one step of the history.
class Transaction {
public:
    /// For what cannot be taken back: upgrades and the care of the whole file. Where it changes rows, the
    /// history ends and everything is announced as changed.
    struct Unrecorded {};

    /// `words` name the operation for the user, with its item: "Delete recording Tosca". Those of the
    /// outermost transaction count.
    Transaction(Connection& connection, const QString& words);
    Transaction(Connection& connection, Unrecorded);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    /// Other words, for what is known only at the end: "Import 500 works of Mozart".
    void describe(const QString& words) { m_words = words; }
    /// Says that one item went into another; the rows alone would tell of a deletion.
    void merge(const CardRef& from, const CardRef& to);
    void commit();

private:
    void begin(bool recorded);

    Connection& m_connection;
    QString m_words;
    bool m_open = true;
};

} // namespace tessaranth
