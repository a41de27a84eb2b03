// SPDX-License-Identifier: GPL-3.0-or-later
// catalog export, import and remove.
#include "app/cli/Commands.h"
#include "works/CatalogFile.h"
#include "works/ComposerCatalog.h"

#include <CLI/CLI.hpp>
#include <QFileInfo>
#include <memory>

namespace tessaranth {

namespace {

struct Words {
    qint64 composer = 0;
    std::string file;
    bool yes = false;

    QString path() const { return QFileInfo(QString::fromStdString(file)).absoluteFilePath(); }
};

int remove(CliContext& context, Session& session, const Words& words) {
    CatalogFile catalog(session, words.composer);
    if (!ComposerCatalog(session, words.composer).hasImportedCatalog())
        return context.fail(QStringLiteral("No catalog was imported for this composer."));
    context.messages.assumeYes(words.yes);
    if (!catalog.confirmRemoval())
        return context.fail(QStringLiteral("Nothing was deleted. Say --yes to delete."));
    return catalog.removeImported(context.progress) ? 0 : 1;
}

} // namespace

void addCatalogCommands(CLI::App& app, CliContext& context, Action& action) {
    auto words = std::make_shared<Words>();
    CLI::App* catalog = app.add_subcommand("catalog", "Exchange the works of a composer as a .tcat file");
    catalog->require_subcommand(1);
    using Work = std::function<int(Session&)>;
    const auto add = [&](const char* name, const char* help, bool withFile, const Work& work) {
        CLI::App* command = catalog->add_subcommand(name, help);
        command->add_option("CPSID", words->composer, "The composer, as \"list Cps\" prints it")
            ->required()
            ->check(rowNumber());
        if (withFile)
            command->add_option("FILE", words->file)->required();
        command->callback([&context, &action, words, work] {
            action = [&context, words, work] {
                return context.withSession([&](Session& session) {
                    if (ComposerCatalog(session, words->composer).composerName().isEmpty())
                        return context.fail(QStringLiteral("There is no composer with this number."));
                    return work(session);
                });
            };
        });
        return command;
    };
    add("export", "Write a composer's works to a catalog file", true, [words](Session& session) {
        return CatalogFile(session, words->composer).exportTo(words->path()) ? 0 : 1;
    });
    add("import", "Add the works of a catalog file to a composer", true, [&context, words](Session& session) {
        return CatalogFile(session, words->composer).importFrom(words->path(), context.progress) ? 0 : 1;
    });
    add("remove", "Delete what was imported for a composer; asks unless --yes", false,
        [&context, words](Session& session) { return remove(context, session, *words); })
        ->add_flag("--yes", words->yes, "Do not ask");
}

} // namespace tessaranth
