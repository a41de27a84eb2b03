// SPDX-License-Identifier: GPL-3.0-or-later
// The table of fields: a column added to the catalog gets its row here, and its place in a form.
#include "store/Fields.h"

#include <QCoreApplication>

namespace tessaranth {

namespace {

using enum FieldKind;

constexpr const char* ratings[] = {"N/A", "Poor", "Fair", "Good", "Very good", "Excellent"};
constexpr const char* sparsCodes[] = {"N/A", "AAA", "ADA", "AAD", "ADD", "DDD", "DAD", "DDA",
                                      "DAA", "A?A", "A?D", "D?A", "??A", "??D", "???"};

constexpr CatalogField of(FieldKind kind, const char* column, const char* caption = "") {
    return {.column = column, .caption = caption, .kind = kind};
}
constexpr CatalogField key(const char* column) { return of(Key, column); }
constexpr CatalogField state(const char* column) { return of(State, column); }
constexpr CatalogField code(const char* column) { return of(Code, column); }
constexpr CatalogField line(const char* column, const char* caption, const char* missing = nullptr) {
    return {.column = column, .caption = caption, .kind = Line, .missing = missing};
}
constexpr CatalogField link(const char* column, const char* target, const char* caption = "") {
    return {.column = column, .caption = caption, .kind = Link, .target = target};
}
constexpr CatalogField number(const char* column, const char* caption = "", qint64 least = 0,
                              qint64 most = 0) {
    return {.column = column, .caption = caption, .kind = Number, .least = least, .most = most};
}
constexpr CatalogField choice(const char* column, const char* caption, std::span<const char* const> choices) {
    return {.column = column, .caption = caption, .kind = Choice, .choices = choices};
}
constexpr CatalogField kept(CatalogField field) {
    field.isKept = true;
    return field;
}

// clang-format off
struct FieldTables {
    Q_DECLARE_TR_FUNCTIONS(Fields)
public:
    static constexpr CatalogField cps[] = {
        key("CpsID"),
        line("CpsLname", QT_TR_NOOP("Last Name"), QT_TR_NOOP("The last name is missing.")),
        line("CpsFname", QT_TR_NOOP("First Name")),
        kept(line("CpsY", QT_TR_NOOP("Born / Dead"))),
        of(Year, "CpsB", QT_TR_NOOP("Born")),
        of(Year, "CpsD", QT_TR_NOOP("Death")),
        line("CatAcr", QT_TR_NOOP("Catalog")),
        kept(of(Flag, "wkl")),
        state("LastState"),
    };
    static constexpr CatalogField pfr[] = {
        key("PfrID"),
        line("PfrLname", QT_TR_NOOP("Last Name"), QT_TR_NOOP("The last name is missing.")),
        line("PfrFname", QT_TR_NOOP("First Name")),
        of(Year, "PfrB", QT_TR_NOOP("Born")),
        of(Year, "PfrD", QT_TR_NOOP("Death")),
        kept(number("TSC")),
        state("LastState"),
    };
    static constexpr CatalogField rec[] = {
        key("RecID"),
        line("RecTitle", QT_TR_NOOP("Title"), QT_TR_NOOP("At least you must insert the recording title.")),
        line("RecSubTitle", QT_TR_NOOP("Sub title")),
        link("LabelID", "Labels", QT_TR_NOOP("Label")),
        link("SupportID", "Supports", QT_TR_NOOP("Support")),
        link("SourceID", "Sources", QT_TR_NOOP("Source")),
        line("ProdNbr", QT_TR_NOOP("Production number")),
        of(Barcode, "Barcode", QT_TR_NOOP("Barcode")),
        line("LocationCode", QT_TR_NOOP("Location")),
        number("UnitsNbr", QT_TR_NOOP("Units"), 1, 999),
        choice("Spars", QT_TR_NOOP("SPARS"), sparsCodes),
        choice("Rating", QT_TR_NOOP("Rating"), ratings),
        line("RelDate", QT_TR_NOOP("Release date")),
        line("Price", QT_TR_NOOP("Price")),
        of(Flag, "RefRec", QT_TR_NOOP("Reference recording")),
        of(Text, "Notes", QT_TR_NOOP("Notes")),
        kept(of(Date, "AddDate", QT_TR_NOOP("Added"))),
        kept(of(Date, "ModDate", QT_TR_NOOP("Modified"))),
        state("LastState"),
        state("LastStateRec"),
        state("LastStateRecSplitterPos"),
    };
    static constexpr CatalogField userDef[] = {
        key("UserDefID"),
        line("UserDefTitle", QT_TR_NOOP("Title"), QT_TR_NOOP("The title is missing.")),
        state("LastState"),
    };
    static constexpr CatalogField compositions[] = {
        key("CompID"),
        link("CpsID", "Cps", QT_TR_NOOP("Composer")),
        line("CompTitle", QT_TR_NOOP("Title"), QT_TR_NOOP("At least you must insert the work title.")),
        line("CompSubTitle", QT_TR_NOOP("Sub title")),
        line("CompNbr", QT_TR_NOOP("Opus")),
        line("CompYear", QT_TR_NOOP("Year")),
        number("KeyID", QT_TR_NOOP("Key")),
        link("GenreID", "Genres", QT_TR_NOOP("Genre")),
        link("CpsGenreID", "CpsGenres", QT_TR_NOOP("Catalog genre")),
        link("MainWorkID", "MainWorks", QT_TR_NOOP("Main work")),
        of(Text, "Descr", QT_TR_NOOP("Description")),
        kept(of(Flag, "Pers", QT_TR_NOOP("Has personages"))),
        kept(of(Flag, "InCollection", QT_TR_NOOP("In Collection"))),
        kept(of(Flag, "wkl")),
    };
    static constexpr CatalogField mainWorks[] = {
        key("MainWorkID"),
        link("CpsID", "Cps", QT_TR_NOOP("Composer")),
        line("MainWorkName", QT_TR_NOOP("MainWork name"), QT_TR_NOOP("The name is missing.")),
        kept(of(Flag, "wkl")),
    };
    static constexpr CatalogField cpsGenres[] = {
        key("CpsGenreID"),
        link("CpsID", "Cps", QT_TR_NOOP("Composer")),
        line("CpsGenreName", QT_TR_NOOP("Genre name"), QT_TR_NOOP("The name is missing.")),
        kept(of(Flag, "wkl")),
    };
    static constexpr CatalogField personages[] = {
        key("PersonageID"),
        link("CompID", "Compositions", QT_TR_NOOP("Work")),
        line("PersonageName", QT_TR_NOOP("Personage name"), QT_TR_NOOP("The name is missing.")),
    };
    static constexpr CatalogField genres[] = {
        key("GenreID"),
        line("GenreName", QT_TR_NOOP("Genre name"), QT_TR_NOOP("The name is missing.")),
    };
    static constexpr CatalogField labels[] = {
        key("LabelID"),
        line("LabelName", QT_TR_NOOP("Label name"), QT_TR_NOOP("The name is missing.")),
    };
    static constexpr CatalogField supports[] = {
        key("SupportID"),
        line("SupportType", QT_TR_NOOP("Support name"), QT_TR_NOOP("The name is missing.")),
        code("IconName"),
        of(Flag, "DefIcon"),
    };
    static constexpr CatalogField sources[] = {
        key("SourceID"),
        line("SourceType", QT_TR_NOOP("Source name"), QT_TR_NOOP("The name is missing.")),
    };
    static constexpr CatalogField cpsOnRec[] = {
        link("CpsID", "Cps", QT_TR_NOOP("Composer")),
        link("RecID", "Rec", QT_TR_NOOP("Recording")),
    };
    static constexpr CatalogField pfrOnRec[] = {
        link("PfrID", "Pfr", QT_TR_NOOP("Performer")),
        link("RecID", "Rec", QT_TR_NOOP("Recording")),
        number("Pos"),
    };
    static constexpr CatalogField compOnRec[] = {
        key("CompOnRecID"),
        link("RecID", "Rec", QT_TR_NOOP("Recording")),
        link("CpsID", "Cps", QT_TR_NOOP("Composer")),
        link("CompID", "Compositions", QT_TR_NOOP("Work")),
        number("Pos"),
        line("ExtraitName", QT_TR_NOOP("Excerpt")),
    };
    static constexpr CatalogField compOnRecPfr[] = {
        link("CompOnRecID", "CompOnRec"),
        link("PfrID", "Pfr", QT_TR_NOOP("Performer")),
        link("PersonageID", "Personages", QT_TR_NOOP("Role")),
    };
    static constexpr CatalogField images[] = {
        key("ImageID"),
        code("RelatedCat"),
        number("RelatedID"),
        line("ImageTitle", QT_TR_NOOP("Image title"), QT_TR_NOOP("The title is missing.")),
        number("OrderNbr"),
    };
    static constexpr CatalogField cards[] = {
        key("CardID"),
        code("RelatedCat"),
        number("RelatedID"),
        line("CardTitle", QT_TR_NOOP("Document title"), QT_TR_NOOP("The title is missing.")),
        number("OrderNbr"),
    };
    static constexpr CatalogField media[] = {
        key("MediaID"),
        code("RelatedCat"),
        number("RelatedID"),
        line("MediaTitle", QT_TR_NOOP("Media title"), QT_TR_NOOP("The title is missing.")),
        line("MediaFile", QT_TR_NOOP("File name")),
        line("MediaFolder", QT_TR_NOOP("Location")),
        number("MediaSize", QT_TR_NOOP("Size")),
        line("MediaType", QT_TR_NOOP("Type")),
        line("VolumeName", QT_TR_NOOP("Volume name")),
        line("VolumeType", QT_TR_NOOP("Volume type")),
    };
    static constexpr CatalogField web[] = {
        key("WebID"),
        code("RelatedCat"),
        number("RelatedID"),
        line("Url", QT_TR_NOOP("Url"), QT_TR_NOOP("The URL is missing.")),
        line("Alias", QT_TR_NOOP("Alias")),
    };
    static constexpr CatalogField relations[] = {
        link("UserDefID", "UserDef", QT_TR_NOOP("Custom item")),
        code("ItemType"),
        number("ItemID"),
    };
    static constexpr CatalogField cpsClass[] = {
        key("CpsClassID"),
        line("CpsClassName", QT_TR_NOOP("Category name"), QT_TR_NOOP("The name is missing.")),
    };
    static constexpr CatalogField cpsSubCat[] = {
        key("CpsSubCatID"),
        link("CpsClassID", "CpsClass", QT_TR_NOOP("Category")),
        line("CpsSubCatName", QT_TR_NOOP("Sub-category name"), QT_TR_NOOP("The name is missing.")),
    };
    static constexpr CatalogField cpsSubCatJoin[] = {
        link("CpsID", "Cps", QT_TR_NOOP("Composer")),
        link("CpsSubCatID", "CpsSubCat", QT_TR_NOOP("Sub-category")),
    };
    static constexpr CatalogField pfrClass[] = {
        key("PfrClassID"),
        line("PfrClassName", QT_TR_NOOP("Category name"), QT_TR_NOOP("The name is missing.")),
    };
    static constexpr CatalogField pfrSubCat[] = {
        key("PfrSubCatID"),
        link("PfrClassID", "PfrClass", QT_TR_NOOP("Category")),
        line("PfrSubCatName", QT_TR_NOOP("Sub-category name"), QT_TR_NOOP("The name is missing.")),
    };
    static constexpr CatalogField pfrSubCatJoin[] = {
        link("PfrID", "Pfr", QT_TR_NOOP("Performer")),
        link("PfrSubCatID", "PfrSubCat", QT_TR_NOOP("Sub-category")),
    };
    static constexpr CatalogField recClass[] = {
        key("RecClassID"),
        line("RecClassName", QT_TR_NOOP("Category name"), QT_TR_NOOP("The name is missing.")),
    };
    static constexpr CatalogField recSubCat[] = {
        key("RecSubCatID"),
        link("RecClassID", "RecClass", QT_TR_NOOP("Category")),
        line("RecSubCatName", QT_TR_NOOP("Sub-category name"), QT_TR_NOOP("The name is missing.")),
    };
    static constexpr CatalogField recSubCatJoin[] = {
        link("RecID", "Rec", QT_TR_NOOP("Recording")),
        link("RecSubCatID", "RecSubCat", QT_TR_NOOP("Sub-category")),
    };
    static constexpr CatalogField userDefClass[] = {
        key("UserDefClassID"),
        line("UserDefClassName", QT_TR_NOOP("Category name"), QT_TR_NOOP("The name is missing.")),
    };
    static constexpr CatalogField userDefSubCat[] = {
        key("UserDefSubCatID"),
        link("UserDefClassID", "UserDefClass", QT_TR_NOOP("Category")),
        line("UserDefSubCatName", QT_TR_NOOP("Sub-category name"), QT_TR_NOOP("The name is missing.")),
    };
    static constexpr CatalogField userDefSubCatJoin[] = {
        link("UserDefID", "UserDef", QT_TR_NOOP("Custom item")),
        link("UserDefSubCatID", "UserDefSubCat", QT_TR_NOOP("Sub-category")),
    };
    static constexpr CatalogField tracks[] = {
        key("TrackID"),
        link("RecID", "Rec", QT_TR_NOOP("Recording")),
        number("Disc", QT_TR_NOOP("Disc"), 1, 999),
        number("TrackNbr", QT_TR_NOOP("Track"), 1, 9999),
        line("TrackName", QT_TR_NOOP("Track name")),
        of(Length, "TrackLen", QT_TR_NOOP("Length")),
    };
    static constexpr CatalogField discIds[] = {
        key("DiscIdID"),
        link("RecID", "Rec", QT_TR_NOOP("Recording")),
        number("DiscNbr", QT_TR_NOOP("Disc"), 1, 999),
        of(DiscId, "DiscId", QT_TR_NOOP("Disc ID")),
    };
    static constexpr CatalogField catalogs[] = {
        key("CatalogID"),
        link("CpsID", "Cps", QT_TR_NOOP("Composer")),
        line("CpsName", QT_TR_NOOP("Composer")),
        line("FileName", QT_TR_NOOP("File")),
        kept(of(Date, "DateAdded", QT_TR_NOOP("Date added"))),
    };
    static constexpr CatalogField wKeys[] = {
        key("WKeysID"),
        number("LangID"),
        number("KeyID"),
        line("KeyName", QT_TR_NOOP("Key name"), QT_TR_NOOP("A key needs a name.")),
    };
    static constexpr CatalogField dbUpgrades[] = {
        key("DbUpgradeID"),
        number("DbUpgradeCode"),
    };
    static constexpr CatalogTable all[] = {
        {"Cps", QT_TR_NOOP("Composers"), cps, "CpsLname"},
        {"Pfr", QT_TR_NOOP("Performers"), pfr, "PfrLname"},
        {"Rec", QT_TR_NOOP("Recordings"), rec, "RecTitle"},
        {"UserDef", QT_TR_NOOP("Custom items"), userDef, "UserDefTitle"},
        {"Compositions", QT_TR_NOOP("Works"), compositions, "CompTitle"},
        {"MainWorks", QT_TR_NOOP("Main works"), mainWorks, "MainWorkName", "CpsID"},
        {"CpsGenres", QT_TR_NOOP("Catalog genres"), cpsGenres, "CpsGenreName", "CpsID"},
        {"Personages", QT_TR_NOOP("Personages"), personages, "PersonageName", "CompID"},
        {"Genres", QT_TR_NOOP("Genres"), genres, "GenreName"},
        {"Labels", QT_TR_NOOP("Labels"), labels, "LabelName"},
        {"Supports", QT_TR_NOOP("Supports"), supports, "SupportType"},
        {"Sources", QT_TR_NOOP("Sources"), sources, "SourceType"},
        {"CpsOnRec", QT_TR_NOOP("Composers of recordings"), cpsOnRec},
        {"PfrOnRec", QT_TR_NOOP("Performers of recordings"), pfrOnRec},
        {"CompOnRec", QT_TR_NOOP("Works on recordings"), compOnRec},
        {"CompOnRecPfr", QT_TR_NOOP("Performers of works"), compOnRecPfr},
        {"Images", QT_TR_NOOP("Pictures"), images, "ImageTitle"},
        {"Cards", QT_TR_NOOP("Documents"), cards, "CardTitle"},
        {"Media", QT_TR_NOOP("Media files"), media, "MediaTitle"},
        {"Web", QT_TR_NOOP("Web links"), web, "Alias"},
        {"Relations", QT_TR_NOOP("Relationships"), relations},
        {"CpsClass", QT_TR_NOOP("Categories of composers"), cpsClass, "CpsClassName"},
        {"CpsSubCat", QT_TR_NOOP("Sub-categories of composers"), cpsSubCat, "CpsSubCatName", "CpsClassID"},
        {"CpsSubCatJoin", QT_TR_NOOP("Classified composers"), cpsSubCatJoin},
        {"PfrClass", QT_TR_NOOP("Categories of performers"), pfrClass, "PfrClassName"},
        {"PfrSubCat", QT_TR_NOOP("Sub-categories of performers"), pfrSubCat, "PfrSubCatName", "PfrClassID"},
        {"PfrSubCatJoin", QT_TR_NOOP("Classified performers"), pfrSubCatJoin},
        {"RecClass", QT_TR_NOOP("Categories of recordings"), recClass, "RecClassName"},
        {"RecSubCat", QT_TR_NOOP("Sub-categories of recordings"), recSubCat, "RecSubCatName", "RecClassID"},
        {"RecSubCatJoin", QT_TR_NOOP("Classified recordings"), recSubCatJoin},
        {"UserDefClass", QT_TR_NOOP("Categories of custom items"), userDefClass, "UserDefClassName"},
        {"UserDefSubCat", QT_TR_NOOP("Sub-categories of custom items"), userDefSubCat, "UserDefSubCatName", "UserDefClassID"},
        {"UserDefSubCatJoin", QT_TR_NOOP("Classified custom items"), userDefSubCatJoin},
        {"Tracks", QT_TR_NOOP("Tracks"), tracks},
        {"DiscIds", QT_TR_NOOP("Disc identifiers"), discIds},
        {"Catalogs", QT_TR_NOOP("Imported catalogs"), catalogs},
        {"WKeys", QT_TR_NOOP("Names of keys"), wKeys, "KeyName"},
        {"DbUpgrades", "", dbUpgrades},
    };
};
// clang-format on

} // namespace

std::span<const CatalogTable> catalogTables() { return FieldTables::all; }

} // namespace tessaranth
