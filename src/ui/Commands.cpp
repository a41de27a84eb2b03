// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Commands.h"

#include "ui/IconStore.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

namespace tessaranth {

namespace {

QMenu* menuOf(QMenuBar* bar, const QString& path) {
    QMenu* menu = nullptr;
    for (const QString& caption : path.split(u'/')) {
        QWidget* parent = menu ? static_cast<QWidget*>(menu) : bar;
        QMenu* next = nullptr;
        for (QMenu* candidate : parent->findChildren<QMenu*>(Qt::FindDirectChildrenOnly))
            if (candidate->title() == caption)
                next = candidate;
        if (!next) {
            next = menu ? menu->addMenu(caption) : bar->addMenu(caption);
            next->setToolTipsVisible(true);
        }
        menu = next;
    }
    return menu;
}

} // namespace

Commands::Commands(std::vector<Command> table, const IconStore& icons, QObject* owner)
    : m_table(std::move(table)) {
    for (const Command& command : m_table) {
        QAction* action = nullptr;
        if (!command.key.isEmpty()) {
            action = new QAction(icons.icon(command.iconKey), command.caption, owner);
            action->setObjectName(command.key);
            action->setToolTip(command.tip);
            action->setStatusTip(command.tip);
            action->setShortcut(QKeySequence(command.shortcut));
            if (!command.toolBarText.isEmpty())
                action->setIconText(command.toolBarText);
            QObject::connect(action, &QAction::triggered, owner, [run = command.run] { run(); });
        }
        m_actions.push_back(action);
    }
}

void Commands::fillMenus(QMenuBar* bar) const {
    for (size_t i = 0; i < m_table.size(); ++i) {
        QMenu* menu = menuOf(bar, m_table[i].menu);
        if (m_actions[i])
            menu->addAction(m_actions[i]);
        else
            menu->addSeparator();
    }
}

void Commands::fillToolBar(QToolBar* bar) const {
    for (size_t i = 0; i < m_table.size(); ++i)
        if (m_actions[i] && !m_table[i].toolBarText.isEmpty())
            bar->addAction(m_actions[i]);
}

QAction* Commands::action(const QString& key) const {
    for (size_t i = 0; i < m_table.size(); ++i)
        if (m_table[i].key == key)
            return m_actions[i];
    return nullptr;
}

} // namespace tessaranth
