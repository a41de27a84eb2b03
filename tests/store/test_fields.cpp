// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Fields.h"
#include "support/TestHome.h"

#include <QTest>

using namespace tessaranth;

Q_DECLARE_METATYPE(FieldKind)

class FieldsTest : public QObject {
    Q_OBJECT
private slots:
    void catalog_data();
    void catalog();
    void links();
    void fit_data();
    void fit();
    void undeclaredWidth();
    void hints();
};

namespace {

QString declaredFor(const CatalogField& field, const QString& key) {
    switch (field.kind) {
    case FieldKind::Key:
        return key + " INTEGER";
    case FieldKind::Link:
    case FieldKind::Number:
    case FieldKind::State:
        return "INTEGER";
    case FieldKind::Flag:
        return "BOOLEAN";
    case FieldKind::Date:
        return "DATETIME";
    case FieldKind::Text:
        return "TEXT";
    default:
        return "VARCHAR";
    }
}

} // namespace

void FieldsTest::catalog_data() {
    QTest::addColumn<bool>("oldest");
    QTest::newRow("as it comes with the program") << false;
    QTest::newRow("upgraded from the oldest version") << true;
}

// What the catalog has and what the table of fields says of it are the same columns of the same types.
void FieldsTest::catalog() {
    QFETCH(bool, oldest);
    TestHome home;
    oldest ? home.useOldest() : home.useTemplate();
    QVERIFY(home.start().started);
    Connection& connection = home.session->connection();
    QStringList inCatalog, inTable;
    for (const QString& table : connection.tables()) {
        if (table == "TsrHistory") // our own, which no user meets
            continue;
        Query columns = connection.queryNative("SELECT name, type, pk FROM pragma_table_info('" +
                                               table.toUtf8() + "') ORDER BY name");
        while (columns.next()) {
            QString type = columns.text(1).toUpper().section('(', 0, 0);
            if (table == "Web" && columns.text(0) == "Url" && type == "TEXT")
                type = "VARCHAR"; // without a width, so that no address is too long
            inCatalog << table + '.' + columns.text(0) + ' ' + (columns.integer(2) ? "key " : "") + type;
        }
    }
    for (const CatalogTable& table : catalogTables()) {
        QCOMPARE(findCatalogTable(table.name().toUpper()), &table);
        for (const CatalogField& field : table.fields)
            inTable << table.name() + '.' + field.column + ' ' + declaredFor(field, "key");
        for (const char* column : {table.nameColumn, table.ownerColumn})
            QVERIFY2(!column || table.find(column), table.table);
    }
    inCatalog.sort();
    inTable.sort();
    for (const QString& column : inCatalog)
        QVERIFY2(inTable.contains(column), qPrintable("not in the table of fields: " + column));
    QCOMPARE(inTable, inCatalog);
}

void FieldsTest::links() {
    for (const CatalogTable& table : catalogTables())
        for (const CatalogField& field : table.fields)
            if (field.kind == FieldKind::Link)
                QVERIFY2(findCatalogTable(field.target) && !findCatalogTable(field.target)->key().isEmpty(),
                         field.column);
}

void FieldsTest::fit_data() {
    QTest::addColumn<QString>("column");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("refusal");
    const auto row = [](const char* column, const QString& text, const QString& stored,
                        const QString& refusal = {}) {
        QTest::newRow(qPrintable(QString(column) + ' ' + text.left(12)))
            << column << text << stored << refusal;
    };
    row("Rec.RecTitle", " A\tB\n", "A B");
    row("Rec.RecTitle", QString(250, 'x'), QString(250, 'x'));
    row("Rec.RecTitle", QString(251, 'x'), {}, "Title: at most 250 characters.");
    row("Rec.RecTitle", " \n", {}, "At least you must insert the recording title.");
    row("Rec.Notes", QString("one\n  two \n") + QChar(0), "one\n  two");
    row("Rec.Spars", "", "N/A");
    row("Rec.Spars", "ABC", {}, "SPARS: \"ABC\" is none of the list.");
    row("Rec.Rating", "Very good", "Very good");
    row("Cps.CpsB", "1685", "1685");
    row("Cps.CpsB", "c. 1685", {}, "A year has four digits, or the field is empty.");
    row("Pfr.PfrLname", "", {}, "The last name is missing.");
    row("Tracks.TrackLen", "02.14", "02:14");
    row("Tracks.TrackLen", "2:14", {}, "The length \"2:14\" is not of the form mm:ss.");
    row("DiscIds.DiscId", " AB0C1D2E ", "ab0c1d2e");
    row("Web.Url", QString(5000, 'x'), QString(5000, 'x'));
    row("RecClass.RecClassName", QString(51, 'x'), {}, "Category name: at most 50 characters.");
}

void FieldsTest::fit() {
    QFETCH(QString, column);
    QFETCH(QString, text);
    QFETCH(QString, stored);
    QFETCH(QString, refusal);
    TestHome home;
    home.useTemplate();
    QVERIFY(home.start().started);
    QString told, result;
    try {
        result = home.session->fields().fit(column.section('.', 0, 0), column.section('.', 1), text);
    } catch (const Error& error) {
        told = error.reason();
    }
    QCOMPARE(told, refusal);
    QCOMPARE(result, stored);
}

// A catalog of another origin may declare no widths: then every text fits, in whatever operation.
void FieldsTest::undeclaredWidth() {
    clsDb none;
    const Fields fields(none);
    const QString text(5000, 'x');
    for (const CatalogTable& table : catalogTables())
        for (const CatalogField& field : table.fields)
            if (field.kind == FieldKind::Line || field.kind == FieldKind::Text) {
                QCOMPARE(fields.fit(table.name(), field.name(), text), text);
                QCOMPARE(fields.cut(table.name(), field.name(), text), text);
            }
}

void FieldsTest::hints() {
    for (const char* good : {"", "0028947797067", "0 028947 797067", "no number", "123"})
        QVERIFY2(Fields::hint(FieldKind::Barcode, good).isEmpty(), good);
    QVERIFY(!Fields::hint(FieldKind::Barcode, "0028947797068").isEmpty());
    QVERIFY(Fields::hint(FieldKind::DiscId, "AB0C1D2E").isEmpty());
    QVERIFY(!Fields::hint(FieldKind::DiscId, "AB0C1D2").isEmpty());
}

QTEST_GUILESS_MAIN(FieldsTest)
#include "test_fields.moc"
