// SPDX-License-Identifier: GPL-3.0-or-later
// What the check finds and the repair mends, on faults planted behind the program's back.
#include "search/QuickSearch.h"
#include "store/CatalogCheck.h"
#include "store/CatalogLinks.h"
#include "store/Cleanup.h"
#include "store/TextIndex.h"
#include "store/TextIndexCheck.h"
#include "support/CommandLine.h"
#include "support/ItemCatalog.h"
#include "support/Writing.h"

#include <QDir>
#include <SQLiteCpp/SQLiteCpp.h>

using namespace tessaranth;

namespace {

/// Answers yes to every question.
struct Yes : Messages {
    void tell(MessageIcon, const QString&, const QString& text) override { told << text; }
    Answer ask(const Question&) override { return Answer::Yes; }
    QString inputName(const NameRequest&) override { return {}; }
    QStringList chooseFiles(const FileRequest&) override { return {}; }
    std::optional<QColor> chooseColour(const QString&, const QColor&) override { return {}; }
    QStringList told;
};

/// The sample with a row in every table, so that each link can be broken.
struct Whole : ItemCatalog {
    Whole() : ItemCatalog(true) {
        for (const char* code : {"Cps", "Pfr", "Rec", "UserDef", "Comp"}) {
            for (const char* table : {"Images", "Cards", "Media", "Web"})
                run(QString("INSERT INTO %1 (RelatedCat, RelatedID) VALUES ('%2', 1)").arg(table, code));
            if (QString("Cps Pfr Rec").contains(code))
                for (const int id : {1, 2})
                    run(QString("INSERT INTO Relations (UserDefID, ItemType, ItemID) VALUES (3, '%1', %2)")
                            .arg(code)
                            .arg(id));
        }
        run("INSERT INTO Catalogs (CpsID, CpsName, FileName, DateAdded) VALUES (1, 'a', 'b', Now)");
        run("INSERT INTO DiscIds (RecID, DiscNbr, DiscId) VALUES (1, 1, '12345678')");
        run("UPDATE CompOnRecPfr SET PersonageID = 0");
        run("DELETE FROM Personages");
        const QString work = text("SELECT CompID FROM CompOnRec");
        run(QString("INSERT INTO Personages (CompID, PersonageName) VALUES (%1, 'Role')").arg(work));
        run("UPDATE Compositions SET Pers = False");
        run("UPDATE Compositions SET Pers = True WHERE CompID = " + work);
    }
    void plant(const QByteArray& statement) const {
        Transaction transaction(session->connection(), QStringLiteral("test"));
        writeNative(session->connection(), statement);
        transaction.commit();
    }
    QStringList findings() {
        QStringList found;
        CatalogCheck(*session).find(progress, [&found](const CatalogCheck::Finding& finding) {
            found << finding.caption + '\t' + QString::number(finding.found.count);
        });
        return found;
    }
    /// Opens it so that every question is answered with yes.
    void startWillingly() {
        close();
        session = std::make_unique<Session>(folder(), yes, clock);
        QVERIFY(Startup(*session, {}, progress).run().started);
    }
    /// What the repair tells.
    QStringList repaired() {
        QStringList told;
        CatalogCheck(*session).repair(progress, [&told](const QString& line) { told << line; });
        return told + yes.told;
    }
    Yes yes;
};

std::string breaking(const CatalogLink& link, const QByteArray& value) {
    const std::string kind =
        *link.kind ? std::string(" WHERE ") + link.kindColumn + " = '" + link.kind + '\'' : std::string();
    const std::string table = link.table;
    return "UPDATE " + table + " SET " + link.column + " = " + value.toStdString() +
           " WHERE rowid = (SELECT MIN(rowid) FROM " + table + kind + ')';
}

QByteArray nameOf(const CatalogLink& link) {
    return QByteArray(link.table) + '.' + link.column + ' ' + link.kind;
}

const std::pair<const char*, const char*> indexFaults[] = {
    {"a row that it does not know", "INSERT INTO Rec (RecTitle) VALUES ('Bachiana'); INSERT INTO QuickRec "
                                    "(QuickRec, rowid, words) SELECT 'delete', "
                                    "RecID, RecTitle FROM Rec WHERE RecTitle = 'Bachiana'"},
    {"a row that is gone", "INSERT INTO QuickRec (rowid, words) VALUES (99999, 'bachiana')"},
    {"no configuration", "DROP TABLE QuickRec_config"},
    {"no data", "DROP TABLE QuickRec_data"},
    {"broken data", "UPDATE QuickRec_data SET block = x'00112233'"},
    {"a trigger less", "DROP TRIGGER QuickRec_Rec_AFTERINSERT"},
    {"remains only", "PRAGMA writable_schema = ON; DELETE FROM sqlite_schema WHERE name = 'QuickRec'"}};

} // namespace

class TestCatalogCheck : public QObject {
    Q_OBJECT

private slots:
    void everyColumnThatNamesARowIsALink();
    void eachBrokenLinkIsFoundAndMended_data();
    void eachBrokenLinkIsFoundAndMended();
    void commandLineFindsEachBrokenLink();
    void otherFaults_data();
    void otherFaults();
    void worksAndSubCategoriesAreKept();
    void repairAsksForEachKind();
    void cleanupTakesNumbersThatAreNone();
    void indexFaultsAreFoundAndMended_data();
    void indexFaultsAreFoundAndMended();
    void brokenIndexRefusesNoSave();
    void failureThatIsNotOfTheIndexStays();
    void checkReadsWhatCannotBeWritten();
};

void TestCatalogCheck::everyColumnThatNamesARowIsALink() {
    ItemCatalog catalog;
    QSet<QString> links;
    for (const CatalogLink& link : catalogLinks())
        links << QString("%1.%2").arg(link.table, link.column).toLower();
    const QStringList noLinks{"discids.discid", "wkeys.langid", "wkeys.keyid", "componrec.componrecid",
                              "componrec.cpsid"}; // the last follows the work
    for (const QString& table : catalog.session->connection().tables()) {
        const QStringList columns = catalog.session->connection().columnsOf(table);
        for (const QString& column : columns) {
            const QString name = (table + '.' + column).toLower();
            const bool isKey = column == columns.front() && !links.contains(name) &&
                               catalog.session->connection().columns(table).front().type == "INTEGER" &&
                               !table.endsWith("OnRec") && !table.endsWith("Join");
            if (column.endsWith("ID", Qt::CaseInsensitive) && !isKey && !noLinks.contains(name))
                QVERIFY2(links.contains(name), qPrintable(name));
        }
    }
}

void TestCatalogCheck::eachBrokenLinkIsFoundAndMended_data() {
    QTest::addColumn<QByteArray>("value");
    QTest::newRow("a number") << QByteArray("99999");
    QTest::newRow("a text") << QByteArray("'0 OR 1=1'");
    QTest::newRow("Null") << QByteArray("NULL");
}

void TestCatalogCheck::eachBrokenLinkIsFoundAndMended() {
    QFETCH(QByteArray, value);
    Whole catalog;
    catalog.startWillingly();
    QCOMPARE(catalog.findings(), QStringList());
    using enum CatalogLink::Remedy;
    for (const CatalogLink& link : catalogLinks()) {
        const bool mayBeNull = !QStringList{"Tracks", "DiscIds", "Catalogs"}.contains(link.table);
        if (value == "NULL" && (!mayBeNull || link.remedy == SetToNone))
            continue; // cannot be, or means none
        const qint64 before = catalog.count(link.table);
        const qint64 none =
            catalog.number(QString("SELECT COUNT(*) FROM %1 WHERE %2 = 0").arg(link.table, link.column));
        catalog.plant(QByteArray::fromStdString(breaking(link, value)));
        const QString found = catalog.findings().join('\n');
        QVERIFY2((found + '\n').contains(QString(link.caption) + "\t1\n"),
                 nameOf(link) + ": " + found.toUtf8());
        QVERIFY2(!catalog.repaired().isEmpty(), nameOf(link));
        QVERIFY2(catalog.findings().isEmpty(), nameOf(link) + ": " + catalog.findings().join('\n').toUtf8());
        // A composer taken off a recording comes back with his work.
        const qint64 gone = before - catalog.count(link.table);
        QVERIFY2(gone == 0 || (gone == 1 && link.remedy == DeleteRow), nameOf(link));
        if (link.remedy == SetToNone)
            QVERIFY2(catalog.number(
                         QString("SELECT COUNT(*) FROM %1 WHERE %2 = 0").arg(link.table, link.column)) >=
                         none,
                     nameOf(link));
    }
}

void TestCatalogCheck::commandLineFindsEachBrokenLink() {
    Whole catalog;
    catalog.run("DELETE FROM Images"); // without their files
    catalog.run("DELETE FROM Cards");
    catalog.close();
    QCOMPARE(runCli(catalog.folder(), {"check"}).out.trimmed(), QString("Check\tFound\tWhich"));
    const QByteArray whole = bytesOf(catalog.catalog());
    for (const CatalogLink& link : catalogLinks()) {
        if (QStringList{"Images", "Cards"}.contains(link.table))
            continue;
        QFile file(catalog.catalog());
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(whole) == whole.size());
        file.close();
        QCOMPARE(SQLite::Database(catalog.catalog().toStdString(), SQLite::OPEN_READWRITE)
                     .exec(breaking(link, "99999")),
                 1);
        const CliResult result = runCli(catalog.folder(), {"check"});
        QVERIFY2(result.code == 1 && result.out.contains(QString('\n') + link.caption + "\t1\t") &&
                     result.out.contains("99999"),
                 nameOf(link) + ": " + result.out.toUtf8() + result.err.toUtf8());
    }
    const CliResult asked = runCli(catalog.folder(), {"maintain", "repair"});
    QCOMPARE(asked.code, 1);
    QVERIFY2(asked.err.contains("--yes") && asked.out.contains("left as it is"), qPrintable(asked.err));
    const CliResult mended = runCli(catalog.folder(), {"maintain", "repair", "--yes"});
    QVERIFY2(mended.code == 0 && mended.out.contains("1 rows deleted"), qPrintable(mended.out + mended.err));
    QCOMPARE(runCli(catalog.folder(), {"check"}).code, 0);
}

void TestCatalogCheck::otherFaults_data() {
    QTest::addColumn<QByteArray>("statement");
    QTest::addColumn<QString>("finding");
    QTest::addColumn<QString>("query");
    QTest::addColumn<qint64>("value");
    const auto row = [](const char* name, const char* statement, const char* finding, const char* query,
                        qint64 value) {
        QTest::newRow(name) << QByteArray(statement) << QString(finding) << QString(query) << value;
    };
    row("double link", "INSERT INTO CpsOnRec SELECT * FROM CpsOnRec WHERE RecID = 1 LIMIT 1",
        "Composers that are twice on a recording\t1", "SELECT COUNT(*) FROM CpsOnRec WHERE RecID = 1", 1);
    row("double in a cast",
        "INSERT INTO CompOnRecPfr SELECT * FROM CompOnRecPfr WHERE CompOnRecID = (SELECT MIN("
        "CompOnRecID) FROM CompOnRecPfr) LIMIT 1",
        "Performers that are twice in a cast\t1", "SELECT 1 FROM Rec WHERE RecID = 1", 1);
    row("double classification",
        "INSERT INTO RecSubCatJoin SELECT * FROM RecSubCatJoin WHERE RecID = 1 LIMIT 1",
        "Recordings that are twice in a sub-category\t1", "SELECT 1 FROM Rec WHERE RecID = 1", 1);
    row("in the collection, by a row of no recording",
        "INSERT INTO Compositions (CpsID, CompTitle, InCollection) VALUES (1, 'x', 1)",
        "Works wrongly marked as in the collection, or not marked\t1",
        "SELECT InCollection FROM Compositions WHERE CompTitle = 'x'", 0);
    row("not marked",
        "UPDATE Compositions SET InCollection = 0 WHERE CompID = (SELECT MIN(CompID) FROM CompOnRec)",
        "Works wrongly marked as in the collection, or not marked\t1",
        "SELECT COUNT(*) FROM Compositions WHERE InCollection = False AND CompID IN (SELECT CompID FROM "
        "CompOnRec)",
        0);
    row("personages not marked", "UPDATE Compositions SET Pers = 0",
        "Works wrongly marked as having personages, or not marked\t1",
        "SELECT COUNT(*) FROM Compositions WHERE Pers = True", 1);
    row("tracks beyond the units", "UPDATE Tracks SET Disc = 7 WHERE TrackID = 1",
        "Recordings with tracks beyond their units\t1", "SELECT UnitsNbr FROM Rec WHERE RecID = 1", 7);
    row("a disc that cannot be", "UPDATE Tracks SET Disc = 2000000 WHERE TrackID = 1",
        "Tracks on a disc that cannot be\t1", "SELECT Disc FROM Tracks WHERE TrackID = 1", 1);
    row("units that are none", "UPDATE Rec SET UnitsNbr = 'two' WHERE RecID = 1",
        "Recordings with a number of units that cannot be\t1", "SELECT UnitsNbr FROM Rec WHERE RecID = 1", 1);
    row("two tracks of one number", "UPDATE Tracks SET TrackNbr = 1 WHERE RecID = 1 AND TrackNbr = 2",
        "Tracks with a number that another of the disc has\t1",
        "SELECT COUNT(*) FROM Tracks WHERE RecID = 1 AND TrackNbr = 2", 1);
    row("a text for a number", "UPDATE Rec SET LastState = '12 apples' WHERE RecID = 1",
        "Numbers that are none in Rec.LastState\t1", "SELECT LastState FROM Rec WHERE RecID = 1", 12);
    row("a work under another composer", "UPDATE CompOnRec SET CpsID = 1 + (CpsID = 1) WHERE CompOnRecID = 1",
        "Works that stand on a recording under another composer\t1",
        "SELECT COUNT(*) FROM CompOnRec INNER JOIN Compositions ON CompOnRec.CompID = Compositions.CompID "
        "WHERE "
        "CompOnRec.CpsID <> Compositions.CpsID",
        0);
    row("a composer who is not on the recording",
        "DELETE FROM CpsOnRec WHERE RecID = (SELECT RecID FROM CompOnRec "
        "GROUP BY RecID HAVING COUNT(*) = 1 LIMIT 1)",
        "Works whose composer is not on the recording\t1", "SELECT 1 FROM Rec WHERE RecID = 1", 1);
    row("a picture of no card", "UPDATE Images SET RelatedCat = 'Xyz' WHERE ImageID = 1",
        "Pictures of no kind of card\t1", "SELECT COUNT(*) FROM Images WHERE ImageID = 1", 0);
    row("a role of another work",
        "INSERT INTO Personages (PersonageID, CompID, PersonageName) SELECT 555, CompID, 'y' FROM "
        "Compositions WHERE "
        "CompID NOT IN (SELECT CompID FROM CompOnRec) LIMIT 1; UPDATE Compositions SET Pers = 1 WHERE CompID "
        "IN "
        "(SELECT CompID FROM Personages); UPDATE CompOnRecPfr SET PersonageID = 555 WHERE rowid = 1",
        "Roles in casts that belong to another work\t1",
        "SELECT COUNT(*) FROM CompOnRecPfr WHERE PersonageID = 555", 0);
}

void TestCatalogCheck::otherFaults() {
    QFETCH(QByteArray, statement);
    QFETCH(QString, finding);
    QFETCH(QString, query);
    QFETCH(qint64, value);
    Whole catalog;
    catalog.startWillingly();
    catalog.plant(statement);
    QVERIFY2(catalog.findings().contains(finding), qPrintable(catalog.findings().join('\n')));
    QVERIFY(!catalog.repaired().isEmpty());
    QCOMPARE(catalog.findings(), QStringList());
    QCOMPARE(catalog.number(query), value);
}

void TestCatalogCheck::worksAndSubCategoriesAreKept() {
    Whole catalog;
    catalog.startWillingly();
    const qint64 works = catalog.count("Compositions"), onRecordings = catalog.count("CompOnRec");
    catalog.plant("UPDATE Compositions SET CpsID = 99999 WHERE CompID IN (1, 2)");
    catalog.plant("UPDATE RecSubCat SET RecClassID = NULL WHERE RecSubCatID = 1");
    catalog.repaired();
    QCOMPARE(catalog.count("Compositions"), works);
    QCOMPARE(catalog.count("CompOnRec"), onRecordings);
    QCOMPARE(
        catalog.text("SELECT Cps.CpsLname FROM Cps INNER JOIN Compositions ON Cps.CpsID = Compositions.CpsID "
                     "WHERE CompID = 2"),
        QString("(unknown composer)"));
    QCOMPARE(catalog.number("SELECT COUNT(*) FROM Cps WHERE CpsLname = '(unknown composer)'"), 1);
    QCOMPARE(catalog.text("SELECT RecClassName FROM RecClass INNER JOIN RecSubCat ON RecClass.RecClassID = "
                          "RecSubCat.RecClassID WHERE RecSubCatID = 1"),
             QString("(found again)"));
}

void TestCatalogCheck::repairAsksForEachKind() {
    Whole catalog;
    catalog.plant("UPDATE Tracks SET RecID = 99999 WHERE TrackID = 1");
    catalog.plant("UPDATE Rec SET LabelID = 99999 WHERE RecID = 1");
    catalog.messages.willAnswer(Answer::Yes); // the label
    catalog.messages.willAnswer(Answer::No);  // the track
    QStringList told;
    const CatalogCheck::Outcome outcome =
        CatalogCheck(*catalog.session).repair(catalog.progress, [&told](const QString& line) {
            told << line;
        });
    QCOMPARE(outcome.mended, 1);
    QCOMPARE(outcome.left, 1);
    QCOMPARE(told, QStringList({"Recordings of a label that is gone: 1 set to none",
                                "Tracks without a recording: 1 (TrackID 1 (RecID 99999)): left as it is"}));
    QCOMPARE(catalog.messages.asked.back().defaultButton, Answer::No);
    QVERIFY(catalog.messages.asked.back().text.startsWith("Tracks without a recording: 1 (TrackID 1"));
    QCOMPARE(catalog.findings(), QStringList("Tracks without a recording\t1"));
    QCOMPARE(catalog.number("SELECT LabelID FROM Rec WHERE RecID = 1"), 0);
}

void TestCatalogCheck::cleanupTakesNumbersThatAreNone() {
    Whole catalog;
    const qint64 casts = catalog.count("CompOnRecPfr");
    for (const char* id : {"'0 OR 1=1'", "NULL", "'x', 1, 0), ('x'", "x'00'", "1.5"})
        catalog.plant(QByteArray("INSERT INTO CompOnRecPfr (CompOnRecID, PfrID, PersonageID) VALUES (") + id +
                      ", 1, 0)");
    catalog.plant("INSERT INTO Cards (RelatedCat, RelatedID) VALUES ('Comp', '0 OR 1=1')");
    catalog.plant("INSERT INTO Personages (CompID, PersonageName) VALUES (NULL, 'x'), ('0 OR 1=1', 'y')");
    const qint64 cards = catalog.count("Cards"), personages = catalog.count("Personages");
    int found = 0;
    const auto count = [&found](const Cleanup::StepResult& step) { found += step.count; };
    QVERIFY(Cleanup(*catalog.session).run(catalog.progress, count));
    QVERIFY(found >= 7);
    QCOMPARE(catalog.count("CompOnRecPfr"), casts);
    QCOMPARE(catalog.count("Cards"), cards - 1);
    QCOMPARE(catalog.count("Personages"), personages - 2);
    found = 0;
    QVERIFY(Cleanup(*catalog.session).run(catalog.progress, count));
    QCOMPARE(found, 0);
    QCOMPARE(catalog.messages.told, QStringList());
}

void TestCatalogCheck::indexFaultsAreFoundAndMended_data() {
    QTest::addColumn<QByteArray>("statements");
    for (const auto& [name, statements] : indexFaults)
        QTest::newRow(name) << QByteArray(statements);
}

// Each fault is found by the check, met by no change of the catalog, told by the search, and mended.
void TestCatalogCheck::indexFaultsAreFoundAndMended() {
    QFETCH(QByteArray, statements);
    Whole catalog;
    QVERIFY(TextIndex(catalog.session->connection()).build(catalog.progress));
    QCOMPARE(catalog.findings(), QStringList());
    catalog.close();
    SQLite::Database(catalog.catalog().toStdString(), SQLite::OPEN_READWRITE).exec(statements.toStdString());
    QVERIFY(catalog.start().started);
    QVERIFY2(catalog.findings().value(0).startsWith("Faults of the word index"),
             qPrintable(catalog.findings().join('\n')));

    QuickSearch search(*catalog.session);
    const auto before = search.find("bachiana");
    if (!before) {
        catalog.messages.willAnswer(Answer::No);
        QVERIFY(!search.wantsIndexAnew());
        QVERIFY(!search.find("bachiana"));
        QVERIFY(!search.wantsIndexAnew()); // not asked with every letter
        QuickSearch again(*catalog.session);
        QVERIFY(!again.find("bachiana"));
        catalog.messages.willAnswer(Answer::Yes);
        QVERIFY(again.wantsIndexAnew());
        QVERIFY(again.makeIndexAnew(catalog.progress));
    } else {
        catalog.startWillingly();
        QVERIFY(!catalog.repaired().isEmpty());
    }
    QCOMPARE(catalog.findings(), QStringList());
    const auto after = QuickSearch(*catalog.session).find("bach");
    QVERIFY(after && !after->empty());
    QCOMPARE(catalog.session->connection().integrityFaults(), QStringList());
}

void TestCatalogCheck::brokenIndexRefusesNoSave() {
    for (const auto& [name, statements] : indexFaults) {
        Whole catalog;
        QVERIFY(TextIndex(catalog.session->connection()).build(catalog.progress));
        catalog.close();
        SQLite::Database(catalog.catalog().toStdString(), SQLite::OPEN_READWRITE).exec(statements);
        QVERIFY(catalog.start().started);
        {
            Transaction transaction(catalog.session->connection(), QStringLiteral("test"));
            QCOMPARE(catalog.run("UPDATE Rec SET RecTitle = 'Kept' WHERE RecID < 4"), 3);
            catalog.run("INSERT INTO Rec (RecTitle) VALUES ('New')");
            Recordset rows =
                Recordset::open(catalog.session->connection(), "SELECT * FROM Rec WHERE RecID = 5");
            rows.update(0, {{"RecTitle", "Kept"}});
            QCOMPARE(catalog.messages.told, QStringList()); // not before it stands
            transaction.commit();
        }
        QCOMPARE(catalog.number("SELECT COUNT(*) FROM Rec WHERE RecTitle = 'Kept'"), 4);
        if (!catalog.messages.told.isEmpty()) {
            QCOMPARE(catalog.messages.told.size(), 1);
            QVERIFY2(catalog.messages.told.front().contains("has been stored"), name);
            QVERIFY(!TextIndex(catalog.session->connection()).isCurrent());
        }
        catalog.close();
        QVERIFY(catalog.start().started);
        catalog.messages.told.clear();
        NoProgress progress;
        QVERIFY(QuickSearch(*catalog.session).prepare(progress));
        QVERIFY2(catalog.messages.told.isEmpty(), name);
    }
    // At least these two cannot be written.
    Whole catalog;
    QVERIFY(TextIndex(catalog.session->connection()).build(catalog.progress));
    catalog.close();
    SQLite::Database(catalog.catalog().toStdString(), SQLite::OPEN_READWRITE)
        .exec("DROP TABLE QuickRec_config");
    QVERIFY(catalog.start().started);
    {
        Transaction undone(catalog.session->connection(), QStringLiteral("test"));
        catalog.run("UPDATE Rec SET RecTitle = 'Gone' WHERE RecID = 1");
    }
    QCOMPARE(catalog.messages.told, QStringList());
    QCOMPARE(catalog.number("SELECT COUNT(*) FROM Rec WHERE RecTitle = 'Gone'"), 0);
    catalog.run("UPDATE Rec SET RecTitle = 'Kept' WHERE RecID = 1");
    QCOMPARE(catalog.messages.told.size(), 1);
    catalog.run("UPDATE Rec SET RecTitle = 'Kept 2' WHERE RecID = 1");
    QCOMPARE(catalog.messages.told.size(), 1); // once is enough
}

void TestCatalogCheck::failureThatIsNotOfTheIndexStays() {
    Whole catalog;
    Connection& connection = catalog.session->connection();
    QVERIFY(TextIndex(connection).build(catalog.progress));
    QVERIFY_EXCEPTION_THROWN(catalog.run("INSERT INTO Rec (RecTitle, Nothing) VALUES ('a', 'b')"), SqlError);
    QVERIFY_EXCEPTION_THROWN(catalog.run("INSERT INTO Rec (RecID, RecTitle) VALUES (1, 'again')"), SqlError);
    QVERIFY(TextIndex(connection).isCurrent());
    QCOMPARE(catalog.messages.told, QStringList());
}

// As it stands when no log belongs to it, else with what the log holds; never a byte is changed near it.
void TestCatalogCheck::checkReadsWhatCannotBeWritten() {
    Whole catalog;
    catalog.run("DELETE FROM Images");
    catalog.run("DELETE FROM Cards");
    QVERIFY(TextIndex(catalog.session->connection()).build(catalog.progress));
    const QString away = catalog.file("away # 100%");
    QVERIFY(QDir().mkpath(away));
    const QString copy = away + "/Tessaranth.tsb";
    catalog.run("UPDATE Tracks SET RecID = 99999 WHERE TrackID = 1"); // in the log still
    QVERIFY(QFileInfo(catalog.catalog() + "-wal").size() > 0);
    for (const bool withLog : {true, false}) {
        for (const char* part : {"", "-wal"}) {
            QFile::remove(copy + part);
            if (*part == 0 || withLog)
                QVERIFY(QFile::copy(catalog.catalog() + part, copy + part));
            QFile::setPermissions(copy + part, QFile::ReadOwner);
        }
        QFile::setPermissions(away, QFile::ReadOwner | QFile::ExeOwner);
        const auto before = filesOf(away);
        const CliResult result = runCli(catalog.folder(), {"--catalog", copy, "check"});
        QFile::setPermissions(away, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QCOMPARE(result.code, 1);
        QVERIFY2(result.out.contains("Tracks without a recording\t1") && result.out.contains("TrackID 1 "),
                 qPrintable(result.out + result.err));
        QVERIFY(filesOf(away) == before);
        // The same catalog with its log brought home.
        catalog.close();
        QVERIFY(catalog.start().started);
        catalog.close();
        QVERIFY(!QFileInfo::exists(catalog.catalog() + "-wal"));
    }
}

QTEST_GUILESS_MAIN(TestCatalogCheck)
#include "test_catalogcheck.moc"
