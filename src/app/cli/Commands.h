// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/cli/CliMessages.h"
#include "platform/Clock.h"
#include "store/Session.h"
#include "store/Startup.h"

#include <functional>
#include <memory>
#include <vector>

namespace CLI {
class App;
class Validator;
} // namespace CLI

namespace tessaranth {

/// What every command of the command line works with.
struct CliContext {
    QString applicationFolder;
    QString catalog; ///< empty: the configured one
    bool json = false;
    SystemClock clock;
    CliMessages messages;
    NoProgress progress;
    /// For tests, which damage a catalog once it is open: called then; what it answers with lives as long as
    /// the command runs.
    std::function<std::shared_ptr<void>(Session&)> opened;

    /// Opens the catalog as the window does, runs the command on it and closes it. 1 when it cannot be
    /// opened.
    int withSession(const std::function<int(Session&)>& command);
    /// The same on a catalog that is only looked at.
    int withInspection(const std::function<int(Session&)>& command);
    int fail(const QString& reason);

private:
    int run(Session& session, const std::function<int(Session&)>& command);
};

/// Checks the number of a card, a row or a disc, and says in words what is one.
const CLI::Validator& rowNumber();

/// Each adds its commands to the parser; a command sets `action`, which is run when all words were read.
using Action = std::function<int()>;
void addStoreCommands(CLI::App& app, CliContext& context, Action& action);
void addMaintenanceCommands(CLI::App& app, CliContext& context, Action& action);
void addItemCommands(CLI::App& app, CliContext& context, Action& action);
void addPersonCommands(CLI::App& app, CliContext& context, Action& action);
void addCatalogCommands(CLI::App& app, CliContext& context, Action& action);
void addRecordingCommands(CLI::App& app, CliContext& context, Action& action);
void addWorkCommands(CLI::App& app, CliContext& context, Action& action);
void addAttachCommands(CLI::App& app, CliContext& context, Action& action);
void addClassCommands(CLI::App& app, CliContext& context, Action& action);
void addHistoryCommands(CLI::App& app, CliContext& context, Action& action);
/// All of them.
void addCommands(CLI::App& app, CliContext& context, Action& action);

} // namespace tessaranth
