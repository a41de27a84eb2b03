// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/ItemCascades.h"

#include "items/ItemKind.h"

namespace tessaranth {

namespace {

using Step = CascadeStep;
constexpr auto Run = CascadeStep::Action::Run;

// clang-format off
const Step deleteComposer[] = {
    {Step::Action::Attachments},
    {Run, "DELETE FROM CpsGenres WHERE CpsID = %1"},
    {Run, "DELETE FROM MainWorks WHERE CpsID = %1"},
    {Run, "DELETE FROM CpsSubCatJoin WHERE CpsID = %1"},
    {Run, "DELETE FROM Catalogs WHERE CpsID = %1"},
    {Run, "DELETE FROM Personages WHERE CompID IN " "(SELECT CompID FROM Compositions WHERE CpsID = %1)"},
    {Run, "DELETE FROM CompOnRecPfr WHERE CompOnRecID IN " "(SELECT CompOnRecID FROM CompOnRec WHERE CpsID = %1)"},
    {Step::Action::WorkDocuments},
    {Run, "DELETE FROM Compositions WHERE CpsID = %1"},
    {Run, "DELETE FROM CompOnRec WHERE CpsID = %1"},
    {Run, "DELETE FROM CpsOnRec WHERE CpsID = %1"},
    {Run, "DELETE FROM Cps WHERE CpsID = %1"},
};
const Step deletePerformer[] = {
    {Step::Action::Attachments},
    {Run, "DELETE FROM PfrSubCatJoin WHERE PfrID = %1"},
    {Run, "DELETE FROM PfrOnRec WHERE PfrID = %1"},
    {Run, "DELETE FROM CompOnRecPfr WHERE PfrID = %1"},
    {Run, "DELETE FROM Pfr WHERE PfrID = %1"},
};
const Step deleteRecording[] = {
    // Works that no other recording holds are no longer in the collection.
    {Run, "UPDATE Compositions SET InCollection = False WHERE CompID IN "
          "(SELECT CompID FROM CompOnRec WHERE RecID = %1) "
          "AND CompID NOT IN "
          "(SELECT CompID FROM CompOnRec WHERE RecID <> %1 AND CompID IS NOT NULL)"},
    {Step::Action::Attachments},
    {Run, "DELETE FROM RecSubCatJoin WHERE RecID = %1"},
    {Run, "DELETE CompOnRecPfr.* "
          "FROM CompOnRec "
          "INNER JOIN CompOnRecPfr "
          "ON CompOnRec.CompOnRecID = CompOnRecPfr.CompOnRecID "
          "WHERE CompOnRec.RecID = %1"},
    {Run, "DELETE FROM CompOnRec WHERE RecID = %1"},
    {Run, "DELETE FROM CpsOnRec WHERE RecID = %1"},
    {Run, "DELETE FROM PfrOnRec WHERE RecID = %1"},
    {Run, "DELETE FROM Rec WHERE RecID = %1"},
    {Run, "DELETE FROM Tracks WHERE RecID = %1"},
};
const Step deleteCustom[] = {
    {Step::Action::Attachments},
    {Run, "DELETE FROM UserDefSubCatJoin WHERE UserDefID = %1"},
    {Run, "DELETE FROM UserDef WHERE UserDefID = %1"},
    // A relation without its card would stay in the panels of the cards at its other end.
    {Run, "DELETE FROM Relations WHERE UserDefID = %1"},
};
const Step deleteGenre[] = {
    {Run, "DELETE FROM Genres WHERE GenreID = %1"},
    {Run, "UPDATE Compositions SET GenreID = 0 WHERE GenreID = %1"},
};
const Step deleteLabel[] = {
    {Step::Action::LabelLogo},
    {Run, "DELETE FROM Labels WHERE LabelID = %1"},
    {Run, "UPDATE Rec SET LabelID = 0 WHERE LabelID = %1"},
};
const Step deleteSource[] = {
    {Run, "DELETE FROM Sources WHERE SourceID = %1"},
    {Run, "UPDATE Rec SET SourceID = 0 WHERE SourceID = %1"},
};
const Step deleteSupport[] = {
    {Run, "DELETE FROM Supports WHERE SupportID = %1"},
    {Run, "UPDATE Rec SET SupportID = 0 WHERE SupportID = %1"},
};

const Step mergeComposer[] = {
    {Run, "UPDATE CpsSubCatJoin SET CpsID = %1 WHERE CpsID = %2"},
    {Run, "UPDATE CpsGenres SET CpsID = %1 WHERE CpsID = %2"},
    {Run, "UPDATE Mainworks SET CpsID = %1 WHERE CpsID = %2"},
    {Run, "UPDATE CpsOnRec SET CpsID = %1 WHERE CpsID = %2"},
    {Run, "UPDATE Compositions SET CpsID = %1 WHERE CpsID = %2"},
    {Run, "UPDATE CompOnRec SET CpsID = %1 WHERE CpsID = %2"},
    {Run, "UPDATE Catalogs SET CpsID = %1 WHERE CpsID = %2"},
};
const Step mergePerformer[] = {
    {Run, "UPDATE PfrSubCatJoin SET PfrID = %1 WHERE PfrID = %2"},
    {Run, "UPDATE PfrOnRec SET PfrID = %1 WHERE PfrID = %2"},
    {Run, "UPDATE CompOnRecPfr SET PfrID = %1 WHERE PfrID = %2"},
};
const Step mergeRecording[] = {
    {Run, "UPDATE RecSubCatJoin SET RecID = %1 WHERE RecID = %2"},
    {Run, "UPDATE CompOnRec SET RecID = %1 WHERE RecID = %2"},
    {Run, "UPDATE CpsOnRec SET RecID = %1 WHERE RecID = %2"},
    {Run, "UPDATE PfrOnRec SET RecID = %1 WHERE RecID = %2"},
    {Run, "UPDATE Tracks SET RecID = %1 WHERE RecID = %2"},
    // The disc in the drive must still find its recording.
    {Run, "UPDATE DiscIds SET RecID = %1 WHERE RecID = %2"},
};
const Step mergeCustom[] = {
    {Run, "UPDATE UserDefSubCatJoin SET UserDefID = %1 WHERE UserDefID = %2"},
    {Run, "UPDATE Relations SET UserDefID = %1 WHERE UserDefID = %2"},
};
const Step mergeGenre[] = {{Run, "UPDATE Compositions Set GenreID = %1 WHERE GenreID = %2"}};
const Step mergeLabel[] = {{Run, "UPDATE Rec Set LabelID = %1 WHERE LabelID = %2"}};
const Step mergeSource[] = {{Run, "UPDATE Rec Set SourceID = %1 WHERE SourceID = %2"}};
const Step mergeSupport[] = {{Run, "UPDATE Rec Set SupportID = %1 WHERE SupportID = %2"}};

const LinkTable composerLinks[] = {{"CpsSubCatJoin", "CpsID", "CpsID,CpsSubCatID"},
                                   {"CpsOnRec", "CpsID", "CpsID,RecID"},
                                   {"Relations", "ItemID", "UserDefID,ItemType,ItemID"}};
const LinkTable performerLinks[] = {{"PfrSubCatJoin", "PfrID", "PfrID,PfrSubCatID"},
                                    {"PfrOnRec", "PfrID", "PfrID,RecID"},
                                    {"CompOnRecPfr", "PfrID", "CompOnRecID,PfrID,PersonageID"},
                                    {"Relations", "ItemID", "UserDefID,ItemType,ItemID"}};
const LinkTable recordingLinks[] = {{"RecSubCatJoin", "RecID", "RecID,RecSubCatID"},
                                    {"CpsOnRec", "RecID", "CpsID,RecID"},
                                    {"PfrOnRec", "RecID", "PfrID,RecID"},
                                    {"Relations", "ItemID", "UserDefID,ItemType,ItemID"}};
const LinkTable customLinks[] = {{"UserDefSubCatJoin", "UserDefID", "UserDefID,UserDefSubCatID"},
                                 {"Relations", "UserDefID", "UserDefID,ItemType,ItemID"}};

struct Cascades {
    std::span<const Step> deletion;
    std::span<const Step> merge;
    std::span<const LinkTable> links;
};
const Cascades cascades[] = {
    {deleteComposer, mergeComposer, composerLinks}, {deletePerformer, mergePerformer, performerLinks},
    {deleteRecording, mergeRecording, recordingLinks}, {deleteCustom, mergeCustom, customLinks},
    {deleteGenre, mergeGenre, {}}, {deleteLabel, mergeLabel, {}},
    {deleteSource, mergeSource, {}}, {deleteSupport, mergeSupport, {}},
};
// clang-format on

} // namespace

std::span<const CascadeStep> deletionSteps(int kind) { return cascades[kind - 1].deletion; }
std::span<const CascadeStep> mergeSteps(int kind) { return cascades[kind - 1].merge; }
std::span<const LinkTable> linkTables(int kind) { return cascades[kind - 1].links; }

} // namespace tessaranth
