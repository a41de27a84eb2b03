// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <functional>
#include <vector>

class QAction;
class QMenuBar;
class QObject;
class QToolBar;

namespace tessaranth {

class IconStore;

/// One command of the main window: what menus, tool bars and short cuts read. An empty key is a separator.
struct Command {
    QString key;  ///< also the action's objectName
    QString menu; ///< path of captions, such as "&Tools/&Utility"
    QString caption;
    QString tip;
    QString iconKey;
    QString shortcut;
    std::function<void()> run;
    QString toolBarText; ///< empty: not on the tool bar
};

/// Makes the actions of a table of commands and puts them into a menu bar and a tool bar.
class Commands {
public:
    Commands(std::vector<Command> table, const IconStore& icons, QObject* owner);

    void fillMenus(QMenuBar* bar) const;
    void fillToolBar(QToolBar* bar) const;
    QAction* action(const QString& key) const; ///< nullptr for an unknown key
    const std::vector<Command>& table() const { return m_table; }

private:
    std::vector<Command> m_table;
    std::vector<QAction*> m_actions; ///< by row of the table; nullptr for separators
};

} // namespace tessaranth
