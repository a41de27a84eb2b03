// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Recordset.h"
#include "support/TestHome.h"
#include "support/Writing.h"
#include "works/CatalogFile.h"
#include "works/ComposerCatalog.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTest>

using namespace tessaranth;

namespace {

const QStringList fieldNames{QStringLiteral("CompTitle"), QStringLiteral("CompSubTitle"),
                             QStringLiteral("CompNbr"),   QStringLiteral("MainWorkName"),
                             QStringLiteral("CompYear"),  QStringLiteral("CpsGenreName"),
                             QStringLiteral("GenreName")};

Recordset catalogRows(const QStringList& names = fieldNames) {
    std::vector<Field> fields;
    for (const QString& name : names)
        fields.push_back({name, Field::Type::Text, 0});
    return Recordset(fields);
}

void addRow(Recordset& rows, const QStringList& cells) {
    Recordset::Assignments values;
    for (qsizetype i = 0; i < cells.size(); ++i)
        values.emplace_back(rows.fields()[size_t(i)].name, cells[i]);
    rows.add(values);
}

/// Asks to stop once it was told a percentage.
class StopsAt final : public Progress {
public:
    explicit StopsAt(const QString& stage) : m_stage(stage) {}
    void stage(const QString& text) override { m_current = text; }
    void percentage(int value) override { m_stopped = m_stopped || (m_current == m_stage && value >= 50); }
    bool stopped() const override { return m_stopped; }

private:
    QString m_stage;
    QString m_current;
    bool m_stopped = false;
};

} // namespace

class TestComposerCatalog final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void addsRenamesAndRemoves();
    void assignsWorks();
    void listsWorks();
    void roundTrip();
    void exportRefusesUnclassified();
    void refuses_data();
    void refuses();
    void importReusesNames();
    void importIsAllOrNothing();
    void comingAgainDoublesNothing();
    void keysComeFromTitles();
    void removalKeepsWhatTheUserMade();
    void shippedCatalogs();
    void manyWorks();

private:
    qint64 composer(const char* last, const char* first);
    qint64 work(qint64 composer, const QString& title, bool imported = false);
    qint64 number(const QString& statement) {
        return m_home->session->connection().single(statement).toInteger();
    }
    QString file(const char* name) { return m_home->file(QString::fromLatin1(name)); }
    QStringList rowCounts();

    std::unique_ptr<TestHome> m_home;
};

void TestComposerCatalog::init() {
    m_home = std::make_unique<TestHome>();
    m_home->useTemplate();
    QVERIFY(m_home->start().started);
}

qint64 TestComposerCatalog::composer(const char* last, const char* first) {
    Connection& connection = m_home->session->connection();
    write(connection,
          QStringLiteral("INSERT INTO Cps (CpsLname, CpsFname, CatAcr) VALUES ('%1', '%2', 'BWV')")
              .arg(QString::fromUtf8(last), QString::fromUtf8(first)));
    return connection.lastKey();
}

qint64 TestComposerCatalog::work(qint64 composer, const QString& title, bool imported) {
    Connection& connection = m_home->session->connection();
    write(connection, QStringLiteral("INSERT INTO Compositions (CpsID, CompTitle, wkl) VALUES (%1, '%2', %3)")
                          .arg(composer)
                          .arg(title, imported ? QStringLiteral("True") : QStringLiteral("False")));
    return connection.lastKey();
}

QStringList TestComposerCatalog::rowCounts() {
    QStringList counts;
    for (const char* table : {"Compositions", "CpsGenres", "MainWorks", "Genres", "Catalogs", "Personages",
                              "CompOnRec", "CompOnRecPfr", "Cards"})
        counts.push_back(
            QString::number(number(QStringLiteral("SELECT Count(*) FROM ") + QLatin1String(table))));
    return counts;
}

void TestComposerCatalog::addsRenamesAndRemoves() {
    ScriptedMessages& messages = m_home->messages;
    const qint64 bach = composer("Bach", "Johann Sebastian");
    const qint64 other = composer("Other", "");
    for (const CatalogBranch& branch : catalogBranches()) {
        messages.told.clear();
        messages.nameRequests.clear();
        messages.asked.clear();
        ComposerCatalog catalog(*m_home->session, bach);
        messages.willType(QStringLiteral("Hornpipes & O'Neill's 100%"));
        const qint64 first = catalog.add(branch.number);
        QVERIFY(first != 0);
        QCOMPARE(messages.nameRequests.front().heading, branch.addPrompt);
        // The same name in another case is refused; one that only looks alike as a pattern is not.
        messages.willType(QStringLiteral("hornpipes & o'neill's 100%"));
        QCOMPARE(catalog.add(branch.number), 0);
        QCOMPARE(messages.told, QStringList{QStringLiteral("hornpipes & o'neill's 100% alredy exists!")});
        const qint64 second = catalog.addNamed(branch.number, QStringLiteral("Hornpipes & O'Neill's 100x"));
        QVERIFY(second != 0);
        QVERIFY(ComposerCatalog(*m_home->session, other)
                    .addNamed(branch.number, QStringLiteral("Hornpipes & O'Neill's 100%")) != 0);

        messages.willType(QStringLiteral("Airs"));
        QVERIFY(catalog.rename(branch.number, second));
        QCOMPARE(messages.nameRequests.back().defaultText, QStringLiteral("Hornpipes & O'Neill's 100x"));
        const auto nodes = catalog.nodes(branch.number);
        QCOMPARE(nodes.size(), size_t(3));
        QCOMPARE(nodes[0].name, QStringLiteral("Unclassified"));
        QCOMPARE(nodes[1].name, QStringLiteral("Airs"));

        const qint64 title = work(bach, QStringLiteral("Partita"));
        QVERIFY(catalog.assign(branch.number, second, {title}));
        messages.willAnswer(Answer::No);
        QVERIFY(!catalog.remove(branch.number, {second}));
        QCOMPARE(messages.asked.back().text,
                 branch.removeOne + QStringLiteral("\nAirs\nConfirm?\n\nChanged: 1 work"));
        messages.willAnswer(Answer::Yes);
        QVERIFY(catalog.remove(branch.number, {0, first, second}));
        QVERIFY(messages.asked.back().text.startsWith(branch.removeSeveral));
        QCOMPARE(catalog.nodes(branch.number).size(), size_t(1));
        QCOMPARE(number(QStringLiteral("SELECT %1 FROM Compositions WHERE CompID = %2")
                            .arg(branch.names.key)
                            .arg(title)),
                 0);
        QCOMPARE(ComposerCatalog(*m_home->session, other).nodes(branch.number).size(), size_t(2));
    }
}

void TestComposerCatalog::assignsWorks() {
    const qint64 bach = composer("Bach", "Johann Sebastian");
    const qint64 other = composer("Other", "");
    ComposerCatalog catalog(*m_home->session, bach);
    const qint64 suites = catalog.addNamed(CatalogBranch::Genres, QStringLiteral("Suites"));
    std::vector<qint64> works;
    for (int i = 0; i < 1200; ++i) // more than one statement takes
        works.push_back(work(bach, QStringLiteral("Suite %1").arg(i)));
    const qint64 foreign = work(other, QStringLiteral("Foreign"));
    works.push_back(foreign);
    QVERIFY(catalog.assign(CatalogBranch::Genres, suites, works));
    QCOMPARE(number(QStringLiteral("SELECT Count(*) FROM Compositions WHERE CpsGenreID = %1").arg(suites)),
             1200);
    QCOMPARE(number(QStringLiteral("SELECT CpsGenreID FROM Compositions WHERE CompID = %1").arg(foreign)), 0);
    m_home->messages.willAnswer(Answer::Yes);
    QVERIFY(catalog.unassign(CatalogBranch::Genres, {works[3]}));
    QCOMPARE(m_home->messages.asked.back().text,
             QStringLiteral("Do you want to unassign the selected work(s?)"));
    ItemList unclassified;
    QVERIFY(catalog.works(CatalogBranch::Genres, 0, unclassified));
    QCOMPARE(unclassified.rowCount(), 1);
    QCOMPARE(unclassified.id(0), works[3]);
}

void TestComposerCatalog::listsWorks() {
    const qint64 bach = composer("Bach", "Johann Sebastian");
    ComposerCatalog catalog(*m_home->session, bach);
    const qint64 book = catalog.addNamed(CatalogBranch::MainWorks, QStringLiteral("Clavier-Büchlein"));
    const qint64 id = work(bach, QStringLiteral("Invention"));
    work(bach, QStringLiteral("Sinfonia"));
    write(m_home->session->connection(),
          QStringLiteral("UPDATE Compositions SET CompNbr = '772', CompYear = '1723', MainWorkID = %1, "
                         "InCollection = True WHERE CompID = %2")
              .arg(book)
              .arg(id));
    ItemList list;
    QVERIFY(catalog.works(CatalogBranch::Genres, std::nullopt, list));
    QCOMPARE(list.rowCount(), 2);
    QCOMPARE(list.id(1), id);
    QStringList cells;
    for (int column = 0; column < list.columnCount(); ++column)
        cells.push_back(list.headings()[size_t(column)].caption + u'=' + list.text(1, column));
    QCOMPARE(cells.join(u';'), QStringLiteral("Title=Invention;Opus=BWV 772;Sub title=;Year=1723;"
                                              "Main work=Clavier-Büchlein;In Collection=*"));
    QVERIFY(list.isBold(1) && !list.isBold(0));
    m_home->session->configuration().write(QStringLiteral("Misc"), QStringLiteral("WorkInBold"),
                                           QStringLiteral("0"));
    QVERIFY(catalog.works(CatalogBranch::MainWorks, book, list));
    QCOMPARE(list.rowCount(), 1);
    QVERIFY(!list.isBold(0));
}

void TestComposerCatalog::roundTrip() {
    const qint64 from = composer("de la Barre", "Michel");
    const qint64 to = composer("Copy", "");
    Recordset rows = catalogRows();
    addRow(rows, {QStringLiteral("Suite <1> & \"L'Été\""), QStringLiteral("für Flöte"),
                  QStringLiteral("4 No. 1"), QStringLiteral("Pièces, Op. 4"), QStringLiteral("1702"),
                  QStringLiteral("Suites"), QStringLiteral("Chamber music")});
    addRow(rows, {QStringLiteral("_x0041_ 組曲"), {}, {}, {}, {}, QStringLiteral("Airs"), {}});
    rows.save(file("first.tcat"));
    NoProgress progress;
    QVERIFY(CatalogFile(*m_home->session, from).importFrom(file("first.tcat"), progress));
    QCOMPARE(m_home->messages.told.back(), QStringLiteral("Done.\n2 new, 0 there already."));
    CatalogFile source(*m_home->session, from);
    QCOMPARE(source.fileName(), QStringLiteral("Michel_de_la_Barre.tcat"));
    m_home->messages.willChoose({m_home->folder()});
    const QString path = source.chooseExportPath();
    QCOMPARE(m_home->messages.fileRequests.back().title,
             QStringLiteral("Save the Catalog file \"Michel_de_la_Barre.tcat\" to:"));
    QVERIFY(source.exportTo(path));
    QCOMPARE(m_home->messages.told.back(),
             QStringLiteral("The file ") + path + QStringLiteral(" has been created correctly."));
    QVERIFY(CatalogFile(*m_home->session, to).importFrom(path, progress));
    const auto contents = [&](qint64 id) {
        QStringList lines;
        Query run = m_home->session->connection().query(
            QStringLiteral(
                "SELECT CompTitle, CompSubTitle, CompNbr, CompYear, Compositions.GenreID, MainWorkName, "
                "CpsGenreName, Compositions.wkl FROM (Compositions LEFT JOIN MainWorks ON "
                "Compositions.MainWorkID = MainWorks.MainWorkID) LEFT JOIN CpsGenres ON "
                "Compositions.CpsGenreID = CpsGenres.CpsGenreID WHERE Compositions.CpsID = %1 ORDER BY "
                "CompTitle")
                .arg(id));
        while (run.next()) {
            QStringList cells;
            for (int column = 0; column < run.columnCount(); ++column)
                cells.push_back(run.text(column));
            lines.push_back(cells.join(u'|'));
        }
        return lines;
    };
    QCOMPARE(contents(from).size(), 2);
    QCOMPARE(contents(to), contents(from));
    QCOMPARE(number(QStringLiteral("SELECT Count(*) FROM Genres")), 1);
    ItemList catalogs;
    QVERIFY(ComposerCatalog::importedCatalogs(*m_home->session, catalogs));
    QCOMPARE(catalogs.rowCount(), 2);
    QCOMPARE(catalogs.text(1, 0) + u'|' + catalogs.text(1, 1) + u'|' + catalogs.text(1, 2),
             QStringLiteral("Michel de la Barre|first.tcat|2021-05-08 20:30:15"));
    // What stands in the folder already is not overwritten without a word.
    m_home->messages.willChoose({m_home->folder()});
    m_home->messages.willAnswer(Answer::No);
    QCOMPARE(source.chooseExportPath(), QString());
}

void TestComposerCatalog::exportRefusesUnclassified() {
    const qint64 bach = composer("Bach", "J. S.");
    ComposerCatalog catalog(*m_home->session, bach);
    const qint64 suites = catalog.addNamed(CatalogBranch::Genres, QStringLiteral("Suites"));
    QVERIFY(catalog.assign(CatalogBranch::Genres, suites, {work(bach, QStringLiteral("One"))}));
    const qint64 second = work(bach, QStringLiteral("Two"));
    // 0, nothing, and a genre that is gone: all three would leave the work out of the file.
    for (const char* genre : {"0", "NULL", "4711"}) {
        write(m_home->session->connection(),
              QStringLiteral("UPDATE Compositions SET CpsGenreID = %1 WHERE CompID = %2")
                  .arg(QLatin1String(genre))
                  .arg(second));
        QVERIFY(!CatalogFile(*m_home->session, bach).exportTo(file("bach.tcat")));
        QCOMPARE(m_home->messages.told.back(),
                 QStringLiteral("Not all the works are classified by Catalog Genre.\nIn order to export the "
                                "Composer Catalog each work must be classified by Catalog Genre."));
        QVERIFY(!QFile::exists(file("bach.tcat")));
    }
}

void TestComposerCatalog::refuses_data() {
    QTest::addColumn<QStringList>("fields");
    QTest::addColumn<QStringList>("cells"); // of the third row
    QTest::addColumn<QString>("message");
    const QStringList good{QStringLiteral("Title"), {}, {}, {}, {}, QStringLiteral("Genre"), {}};
    const auto with = [&](int column, const QString& text) {
        QStringList cells = good;
        cells[column] = text;
        return cells;
    };
    const auto tooLong = [](const char* field, int limit) {
        return QStringLiteral("Row: 3, Field: %1: Invalid length\nMust be: %2")
            .arg(QLatin1String(field))
            .arg(limit);
    };
    QStringList others = fieldNames;
    others[4] = QStringLiteral("Price");
    QTest::newRow("six fields") << fieldNames.mid(0, 6) << good.mid(0, 6)
                                << QStringLiteral("Invalid Catalog file!");
    QTest::newRow("another field") << others << good << QStringLiteral("Invalid Catalog file!");
    QTest::newRow("no title") << fieldNames << with(0, {}) << QStringLiteral("Work Title missed in Row: 3");
    QTest::newRow("blank title") << fieldNames << with(0, QStringLiteral(" \t "))
                                 << QStringLiteral("Work Title missed in Row: 3");
    QTest::newRow("no genre") << fieldNames << with(5, {})
                              << QStringLiteral("Catalog Genre missed in Row: 3");
    QTest::newRow("title") << fieldNames << with(0, QString(300, u'x')) << tooLong("CompTitle", 250);
    QTest::newRow("number") << fieldNames << with(2, QString(51, u'x')) << tooLong("CompNbr", 50);
    QTest::newRow("year") << fieldNames << with(4, QString(21, u'x')) << tooLong("CompYear", 20);
    QTest::newRow("genre") << fieldNames << with(5, QString(251, u'x')) << tooLong("CpsGenreName", 250);
    QTest::newRow("fits") << fieldNames << with(0, QString(250, u'x'))
                          << QStringLiteral("Done.\n3 new, 0 there already.");
}

void TestComposerCatalog::refuses() {
    QFETCH(QStringList, fields);
    QFETCH(QStringList, cells);
    QFETCH(QString, message);
    const qint64 bach = composer("Bach", "J. S.");
    Recordset rows = catalogRows(fields);
    addRow(rows, {QStringLiteral("A"), {}, {}, {}, {}, QStringLiteral("G")});
    addRow(rows, {QStringLiteral("B"), {}, {}, {}, {}, QStringLiteral("G")});
    addRow(rows, cells);
    rows.save(file("x.tcat"));
    const QStringList before = rowCounts();
    NoProgress progress;
    const bool imported = CatalogFile(*m_home->session, bach).importFrom(file("x.tcat"), progress);
    QCOMPARE(m_home->messages.told, QStringList{message});
    QCOMPARE(imported, message.startsWith(QLatin1String("Done.")));
    QCOMPARE(rowCounts() != before, imported);
}

void TestComposerCatalog::importReusesNames() {
    const qint64 bach = composer("Bach", "J. S.");
    ComposerCatalog catalog(*m_home->session, bach);
    catalog.addNamed(CatalogBranch::Genres, QStringLiteral("Études"));
    catalog.addNamed(CatalogBranch::MainWorks, QStringLiteral("Book One"));
    write(m_home->session->connection(), QStringLiteral("INSERT INTO Genres (GenreName) VALUES ('Piano')"));
    Recordset rows = catalogRows();
    for (int i = 0; i < 3; ++i)
        addRow(rows, {QStringLiteral("Work"),
                      {},
                      {},
                      QStringLiteral("BOOK ONE"),
                      {},
                      QStringLiteral("études"),
                      QStringLiteral("piano")});
    addRow(rows, {QStringLiteral("Work"), {}, {}, {}, {}, QStringLiteral("Etudes"), {}}); // e is not é
    rows.save(file("x.tcat"));
    NoProgress progress;
    QVERIFY(CatalogFile(*m_home->session, bach).importFrom(file("x.tcat"), progress));
    QCOMPARE(rowCounts().mid(0, 5).join(u' '), QStringLiteral("4 2 1 1 1"));
    QCOMPARE(number(QStringLiteral("SELECT Count(*) FROM CpsGenres WHERE wkl = True")), 1);
    QCOMPARE(number(QStringLiteral("SELECT Count(*) FROM Compositions WHERE GenreID = 0")), 1);
}

void TestComposerCatalog::importIsAllOrNothing() {
    const qint64 bach = composer("Bach", "J. S.");
    Recordset rows = catalogRows();
    for (int i = 0; i < 100; ++i)
        addRow(rows,
               {QStringLiteral("Work %1").arg(i), {}, {}, QStringLiteral("M"), {}, QStringLiteral("G"), {}});
    rows.save(file("x.tcat"));
    const QStringList before = rowCounts();
    for (const char* stage : {"Checking data....", "Updating Data....."}) {
        StopsAt stops(QString::fromLatin1(stage));
        QVERIFY(!CatalogFile(*m_home->session, bach).importFrom(file("x.tcat"), stops));
        QVERIFY(stops.stopped());
        QCOMPARE(rowCounts(), before);
    }
    NoProgress progress;
    // Cut off, and no record set at all.
    QByteArray bytes = bytesOf(file("x.tcat"));
    for (const QByteArray& content :
         {bytes.left(bytes.size() / 2), QByteArray("Title;Opus\n"), QByteArray()}) {
        QFile damaged(file("y.tcat"));
        QVERIFY(damaged.open(QIODevice::WriteOnly));
        damaged.write(content);
        damaged.close();
        QVERIFY(!CatalogFile(*m_home->session, bach).importFrom(file("y.tcat"), progress));
        QVERIFY(m_home->messages.told.back().startsWith(QLatin1String("Invalid Catalog file!")));
        QCOMPARE(rowCounts(), before);
    }
    // A failure half-way through the writing.
    writeNative(m_home->session->connection(),
                "CREATE TRIGGER full BEFORE INSERT ON Catalogs BEGIN SELECT RAISE(ABORT, 'disk full'); END");
    QVERIFY(!CatalogFile(*m_home->session, bach).importFrom(file("x.tcat"), progress));
    QVERIFY(m_home->messages.told.back().contains(QLatin1String("disk full")));
    QCOMPARE(rowCounts(), before);
}

void TestComposerCatalog::removalKeepsWhatTheUserMade() {
    const qint64 bach = composer("Bach", "J. S.");
    const qint64 other = composer("Other", "");
    Recordset rows = catalogRows();
    addRow(rows, {QStringLiteral("Imported 1"),
                  {},
                  {},
                  QStringLiteral("A kept M"),
                  {},
                  QStringLiteral("A kept G"),
                  {}});
    addRow(rows, {QStringLiteral("Imported 2"), {}, {}, QStringLiteral("M"), {}, QStringLiteral("G"), {}});
    addRow(rows, {QStringLiteral("Imported 3"), {}, {}, QStringLiteral("Z"), {}, QStringLiteral("Z"), {}});
    rows.save(file("x.tcat"));
    NoProgress progress;
    for (const qint64 id : {bach, other})
        QVERIFY(CatalogFile(*m_home->session, id).importFrom(file("x.tcat"), progress));
    Connection& connection = m_home->session->connection();
    const qint64 mine = work(bach, QStringLiteral("Mine"));
    const qint64 imported =
        number(QStringLiteral("SELECT MIN(CompID) FROM Compositions WHERE CpsID = %1").arg(bach));
    for (const CatalogBranch& branch : catalogBranches()) {
        ComposerCatalog arrangement(*m_home->session, bach);
        QVERIFY(arrangement.assign(branch.number, arrangement.nodes(branch.number)[1].id, {mine}));
    }
    write(connection,
          QStringLiteral("INSERT INTO Compositions (CpsID, CompTitle, CpsGenreID, MainWorkID) VALUES "
                         "(%1, 'Loose', NULL, NULL)")
              .arg(bach));
    // One of the imported ones stands on a recording, another has only texts.
    const qint64 recorded = imported + 1;
    write(connection, QStringLiteral("INSERT INTO Rec (RecID, RecTitle) VALUES (1, 'R')"));
    for (const qint64 id : {imported, recorded, mine}) {
        write(connection,
              QStringLiteral("INSERT INTO Personages (CompID, PersonageName) VALUES (%1, 'P')").arg(id));
        if (id != imported) {
            write(connection,
                  QStringLiteral("INSERT INTO CompOnRec (RecID, CpsID, CompID) VALUES (1, 1, %1)").arg(id));
            write(connection, QStringLiteral("INSERT INTO CompOnRecPfr (CompOnRecID, PfrID) VALUES (%1, 1)")
                                  .arg(connection.lastKey()));
        }
        write(connection,
              QStringLiteral(
                  "INSERT INTO Cards (RelatedCat, RelatedID, CardTitle) VALUES ('Comp', %1, 'Descr')")
                  .arg(id));
    }
    CatalogFile catalog(*m_home->session, bach);
    m_home->messages.willAnswer(Answer::Yes);
    QVERIFY(catalog.confirmRemoval());
    QCOMPARE(
        m_home->messages.asked.back().text,
        QStringLiteral("Warning. All works, mainworks and genres imported\nwith the current catalog will be "
                       "deleted. Confirm?\n\nWorks that go: 2\nWorks that stay because they are on "
                       "recordings: 1 (recordings: 1)"));
    QVERIFY(catalog.removeImported(progress));
    // Of this composer: three works, two genres, two main works; the other composer has all of his.
    QCOMPARE(rowCounts().join(u' '), QStringLiteral("6 5 5 0 1 2 2 2 2"));
    for (const CatalogBranch& branch : catalogBranches()) {
        const auto nodes = ComposerCatalog(*m_home->session, bach).nodes(branch.number);
        QCOMPARE(nodes.size(), size_t(3));
        QVERIFY(nodes[1].name.startsWith(QLatin1String("A kept")));
    }
    // What stayed is the user's own now: the next import and removal leave it alone, used or not.
    write(connection, QStringLiteral("DELETE FROM Compositions WHERE CpsID = %1").arg(bach));
    QVERIFY(catalog.importFrom(file("x.tcat"), progress));
    QVERIFY(catalog.removeImported(progress));
    QCOMPARE(ComposerCatalog(*m_home->session, bach).nodes(CatalogBranch::Genres).size(), size_t(3));
}

void TestComposerCatalog::comingAgainDoublesNothing() {
    const qint64 bach = composer("Bach", "J. S.");
    Connection& connection = m_home->session->connection();
    // Typed by the user, in his own way and without a genre; and one that has another number.
    write(connection, QStringLiteral("INSERT INTO Compositions (CpsID, CompTitle, CompNbr) VALUES (%1, "
                                     "'messe  IN h-Moll', 'BWV 232')")
                          .arg(bach));
    write(connection,
          QStringLiteral("INSERT INTO Compositions (CpsID, CompTitle, CompNbr) VALUES (%1, 'Minuet', '9')")
              .arg(bach));
    Recordset rows = catalogRows();
    const auto row = [&rows](const char* title, const char* number) {
        addRow(rows, {QString::fromLatin1(title),
                      {},
                      QString::fromLatin1(number),
                      QStringLiteral("Masses"),
                      {},
                      QStringLiteral("Vocal"),
                      QStringLiteral("Mass")});
    };
    row("Messe in h-Moll", "232");
    row("Minuet", ""); // alike in all that is known, yet two works
    row("Minuet", "");
    row("Minuet", "10");
    rows.save(file("x.tcat"));
    NoProgress progress;
    CatalogFile catalog(*m_home->session, bach);
    for (const char* told : {"Done.\n3 new, 1 there already.", "Done.\n0 new, 4 there already."}) {
        QVERIFY(catalog.importFrom(file("x.tcat"), progress));
        QCOMPARE(m_home->messages.told.back(), QLatin1String(told));
        QCOMPARE(rowCounts().mid(0, 5).join(u' '), QStringLiteral("5 1 1 1 1"));
    }
    // What was there got its place and its key, and is the user's own still.
    QCOMPARE(
        number(QStringLiteral("SELECT Count(*) FROM Compositions WHERE CompNbr = 'BWV 232' AND CpsGenreID "
                              "= 1 AND MainWorkID = 1 AND GenreID = 1 AND KeyID = 29 AND wkl = False")),
        1);
    QCOMPARE(number(QStringLiteral("SELECT CpsGenreID FROM Compositions WHERE CompNbr = '9'")), 0);
}

void TestComposerCatalog::keysComeFromTitles() {
    const qint64 bach = composer("Bach", "J. S.");
    const std::vector<std::pair<const char*, int>> titles{{"Quintet in G minor", 19},
                                                          {"Sonata in E-flat Major, Op. 3", 9},
                                                          {"Air in E\u266D major", 9},
                                                          {"Concerto in C sharp minor", 4},
                                                          {"Fuge in Es-Dur", 9},
                                                          {"Messe en ut", 0},
                                                          {"Sonata in sol minore", 19},
                                                          {"Duos in G minor and D major", 0},
                                                          {"Prelude in A, Fugue", 0},
                                                          {"G minor, again in g MINOR", 19},
                                                          {"Major works", 0}};
    Recordset rows = catalogRows();
    for (const auto& [title, key] : titles)
        addRow(rows, {QString::fromUtf8(title), {}, {}, {}, {}, QStringLiteral("G"), {}});
    rows.save(file("x.tcat"));
    NoProgress progress;
    QVERIFY(CatalogFile(*m_home->session, bach).importFrom(file("x.tcat"), progress));
    Query run =
        m_home->session->connection().query(QStringLiteral("SELECT KeyID FROM Compositions ORDER BY CompID"));
    for (const auto& [title, key] : titles) {
        QVERIFY(run.next());
        QVERIFY2(run.integer(0) == key, title);
    }
}

// The program imports what it ships, and what it exports again is the same file.
void TestComposerCatalog::shippedCatalogs() {
    NoProgress progress;
    const QDir folder(QStringLiteral(TESSARANTH_SHARE "/catalogs"));
    const QStringList files = folder.entryList({QStringLiteral("*.tcat")});
    QVERIFY(!files.isEmpty());
    for (const QString& name : files) {
        const qint64 id = composer(qPrintable(name), "");
        CatalogFile catalog(*m_home->session, id);
        QVERIFY2(catalog.importFrom(folder.filePath(name), progress),
                 qPrintable(m_home->messages.told.back()));
        QVERIFY(catalog.exportTo(file("again.tcat")));
        QCOMPARE(Recordset::load(file("again.tcat")).rowCount(),
                 Recordset::load(folder.filePath(name)).rowCount());
    }
}

void TestComposerCatalog::manyWorks() {
    const qint64 bach = composer("Bach", "J. S.");
    Recordset rows = catalogRows();
    for (int i = 0; i < CatalogFile::maxRows; ++i) {
        addRow(rows, {QStringLiteral("Work number %1").arg(i),
                      {},
                      QString::number(i),
                      QStringLiteral("Main work %1").arg(i / 3),
                      {},
                      QStringLiteral("Genre %1").arg(i % 50),
                      QStringLiteral("Piano")});
        if (i + 1 == 5000)
            rows.save(file("5000.tcat"));
    }
    rows.save(file("most.tcat"));
    NoProgress progress;
    CatalogFile catalog(*m_home->session, bach);
    QElapsedTimer timer;
    timer.start();
    QVERIFY(catalog.importFrom(file("5000.tcat"), progress));
    qInfo("5,000 works imported in %lld ms", timer.elapsed());
    QVERIFY2(timer.elapsed() < 5000, "an import of 5,000 works takes a fraction of a second");
    timer.restart();
    QVERIFY(catalog.exportTo(file("out.tcat")));
    qInfo("exported in %lld ms", timer.elapsed());
    timer.restart();
    QVERIFY(catalog.removeImported(progress));
    qInfo("removed in %lld ms", timer.elapsed());
    timer.restart();
    QVERIFY(catalog.importFrom(file("most.tcat"), progress));
    qInfo("%d works imported in %lld ms", CatalogFile::maxRows, timer.elapsed());
    QCOMPARE(number(QStringLiteral("SELECT Count(*) FROM Compositions")), CatalogFile::maxRows);
    addRow(rows, {QStringLiteral("One more"), {}, {}, {}, {}, QStringLiteral("Genre 1"), {}});
    rows.save(file("toomany.tcat"));
    QVERIFY(!catalog.importFrom(file("toomany.tcat"), progress));
    QVERIFY(m_home->messages.told.back().contains(QString::number(CatalogFile::maxRows)));
}

QTEST_GUILESS_MAIN(TestComposerCatalog)
#include "test_composercatalog.moc"
