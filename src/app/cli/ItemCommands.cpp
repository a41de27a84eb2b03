// SPDX-License-Identifier: GPL-3.0-or-later
// list, find.
#include "app/cli/Commands.h"
#include "app/cli/Output.h"
#include "items/CMIT.h"
#include "search/QuickSearch.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace tessaranth {

namespace {

int list(CliContext& context, Session& session, const QString& word, const QString& prefix) {
    const ItemKind* kind = itemKind(word);
    ItemList items;
    if (!CMIT(session).ElencoInLv(kind->number, items, prefix))
        return 1;
    Output(context.json).list(kind->key, items);
    return 0;
}

int find(CliContext& context, Session& session, const QString& text) {
    QuickSearch search(session);
    if (!search.prepare(context.progress))
        return 1;
    auto found = search.find(text);
    if (!found && search.wantsIndexAnew() && search.makeIndexAnew(context.progress))
        found = search.find(text);
    if (!found)
        return 1;
    Output output(context.json);
    output.headings({QStringLiteral("Group"), QStringLiteral("Text"), QStringLiteral("Detail"),
                     QStringLiteral("Card"), QStringLiteral("Id")});
    for (const QuickSearch::Group& group : *found)
        for (const QuickSearch::Hit& hit : group.hits)
            output.row({group.caption, hit.text, hit.detail, hit.code, hit.id});
    return 0;
}

void addFind(CLI::App& app, CliContext& context, Action& action) {
    auto words = std::make_shared<std::string>();
    CLI::App* command = app.add_subcommand("find", "Find cards, works and tracks by the beginnings of words");
    command->add_option("TEXT", *words)->required();
    command->callback([&context, &action, words] {
        action = [&context, words] {
            return context.withSession(
                [&](Session& session) { return find(context, session, QString::fromStdString(*words)); });
        };
    });
}

} // namespace

void addItemCommands(CLI::App& app, CliContext& context, Action& action) {
    addFind(app, context, action);
    struct Words {
        std::string kind, prefix;
    };
    auto words = std::make_shared<Words>();
    CLI::App* command = app.add_subcommand("list", "List the cards of a kind, or those whose name begins so");
    command->add_option("KIND", words->kind, "Cps, Pfr, Rec or UserDef")
        ->required()
        ->check(CLI::IsMember({"Cps", "Pfr", "Rec", "UserDef"}));
    command->add_option("PREFIX", words->prefix);
    command->callback([&context, &action, words] {
        action = [&context, words] {
            return context.withSession([&](Session& session) {
                return list(context, session, QString::fromStdString(words->kind),
                            QString::fromStdString(words->prefix));
            });
        };
    });
}

} // namespace tessaranth
