// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Connection.h"
#include "support/TestHome.h"
#include "support/Writing.h"

#include <QDir>
#include <QTest>
#include <SQLiteCpp/SQLiteCpp.h>

using namespace tessaranth;

class TestConnection : public QObject {
    Q_OBJECT

private slots:
    void refusesWhatIsNoCatalog_data();
    void refusesWhatIsNoCatalog();
    void secondOpeningIsLockedOut();
    void inspectionWritesNothing();
    void transactionsStandOrFall();
    void textsCompareAsCollectorsExpect();
    void changingAColumnKeepsEverythingElse();
    void copyReplacesOnlyWhenWhole();
};

void TestConnection::refusesWhatIsNoCatalog_data() {
    QTest::addColumn<int>("kind");
    using Kind = OpenError::Kind;
    QTest::newRow("missing") << int(Kind::Missing);
    QTest::newRow("folder") << int(Kind::Folder);
    QTest::newRow("zero bytes") << int(Kind::NotACatalog);
    QTest::newRow("text") << int(Kind::NotACatalog);
    QTest::newRow("other database") << int(Kind::NotACatalog);
    QTest::newRow("truncated") << int(Kind::Damaged);
    QTest::newRow("header only") << int(Kind::Damaged);
    QTest::newRow("read-only") << int(Kind::ReadOnly);
}

void TestConnection::refusesWhatIsNoCatalog() {
    TestHome home;
    const QString path = home.catalog();
    const QString tag = QTest::currentDataTag();
    const auto write = [&path](const QByteArray& bytes) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    };
    if (tag == "folder") {
        QVERIFY(QDir().mkpath(path));
    } else if (tag == "zero bytes") {
        write({});
    } else if (tag == "text") {
        write("This is a shopping list, not a catalog.\n");
    } else if (tag == "other database") {
        SQLite::Database other(path.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        other.exec("CREATE TABLE Cps (CpsID INTEGER)");
    } else if (tag != "missing") {
        home.useTemplate();
        if (tag == "truncated")
            QVERIFY(QFile::resize(path, QFileInfo(path).size() / 2));
        if (tag == "header only")
            QVERIFY(QFile::resize(path, 60));
        if (tag == "read-only")
            QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadUser));
    }
    const QByteArray before = bytesOf(path);
    QFETCH(int, kind);
    try {
        Connection::open(path, home.clock, 236569);
        QFAIL("it was opened");
    } catch (const OpenError& error) {
        QCOMPARE(int(error.kind()), kind);
        QVERIFY2(error.reason().contains(path), qPrintable(error.reason()));
    }
    QCOMPARE(bytesOf(path), before);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void TestConnection::secondOpeningIsLockedOut() {
    TestHome home;
    home.useTemplate();
    auto first = Connection::open(home.catalog(), home.clock, 236569);
    try {
        Connection::open(home.catalog(), home.clock, 236569);
        QFAIL("it was opened twice");
    } catch (const OpenError& error) {
        QCOMPARE(error.kind(), OpenError::Kind::Locked);
    }
    write(*first, "INSERT INTO Genres (GenreName) VALUES ('Opera')");
    first.reset();
    QVERIFY(Connection::open(home.catalog(), home.clock, 236569)->exists("SELECT * FROM Genres"));
}

void TestConnection::inspectionWritesNothing() {
    TestHome home;
    home.useOldest();
    const QByteArray before = bytesOf(home.catalog());
    {
        auto connection = Connection::open(home.catalog(), home.clock, 236569, Connection::Mode::Inspect);
        QCOMPARE(connection->single("SELECT COUNT(*) FROM Rec").toInteger(), 7);
        QVERIFY(connection->integrityFaults().isEmpty());
        QVERIFY_EXCEPTION_THROWN(write(*connection, "DELETE FROM Rec"), SqlError);
    }
    QCOMPARE(bytesOf(home.catalog()), before);
}

void TestConnection::transactionsStandOrFall() {
    TestHome home;
    home.useTemplate();
    auto connection = Connection::open(home.catalog(), home.clock, 236569);
    const auto genres = [&] { return connection->single("SELECT COUNT(*) FROM Genres").toInteger(); };
    {
        Transaction outer(*connection, QStringLiteral("test"));
        write(*connection, "INSERT INTO Genres (GenreName) VALUES ('Opera')");
        QVERIFY(!connection->attempt("INSERT INTO NoSuchTable (A) VALUES (1)"));
        QVERIFY(
            !connection->attempt("INSERT INTO Tracks (RecID) VALUES (1)")); // columns that may not be Null
        {
            Transaction inner(*connection, QStringLiteral("test"));
            write(*connection, "INSERT INTO Genres (GenreName) VALUES ('Lied')");
            inner.commit();
        }
        outer.commit();
    }
    QCOMPARE(genres(), 2);
    {
        Transaction undone(*connection, QStringLiteral("test"));
        write(*connection, "DELETE * FROM Genres");
        write(*connection, "ALTER TABLE Genres ADD COLUMN Extra LONG");
        QCOMPARE(connection->columnsOf("genres").size(), 3);
    }
    QCOMPARE(genres(), 2);
    QCOMPARE(connection->columnsOf("Genres"), QStringList({"GenreID", "GenreName"}));
    {
        Transaction outer(*connection, QStringLiteral("test"));
        write(*connection, "INSERT INTO Genres (GenreName) VALUES ('Mass')");
        { Transaction inner(*connection, QStringLiteral("test")); } // left without commit
        QVERIFY_EXCEPTION_THROWN(outer.commit(), SqlError);
    }
    QCOMPARE(genres(), 2);
}

void TestConnection::textsCompareAsCollectorsExpect() {
    TestHome home;
    home.useTemplate();
    auto connection = Connection::open(home.catalog(), home.clock, 236569);
    for (const char* name :
         {"Zelenka", "Élgar", "Elgar", "élgar", "O'Neil", "Dvořák", "dvorak", "100%", "1000"})
        write(*connection, "INSERT INTO Cps (CpsLname) VALUES ('" + quoted(name) + "')");
    const auto names = [&](const QString& tail) {
        QStringList found;
        Query run = connection->query("SELECT CpsLname FROM Cps " + tail);
        while (run.next())
            found.push_back(run.text(0));
        return found;
    };
    QCOMPARE(names("WHERE CpsLname = 'ÉLGAR' ORDER BY CpsID"), QStringList({"Élgar", "élgar"}));
    QCOMPARE(names("WHERE CpsLname LIKE 'dvo%' ORDER BY CpsLname"), QStringList({"dvorak", "Dvořák"}));
    QCOMPARE(names("WHERE CpsLname LIKE '%LGAR' ORDER BY CpsID").size(), 3);
    QCOMPARE(names("WHERE CpsLname LIKE '" + quotedPattern("100%") + "'"), QStringList("100%"));
    QCOMPARE(names("WHERE CpsLname LIKE '" + quotedPattern("o'neil") + "'"), QStringList("O'Neil"));
    QCOMPARE(names("ORDER BY CpsLname, CpsID"), QStringList({"100%", "1000", "dvorak", "Dvořák", "Elgar",
                                                             "Élgar", "élgar", "O'Neil", "Zelenka"}));
    QVERIFY_EXCEPTION_THROWN(connection->query("SELECT CpsLnam FROM Cps").next(), SqlError);
}

void TestConnection::changingAColumnKeepsEverythingElse() {
    TestHome home;
    home.useSample();
    const QStringList before = TestHome::schemaOf(home.catalog());
    auto connection = Connection::open(home.catalog(), home.clock, 236569);
    const Value recordings = connection->single("SELECT COUNT(*) FROM Rec");
    QVERIFY(recordings.toInteger() > 0);
    write(*connection,
          "DELETE FROM Rec WHERE RecID = " + connection->single("SELECT MAX(RecID) FROM Rec").toText());
    write(*connection, "ALTER TABLE Rec ALTER COLUMN ProdNbr VARCHAR(60)");
    write(*connection, "ALTER TABLE Rec ALTER COLUMN ProdNbr SET DEFAULT 'it''s 5 o''clock'");
    write(*connection, "INSERT INTO Rec (RecTitle) VALUES ('New')");
    QCOMPARE(connection->lastKey(), recordings.toInteger() + 1);
    QCOMPARE(connection->single("SELECT ProdNbr FROM Rec WHERE RecTitle = 'new'").toText(), "it's 5 o'clock");
    write(*connection, "ALTER TABLE Rec ALTER COLUMN ProdNbr SET DEFAULT ");
    write(*connection, "ALTER TABLE Rec ALTER COLUMN ProdNbr VARCHAR(50)");
    QVERIFY(connection->integrityFaults().isEmpty());
    connection.reset();
    QCOMPARE(TestHome::schemaOf(home.catalog()), before);
}

void TestConnection::copyReplacesOnlyWhenWhole() {
    TestHome home;
    home.useSample();
    const QStringList schema = TestHome::schemaOf(home.catalog());
    auto connection = Connection::open(home.catalog(), home.clock, 236569);
    const QString target = home.file("copy.bak");
    int last = -1;
    connection->copyTo(target, [&last](int value) { last = value; });
    QCOMPARE(last, 100);
    QCOMPARE(TestHome::schemaOf(target), schema);
    QVERIFY(!QFileInfo::exists(target + "-wal"));

    QVERIFY(QDir().mkpath(home.file("folder.bak/occupied")));
    QVERIFY_EXCEPTION_THROWN(connection->copyTo(home.file("folder.bak")), FileError);
}

QTEST_GUILESS_MAIN(TestConnection)
#include "test_connection.moc"
