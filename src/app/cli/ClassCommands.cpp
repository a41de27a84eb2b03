// SPDX-License-Identifier: GPL-3.0-or-later
// class tree and assign.
#include "app/cli/Commands.h"
#include "app/cli/Output.h"
#include "classes/Classification.h"
#include "items/CMIT.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace tessaranth {

namespace {

struct Words {
    std::string kind;
    qint64 card = 0;
    std::vector<qint64> subCategories;
    bool none = false;
};

int tree(CliContext& context, Session& session, int kind) {
    const std::optional<Classification::Tree> tree = Classification(session, kind).tree();
    if (!tree)
        return 1;
    Output output(context.json);
    output.headings({QStringLiteral("Category"), QStringLiteral("SubCatID"), QStringLiteral("Sub-category"),
                     QStringLiteral("Cards")});
    for (const Classification::Node& category : tree->categories) {
        output.row({category.name, Value(), QString(), qint64(category.cards)});
        for (const Classification::SubNode& sub : category.subCategories)
            output.row({category.name, sub.id, sub.name, qint64(sub.cards)});
    }
    output.row({QStringLiteral("Unclassified"), Value(), QString(), qint64(tree->unclassified)});
    return 0;
}

int assign(CliContext& context, Session& session, int kind, const Words& words) {
    if (words.none != words.subCategories.empty())
        return context.fail(QStringLiteral("Name the sub-categories, or say --none for none at all."));
    if (!CMIT(session).exists(kind, words.card))
        return context.fail(QStringLiteral("There is no %1 with the number %2.")
                                .arg(itemKind(kind)->noun, QString::number(words.card)));
    const QSet<qint64> ids(words.subCategories.begin(), words.subCategories.end());
    return Classification(session, kind).assign({words.card}, ids) ? 0 : 1;
}

} // namespace

void addClassCommands(CLI::App& app, CliContext& context, Action& action) {
    auto words = std::make_shared<Words>();
    CLI::App* classes = app.add_subcommand("class", "The classification of the cards of a kind");
    classes->require_subcommand(1);
    using Run = std::function<int(Session&, int kind)>;
    const auto command = [&](const char* name, const char* help, const Run& run) {
        CLI::App* made = classes->add_subcommand(name, help);
        made->add_option("CAT", words->kind, "Cps, Pfr, Rec or UserDef")
            ->required()
            ->check(CLI::IsMember({"Cps", "Pfr", "Rec", "UserDef"}));
        made->callback([&context, &action, words, run] {
            action = [&context, words, run] {
                return context.withSession([&](Session& session) {
                    return run(session, itemKind(QString::fromStdString(words->kind))->number);
                });
            };
        });
        return made;
    };
    command("tree", "Print the categories and sub-categories, with the number of cards in each",
            [&context](Session& session, int kind) { return tree(context, session, kind); });
    CLI::App* assigning = command(
        "assign", "Put a card into exactly these sub-categories",
        [&context, words](Session& session, int kind) { return assign(context, session, kind, *words); });
    assigning->add_option("ID", words->card, "The card, as \"list\" prints it")
        ->required()
        ->check(rowNumber());
    assigning->add_option("SUBID", words->subCategories, "Sub-categories, as \"class tree\" prints them")
        ->check(rowNumber());
    assigning->add_flag("--none", words->none, "Take the card out of all of them");
}

} // namespace tessaranth
