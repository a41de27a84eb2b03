// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Cleanup.h"
#include "store/Maintenance.h"
#include "support/TestHome.h"
#include "support/Writing.h"

#include <QDir>
#include <QTest>

using namespace tessaranth;

class TestMaintenance : public QObject {
    Q_OBJECT

private slots:
    void emptyingKeepsTheTables();
    void backupAndCopy();
    void exitDoesWhatTheConfigurationSays();
    void cleanupMendsEveryKindOfOrphan();
    void cleanupOfASoundCatalogChangesNothing();
};

void TestMaintenance::emptyingKeepsTheTables() {
    TestHome home;
    home.useSample();
    QVERIFY(home.start().started);
    Maintenance maintenance(*home.session);
    QVERIFY(maintenance.backup(home.progress));
    QVERIFY(QFileInfo::exists(home.file("Tessaranth.bak")));
    const QStringList tables = home.session->connection().tables();
    QCOMPARE(tables.size(), 39);
    QVERIFY(maintenance.empty(home.progress));
    QCOMPARE(home.session->connection().tables(), tables);
    for (const QString& table : tables)
        QVERIFY2(table == "TsrHistory" || !home.session->connection().exists("SELECT * FROM " + table),
                 qPrintable(table)); // the history's own mark is no card
    QVERIFY(!QFileInfo::exists(home.file("Tessaranth.bak")));
}

void TestMaintenance::backupAndCopy() {
    TestHome home;
    home.useSample();
    QVERIFY(home.start().started);
    Maintenance maintenance(*home.session);
    QVERIFY(maintenance.backup(home.progress));
    QVERIFY(maintenance.compact(home.progress));

    QVERIFY(!maintenance.copyToDestination(home.progress)); // no folder is set
    home.session->configuration().write("Maintenance", "DestFolder", home.file("away"));
    QVERIFY(!maintenance.copyToDestination(home.progress)); // nor there
    home.session->configuration().write("Maintenance", "DestFolder", home.folder());
    QVERIFY(!maintenance.copyToDestination(home.progress)); // would replace the open catalog
    QCOMPARE(home.messages.told.size(), 3);
    QVERIFY(QDir().mkpath(home.file("away")));
    home.session->configuration().write("Maintenance", "DestFolder", home.file("away"));
    QVERIFY(maintenance.copyToDestination(home.progress));
    const qint64 recordings = home.session->connection().single("SELECT COUNT(*) FROM Rec").toInteger();
    home.close();

    for (const QString& copy : {home.file("Tessaranth.bak"), home.file("away/Tessaranth.tsb")}) {
        auto connection = Connection::open(copy, home.clock, newestUpgradeCode);
        QCOMPARE(connection->single("SELECT COUNT(*) FROM Rec").toInteger(), recordings);
    }
}

void TestMaintenance::exitDoesWhatTheConfigurationSays() {
    TestHome home;
    home.useSample();
    const QString backup = home.file("Tessaranth.bak");
    QVERIFY(home.start().started);
    home.session->configuration().write("Maintenance", "Backup", "0");
    shutDown(*home.session, home.progress);
    QVERIFY(!home.session->isOpen());
    QVERIFY(!QFileInfo::exists(backup));

    QVERIFY(home.start().started);
    home.session->configuration().write("Maintenance", "Backup", "1");
    write(home.session->connection(), "DELETE * FROM Tracks");
    QVERIFY(home.session->connection().freePages() > 0);
    const qint64 size = QFileInfo(home.catalog()).size();
    shutDown(*home.session, home.progress);
    QVERIFY(QFileInfo::exists(backup));
    QVERIFY(QFileInfo(home.catalog()).size() < size);

    // Nothing was changed: the backup of before stays the one it is.
    QVERIFY(home.start().started);
    QVERIFY(QFile::resize(backup, 10));
    shutDown(*home.session, home.progress);
    QCOMPARE(QFileInfo(backup).size(), 10);
}

void TestMaintenance::cleanupMendsEveryKindOfOrphan() {
    TestHome home;
    home.useSample();
    QVERIFY(home.start().started);
    Connection& connection = home.session->connection();
    const QString work = connection.single("SELECT CompOnRecID FROM CompOnRecPfr").toText();
    const QString document = home.session->dataFolder(Session::Folder::Documents) + "/1";
    for (const QString& statement : QStringList{
             "INSERT INTO CompOnRecPfr (CompOnRecID, PfrID, PersonageID) VALUES (99999, 1, 0)",
             "INSERT INTO CompOnRecPfr (CompOnRecID, PfrID, PersonageID) VALUES (" + work + ", 99999, 0)",
             "INSERT INTO PfrOnRec (RecID, PfrID) VALUES (99998, 3)",
             "INSERT INTO CompOnRec (CompOnRecID, RecID, CompID) VALUES (77777, 99998, 66666)",
             "INSERT INTO CompOnRecPfr (CompOnRecID, PfrID, PersonageID) VALUES (77777, 3, 0)",
             "INSERT INTO CompOnRecPfr (CompOnRecID, PfrID, PersonageID) VALUES (77777, 3, 0)",
             "INSERT INTO CompOnRecPfr (CompOnRecID, PfrID, PersonageID) VALUES (77777, 3, 0)",
             "INSERT INTO Tracks (RecID, Disc, TrackNbr, TrackName, TrackLen) VALUES (99999, 1, 1, 'Lost', "
             "'')",
             "INSERT INTO MainWorks (CpsID, MainWorkName) VALUES (99999, 'Lost')",
             "UPDATE Compositions SET MainWorkID = 99999, CpsGenreID = 99999 WHERE CompID = 1",
             "INSERT INTO CpsGenres (CpsID, CpsGenreName) VALUES (99999, 'Lost')",
             "INSERT INTO Personages (CompID, PersonageName) VALUES (99999, 'Lost')",
             "INSERT INTO Cards (CardID, RelatedCat, RelatedID, CardTitle) VALUES (1, 'Comp', 99999, "
             "'Descr')",
             "INSERT INTO Cards (CardID, RelatedCat, RelatedID, CardTitle) VALUES (2, 'Rec', 99999, 'Not of "
             "a work')"})
        write(connection, statement);
    QFile file(document);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    const qint64 works = connection.single("SELECT COUNT(*) FROM Compositions").toInteger();

    QStringList results;
    QVERIFY(Cleanup(*home.session).run(home.progress, [&results](const Cleanup::StepResult& result) {
        results.push_back(result.progressText + result.resultText);
    }));
    QCOMPARE(results, QStringList({"Checking for orphan records : 1 orphan records cleaned.",
                                   "Checking for bad records: 1 bad records cleaned.",
                                   "Cleaning duplicated performers: 2 duplicate performers cleaned.",
                                   "Cleaning orphan tracks: 1 orphan tracks cleaned.",
                                   "Cleaning orphan works: 1 orphan works cleaned.",
                                   "Cleaning orphan mainworks: 1 orphan mainworks cleaned.",
                                   "Fixing bad mainworks: 1 bad mainworks fixed.",
                                   "Cleaning orphan catalog genres: 1 orphan catalog genres cleaned.",
                                   "Fixing bad catalog genres: 1 bad catalog genres fixed.",
                                   "Cleaning orphan personages: 1 orphan personages cleaned.",
                                   "Cleaning orphan documents: 1 orphan documents cleaned."}));
    QVERIFY(!QFileInfo::exists(document));
    QCOMPARE(connection.single("SELECT COUNT(*) FROM Cards").toInteger(), 1);
    QCOMPARE(connection.single("SELECT COUNT(*) FROM Compositions").toInteger(), works);
    const QStringList log = QString::fromUtf8(bytesOf(home.file("Cleanup.log"))).split('\n');
    QCOMPARE(log.mid(0, 3), QStringList({QString(54, '-'), "CLEANUP IS STARTED", results.front()}));
}

void TestMaintenance::cleanupOfASoundCatalogChangesNothing() {
    TestHome home;
    home.useSample();
    QVERIFY(home.start().started);
    QStringList results;
    const qint64 changes = home.session->connection().changesOfSession();
    QVERIFY(Cleanup(*home.session).run(home.progress, [&results](const Cleanup::StepResult& result) {
        results.push_back(result.resultText);
    }));
    QCOMPARE(home.session->connection().changesOfSession(), changes);
    QCOMPARE(results.size(), 11);
    for (const QString& result : results)
        QVERIFY2(result.startsWith("No "), qPrintable(result));
}

QTEST_GUILESS_MAIN(TestMaintenance)
#include "test_maintenance.moc"
