// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QString>
#include <functional>

namespace tessaranth {

/// What carries out commands of the main window while it is the active child window, or a part of one. A
/// command is known by its key in the table of commands, such as "mnuCardMediaRename".
class CommandTarget {
public:
    virtual ~CommandTarget() = default;
    virtual bool knows(const QString& key) const = 0;
    /// False for a command that it does not know.
    virtual bool canRun(const QString& key) const = 0;
    virtual void run(const QString& key) = 0;
};

/// A target whose commands are rows of a table.
class CommandMap : public CommandTarget {
public:
    bool knows(const QString& key) const override { return m_rows.contains(key); }
    bool canRun(const QString& key) const override {
        const auto row = m_rows.constFind(key);
        return row != m_rows.constEnd() && (!row->when || row->when());
    }
    /// Does nothing while the command is not possible.
    void run(const QString& key) override {
        if (canRun(key))
            m_rows.constFind(key)->what();
    }

protected:
    /// `when` empty: always possible.
    void addCommand(const QString& key, std::function<void()> what, std::function<bool()> when = {}) {
        m_rows.insert(key, {std::move(what), std::move(when)});
    }

private:
    struct Row {
        std::function<void()> what;
        std::function<bool()> when;
    };
    QHash<QString, Row> m_rows;
};

} // namespace tessaranth
