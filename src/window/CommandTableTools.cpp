// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/CommandTable.h"

#include "attachments/forms/frmAlign.h"
#include "attachments/forms/frmMediaPath.h"
#include "items/ItemKind.h"
#include "search/forms/frmQuickSearch.h"
#include "widgets/frmCharmap.h"
#include "window/ItemActions.h"
#include "window/MaintenanceActions.h"
#include "window/OutsideCommands.h"
#include "window/frmSettings.h"
#include "works/forms/frmImportedCatalogs.h"
#include "works/forms/frmKeys.h"

#include <QClipboard>
#include <QGuiApplication>

namespace tessaranth {

namespace {

using F = CommandFrame;

void quickSearch(F& f) {
    frmQuickSearch form(f, f.openCards, f.window);
    if (form.prepare())
        form.exec();
}

/// There may be no text in the window that they could go into, so they go to where every program takes them.
void specialCharacters(F& f) {
    frmCharmap form(f.icons, f.window);
    if (form.exec() == QDialog::Accepted && !form.characters().isEmpty())
        QGuiApplication::clipboard()->setText(form.characters());
}

void settings(F& f) {
    frmSettings form(f, f.window);
    form.applied = f.settingsApplied;
    form.exec();
}

} // namespace

// clang-format off
std::vector<Command> toolsCommands() {
    return {
    {"mnuToolsManageClass", "mnuTools", "Manage &classifications...", "Manage classifications", "Class", "", When::Always,
     [](F& f) { f.items.manageClasses(); }, Bar::Tools, "ToolsManageClass", "Manage Classifications"},
    {"mnuToolsQuick", "mnuTools", "&Quick search...", "Quick search in database", "Quick", "Ctrl+F", When::Always,
     &quickSearch, Bar::Tools, "ToolsQuick", "Quick search"},
    {"mnuToolsBatchImport", "mnuTools", "Internal &lists import", "Internal lists import", "cp", "", When::Menu,
     nullptr, Bar::Tools, "ToolsLists", "Internal lists import"},
    {"mnuToolsBatchImportCps", "mnuToolsBatchImport", "Import multiple &composers...", "Import multiple composers", "c", "",
     When::Always, [](F& f) { f.items.importMany(ItemKind::Composer); }},
    {"mnuToolsBatchImportPfr", "mnuToolsBatchImport", "Import multiple &performers...", "Import multiple performers", "p", "",
     When::Always, [](F& f) { f.items.importMany(ItemKind::Performer); }},
    {"mnuToolsCatalogs", "mnuTools", "Upload / &download composers catalogs", "Upload / download composers catalogs", "Catalog", "",
     When::Menu, nullptr, Bar::Tools, "ToolsCatalogs"},
    {"mnuToolsCatalogsUploads", "mnuToolsCatalogs", "&Upload...", "Uploads composers catalogs to the Tessaranth website", "Export", "",
     When::Missing},
    {"mnuToolsCatalogsDownloads", "mnuToolsCatalogs", "&Download...", "Downloads composers catalogs from the Tessaranth website", "Import", "",
     When::Missing},
    {"mnuToolsCatalogsList", "mnuToolsCatalogs", "&List imported composers catalogs...", "List imported composers catalogs", "Table", "",
     When::Always, [](F& f) { frmImportedCatalogs(f, &f.openCards, f.window).exec(); }},
    {"mnuToolsWebImport", "mnuTools", "&Web import", "Web import", "WebImport", "", When::Menu, nullptr, Bar::Tools, "ToolsWeb"},
    {"mnuToolsWebImportWorklist", "mnuToolsWebImport", "Composers &worklists...", "Import composers worklists from the web", "Comp", "",
     When::Missing},
    {"mnuToolsWebImportRec", "mnuToolsWebImport", "&Recordings...", "Import recordings from the web", "Recordings", "", When::Missing},
    {"mnuToolsWebImportFreeDB", "mnuToolsWebImport", "&FreeDB search...", "FreeDB search", "FreeDB", "", When::Missing},
    {"mnuToolsImport", "mnuTools", "&Import lists from file...", "Import lists from file wizard", "Import", "", When::Missing, nullptr,
     Bar::Tools, "ToolsImport"},
    {"", "mnuTools", "", "", "", "", When::Always},
    {"mnuToolsQuery", "mnuTools", "Query and &Reports...", "Query and Reports", "Query", "", When::Missing, nullptr, Bar::Tools, "ToolsQuery"},
    {"mnuToolsGlobalStat", "mnuTools", "&Statistics...", "Show Tessaranth statistics", "Stat", "", When::Missing, nullptr, Bar::Tools,
     "ToolsStat"},
    {"mnuToolsWebBuilder", "mnuTools", "Web pages &builder...", "Web pages builder", "WebBuilder", "", When::Missing, nullptr, Bar::Tools,
     "ToolsWebBuilder"},
    {"", "mnuTools", "", "", "", "", When::Always},
    {"mnuToolsZoom", "mnuTools", "&Zoom", "Zoom", "ZoomIn", "", When::Menu},
    {"mnuToolsZoomIn", "mnuToolsZoom", "Zoom &in", "Zoom in", "ZoomIn", "Ctrl++", When::Target, nullptr, Bar::PicSize, "ZoomIn"},
    {"mnuToolsZoomOut", "mnuToolsZoom", "Zoom &out", "Zoom out", "ZoomOut", "Ctrl+-", When::Target, nullptr, Bar::PicSize, "ZoomOut"},
    {"mnuToolsZoomNone", "mnuToolsZoom", "&None", "None", "ZoomNone", "", When::Target, nullptr, Bar::PicSize, "ZoomNone"},
    {"mnuToolsGoogle", "mnuTools", "&Google search", "Google search", "Search", "", When::Menu, nullptr, Bar::Tools, "ToolsGoogle"},
    {"mnuToolsGoogleGeneric", "mnuToolsGoogle", "&Generic search", "Generic search", "Search", "", When::Card,
     [](F& f) { f.outside.search(WebSearch::Pages); }},
    {"mnuToolsGoogleImages", "mnuToolsGoogle", "&Images search", "Images search", "SearchImages", "", When::Card,
     [](F& f) { f.outside.search(WebSearch::Images); }},
    {"mnuToolsAmazon", "mnuTools", "&Amazon search", "Amazon search", "Shop", "", When::Card,
     [](F& f) { f.outside.search(WebSearch::Store); }, Bar::Tools, "ToolsAmazon"},
    {"", "mnuTools", "", "", "", "", When::Always},
    {"mnuToolsChar", "mnuTools", "Special c&haracters...", "Special characters", "Charmap", "", When::Always,
     &specialCharacters, Bar::Tools, "ToolsChar"},
    {"mnuToolsVolume", "mnuTools", "Adjust &volume", "Adjust volume (sound card required)", "Volume", "", When::Always,
     [](F& f) { f.outside.start(Program::Volume); }, Bar::Tools, "ToolsVolume"},
    {"mnuToolsRun", "mnuTools", "Ru&n external program", "Run external program", "Open", "", When::Menu},
    {"mnuToolsNotepad", "mnuToolsRun", "&Text editor", "Quick launch Notepad", "Notepad", "", When::Always,
     [](F& f) { f.outside.start(Program::TextEditor); }},
    {"mnuToolsWordpad", "mnuToolsRun", "&Rich text editor", "Quick launch Wordpad", "Doc", "", When::Always,
     [](F& f) { f.outside.start(Program::RichTextEditor); }},
    {"mnuToolsBrowser", "mnuToolsRun", "Web &browser", "Quick launch default web browser", "Web", "", When::Always,
     [](F& f) { f.outside.start(Program::Browser); }},
    {"", "mnuTools", "", "", "", "", When::Always},
    {"mnuToolsUtility", "mnuTools", "&Utility", "Care for the catalog and its files", "Cleanup", "", When::Menu},
    {"mnuToolsRecCheck", "mnuToolsUtility", "&Incomplete recordings...", "Show the incomplete parts in recordings", "MissedRec", "",
     When::Always, [](F& f) { f.items.checkRecordings(); }},
    {"mnuToolsAlign", "mnuToolsUtility", "&Align records with files...", "Align database records with relative files", "Align", "",
     When::Always, [](F& f) { frmAlign(f, &f.openCards, f.window).exec(); }},
    {"mnuToolsUpdateMedia", "mnuToolsUtility", "Update &media locations...", "Update the locations of the recorded media files",
     "UpdateMedia", "", When::Always, [](F& f) { frmMediaPath(f, &f.openCards, f.window).exec(); }},
    {"", "mnuToolsUtility", "", "", "", "", When::Always},
    {"mnuToolsCleanup", "mnuToolsUtility", "Database &cleanup...", "Database cleanup", "Cleanup", "", When::Always,
     [](F& f) { f.care.cleanup(); }},
    {"mnuToolsCompact", "mnuToolsUtility", "C&ompact the catalog", "Give back the free space in the file", "Compact", "", When::Always,
     [](F& f) { f.care.compact(); }},
    {"mnuToolsBackup", "mnuToolsUtility", "&Back up the catalog", "Write Tessaranth.bak beside the program", "Backup", "", When::Always,
     [](F& f) { f.care.backup(); }},
    {"mnuToolsCopy", "mnuToolsUtility", "Co&py the catalog", "Copy the catalog to the folder of the settings", "Copy", "", When::Always,
     [](F& f) { f.care.copyToDestination(); }},
    {"", "mnuToolsUtility", "", "", "", "", When::Always},
    {"mnuToolsEmpty", "mnuToolsUtility", "&Empty the catalog...", "Delete every card of the catalog", "Clear", "", When::Always,
     [](F& f) { f.care.empty(); }},
    {"mnuToolsKeys", "mnuTools", "&Key names...", "Rename the musical keys", "Clef", "", When::Always,
     [](F& f) { frmKeys(f, f.window).exec(); }},
    {"mnuToolsSettings", "mnuTools", "Program s&ettings...", "Program settings", "Settings", "Ctrl+,", When::Always, &settings, Bar::Tools,
     "ToolsPreferences"},
    {"Radar", nullptr, "Radar", "Enable RADAR", "Radar", "", When::Missing, nullptr, Bar::Tools, "Radar", "Radar"},
    };
}
// clang-format on

} // namespace tessaranth
