// SPDX-License-Identifier: GPL-3.0-or-later
// sql, upgrade, config and sample.
#include "app/cli/Commands.h"
#include "app/cli/Output.h"
#include "platform/AppFolder.h"
#include "store/Guarded.h"
#include "tools/SampleCatalog.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

namespace tessaranth {

const CLI::Validator& rowNumber() {
    static const CLI::Validator validator(
        [](std::string& word) {
            bool isNumber = false;
            const qint64 number = QString::fromStdString(word).toLongLong(&isNumber);
            return isNumber && number > 0
                       ? std::string()
                       : '"' + word + "\" is not a whole number from 1 to 9223372036854775807";
        },
        "NUMBER");
    return validator;
}

int CliContext::fail(const QString& reason) {
    if (!reason.isEmpty())
        std::cerr << reason.toStdString() << '\n';
    return 1;
}

// The whole command is one operation: whatever part of it fails, it says so once and ends with 1.
int CliContext::run(Session& session, const std::function<int(Session&)>& command) {
    const std::shared_ptr<void> guest = opened ? opened(session) : nullptr;
    int code = 1;
    guarded(session, [&] { code = command(session); });
    return code;
}

int CliContext::withSession(const std::function<int(Session&)>& command) {
    Session session(applicationFolder, messages, clock);
    Startup startup(session, {catalog, shareFolder(), {}}, progress);
    const StartResult result = startup.run();
    if (!result.started)
        return fail(result.reason);
    if (result.upgrade.kind == UpgradeResult::Kind::FailedAtStep)
        std::cerr << result.upgrade.text().toStdString() << '\n';
    return run(session, command);
}

int CliContext::withInspection(const std::function<int(Session&)>& command) {
    Session session(applicationFolder, messages, clock);
    Startup startup(session, {catalog, {}, {}}, progress);
    const StartResult result = startup.openForInspection();
    if (!result.started)
        return fail(result.reason);
    return run(session, command);
}

namespace {

int runSql(CliContext& context, Session& session, const QString& statement) {
    if (!session.connection().returnsRows(statement)) {
        Transaction transaction(session.connection(),
                                QStringLiteral("SQL: ") + statement.simplified().left(80));
        const int changed = session.connection().execute(statement);
        transaction.commit();
        std::cerr << changed << " row(s) changed\n";
        return 0;
    }
    Query run = session.connection().query(statement);
    Output output(context.json);
    QStringList names;
    for (int column = 0; column < run.columnCount(); ++column)
        names.push_back(run.columnName(column));
    output.headings(names);
    while (run.next()) {
        std::vector<Value> cells;
        cells.reserve(size_t(run.columnCount()));
        for (int column = 0; column < run.columnCount(); ++column)
            cells.push_back(run.value(column));
        output.row(cells);
    }
    return 0;
}

int runUpgrade(CliContext& context) {
    Session session(context.applicationFolder, context.messages, context.clock);
    Startup startup(session, {context.catalog, shareFolder(), {}}, context.progress);
    const StartResult result = startup.run();
    for (const int code : result.upgrade.applied)
        std::cout << code << '\n';
    if (!result.started)
        return context.fail(result.reason);
    const bool failed = result.upgrade.kind == UpgradeResult::Kind::FailedAtStep;
    if (!result.upgrade.text().isEmpty())
        std::cerr << result.upgrade.text().toStdString() << '\n';
    return failed ? 1 : 0;
}

} // namespace

void addCommands(CLI::App& app, CliContext& context, Action& action) {
    for (const auto add :
         {addStoreCommands, addMaintenanceCommands, addItemCommands, addPersonCommands, addCatalogCommands,
          addRecordingCommands, addWorkCommands, addAttachCommands, addClassCommands, addHistoryCommands})
        add(app, context, action);
}

void addStoreCommands(CLI::App& app, CliContext& context, Action& action) {
    auto statement = std::make_shared<std::string>();
    CLI::App* sql = app.add_subcommand("sql", "Run one statement in the catalog's dialect; rows as a table");
    sql->add_option("STATEMENT", *statement)->required();
    sql->callback([&context, &action, statement] {
        action = [&context, statement] {
            return context.withSession([&](Session& session) {
                return runSql(context, session, QString::fromStdString(*statement));
            });
        };
    });

    CLI::App* upgrade =
        app.add_subcommand("upgrade", "Bring the catalog up to date; prints the codes applied");
    upgrade->callback([&context, &action] { action = [&context] { return runUpgrade(context); }; });

    struct ConfigWords {
        std::string section, key, value;
    };
    auto words = std::make_shared<ConfigWords>();
    CLI::App* config = app.add_subcommand("config", "Read or change the configuration file");
    config->require_subcommand(1);
    CLI::App* get = config->add_subcommand("get", "Print a value; empty when the key is missing");
    CLI::App* set = config->add_subcommand("set", "Write a value");
    for (CLI::App* command : {get, set}) {
        command->add_option("SECTION", words->section)->required();
        command->add_option("KEY", words->key)->required();
    }
    set->add_option("VALUE", words->value)->required();
    const auto configuration = [&context] {
        return Configuration(context.applicationFolder + QStringLiteral("/tsc.cfg"),
                             context.applicationFolder);
    };
    get->callback([&context, &action, words, configuration] {
        action = [&context, words, configuration] {
            const Configuration file = configuration();
            if (const QString fault = file.fault(); !fault.isEmpty())
                return context.fail(fault);
            std::cout << file.read(QString::fromStdString(words->section), QString::fromStdString(words->key))
                             .toStdString()
                      << '\n';
            return 0;
        };
    });
    set->callback([&context, &action, words, configuration] {
        action = [&context, words, configuration] {
            Configuration file = configuration();
            if (file.write(QString::fromStdString(words->section), QString::fromStdString(words->key),
                           QString::fromStdString(words->value)))
                return 0;
            return context.fail(file.failure());
        };
    });

    auto target = std::make_shared<std::string>();
    CLI::App* sample = app.add_subcommand("sample", "Write the sample collection as a new catalog");
    sample->add_option("FILE", *target)->required();
    sample->callback([&context, &action, target] {
        action = [&context, target] {
            // The sample is made from what the folder holds; its catalog may become this very one.
            if (const QString failure =
                    fillAppFolder(context.applicationFolder, shareFolder(), FirstStart::WithoutCatalog);
                !failure.isEmpty())
                return context.fail(failure);
            try {
                writeSampleCatalog(QString::fromStdString(*target), context.applicationFolder, context.clock,
                                   context.progress);
                return 0;
            } catch (const Error& error) {
                return context.fail(error.reason());
            }
        };
    });
}

} // namespace tessaranth
