// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/CommandTarget.h"

#include <QObject>
#include <vector>

class QAction;
class QPushButton;
class QWidget;

namespace tessaranth {

class IconStore;

/// One command of a window or of a part of it. Texts are shown as they stand.
struct ActionRow {
    QString key; ///< objectName of the action, and what the command is known by
    QString caption;
    QString tip;
    QString icon;     ///< key of its icon; empty for none
    QString shortcut; ///< portable text, several parted by "; "; empty for none
    std::function<void()> what;
    std::function<bool()> when; ///< empty: always possible
    bool isOfWindow = false;    ///< its keys work wherever the focus is, not in the parts alone
};

/// The commands of a window or of a part of it, in their order: what its menus, tool bars, buttons, context
/// menus and keys are made of.
class ActionTable final : public QObject, public CommandTarget {
    Q_OBJECT

public:
    ActionTable(QWidget* owner, const IconStore& icons);

    /// Adds a row. Where the table serves parts already, it stands in their context menus too.
    QAction* add(ActionRow row);
    void add(std::vector<ActionRow> rows);
    /// A command that is shown by the window around: only what it does stands here.
    void carry(const QString& key, std::function<void()> what, std::function<bool()> when = {});

    bool knows(const QString& key) const override { return rowOf(key) != nullptr; }
    bool canRun(const QString& key) const override;
    /// Does nothing while the command is not possible.
    void run(const QString& key) override;

    QAction*
    action(const QString& key) const; ///< nullptr for an unknown key and for one that is only carried

    /// All commands so far stand in the context menu of a part, and their keys are the part's: see keepKeys.
    void serve(QWidget* part);
    /// A button that runs a command, and is enabled while the command is.
    QPushButton* button(const QString& key, const QString& objectName);
    /// Asks all rows again whether they are possible.
    void enable();

private:
    struct Row {
        QString key;
        std::function<void()> what;
        std::function<bool()> when;
        QAction* action = nullptr;
    };
    const Row* rowOf(const QString& key) const;

    QWidget* m_owner;
    const IconStore& m_icons;
    std::vector<Row> m_rows;
    std::vector<QWidget*> m_parts;
};

/// Gives a part's actions their keys while the part, or something in it, has the focus, ahead of what the
/// window has under the same keys: one who presses Ins over the pictures does not mean the tool box. A key
/// whose action is not possible now does nothing then. Fields that are typed into keep their keys.
void keepKeys(QWidget* part);

} // namespace tessaranth
