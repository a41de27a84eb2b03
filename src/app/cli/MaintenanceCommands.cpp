// SPDX-License-Identifier: GPL-3.0-or-later
// check and maintain.
#include "app/cli/Commands.h"
#include "app/cli/Output.h"
#include "attachments/FileFaults.h"
#include "store/CatalogCheck.h"
#include "store/CleanedCopy.h"
#include "store/Cleanup.h"
#include "store/Maintenance.h"
#include "store/UpgradeSteps.h"

#include <CLI/CLI.hpp>
#include <QFileInfo>
#include <iostream>
#include <memory>

namespace tessaranth {

namespace {

int check(CliContext& context, Session& session) {
    for (const AddedTable& table : addedTables())
        if (session.connection().columns(QLatin1String(table.name)).empty())
            return context.fail(
                QStringLiteral("The catalog %1 is of an older version: bring it up to date with "
                               "\"upgrade\" before it is checked.")
                    .arg(session.databasePath()));
    Output output(context.json);
    output.headings({QStringLiteral("Check"), QStringLiteral("Found"), QStringLiteral("Which")});
    CatalogCheck catalog(session);
    catalog.add(fileFaults(session));
    const auto faults = catalog.find(context.progress, [&output](const CatalogCheck::Finding& finding) {
        output.row({finding.caption, finding.found.count, finding.found.examples.join(QStringLiteral(", "))});
    });
    output.finish();
    if (faults == 0)
        std::cerr << "The catalog is in order.\n";
    return faults == 0 ? 0 : 1;
}

int repair(CliContext& context, Session& session) {
    CatalogCheck catalog(session);
    catalog.add(fileFaults(session));
    const CatalogCheck::Outcome outcome = catalog.repair(
        context.progress, [](const QString& line) { std::cout << line.toStdString() << '\n'; });
    if (outcome.left > 0)
        return context.fail(
            QStringLiteral("%1 kind(s) of faults are left. Say --yes to mend all that can be.")
                .arg(outcome.left));
    std::cerr << (outcome.mended == 0 ? "The catalog is in order.\n" : "The catalog is in order now.\n");
    return 0;
}

int empty(CliContext& context, Session& session) {
    const QString question =
        QStringLiteral("Every card of the catalog %1 will be deleted. Continue?").arg(session.databasePath());
    const Answer answer =
        context.messages.ask({applicationTitle, question, {Answer::Yes, Answer::No}, Answer::No});
    if (answer != Answer::Yes)
        return context.fail(QStringLiteral("Nothing was deleted. Say --yes to delete everything."));
    return Maintenance(session).empty(context.progress) ? 0 : 1;
}

int writeCleaned(CliContext& context, const QString& target) {
    Session session(context.applicationFolder, context.messages, context.clock);
    const QString source = Startup(session, {context.catalog, {}, {}}, context.progress).catalogToOpen();
    if (source.isEmpty())
        return 1;
    try {
        const CleanedCopy copy =
            CleanedCopy::write(source, QFileInfo(target).absoluteFilePath(), context.progress);
        std::cerr << copy.rows << " row(s) copied";
        if (copy.left > 0)
            std::cerr << ", " << copy.left << " without a usable key left out";
        std::cerr << '\n';
        return 0;
    } catch (const Error& error) {
        return context.fail(error.reason());
    }
}

} // namespace

void addMaintenanceCommands(CLI::App& app, CliContext& context, Action& action) {
    CLI::App* checkCommand =
        app.add_subcommand("check", "Look for damage, missing files and orphans; changes nothing");
    checkCommand->callback([&] {
        action = [&context] {
            return context.withInspection([&](Session& session) { return check(context, session); });
        };
    });

    CLI::App* maintain = app.add_subcommand("maintain", "Take care of the catalog file");
    maintain->require_subcommand(1);
    const auto add = [&](const char* name, const char* help, const std::function<int(Session&)>& work) {
        CLI::App* command = maintain->add_subcommand(name, help);
        command->callback(
            [&context, &action, work] { action = [&context, work] { return context.withSession(work); }; });
        return command;
    };
    const auto addAsking = [&](const char* name, const char* help, int (*work)(CliContext&, Session&)) {
        auto yes = std::make_shared<bool>(false);
        CLI::App* command = add(name, help, [&context, yes, work](Session& session) {
            context.messages.assumeYes(*yes);
            return work(context, session);
        });
        command->add_flag("--yes", *yes, "Do not ask");
    };
    add("compact", "Give back the free space in the file",
        [&context](Session& session) { return Maintenance(session).compact(context.progress) ? 0 : 1; });
    add("backup", "Write Tessaranth.bak in the application folder",
        [&context](Session& session) { return Maintenance(session).backup(context.progress) ? 0 : 1; });
    add("copy", "Copy the catalog to the folder of the configuration", [&context](Session& session) {
        return Maintenance(session).copyToDestination(context.progress) ? 0 : 1;
    });
    add("cleanup", "Remove rows that lost their owner", [&context](Session& session) {
        const auto print = [](const Cleanup::StepResult& result) {
            std::cout << (result.progressText + result.resultText).toStdString() << '\n';
        };
        return Cleanup(session).run(context.progress, print) ? 0 : 1;
    });
    addAsking("repair", "Mend what \"check\" finds; asks for each kind unless --yes", repair);
    addAsking("empty", "Delete every card; asks unless --yes", empty);
    auto target = std::make_shared<std::string>();
    CLI::App* clean = maintain->add_subcommand(
        "clean", "Copy a catalog from elsewhere without triggers, views and whatever else could run");
    clean->add_option("FILE", *target, "The copy; a new file")->required();
    clean->callback([&context, &action, target] {
        action = [&context, target] { return writeCleaned(context, QString::fromStdString(*target)); };
    });
}

} // namespace tessaranth
