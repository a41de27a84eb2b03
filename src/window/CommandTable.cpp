// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/CommandTable.h"

#include "items/ItemKind.h"
#include "widgets/Help.h"
#include "window/CardWindows.h"
#include "window/ItemActions.h"
#include "window/OutsideCommands.h"
#include "window/frmAbout.h"

#include <QDockWidget>

namespace tessaranth {

namespace {

using F = CommandFrame;
using Kind = ChildWindow::Kind;

const std::vector<Command> menus{{"mnuFile", "", "&File", "", "", "", When::Menu},
                                 {"mnuShow", "", "&Show", "", "", "", When::Menu},
                                 {"mnuCard", "", "&Card", "", "", "", When::Menu},
                                 {"mnuTools", "", "&Tools", "", "", "", When::Menu},
                                 {"mnuManage", "", "&Manage", "", "", "", When::Menu},
                                 {"mnuWindow", "", "&Window", "", "", "", When::Menu},
                                 {"mnuHelp", "", "&Help", "", "", "", When::Menu}};

} // namespace

// One row, one command: the layout keeps a row on as few lines as it fits.
// clang-format off
std::vector<Command> frameCommands() {
    return {
    {"mnuFileCps", "mnuFile", "New &composer...", "Add new composer to collection", "c", "Ctrl+1", When::Always,
     [](F& f) { f.items.create(ItemKind::Composer); }, Bar::New, "NewCps", "New Composer"},
    {"mnuFilePfr", "mnuFile", "New &performer...", "Add new performer to collection", "p", "Ctrl+2", When::Always,
     [](F& f) { f.items.create(ItemKind::Performer); }, Bar::New, "NewPfr", "New Performer"},
    {"mnuFileRec", "mnuFile", "New &recording...", "Add new recording to collection", "Recordings", "Ctrl+3",
     When::Always, [](F& f) { f.items.create(ItemKind::Recording); }, Bar::New, "NewRec", "New Recording"},
    {"mnuFileUser", "mnuFile", "New custom &item...", "Add new custom item to collection", "User", "Ctrl+4",
     When::Always, [](F& f) { f.items.create(ItemKind::Custom); }, Bar::New, "NewUser", "New Custom"},
    {"", "mnuFile", "", "", "", "", When::Always},
    {"mnuFileExit", "mnuFile", "E&xit", "Close the program", "Exit", "Ctrl+Q", When::Always,
     [](F& f) { f.window->close(); }},

    {"mnuShowDoc", "mnuShow", "&Documents", "Show related documents", "Doc", "Alt+1", When::Target, nullptr,
     Bar::None, "", "", "Docs"},
    {"mnuShowComp", "mnuShow", "&Works", "Show related works", "Comp", "Alt+2", When::Target, nullptr,
     Bar::None, "", "", "Comp"},
    {"mnuShowRec", "mnuShow", "On &recordings", "Show related recordings", "Recordings", "Alt+3", When::Target,
     nullptr, Bar::None, "", "", "Rec"},
    {"mnuShowMedia", "mnuShow", "&Media files", "Show related media files", "Media", "Alt+4", When::Target,
     nullptr, Bar::None, "", "", "Media"},
    {"mnuShowWeb", "mnuShow", "We&b links", "Show related web links", "Web", "Alt+5", When::Target, nullptr,
     Bar::None, "", "", "Web"},
    {"mnuShowRel", "mnuShow", "R&elationships", "Show related relationships", "Relations", "Alt+6", When::Target,
     nullptr, Bar::None, "", "", "Rel"},
    {"mnuShowRecContents", "mnuShow", "Recording &contents", "Show recording contents", "RecContents", "Alt+7",
     When::Target, nullptr, Bar::None, "", "", "RecContents"},

    {"mnuManageGenres", "mnuManage", "&Genres...", "Manage global genres", "Genre", "", When::Always,
     [](F& f) { f.items.manage(ItemKind::Genre); }, Bar::Manage, "ManageGenre", "Manage Genres"},
    {"mnuManageLabels", "mnuManage", "&Labels...", "Manage labels", "Label", "", When::Always,
     [](F& f) { f.items.manage(ItemKind::Label); }, Bar::Manage, "ManageLabel", "Manage Labels"},
    {"mnuManageSupports", "mnuManage", "&Supports...", "Manage supports", "Support", "", When::Always,
     [](F& f) { f.items.manage(ItemKind::Support); }, Bar::Manage, "ManageSupport", "Manage Supports"},
    {"mnuManageSources", "mnuManage", "S&ources...", "Manage sources", "Source", "", When::Always,
     [](F& f) { f.items.manage(ItemKind::Source); }, Bar::Manage, "ManageSource", "Manage Sources"},

    {"mnuWindowFit", "mnuWindow", "&Fit current card", "Fit current card", "WinFit", "Ctrl+F10", When::Child,
     [](F& f) { f.cards.fit(); }},
    {"mnuWindowCurrent", "mnuWindow", "&Close current card", "Close current card", "WinClose", "Ctrl+W",
     When::Child, [](F& f) { f.cards.closeActive(); }},
    {"mnuWindowNext", "mnuWindow", "&Next window", "Go to the next window", "", "Ctrl+Tab", When::Child,
     [](F& f) { f.cards.step(1); }},
    {"mnuWindowPrevious", "mnuWindow", "Pr&evious window", "Go to the previous window", "", "Ctrl+Shift+Tab",
     When::Child, [](F& f) { f.cards.step(-1); }},
    {"", "mnuWindow", "", "", "", "", When::Always},
    {"mnuWindowTileH", "mnuWindow", "Tile &horizontally", "Tile child forms horizontally", "WinTileH", "",
     When::Child, [](F& f) { f.cards.tile(Qt::Horizontal); }},
    {"mnuWindowTileV", "mnuWindow", "Tile &vertically", "Tile child forms vertically", "WinTileV", "",
     When::Child, [](F& f) { f.cards.tile(Qt::Vertical); }},
    {"mnuWindowTileC", "mnuWindow", "Ca&scade", "Tile child forms cascade", "WinCascade", "", When::Child,
     [](F& f) { f.cards.cascade(); }},
    {"", "mnuWindow", "", "", "", "", When::Always},
    {"mnuWindowAll", "mnuWindow", "Close &all", "Close all forms", "WinCloseAll", "Ctrl+Shift+W", When::Child,
     [](F& f) { f.cards.closeAll(); }, Bar::Window, "WinCloseAll"},
    {"mnuWindowPic", "mnuWindow", "Close all &pictures", "Close all pictures", "WinCloseAllPic", "",
     When::Pictures, [](F& f) { f.cards.closeAll(Kind::Picture); }, Bar::Window, "WinCloseAllPic"},
    {"mnuWindowCards", "mnuWindow", "Close all ca&rds", "Close all cards", "WinCloseAllCards", "", When::Cards,
     [](F& f) { f.cards.closeAll(Kind::Card); }, Bar::Window, "WinCloseAllCards"},
    {"mnuWindowWorks", "mnuWindow", "Close all &works", "Close all works", "WinCloseAllWorks", "", When::Works,
     [](F& f) { f.cards.closeAll(Kind::Work); }},
    {"", "mnuWindow", "", "", "", "", When::Always},
    {"mnuWindowToolbox", "mnuWindow", "&Toolbox", "Show or hide the toolbox", "Table", "F9", When::Always,
     [](F& f) { f.toolbox->setVisible(!f.toolbox->isVisible()); }},

    // The key itself is everywhere, and opens the page of the window in which it is pressed.
    {"mnuHelpHelp", "mnuHelp", "&Help contents\tF1", "Show help", "Help", "", When::Always,
     [](F& f) { f.help.openPage(QStringLiteral("index")); }},
    {"mnuHelpWhatsNew", "mnuHelp", "&What's new", "Show what has changed", "WhatsNew", "", When::Always,
     [](F& f) { f.help.openPage(QStringLiteral("whatsnew")); }},
    {"mnuHelpSite", "mnuHelp", "Tessaranth on the we&b", "Open the web site of Tessaranth", "Web", "",
     When::Always, [](F& f) { f.outside.openSite(); }},
    {"", "mnuHelp", "", "", "", "", When::Always},
    {"mnuHelpAbout", "mnuHelp", "&About Tessaranth", "About Tessaranth", "Violin", "", When::Always,
     [](F& f) { frmAbout(f, f.window).exec(); }},
    };
}
// clang-format on

const std::vector<Command>& commandTable() {
    static const std::vector<Command> table = [] {
        std::vector<Command> all = menus;
        for (const std::vector<Command>& part : {frameCommands(), cardCommands(), toolsCommands()})
            all.insert(all.end(), part.begin(), part.end());
        return all;
    }();
    return table;
}

const std::vector<BarRow>& barTable() {
    static const std::vector<BarRow> bars{{Bar::New, "tbrFiles", "New", true, false},
                                          {Bar::Manage, "tbrManage", "Manage", true, false},
                                          {Bar::Tools, "tbrTools", "Tools", false, true},
                                          {Bar::Card, "tbrCard", "Card", false, false},
                                          {Bar::PicSize, "tbrPicSize", "Pic Size", false, false},
                                          {Bar::Window, "tbrWindow", "Window", false, false}};
    return bars;
}

QString contextMenuOf(Kind kind, const QString& panel) {
    struct Row {
        Kind kind;
        const char* panel;
        const char* menu;
    };
    constexpr Row rows[] = {
        {Kind::Card, "Docs", "mnuCardDoc"},    {Kind::Card, "Comp", "mnuCardComp"},
        {Kind::Card, "Rec", "mnuCardRec"},     {Kind::Card, "RecContents", "mnuCardRecContents"},
        {Kind::Card, "Media", "mnuCardMedia"}, {Kind::Card, "Web", "mnuCardWeb"},
        {Kind::Card, "Rel", "mnuCardRel"},     {Kind::Work, "", "mnuCardWorkCard"},
        {Kind::Picture, "", "mnuToolsZoom"}};
    for (const Row& row : rows)
        if (row.kind == kind && panel == QLatin1String(row.panel))
            return QLatin1String(row.menu);
    return {};
}

} // namespace tessaranth
