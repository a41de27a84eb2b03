// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/RecordedTables.h"

#include "store/Fields.h"

#include <cstring>
#include <sqlite3.h>

namespace tessaranth {

namespace {

using enum RowMeaning::Role;

// clang-format off
const char* const workMarks[] = {"InCollection", "Pers"};

const RowMeaning composer[] = {{Itself, Thing::Composer, "CpsID"}};
const RowMeaning performer[] = {{Itself, Thing::Performer, "PfrID"}};
const RowMeaning recording[] = {{Itself, Thing::Recording, "RecID"}};
const RowMeaning custom[] = {{Itself, Thing::Custom, "UserDefID"}};
const RowMeaning work[] = {{Itself, Thing::Work, "CompID"}, {Part, Thing::Composer, "CpsID"}};
const RowMeaning mainWork[] = {{Itself, Thing::MainWork, "MainWorkID"}, {Part, Thing::Composer, "CpsID"}};
const RowMeaning composerGenre[] = {{Itself, Thing::ComposerGenre, "CpsGenreID"}, {Part, Thing::Composer, "CpsID"}};
const RowMeaning personage[] = {{Itself, Thing::Personage, "PersonageID"}, {Part, Thing::Work, "CompID"}};
const RowMeaning genre[] = {{Itself, Thing::Genre, "GenreID"}};
const RowMeaning label[] = {{Itself, Thing::Label, "LabelID"}};
const RowMeaning support[] = {{Itself, Thing::Support, "SupportID"}};
const RowMeaning source[] = {{Itself, Thing::Source, "SourceID"}};
const RowMeaning composerOnRecording[] = {{Part, Thing::Composer, "CpsID"}, {Part, Thing::Recording, "RecID"}};
const RowMeaning performerOnRecording[] = {{Part, Thing::Performer, "PfrID"}, {Part, Thing::Recording, "RecID"}};
const RowMeaning placedWork[] = {{Itself, Thing::PlacedWork, "CompOnRecID"}, {Part, Thing::Recording, "RecID"},
                                 {Part, Thing::Composer, "CpsID"}, {Part, Thing::Work, "CompID"}};
const RowMeaning cast[] = {{Part, Thing::PlacedWork, "CompOnRecID"}, {Part, Thing::Performer, "PfrID"}};
const RowMeaning image[] = {{Itself, Thing::Image, "ImageID"}, {Owner, {}, "RelatedID", "RelatedCat"}};
const RowMeaning document[] = {{Itself, Thing::Document, "CardID"}, {Owner, {}, "RelatedID", "RelatedCat"}};
const RowMeaning media[] = {{Itself, Thing::Media, "MediaID"}, {Owner, {}, "RelatedID", "RelatedCat"}};
const RowMeaning link[] = {{Itself, Thing::Link, "WebID"}, {Owner, {}, "RelatedID", "RelatedCat"}};
const RowMeaning relation[] = {{Part, Thing::Custom, "UserDefID"}, {Owner, {}, "ItemID", "ItemType"}};
const RowMeaning track[] = {{Itself, Thing::Track, "TrackID"}, {Part, Thing::Recording, "RecID"}};
const RowMeaning discId[] = {{Part, Thing::Recording, "RecID"}};
const RowMeaning importedCatalog[] = {{Part, Thing::Composer, "CpsID"}};
const RowMeaning keyName[] = {{Itself, Thing::KeyName, "WKeysID"}};
const RowMeaning cpsClass[] = {{Itself, Thing::ComposerCategory, "CpsClassID"}};
const RowMeaning pfrClass[] = {{Itself, Thing::PerformerCategory, "PfrClassID"}};
const RowMeaning recClass[] = {{Itself, Thing::RecordingCategory, "RecClassID"}};
const RowMeaning userDefClass[] = {{Itself, Thing::CustomCategory, "UserDefClassID"}};
const RowMeaning cpsSubCat[] = {{Itself, Thing::ComposerSubCategory, "CpsSubCatID"},
                                {Part, Thing::ComposerCategory, "CpsClassID"}};
const RowMeaning pfrSubCat[] = {{Itself, Thing::PerformerSubCategory, "PfrSubCatID"},
                                {Part, Thing::PerformerCategory, "PfrClassID"}};
const RowMeaning recSubCat[] = {{Itself, Thing::RecordingSubCategory, "RecSubCatID"},
                                {Part, Thing::RecordingCategory, "RecClassID"}};
const RowMeaning userDefSubCat[] = {{Itself, Thing::CustomSubCategory, "UserDefSubCatID"},
                                    {Part, Thing::CustomCategory, "UserDefClassID"}};
const RowMeaning cpsJoin[] = {{Part, Thing::Composer, "CpsID"}, {Part, Thing::ComposerSubCategory, "CpsSubCatID"}};
const RowMeaning pfrJoin[] = {{Part, Thing::Performer, "PfrID"}, {Part, Thing::PerformerSubCategory, "PfrSubCatID"}};
const RowMeaning recJoin[] = {{Part, Thing::Recording, "RecID"}, {Part, Thing::RecordingSubCategory, "RecSubCatID"}};
const RowMeaning userDefJoin[] = {{Part, Thing::Custom, "UserDefID"},
                                  {Part, Thing::CustomSubCategory, "UserDefSubCatID"}};

struct Meanings {
    const char* table;
    std::span<const RowMeaning> rows;
    std::span<const char* const> counted = {};
};
const Meanings meanings[] = {
    {"Cps", composer},
    {"Pfr", performer},
    {"Rec", recording},
    {"UserDef", custom},
    {"Compositions", work, workMarks},
    {"MainWorks", mainWork},
    {"CpsGenres", composerGenre},
    {"Personages", personage},
    {"Genres", genre},
    {"Labels", label},
    {"Supports", support},
    {"Sources", source},
    {"CpsOnRec", composerOnRecording},
    {"PfrOnRec", performerOnRecording},
    {"CompOnRec", placedWork},
    {"CompOnRecPfr", cast},
    {"Images", image},
    {"Cards", document},
    {"Media", media},
    {"Web", link},
    {"Relations", relation},
    {"CpsClass", cpsClass},
    {"CpsSubCat", cpsSubCat},
    {"CpsSubCatJoin", cpsJoin},
    {"PfrClass", pfrClass},
    {"PfrSubCat", pfrSubCat},
    {"PfrSubCatJoin", pfrJoin},
    {"RecClass", recClass},
    {"RecSubCat", recSubCat},
    {"RecSubCatJoin", recJoin},
    {"UserDefClass", userDefClass},
    {"UserDefSubCat", userDefSubCat},
    {"UserDefSubCatJoin", userDefJoin},
    {"Tracks", track},
    {"Catalogs", importedCatalog},
    {"WKeys", keyName},
    {"DiscIds", discId},
};

struct CodeWord {
    const char* code;
    Thing thing;
};
const CodeWord codes[] = {{"Cps", Thing::Composer}, {"Pfr", Thing::Performer}, {"Rec", Thing::Recording},
                          {"UserDef", Thing::Custom}, {"Comp", Thing::Work}};

const ThingName names[] = {
    {Thing::Composer, "Cps", "CpsID", "CpsLname,CpsFname"},
    {Thing::Performer, "Pfr", "PfrID", "PfrLname,PfrFname"},
    {Thing::Recording, "Rec", "RecID", "RecTitle"},
    {Thing::Custom, "UserDef", "UserDefID", "UserDefTitle"},
    {Thing::Genre, "Genres", "GenreID", "GenreName"},
    {Thing::Label, "Labels", "LabelID", "LabelName"},
    {Thing::Source, "Sources", "SourceID", "SourceType"},
    {Thing::Support, "Supports", "SupportID", "SupportType"},
    {Thing::Work, "Compositions", "CompID", "CompTitle"},
    {Thing::Personage, "Personages", "PersonageID", "PersonageName"},
    {Thing::MainWork, "MainWorks", "MainWorkID", "MainWorkName"},
    {Thing::ComposerGenre, "CpsGenres", "CpsGenreID", "CpsGenreName"},
    {Thing::ComposerCategory, "CpsClass", "CpsClassID", "CpsClassName"},
    {Thing::PerformerCategory, "PfrClass", "PfrClassID", "PfrClassName"},
    {Thing::RecordingCategory, "RecClass", "RecClassID", "RecClassName"},
    {Thing::CustomCategory, "UserDefClass", "UserDefClassID", "UserDefClassName"},
    {Thing::ComposerSubCategory, "CpsSubCat", "CpsSubCatID", "CpsSubCatName"},
    {Thing::PerformerSubCategory, "PfrSubCat", "PfrSubCatID", "PfrSubCatName"},
    {Thing::RecordingSubCategory, "RecSubCat", "RecSubCatID", "RecSubCatName"},
    {Thing::CustomSubCategory, "UserDefSubCat", "UserDefSubCatID", "UserDefSubCatName"},
    {Thing::KeyName, "WKeys", "KeyID", "KeyName"},
};
// clang-format on

bool same(const char* a, const char* b) { return sqlite3_stricmp(a, b) == 0; }

} // namespace

const std::vector<RecordedTable>& recordedTables() {
    static const std::vector<RecordedTable> tables = [] {
        std::vector<RecordedTable> made;
        for (const CatalogTable& fields : catalogTables()) {
            RecordedTable table{fields.table, nullptr, {}, {}, {}};
            for (const CatalogField& field : fields.fields) {
                if (field.kind == FieldKind::Key)
                    table.key = field.column;
                if (field.kind == FieldKind::State)
                    table.ignored.push_back(field.column);
            }
            for (const Meanings& known : meanings) {
                if (same(known.table, fields.table)) {
                    table.meanings = known.rows;
                    table.counted = known.counted;
                }
            }
            made.push_back(std::move(table));
        }
        return made;
    }();
    return tables;
}

const RecordedTable* recordedTable(const char* name) {
    for (const RecordedTable& table : recordedTables())
        if (same(table.name, name))
            return &table;
    return nullptr;
}

std::optional<Thing> thingOfCode(const char* code) {
    for (const CodeWord& word : codes)
        if (std::strcmp(word.code, code) == 0)
            return word.thing;
    return std::nullopt;
}

const ThingName* thingName(Thing thing) {
    for (const ThingName& name : names)
        if (name.thing == thing)
            return &name;
    return nullptr;
}

std::optional<Thing> thingOfColumn(const char* column) {
    for (const ThingName& name : names)
        if (same(name.key, column))
            return name.thing;
    return std::nullopt;
}

} // namespace tessaranth
