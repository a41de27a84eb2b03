// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/StepFiles.h"
#include "support/CommandLine.h"
#include "support/TestHome.h"
#include "support/Writing.h"
#include "text/RichText.h"
#include "works/CWKS.h"
#include "works/ComposerCatalog.h"
#include "works/KeyNames.h"
#include "works/WorkDescription.h"
#include "works/WorkGroups.h"

#include <QDir>
#include <QTest>

using namespace tessaranth;

class TestWorks : public QObject {
    Q_OBJECT

private slots:
    void init();
    void listsSayWhatTheWorkIs();
    void numbersFollowTheAcronym_data();
    void numbersFollowTheAcronym();
    void worksStandInCatalogueOrder();
    void goneIsRefused();
    void everyFieldIsKeptAsTyped_data();
    void everyFieldIsKeptAsTyped();
    void refusesWhatCannotBeStored();
    void groupsAreAddedOnce();
    void charactersAreTypedAndRenamed();
    void charactersAreImported();
    void deletingOneTakesItsCharacters();
    void deletingSeveralLeavesTheirCharacters();
    void descriptionIsADocument();
    void descriptionThatFailsLeavesNothing();
    void keysAreRenamed();
    void commandLineWorksOnWorks();

private:
    qint64 add(const QString& title, const QString& number = {});
    qint64 count(const QString& from) const {
        return m_home->session->connection().single("SELECT COUNT(*) FROM " + from).toInteger();
    }
    QStringList cells(const ItemList& list, int column) const;
    QStringList characters(qint64 work);
    QString write(const QString& name, const QByteArray& bytes) const;
    QString documents() const { return m_home->session->dataFolder(Session::Folder::Documents); }
    QStringList inDocuments() const {
        return QDir(documents()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    std::unique_ptr<TestHome> m_home;
    std::unique_ptr<CWKS> m_works;
    qint64 m_composer = 0;
};

void TestWorks::init() {
    m_works.reset();
    m_home = std::make_unique<TestHome>();
    m_home->useTemplate();
    QVERIFY(m_home->start().started);
    Connection& connection = m_home->session->connection();
    tessaranth::write(connection,
                      "INSERT INTO Cps (CpsLname, CpsFname, CatAcr) VALUES ('Bach', 'J. S.', 'BWV')");
    m_composer = connection.lastKey();
    m_works = std::make_unique<CWKS>(*m_home->session);
}

qint64 TestWorks::add(const QString& title, const QString& number) {
    Work work;
    work.composer = m_composer;
    work.title = title;
    work.number = number;
    return m_works->AggiungiWork(work) ? work.id : 0;
}

QStringList TestWorks::cells(const ItemList& list, int column) const {
    QStringList texts;
    for (int row = 0; row < list.rowCount(); ++row)
        texts.push_back(list.text(row, column));
    return texts;
}

QStringList TestWorks::characters(qint64 work) {
    ItemList list;
    return m_works->PersInLv(work, list) ? cells(list, 0) : QStringList("failed");
}

QString TestWorks::write(const QString& name, const QByteArray& bytes) const {
    QFile file(m_home->file(name));
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? file.fileName() : QString();
}

void TestWorks::listsSayWhatTheWorkIs() {
    const qint64 tenth = add("Tenth", "10");
    const qint64 second = add("Second", "2");
    const qint64 none = add("Without number");
    WorkGroups groups(*m_home->session, m_composer);
    Work work = m_works->work(tenth);
    work.mainWork = groups.addNamed(WorkGroups::MainWorks, "The Art");
    work.composerGenre = groups.addNamed(WorkGroups::Genres, "Fugues");
    work.year = "1740-46";
    work.description = "  Two lines:\nsecond ";
    QVERIFY(m_works->ModificaWork(work));
    tessaranth::write(m_home->session->connection(),
                      QString("UPDATE Compositions SET InCollection = True WHERE CompID = %1").arg(second));

    ItemList shorter, complete;
    QVERIFY(m_works->ElencoInLvS(m_composer, shorter));
    QCOMPARE(cells(shorter, 0), QStringList({"Without number", "Second", "Tenth"}));
    QCOMPARE(shorter.id(0), none);
    QVERIFY(m_works->ElencoInLvC(m_composer, complete));
    QCOMPARE(cells(complete, 1), QStringList({"", "BWV 2", "BWV 10"}));
    QCOMPARE(cells(complete, 6), QStringList({"", "*", ""}));
    QStringList tenths;
    for (int column = 0; column < complete.columnCount(); ++column)
        tenths.push_back(complete.text(2, column));
    QCOMPARE(tenths,
             QStringList({"Tenth", "BWV 10", "", "The Art", "Fugues", "1740-46", "", "Two lines:\nsecond"}));
    // A list of nobody's works is empty, and replaces what was there.
    QVERIFY(m_works->ElencoInLvC(m_composer + 1, complete));
    QCOMPARE(complete.rowCount(), 0);
}

void TestWorks::numbersFollowTheAcronym_data() {
    QTest::addColumn<QString>("acronym");
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("shown");
    QTest::newRow("digits") << "BWV"
                            << "1001"
                            << "BWV 1001";
    QTest::newRow("written out") << "Op."
                                 << "WoO 59"
                                 << "WoO 59";
    QTest::newRow("no number") << "BWV"
                               << ""
                               << "";
    for (const auto& [acronym, number, shown] :
         {std::tuple("Hob.", "I:101", "Hob. I:101"), std::tuple("Hob.", "XVI:52", "Hob. XVI:52"),
          std::tuple("BWV", "Anh. 114", "BWV Anh. 114"), std::tuple("BWV", "bwv 988", "bwv 988"),
          std::tuple("Op.", "Hess 12", "Hess 12"), std::tuple("Op.", "B. 49", "B. 49"),
          std::tuple("KV", "K. 331", "K. 331"), std::tuple("B.", "D:2", "B. D:2"),
          std::tuple("D", "960", "D 960"), std::tuple("Op.", "Opposites", "Op. Opposites")})
        QTest::newRow(shown) << acronym << number << shown;
    QTest::newRow("no acronym") << ""
                                << "12 no. 3"
                                << "12 no. 3";
}

// As catalogues are read: groups by their Roman numerals, appendices and other catalogues behind the numbers.
void TestWorks::worksStandInCatalogueOrder() {
    const QStringList order{"",       "2",       "BWV 9",     "10",    "10/2",   "10a",
                            "101",    "II:1",    "IX:1",      "X:2",   "XVI:52", "XVIII:1",
                            "Anh. 2", "Anh. 10", "Anh. II 3", "WoO 1", "WoO 59"};
    for (qsizetype i = 0; i < order.size(); ++i) // in an order that helps nobody
        QVERIFY(add(QString::number((i * 7) % order.size()), order[(i * 7) % order.size()]) != 0);
    ItemList works;
    QVERIFY(m_works->ElencoInLvS(m_composer, works));
    QCOMPARE(cells(works, 1), order);
    QVERIFY(ComposerCatalog(*m_home->session, m_composer).works(CatalogBranch::Genres, {}, works));
    QStringList titles;
    for (qsizetype i = 0; i < order.size(); ++i)
        titles << QString::number(i);
    QCOMPARE(cells(works, 0), titles);
}

void TestWorks::numbersFollowTheAcronym() {
    QFETCH(QString, acronym);
    QFETCH(QString, number);
    QTEST(CWKS::numberText(acronym, number), "shown");
}

// A work without composer would be in no list.
void TestWorks::goneIsRefused() {
    Work work = m_works->work(add("Kept", "1"));
    tessaranth::write(m_home->session->connection(), "DELETE FROM Cps");
    QCOMPARE(add("Of nobody"), 0);
    QCOMPARE(WorkGroups(*m_home->session, m_composer).addNamed(WorkGroups::Genres, "Of nobody"), 0);
    QCOMPARE(ComposerCatalog(*m_home->session, m_composer).addNamed(CatalogBranch::MainWorks, "Of nobody"),
             0);
    tessaranth::write(m_home->session->connection(), "DELETE FROM Compositions");
    QVERIFY(!m_works->ModificaWork(work));
    QCOMPARE(m_home->messages.told, QStringList(3, "This card has been deleted meanwhile.")
                                        << "This work has been deleted meanwhile.");
    for (const char* table : {"Compositions", "CpsGenres", "MainWorks"})
        QCOMPARE(count(table), 0);
}

void TestWorks::everyFieldIsKeptAsTyped_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("kept");
    QTest::newRow("quote") << "L'Orfeo ''"
                           << "L'Orfeo ''";
    QTest::newRow("pattern") << "100% _ [a] *?"
                             << "100% _ [a] *?";
    QTest::newRow("sql") << "'); DROP--"
                         << "'); DROP--";
    QTest::newRow("NUL") << QString("a") + QChar(0) + "b"
                         << "a b";
    QTest::newRow("lines") << "a\r\nb\t"
                           << "a  b";
    QTest::newRow("beyond the first plane") << "Fuge 🎻 𝄞"
                                            << "Fuge 🎻 𝄞";
    QTest::newRow("other scripts") << "Хованщина 春の海"
                                   << "Хованщина 春の海";
}

void TestWorks::everyFieldIsKeptAsTyped() {
    QFETCH(QString, typed);
    QFETCH(QString, kept);
    Work work;
    work.composer = m_composer;
    work.title = work.subtitle = work.number = work.year = typed;
    work.description = typed + QString(10'000, 'x');
    QVERIFY(m_works->AggiungiWork(work));
    const Work read = m_works->work(work.id);
    for (const QString& text : {read.title, read.subtitle, read.number, read.year})
        QCOMPARE(text, kept);
    QCOMPARE(read.description.size(), QString(typed).remove(QChar(0)).size() + 10'000);
    QVERIFY(m_works->addCharacter(work.id, typed) != 0);
    QCOMPARE(characters(work.id), QStringList(kept));
    QCOMPARE(m_works->addCharacter(work.id, typed), 0); // found again, so it counts as the same
    QCOMPARE(m_home->messages.told.back(), kept + " is already in archive!");
    WorkGroups groups(*m_home->session, m_composer);
    const qint64 genre = groups.addNamed(WorkGroups::Genres, typed);
    QCOMPARE(groups.find(WorkGroups::Genres, typed), genre);
    QVERIFY(groups.addNamed(WorkGroups::Genres, "Another") != 0);
    QCOMPARE(count("CpsGenres"), 2);
}

void TestWorks::refusesWhatCannotBeStored() {
    const QString tooLong(10'000, 'x');
    const qint64 id = add("Kept");
    for (QString Work::*field : {&Work::title, &Work::subtitle, &Work::number, &Work::year}) {
        Work work = m_works->work(id);
        work.*field = tooLong;
        QVERIFY(!m_works->ModificaWork(work));
        QVERIFY(m_home->messages.told.back().contains("at most"));
    }
    for (const QString& title : {QString(), QString(" \t"), QString(QChar(0))}) {
        QCOMPARE(add(title), 0);
        QCOMPARE(m_home->messages.told.back(), "At least you must insert the work title.");
    }
    QCOMPARE(m_works->addCharacter(id, tooLong), 0);
    QCOMPARE(m_works->addCharacter(id, "  "), 0);
    QCOMPARE(WorkGroups(*m_home->session, m_composer).addNamed(WorkGroups::MainWorks, tooLong), 0);
    QCOMPARE(count("Compositions"), 1);
    QCOMPARE(m_works->work(id).title, "Kept");
    QCOMPARE(count("Personages") + count("MainWorks"), 0);

    // The work goes while its editor is open.
    Work gone = m_works->work(id);
    m_home->messages.willAnswer(Answer::Yes);
    QVERIFY(m_works->EliminaWork(id));
    QVERIFY(!m_works->ModificaWork(gone));
    QCOMPARE(m_works->addCharacter(id, "Nobody"), 0);
    QCOMPARE(m_works->importCharacters(id, write("list.txt", "Nobody\n")), -1);
    QVERIFY(!WorkDescription(*m_home->session, id).write(RichText::fromText("Nothing")));
    QVERIFY(!m_works->EliminaWork(id));
    QCOMPARE(count("Compositions") + count("Personages") + count("Cards"), 0);
}

void TestWorks::groupsAreAddedOnce() {
    WorkGroups groups(*m_home->session, m_composer);
    m_home->messages.willType("Mass in B minor");
    const qint64 mass = groups.add(WorkGroups::MainWorks);
    QVERIFY(mass != 0);
    QCOMPARE(m_home->messages.nameRequests.back().title, "New Main work");
    m_home->messages.willType("MASS IN B MINOR");
    QCOMPARE(groups.add(WorkGroups::MainWorks), 0);
    QCOMPARE(m_home->messages.told.back(), "MASS IN B MINOR is already in archive!");
    m_home->messages.willType("");
    QCOMPARE(groups.add(WorkGroups::Genres), 0);
    // Another composer may have one of the same name.
    tessaranth::write(m_home->session->connection(), "INSERT INTO Cps (CpsLname) VALUES ('Other')");
    QVERIFY(WorkGroups(*m_home->session, m_composer + 1).addNamed(WorkGroups::MainWorks, "Mass in B minor"));
    QCOMPARE(groups.groups(WorkGroups::MainWorks).size(), 1u);
}

void TestWorks::charactersAreTypedAndRenamed() {
    const qint64 work = add("Matthew Passion");
    const qint64 peter = m_works->addCharacter(work, " Petrus ");
    const qint64 judas = m_works->addCharacter(work, "Judas");
    QVERIFY(m_works->renameCharacter(peter, "Peter's"));
    QVERIFY(!m_works->renameCharacter(peter, "JUDAS"));
    QVERIFY(!m_works->renameCharacter(peter, QString(10'000, 'x')));
    QVERIFY(!m_works->renameCharacter(peter, "  "));
    QVERIFY(m_works->renameCharacter(judas, "judas")); // its own name in another case
    QCOMPARE(characters(work), QStringList({"judas", "Peter's"}));
    QVERIFY(m_home->session->connection().exists("SELECT * FROM Compositions WHERE Pers = True"));
    tessaranth::write(
        m_home->session->connection(),
        QString("INSERT INTO CompOnRecPfr (CompOnRecID, PfrID, PersonageID) VALUES (1, 1, %1)").arg(judas));
    QVERIFY(m_works->deleteCharacters({peter, judas}));
    QCOMPARE(count("Personages"), 0);
    QCOMPARE(count("CompOnRecPfr WHERE PersonageID = 0"), 1); // the singer stays, without a role
    QVERIFY(!m_home->session->connection().exists("SELECT * FROM Compositions WHERE Pers = True"));
}

void TestWorks::charactersAreImported() {
    const qint64 work = add("Don Giovanni");
    m_works->addCharacter(work, "Leporello");
    const QString file =
        write("roles.txt", "\xEF\xBB\xBF"
                           "Don Giovanni\r\n\r\nLEPORELLO\r\n  Donna Elvira \nDonna Elvira\nL'ospite 100%\n"
                           "Zdeňka");
    QCOMPARE(m_works->importCharacters(work, file), 4);
    QCOMPARE(characters(work),
             QStringList({"Don Giovanni", "Donna Elvira", "L'ospite 100%", "Leporello", "Zdeňka"}));
    QCOMPARE(m_works->importCharacters(work, file), 0);
    QCOMPARE(m_works->importCharacters(work, write("old.txt", "M\xE9lisande")), 1); // Windows-1252
    QVERIFY(characters(work).contains("Mélisande"));
    // All or nothing: the line that is too long comes after a good one.
    QCOMPARE(m_works->importCharacters(work, write("long.txt", "Good\n" + QByteArray(10'000, 'x'))), -1);
    QVERIFY(m_home->messages.told.back().startsWith("Line 2"));
    QCOMPARE(m_works->importCharacters(work, m_home->file("missing.txt")), -1);
    QCOMPARE(count("Personages"), 6);
}

void TestWorks::deletingOneTakesItsCharacters() {
    const qint64 work = add("L'Orfeo");
    const qint64 other = add("Kept");
    m_works->addCharacter(work, "Orfeo");
    m_works->addCharacter(other, "Euridice");
    QVERIFY(WorkDescription(*m_home->session, work).write(RichText::fromText("Long")));
    QVERIFY(WorkDescription(*m_home->session, other).write(RichText::fromText("Stays")));
    Connection& connection = m_home->session->connection();
    for (const qint64 id : {work, other}) {
        tessaranth::write(connection,
                          QString("INSERT INTO CompOnRec (CompID, RecID) VALUES (%1, 1)").arg(id));
        tessaranth::write(connection, QString("INSERT INTO CompOnRecPfr (CompOnRecID, PfrID) VALUES (%1, 1)")
                                          .arg(connection.lastKey()));
    }
    QCOMPARE(QDir(documents()).entryList(QDir::Files).size(), 2);

    m_home->messages.willAnswer(Answer::No);
    QVERIFY(!m_works->EliminaWork(work));
    QCOMPARE(count("Compositions"), 2);
    m_home->messages.willAnswer(Answer::Yes);
    QVERIFY(m_works->EliminaWork(work));
    QCOMPARE(m_home->messages.asked.back().title, "Delete work");
    QCOMPARE(m_home->messages.asked.back().text,
             "Do you want permanently delete: \nL'Orfeo ?\n\nDeleted too: 1 document");
    for (const char* table : {"Compositions", "Personages", "Cards", "CompOnRec", "CompOnRecPfr"})
        QCOMPARE(count(table), 1);
    QCOMPARE(characters(other), QStringList("Euridice"));
    QCOMPARE(QDir(documents()).entryList(QDir::Files).size(), 1);
}

void TestWorks::deletingSeveralLeavesTheirCharacters() {
    const qint64 first = add("First");
    const qint64 second = add("Second");
    add("Kept");
    m_works->addCharacter(first, "Stays");
    QVERIFY(WorkDescription(*m_home->session, second).write(RichText::fromText("Goes")));
    QVERIFY(!m_works->EliminaWorkBatch({})); // does not ask
    m_home->messages.willAnswer(Answer::Yes);
    QVERIFY(m_works->EliminaWorkBatch({first, second}));
    QCOMPARE(m_home->messages.asked.back().title, "Delete works");
    QCOMPARE(m_home->messages.asked.back().text,
             "2 works will be permanently deleted: \nFirst\nSecond\nConfirm?\n\nDeleted too: 1 document");
    QCOMPARE(count("Compositions"), 1);
    QCOMPARE(count("Personages"), 1);
    QCOMPARE(count("Cards"), 0);
    QCOMPARE(inDocuments(), QStringList(StepFiles::historyFolder)); // from where it can be taken back
}

void TestWorks::descriptionIsADocument() {
    const qint64 work = add("Winterreise");
    Connection& connection = m_home->session->connection();
    tessaranth::write(connection, QString("INSERT INTO Cards (RelatedCat, RelatedID, CardTitle, OrderNbr) "
                                          "VALUES ('Comp', %1, 'Notes', 4)")
                                      .arg(work));
    WorkDescription description(*m_home->session, work);
    QVERIFY(description.document() == 0 && !description.read());
    const QByteArray text = RichText::fromText("Fremd bin ich \\eingezogen {1}\n\tüber 春 🎻\n\nEnde");
    QVERIFY(description.write(text));
    QCOMPARE(description.read().value(), text);
    QCOMPARE(connection.single("SELECT OrderNbr FROM Cards WHERE CardTitle = 'Descr'").toInteger(), 5);
    const qint64 document = description.document();
    QVERIFY(QFile::exists(documents() + '/' + QString::number(document)));
    QVERIFY(description.write(RichText::fromText("Shorter"))); // the same document
    QCOMPARE(description.document(), document);
    QCOMPARE(RichText::toText(description.read().value()), "Shorter");

    m_home->messages.willAnswer(Answer::No);
    QVERIFY(!description.remove());
    m_home->messages.willAnswer(Answer::Yes);
    QVERIFY(description.remove());
    QCOMPARE(m_home->messages.asked.back().text, "Do you want to remove this description?");
    QCOMPARE(count("Cards"), 1);
    QCOMPARE(inDocuments(), QStringList(StepFiles::historyFolder)); // from where it can be taken back
}

void TestWorks::descriptionThatFailsLeavesNothing() {
    const qint64 work = add("Winterreise");
    // A file stands where the documents' folder should be.
    QDir(documents()).removeRecursively();
    QFile blocker(documents());
    QVERIFY(blocker.open(QIODevice::WriteOnly));
    QVERIFY(!WorkDescription(*m_home->session, work).write(RichText::fromText("Lost")));
    QVERIFY(m_home->messages.told.back().contains("cannot be written"));
    QCOMPARE(count("Cards"), 0);
}

void TestWorks::keysAreRenamed() {
    KeyNames keys(*m_home->session);
    ItemList list;
    QVERIFY(keys.list(list));
    QCOMPARE(list.rowCount(), int(m_home->session->keyNames().size()));
    const qint64 id = list.id(0);
    QVERIFY(keys.rename(id, " C dur' "));
    QVERIFY(!keys.rename(id, " "));
    QVERIFY(!keys.rename(id, QString(51, 'x')));
    QVERIFY(keys.rename(list.id(1), QString(50, 'x')));
    QVERIFY(!keys.rename(1'000'000, "Nowhere"));
    QVERIFY(keys.list(list));
    QCOMPARE(list.text(0, 0), "C dur'");
    QCOMPARE(m_home->session->keyNames()[0].name, "C dur'");
    QCOMPARE(count("WKeys WHERE KeyName = 'C dur'''"), 1); // other languages keep theirs
}

void TestWorks::commandLineWorksOnWorks() {
    QVERIFY(WorkGroups(*m_home->session, m_composer).addNamed(WorkGroups::Genres, "Sonatas") != 0);
    m_home->close();
    const QString bach = QString::number(m_composer);
    const auto run = [this](const QStringList& words) { return runCli(m_home->folder(), words); };
    const CliResult added = run({"work", "add", bach, "--title", "Sonata 'I'", "--number", "1001", "--year",
                                 "1720", "--key", "g minor", "--genre", "sonatas"});
    QCOMPARE(added.code, 0);
    const QString id = added.lines().value(0);
    const CliResult listed = run({"work", "list", bach});
    QCOMPARE(listed.lines().size(), 2);
    QCOMPARE(listed.lines()[1].split('\t').mid(0, 7),
             QStringList({id, "Sonata 'I'", "BWV 1001", "", "", "Sonatas", "1720"}));
    QCOMPARE(run({"work", "add", bach, "--title", "x", "--key", "H"}).code, 1);
    QCOMPARE(run({"work", "add", bach, "--title", "x", "--genre", "None"}).code, 1);
    QCOMPARE(run({"work", "add", bach, "--title", " "}).code, 1);
    QCOMPARE(run({"work", "add", "99", "--title", "x"}).code, 1);
    QCOMPARE(run({"work", "add", bach}).code, 2);
    QCOMPARE(run({"work", "delete", id}).code, 1); // nobody to ask
    QCOMPARE(run({"work", "delete", id, "99", "--yes"}).code, 1);
    QCOMPARE(run({"work", "list", bach}).lines().size(), 2);
    QCOMPARE(run({"work", "delete", id, "--yes"}).code, 0);
    QCOMPARE(run({"work", "list", bach}).lines().size(), 1);
}

QTEST_GUILESS_MAIN(TestWorks)
#include "test_works.moc"
