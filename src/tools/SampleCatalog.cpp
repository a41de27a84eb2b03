// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/SampleCatalog.h"

#include "items/CatalogWriter.h"
#include "items/Person.h"
#include "platform/Clock.h"
#include "platform/Progress.h"
#include "platform/TsvFile.h"
#include "store/CatalogTemplate.h"
#include "store/Connection.h"
#include "store/UpgradeSteps.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSet>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("SampleCatalog", text); }

/// The sample's tables, read in the order in which they refer to one another.
class SampleImport {
public:
    SampleImport(Connection& connection, const Clock& clock)
        : m_connection(connection), m_clock(clock), m_writer(connection) {}

    void run(Progress& progress) {
        progress.stage(tr("Writing the sample collection"));
        Transaction transaction(m_connection);
        const std::pair<const char*, void (SampleImport::*)(const TsvFile&, int)> tables[] = {
            {"composers", &SampleImport::composer},
            {"performers", &SampleImport::performer},
            {"works", &SampleImport::work},
            {"recordings", &SampleImport::recording},
            {"recording_performers", &SampleImport::recordingPerformer},
            {"recording_works", &SampleImport::recordingWork},
            {"tracks", &SampleImport::track},
            {"custom", &SampleImport::custom},
            {"classes", &SampleImport::classified}};
        int done = 0;
        for (const auto& [name, readRow] : tables) {
            const TsvFile file(QStringLiteral(":/sample/%1.tsv").arg(QLatin1String(name)));
            for (int row = 0; row < file.rowCount(); ++row)
                (this->*readRow)(file, row);
            progress.step(++done, std::size(tables));
        }
        transaction.commit();
    }

private:
    using Keys = QHash<QString, qint64>;

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
                          {"GenreID", m_writer.lookup("Genres", "GenreName", at(file, row, "genre"))},
                          {"CpsGenreID",
                           m_writer.lookup("CpsGenres", "CpsGenreName", at(file, row, "catgenre"), composer)},
                          {"MainWorkID",
                           m_writer.lookup("MainWorks", "MainWorkName", at(file, row, "mainwork"), composer)},
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
        const QString now = m_clock.now().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
        m_keys["Rec"][at(file, row, "key")] = m_writer.add(
            "Rec", {{"RecTitle", at(file, row, "title")},
                    {"RecSubTitle", at(file, row, "subtitle")},
                    {"LabelID", m_writer.lookup("Labels", "LabelName", at(file, row, "label"))},
                    {"SupportID", m_writer.lookup("Supports", "SupportType", at(file, row, "carrier"))},
                    {"SourceID", m_writer.lookup("Sources", "SourceType", at(file, row, "source"))},
                    {"ProdNbr", at(file, row, "prodnbr")},
                    {"Notes", at(file, row, "notes")},
                    {"Rating", textOr("rating", "N/A")},
                    {"Barcode", at(file, row, "barcode")},
                    {"LocationCode", at(file, row, "location")},
                    {"UnitsNbr", textOr("units", "1").toInt()},
                    {"Spars", textOr("spars", "N/A")},
                    {"RelDate", at(file, row, "reldate")},
                    {"Price", at(file, row, "price")},
                    {"RefRec", at(file, row, "reference") == QLatin1String("1")},
                    {"AddDate", now},
                    {"ModDate", now}});
    }

    void recordingPerformer(const TsvFile& file, int row) {
        const qint64 recording = find(m_keys["Rec"], at(file, row, "recording"), file, row);
        m_writer.add("PfrOnRec", {{"PfrID", find(m_keys["Pfr"], at(file, row, "performer"), file, row)},
                                  {"RecID", recording},
                                  {"Pos", ++m_performersOn[recording]}});
    }

    void recordingWork(const TsvFile& file, int row) {
        const qint64 recording = find(m_keys["Rec"], at(file, row, "recording"), file, row);
        const qint64 work = find(m_keys["Comp"], at(file, row, "work"), file, row);
        const qint64 composer = m_composerOfWork.value(work);
        if (!m_composersOn.contains({recording, composer})) {
            m_composersOn.insert({recording, composer});
            m_writer.add("CpsOnRec", {{"CpsID", composer}, {"RecID", recording}});
        }
        const qint64 entry =
            m_writer.placeWork(recording, composer, work, ++m_worksOn[recording], at(file, row, "excerpt"));
        for (const QString& text : at(file, row, "performers").split(u'|', Qt::SkipEmptyParts)) {
            const QString role = text.section(u'=', 1).trimmed();
            m_writer.add("CompOnRecPfr",
                         {{"CompOnRecID", entry},
                          {"PfrID", find(m_keys["Pfr"], text.section(u'=', 0, 0).trimmed(), file, row)},
                          {"PersonageID", role.isEmpty() ? 0 : find(m_roles[work], role, file, row)}});
        }
    }

    void track(const TsvFile& file, int row) {
        m_writer.add("Tracks", {{"RecID", find(m_keys["Rec"], at(file, row, "recording"), file, row)},
                                {"Disc", at(file, row, "disc").toInt()},
                                {"TrackNbr", at(file, row, "number").toInt()},
                                {"TrackName", at(file, row, "name")},
                                {"TrackLen", at(file, row, "length")}});
    }

    void custom(const TsvFile& file, int row) {
        m_keys["UserDef"][at(file, row, "key")] =
            m_writer.add("UserDef", {{"UserDefTitle", at(file, row, "title")}});
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

    Connection& m_connection;
    const Clock& m_clock;
    CatalogWriter m_writer;
    QHash<QString, Keys> m_keys; ///< by item code: the keys of the tables, to the ids of the catalog
    QHash<qint64, qint64> m_composerOfWork;
    QHash<qint64, Keys> m_roles;
    QHash<qint64, int> m_performersOn;
    QHash<qint64, int> m_worksOn;
    QSet<std::pair<qint64, qint64>> m_composersOn;
    Keys m_classes;
};

void removeDatabase(const QString& path) {
    for (const char* companion : {"", "-wal", "-shm", "-journal"})
        QFile::remove(path + QLatin1String(companion));
}

} // namespace

void writeSampleCatalog(const QString& path, const QString& applicationFolder, const Clock& clock,
                        Progress& progress) {
    if (QFileInfo::exists(path))
        throw FileError(tr("%1 exists already; it is left as it is.").arg(path));
    const std::vector<KeyNameLine> keyNames = readKeyNames(applicationFolder + QStringLiteral("/WKeys.dat"));
    const QString part = path + QStringLiteral(".part");
    removeDatabase(part); // what a killed program left of an earlier attempt
    try {
        writeCatalogTemplate(part, keyNames);
        const auto connection = Connection::open(part, clock, newestUpgradeCode);
        SampleImport(*connection, clock).run(progress);
        // Copied, not renamed: on a full disk SQLite cannot bring the log home when the file is closed, and
        // says nothing about it.
        connection->copyTo(path);
    } catch (const Error& error) {
        removeDatabase(part);
        const bool isNamed = error.reason().startsWith(path + u' ');
        throw isNamed ? FileError(error.reason())
                      : FileError(tr("%1 cannot be written: %2").arg(path, error.reason()));
    }
    removeDatabase(part);
}

} // namespace tessaranth
