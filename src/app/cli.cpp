// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/cli/Commands.h"
#include "platform/AppFolder.h"

#include <CLI/CLI.hpp>
#include <QCoreApplication>
#include <iostream>

using namespace tessaranth;

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tessaranth-cli"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TESSARANTH_VERSION));

    CLI::App app("The catalog of your recordings, from a shell", "tessaranth-cli");
    app.require_subcommand(1);
    app.set_version_flag("--version", TESSARANTH_VERSION);
    CliContext context;
    std::string folder;
    std::string catalog;
    app.add_option("--app-dir", folder, "The application folder (configuration and companion files)");
    app.add_option("--catalog", catalog, "The catalog file, in place of the configured one");
    app.add_flag("--json", context.json, "Print rows as JSON");

    Action action;
    addStoreCommands(app, context, action);
    addMaintenanceCommands(app, context, action);
    addItemCommands(app, context, action);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : 2;
    }
    context.applicationFolder = folder.empty() ? appFolder() : QString::fromStdString(folder);
    context.catalog = QString::fromStdString(catalog);
    return action ? action() : 2;
}
