// SPDX-License-Identifier: GPL-3.0-or-later
// What cards show, read from the catalog: headings, a recording's contents, works.
#include "items/CardHeading.h"
#include "items/CardRecordings.h"
#include "recordings/RecordingContents.h"
#include "support/ItemCatalog.h"
#include "works/WorkCard.h"

#include <QDir>
#include <QFile>

using namespace tessaranth;

class TestRecordingContents : public QObject {
    Q_OBJECT

private slots:
    void init() { m_home = std::make_unique<ItemCatalog>(); }
    void headingsByKind_data();
    void headingsByKind();
    void unknownStatesShowTheDocuments();
    void stateIsStoredUnderItsCode();
    void specificationsInTheirOrder();
    void discsHaveHeadings();
    void worksNameTheirPerformersOnce();
    void artistsAreCounted();
    void workCardTellsWhatIsKnown();

private:
    QStringList rows(const ItemList& list) const;
    Session& session() const { return *m_home->session; }
    qint64 recording(const QString& columns = {}, const QString& values = {}) const {
        m_home->run("INSERT INTO Rec (RecTitle" + columns + ") VALUES ('Tosca'" + values + ")");
        return session().connection().lastKey();
    }
    std::unique_ptr<ItemCatalog> m_home;
};

QStringList TestRecordingContents::rows(const ItemList& list) const {
    QStringList result;
    for (int row = 0; row < list.rowCount(); ++row) {
        QStringList cells{list.iconKey(row)};
        for (int column = 0; column < list.columnCount(); ++column)
            cells << list.text(row, column);
        result << cells.join(u'|');
    }
    return result;
}

void TestRecordingContents::headingsByKind_data() {
    QTest::addColumn<QString>("insert");
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("subTitle");
    QTest::newRow("composer")
        << "INSERT INTO Cps (CpsLname, CpsFname, CpsY) VALUES ('Bach', 'J. S.', '1685-1750')"
        << "Cps"
        << "Composer"
        << "J. S. Bach 1685-1750"
        << "";
    QTest::newRow("composer of whom no year is stored")
        << "INSERT INTO Cps (CpsLname, CpsB) VALUES ('Anonymus', '1300')"
        << "Cps"
        << "Composer"
        << "Anonymus 1300-?"
        << "";
    QTest::newRow("performer")
        << "INSERT INTO Pfr (PfrLname, PfrFname, PfrB) VALUES ('Brendel', 'Alfred', '1931')"
        << "Pfr"
        << "Performer"
        << "Alfred Brendel (1931 - ?)"
        << "";
    QTest::newRow("ensemble") << "INSERT INTO Pfr (PfrLname, PfrFname) VALUES ('Black & White Trio', NULL)"
                              << "Pfr"
                              << "Performer"
                              << "Black & White Trio (? - ?)"
                              << "";
    QTest::newRow("recording") << "INSERT INTO Rec (RecTitle, RecSubTitle) VALUES ('Tosca', 'in three acts')"
                               << "Rec"
                               << "Recording"
                               << "Tosca"
                               << "in three acts";
    QTest::newRow("custom item") << "INSERT INTO UserDef (UserDefTitle) VALUES ('Lent to Ann')"
                                 << "UserDef"
                                 << "User defined"
                                 << "Lent to Ann"
                                 << "";
}

void TestRecordingContents::headingsByKind() {
    QFETCH(QString, insert);
    QFETCH(QString, code);
    m_home->run(insert);
    CardHeading heading;
    QVERIFY(readCardHeading(session(), code, session().connection().lastKey(), heading));
    QTEST(heading.type, "type");
    QTEST(heading.line(), "line");
    QTEST(heading.subTitle, "subTitle");
    QVERIFY(!readCardHeading(session(), code, 4711, heading));
    QVERIFY(!readCardHeading(session(), "Nonsense", 1, heading));
    QTEST(heading.type, "type");
}

void TestRecordingContents::unknownStatesShowTheDocuments() {
    QCOMPARE(cardPanelOfState("Cps", 1).name, "Comp");
    QCOMPARE(cardPanelOfState("Rec", 3).name, "RecContents");
    for (const qint64 state : {1, 2, 7, -1}) // no recording has works or recordings of a person
        QCOMPARE(cardPanelOfState("Rec", state).name, "Docs");
}

void TestRecordingContents::stateIsStoredUnderItsCode() {
    m_home->run("INSERT INTO Pfr (PfrID, PfrLname) VALUES (7, 'Gould')");
    m_home->run("INSERT INTO Pfr (PfrID, PfrLname) VALUES (8, 'Lipatti')");
    QVERIFY(saveCardState(session(), "Pfr", 7, "Media"));
    QCOMPARE(m_home->number("SELECT LastState FROM Pfr WHERE PfrID = 7"), 4);
    QCOMPARE(m_home->number("SELECT LastState FROM Pfr WHERE PfrID = 8"), 0);
    const qint64 id = recording();
    CardHeading heading;
    QVERIFY(readCardHeading(session(), "Rec", id, heading));
    QCOMPARE(heading.splitter, 50);
    QVERIFY(saveContentsState(session(), id, 2, 31));
    QVERIFY(readCardHeading(session(), "Rec", id, heading));
    QCOMPARE(heading.contentsState, 2);
    QCOMPARE(heading.splitter, 31);
}

void TestRecordingContents::specificationsInTheirOrder() {
    m_home->run("INSERT INTO Labels (LabelName) VALUES ('Decca')");
    const qint64 label = session().connection().lastKey();
    const qint64 id =
        recording(", LabelID, SupportID, ProdNbr, UnitsNbr, RefRec, Notes, AddDate",
                  QString(", %1, 1, '455 556-2', 2, True, 'live', '2021-05-08 20:30:15'").arg(label));
    RecordingContents contents(session(), id);
    RecordingContents::Specs specs;
    QVERIFY(contents.LoadRecSpecs(specs));
    QStringList lines;
    for (const CardLine& line : specs.lines)
        lines << line.label + (line.heart ? "heart" : line.value);
    QVERIFY(lines.takeAt(13).startsWith("ADDED:8")); // as the user's locale writes it
    QCOMPARE(lines,
             (QStringList{"LABEL:Decca", "PROD. #:455 556-2",
                          "SUPPORT:" + m_home->text("SELECT SupportType FROM Supports WHERE SupportID = 1"),
                          "BARCODE:", "LOCAT. #:", "SOURCE:", "UNITS:2", "SPARS:N/A", "REL. DATE:", "PRICE:",
                          "RATING:N/A", "REFERENCE:heart", "NOTES:live", "MODIFIED:"}));
    QVERIFY(specs.logoFile.isEmpty());
    QDir().mkpath(session().dataFolder(Session::Folder::Labels));
    QFile logo(session().dataFolder(Session::Folder::Labels) + '/' + QString::number(label));
    QVERIFY(logo.open(QIODevice::WriteOnly));
    QVERIFY(contents.LoadRecSpecs(specs));
    QCOMPARE(specs.logoFile, logo.fileName());
}

void TestRecordingContents::discsHaveHeadings() {
    const qint64 id = recording();
    for (const char* values :
         {"2, 1, 'Vissi d''arte', '03:20'", "1, 2, 'Te Deum', '64:10'", "1, 1, 'Recondita', ''"})
        m_home->run(QString("INSERT INTO Tracks (RecID, Disc, TrackNbr, TrackName, TrackLen) VALUES (%1, %2)")
                        .arg(id)
                        .arg(values));
    RecordingContents::Tracks tracks;
    QVERIFY(RecordingContents(session(), id).LoadRecTracks(tracks));
    QCOMPARE(rows(tracks.list),
             (QStringList{"Disc||DISC 1|1:04:10", "Track|1|Recondita|", "Track|2|Te Deum|64:10",
                          "Disc||DISC 2|03:20", "Track|1|Vissi d'arte|03:20"}));
    QVERIFY(tracks.list.isBold(0) && !tracks.list.isBold(1));
    QCOMPARE(tracks.count, 3);
    QCOMPARE(tracks.discs, 2);
}

void TestRecordingContents::worksNameTheirPerformersOnce() {
    const qint64 id = recording(), other = recording();
    m_home->run("INSERT INTO Cps (CpsID, CpsLname, CpsFname, CatAcr) VALUES (1, 'Bach', 'J. S.', 'BWV')");
    m_home->run(
        "INSERT INTO Compositions (CompID, CpsID, CompTitle, CompNbr) VALUES (1, 1, 'Magnificat', '243')");
    m_home->run("INSERT INTO Compositions (CompID, CpsID, CompTitle) VALUES (2, 1, 'Aria')");
    m_home->run("INSERT INTO Pfr (PfrID, PfrLname, PfrFname) VALUES (1, 'Ely', 'Ann')");
    m_home->run("INSERT INTO Pfr (PfrID, PfrLname) VALUES (2, 'Choir')");
    for (const auto& [performer, pos] : {std::pair(1, 2), std::pair(2, 1)})
        m_home->run(QString("INSERT INTO PfrOnRec (RecID, PfrID, Pos) VALUES (%1, %2, %3)")
                        .arg(id)
                        .arg(performer)
                        .arg(pos));
    m_home->run(QString("INSERT INTO CompOnRec (CompOnRecID, RecID, CpsID, CompID, Pos, ExtraitName) VALUES "
                        "(5, %1, 1, 1, 2, 'Et exsultavit')")
                    .arg(id));
    m_home->run(
        QString("INSERT INTO CompOnRec (CompOnRecID, RecID, CpsID, CompID, Pos) VALUES (6, %1, 1, 2, 1)")
            .arg(id));
    m_home->run(
        QString("INSERT INTO CompOnRec (CompOnRecID, RecID, CpsID, CompID, Pos) VALUES (7, %1, 1, 1, 1)")
            .arg(other));
    for (const char* values : {"5, 1, 0", "5, 1, 3", "5, 2, 0", "7, 1, 0"}) // one sings two roles
        m_home->run(
            QString("INSERT INTO CompOnRecPfr (CompOnRecID, PfrID, PersonageID) VALUES (%1)").arg(values));
    RecordingContents::Works works;
    QVERIFY(RecordingContents(session(), id).LoadRecContents(works));
    QCOMPARE(rows(works.list),
             (QStringList{"Comp|1|Bach, J. S.|Aria|",
                          "Comp|2|Bach, J. S.|Magnificat, BWV 243 (Et exsultavit)|Choir / Ann Ely"}));
    QCOMPARE(works.list.id(1), 1);
    QCOMPARE(works.performers, "Choir / Ely");
    ItemList recordings;
    QVERIFY(readWorkRecordings(session(), 1, recordings));
    QCOMPARE(recordings.rowCount(), 2);
    QVERIFY(LoadRecordings(session(), "Pfr", 2, recordings));
    QCOMPARE(recordings.rowCount(), 1);
    QCOMPARE(recordings.id(0), id);
}

void TestRecordingContents::artistsAreCounted() {
    const qint64 id = recording();
    m_home->run("INSERT INTO Cps (CpsID, CpsLname, CpsFname, CpsY) VALUES (1, 'Puccini', 'G.', '1858-1924')");
    m_home->run("INSERT INTO Pfr (PfrID, PfrLname) VALUES (1, 'Callas')");
    m_home->run(QString("INSERT INTO CpsOnRec (RecID, CpsID) VALUES (%1, 1)").arg(id));
    m_home->run(QString("INSERT INTO PfrOnRec (RecID, PfrID) VALUES (%1, 1)").arg(id));
    RecordingContents::Artists artists;
    QVERIFY(RecordingContents(session(), id).LoadRecArtists(artists));
    QCOMPARE(rows(artists.list), (QStringList{"c|Puccini, G.|1858-1924", "p|Callas|"}));
    QCOMPARE(artists.composers, 1);
    QCOMPARE(artists.performers, 1);
}

void TestRecordingContents::workCardTellsWhatIsKnown() {
    m_home->run("INSERT INTO Cps (CpsID, CpsLname, CpsFname, CatAcr) VALUES (1, 'Bach', 'J. S.', 'BWV')");
    m_home->run("INSERT INTO Compositions (CompID, CpsID, CompTitle, CompNbr, CompYear, Descr) VALUES "
                "(3, 1, 'Coffee Cantata', '211', '1735', 'Secular.')");
    m_home->run("INSERT INTO Personages (CompID, PersonageName) VALUES (3, 'Lieschen')");
    WorkCard card;
    QVERIFY(readWorkCard(session(), 3, card));
    QCOMPARE(card.text(), "Coffee Cantata\n\nCOMPOSER: J. S. Bach (?-?)\nOPUS: BWV 211\nYEAR: 1735\n"
                          "PERSONAGES: Lieschen\n\nSecular.");
    QVERIFY(exportWorkCard(session(), card, m_home->file("card.rtf")));
    QVERIFY(bytesOf(m_home->file("card.rtf")).contains("Coffee Cantata"));
    QVERIFY(!exportWorkCard(session(), card, m_home->file("no/such/folder.rtf")));
    QCOMPARE(m_home->messages.told.size(), 1);
    QVERIFY(!readWorkCard(session(), 4, card));
}

QTEST_GUILESS_MAIN(TestRecordingContents)
#include "test_recordingcontents.moc"
