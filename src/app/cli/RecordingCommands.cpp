// SPDX-License-Identifier: GPL-3.0-or-later
// recording show, add, tracks and check.
#include "app/cli/Commands.h"
#include "app/cli/Output.h"
#include "recordings/CREC.h"
#include "recordings/RecordingEditor.h"
#include "recordings/RecordingLists.h"

#include <CLI/CLI.hpp>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringDecoder>
#include <iostream>
#include <memory>

namespace tessaranth {

namespace {

constexpr qint64 largestText = 1 << 20; // bytes; far more than the tracks of any disc

struct Words {
    qint64 id = 0;
    int disc = 1;
    bool reference = false;
    bool yes = false;
    std::string file, units = "1", title, subtitle, label, carrier, source, rating, number, notes, barcode,
                      location, spars, released, price;
};

/// An option for a text of the recording.
struct TextOption {
    const char* name;
    std::string Words::*word;
    QString RecordingSpecs::*field;
    const char* help;
};
const TextOption textOptions[] = {
    {"--title", &Words::title, &RecordingSpecs::title, "Title"},
    {"--subtitle", &Words::subtitle, &RecordingSpecs::subtitle, "Sub title"},
    {"--rating", &Words::rating, &RecordingSpecs::rating, "N/A, Poor, Fair, Good, Very good or Excellent"},
    {"--number", &Words::number, &RecordingSpecs::productionNumber, "Production number"},
    {"--notes", &Words::notes, &RecordingSpecs::notes, "Notes"},
    {"--barcode", &Words::barcode, &RecordingSpecs::barcode, "Barcode"},
    {"--location", &Words::location, &RecordingSpecs::location, "Where it is kept"},
    {"--spars", &Words::spars, &RecordingSpecs::spars, "SPARS code, such as DDD"},
    {"--released", &Words::released, &RecordingSpecs::released, "Release date"},
    {"--price", &Words::price, &RecordingSpecs::price, "Price"}};

/// An option that names a row of a lookup list.
struct LinkOption {
    const char* name;
    std::string Words::*word;
    qint64 RecordingSpecs::*field;
    const char* help;
    const char* noun;
    const char* query; ///< up to the name
};
const LinkOption linkOptions[] = {{"--label", &Words::label, &RecordingSpecs::label, "Name of a label",
                                   "label", "SELECT LabelID FROM Labels WHERE LabelName = '"},
                                  {"--carrier", &Words::carrier, &RecordingSpecs::carrier,
                                   "Name of a carrier, such as CD", "carrier",
                                   "SELECT SupportID FROM Supports WHERE SupportType = '"},
                                  {"--source", &Words::source, &RecordingSpecs::source, "Name of a source",
                                   "source", "SELECT SourceID FROM Sources WHERE SourceType = '"}};

int missing(CliContext& context, qint64 id) {
    return context.fail(QStringLiteral("There is no recording with the id %1.").arg(id));
}

// ---- show

QJsonArray worksOf(Session& session, const RecordingEditor& editor) {
    std::vector<RecordingLists::Performed> performers;
    if (!RecordingLists::performed(session, editor.id(), performers))
        return {};
    QJsonArray works;
    for (const PlacedWork& work : RecordingEditor(session, editor.id()).works()) {
        QJsonArray cast;
        for (const RecordingLists::Performed& performer : performers)
            for (int row = 0; row < performer.works.rowCount(); ++row)
                if (performer.works.id(row) == work.id)
                    cast.append(
                        QJsonObject{{"name", performer.name}, {"roles", performer.works.text(row, 2)}});
        works.append(QJsonObject{{"title", work.title}, {"excerpt", work.excerpt}, {"cast", cast}});
    }
    return works;
}

QJsonArray namesOf(const std::vector<RecordingArtist>& artists) {
    QJsonArray names;
    for (const RecordingArtist& artist : artists)
        names.append(artist.name);
    return names;
}

QJsonObject recordingObject(Session& session, RecordingEditor& editor) {
    RecordingSpecs specs = editor.specs();
    CREC names(session);
    names.CaricaDati(editor.id());
    QJsonObject object{
        {"id", editor.id()},        {"units", specs.units},         {"reference", specs.reference},
        {"label", names.LabelName}, {"carrier", names.SupportType}, {"source", names.SourceType},
        {"added", specs.added},     {"modified", specs.modified}};
    for (const TextOption& option : textOptions)
        object.insert(QLatin1String(option.name + 2), specs.*option.field);
    object.insert("composers", namesOf(editor.composers()));
    object.insert("performers", namesOf(editor.performers()));
    object.insert("works", worksOf(session, editor));
    QJsonArray discs;
    for (int disc = 1; disc <= specs.units; ++disc) {
        QJsonArray tracks;
        const std::vector<Track> stored = editor.tracks(disc);
        for (const Track& track : stored)
            tracks.append(QJsonObject{{"name", track.name}, {"length", track.length}});
        discs.append(QJsonObject{{"disc", disc},
                                 {"discid", editor.discId(disc)},
                                 {"length", totalLength(stored)},
                                 {"tracks", tracks}});
    }
    object.insert("discs", discs);
    return object;
}

/// Prints what is not empty of an object, one value a row, with the way to it in the first column.
void printValues(Output& output, const QString& path, const QJsonValue& value) {
    const QString prefix = path.isEmpty() ? path : path + u'.';
    if (value.isObject()) {
        const QJsonObject object = value.toObject();
        for (auto one = object.begin(); one != object.end(); ++one)
            printValues(output, prefix + one.key(), one.value());
    } else if (value.isArray()) {
        const QJsonArray array = value.toArray();
        for (int i = 0; i < array.size(); ++i)
            printValues(output, prefix + QString::number(i + 1), array.at(i));
    } else if (const QString text = value.toVariant().toString(); !text.isEmpty()) {
        output.row({path, text});
    }
}

int show(CliContext& context, Session& session, const Words& words) {
    RecordingEditor editor(session, words.id);
    if (!editor.exists())
        return missing(context, words.id);
    const QJsonObject object = recordingObject(session, editor);
    if (context.json) {
        std::cout << QJsonDocument(object).toJson().constData();
        return 0;
    }
    Output output(false);
    output.headings({QStringLiteral("Part"), QStringLiteral("Value")});
    printValues(output, {}, object);
    return 0;
}

// ---- add

int add(CliContext& context, Session& session, const Words& words) {
    RecordingSpecs specs;
    for (const TextOption& option : textOptions)
        if (!(words.*option.word).empty())
            specs.*option.field = QString::fromStdString(words.*option.word);
    for (const LinkOption& option : linkOptions) {
        const QString name = QString::fromStdString(words.*option.word);
        if (name.isEmpty())
            continue;
        specs.*option.field =
            session.connection().single(QLatin1String(option.query) + quoted(name) + u'\'').toInteger();
        if (specs.*option.field == 0)
            return context.fail(QStringLiteral("No %1 is called %2.").arg(QLatin1String(option.noun), name));
    }
    const std::optional<int> units = RecordingEditor::units(QString::fromStdString(words.units));
    if (!units)
        return context.fail(QStringLiteral("Units: a whole number from 1 to 999."));
    specs.units = *units;
    specs.reference = words.reference;
    RecordingEditor editor(session, 0);
    const std::vector<RecordingDouble> doubles = editor.doubles(specs);
    if (!doubles.empty() && !words.yes)
        return context.fail(QStringLiteral("Recording %1 (%2) has %3 already. Say --yes to add another.")
                                .arg(doubles.front().id)
                                .arg(doubles.front().title, doubles.front().reason));
    if (!editor.applySpecs(specs))
        return 1;
    std::cout << editor.id() << '\n';
    return 0;
}

// ---- tracks

int listTracks(CliContext& context, RecordingEditor& editor, int disc) {
    Output output(context.json);
    output.headings({QStringLiteral("TrackNbr"), QStringLiteral("TrackName"), QStringLiteral("TrackLen")});
    qint64 number = 0;
    for (const Track& track : editor.tracks(disc))
        output.row({++number, track.name, track.length});
    return 0;
}

int tracks(CliContext& context, Session& session, const Words& words) {
    RecordingEditor editor(session, words.id);
    if (!editor.exists())
        return missing(context, words.id);
    if (words.file.empty())
        return listTracks(context, editor, words.disc);
    QFile file(QString::fromStdString(words.file));
    if (!file.open(QIODevice::ReadOnly))
        return context.fail(file.fileName() + QStringLiteral(" cannot be read: ") + file.errorString());
    const QByteArray bytes = file.read(largestText + 1);
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(bytes);
    if (bytes.size() > largestText || decoder.hasError() || bytes.contains('\0'))
        return context.fail(file.fileName() + QStringLiteral(" is not a list of tracks in UTF-8."));
    const std::vector<Track> read = tracksOfText(text);
    if (read.empty())
        return context.fail(file.fileName() + QStringLiteral(" holds no tracks."));
    if (const QStringList odd = oddLengthsOfText(text); !odd.isEmpty())
        return context.fail(
            QStringLiteral("No length of a track, which is minutes, a colon and two digits: ") +
            odd.mid(0, 10).join(QStringLiteral(", ")));
    if (!editor.applyTracks(words.disc, read, std::nullopt))
        return 1;
    std::cout << read.size() << '\n';
    return 0;
}

int check(CliContext& context, Session& session, const Words&) {
    ItemList list;
    if (!RecordingLists::parts(session, list, context.progress))
        return 1;
    Output(context.json).list(QStringLiteral("RecID"), list);
    return 0;
}

} // namespace

void addRecordingCommands(CLI::App& app, CliContext& context, Action& action) {
    CLI::App* parent = app.add_subcommand("recording", "Recordings");
    parent->require_subcommand(1);
    auto words = std::make_shared<Words>();
    const auto command = [&](const char* name, const char* help,
                             int (*work)(CliContext&, Session&, const Words&)) {
        CLI::App* one = parent->add_subcommand(name, help);
        one->add_flag("--json", context.json, "Print as JSON");
        one->callback([&context, &action, words, work] {
            action = [&context, words, work] {
                return context.withSession([&](Session& session) { return work(context, session, *words); });
            };
        });
        return one;
    };
    command("show", "Print everything about a recording", show)
        ->add_option("ID", words->id)
        ->required()
        ->check(rowNumber());
    CLI::App* adding = command("add", "Add a recording; prints the id", add);
    for (const TextOption& option : textOptions)
        adding->add_option(option.name, *words.*option.word, option.help)
            ->required(option.field == &RecordingSpecs::title);
    for (const LinkOption& option : linkOptions)
        adding->add_option(option.name, *words.*option.word, option.help);
    adding->add_option("--units", words->units, "Number of discs, 1 to 999");
    adding->add_flag("--reference", words->reference, "It is a reference recording");
    adding->add_flag("--yes", words->yes, "Add it even if it seems to be there already");
    CLI::App* disc = command("tracks", "Print the tracks of a disc, or replace them", tracks);
    disc->add_option("ID", words->id)->required()->check(rowNumber());
    disc->add_option("--disc", words->disc, "Number of the disc")->check(rowNumber());
    disc->add_option("--from", words->file, "A text with one track a line, in UTF-8");
    command("check", "List which parts every recording has", check);
}

} // namespace tessaranth
