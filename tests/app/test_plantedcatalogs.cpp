// SPDX-License-Identifier: GPL-3.0-or-later
// Catalogs from strangers: each is opened by the command line and by the start of the window. It works or is
// refused with a clear word; nothing in it runs, and nothing else is touched.
#include "store/CatalogShape.h"
#include "store/CleanedCopy.h"
#include "store/Recordset.h"
#include "store/TextIndex.h"
#include "support/CommandLine.h"
#include "support/PlantedCatalogs.h"
#include "support/TestHome.h"
#include "support/Writing.h"

#include <QDir>
#include <QTest>
#include <SQLiteCpp/SQLiteCpp.h>

using namespace tessaranth;

using Fate = PlantedCatalog::Fate;

namespace {

const char rows[] =
    "INSERT INTO Cps (CpsLname) VALUES ('Bach'), ('Mozart'); INSERT INTO Rec (RecTitle) VALUES "
    "('One'), ('Two'), ('Three'); INSERT INTO Compositions (CpsID, CompTitle) VALUES (1, 'Mass')";

/// A sound catalog with a few rows, and a file that must outlive it.
struct Place : TestHome {
    Place() {
        useTemplate();
        plant(catalog(), rows);
        QFile victim(file("victim.txt"));
        if (!victim.open(QIODevice::WriteOnly) || victim.write("mine") != 4)
            QTest::qFail("cannot write", __FILE__, __LINE__);
    }
    bool isVictimWhole() const { return bytesOf(file("victim.txt")) == "mine"; }
    bool isSplashHidden = false;
    StartResult startWindow() {
        close();
        session = std::make_unique<Session>(folder(), messages, clock);
        Startup::Options options;
        options.asksForCatalog = true;
        options.hideSplash = [this] { isSplashHidden = true; };
        return Startup(*session, options, progress).run();
    }
};

bool isClear(const QString& text) {
    return !text.trimmed().isEmpty() && !text.contains("std::") && !text.contains("terminate") &&
           !text.contains("runtime error");
}

QStringList contentsOf(const QString& catalog) {
    SQLite::Database database(catalog.toStdString(), SQLite::OPEN_READONLY);
    QStringList all;
    for (const OwnTable& table : ownTables()) {
        if (table.name == "TsrHistory" || !database.tableExists(table.name.toStdString()))
            continue; // the mark of the history is another one in each catalog
        SQLite::Statement run(database, "SELECT * FROM " + table.name.toStdString() + " ORDER BY rowid");
        while (run.executeStep()) {
            QString row = QString::fromUtf8(table.name);
            for (int column = 0; column < run.getColumnCount(); ++column)
                row += u'|' + QString::fromUtf8(run.getColumn(column).getText("null"));
            all << row;
        }
    }
    return all;
}

} // namespace

class TestPlantedCatalogs : public QObject {
    Q_OBJECT

private slots:
    void opening_data();
    void opening();
    void cleanedCopy_data();
    void cleanedCopy();
    void cleanedCopyOfTheOldest();
    void anotherCatalog();
    void whatACatalogCannotDo();
    void oldIndexIsMadeAnew();
};

void TestPlantedCatalogs::opening_data() {
    QTest::addColumn<int>("index");
    const auto all = plantedCatalogs();
    QVERIFY(all.size() >= 200);
    for (size_t i = 0; i < all.size(); ++i)
        QTest::addRow("%zu %s", i, qPrintable(all[i].name)) << int(i);
}

void TestPlantedCatalogs::opening() {
    static const std::vector<PlantedCatalog> all = plantedCatalogs();
    QFETCH(int, index);
    const PlantedCatalog& planted = all[size_t(index)];
    const bool mustBeRefused = planted.fate == Fate::Refused;
    Place place;
    planted.spoil(place.catalog());
    const QByteArray before = bytesOf(place.catalog());

    const CliResult result = runCli(place.folder(), {"sql", "SELECT COUNT(*) FROM Cps"});
    if (mustBeRefused || planted.fate == Fate::Opens)
        QVERIFY2(result.code == (mustBeRefused ? 1 : 0), qPrintable(result.err));
    if (result.code != 0) {
        QCOMPARE(result.code, 1);
        QVERIFY2(isClear(result.err) && result.err.contains(planted.told), qPrintable(result.err));
    }
    if (mustBeRefused)
        QVERIFY(bytesOf(place.catalog()) == before);
    if (planted.fate == Fate::Opens)
        QCOMPARE(result.out, QString("Expr1000\n2\n"));

    if (result.code != 0)
        for (int question = result.err.contains("was not opened") ? 2 : 1; question > 0; --question)
            place.messages.willAnswer(Answer::No);
    const StartResult start = place.startWindow();
    QVERIFY(start.started == (result.code == 0));
    QVERIFY(start.started || place.isSplashHidden);
    QVERIFY(start.started || (start.reason.isEmpty() && isClear(place.messages.asked.back().text)));
    if (planted.fate == Fate::Opens) { // and works: a row comes and goes
        Connection& connection = place.session->connection();
        write(connection, "INSERT INTO Rec (RecTitle) VALUES ('New')");
        write(connection, "DELETE FROM Rec WHERE RecTitle = 'New'");
        QCOMPARE(connection.single("SELECT COUNT(*) FROM Cps").toInteger(), 2);
    }
    place.close();
    if (mustBeRefused)
        QVERIFY(bytesOf(place.catalog()) == before);
    QVERIFY(place.isVictimWhole());
}

void TestPlantedCatalogs::cleanedCopy_data() {
    QTest::addColumn<QByteArray>("statements");
    QTest::newRow("trigger") << QByteArray(
        "CREATE TRIGGER evil AFTER INSERT ON Rec BEGIN DELETE FROM Cps; END");
    QTest::newRow("view") << QByteArray("CREATE VIEW evil AS SELECT 1");
    QTest::newRow("virtual table of no module") << QByteArray(
        "CREATE VIRTUAL TABLE evil USING fts5(a); PRAGMA writable_schema = ON; UPDATE sqlite_schema "
        "SET sql = 'CREATE VIRTUAL TABLE evil USING nomodule(a)' WHERE name = 'evil'");
    QTest::newRow("computed column") << QByteArray("ALTER TABLE Rec ADD COLUMN evil AS (hex(RecTitle))");
    QTest::newRow("odd names") << QByteArray("CREATE TABLE \"a b\" (c); ALTER TABLE Cps ADD COLUMN \"d;e\"");
}

void TestPlantedCatalogs::cleanedCopy() {
    QFETCH(QByteArray, statements);
    Place place;
    const QStringList contents = contentsOf(place.catalog());
    plant(place.catalog(), statements);
    const QByteArray before = bytesOf(place.catalog());
    const QString copy = place.file("Tessaranth-cleaned.tsb");

    place.messages.willAnswer(Answer::Yes);
    QVERIFY(place.startWindow().started);
    QVERIFY(place.messages.asked[0].text.contains(copy));
    QCOMPARE(place.session->databasePath(), copy);
    QCOMPARE(place.session->configuration().read("Data folders", "Database"), copy);
    place.close();
    QCOMPARE(contentsOf(copy), contents);
    QVERIFY(bytesOf(place.catalog()) == before);

    const CliResult clean =
        runCli(place.folder(), {"--catalog", place.catalog(), "maintain", "clean", place.file("b.tsb")});
    QVERIFY2(clean.code == 0, qPrintable(clean.err));
    QCOMPARE(contentsOf(place.file("b.tsb")), contents);
    const CliResult again = runCli(place.folder(), {"--catalog", place.catalog(), "maintain", "clean", copy});
    QVERIFY(again.code == 1 && again.err.contains("already exists"));
}

// The upgrade of the copy does what it would have done to the catalog.
void TestPlantedCatalogs::cleanedCopyOfTheOldest() {
    TestHome plain;
    plain.useOldest();
    QVERIFY(plain.start().started);
    plain.close();
    Place place;
    place.useOldest();
    plant(place.catalog(), "CREATE TRIGGER evil AFTER INSERT ON Rec BEGIN DELETE FROM Cps; END");
    place.messages.willAnswer(Answer::Yes);
    QVERIFY(place.startWindow().started);
    const QString copy = place.session->databasePath();
    QCOMPARE(place.session->connection().single("SELECT Rating FROM Rec WHERE RecID = 1"), Value("Good"));
    write(place.session->connection(), "INSERT INTO Rec (RecTitle) VALUES ('New')");
    QCOMPARE(place.session->connection().lastKey(), 91); // a number that was given never comes again
    write(place.session->connection(), "DELETE FROM Rec WHERE RecTitle = 'New'");
    place.close();
    QCOMPARE(contentsOf(copy), contentsOf(plain.catalog()));
}

void TestPlantedCatalogs::anotherCatalog() {
    Place place;
    const QString good = place.file("other.tsb");
    QVERIFY(QFile::copy(place.catalog(), good));
    plant(place.catalog(), "ALTER TABLE Rec RENAME COLUMN RecTitle TO Gone; DROP TABLE Labels");
    place.messages.willAnswer(Answer::Yes);
    place.messages.willChoose({place.file("victim.txt")}); // no catalog either
    place.messages.willAnswer(Answer::Yes);
    place.messages.willChoose({good});
    QVERIFY(place.startWindow().started);
    QVERIFY(place.messages.asked[0].text.contains("column Rec.RecTitle"));
    QVERIFY(place.messages.asked[0].text.contains("table Labels"));
    QVERIFY(place.messages.asked[1].text.contains("victim.txt is not a catalog"));
    QCOMPARE(place.session->configuration().read("Data folders", "Database"), good);
    place.messages.told.clear();
}

void TestPlantedCatalogs::whatACatalogCannotDo() {
    Place place;
    QVERIFY(place.start().started);
    Connection& connection = place.session->connection();
    for (const char* statement : {"ATTACH 'other.db' AS o", "ATTACH 'vic' || 'tim.txt' AS o",
                                  "VACUUM INTO 'copy.db'", "CREATE VIRTUAL TABLE temp.v USING fts4(a)",
                                  "UPDATE sqlite_schema SET sql = ''", "SELECT load_extension('x')"}) {
        try {
            connection.queryNative(statement).next();
            QFAIL(statement);
        } catch (const SqlError& error) {
            QVERIFY2(!error.reason().isEmpty(), statement);
        }
    }
    connection.compact(); // which attaches a file of its own
    Recordset set = Recordset::open(connection, "SELECT * FROM Cps");
    QVERIFY(set.value(99, 0).isNull() && set.value(-1, "CpsID").isNull());
    QVERIFY_EXCEPTION_THROWN(set.value(0, 99), SqlError);
    QVERIFY_EXCEPTION_THROWN(set.update(99, {{"CpsLname", "x"}}), SqlError);
    QVERIFY_EXCEPTION_THROWN(set.remove(-1), SqlError);
}

void TestPlantedCatalogs::oldIndexIsMadeAnew() {
    Place place;
    QVERIFY(place.start().started);
    QVERIFY(TextIndex(place.session->connection()).build(place.progress));
    place.close();
    plant(place.catalog(),
          "DROP TRIGGER QuickRec_Rec_AFTERINSERT; CREATE TRIGGER QuickRec_Rec_AFTERINSERT AFTER "
          "INSERT ON Rec BEGIN DELETE FROM Cps; END");
    QVERIFY(place.start().started);
    Connection& connection = place.session->connection();
    write(connection, "INSERT INTO Rec (RecTitle) VALUES ('Passion')");
    QCOMPARE(connection.single("SELECT COUNT(*) FROM Cps").toInteger(), 2);
    TextIndex index(connection);
    QVERIFY(!index.isCurrent() && index.build(place.progress) && index.isCurrent());
    QCOMPARE(index.find("QuickRec", {"passion"}, 5).size(), size_t(1));
}

QTEST_GUILESS_MAIN(TestPlantedCatalogs)
#include "test_plantedcatalogs.moc"
