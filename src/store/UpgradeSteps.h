// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

namespace tessaranth {

/// A table that later versions of the program added to the catalog.
struct AddedTable {
    const char* name;
    const char* statement;
};

/// One numbered upgrade. Codes are not in numeric order: existing catalogs hold them as they are.
struct UpgradeStep {
    enum class Change { AddColumn, ChangeTypeAndDefault, ChangeWidth, Media, AddTable };
    int code;
    Change change;
    const char* table;
    const char* column;
    const char* type;         ///< for ChangeWidth the type's word only, for AddTable the whole statement
    const char* defaultValue; ///< as written after SET DEFAULT; may be empty
    int width;                ///< characters, for ChangeWidth
    std::span<const char* const> data; ///< statements run once the change is recorded
};

/// A column that the media step adds.
struct MediaColumn {
    const char* name;
    const char* type;
    const char* defaultValue;
};

/// In the order in which they are made and applied.
std::span<const AddedTable> addedTables();
std::span<const UpgradeStep> upgradeSteps();
std::span<const MediaColumn> mediaColumns();

/// The highest code that this program knows; a catalog with a higher one is of a newer version.
constexpr int newestUpgradeCode = 236569;
/// Steps for tables of our own have numbers from here on; whoever knows only the given ones passes over them.
constexpr int firstOwnUpgradeCode = 900001;
constexpr int newestOwnUpgradeCode = 900001;

} // namespace tessaranth
