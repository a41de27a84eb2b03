// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/cli/Commands.h"
#include "platform/AppFolder.h"

#include <CLI/CLI.hpp>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <cstdio>
#include <exception>
#include <iostream>

using namespace tessaranth;

namespace {

QString absolute(const std::string& path) {
    return QDir::cleanPath(QFileInfo(QString::fromStdString(path)).absoluteFilePath());
}

/// Rows that did not reach their file must not pass for a result.
bool outputIsWritten() {
    std::cout.flush();
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0 && std::cout.good())
        return true;
    std::cerr << "The output could not be written.\n";
    return false;
}

int run(int argc, char** argv) {
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
    addPersonCommands(app, context, action);
    addCatalogCommands(app, context, action);
    addRecordingCommands(app, context, action);
    addWorkCommands(app, context, action);
    addAttachCommands(app, context, action);
    addClassCommands(app, context, action);
    addHistoryCommands(app, context, action);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : 2;
    }
    // Whole paths: what goes into the configuration must hold wherever the program is started next.
    context.applicationFolder = folder.empty() ? appFolder() : absolute(folder);
    if (!catalog.empty())
        context.catalog = absolute(catalog);
    const int code = action ? action() : 2;
    return code == 0 && !outputIsWritten() ? 1 : code;
}

} // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
