// SPDX-License-Identifier: GPL-3.0-or-later
// attach and files.
#include "app/cli/Commands.h"
#include "app/cli/Output.h"
#include "attachments/CardDocuments.h"
#include "attachments/CardImages.h"
#include "attachments/CardLinks.h"
#include "attachments/CardMedia.h"
#include "attachments/CardRelations.h"
#include "attachments/FileAlignment.h"
#include "items/CMIT.h"

#include <CLI/CLI.hpp>
#include <QFileInfo>
#include <algorithm>
#include <iostream>
#include <memory>

namespace tessaranth {

namespace {

struct Words {
    std::string kind, what, title, alias, otherKind;
    std::vector<std::string> files;
    qint64 id = 0;
    qint64 otherId = 0;
};

QString titleOf(const Words& words) {
    return words.title.empty() ? QFileInfo(QString::fromStdString(words.what)).completeBaseName()
                               : QString::fromStdString(words.title);
}

qint64 attachImage(Session& session, const CardOwner& card, const Words& words) {
    return CardImages(session, card).add(QString::fromStdString(words.what), titleOf(words));
}

qint64 attachDocument(Session& session, const CardOwner& card, const Words& words) {
    return CardDocuments(session, card).addFile(QString::fromStdString(words.what), titleOf(words));
}

/// What can be attached: one command each. `attach` answers with the new row's key, or 0 when it failed and
/// said why.
struct Attachable {
    const char* command;
    const char* help;
    const char* operand;
    qint64 (*attach)(Session&, const CardOwner&, const Words&);
};
const Attachable attachables[] = {
    {"image", "Add a picture (BMP, JPEG, GIF or PNG) to a card and print its number", "FILE", attachImage},
    {"doc", "Add a text or RTF file to a card as a document and print its number", "FILE", attachDocument}};

/// Adds what can be added, and fails when that is not all.
int attachMedia(CliContext& context, Session& session, const CardOwner& card, const Words& words) {
    QStringList files;
    for (const std::string& file : words.files)
        files << QString::fromStdString(file);
    const qint64 before =
        session.connection().single(QStringLiteral("SELECT MAX(MediaID) FROM Media")).toInteger();
    const int added = CardMedia(session, card).add(files, context.progress);
    Query rows = session.connection().query(
        QStringLiteral("SELECT MediaID FROM Media WHERE MediaID > %1 ORDER BY MediaID").arg(before));
    while (rows.next())
        std::cout << rows.integer(0) << '\n';
    return added == files.size() ? 0 : 1;
}

int attachLink(Session& session, const CardOwner& card, const Words& words) {
    WebLink link{0, QString::fromStdString(words.what), QString::fromStdString(words.alias)};
    if (!CardLinks(session, card).save(link))
        return 1;
    std::cout << link.id << '\n';
    return 0;
}

int attachRelation(CliContext& context, Session& session, const CardOwner& card, const Words& words) {
    CardRelations relations(session, card);
    const ItemKind* other = itemKind(QString::fromStdString(words.otherKind));
    const std::vector<int> kinds = relations.kinds();
    if (!other || std::find(kinds.begin(), kinds.end(), other->number) == kinds.end())
        return context.fail(QStringLiteral("Relations lead from a custom card to a composer, performer or "
                                           "recording, or back."));
    if (!CMIT(session).exists(other->number, words.otherId))
        return context.fail(
            QStringLiteral("There is no %1 with the number %2.").arg(other->noun).arg(words.otherId));
    return relations.change(other->number, {words.otherId}, {}) ? 0 : 1;
}

/// How the rows of each kind of attachment are listed.
struct Listed {
    const char* kind;
    const char* table;
    const char* key;
    const char* title;
    const char* detail; ///< the column that says more
    const char* order;
};
const Listed listed[] = {{"image", "Images", "ImageID", "ImageTitle", "OrderNbr", "OrderNbr"},
                         {"doc", "Cards", "CardID", "CardTitle", "OrderNbr", "OrderNbr"},
                         {"media", "Media", "MediaID", "MediaTitle", "MediaFile", "MediaTitle"},
                         {"web", "Web", "WebID", "Alias", "Url", "WebID"}};

int list(CliContext& context, Session& session, const CardOwner& card) {
    Output output(context.json);
    output.headings(
        {QStringLiteral("Kind"), QStringLiteral("ID"), QStringLiteral("Title"), QStringLiteral("Detail")});
    for (const Listed& kind : listed) {
        Query rows = session.connection().query(
            QStringLiteral("SELECT %1,%2,%3 FROM %4 WHERE ")
                .arg(QLatin1String(kind.key), QLatin1String(kind.title), QLatin1String(kind.detail),
                     QLatin1String(kind.table)) +
            card.condition() + QStringLiteral(" ORDER BY ") + QLatin1String(kind.order));
        while (rows.next())
            output.row({QString::fromLatin1(kind.kind), rows.integer(0), rows.text(1), rows.text(2)});
    }
    std::vector<CardRelations::Related> related;
    if (!CardRelations(session, card).LoadRelations(related))
        return 1;
    for (const CardRelations::Related& one : related)
        output.row({QStringLiteral("relation"), one.card.id, one.name, one.card.code});
    return 0;
}

int checkFiles(CliContext& context, Session& session) {
    FileAlignment::Findings found;
    if (!FileAlignment(session).find(found, context.progress))
        return 1;
    Output output(context.json);
    output.headings({QStringLiteral("Found"), QStringLiteral("Folder"), QStringLiteral("Name"),
                     QStringLiteral("Title"), QStringLiteral("Card")});
    for (const QString& folder : found.missingFolders)
        output.row({QStringLiteral("missing folder"), folder, QString(), QString(), QString()});
    for (const FileAlignment::LostFile& row : found.lost)
        output.row({QStringLiteral("row without file"), FileAlignment::caption(row.folder),
                    QString::number(row.id), row.title, row.card});
    for (const FileAlignment::StrayFile& file : found.stray)
        output.row({QStringLiteral("file without row"), FileAlignment::caption(file.folder), file.name,
                    QString(), QString()});
    const bool inOrder = found.missingFolders.isEmpty() && found.lost.empty() && found.stray.empty();
    if (inOrder)
        std::cerr << "Every row has its file and every file its row.\n";
    return inOrder ? 0 : 1;
}

/// The card that the words name, as one of the four kinds of card.
int onCard(CliContext& context, Session& session, const Words& words,
           const std::function<int(const CardOwner&)>& job) {
    const ItemKind* kind = itemKind(QString::fromStdString(words.kind));
    if (!kind || !kind->isCard())
        return context.fail(QStringLiteral("A card is one of Cps, Pfr, Rec and UserDef."));
    if (!CMIT(session).exists(kind->number, words.id))
        return context.fail(
            QStringLiteral("There is no %1 with the number %2.").arg(kind->noun).arg(words.id));
    return job({kind->code, words.id});
}

} // namespace

void addAttachCommands(CLI::App& app, CliContext& context, Action& action) {
    auto words = std::make_shared<Words>();
    CLI::App* attach = app.add_subcommand("attach", "Attach pictures and more to cards, and list them");
    attach->require_subcommand(1);
    const auto command = [&, words](const char* name, const char* help,
                                    const std::function<int(Session&, const CardOwner&)>& run) {
        CLI::App* made = attach->add_subcommand(name, help);
        made->add_option("CAT", words->kind, "Cps, Pfr, Rec or UserDef")->required();
        made->add_option("ID", words->id, "The card, as \"list\" prints it")->required()->check(rowNumber());
        made->callback([&context, &action, words, run] {
            action = [&context, words, run] {
                return context.withSession([&](Session& session) {
                    return onCard(context, session, *words,
                                  [&](const CardOwner& card) { return run(session, card); });
                });
            };
        });
        return made;
    };
    for (const Attachable& kind : attachables) {
        CLI::App* made =
            command(kind.command, kind.help, [words, &kind](Session& session, const CardOwner& card) {
                const qint64 id = kind.attach(session, card, *words);
                if (id != 0)
                    std::cout << id << '\n';
                return id != 0 ? 0 : 1;
            });
        made->add_option(kind.operand, words->what)->required();
        made->add_option("--title", words->title, "The title, in place of the file's name");
    }
    command("media", "Add media files to a card and print their numbers; the files stay where they are",
            [&context, words](Session& session, const CardOwner& card) {
                return attachMedia(context, session, card, *words);
            })
        ->add_option("FILE", words->files)
        ->required();
    CLI::App* link = command(
        "web", "Add a web link to a card and print its number",
        [words](Session& session, const CardOwner& card) { return attachLink(session, card, *words); });
    link->add_option("URL", words->what)->required();
    link->add_option("ALIAS", words->alias, "What is shown in its place");
    CLI::App* relation =
        command("relation", "Relate a custom card to a composer, performer or recording, or back",
                [&context, words](Session& session, const CardOwner& card) {
                    return attachRelation(context, session, card, *words);
                });
    relation->add_option("OTHERCAT", words->otherKind, "The kind of the other card")->required();
    relation->add_option("OTHERID", words->otherId)->required()->check(rowNumber());
    command("list", "List what is attached to a card",
            [&context](Session& session, const CardOwner& card) { return list(context, session, card); });

    CLI::App* files = app.add_subcommand("files", "Look after the files of pictures, documents and logos");
    files->require_subcommand(1);
    files->add_subcommand("check", "Compare the catalog with its data folders; changes nothing")
        ->callback([&] {
            action = [&context] {
                return context.withInspection([&](Session& session) { return checkFiles(context, session); });
            };
        });
}

} // namespace tessaranth
