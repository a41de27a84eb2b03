// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/ActionTable.h"

#include "widgets/IconStore.h"

#include <QAbstractSpinBox>
#include <QAction>
#include <QChildEvent>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextEdit>
#include <algorithm>

namespace tessaranth {

namespace {

bool isTypedInto(const QWidget* widget) {
    if (const auto* line = qobject_cast<const QLineEdit*>(widget))
        return !line->isReadOnly();
    if (const auto* text = qobject_cast<const QTextEdit*>(widget))
        return !text->isReadOnly();
    if (const auto* plain = qobject_cast<const QPlainTextEdit*>(widget))
        return !plain->isReadOnly();
    const auto* box = qobject_cast<const QComboBox*>(widget);
    return (box && box->isEditable()) || qobject_cast<const QAbstractSpinBox*>(widget);
}

/// Hears the keys of a part and of all that lies in it.
class PartKeys final : public QObject {
public:
    explicit PartKeys(QWidget* part) : QObject(part), m_part(part) { hear(part); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        switch (event->type()) {
        case QEvent::ChildAdded:
            if (QObject* child = static_cast<QChildEvent*>(event)->child(); child->isWidgetType())
                child->installEventFilter(this);
            break;
        case QEvent::ChildPolished:
            hear(static_cast<QWidget*>(static_cast<QChildEvent*>(event)->child()));
            break;
        case QEvent::ShortcutOverride:
            if (actionOf(watched, event)) {
                event->accept();
                return true;
            }
            break;
        case QEvent::KeyPress:
            if (QAction* action = actionOf(watched, event)) {
                action->trigger(); // nothing while it is disabled
                return true;
            }
            break;
        default:
            break;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void hear(QWidget* widget) {
        widget->removeEventFilter(this);
        widget->installEventFilter(this);
        for (QObject* child : widget->children())
            if (child->isWidgetType() && !static_cast<QWidget*>(child)->isWindow())
                hear(static_cast<QWidget*>(child));
    }

    // The innermost part that knows the key has it.
    QAction* actionOf(const QObject* watched, const QEvent* event) const {
        const auto* typed = static_cast<const QKeyEvent*>(event);
        const QKeySequence keys(typed->keyCombination());
        auto* widget = qobject_cast<QWidget*>(const_cast<QObject*>(watched));
        if (!widget || (widget != m_part && isTypedInto(widget)))
            return nullptr;
        for (; widget; widget = widget == m_part ? nullptr : widget->parentWidget())
            for (QAction* action : widget->actions())
                if (action->shortcutContext() != Qt::WindowShortcut && action->shortcuts().contains(keys))
                    return action;
        return nullptr;
    }

    QWidget* m_part;
};

} // namespace

void keepKeys(QWidget* part) { new PartKeys(part); }

ActionTable::ActionTable(QWidget* owner, const IconStore& icons)
    : QObject(owner), m_owner(owner), m_icons(icons) {}

QAction* ActionTable::add(ActionRow row) {
    auto* action = new QAction(row.icon.isEmpty() ? QIcon() : m_icons.icon(row.icon), row.caption, m_owner);
    action->setObjectName(row.key);
    if (!row.tip.isEmpty()) {
        action->setToolTip(row.tip);
        action->setStatusTip(row.tip);
    }
    action->setShortcuts(QKeySequence::listFromString(row.shortcut));
    action->setShortcutContext(row.isOfWindow ? Qt::WindowShortcut : Qt::WidgetShortcut);
    connect(action, &QAction::triggered, this, [this, key = row.key] { run(key); });
    m_rows.push_back({row.key, std::move(row.what), std::move(row.when), action});
    for (QWidget* part : m_parts)
        part->addAction(action);
    return action;
}

void ActionTable::add(std::vector<ActionRow> rows) {
    for (ActionRow& row : rows)
        add(std::move(row));
}

void ActionTable::carry(const QString& key, std::function<void()> what, std::function<bool()> when) {
    m_rows.push_back({key, std::move(what), std::move(when)});
}

const ActionTable::Row* ActionTable::rowOf(const QString& key) const {
    const auto row = std::ranges::find(m_rows, key, &Row::key);
    return row == m_rows.end() ? nullptr : &*row;
}

QAction* ActionTable::action(const QString& key) const {
    const Row* row = rowOf(key);
    return row ? row->action : nullptr;
}

bool ActionTable::canRun(const QString& key) const {
    const Row* row = rowOf(key);
    return row && (!row->when || row->when());
}

void ActionTable::run(const QString& key) {
    if (!canRun(key))
        return;
    const auto what = rowOf(key)->what; // the command may close the window that the table stands in
    what();
}

void ActionTable::serve(QWidget* part) {
    for (const Row& row : m_rows)
        if (row.action)
            part->addAction(row.action);
    part->setContextMenuPolicy(Qt::ActionsContextMenu);
    m_parts.push_back(part);
    keepKeys(part);
}

QPushButton* ActionTable::button(const QString& key, const QString& objectName) {
    QAction* const command = action(key);
    auto* button = new QPushButton(command->text());
    button->setObjectName(objectName);
    button->setAutoDefault(false);
    if (const QString keys = command->shortcut().toString(QKeySequence::NativeText); !keys.isEmpty())
        button->setToolTip(keys);
    button->setEnabled(command->isEnabled());
    connect(button, &QPushButton::clicked, command, &QAction::trigger);
    connect(command, &QAction::changed, button,
            [button, command] { button->setEnabled(command->isEnabled()); });
    return button;
}

void ActionTable::enable() {
    for (const Row& row : m_rows)
        if (row.action)
            row.action->setEnabled(!row.when || row.when());
}

} // namespace tessaranth
