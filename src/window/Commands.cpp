// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/Commands.h"

#include "widgets/IconStore.h"
#include "window/CardWindows.h"

#include <QAction>
#include <QCoreApplication>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>

namespace tessaranth {

namespace {

QString tr(const char* text) { return *text ? QCoreApplication::translate("Commands", text) : QString(); }

QString tipOf(const Command& command) {
    return command.when == When::Missing ? tr(command.tip) + tr(" (not available yet)") : tr(command.tip);
}

} // namespace

Commands::Commands(const std::vector<Command>& table, CommandFrame frame, QMainWindow* owner)
    : m_table(table), m_frame(std::move(frame)), m_owner(owner) {
    for (const Command& command : m_table)
        if (*command.key)
            makeAction(command);
    IconsToMenus();
}

void Commands::makeAction(const Command& command) {
    QAction* action = nullptr;
    const QString key = QLatin1String(command.key);
    if (command.when == When::Menu) {
        auto* menu = new QMenu(tr(command.caption), m_owner);
        menu->setObjectName(key);
        menu->setToolTipsVisible(true);
        m_menus.insert(key, menu);
        action = menu->menuAction();
    } else {
        action = new QAction(tr(command.caption), m_owner);
        action->setObjectName(key);
        action->setShortcut(QKeySequence(QLatin1String(command.shortcut)));
        action->setCheckable(*command.panel);
        QObject::connect(action, &QAction::triggered, m_owner, [this, &command, key] {
            if (command.call)
                command.call(m_frame);
            else if (ChildWindow* active = m_frame.cards.active())
                active->run(key);
            follow();
        });
    }
    action->setToolTip(tipOf(command));
    action->setStatusTip(tipOf(command));
    if (*command.buttonText)
        action->setIconText(tr(command.buttonText));
    m_actions.insert(key, action);
}

void Commands::IconsToMenus() {
    for (const Command& command : m_table)
        if (*command.iconKey)
            action(QLatin1String(command.key))->setIcon(m_frame.icons.icon(QLatin1String(command.iconKey)));
}

void Commands::fillMenus() {
    for (const Command& command : m_table) {
        if (!command.menu)
            continue;
        QMenu* menu = m_menus.value(QLatin1String(command.menu));
        if (!menu)
            m_owner->menuBar()->addAction(action(QLatin1String(command.key)));
        else if (*command.key)
            menu->addAction(action(QLatin1String(command.key)));
        else
            menu->addSeparator();
    }
}

void Commands::addToolBars() {
    for (const BarRow& row : barTable()) {
        if (row.beginsRow)
            m_owner->addToolBarBreak();
        QToolBar* bar = m_owner->addToolBar(tr(row.caption));
        bar->setObjectName(QLatin1String(row.name));
        bar->setAccessibleName(tr(row.caption));
        bar->setIconSize(QSize(20, 20));
        bar->setMovable(false);
        bar->setToolButtonStyle(row.showsTexts ? Qt::ToolButtonTextBesideIcon : Qt::ToolButtonIconOnly);
        for (const Command& command : m_table)
            if (command.bar == row.bar)
                addButton(bar, command);
        m_bars.insert(row.bar, bar);
    }
}

void Commands::addButton(QToolBar* bar, const Command& command) {
    QAction* own = action(QLatin1String(command.key));
    bar->addAction(own);
    auto* button = qobject_cast<QToolButton*>(bar->widgetForAction(own));
    button->setObjectName(QLatin1String(command.button));
    button->setAccessibleName(own->iconText());
    if (own->menu())
        button->setPopupMode(QToolButton::InstantPopup);
}

QAction* Commands::action(const QString& key) const { return m_actions.value(key); }

QMenu* Commands::menu(const QString& key) const { return m_menus.value(key); }

bool Commands::isPossible(const Command& command) const {
    using Kind = ChildWindow::Kind;
    const CardWindows& windows = m_frame.cards;
    const ChildWindow* active = windows.active();
    switch (command.when) {
    case When::Always:
        return true;
    case When::Child:
        return active;
    case When::Card:
        return active && active->kind() == Kind::Card;
    case When::Cards:
        return windows.count(Kind::Card) > 0;
    case When::Works:
        return windows.count(Kind::Work) > 0;
    case When::Pictures:
        return windows.count(Kind::Picture) > 0;
    case When::Target:
        return active && active->canRun(QLatin1String(command.key));
    case When::Missing:
    case When::Menu:
        break;
    }
    return false;
}

bool Commands::enableMenu(const QString& key) {
    bool isAny = false;
    for (const Command& command : m_table) {
        if (!command.menu || QLatin1String(command.menu) != key || !*command.key)
            continue;
        const QString own = QLatin1String(command.key);
        const bool isOn = command.when == When::Menu ? enableMenu(own) : isPossible(command);
        action(own)->setEnabled(isOn);
        isAny = isAny || isOn;
    }
    if (QAction* own = action(key))
        own->setEnabled(isAny);
    return isAny;
}

void Commands::EnableMnuCard() {
    enableMenu(QStringLiteral("mnuCard"));
    enableMenu(QStringLiteral("mnuShow"));
}

void Commands::EnableTbrsCard() {
    for (const Command& command : m_table)
        if (command.bar != Bar::None && command.when != When::Menu)
            action(QLatin1String(command.key))->setEnabled(isPossible(command));
}

void Commands::DisableAllTbrButtons() {
    for (const Command& command : m_table)
        if (command.bar != Bar::None && command.when == When::Target)
            action(QLatin1String(command.key))->setEnabled(false);
}

void Commands::CheckMnuShow() {
    const ChildWindow* active = m_frame.cards.active();
    for (const Command& command : m_table)
        if (*command.panel)
            action(QLatin1String(command.key))
                ->setChecked(active && active->panel() == QLatin1String(command.panel));
}

void Commands::UncheckMnuShow() {
    for (const Command& command : m_table)
        if (*command.panel)
            action(QLatin1String(command.key))->setChecked(false);
}

void Commands::follow() {
    enableMenu(QString());
    EnableTbrsCard(); // some buttons stand in no menu
    CheckMnuShow();
    if (!m_frame.cards.active()) {
        DisableAllTbrButtons();
        UncheckMnuShow();
    }
}

} // namespace tessaranth
