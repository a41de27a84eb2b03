// SPDX-License-Identifier: GPL-3.0-or-later
// work add, list and delete.
#include "app/cli/Commands.h"
#include "app/cli/Output.h"
#include "items/CMIT.h"
#include "works/CWKS.h"
#include "works/WorkGroups.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

namespace tessaranth {

namespace {

struct Words {
    qint64 composer = 0;
    std::vector<qint64> works;
    std::string title, subtitle, number, year, key, genre;
    bool yes = false;
};

int add(CliContext& context, Session& session, const Words& words) {
    Work work;
    work.composer = words.composer;
    work.title = QString::fromStdString(words.title);
    work.subtitle = QString::fromStdString(words.subtitle);
    work.number = QString::fromStdString(words.number);
    work.year = QString::fromStdString(words.year);
    const QString key = QString::fromStdString(words.key);
    for (const KeyName& known : session.keyNames())
        if (known.name.compare(key, Qt::CaseInsensitive) == 0)
            work.key = known.id;
    if (!key.isEmpty() && work.key == 0)
        return context.fail(QStringLiteral("No musical key is called ") + key + u'.');
    const QString genre = QString::fromStdString(words.genre);
    WorkGroups groups(session, words.composer);
    if (!genre.isEmpty()) {
        work.composerGenre = groups.find(WorkGroups::Genres, genre);
        if (work.composerGenre == 0)
            return context.fail(QStringLiteral("The composer has no genre called ") + genre + u'.');
    }
    if (!CWKS(session).AggiungiWork(work))
        return 1;
    std::cout << work.id << '\n';
    return 0;
}

int list(CliContext& context, Session& session, const Words& words) {
    ItemList works;
    if (!CWKS(session).ElencoInLvC(words.composer, works))
        return 1;
    Output output(context.json);
    QStringList names{QStringLiteral("CompID")};
    for (const ItemList::Heading& heading : works.headings())
        names.push_back(heading.caption);
    output.headings(names);
    for (int row = 0; row < works.rowCount(); ++row) {
        std::vector<Value> cells{works.id(row)};
        for (int column = 0; column < works.columnCount(); ++column)
            cells.emplace_back(works.text(row, column));
        output.row(cells);
    }
    return 0;
}

int remove(CliContext& context, Session& session, const Words& words) {
    CWKS works(session);
    for (const qint64 id : words.works)
        if (works.work(id).id == 0)
            return context.fail(QStringLiteral("There is no work with the number %1.").arg(id));
    context.messages.assumeYes(words.yes);
    const bool deleted = words.works.size() == 1 ? works.EliminaWork(words.works.front())
                                                 : works.EliminaWorkBatch(words.works);
    if (!deleted && !words.yes)
        return context.fail(QStringLiteral("Nothing was deleted. Say --yes to delete."));
    return deleted ? 0 : 1;
}

} // namespace

void addWorkCommands(CLI::App& app, CliContext& context, Action& action) {
    auto words = std::make_shared<Words>();
    CLI::App* work = app.add_subcommand("work", "Add, list and delete the works of a composer");
    work->require_subcommand(1);
    using Run = std::function<int(Session&)>;
    const auto command = [&](const char* name, const char* help, const Run& run) {
        CLI::App* made = work->add_subcommand(name, help);
        made->callback(
            [&context, &action, run] { action = [&context, run] { return context.withSession(run); }; });
        return made;
    };
    const auto ofComposer = [&](const char* name, const char* help, const Run& run) {
        CLI::App* made = command(name, help, [&context, words, run](Session& session) {
            if (CMIT(session).nameOf(ItemKind::Composer, words->composer).isEmpty())
                return context.fail(QStringLiteral("There is no composer with this number."));
            return run(session);
        });
        made->add_option("CPSID", words->composer, "The composer, as \"list Cps\" prints it")
            ->required()
            ->check(rowNumber());
        return made;
    };
    CLI::App* adding =
        ofComposer("add", "Add a work and print its number",
                   [&context, words](Session& session) { return add(context, session, *words); });
    adding->add_option("--title", words->title)->required();
    adding->add_option("--subtitle", words->subtitle);
    adding->add_option("--number", words->number, "The catalogue number without the composer's acronym");
    adding->add_option("--year", words->year);
    adding->add_option("--key", words->key, "A musical key in the user's language");
    adding->add_option("--genre", words->genre, "A genre of the composer's catalog");
    ofComposer("list", "List the works of a composer",
               [&context, words](Session& session) { return list(context, session, *words); });
    CLI::App* deleting =
        command("delete", "Delete works; asks unless --yes",
                [&context, words](Session& session) { return remove(context, session, *words); });
    deleting->add_option("ID", words->works, "Works, as \"work list\" prints them")
        ->required()
        ->check(rowNumber());
    deleting->add_flag("--yes", words->yes, "Do not ask");
}

} // namespace tessaranth
