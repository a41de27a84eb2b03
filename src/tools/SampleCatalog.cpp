// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/SampleCatalog.h"

#include "attachments/CardLinks.h"
#include "attachments/CardRelations.h"
#include "items/CardHeading.h"
#include "items/ItemKind.h"
#include "items/Person.h"
#include "platform/Clock.h"
#include "platform/FileWriter.h"
#include "platform/Progress.h"
#include "platform/TsvFile.h"
#include "recordings/RecordingEditor.h"
#include "store/CatalogTemplate.h"
#include "store/CatalogWriter.h"
#include "store/Session.h"
#include "store/UpgradeSteps.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <map>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("SampleCatalog", text); }

/// Keeps what operations have to tell, as there is nobody to read it; a question is declined.
class KeptMessages final : public Messages {
public:
    void tell(MessageIcon, const QString&, const QString& text) override { m_lastText = text; }
    Answer ask(const Question& question) override {
        m_lastText = question.text;
        return Answer::Cancel;
    }
    QString inputName(const NameRequest&) override { return {}; }
    QStringList chooseFiles(const FileRequest&) override { return {}; }
    std::optional<QColor> chooseColour(const QString&, const QColor&) override { return std::nullopt; }
    const QString& lastText() const { return m_lastText; }

private:
    QString m_lastText;
};

/// The sample's tables, read in the order in which they refer to one another.
class SampleImport {
public:
    SampleImport(Session& session, const KeptMessages& messages)
        : m_session(session), m_messages(messages), m_connection(session.connection()),
          m_writer(m_connection) {}

    void run(Progress& progress) {
        progress.stage(tr("Writing the sample collection"));
        Transaction transaction(m_connection, tr("Write the sample collection"));
        const std::pair<const char*, void (SampleImport::*)(const TsvFile&, int)> tables[] = {
            {"composers", &SampleImport::composer},
            {"performers", &SampleImport::performer},
            {"works", &SampleImport::work},
            {"recordings", &SampleImport::recording},
            {"recording_performers", &SampleImport::recordingPerformer},
            {"recording_works", &SampleImport::recordingWork},
            {"tracks", &SampleImport::track},
            {"custom", &SampleImport::custom},
            {"classes", &SampleImport::classified},
            {"web_links", &SampleImport::webLink},
            {"relations", &SampleImport::related}};
        int done = 0;
        for (const auto& [name, readRow] : tables) {
            const TsvFile file(QStringLiteral(":/sample/%1.tsv").arg(QLatin1String(name)));
            for (int row = 0; row < file.rowCount(); ++row)
                (this->*readRow)(file, row);
            progress.step(++done, std::size(tables));
        }
        storeContents();
        leaveCards();
        transaction.commit();
    }

private:
    using Keys = QHash<QString, qint64>;

    /// What is on a recording.
    struct Contents {
        QString place; ///< the first line about it
        std::vector<qint64> composers;
        std::vector<qint64> performers;
        std::vector<PlacedWork> works;
        std::map<int, std::vector<Track>> discs;
    };

    void require(bool stored, const TsvFile& file, int row) const {
        if (!stored)
            throw FileError(file.place(row) + QStringLiteral(": ") + m_messages.lastText());
    }

    Contents& contentsOf(const TsvFile& file, int row) {
        Contents& contents = m_contents[find(m_keys["Rec"], at(file, row, "recording"), file, row)];
        if (contents.place.isEmpty())
            contents.place = file.place(row);
        return contents;
    }

    static QString at(const TsvFile& file, int row, const char* heading) {
        return file.cell(row, QLatin1String(heading));
    }

    static qint64 find(const Keys& keys, const QString& key, const TsvFile& file, int row) {
        const auto found = keys.constFind(key);
        if (found == keys.constEnd())
            throw FileError(file.place(row) + QStringLiteral(": ") + tr("\"%1\" is not known").arg(key));
        return *found;
    }

    void composer(const TsvFile& file, int row) {
        const QString born = at(file, row, "born");
        const QString died = at(file, row, "died");
        m_keys["Cps"][at(file, row, "key")] = m_writer.add("Cps", {{"CpsLname", at(file, row, "last")},
                                                                   {"CpsFname", at(file, row, "first")},
                                                                   {"CpsY", yearsText(born, died)},
                                                                   {"CpsB", born},
                                                                   {"CpsD", died},
                                                                   {"CatAcr", at(file, row, "acronym")}});
    }

    void performer(const TsvFile& file, int row) {
        m_keys["Pfr"][at(file, row, "key")] = m_writer.add("Pfr", {{"PfrLname", at(file, row, "last")},
                                                                   {"PfrFname", at(file, row, "first")},
                                                                   {"PfrB", at(file, row, "born")},
                                                                   {"PfrD", at(file, row, "died")}});
    }

    qint64 keyNumber(const QString& name, const TsvFile& file, int row) {
        if (name.isEmpty())
            return 0;
        const Value key =
            m_connection.single(QStringLiteral("SELECT KeyID FROM WKeys WHERE LangID = %1 AND KeyName = '%2'")
                                    .arg(englishLanguage)
                                    .arg(quoted(name)));
        if (key.isNull())
            throw FileError(file.place(row) + QStringLiteral(": ") + tr("\"%1\" is not known").arg(name));
        return key.toInteger();
    }

    void work(const TsvFile& file, int row) {
        const qint64 composer = find(m_keys["Cps"], at(file, row, "composer"), file, row);
        const QStringList roles = at(file, row, "roles").split(u'|', Qt::SkipEmptyParts);
        const qint64 id =
            m_writer.add("Compositions",
                         {{"CpsID", composer},
                          {"CompTitle", at(file, row, "title")},
                          {"CompSubTitle", at(file, row, "subtitle")},
                          {"CompNbr", at(file, row, "number")},
                          {"CompYear", at(file, row, "year")},
                          {"KeyID", keyNumber(at(file, row, "keyname"), file, row)},
                          {"GenreID", m_writer.lookup("Genres", at(file, row, "genre"))},
                          {"CpsGenreID", m_writer.lookup("CpsGenres", at(file, row, "catgenre"), composer)},
                          {"MainWorkID", m_writer.lookup("MainWorks", at(file, row, "mainwork"), composer)},
                          {"Descr", QString()},
                          {"Pers", !roles.isEmpty()}});
        m_keys["Comp"][at(file, row, "key")] = id;
        m_composerOfWork[id] = composer;
        for (const QString& role : roles)
            m_roles[id][role.trimmed()] =
                m_writer.add("Personages", {{"CompID", id}, {"PersonageName", role.trimmed()}});
    }

    void recording(const TsvFile& file, int row) {
        const auto textOr = [&](const char* heading, const char* otherwise) {
            const QString text = at(file, row, heading);
            return text.isEmpty() ? QString::fromLatin1(otherwise) : text;
        };
        RecordingSpecs specs;
        specs.set("RecTitle", at(file, row, "title"));
        specs.set("RecSubTitle", at(file, row, "subtitle"));
        specs.set("LabelID", m_writer.lookup("Labels", at(file, row, "label")));
        specs.set("SupportID", m_writer.lookup("Supports", at(file, row, "carrier")));
        specs.set("SourceID", m_writer.lookup("Sources", at(file, row, "source")));
        specs.set("ProdNbr", at(file, row, "prodnbr"));
        specs.set("Notes", at(file, row, "notes"));
        specs.set("Rating", textOr("rating", "N/A"));
        specs.set("Barcode", at(file, row, "barcode"));
        specs.set("LocationCode", at(file, row, "location"));
        specs.set("UnitsNbr", RecordingEditor::units(textOr("units", "1")).value_or(0)); // 0 is refused
        specs.set("Spars", textOr("spars", "N/A"));
        specs.set("RelDate", at(file, row, "reldate"));
        specs.set("Price", at(file, row, "price"));
        specs.set("RefRec", at(file, row, "reference") == QLatin1String("1"));
        RecordingEditor editor(m_session, 0);
        require(editor.applySpecs(specs), file, row);
        m_keys["Rec"][at(file, row, "key")] = editor.id();
    }

    // The rows of a recording may stand anywhere in their file; they are stored once all were read.

    void recordingPerformer(const TsvFile& file, int row) {
        Contents& contents = contentsOf(file, row);
        contents.performers.push_back(find(m_keys["Pfr"], at(file, row, "performer"), file, row));
    }

    void recordingWork(const TsvFile& file, int row) {
        Contents& contents = contentsOf(file, row);
        PlacedWork placed;
        placed.work = find(m_keys["Comp"], at(file, row, "work"), file, row);
        placed.composer = m_composerOfWork.value(placed.work);
        placed.excerpt = at(file, row, "excerpt");
        for (const QString& text : at(file, row, "performers").split(u'|', Qt::SkipEmptyParts)) {
            const QString role = text.section(u'=', 1).trimmed();
            placed.cast.push_back({find(m_keys["Pfr"], text.section(u'=', 0, 0).trimmed(), file, row),
                                   role.isEmpty() ? 0 : find(m_roles[placed.work], role, file, row)});
        }
        contents.composers.push_back(placed.composer);
        contents.works.push_back(std::move(placed));
    }

    void track(const TsvFile& file, int row) {
        std::vector<Track>& tracks = contentsOf(file, row).discs[at(file, row, "disc").toInt()];
        tracks.push_back({at(file, row, "name"), at(file, row, "length")});
        if (at(file, row, "number") != QString::number(tracks.size()))
            throw FileError(file.place(row) + QStringLiteral(": ") +
                            tr("the tracks of a disc do not count up from 1"));
    }

    void storeContents() {
        for (auto& [recording, contents] : m_contents) {
            RecordingEditor editor(m_session, recording);
            const auto check = [this, &place = contents.place](bool stored) {
                if (!stored)
                    throw FileError(place + QStringLiteral(": ") + m_messages.lastText());
            };
            check(editor.applyArtists(contents.composers, contents.performers));
            check(editor.applyWorks(contents.works));
            for (const auto& [disc, tracks] : contents.discs)
                check(editor.applyTracks(disc, tracks, std::nullopt));
        }
    }

    void leaveCards() {
        for (const char* code : {"Cps", "Pfr", "Rec", "UserDef"})
            for (const qint64 id : std::as_const(m_keys[code]))
                beginWithMainPanel(m_session, code, id);
    }

    void custom(const TsvFile& file, int row) {
        m_keys["UserDef"][at(file, row, "key")] =
            m_writer.add("UserDef", {{"UserDefTitle", at(file, row, "title")}});
    }

    CardOwner cardAt(const TsvFile& file, int row, const QString& code, const QString& key) {
        return {code, find(m_keys[code], key.trimmed(), file, row)};
    }

    void webLink(const TsvFile& file, int row) {
        WebLink link{0, at(file, row, "url"), at(file, row, "alias")};
        CardLinks links(m_session, cardAt(file, row, at(file, row, "kind"), at(file, row, "item")));
        require(links.save(link), file, row);
    }

    void related(const TsvFile& file, int row) {
        const QString code = at(file, row, "kind");
        QSet<qint64> others;
        for (const QString& item : at(file, row, "items").split(u'|', Qt::SkipEmptyParts))
            others.insert(cardAt(file, row, code, item).id);
        const ItemKind* kind = itemKind(code);
        CardRelations custom(m_session,
                             cardAt(file, row, QStringLiteral("UserDef"), at(file, row, "custom")));
        require(kind && custom.change(kind->number, others, {}), file, row);
    }

    void classified(const TsvFile& file, int row) {
        const QString kind = at(file, row, "kind");
        const QString category = at(file, row, "category");
        qint64& classId = m_classes[kind + u'\t' + category];
        if (classId == 0)
            classId =
                m_writer.add(kind + QLatin1String("Class"), {{kind + QLatin1String("ClassName"), category}});
        const qint64 subCategory =
            m_writer.add(kind + QLatin1String("SubCat"),
                         {{kind + QLatin1String("ClassID"), classId},
                          {kind + QLatin1String("SubCatName"), at(file, row, "subcategory")}});
        for (const QString& item : at(file, row, "items").split(u'|', Qt::SkipEmptyParts))
            m_writer.add(kind + QLatin1String("SubCatJoin"),
                         {{kind + QLatin1String("ID"), find(m_keys[kind], item.trimmed(), file, row)},
                          {kind + QLatin1String("SubCatID"), subCategory}});
    }

    Session& m_session;
    const KeptMessages& m_messages;
    Connection& m_connection;
    CatalogWriter m_writer;
    QHash<QString, Keys> m_keys; ///< by item code: the keys of the tables, to the ids of the catalog
    QHash<qint64, qint64> m_composerOfWork;
    QHash<qint64, Keys> m_roles;
    std::map<qint64, Contents> m_contents; ///< by recording
    Keys m_classes;
};

} // namespace

void writeSampleCatalog(const QString& path, const QString& applicationFolder, const Clock& clock,
                        Progress& progress) {
    if (QFileInfo::exists(path))
        throw FileError(tr("%1 exists already; it is left as it is.").arg(path));
    const std::vector<KeyNameLine> keyNames = readKeyNames(applicationFolder + QStringLiteral("/WKeys.dat"));
    removeLeftovers(QFileInfo(path).path()); // what a killed program left of an earlier attempt
    try {
        const FileWriter part(path, Existing::Refuse); // never finished: it only lends its temporary file
        fillCatalogTemplate(part.temporaryPath(), keyNames);
        KeptMessages messages;
        Session session(applicationFolder, messages, clock);
        session.setConnection(Connection::open(part.temporaryPath(), clock, newestUpgradeCode));
        session.fieldLengths().load(session.connection());
        SampleImport(session, messages).run(progress);
        // Copied, not renamed: on a full disk SQLite cannot bring the log home when the file is closed, and
        // says nothing about it.
        session.connection().copyTo(path);
    } catch (const Error& error) {
        const bool isNamed = error.reason().startsWith(path + u' ');
        throw isNamed ? FileError(error.reason())
                      : FileError(tr("%1 cannot be written: %2").arg(path, error.reason()));
    }
}

} // namespace tessaranth
