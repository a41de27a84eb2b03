// SPDX-License-Identifier: GPL-3.0-or-later
// The lists of items of every kind, and those narrowed by the beginning of a name.
#include "store/TextOrder.h"
#include "support/ItemCatalog.h"
#include "support/Writing.h"

using namespace tessaranth;

class TestCmit : public QObject {
    Q_OBJECT

private slots:
    void kindsByNumberAndWord();
    void everyKindIsListed();
    void cellsOfALine();
    void listsAreNarrowed_data();
    void listsAreNarrowed();
    void failedListKeepsWhatWasShown();
};

void TestCmit::kindsByNumberAndWord() {
    const QStringList words{"Cps", "Pfr", "Rec", "UserDef", "Genre", "Label", "Source", "Support"};
    for (int i = 0; i < words.size(); ++i) {
        QVERIFY(itemKind(words[i]));
        QCOMPARE(itemKind(words[i])->number, i + 1);
        QCOMPARE(itemKind(i + 1)->code, words[i]);
    }
    QCOMPARE(itemKind("Cus")->number, 4);
    QCOMPARE(itemKind("User")->number, 4);
    QVERIFY(!itemKind(0) && !itemKind(9) && !itemKind("cps") && !itemKind(""));
}

void TestCmit::everyKindIsListed() {
    ItemCatalog catalog(true);
    CMIT items = catalog.items();
    for (const ItemKind& kind : itemKinds()) {
        const qint64 rows = catalog.count(kind.table);
        QVERIFY2(rows > 0, qPrintable(kind.code));
        ItemList list;
        QVERIFY(items.ElencoInLv(kind.number, list));
        QCOMPARE(list.rowCount(), rows);
        std::vector<std::vector<Value>> matrix;
        QVERIFY(items.ElencoInMatrice(kind.number, matrix));
        const auto recordset = items.ElencoInRecordset(kind.number);
        QVERIFY(recordset);
        QCOMPARE(recordset->rowCount(), rows);
        // The three agree row by row, and names are in the order of the alphabet.
        for (int row = 0; row < list.rowCount(); ++row) {
            QCOMPARE(list.id(row), matrix[size_t(row)][0].toInteger());
            QCOMPARE(list.id(row), recordset->value(row, 0).toInteger());
            QVERIFY(list.text(row, 0).startsWith(matrix[size_t(row)][1].toText().trimmed()));
            if (row > 0 && kind.number != ItemKind::Support)
                QVERIFY2(TextOrder::compare(matrix[size_t(row - 1)][1].toText(),
                                            matrix[size_t(row)][1].toText()) <= 0,
                         qPrintable(list.text(row - 1, 0) + " before " + list.text(row, 0)));
        }
    }
    QVERIFY(!items.ElencoInRecordset(0) && !items.ElencoInRecordset(9));
}

void TestCmit::cellsOfALine() {
    ItemCatalog catalog;
    CMIT items = catalog.items();
    catalog.run(
        "INSERT INTO Cps (CpsLname, CpsFname, CpsY) VALUES ('Bach ', 'Johann Sebastian', '1685-1750')");
    catalog.run("INSERT INTO Pfr (PfrLname) VALUES ('Wiener Philharmoniker')");
    catalog.run("INSERT INTO Labels (LabelID, LabelName) VALUES (4, 'Decca')");
    catalog.run("INSERT INTO Rec (RecTitle, LabelID, SupportID) VALUES ('On a long play', 4, 2)");
    catalog.run("INSERT INTO Rec (RecTitle, LabelID, SupportID) VALUES ('On nothing', 0, 0)");
    ItemList list;
    QVERIFY(items.ElencoInLv(ItemKind::Composer, list));
    QCOMPARE(list.text(0, 0) + '|' + list.text(0, 1), QString("Bach, Johann Sebastian|1685-1750"));
    QVERIFY(items.ElencoInLv(ItemKind::Performer, list));
    QCOMPARE(list.text(0, 0), QString("Wiener Philharmoniker")); // no comma without a first name
    QCOMPARE(list.columnCount(), 1);
    QVERIFY(items.ElencoInLv(ItemKind::Recording, list));
    QCOMPARE(list.text(0, 0) + '|' + list.text(0, 1), QString("On a long play|Decca"));
    QCOMPARE(list.cellIconKey(0, 0), QString("Lp"));
    QCOMPARE(list.text(1, 0) + '|' + list.text(1, 1), QString("On nothing|"));
    QCOMPARE(list.cellIconKey(1, 0), QString());
    QCOMPARE(list.iconKey(1), QString("Recordings"));
    items.DontGetRecLabel = true;
    QVERIFY(items.ElencoInLv(ItemKind::Recording, list));
    QCOMPARE(list.columnCount(), 1);
    QCOMPARE(list.cellIconKey(0, 0), QString("Lp"));
    QVERIFY(items.ElencoInLv(ItemKind::Support, list));
    QCOMPARE(list.text(1, 0) + '|' + list.cellIconKey(1, 0), QString("LP|Lp"));
}

void TestCmit::listsAreNarrowed_data() {
    QTest::addColumn<QString>("prefix");
    QTest::addColumn<QStringList>("names");
    const auto row = [](const char* prefix, const QStringList& names) {
        QTest::newRow(prefix) << prefix << names;
    };
    row("o'", {"O'Neil"});
    row("O''", {});
    row("100%", {"100% Bach"});
    row("%", {});
    row("1_0", {"1_0"});
    row("_", {});
    row("[", {"[untitled]"});
    row("[u]", {});
    row("é", {"Élégie"});
    row("É", {"Élégie"});
    row("e", {"Elegy"}); // an accent makes another letter
    row("ДО", {"До мажор"});
    row("straße", {"Straße"});
    row("%1", {});
    row("\\", {"\\ backslash"});
    row("'; DROP TABLE Cps; --", {});
}

void TestCmit::listsAreNarrowed() {
    QFETCH(QString, prefix);
    QFETCH(QStringList, names);
    ItemCatalog catalog;
    CMIT items = catalog.items();
    for (const ItemKind& kind : itemKinds()) {
        for (QString name : {"O'Neil", "100% Bach", "100 Bach", "1_0", "[untitled]", "untitled", "Élégie",
                             "Elegy", "До мажор", "Straße", "\\ backslash"})
            catalog.run(QString("INSERT INTO ") + kind.table + " (" + kind.nameColumn + ") VALUES ('" +
                        name.replace('\'', "''") + "')");
        ItemList list;
        QVERIFY(items.ElencoInLv(kind.number, list, prefix));
        QStringList found;
        for (int line = 0; line < list.rowCount(); ++line)
            found << list.text(line, 0);
        QVERIFY2(found == names, qPrintable(kind.code + ": " + found.join(" / ")));
    }
    QVERIFY(catalog.messages.told.isEmpty());
}

void TestCmit::failedListKeepsWhatWasShown() {
    ItemCatalog catalog(true);
    CMIT items = catalog.items();
    ItemList list;
    QVERIFY(items.ElencoInLv(ItemKind::Genre, list));
    const int rows = list.rowCount();
    writeNative(catalog.session->connection(), "DROP TABLE Genres");
    QVERIFY(!items.ElencoInLv(ItemKind::Genre, list));
    QCOMPARE(list.rowCount(), rows);
    QCOMPARE(catalog.messages.told.size(), 1);
}

QTEST_GUILESS_MAIN(TestCmit)
#include "test_cmit.moc"
