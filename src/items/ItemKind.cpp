// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/ItemKind.h"

#include <algorithm>
#include <array>

namespace tessaranth {

namespace {

#define S(text) QStringLiteral(text)

const std::array<ItemKind, 8>& table() {
    static const std::array<ItemKind, 8> kinds{{
        {ItemKind::Composer,
         S("Cps"),
         {},
         S("Cps"),
         S("CpsID"),
         S("CpsLname"),
         S("Composers: "),
         S("Composers"),
         S("Composers: "),
         S("composer"),
         S("c"),
         S("Cps"),
         {S("SELECT CpsID, CpsLName, CpsFname, CpsY FROM Cps"),
          S("CpsLname"),
          S(" ORDER BY CpsLName, CpsFName"),
          2,
          3,
          -1,
          {S("Composer"), S("Born / Dead")}}},
        {ItemKind::Performer,
         S("Pfr"),
         {},
         S("Pfr"),
         S("PfrID"),
         S("PfrLname"),
         S("Performers: "),
         S("Performers"),
         S("Performers: "),
         S("performer"),
         S("p"),
         S("Pfr"),
         {S("SELECT PfrID, PfrLName, PfrFname FROM Pfr"),
          S("PfrLname"),
          S(" ORDER BY PfrLName, PfrFName"),
          2,
          -1,
          -1,
          {S("Performer")}}},
        {ItemKind::Recording,
         S("Rec"),
         {},
         S("Rec"),
         S("RecID"),
         S("RecTitle"),
         S("Recordings: "),
         S("Recordings"),
         S("Recordings: "),
         S("recording"),
         S("Recordings"),
         S("Rec"),
         {S("SELECT Rec.RecID, Rec.RecTitle, Labels.LabelName, Supports.IconName "
            "FROM Supports "
            "RIGHT JOIN (Labels "
            "RIGHT JOIN Rec "
            "ON Labels.LabelID = Rec.LabelID) "
            "ON Supports.SupportID = Rec.SupportID"),
          S("RecTitle"),
          S(" ORDER BY Rec.RecTitle"),
          -1,
          2,
          3,
          {S("Title"), S("Label")}}},
        {ItemKind::Custom,
         S("UserDef"),
         {S("Cus"), S("User")},
         S("UserDef"),
         S("UserDefID"),
         S("UserDefTitle"),
         S("Custom: "),
         S("Custom items"),
         S("Custom items: "),
         S("custom item"),
         S("User"),
         S("Cus"),
         {S("SELECT * FROM UserDef"),
          S("UserDefTitle"),
          S(" ORDER BY UserDefTitle"),
          -1,
          -1,
          -1,
          {S("Title")}}},
        {ItemKind::Genre,
         S("Genre"),
         {},
         S("Genres"),
         S("GenreID"),
         S("GenreName"),
         S("Genres: "),
         S("Genres"),
         S("Genres: "),
         S("genre"),
         S("Genre"),
         {},
         {S("SELECT * FROM Genres"), S("GenreName"), S(" ORDER BY GenreName"), -1, -1, -1, {S("Name")}}},
        {ItemKind::Label,
         S("Label"),
         {},
         S("Labels"),
         S("LabelID"),
         S("LabelName"),
         S("Labels: "),
         S("Labels"),
         S("Labels: "),
         S("label"),
         S("Label"),
         {},
         {S("SELECT LabelID, LabelName FROM Labels"),
          S("LabelName"),
          S(" ORDER BY LabelName"),
          -1,
          -1,
          -1,
          {S("Name")}}},
        {ItemKind::Source,
         S("Source"),
         {},
         S("Sources"),
         S("SourceID"),
         S("SourceType"),
         S("Sources: "),
         S("Sources"),
         S("Sources: "),
         S("source"),
         S("Source"),
         {},
         {S("SELECT * FROM Sources"), S("SourceType"), S(" ORDER BY SourceType"), -1, -1, -1, {S("Name")}}},
        {ItemKind::Support,
         S("Support"),
         {},
         S("Supports"),
         S("SupportID"),
         S("SupportType"),
         S("Supports: "),
         S("Supports"),
         S("Supports: "),
         S("support"),
         S("Support"),
         {},
         {S("SELECT * FROM Supports"), S("SupportType"), {}, -1, -1, 2, {S("Name")}}},
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
