// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <span>

namespace tessaranth {

/// A column whose number names a row of another table. The catalog declares no foreign keys and keeps its
/// links itself; this is the table of them.
struct CatalogLink {
    enum class Remedy {
        DeleteRow, ///< the row says nothing without the other
        SetToNone, ///< 0 says that there is none; Null is read alike
        Adopt      ///< the row is worth keeping: it gets an owner made for the purpose
    };
    const char* table;
    const char* column;
    const char* target;
    const char* key;
    Remedy remedy;
    const char* caption;
    const char* kindColumn = ""; ///< with `kind`: the link is meant only in rows of this kind of card
    const char* kind = "";
    const char* name = ""; ///< for Adopt: the target's column that gets the name of the owner
};

/// Parents before what hangs off them, so that mending in this order leaves nothing behind.
std::span<const CatalogLink> catalogLinks();

/// A table of links in which no row may stand twice, and the columns that tell rows apart.
struct UniqueLink {
    const char* table;
    const char* columns;
    const char* caption;
};
std::span<const UniqueLink> uniqueLinks();

/// Any other rule on the rows of one table, in SQLite's words; the rows are those of "T".
struct CatalogRule {
    const char* table;
    const char* example; ///< expression that names a row for the user
    const char* condition;
    const char* caption;
    const char* question;
    const char* done;
    const char* mend; ///< a statement, with "@" for the condition; "" for deleting the rows
};
/// Rules on who belongs to whom; mended after the links and before the doubles.
std::span<const CatalogRule> membershipRules();
/// Rules on numbers and marks that are counted from other rows; mended last.
std::span<const CatalogRule> countingRules();

/// The condition that a row of the link's table, "T", leads nowhere.
QByteArray brokenLink(const CatalogLink& link);

} // namespace tessaranth
