// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/ItemList.h"
#include "store/NameTable.h"

#include <QSet>
#include <QStringList>
#include <optional>
#include <vector>

namespace tessaranth {

class OpenCards;
class Session;

/// The user's own order among the cards of one kind: categories, their sub-categories, and the cards in
/// those. An operation that fails reports it through the session's messages; it answers false then, 0 or
/// nothing, as it does when the user declines.
class Classification {
public:
    /// What stands in the tree; a category or a sub-category.
    enum Level { Category, SubCategory };
    struct SubNode {
        qint64 id = 0;
        QString name;
        int cards = 0;
    };
    struct Node {
        qint64 id = 0;
        QString name;
        int cards = 0; ///< in any of its sub-categories, each once
        std::vector<SubNode> subCategories;
    };
    struct Tree {
        std::vector<Node> categories; ///< by name, as are their sub-categories
        int cards = 0;                ///< of the kind
        int unclassified = 0;
    };
    /// One category of a card, with the names of those of its sub-categories that the card is in.
    struct Line {
        QString category;
        QStringList subCategories;
        /// "Category: first / second".
        QString text() const;
    };

    /// `kind` is one of the four kinds of card.
    Classification(Session& session, int kind, OpenCards* cards = nullptr);

    int kind() const { return m_kind; }
    /// "Classify recording: ", "Classify recordings: ".
    QString prompt(bool several) const;

    std::optional<Tree> tree();
    /// The sub-categories with their categories, in the columns "Category" and "Sub-category".
    ItemList subCategories();

    // Lists of cards: a person's name and years, or a title. They replace what the list held, which stays as
    // it was when the reading fails.
    bool items(qint64 subCategory, ItemList& list);
    bool itemsOfCategory(qint64 category, ItemList& list);
    bool unclassified(ItemList& list);
    bool all(ItemList& list);
    /// All cards, and a column for each category with the names of the card's sub-categories in it.
    bool globalView(ItemList& list);

    /// The categories of a card, by name.
    std::vector<Line> lines(qint64 card);

    // With the input boxes and questions of the window. `category` is the one of a new sub-category.
    qint64 add(Level level, qint64 category = 0);
    bool rename(Level level, qint64 id);
    bool remove(Level level, qint64 id);

    // Without the input boxes.
    qint64 addNamed(Level level, qint64 category, const QString& name);
    bool renameTo(Level level, qint64 id, const QString& name);

    /// How many of the cards are in a sub-category; those that hold none of them are left out.
    QHash<qint64, int> memberships(const std::vector<qint64>& cards);
    /// Puts cards into exactly these sub-categories. Those of `untouched` stay for each card as they are.
    /// Cards that have gone are passed over, a sub-category that has gone refuses the whole.
    bool assign(const std::vector<qint64>& cards, const QSet<qint64>& subCategories,
                const QSet<qint64>& untouched = {});
    /// Puts cards into one more sub-category.
    bool put(const std::vector<qint64>& cards, qint64 subCategory);

private:
    const NameTable& names(Level level) const { return m_names[level]; }
    QString sql(const char* text) const;
    qint64 ownerOf(Level level, qint64 id);
    QString fit(Level level, qint64 owner, const QString& text, qint64 except);
    bool read(const QString& condition, ItemList& list);
    QString nameCell(const class Query& run) const;
    void fillCells(const QHash<qint64, int>& rows, const QHash<qint64, int>& columns, ItemList& list);
    QSet<qint64> allSubCategories();
    std::vector<qint64> cardsIn(Level level, qint64 id);
    void assignOne(qint64 card, const QSet<qint64>& subCategories, const QSet<qint64>& untouched);
    void reload(const std::vector<qint64>& cards);

    Session& m_session;
    int m_kind;
    OpenCards* m_cards;
    NameTable m_names[2];
};

} // namespace tessaranth
