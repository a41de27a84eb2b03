// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "window/CommandTable.h"

#include <QHash>
#include <QString>

class QAction;
class QMainWindow;
class QMenu;
class QToolBar;

namespace tessaranth {

/// Makes actions of the table of commands, puts them into menus and tool bars, and enables each by the rule
/// of its row and the active window.
class Commands {
public:
    Commands(const std::vector<Command>& table, CommandFrame frame, QMainWindow* owner);
    Commands(const Commands&) = delete;
    Commands& operator=(const Commands&) = delete;

    void fillMenus();
    void addToolBars();

    QAction* action(const QString& key) const; ///< of a command or of a menu; nullptr for an unknown key
    QMenu* menu(const QString& key) const;     ///< nullptr for an unknown key
    QToolBar* toolBar(Bar bar) const { return m_bars.value(bar); }

    /// All of the following, after another window became active or the active one says that it changed.
    void follow();
    void EnableMnuFile() { enableMenu(QStringLiteral("mnuFile")); }
    void EnableMnuCard();
    void EnableMnuTools() { enableMenu(QStringLiteral("mnuTools")); }
    void EnableMnuZoom() { enableMenu(QStringLiteral("mnuToolsZoom")); }
    void EnableTbrsCard();
    void DisableAllTbrButtons();
    void CheckMnuShow();
    void UncheckMnuShow();

private:
    void IconsToMenus();
    void makeAction(const Command& command);
    bool isPossible(const Command& command) const;
    /// A menu with what lies below it; false when nothing in it is possible.
    bool enableMenu(const QString& key);
    void addButton(QToolBar* bar, const Command& command);

    const std::vector<Command>& m_table;
    CommandFrame m_frame;
    QMainWindow* m_owner;
    QHash<QString, QAction*> m_actions;
    QHash<QString, QMenu*> m_menus;
    QHash<Bar, QToolBar*> m_bars;
};

} // namespace tessaranth
