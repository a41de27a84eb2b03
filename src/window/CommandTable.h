// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/ChildWindow.h"
#include "widgets/FormContext.h"

#include <functional>
#include <vector>

class QDockWidget;

namespace tessaranth {

class CardWindows;
class Help;
class ItemActions;
class MaintenanceActions;
class OpenCards;
class OutsideCommands;

/// What the commands of the main window work with. The references outlive the commands.
struct CommandFrame : FormContext {
    QWidget* window;
    QDockWidget* toolbox;
    ItemActions& items;
    MaintenanceActions& care;
    CardWindows& cards;
    OutsideCommands& outside;
    Help& help;
    OpenCards& openCards;
    std::function<void()> settingsApplied;
};

/// When a command can be given.
enum class When {
    Always,
    Child,    ///< some window is open within the frame
    Card,     ///< the active one is an item card
    Cards,    ///< an item card is open
    Works,    ///< a work card is open
    Pictures, ///< a picture viewer is open
    Target,   ///< the active one says so itself; it also carries the command out
    Missing,  ///< the subsystem is not there yet: shown, never enabled
    Menu      ///< no command but a menu: enabled while one of its entries is
};

enum class Bar { None, New, Manage, Tools, Card, PicSize, Window };

/// One command of the main window: what menus, tool bars, shortcuts and the rules of enabling read. A row
/// without a key is a separator.
struct Command {
    const char* key;
    const char* menu; ///< key of the menu that it stands in; "" is the menu bar, nullptr none
    const char* caption;
    const char* tip;
    const char* iconKey;
    const char* shortcut;
    When when;
    void (*call)(CommandFrame&) = nullptr;
    Bar bar = Bar::None;
    const char* button = "";     ///< name of the button on the bar
    const char* buttonText = ""; ///< empty: as the caption
    const char* panel = "";      ///< of a command that shows a panel of a card; it is checked by that panel
};

/// Every command, in the order of menus and tool bars.
const std::vector<Command>& commandTable();

struct BarRow {
    Bar bar;
    const char* name;
    const char* caption;
    bool showsTexts;
    bool beginsRow;
};
/// The tool bars in their order.
const std::vector<BarRow>& barTable();

/// Key of the menu that a window shows at the pointer; empty for none.
QString contextMenuOf(ChildWindow::Kind kind, const QString& panel);

// The parts of the table.
std::vector<Command> frameCommands();
std::vector<Command> cardCommands();
std::vector<Command> toolsCommands();

} // namespace tessaranth
