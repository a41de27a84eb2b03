// SPDX-License-Identifier: GPL-3.0-or-later
// person, lookup and archive.
#include "app/cli/Commands.h"
#include "app/cli/Output.h"
#include "items/CMIT.h"
#include "items/PersonArchive.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <span>

namespace tessaranth {

namespace {

/// What the words of any of these commands were read into; each command uses some.
struct ItemWords {
    std::string kind, text, last, first, born, died, acronym;
    qint64 id = 0;
    qint64 target = 0;
    std::vector<qint64> ids;
    bool yes = false;
};

/// A person's option: its name on the command line and the field it is for.
struct PersonOption {
    const char* name;
    std::string ItemWords::*word;
    QString Person::*field;
    const char* help;
};
const PersonOption personOptions[] = {
    {"--last", &ItemWords::last, &Person::last, "Last name, or only name"},
    {"--first", &ItemWords::first, &Person::first, "First name"},
    {"--born", &ItemWords::born, &Person::born, "Year, four digits"},
    {"--died", &ItemWords::died, &Person::died, "Year, four digits"},
    {"--acronym", &ItemWords::acronym, &Person::acronym, "Acronym of a composer's catalog, such as BWV"}};

/// A command at work.
struct Call {
    CliContext& context;
    Session& session;
    const ItemWords& words;
    const CLI::App& command;
};

const ItemKind& kindOf(const ItemWords& words) { return *itemKind(QString::fromStdString(words.kind)); }

bool isThere(Session& session, const ItemKind& kind, qint64 id) {
    return session.connection().exists(
        QStringLiteral("SELECT %1 FROM %2 WHERE %1 = %3").arg(kind.key, kind.table).arg(id));
}

int missing(CliContext& context, const ItemKind& kind, qint64 id) {
    return context.fail(QStringLiteral("There is no %1 with the id %2.").arg(kind.noun).arg(id));
}

/// Adds (id 0) or changes a person by the options that were given.
int savePerson(const Call& call) {
    auto& [context, session, words, command] = call;
    const ItemKind& kind = kindOf(words);
    if (words.id != 0 && !isThere(session, kind, words.id))
        return missing(context, kind, words.id);
    if (kind.number == ItemKind::Performer && command.count("--acronym") > 0) {
        context.fail(QStringLiteral("Only composers have a catalog's acronym."));
        return 2;
    }
    CMIT items(session);
    Person person = words.id == 0 ? Person() : items.person(kind.number, words.id);
    for (const PersonOption& option : personOptions)
        if (command.count(option.name) > 0)
            person.*option.field = QString::fromStdString(words.*option.word);
    context.messages.assumeYes(words.yes);
    if (!items.ModificaItem(kind.number, person))
        return context.messages.declined()
                   ? context.fail(QStringLiteral("There is a %1 of this name with other years. Say --yes if "
                                                 "this is another one.")
                                      .arg(kind.noun))
                   : 1;
    if (words.id == 0)
        std::cout << person.id << '\n';
    return 0;
}

int showPerson(const Call& call) {
    auto& [context, session, words, command] = call;
    const ItemKind& kind = kindOf(words);
    if (!isThere(session, kind, words.id))
        return missing(context, kind, words.id);
    const Person person = CMIT(session).person(kind.number, words.id);
    Output output(context.json);
    output.headings({kind.key, QStringLiteral("Last Name"), QStringLiteral("First Name"),
                     QStringLiteral("Born"), QStringLiteral("Death"), QStringLiteral("Catalog")});
    output.row({words.id, person.last, person.first, person.born, person.died, person.acronym});
    return 0;
}

int merge(const Call& call) {
    auto& [context, session, words, command] = call;
    const ItemKind& kind = kindOf(words);
    for (const qint64 id : {words.id, words.target})
        if (!isThere(session, kind, id))
            return missing(context, kind, id);
    context.messages.assumeYes(words.yes);
    if (CMIT(session).Migra(kind.number, words.id, words.target))
        return 0;
    return context.fail(words.yes || words.id == words.target
                            ? QString()
                            : QStringLiteral("Nothing was merged. Say --yes to merge."));
}

int remove(const Call& call) {
    auto& [context, session, words, command] = call;
    const ItemKind& kind = kindOf(words);
    CMIT items(session);
    QStringList names;
    for (const qint64 id : words.ids) {
        if (!isThere(session, kind, id))
            return missing(context, kind, id);
        names.push_back(items.nameOf(kind.number, id));
    }
    context.messages.assumeYes(words.yes);
    if (!items.ConfermaEliminazione(kind.number, names, words.ids))
        return context.fail(QStringLiteral("Nothing was deleted. Say --yes to delete."));
    return items.EliminaItem(kind.number, words.ids, context.progress) ? 0 : 1;
}

int listNames(const Call& call) {
    auto& [context, session, words, command] = call;
    ItemList items;
    if (!CMIT(session).ElencoInLv(kindOf(words).number, items, QString::fromStdString(words.text)))
        return 1;
    Output(context.json).list(kindOf(words).key, items);
    return 0;
}

int addName(const Call& call) {
    auto& [context, session, words, command] = call;
    const qint64 id = CMIT(session).addNamed(kindOf(words).number, QString::fromStdString(words.text));
    if (id != 0)
        std::cout << id << '\n';
    return id != 0 ? 0 : 1;
}

int renameOne(const Call& call) {
    auto& [context, session, words, command] = call;
    const ItemKind& kind = kindOf(words);
    if (!isThere(session, kind, words.id))
        return missing(context, kind, words.id);
    return CMIT(session).rename(kind.number, words.id, QString::fromStdString(words.text)) ? 0 : 1;
}

int searchArchive(const Call& call) {
    auto& [context, session, words, command] = call;
    std::optional<PersonArchive> archive = PersonArchive::open(session, kindOf(words).number);
    if (!archive)
        return 1;
    Output(context.json).list(QStringLiteral("Row"), archive->search(QString::fromStdString(words.text)));
    return 0;
}

/// One command: the words it reads, in order, and what it does with them.
struct ItemCommand {
    const char* name;
    const char* help;
    const char* reads; ///< i: id, t: target's id, s: ids, n: name, f: text that may be left out,
                       ///< p: the fields of a person, P: with a last name, y: --yes
    int (*work)(const Call& call);
};
const ItemCommand personCommands[] = {
    {"add", "Add a person; prints the id", "Py", savePerson},
    {"edit", "Change the fields that are given", "ipy", savePerson},
    {"show", "Print the fields of a person", "i", showPerson},
    {"merge", "Move everything from one person to another and delete the first", "ity", merge},
    {"delete", "Delete persons with everything that depends on them", "sy", remove}};
const ItemCommand lookupCommands[] = {
    {"list", "List the names, or those that begin so", "f", listNames},
    {"add", "Add a name; prints the id", "n", addName},
    {"rename", "Change a name", "in", renameOne},
    {"merge", "Move what is under one name to another and delete the first", "ity", merge},
    {"delete", "Delete names; what was under them has none then", "sy", remove}};
const ItemCommand archiveCommands[] = {
    {"search", "List the persons of the internal list whose name holds a text", "n", searchArchive}};

void addWord(CLI::App* command, char word, ItemWords& words) {
    switch (word) {
    case 'i':
        command->add_option("ID", words.id)->required()->check(rowNumber());
        break;
    case 't':
        command->add_option("TARGET", words.target)->required()->check(rowNumber());
        break;
    case 's':
        command->add_option("ID", words.ids)->required()->check(rowNumber());
        break;
    case 'n':
        command->add_option("TEXT", words.text)->required();
        break;
    case 'f':
        command->add_option("TEXT", words.text);
        break;
    case 'P':
    case 'p':
        for (const PersonOption& option : personOptions)
            command->add_option(option.name, words.*option.word, option.help)
                ->required(word == 'P' && option.field == &Person::last);
        break;
    default:
        command->add_flag("--yes", words.yes, "Do not ask");
    }
}

struct CommandGroup {
    const char* name;
    const char* help;
    std::vector<std::string> kinds;
    bool kindFirst; ///< KIND COMMAND, not COMMAND KIND
    std::span<const ItemCommand> commands;
};

void addGroup(CLI::App& app, CliContext& context, Action& action, const CommandGroup& group) {
    CLI::App* parent = app.add_subcommand(group.name, group.help);
    parent->require_subcommand(1);
    auto words = std::make_shared<ItemWords>();
    const auto addKind = [&](CLI::App* command) {
        command->add_option("KIND", words->kind)->required()->check(CLI::IsMember(group.kinds));
    };
    if (group.kindFirst)
        addKind(parent);
    for (const ItemCommand& row : group.commands) {
        CLI::App* command = parent->add_subcommand(row.name, row.help);
        if (!group.kindFirst)
            addKind(command);
        for (const char* word = row.reads; *word; ++word)
            addWord(command, *word, *words);
        command->callback([&context, &action, words, command, work = row.work] {
            action = [&context, words, command, work] {
                return context.withSession([&](Session& session) {
                    return work({context, session, *words, *command});
                });
            };
        });
    }
}

} // namespace

void addPersonCommands(CLI::App& app, CliContext& context, Action& action) {
    addGroup(app, context, action,
             {"person", "Composers and performers", {"Cps", "Pfr"}, false, personCommands});
    addGroup(app, context, action,
             {"lookup",
              "Genres, labels, sources and supports",
              {"Genre", "Label", "Source", "Support"},
              true,
              lookupCommands});
    addGroup(app, context, action,
             {"archive", "The internal lists of persons", {"Cps", "Pfr"}, false, archiveCommands});
}

} // namespace tessaranth
