// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/ItemList.h"
#include "store/NameTable.h"

#include <QString>
#include <optional>
#include <span>
#include <vector>

namespace tessaranth {

class Session;

/// One of the two ways in which a composer's works are arranged: under genres of his own, or under main
/// works. Everything that differs between them is here.
struct CatalogBranch {
    enum Number { Genres, MainWorks };

    Number number;
    QString caption; ///< of the branch
    NameTable names; ///< its key is a column of Compositions too
    QString heading; ///< above a work's node of this branch
    QString addTitle, addPrompt;
    QString renamePrompt;
    QString removeTitle, removeOne, removeSeveral;
    QString assignPrompt;

    const CatalogBranch& other() const;
};

std::span<const CatalogBranch> catalogBranches();

/// The arrangement of one composer's works. An operation that fails, or that the user declines, answers
/// false; a failure has been told then.
class ComposerCatalog {
public:
    using Branch = CatalogBranch::Number;
    /// What stands in a branch. Id 0 is "Unclassified".
    using Node = NameTable::Row;

    ComposerCatalog(Session& session, qint64 composer) : m_session(session), m_composer(composer) {}

    QString composerName(); ///< first and last name
    /// "Unclassified" first, then the composer's nodes by name.
    std::vector<Node> nodes(Branch branch);
    /// The works of a node (0: of none in this branch), or all of the composer's without one. Works in the
    /// collection are bold where the configuration asks for it. Replaces what the list held.
    bool works(Branch branch, std::optional<qint64> node, ItemList& list);

    // With the questions and input boxes of the window.
    qint64 add(Branch branch); ///< the new node; 0 when none was added
    bool rename(Branch branch, qint64 node);
    /// Removes nodes; their works become unclassified. Id 0 is passed over.
    bool remove(Branch branch, const std::vector<qint64>& nodes);
    bool unassign(Branch branch, const std::vector<qint64>& works);

    // Without: for those and for callers that have asked already.
    qint64 addNamed(Branch branch, const QString& name);
    bool renameTo(Branch branch, qint64 node, const QString& name);
    /// Puts works under a node; 0 takes them out of theirs. Works of other composers are left alone.
    bool assign(Branch branch, qint64 node, const std::vector<qint64>& works);

    bool hasImportedCatalog();
    /// The catalogs that were imported, of all composers; a row's id is the composer's.
    static bool importedCatalogs(Session& session, ItemList& list);

private:
    QString fit(const CatalogBranch& branch, const QString& text, qint64 except);
    QString inputName(const CatalogBranch& branch, const QString& title, const QString& prompt,
                      const QString& button, const QString& text);

    Session& m_session;
    qint64 m_composer;
};

} // namespace tessaranth
