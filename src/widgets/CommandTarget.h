// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

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

} // namespace tessaranth
