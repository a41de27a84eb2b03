// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/CatalogLinks.h"

#include <QCoreApplication>

namespace tessaranth {

namespace {

using enum CatalogLink::Remedy;

#define N(text) QT_TRANSLATE_NOOP("CatalogCheck", text)
#define ATTACHED(table, code, target, key, caption)                                                          \
    { table, "RelatedID", target, key, DeleteRow, N(caption), "RelatedCat", code }
#define ATTACHED_TO_ALL(table, what)                                                                         \
    ATTACHED(table, "Cps", "Cps", "CpsID", what " of composers that are gone"),                              \
        ATTACHED(table, "Pfr", "Pfr", "PfrID", what " of performers that are gone"),                         \
        ATTACHED(table, "Rec", "Rec", "RecID", what " of recordings that are gone"),                         \
        ATTACHED(table, "UserDef", "UserDef", "UserDefID", what " of custom items that are gone"),           \
        ATTACHED(table, "Comp", "Compositions", "CompID", what " of works that are gone")
#define RELATED(code, table, key, caption)                                                                   \
    { "Relations", "ItemID", table, key, DeleteRow, N(caption), "ItemType", code }
#define CLASSES(prefix, what)                                                                                \
    {prefix "SubCat",                                                                                        \
     prefix "ClassID",                                                                                       \
     prefix "Class",                                                                                         \
     prefix "ClassID",                                                                                       \
     Adopt,                                                                                                  \
     N("Sub-categories of " what " without a category"),                                                     \
     "",                                                                                                     \
     "",                                                                                                     \
     prefix "ClassName"},                                                                                    \
        {prefix "SubCatJoin", prefix "ID", prefix,                                                           \
         prefix "ID",         DeleteRow,   N("Classifications of " what " that are gone")},                  \
    {                                                                                                        \
        prefix "SubCatJoin", prefix "SubCatID", prefix "SubCat", prefix "SubCatID", DeleteRow,               \
            N("Classifications of " what " in sub-categories that are gone")                                 \
    }

// clang-format off
const CatalogLink links[] = {
    {"Compositions", "CpsID", "Cps", "CpsID", Adopt, N("Works without a composer"), "", "", "CpsLname"},
    {"MainWorks", "CpsID", "Cps", "CpsID", DeleteRow, N("Main works of composers that are gone")},
    {"CpsGenres", "CpsID", "Cps", "CpsID", DeleteRow, N("Catalog genres of composers that are gone")},
    {"Catalogs", "CpsID", "Cps", "CpsID", DeleteRow, N("Imported catalogs of composers that are gone")},
    {"Compositions", "MainWorkID", "MainWorks", "MainWorkID", SetToNone, N("Works of a main work that is gone")},
    {"Compositions", "CpsGenreID", "CpsGenres", "CpsGenreID", SetToNone, N("Works of a catalog genre that is gone")},
    {"Compositions", "GenreID", "Genres", "GenreID", SetToNone, N("Works of a genre that is gone")},
    {"Compositions", "KeyID", "WKeys", "KeyID", SetToNone, N("Works in a key that is gone")},
    {"Personages", "CompID", "Compositions", "CompID", DeleteRow, N("Personages of works that are gone")},
    {"Rec", "LabelID", "Labels", "LabelID", SetToNone, N("Recordings of a label that is gone")},
    {"Rec", "SupportID", "Supports", "SupportID", SetToNone, N("Recordings on a support that is gone")},
    {"Rec", "SourceID", "Sources", "SourceID", SetToNone, N("Recordings from a source that is gone")},
    {"CpsOnRec", "CpsID", "Cps", "CpsID", DeleteRow, N("Recordings' links to composers that are gone")},
    {"CpsOnRec", "RecID", "Rec", "RecID", DeleteRow, N("Composers' links to recordings that are gone")},
    {"PfrOnRec", "PfrID", "Pfr", "PfrID", DeleteRow, N("Recordings' links to performers that are gone")},
    {"PfrOnRec", "RecID", "Rec", "RecID", DeleteRow, N("Performers' links to recordings that are gone")},
    {"CompOnRec", "RecID", "Rec", "RecID", DeleteRow, N("Works' places on recordings that are gone")},
    {"CompOnRec", "CompID", "Compositions", "CompID", DeleteRow, N("Places on recordings of works that are gone")},
    {"CompOnRecPfr", "CompOnRecID", "CompOnRec", "CompOnRecID", DeleteRow, N("Casts of works that no recording holds")},
    {"CompOnRecPfr", "PfrID", "Pfr", "PfrID", DeleteRow, N("Performers in casts that are gone")},
    {"CompOnRecPfr", "PersonageID", "Personages", "PersonageID", SetToNone, N("Roles in casts that are gone")},
    {"Tracks", "RecID", "Rec", "RecID", DeleteRow, N("Tracks without a recording")},
    {"DiscIds", "RecID", "Rec", "RecID", DeleteRow, N("Disc identifiers without a recording")},
    ATTACHED_TO_ALL("Images", "Pictures"), ATTACHED_TO_ALL("Cards", "Documents"),
    ATTACHED_TO_ALL("Media", "Media"), ATTACHED_TO_ALL("Web", "Web links"),
    {"Relations", "UserDefID", "UserDef", "UserDefID", DeleteRow, N("Relations to custom items that are gone")},
    RELATED("Cps", "Cps", "CpsID", "Relations to composers that are gone"),
    RELATED("Pfr", "Pfr", "PfrID", "Relations to performers that are gone"),
    RELATED("Rec", "Rec", "RecID", "Relations to recordings that are gone"),
    CLASSES("Cps", "composers"), CLASSES("Pfr", "performers"),
    CLASSES("Rec", "recordings"), CLASSES("UserDef", "custom items"),
};

const UniqueLink uniques[] = {
    {"CpsOnRec", "CpsID, RecID", N("Composers that are twice on a recording")},
    {"PfrOnRec", "PfrID, RecID", N("Performers that are twice on a recording")},
    {"CompOnRecPfr", "CompOnRecID, PfrID, PersonageID", N("Performers that are twice in a cast")},
    {"DiscIds", "RecID, DiscNbr, DiscId", N("Disc identifiers that are there twice")},
    {"Relations", "UserDefID, ItemType, ItemID", N("Relations that are there twice")},
    {"CpsSubCatJoin", "CpsID, CpsSubCatID", N("Composers that are twice in a sub-category")},
    {"PfrSubCatJoin", "PfrID, PfrSubCatID", N("Performers that are twice in a sub-category")},
    {"RecSubCatJoin", "RecID, RecSubCatID", N("Recordings that are twice in a sub-category")},
    {"UserDefSubCatJoin", "UserDefID, UserDefSubCatID", N("Custom items that are twice in a sub-category")},
};

#define ASK_DELETE N("Delete these rows?"), N("%1 rows deleted"), ""
#define ATTACHED_KINDS "('Cps', 'Pfr', 'Rec', 'UserDef', 'Comp')"
#define WITHOUT_KIND(table, key, caption)                                                                    \
    {table, "'" key " ' || T." key,                                                                          \
     "T.RelatedCat IS NULL OR T.RelatedCat COLLATE NOCASE NOT IN " ATTACHED_KINDS, N(caption), ASK_DELETE}

const CatalogRule memberships[] = {
    WITHOUT_KIND("Images", "ImageID", "Pictures of no kind of card"),
    WITHOUT_KIND("Cards", "CardID", "Documents of no kind of card"),
    WITHOUT_KIND("Media", "MediaID", "Media of no kind of card"),
    WITHOUT_KIND("Web", "WebID", "Web links of no kind of card"),
    {"Relations", "'UserDefID ' || T.UserDefID",
     "T.ItemType IS NULL OR T.ItemType COLLATE NOCASE NOT IN ('Cps', 'Pfr', 'Rec')",
     N("Relations to no kind of card"), ASK_DELETE},
    {"CompOnRec", "'CompOnRecID ' || T.CompOnRecID",
     "EXISTS (SELECT 1 FROM Compositions WHERE CompID = T.CompID AND CpsID IS NOT T.CpsID)",
     N("Works that stand on a recording under another composer"), N("Put them under their own composer?"),
     N("%1 put under their own composer"),
     "UPDATE CompOnRec AS T SET CpsID = (SELECT CpsID FROM Compositions WHERE CompID = T.CompID) WHERE @"},
    {"CompOnRec", "'RecID ' || T.RecID",
     "T.CpsID IN (SELECT CpsID FROM Cps) AND T.RecID IN (SELECT RecID FROM Rec) AND NOT EXISTS "
     "(SELECT 1 FROM CpsOnRec WHERE CpsOnRec.RecID = T.RecID AND CpsOnRec.CpsID = T.CpsID)",
     N("Works whose composer is not on the recording"), N("Add the composers to the recordings?"),
     N("composers added for %1 works"),
     "INSERT INTO CpsOnRec (CpsID, RecID) SELECT DISTINCT T.CpsID, T.RecID FROM CompOnRec AS T WHERE @"},
    {"CompOnRecPfr", "'CompOnRecID ' || T.CompOnRecID || ', PfrID ' || T.PfrID",
     "EXISTS (SELECT 1 FROM CompOnRec WHERE CompOnRecID = T.CompOnRecID AND NOT EXISTS (SELECT 1 FROM PfrOnRec "
     "WHERE PfrOnRec.RecID = CompOnRec.RecID AND PfrOnRec.PfrID = T.PfrID))",
     N("Performers in casts who are not on the recording"), N("Take them out of the casts?"),
     N("%1 taken out of the casts"), ""},
    {"CompOnRecPfr", "'CompOnRecID ' || T.CompOnRecID || ', PersonageID ' || T.PersonageID",
     "EXISTS (SELECT 1 FROM Personages JOIN CompOnRec ON CompOnRec.CompOnRecID = T.CompOnRecID "
     "WHERE Personages.PersonageID = T.PersonageID AND Personages.CompID IS NOT CompOnRec.CompID)",
     N("Roles in casts that belong to another work"), N("Take the roles away and keep the performers?"),
     N("%1 roles taken away"), "UPDATE CompOnRecPfr AS T SET PersonageID = 0 WHERE @"},
};

// The most units that the editor of recordings takes.
#define IS_UNIT(column) "(typeof(" column ") = 'integer' AND " column " BETWEEN 1 AND 999)"

// Recordings count, not rows: a row of a recording that is gone puts nothing into the collection.
#define ON_RECORDING                                                                                         \
    "EXISTS (SELECT 1 FROM CompOnRec JOIN Rec ON Rec.RecID = CompOnRec.RecID WHERE CompOnRec.CompID = T.CompID)"
#define HAS_PERSONAGES "EXISTS (SELECT 1 FROM Personages WHERE Personages.CompID = T.CompID)"

const CatalogRule counts[] = {
    {"Tracks", "'TrackID ' || T.TrackID", "NOT " IS_UNIT("T.Disc"), N("Tracks on a disc that cannot be"),
     N("Put them behind the tracks of disc 1?"), N("%1 put on disc 1"),
     "UPDATE Tracks SET Disc = 1, TrackNbr = n.place FROM (SELECT T.TrackID AS id, ROW_NUMBER() OVER (PARTITION BY "
     "T.RecID ORDER BY T.Disc, T.TrackNbr, T.TrackID) + (SELECT COUNT(*) + COALESCE(MAX(Own.TrackNbr), 0) FROM Tracks "
     "AS Own WHERE Own.RecID = T.RecID AND Own.Disc = 1 AND typeof(Own.TrackNbr) = 'integer') AS place FROM Tracks AS T "
     "WHERE @) AS n WHERE Tracks.TrackID = n.id"},
    {"Rec", "'RecID ' || T.RecID", "NOT " IS_UNIT("T.UnitsNbr"), N("Recordings with a number of units that cannot be"),
     N("Set it to the number of discs that have tracks?"), N("%1 set"),
     "UPDATE Rec AS T SET UnitsNbr = (SELECT COALESCE(MAX(Disc), 1) FROM Tracks WHERE Tracks.RecID = T.RecID AND "
     IS_UNIT("Disc") ") WHERE @"},
    {"Rec", "'RecID ' || T.RecID",
     "EXISTS (SELECT 1 FROM Tracks WHERE Tracks.RecID = T.RecID AND " IS_UNIT("Disc") " AND Disc > T.UnitsNbr)",
     N("Recordings with tracks beyond their units"), N("Raise the units to the discs that have tracks?"),
     N("units of %1 raised"),
     "UPDATE Rec AS T SET UnitsNbr = (SELECT MAX(Disc) FROM Tracks WHERE Tracks.RecID = T.RecID AND " IS_UNIT("Disc")
     ") WHERE @"},
    {"Tracks", "'TrackID ' || T.TrackID",
     "EXISTS (SELECT 1 FROM Tracks AS Own WHERE Own.RecID = T.RecID AND Own.Disc = T.Disc AND Own.TrackNbr IS "
     "T.TrackNbr AND Own.TrackID < T.TrackID)",
     N("Tracks with a number that another of the disc has"), N("Number the tracks of these discs anew?"),
     N("%1 tracks numbered anew"),
     "UPDATE Tracks SET TrackNbr = n.place FROM (SELECT TrackID AS id, ROW_NUMBER() OVER (PARTITION BY RecID, Disc "
     "ORDER BY TrackNbr, TrackID) AS place FROM Tracks WHERE (RecID, Disc) IN (SELECT T.RecID, T.Disc FROM Tracks AS T "
     "WHERE @)) AS n WHERE Tracks.TrackID = n.id AND Tracks.TrackNbr IS NOT n.place"},
    {"Compositions", "'CompID ' || T.CompID", "T.InCollection IS NOT (" ON_RECORDING ")",
     N("Works wrongly marked as in the collection, or not marked"), N("Count them anew?"), N("%1 counted anew"),
     "UPDATE Compositions AS T SET InCollection = " ON_RECORDING " WHERE @"},
    {"Compositions", "'CompID ' || T.CompID", "T.Pers IS NOT (" HAS_PERSONAGES ")",
     N("Works wrongly marked as having personages, or not marked"), N("Count them anew?"), N("%1 counted anew"),
     "UPDATE Compositions AS T SET Pers = " HAS_PERSONAGES " WHERE @"},
};
// clang-format on

#undef N

} // namespace

std::span<const CatalogLink> catalogLinks() { return links; }
std::span<const UniqueLink> uniqueLinks() { return uniques; }
std::span<const CatalogRule> membershipRules() { return memberships; }
std::span<const CatalogRule> countingRules() { return counts; }

QByteArray brokenLink(const CatalogLink& link) {
    const QByteArray column = QByteArray("T.") + link.column;
    QByteArray condition = "NOT EXISTS (SELECT 1 FROM " + QByteArray(link.target) + " WHERE " + link.target +
                           '.' + link.key + " = " + column + ')';
    if (link.remedy == CatalogLink::Remedy::SetToNone)
        condition = column + " IS NOT NULL AND " + column + " IS NOT 0 AND " + condition;
    // A list of keys that is missing as a whole is no reason to forget the keys of all works.
    if (QByteArrayView(link.target) == QByteArrayView("WKeys"))
        condition += " AND EXISTS (SELECT 1 FROM WKeys)";
    if (*link.kind != 0)
        condition =
            QByteArray("T.") + link.kindColumn + " = '" + link.kind + "' COLLATE NOCASE AND " + condition;
    return condition;
}

} // namespace tessaranth
