// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/ItemKind.h"

#include <algorithm>
#include <array>

namespace tessaranth {

namespace {

#define S(text) QStringLiteral(text)

const std::array<ItemKind, 8>& table() {
    static const std::array<ItemKind, 8> kinds{{
        {.number = ItemKind::Composer,
         .code = S("Cps"),
         .table = S("Cps"),
         .key = S("CpsID"),
         .nameColumn = S("CpsLname"),
         .messageLabel = S("Composers: "),
         .listCaption = S("Composers"),
         .countCaption = S("Composers: "),
         .noun = S("composer"),
         .iconKey = S("c"),
         .colourPrefix = S("Cps"),
         .list = {.select = S("SELECT CpsID, CpsLName, CpsFname, CpsY FROM Cps"),
                  .filterColumn = S("CpsLname"),
                  .orderBy = S(" ORDER BY CpsLName, CpsFName"),
                  .firstNameColumn = 2,
                  .secondColumn = 3,
                  .headings = {S("Composer"), S("Born / Dead")}}},
        {.number = ItemKind::Performer,
         .code = S("Pfr"),
         .table = S("Pfr"),
         .key = S("PfrID"),
         .nameColumn = S("PfrLname"),
         .messageLabel = S("Performers: "),
         .listCaption = S("Performers"),
         .countCaption = S("Performers: "),
         .noun = S("performer"),
         .iconKey = S("p"),
         .colourPrefix = S("Pfr"),
         .list = {.select = S("SELECT PfrID, PfrLName, PfrFname FROM Pfr"),
                  .filterColumn = S("PfrLname"),
                  .orderBy = S(" ORDER BY PfrLName, PfrFName"),
                  .firstNameColumn = 2,
                  .headings = {S("Performer")}}},
        {.number = ItemKind::Recording,
         .code = S("Rec"),
         .table = S("Rec"),
         .key = S("RecID"),
         .nameColumn = S("RecTitle"),
         .messageLabel = S("Recordings: "),
         .listCaption = S("Recordings"),
         .countCaption = S("Recordings: "),
         .noun = S("recording"),
         .iconKey = S("Recordings"),
         .colourPrefix = S("Rec"),
         .list = {.select = S("SELECT Rec.RecID, Rec.RecTitle, Labels.LabelName, Supports.IconName "
                              "FROM Supports "
                              "RIGHT JOIN (Labels "
                              "RIGHT JOIN Rec "
                              "ON Labels.LabelID = Rec.LabelID) "
                              "ON Supports.SupportID = Rec.SupportID"),
                  .filterColumn = S("RecTitle"),
                  .orderBy = S(" ORDER BY Rec.RecTitle"),
                  .secondColumn = 2,
                  .cellIconColumn = 3,
                  .headings = {S("Title"), S("Label")}}},
        {.number = ItemKind::Custom,
         .code = S("UserDef"),
         .otherWords = {S("Cus"), S("User")},
         .table = S("UserDef"),
         .key = S("UserDefID"),
         .nameColumn = S("UserDefTitle"),
         .messageLabel = S("Custom: "),
         .listCaption = S("Custom items"),
         .countCaption = S("Custom items: "),
         .noun = S("custom item"),
         .iconKey = S("User"),
         .colourPrefix = S("Cus"),
         .list = {.select = S("SELECT * FROM UserDef"),
                  .filterColumn = S("UserDefTitle"),
                  .orderBy = S(" ORDER BY UserDefTitle"),
                  .headings = {S("Title")}}},
        {.number = ItemKind::Genre,
         .code = S("Genre"),
         .table = S("Genres"),
         .key = S("GenreID"),
         .nameColumn = S("GenreName"),
         .messageLabel = S("Genres: "),
         .listCaption = S("Genres"),
         .countCaption = S("Genres: "),
         .noun = S("genre"),
         .iconKey = S("Genre"),
         .list = {.select = S("SELECT * FROM Genres"),
                  .filterColumn = S("GenreName"),
                  .orderBy = S(" ORDER BY GenreName"),
                  .headings = {S("Name")}}},
        {.number = ItemKind::Label,
         .code = S("Label"),
         .table = S("Labels"),
         .key = S("LabelID"),
         .nameColumn = S("LabelName"),
         .messageLabel = S("Labels: "),
         .listCaption = S("Labels"),
         .countCaption = S("Labels: "),
         .noun = S("label"),
         .iconKey = S("Label"),
         .list = {.select = S("SELECT LabelID, LabelName FROM Labels"),
                  .filterColumn = S("LabelName"),
                  .orderBy = S(" ORDER BY LabelName"),
                  .headings = {S("Name")}}},
        {.number = ItemKind::Source,
         .code = S("Source"),
         .table = S("Sources"),
         .key = S("SourceID"),
         .nameColumn = S("SourceType"),
         .messageLabel = S("Sources: "),
         .listCaption = S("Sources"),
         .countCaption = S("Sources: "),
         .noun = S("source"),
         .iconKey = S("Source"),
         .list = {.select = S("SELECT * FROM Sources"),
                  .filterColumn = S("SourceType"),
                  .orderBy = S(" ORDER BY SourceType"),
                  .headings = {S("Name")}}},
        {.number = ItemKind::Support,
         .code = S("Support"),
         .table = S("Supports"),
         .key = S("SupportID"),
         .nameColumn = S("SupportType"),
         .messageLabel = S("Supports: "),
         .listCaption = S("Supports"),
         .countCaption = S("Supports: "),
         .noun = S("support"),
         .iconKey = S("Support"),
         .list = {.select = S("SELECT * FROM Supports"),
                  .filterColumn = S("SupportType"),
                  .cellIconColumn = 2,
                  .headings = {S("Name")}}},
    }};
    return kinds;
}

#undef S

} // namespace

std::span<const ItemKind> itemKinds() { return table(); }

const ItemKind* itemKind(int number) {
    return number >= 1 && number <= int(table().size()) ? &table()[size_t(number - 1)] : nullptr;
}

const ItemKind* itemKind(const QString& word) {
    const auto found = std::find_if(table().begin(), table().end(), [&word](const ItemKind& kind) {
        return kind.code == word || kind.otherWords.contains(word);
    });
    return found == table().end() ? nullptr : &*found;
}

} // namespace tessaranth
