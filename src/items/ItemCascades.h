// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <span>

namespace tessaranth {

/// One step of deleting or merging an item. In statements %1 stands for the item's key; in those of a merge
/// for the target's key and %2 for that of the source.
struct CascadeStep {
    enum class Action {
        Run,           ///< a statement
        Attachments,   ///< pictures, documents, media, links and relations of the card
        WorkDocuments, ///< the documents of a composer's works
        LabelLogo,     ///< the logo of a label
    };
    Action action;
    const char* statement = "";
};

/// What goes with an item of a kind (1 to 8), in the order in which it goes.
std::span<const CascadeStep> deletionSteps(int kind);
/// What moves from one item to another of the same kind; attachments are moved before.
std::span<const CascadeStep> mergeSteps(int kind);
/// Tables of links in which a merge can make two rows alike, with the columns that tell rows apart.
struct LinkTable {
    const char* table;
    const char* key;       ///< the column that a merge changes
    const char* columns;   ///< all that make a link, comma-separated
    const char* rows = ""; ///< further condition where the key alone does not say whose row it is
};
std::span<const LinkTable> linkTables(int kind);

} // namespace tessaranth
