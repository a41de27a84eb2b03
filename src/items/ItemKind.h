// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <span>

namespace tessaranth {

/// What the program knows of one kind of item: four kinds of card and four lookup lists. Operations on
/// items are written once and read the rest from here.
struct ItemKind {
    enum Number { Composer = 1, Performer, Recording, Custom, Genre, Label, Source, Support };

    /// How the list's statement is put together and what its columns mean. Column 0 is the key, column 1 the
    /// name; other columns are -1 where the statement has none.
    struct List {
        QString select;
        QString filterColumn;     ///< compared with the beginning that the user typed
        QString orderBy = {};     ///< with its leading blank; may be empty
        int firstNameColumn = -1; ///< follows the name after ", "
        int secondColumn = -1;    ///< the list's second column
        int cellIconColumn = -1;  ///< holds the key of the icon beside the name
        QStringList headings;
    };

    int number;   ///< 1 to 8
    QString code; ///< also RelatedCat and ItemType of what hangs off a card
    QStringList otherWords = {};
    QString table;
    QString key;
    QString nameColumn;
    QString messageLabel; ///< before names in messages
    QString listCaption;
    QString countCaption; ///< before a number of items
    QString noun;         ///< within a sentence
    QString iconKey;
    QString colourPrefix = {}; ///< of the configuration's colours; empty for the lookup lists
    List list;

    bool isCard() const { return number <= Custom; }
};

/// All eight, in the order of their numbers.
std::span<const ItemKind> itemKinds();
/// Nullptr for a number outside 1 to 8.
const ItemKind* itemKind(int number);
/// By one of its words, such as "Cps" or "UserDef", in this letter case; nullptr for another word.
const ItemKind* itemKind(const QString& word);

} // namespace tessaranth
