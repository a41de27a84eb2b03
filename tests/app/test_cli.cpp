// SPDX-License-Identifier: GPL-3.0-or-later
// Every command of the command line, as a user types it.
#include "store/Upgrade.h"
#include "store/UpgradeSteps.h"
#include "support/CommandLine.h"
#include "support/TestHome.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>
#include <SQLiteCpp/SQLiteCpp.h>

using namespace tessaranth;

namespace {

/// A home whose catalog is worked on from the command line.
struct CliHome : TestHome {
    CliResult run(const QStringList& words) const { return runCli(folder(), words); }
    CliResult sql(const QString& statement) const { return run({"sql", statement}); }
    QString single(const QString& statement) const { return sql(statement).lines().value(1, "no row"); }
};

} // namespace

#define RUN(expected, result)                                                                                \
    do {                                                                                                     \
        const CliResult r = (result);                                                                        \
        QVERIFY2(r.code == (expected), qPrintable(QString::number(r.code) + ' ' + r.err));                   \
    } while (false)

class TestCli : public QObject {
    Q_OBJECT

private slots:
    void sqlPrintsRows();
    void sqlTellsWhatIsWrong_data();
    void sqlTellsWhatIsWrong();
    void sqlChangesTheCatalog();
    void upgradePrintsTheCodes();
    void checkFindsWithoutChanging();
    void checkFindsDamage();
    void compactBackupAndCopy();
    void cleanupAndEmpty();
    void configGetAndSet();
    void sampleIsWrittenOnce();
    void listsByPrefix_data();
    void listsByPrefix();
    void exchangesCatalogs();
    void wordsOfTheCommandLine_data();
    void wordsOfTheCommandLine();
    void pathsHoldWhereverTheProgramStarts();
    void lostOutputIsAFailure();
};

void TestCli::sqlPrintsRows() {
    CliHome home;
    home.useTemplate();
    RUN(0, home.sql("INSERT INTO Cps (CpsLname, CpsFname) VALUES ('Tab\there', 'two\nlines, a \\ and \"')"));
    RUN(0, home.sql("INSERT INTO Cps (CpsLname, CpsFname) VALUES ('Dvořák', Null)"));
    const QString query = "SELECT CpsID, CpsLname, CpsFname FROM Cps ORDER BY CpsID";
    QCOMPARE(home.sql(query).out, QString("CpsID\tCpsLname\tCpsFname\n"
                                          "1\tTab\\there\ttwo\\nlines, a \\\\ and \"\n"
                                          "2\tDvořák\t\n"));
    const QJsonArray rows = QJsonDocument::fromJson(home.run({"--json", "sql", query}).out.toUtf8()).array();
    QCOMPARE(rows.size(), 2);
    QCOMPARE(rows[0]["CpsFname"].toString(), QString("two\nlines, a \\ and \""));
    QCOMPARE(rows[1].toObject(), QJsonObject({{"CpsID", 2}, {"CpsLname", "Dvořák"}, {"CpsFname", {}}}));
    // No rows are still a table, and an array.
    QCOMPARE(home.sql("SELECT CpsID FROM Cps WHERE CpsID > 2").out, QString("CpsID\n"));
    QVERIFY(QJsonDocument::fromJson(
                home.run({"--json", "sql", "SELECT CpsID FROM Cps WHERE CpsID > 2"}).out.toUtf8())
                .isArray());
}

void TestCli::sqlTellsWhatIsWrong_data() {
    QTest::addColumn<QString>("statement");
    QTest::addColumn<QString>("told");
    QTest::newRow("misspelt") << "SELEC * FROM Cps"
                              << "position 0";
    QTest::newRow("cut off") << "SELECT * FROM"
                             << "position 13";
    QTest::newRow("not closed") << "DELETE * FROM Cps WHERE CpsLname = 'Bach"
                                << "position 35";
    QTest::newRow("two at once") << "DELETE * FROM Cps; DELETE * FROM Pfr"
                                 << "position 17";
    QTest::newRow("nothing") << ""
                             << "position 0";
    QTest::newRow("no such table") << "DELETE * FROM Nowhere"
                                   << "Nowhere";
    QTest::newRow("no such column") << "UPDATE Cps SET Shoe = 1"
                                    << "Shoe";
    QTest::newRow("change of no column") << "ALTER TABLE Cps ALTER COLUMN Shoe LONG"
                                         << "Shoe";
}

void TestCli::sqlTellsWhatIsWrong() {
    QFETCH(QString, statement);
    QFETCH(QString, told);
    CliHome home;
    home.useSample();
    RUN(0, home.run({"upgrade"}));
    const auto before = filesOf(home.folder());
    const CliResult result = home.sql(statement);
    QCOMPARE(result.code, 1);
    QVERIFY2(result.err.contains(told), qPrintable(result.err));
    QVERIFY(result.out.isEmpty());
    QVERIFY(filesOf(home.folder()) == before);
}

void TestCli::sqlChangesTheCatalog() {
    CliHome home;
    home.useTemplate();
    for (const char* name : {"One", "Two", "Three"})
        RUN(0, home.sql(QString("INSERT INTO Labels (LabelName) VALUES ('%1')").arg(name)));
    const CliResult changed = home.sql("UPDATE Labels SET LabelName = 'T' WHERE LabelName LIKE 'T%'");
    QCOMPARE(changed.code, 0);
    QVERIFY(changed.out.isEmpty());
    QCOMPARE(changed.err, QString("2 row(s) changed\n"));
    QCOMPARE(home.single("SELECT COUNT(*) FROM Labels WHERE LabelName = 'T'"), QString("2"));
    RUN(0, home.sql("ALTER TABLE Labels ALTER COLUMN LabelName VARCHAR(300)"));
    QVERIFY(TestHome::schemaOf(home.catalog()).join('\n').contains("VARCHAR(300)"));
    QCOMPARE(home.single("SELECT COUNT(*) FROM Labels"), QString("3"));
}

void TestCli::upgradePrintsTheCodes() {
    CliHome home;
    home.useOldest();
    QStringList codes;
    for (const UpgradeStep& step : upgradeSteps())
        codes.push_back(QString::number(step.code));
    const CliResult first = home.run({"upgrade"});
    QCOMPARE(first.code, 0);
    QCOMPARE(first.lines(), codes);
    QCOMPARE(home.single("SELECT COUNT(*) FROM WKeys"), QString("120"));
    const auto before = filesOf(home.folder());
    const CliResult second = home.run({"upgrade"});
    QCOMPARE(second.code, 0);
    QVERIFY(second.out.isEmpty() && second.err.isEmpty());
    QVERIFY(filesOf(home.folder()) == before);
    TestHome fresh;
    fresh.useTemplate();
    QCOMPARE(TestHome::schemaOf(home.catalog()), TestHome::schemaOf(fresh.catalog()));
}

void TestCli::checkFindsWithoutChanging() {
    CliHome home;
    home.useOldest();
    QByteArray before = bytesOf(home.catalog());
    const CliResult older = home.run({"check"});
    QCOMPARE(older.code, 1);
    QVERIFY2(older.err.contains("older version"), qPrintable(older.err));
    QVERIFY(bytesOf(home.catalog()) == before);

    home.useSample();
    before = bytesOf(home.catalog());
    const CliResult sound = home.run({"check"});
    QVERIFY2(sound.code == 0, qPrintable(sound.out));
    QCOMPARE(sound.lines().size(), 1);
    QVERIFY(bytesOf(home.catalog()) == before);

    RUN(0, home.sql("INSERT INTO Tracks (RecID, Disc, TrackNbr, TrackName, TrackLen) VALUES (99999, 1, 1, "
                    "'Lost', '')"));
    RUN(0, home.sql("INSERT INTO Images (RelatedCat, RelatedID, ImageTitle) VALUES ('Cps', 1, 'Portrait')"));
    const auto all = filesOf(home.folder());
    const CliResult faulty = home.run({"check"});
    QCOMPARE(faulty.code, 1);
    const QString image = home.file("Tessaranth_Images/") + home.single("SELECT MAX(ImageID) FROM Images");
    QCOMPARE(faulty.lines(),
             QStringList({"Check\tFound\tWhich",
                          "Tracks without a recording\t1\tTrackID " +
                              home.single("SELECT MAX(TrackID) FROM Tracks") + " (RecID 99999)",
                          "Pictures and documents whose file is missing\t1\t" + image}));
    QVERIFY(filesOf(home.folder()) == all);
}

void TestCli::checkFindsDamage() {
    CliHome home;
    home.useSample();
    qint64 page = 0;
    {
        SQLite::Database database(home.catalog().toStdString(), SQLite::OPEN_READONLY);
        page = database
                   .execAndGet("SELECT rootpage FROM sqlite_schema WHERE type = 'index' AND tbl_name = "
                               "'Labels' AND sql IS NOT NULL")
                   .getInt64();
    }
    QVERIFY(page > 1);
    {
        QFile file(home.catalog());
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.seek(page * 4096 - 200));
        file.write(QByteArray(200, '\x7f'));
    }
    const QByteArray before = bytesOf(home.catalog());
    const CliResult result = home.run({"check"});
    QCOMPARE(result.code, 1);
    QVERIFY2(result.out.contains("\nFaults in the structure of the file\t"), qPrintable(result.out));
    QVERIFY(bytesOf(home.catalog()) == before);
}

void TestCli::compactBackupAndCopy() {
    CliHome home;
    home.useSample();
    RUN(0, home.sql("DELETE * FROM Tracks"));
    const qint64 size = QFileInfo(home.catalog()).size();
    RUN(0, home.run({"maintain", "compact"}));
    QVERIFY(QFileInfo(home.catalog()).size() < size);

    RUN(0, home.run({"maintain", "backup"}));
    const CliResult unset = home.run({"maintain", "copy"});
    QCOMPARE(unset.code, 1);
    QVERIFY(unset.err.contains("No folder"));
    const QString away = home.file("away");
    QVERIFY(QDir().mkpath(away));
    RUN(0, home.run({"config", "set", "Maintenance", "DestFolder", away}));
    RUN(0, home.run({"maintain", "copy"}));
    const QString count = home.single("SELECT COUNT(*) FROM Rec");
    QVERIFY(count.toInt() >= 60);
    for (const QString& copy : {home.file("Tessaranth.bak"), away + "/Tessaranth.tsb"}) {
        const CliResult there = home.run({"--catalog", copy, "sql", "SELECT COUNT(*) FROM Rec"});
        QCOMPARE(there.lines().value(1), count);
    }
}

void TestCli::cleanupAndEmpty() {
    CliHome home;
    home.useSample();
    RUN(0, home.sql("INSERT INTO MainWorks (CpsID, MainWorkName) VALUES (99999, 'Lost')"));
    const CliResult cleaned = home.run({"maintain", "cleanup"});
    QCOMPARE(cleaned.code, 0);
    QCOMPARE(cleaned.lines().size(), 11);
    QVERIFY(cleaned.lines().contains("Cleaning orphan mainworks: 1 orphan mainworks cleaned."));
    RUN(0, home.run({"check"}));

    RUN(0, home.run({"maintain", "backup"}));
    const auto before = filesOf(home.folder());
    const CliResult refused = home.run({"maintain", "empty"});
    QCOMPARE(refused.code, 1);
    QVERIFY2(refused.err.contains("--yes"), qPrintable(refused.err));
    QVERIFY(filesOf(home.folder()) == before);
    RUN(0, home.run({"maintain", "empty", "--yes"}));
    QCOMPARE(home.single("SELECT COUNT(*) FROM Rec"), QString("0"));
    QCOMPARE(home.single("SELECT COUNT(*) FROM Supports"), QString("0"));
    QVERIFY(!QFileInfo::exists(home.file("Tessaranth.bak")));
}

void TestCli::configGetAndSet() {
    CliHome home; // works without a catalog
    QCOMPARE(home.run({"config", "get", "Misc", "FreeDB"}).out, QString("\n"));
    RUN(0, home.run({"config", "set", "Misc", "FreeDB", "host.example"}));
    RUN(0, home.run({"config", "set", "Proxy settings", "Username", "Zoë = \"x\""}));
    QCOMPARE(home.run({"config", "get", "misc", "freedb"}).out, QString("host.example\n"));
    QCOMPARE(home.run({"config", "get", "Proxy settings", "Username"}).out, QString("Zoë = \"x\"\n"));
    RUN(0, home.run({"config", "set", "Misc", "FreeDB", ""}));
    QCOMPARE(home.run({"config", "get", "Misc", "FreeDB"}).out, QString("\n"));
}

void TestCli::sampleIsWrittenOnce() {
    CliHome home;
    const QString file = home.file("mine.tsb");
    // The log of a catalog that was deleted since must not be played into the new one.
    QFile log(file + "-wal");
    QVERIFY(log.open(QIODevice::WriteOnly) && log.write(QByteArray(5000, 'x')) == 5000);
    log.close();
    RUN(0, home.run({"sample", file}));
    QVERIFY(!log.exists());
    RUN(0, home.run({"--catalog", file, "check"}));
    const auto before = filesOf(home.folder());
    const CliResult again = home.run({"sample", file});
    QCOMPARE(again.code, 1);
    QVERIFY2(again.err.contains(file) && again.err.contains("exists already"), qPrintable(again.err));
    QVERIFY(filesOf(home.folder()) == before);
    const CliResult nowhere = home.run({"sample", home.file("no/such/folder/x.tsb")});
    QCOMPARE(nowhere.code, 1);
    QVERIFY2(nowhere.err.contains("no/such/folder/x.tsb cannot be written"), qPrintable(nowhere.err));
}

void TestCli::listsByPrefix_data() {
    QTest::addColumn<QString>("prefix");
    QTest::addColumn<QStringList>("titles");
    QTest::newRow("case") << "dvoř" << QStringList("Dvořák, Antonín");
    QTest::newRow("upper case, accent") << "DVOŘ" << QStringList("Dvořák, Antonín");
    QTest::newRow("accents count") << "Dvor" << QStringList();
    QTest::newRow("apostrophe") << "d'I" << QStringList("d'Indy");
    QTest::newRow("quote") << "\"Q" << QStringList("\"Quoted\" & <b>");
    QTest::newRow("percent") << "100%" << QStringList("100% sure");
    QTest::newRow("percent alone") << "%" << QStringList();
    QTest::newRow("bracket") << "[" << QStringList("[sic]");
    QTest::newRow("underscore") << "_" << QStringList();
}

void TestCli::listsByPrefix() {
    QFETCH(QString, prefix);
    QFETCH(QStringList, titles);
    CliHome home;
    home.useTemplate();
    {
        SQLite::Database database(home.catalog().toStdString(), SQLite::OPEN_READWRITE);
        database.exec("INSERT INTO UserDef (UserDefTitle) VALUES ('Dvořák, Antonín'), ('d''Indy'), "
                      "('\"Quoted\" & <b>'), ('100% sure'), ('1000'), ('[sic]')");
    }
    const CliResult result = home.run({"list", "UserDef", prefix});
    QCOMPARE(result.code, 0);
    QStringList found;
    for (const QString& line : result.lines().mid(1))
        found.push_back(line.section('\t', 1, 1));
    QCOMPARE(found, titles);
    if (titles.size() == 1) {
        const QByteArray json = home.run({"--json", "list", "UserDef", prefix}).out.toUtf8();
        QCOMPARE(QJsonDocument::fromJson(json).array().size(), 1);
    }
}

void TestCli::exchangesCatalogs() {
    CliHome home;
    home.useTemplate();
    RUN(0, home.sql("INSERT INTO Cps (CpsLname, CpsFname) VALUES ('Mozart', 'Wolfgang Amadeus')"));
    const QString shipped = TESSARANTH_SHARE "/catalogs/Wolfgang_Amadeus_Mozart.tcat";
    QCOMPARE(home.run({"catalog", "remove", "1", "--yes"}).code, 1);
    QCOMPARE(home.run({"catalog", "import", "2", shipped}).code, 1);
    const CliResult imported = home.run({"catalog", "import", "1", shipped});
    QCOMPARE(imported.code, 0);
    const QString works = home.single("SELECT COUNT(*) FROM Compositions");
    QVERIFY(works.toInt() > 500);
    QCOMPARE(imported.err, QString("Done.\n%1 new, 0 there already.\n").arg(works));
    QCOMPARE(home.run({"catalog", "import", "1", shipped}).err,
             QString("Done.\n0 new, %1 there already.\n").arg(works));
    RUN(0, home.run({"catalog", "export", "1", home.file("out.tcat")}));
    QVERIFY(QFile::exists(home.file("out.tcat")));
    QCOMPARE(home.run({"catalog", "import", "1", home.file("Tessaranth.tsb")}).code, 1);
    QCOMPARE(home.run({"catalog", "remove", "1"}).code, 1); // nobody to ask
    RUN(0, home.run({"catalog", "remove", "1", "--yes"}));
    for (const char* table : {"Compositions", "CpsGenres", "MainWorks", "Catalogs"})
        QCOMPARE(home.single(QString("SELECT COUNT(*) FROM %1").arg(table)), QString("0"));
}

void TestCli::wordsOfTheCommandLine_data() {
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<int>("code");
    const QList<QStringList> wrong{{},
                                   {"frobnicate"},
                                   {"sql"},
                                   {"sql", "SELECT 1 FROM Cps", "more"},
                                   {"list"},
                                   {"list", "Composer"},
                                   {"maintain"},
                                   {"maintain", "tidy"},
                                   {"maintain", "compact", "--yes"},
                                   {"config"},
                                   {"config", "get", "Misc"},
                                   {"config", "set", "Misc", "Menu"},
                                   {"sample"},
                                   {"upgrade", "now"},
                                   {"--catalog"},
                                   {"--no-such-option", "check"}};
    for (const QStringList& words : wrong)
        QTest::addRow("wrong: %s", qPrintable(words.join(' '))) << words << 2;
    for (const QStringList& words :
         QList<QStringList>{{"--help"}, {"sql", "--help"}, {"maintain", "empty", "--help"}, {"--version"}})
        QTest::addRow("%s", qPrintable(words.join(' '))) << words << 0;
}

void TestCli::wordsOfTheCommandLine() {
    QFETCH(QStringList, words);
    QFETCH(int, code);
    CliHome home;
    const auto before = filesOf(home.folder());
    const CliResult result = home.run(words);
    QCOMPARE(result.code, code);
    QCOMPARE(result.err.isEmpty(), code == 0);
    QCOMPARE(result.out.isEmpty(), code != 0);
    QVERIFY(filesOf(home.folder()) == before);
}

void TestCli::pathsHoldWhereverTheProgramStarts() {
    TestHome home;
    home.useSample();
    QVERIFY(QDir().mkpath(home.file("elsewhere")));
    const CliOptions inside{.workingFolder = home.folder()};
    RUN(0, runCli(".", {"--catalog", "Tessaranth.tsb", "upgrade"}, inside));
    const CliOptions elsewhere{.workingFolder = home.file("elsewhere")};
    const CliResult result = runCli(home.folder(), {"list", "Rec"}, elsewhere);
    QVERIFY2(result.code == 0 && result.lines().size() > 60, qPrintable(result.err));
    QCOMPARE(runCli(home.folder(), {"config", "get", "Data folders", "Media"}).out,
             home.file("Tessaranth_Media") + '\n');
}

void TestCli::lostOutputIsAFailure() {
    if (!QFileInfo::exists("/dev/full"))
        QSKIP("this system has no file that is always full");
    TestHome home;
    home.useSample();
    for (const QStringList& words :
         {QStringList{"list", "Rec"}, QStringList{"config", "get", "Misc", "Menu"}}) {
        const CliResult result = runCli(home.folder(), words, {.outputFile = "/dev/full"});
        QCOMPARE(result.code, 1);
        QVERIFY(result.err.contains("could not be written"));
    }
}

QTEST_GUILESS_MAIN(TestCli)
#include "test_cli.moc"
