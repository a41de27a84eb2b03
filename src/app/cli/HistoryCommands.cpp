// SPDX-License-Identifier: GPL-3.0-or-later
// history list, show, undo and redo.
#include "app/cli/Commands.h"
#include "app/cli/Output.h"
#include "store/History.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <limits>
#include <memory>

namespace tessaranth {

namespace {

int list(CliContext& context, Session& session) {
    Output output(context.json);
    output.headings({QStringLiteral("Step"), QStringLiteral("Time"), QStringLiteral("What"),
                     QStringLiteral("Rows"), QStringLiteral("Cards"), QStringLiteral("Undone")});
    for (const HistoryStep& step : session.history().steps())
        output.row({step.number, step.at, step.words, step.rows, step.cards, step.undone ? "yes" : ""});
    return 0;
}

const char* kindWord(RowChange::Kind kind) {
    return kind == RowChange::Kind::Inserted  ? "added"
           : kind == RowChange::Kind::Deleted ? "deleted"
                                              : "changed";
}

const char* fileWord(const StepFile& file) {
    return !file.before ? "added" : file.after ? "replaced" : "removed";
}

bool isStep(Session& session, qint64 number) {
    for (const HistoryStep& step : session.history().steps())
        if (step.number == number)
            return true;
    return false;
}

int show(CliContext& context, Session& session, qint64 number) {
    if (!isStep(session, number))
        return context.fail(QStringLiteral("The history has no step %1.").arg(number));
    Output output(context.json);
    output.headings({QStringLiteral("Table"), QStringLiteral("Key"), QStringLiteral("Change"),
                     QStringLiteral("Field"), QStringLiteral("Before"), QStringLiteral("After")});
    session.history().eachRow(number, [&](const HistoryRow& row) {
        const Value key = row.key == 0 ? Value() : Value(row.key);
        for (const HistoryRow::Field& field : row.fields)
            output.row({row.table, key, kindWord(row.kind), field.name, field.before, field.after});
        return true;
    });
    for (const StepFile& file : session.history().files(number))
        output.row({StepFiles::folderName(file), file.name, fileWord(file), QStringLiteral("File"), Value(),
                    Value()});
    return 0;
}

int undo(CliContext& context, Session& session, qint64 number) {
    if (number != 0 && !isStep(session, number))
        return context.fail(QStringLiteral("The history has no step %1.").arg(number));
    const QString words = session.history().undoWords();
    const bool done = number == 0 ? session.history().undo() : session.history().goTo(number - 1);
    if (done)
        std::cerr << (number == 0 ? "Undone: " + words.toStdString()
                                  : "Undone back to and with step " + std::to_string(number))
                  << '\n';
    return done ? 0 : 1;
}

int redo(Session& session) {
    const QString words = session.history().redoWords();
    if (!session.history().redo())
        return 1;
    std::cerr << "Redone: " << words.toStdString() << '\n';
    return 0;
}

} // namespace

void addHistoryCommands(CLI::App& app, CliContext& context, Action& action) {
    CLI::App* history =
        app.add_subcommand("history", "What was done to the catalog; take it back or do it again");
    history->require_subcommand(1);
    history->footer("Example: tessaranth-cli history list; tessaranth-cli history show 12; tessaranth-cli "
                    "history undo 12");
    auto step = std::make_shared<qint64>(0);
    const auto add = [&](const char* name, const char* help, const std::function<int(Session&)>& work) {
        CLI::App* command = history->add_subcommand(name, help);
        command->callback(
            [&context, &action, work] { action = [&context, work] { return context.withSession(work); }; });
        return command;
    };
    add("list", "The steps, the oldest first; those undone can be redone",
        [&context](Session& session) { return list(context, session); });
    add("show", "The fields that a step changed, and its files",
        [&context, step](Session& session) { return show(context, session, *step); })
        ->add_option("STEP", *step, "Its number in the list")
        ->required();
    add("undo", "Take back the last step, or all from the last one back to STEP",
        [&context, step](Session& session) { return undo(context, session, *step); })
        ->add_option("STEP", *step, "The first step to take back")
        ->check(CLI::Range(qint64(1), std::numeric_limits<qint64>::max()));
    add("redo", "Do again what was undone last", [](Session& session) { return redo(session); });
}

} // namespace tessaranth
