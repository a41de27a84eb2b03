// SPDX-License-Identifier: GPL-3.0-or-later
#include "works/WorkCard.h"

#include "attachments/CardDocuments.h"
#include "items/CardRecordings.h"
#include "platform/FileWriter.h"
#include "store/Guarded.h"
#include "text/RichText.h"
#include "works/CWKS.h"

#include <QCoreApplication>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("WorkCard", text); }

struct NameLine {
    const char* label;
    const char* statement;
    qint64 Work::*key;
};
const NameLine nameLines[] = {
    {"MAIN WORK:", "SELECT MainWorkName FROM MainWorks WHERE MainWorkID = ", &Work::mainWork},
    {"CATALOG GENRE:", "SELECT CpsGenreName FROM CpsGenres WHERE CpsGenreID = ", &Work::composerGenre},
    {"GENRE:", "SELECT GenreName FROM Genres WHERE GenreID = ", &Work::genre}};

QString keyName(Session& session, qint64 key) {
    if (key == 0 || !session.configuration().flag(QStringLiteral("Misc"), QStringLiteral("WKey")))
        return {};
    for (const KeyName& name : session.keyNames())
        if (name.id == key)
            return name.name;
    return {};
}

QString charactersOf(Session& session, qint64 work) {
    ItemList characters;
    QStringList names;
    if (CWKS(session).PersInLv(work, characters))
        for (int row = 0; row < characters.rowCount(); ++row)
            names.push_back(characters.text(row, 0));
    return names.join(u'\n');
}

void readLines(Session& session, const Work& work, WorkCard& card) {
    const auto add = [&card](const char* label, const QString& value) {
        if (!value.isEmpty())
            card.lines.push_back({QString::fromLatin1(label), value});
    };
    add("COMPOSER:", card.composerName);
    add("OPUS:", card.number);
    add("KEY:", keyName(session, work.key));
    add("YEAR:", work.year);
    for (const NameLine& line : nameLines)
        if (work.*line.key != 0)
            add(line.label, session.connection()
                                .single(QLatin1String(line.statement) + QString::number(work.*line.key))
                                .toText()
                                .trimmed());
    add("PERSONAGES:", charactersOf(session, work.id));
}

QStringList documentsOf(Session& session, qint64 work) {
    CardDocuments documents(session, {QStringLiteral("Comp"), work});
    ItemList titles;
    QStringList texts;
    if (documents.LoadDocs(titles))
        for (int row = 0; row < titles.rowCount(); ++row)
            if (const auto stored = documents.read(titles.id(row)))
                texts << RichText::toText(*stored).trimmed();
    texts.removeAll(QString());
    return texts;
}

} // namespace

bool readWorkCard(Session& session, qint64 id, WorkCard& card) {
    CWKS works(session);
    const Work work = works.work(id);
    if (work.id == 0)
        return false;
    return guarded(session, [&] {
        WorkCard found;
        found.composer = work.composer;
        found.title = work.title.trimmed();
        found.subTitle = work.subtitle.trimmed();
        found.number = CWKS::numberText(works.acronym(work.composer), work.number.trimmed());
        CardHeading composer;
        if (readCardHeading(session, QStringLiteral("Cps"), work.composer, composer))
            found.composerName = composer.name + QStringLiteral(" (") + composer.years + u')';
        readLines(session, work, found);
        found.description = work.description.trimmed();
        found.documents = documentsOf(session, id);
        if (!readWorkRecordings(session, id, found.recordings))
            return false;
        card = std::move(found);
        return true;
    });
}

QString WorkCard::text() const {
    QStringList paragraphs{title};
    if (!subTitle.isEmpty())
        paragraphs << subTitle;
    paragraphs << QString();
    for (const CardLine& line : lines)
        paragraphs << line.label + u' ' + QString(line.value).replace(u'\n', QStringLiteral(", "));
    if (!description.isEmpty())
        paragraphs << QString() << description;
    for (const QString& document : documents)
        paragraphs << QString() << document;
    if (recordings.rowCount() > 0)
        paragraphs << QString() << tr("RECORDINGS:");
    for (int row = 0; row < recordings.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < 4; ++column) // up to the carrier
            if (!recordings.text(row, column).isEmpty())
                cells << recordings.text(row, column);
        paragraphs << cells.join(QStringLiteral(", "));
    }
    return paragraphs.join(u'\n');
}

bool exportWorkCard(Session& session, const WorkCard& card, const QString& path) {
    return guarded(session, [&] { writeFile(path, RichText::fromText(card.text())); });
}

} // namespace tessaranth
