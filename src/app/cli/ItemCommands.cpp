// SPDX-License-Identifier: GPL-3.0-or-later
// list.
#include "app/cli/Commands.h"
#include "app/cli/Output.h"
#include "items/CMIT.h"

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

} // namespace

void addItemCommands(CLI::App& app, CliContext& context, Action& action) {
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
