// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QStringList>
#include <vector>

namespace SQLite {
class Database;
}

namespace tessaranth {

/// What a catalog file is made of, as its schema tells: nothing in the file is run to learn it, so it may
/// come from anybody. Names out of the file are cut and cleaned for being shown.
struct CatalogShape {
    /// What a catalog of the file's own version has and this one has not: "table Rec", "column Rec.RecTitle",
    /// "a usable key of Rec".
    QStringList missing;
    /// What runs or computes something and was not made by this program, or has a name that it never gives:
    /// "trigger x", "view x", "virtual table x", "computed column Rec.x".
    QStringList foreign;
    int ownTables = 0;        ///< of the tables that a catalog of any age has
    int newestUpgrade = 0;    ///< the highest code that is recorded of the given steps,
    int newestOwnUpgrade = 0; ///< and of our own
    bool hasOldIndex = false; ///< parts of the word index as this version does not make them
    bool isACatalog() const;  ///< one that may be damaged, but not something else altogether
};

/// Throws SQLite::Exception where the file cannot be read.
CatalogShape shapeOf(SQLite::Database& database);

/// A table of the catalog as the current version makes it.
struct OwnTable {
    struct Column {
        QByteArray name;
        QByteArray type;
        QByteArray defaultValue; ///< an expression; empty: none
        bool isRequired = false;
        int step = 0; ///< the upgrade step that adds it; 0: every version has it
    };
    QByteArray name;
    QByteArray key;       ///< its integer key; empty for a link table
    bool isAdded = false; ///< made by this program where it is missing
    std::vector<Column> columns;
};
const std::vector<OwnTable>& ownTables();

/// Columns of a table as they stand in the file, without those that are computed. Empty when it is no
/// ordinary table.
QByteArrayList plainColumns(SQLite::Database& database, const QByteArray& table);

} // namespace tessaranth
