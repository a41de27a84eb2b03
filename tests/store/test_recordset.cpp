// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Errors.h"
#include "store/Connection.h"
#include "store/Recordset.h"
#include "support/TestHome.h"
#include "support/Writing.h"

#include <QTest>

using namespace tessaranth;

class TestRecordset : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void changesReachTheCatalogAtOnce();
    void tablesWithoutAKeyAndJoins();
    void namesComputedColumns();
    void filters();
    void refusals();
    void filesKeepEverything();
    void textsAreNoNumbers();
    void badFilesAreRefused_data();
    void badFilesAreRefused();

private:
    std::unique_ptr<TestHome> m_home;
    std::unique_ptr<Connection> m_connection;
};

void TestRecordset::init() {
    m_home = std::make_unique<TestHome>();
    m_home->useTemplate();
    m_connection = Connection::open(m_home->catalog(), m_home->clock, 236569);
}

void TestRecordset::cleanup() {
    m_connection.reset();
    m_home.reset();
}

void TestRecordset::changesReachTheCatalogAtOnce() {
    const Transaction open(*m_connection, QStringLiteral("test"));
    Recordset set = Recordset::open(*m_connection, "SELECT * FROM Rec WHERE 1 = 0");
    QVERIFY(set.isEmpty());
    const int row = set.add({{"rectitle", "L'enfance du Christ"}});
    QCOMPARE(set.value(row, "RecTitle").toText(), "L'enfance du Christ");
    QCOMPARE(set.value(row, "UnitsNbr").toInteger(), 1); // the table's defaults are read back
    QCOMPARE(set.value(row, "Spars").toText(), "N/A");
    QVERIFY(set.value(row, "ProdNbr").isNull());
    set.update(row, {{"UnitsNbr", 2}, {"RefRec", true}, {"Notes", "\"quoted\"; DROP TABLE Rec"}});
    Query stored = m_connection->query("SELECT UnitsNbr, RefRec, Notes FROM Rec");
    QVERIFY(stored.next());
    QCOMPARE(stored.integer(0), 2);
    QCOMPARE(stored.integer(1), 1);
    QCOMPARE(stored.text(2), "\"quoted\"; DROP TABLE Rec");
    set.remove(row);
    QVERIFY(set.isEmpty());
    QVERIFY(!m_connection->exists("SELECT * FROM Rec"));
}

void TestRecordset::tablesWithoutAKeyAndJoins() {
    const Transaction open(*m_connection, QStringLiteral("test"));
    write(*m_connection, "INSERT INTO CompOnRec (RecID, CompID, Pos) VALUES (5, 1, 1)");
    write(*m_connection, "INSERT INTO CompOnRec (RecID, CompID, Pos) VALUES (6, 1, 1)");
    for (const char* values : {"1, 10, 0", "1, 10, 0", "1, 11, 3", "2, 10, 0"})
        write(*m_connection,
              QString("INSERT INTO CompOnRecPfr (CompOnRecID, PfrID, PersonageID) VALUES (%1)").arg(values));
    Recordset set = Recordset::open(
        *m_connection, "SELECT CompOnRecPfr.CompOnRecID, CompOnRecPfr.PfrID, CompOnRecPfr.PersonageID "
                       "FROM CompOnRec INNER JOIN CompOnRecPfr ON CompOnRec.CompOnRecID = "
                       "CompOnRecPfr.CompOnRecID WHERE CompOnRec.RecID = 5");
    QCOMPARE(set.rowCount(), 3);
    QCOMPARE(set.fields().size(), 3U);
    set.setFilter("CompOnRecID = 1 AND PfrId = 10");
    QCOMPARE(set.rowCount(), 2);
    set.remove(0); // of two equal rows exactly one goes
    QCOMPARE(set.rowCount(), 1);
    set.add({{"CompOnRecID", 1}, {"PfrID", 12}, {"PersonageID", 4}});
    set.setFilter({});
    QCOMPARE(set.rowCount(), 3);
    QCOMPARE(m_connection->single("SELECT COUNT(*) FROM CompOnRecPfr").toInteger(), 4);
    QCOMPARE(m_connection->single("SELECT COUNT(*) FROM CompOnRecPfr WHERE PfrID = 12").toInteger(), 1);
}

void TestRecordset::namesComputedColumns() {
    const Recordset set =
        Recordset::open(*m_connection, "SELECT 1, COUNT(*), MIN(RecID) AS First, MAX(RecTitle) FROM Rec");
    QStringList names;
    for (const Field& field : set.fields())
        names << field.name;
    QCOMPARE(names, QStringList({"Expr1000", "Expr1001", "First", "Expr1003"}));
}

void TestRecordset::filters() {
    Recordset set({{"CpsLname"}, {"CpsFname"}, {"Pos", Field::Type::Integer}});
    const std::pair<const char*, const char*> names[] = {{"Strauss", "Richard"},
                                                         {"Strauss II", "Johann"},
                                                         {"Dvořák", "Antonín"},
                                                         {"Bach", "Johann Sebastian"}};
    int position = 0;
    for (const auto& [last, first] : names)
        set.add({{"CpsLname", last}, {"CpsFname", first}, {"Pos", ++position}});
    const auto count = [&set](const QString& filter) {
        set.setFilter(filter);
        return set.rowCount();
    };
    QCOMPARE(count("(CpsLname LIKE '%JOHANN%') OR (CpsFname LIKE '%JOHANN%')"), 2);
    QCOMPARE(count("CpsLname = 'DVOŘÁK'"), 1);
    QCOMPARE(count("CpsLname = 'Dvorak'"), 0);
    QCOMPARE(count("Pos =2"), 1);
    QCOMPARE(count("Pos >= 2 AND (Pos < 4 OR CpsLname <> 'Bach')"), 2);
    QCOMPARE(count("Pos = -1"), 0);
    QCOMPARE(count({}), 4);
    for (const char* wrong :
         {"Pos", "Pos = ", "Pos = 1 OR", "(Pos = 1", "Nothing = 1", "Pos = 1; Pos = 2", "Pos = '1"})
        QVERIFY_EXCEPTION_THROWN(set.setFilter(wrong), SqlError);
    QVERIFY_EXCEPTION_THROWN(set.setFilter(QString(200000, '(')), SqlError);
}

void TestRecordset::refusals() {
    Recordset joined = Recordset::open(
        *m_connection,
        "SELECT Rec.RecTitle, Labels.LabelName FROM Labels RIGHT JOIN Rec ON Labels.LabelID = Rec.LabelID");
    QVERIFY_EXCEPTION_THROWN(joined.add({{"RecTitle", "x"}}), SqlError);
    Recordset set = Recordset::open(*m_connection, "SELECT * FROM Genres");
    QVERIFY_EXCEPTION_THROWN(set.add({{"NoSuchColumn", 1}}), SqlError);
    QVERIFY_EXCEPTION_THROWN(Recordset::open(*m_connection, "DELETE FROM Supports"), SqlError);
    QCOMPARE(m_connection->single("SELECT COUNT(*) FROM Supports").toInteger(), 11);
}

void TestRecordset::filesKeepEverything() {
    const QString path = m_home->file("set.tcat");
    Recordset set({{"Title", Field::Type::Text, 250},
                   {"Nbr", Field::Type::Integer},
                   {"Yes", Field::Type::Boolean},
                   {"Added", Field::Type::Date},
                   {"Price", Field::Type::Number},
                   {"Word with blanks"}});
    const QString odd = QString("tab\tline\nquote\"<&>' _x0041_ é 🎼 ") + QChar(1) + QChar(0xFFFE);
    set.add({{"Title", odd},
             {"Nbr", -7},
             {"Yes", true},
             {"Added", "2005-01-31 17:05:00"},
             {"Price", 12.5},
             {"Word with blanks", "kept"}});
    set.add({{"Title", ""}});
    set.save(path);
    const Recordset loaded = Recordset::load(path);
    QCOMPARE(loaded.rowCount(), 2);
    QCOMPARE(loaded.fields()[0].width, 250);
    for (int field = 0; field < 6; ++field)
        QCOMPARE(loaded.fields()[size_t(field)].name, set.fields()[size_t(field)].name);
    for (int row = 0; row < 2; ++row)
        for (int field = 0; field < 6; ++field)
            QVERIFY2(loaded.value(row, field) == set.value(row, field),
                     qPrintable(loaded.value(row, field).toText()));
}

// What a file calls numbers and dates may be texts.
void TestRecordset::textsAreNoNumbers() {
    const QString path = m_home->file("set.tcat");
    for (const Field::Type type :
         {Field::Type::Integer, Field::Type::Number, Field::Type::Boolean, Field::Type::Date}) {
        Recordset set({{"Title", type}});
        const QStringList texts{"Op. 7", "007", "Tristan und Isolde", "1e3", "", "12 ", QString(QChar(1))};
        for (const QString& text : texts)
            set.add({{"Title", text}});
        set.save(path);
        const Recordset loaded = Recordset::load(path);
        for (int row = 0; row < int(texts.size()); ++row)
            QCOMPARE(loaded.value(row, 0).toText(), texts[row]);
    }
}

void TestRecordset::badFilesAreRefused_data() {
    QTest::addColumn<QByteArray>("bytes");
    const auto rows = [](const char* name, const QByteArray& fields, const QByteArray& row) {
        QTest::newRow(name) << QByteArray("<xml xmlns:s='uuid:BDC6E3F0-6DA3-11d1-A2A3-00AA00C14882' "
                                          "xmlns:z='#RowsetSchema'><s:Schema>" +
                                          fields + "</s:Schema>" + row + "</xml>");
    };
    const QByteArray field = "<s:AttributeType name='a'/>";
    QByteArray many, fields;
    for (int i = 0; i < 300'000; ++i)
        many += " a" + QByteArray::number(i) + "=''";
    for (int i = 0; i < 300; ++i)
        fields += "<s:AttributeType name='a" + QByteArray::number(i) + "'/>";
    rows("300,000 attributes", field, "<z:row" + many + "/>"); // took two minutes
    rows("300 fields", fields, "<z:row a1='x'/>");
    rows("cell of 2 MB", field, "<z:row a='" + QByteArray(2 << 20, 'x') + "'/>");
    rows("attributes behind a comment", field, "<!-- ' > -->\n<?a '?><![CDATA[<]]><z:row" + many + "/>");
    QTest::newRow("document type") << QByteArray("<!DOCTYPE a [<!ENTITY b 'c'>]><a/>");
    QTest::newRow("UTF-16") << QByteArray("\xFF\xFE<\0a\0/\0>\0", 10);
    QTest::newRow("another encoding") << QByteArray("<?xml version='1.0' encoding='ISO-2022-JP'?><a/>");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no XML") << QByteArray("MZ\x90 this is a program");
    QTest::newRow("other XML") << QByteArray("<html><body/></html>");
    QTest::newRow("rows without fields")
        << QByteArray("<xml xmlns:z='#RowsetSchema'><z:row Title='x'/></xml>");
    Recordset set({{"Title"}});
    set.add({{"Title", "x"}});
    QTemporaryDir folder;
    set.save(folder.filePath("whole"));
    const QByteArray whole = bytesOf(folder.filePath("whole"));
    QTest::newRow("cut off") << whole.left(whole.size() - 20);
    QTest::newRow("NUL within")
        << QByteArray(whole).replace("'x'", QByteArray("'\0'", 3)).replace("\"x\"", QByteArray("\"\0\"", 3));
}

void TestRecordset::badFilesAreRefused() {
    QFETCH(QByteArray, bytes);
    const QString path = m_home->file("bad.tcat");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    file.close();
    try {
        Recordset::load(path);
        QFAIL("it was read");
    } catch (const FileError& error) {
        QVERIFY2(error.reason().contains(path), qPrintable(error.reason()));
    }
}

QTEST_GUILESS_MAIN(TestRecordset)
#include "test_recordset.moc"
