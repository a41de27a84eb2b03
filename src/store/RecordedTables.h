// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/CatalogChanges.h"

#include <span>
#include <vector>

namespace tessaranth {

/// What a row of a table says about a thing when it comes, changes or goes.
struct RowMeaning {
    enum class Role : quint8 {
        Itself, ///< the row is the thing: it is added, changed or removed with it
        Part,   ///< the row belongs to the thing, which is changed
        Owner,  ///< the same for whatever card `codeColumn` names
    };
    Role role;
    Thing thing;        ///< unused for Owner
    const char* column; ///< holds the thing's key
    const char* codeColumn = nullptr;
};

/// A table of the catalog whose rows the change log records: each that the table of fields names. Others,
/// such as the index of words and our own table of the history's token, change unseen.
struct RecordedTable {
    const char* name;
    const char* key = nullptr; ///< none for tables of links, whose rows are known by all their values
    std::span<const RowMeaning> meanings;
    /// Columns that tell how the program was last used: no change where nothing else changed.
    std::vector<const char*> ignored;
    /// Columns that are counted from other tables.
    std::span<const char* const> counted;
};

const std::vector<RecordedTable>& recordedTables();
/// Nullptr for a table that is not recorded. Letter case does not matter.
const RecordedTable* recordedTable(const char* name);

/// The thing that a RelatedCat or ItemType names, such as "Rec" or "Comp"; nothing for another word.
std::optional<Thing> thingOfCode(const char* code);

/// Where the name of a thing stands. Several columns are parts of one name, the last name first.
struct ThingName {
    Thing thing;
    const char* table;
    const char* key;
    const char* names; ///< columns, comma-separated
};
/// Nullptr for a thing without a name of its own.
const ThingName* thingName(Thing thing);
/// The thing whose key a column of this name holds, such as RecID; nothing for other columns.
std::optional<Thing> thingOfColumn(const char* column);

} // namespace tessaranth
