// SPDX-License-Identifier: GPL-3.0-or-later
#include "classes/Classification.h"
#include "support/CommandLine.h"
#include "support/ItemCatalog.h"

using namespace tessaranth;
using Ids = QSet<qint64>;

class TestClassification final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void keepsNames_data();
    void keepsNames();
    void namesAreUniqueWhereTheyStand();
    void everyKindHasItsOwn();
    void assigns();
    void leavesHalfCheckedAlone();
    void removesACategoryWhole();
    void asksWithItsWords();
    void showsAllCards();
    void commandLine();

private:
    Classification of(int kind) { return {*m_home->session, kind, &m_cards}; }
    QString joins(qint64 recording) {
        QStringList ids;
        Query run = m_home->session->connection().query(
            QStringLiteral("SELECT RecSubCatID FROM RecSubCatJoin WHERE RecID = %1 ORDER BY RecSubCatID")
                .arg(recording));
        while (run.next())
            ids << run.text(0);
        return ids.join(u',');
    }

    std::unique_ptr<ItemCatalog> m_home;
    FakeCards m_cards;
    qint64 m_shelf = 0, m_mood = 0; // categories; sub-categories: 1 and 2 on the shelf, 3 of the mood
};

void TestClassification::init() {
    m_home = std::make_unique<ItemCatalog>();
    m_cards = {};
    for (const char* title : {"Zaide", "Aida", "Évocations"})
        m_home->run(QStringLiteral("INSERT INTO Rec (RecTitle) VALUES ('%1')").arg(QString::fromUtf8(title)));
    m_home->run("INSERT INTO Cps (CpsLname, CpsFname, CpsY) VALUES ('Bach', 'Anna', '1701-1760')");
    Classification classes = of(ItemKind::Recording);
    m_shelf = classes.addNamed(Classification::Category, 0, "Shelf");
    m_mood = classes.addNamed(Classification::Category, 0, "Mood & more");
    QCOMPARE(classes.addNamed(Classification::SubCategory, m_shelf, "Left"), 1);
    QCOMPARE(classes.addNamed(Classification::SubCategory, m_shelf, "Attic"), 2);
    QCOMPARE(classes.addNamed(Classification::SubCategory, m_mood, "Calm"), 3);
}

void TestClassification::keepsNames_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("stored"); // empty: refused
    QTest::addColumn<QString>("message");
    QTest::newRow("quote") << "L'Orfeo \"1607\""
                           << "L'Orfeo \"1607\""
                           << "";
    QTest::newRow("pattern") << "100%_[a]"
                             << "100%_[a]"
                             << "";
    QTest::newRow("placeholder") << "xxxClass %1"
                                 << "xxxClass %1"
                                 << "";
    QTest::newRow("50") << QString(50, u'é') << QString(50, u'é') << "";
    QTest::newRow("51") << QString(51, u'é') << ""
                        << "Category name: at most 50 characters.";
    QTest::newRow("blanks") << " \t "
                            << ""
                            << "The name is missing.";
    QTest::newRow("other case") << "SHELF "
                                << ""
                                << "SHELF alredy exists!";
}

void TestClassification::keepsNames() {
    QFETCH(QString, typed);
    QFETCH(QString, stored);
    QFETCH(QString, message);
    Classification classes = of(ItemKind::Recording);
    const qint64 id = classes.addNamed(Classification::Category, 0, typed);
    QCOMPARE(id != 0, !stored.isEmpty());
    QCOMPARE(m_home->messages.told, message.isEmpty() ? QStringList() : QStringList(message));
    QCOMPARE(m_home->count("RecClass"), id != 0 ? 3 : 2);
    if (id == 0) {
        QVERIFY(!classes.renameTo(Classification::Category, m_mood, typed));
        return;
    }
    QCOMPARE(m_home->text(QStringLiteral("SELECT RecClassName FROM RecClass WHERE RecClassID = %1").arg(id)),
             stored);
    QCOMPARE(classes.addNamed(Classification::Category, 0, stored.toUpper()), 0);
    QVERIFY(classes.renameTo(Classification::Category, id, stored.toUpper())); // of itself only the case
    // A pattern would match any name.
    QVERIFY(classes.addNamed(Classification::Category, 0, "100 percent of all") != 0);
}

void TestClassification::namesAreUniqueWhereTheyStand() {
    Classification classes = of(ItemKind::Recording);
    QCOMPARE(classes.addNamed(Classification::SubCategory, m_shelf, "left"), 0);
    QVERIFY(classes.addNamed(Classification::SubCategory, m_mood, "left") != 0);
    QVERIFY(!classes.renameTo(Classification::SubCategory, 2, "LEFT"));
    QVERIFY(classes.renameTo(Classification::SubCategory, 2, "Calm")); // that one is in another category
    QCOMPARE(classes.addNamed(Classification::SubCategory, 99, "Anywhere"), 0);
    QCOMPARE(m_home->messages.told.size(), 3);
}

void TestClassification::everyKindHasItsOwn() {
    m_home->run("INSERT INTO UserDef (UserDefTitle) VALUES ('Bayreuth')");
    m_home->run("INSERT INTO Pfr (PfrLname, PfrFname) VALUES ('Callas', '')");
    const QStringList shown{"Bach, Anna (1701-1760)", "Callas", "Aida", "Bayreuth"};
    for (const int kind : {ItemKind::Composer, ItemKind::Performer, ItemKind::Custom}) {
        Classification classes = of(kind);
        const qint64 category = classes.addNamed(Classification::Category, 0, "Shelf");
        const qint64 sub = classes.addNamed(Classification::SubCategory, category, "Left");
        QCOMPARE(classes.tree()->unclassified, 1);
        QVERIFY(classes.assign({1}, {sub}));
        ItemList list;
        QVERIFY(classes.items(sub, list));
        QCOMPARE(list.rowCount(), 1);
        QCOMPARE(list.text(0, 0), shown[kind - 1]);
        QVERIFY(classes.unclassified(list));
        QCOMPARE(list.rowCount(), 0);
        QCOMPARE(classes.tree()->unclassified, 0);
    }
    QCOMPARE(m_home->count("RecSubCatJoin"), 0);
    QCOMPARE(m_cards.reloaded, QStringList({"#Cps1", "#Pfr1", "#UserDef1"}));
}

void TestClassification::assigns() {
    Classification classes = of(ItemKind::Recording);
    QVERIFY(classes.assign({1, 2, 99}, {1, 3}));
    QCOMPARE(joins(1) + u' ' + joins(2) + u' ' + joins(99), "1,3 1,3 ");
    const qint64 kept =
        m_home->number("SELECT MIN(ROWID) FROM RecSubCatJoin WHERE RecID = 1 AND RecSubCatID = 3");
    QVERIFY(classes.assign({1}, {2, 3}));
    QCOMPARE(joins(1), "2,3");
    QCOMPARE(m_home->number("SELECT ROWID FROM RecSubCatJoin WHERE RecID = 1 AND RecSubCatID = 3"), kept);
    QVERIFY(!classes.assign({1, 2}, {1, 77}));
    QCOMPARE(joins(1) + u' ' + joins(2), "2,3 1,3");
    QVERIFY(classes.put({1, 3}, 1));
    QCOMPARE(joins(1) + u' ' + joins(3), "1,2,3 1");

    const std::vector<Classification::Line> lines = classes.lines(1);
    QCOMPARE(lines.size(), 2u);
    QCOMPARE(lines[0].text() + u'|' + lines[1].text(), "Mood & more: Calm|Shelf: Attic / Left");
    QVERIFY(classes.assign({1, 2, 3}, {}));
    QCOMPARE(m_home->count("RecSubCatJoin"), 0);
    QVERIFY(classes.lines(1).empty());
}

void TestClassification::leavesHalfCheckedAlone() {
    Classification classes = of(ItemKind::Recording);
    QVERIFY(classes.assign({1}, {1, 3}) && classes.assign({2}, {3}));
    // A row whose sub-category has gone is of no box.
    m_home->run("INSERT INTO RecSubCatJoin (RecID, RecSubCatID) VALUES (2, 55)");
    QCOMPARE(classes.memberships({1, 2}), (QHash<qint64, int>{{1, 1}, {3, 2}}));
    QVERIFY(classes.assign({1, 2}, {2}, {1}));
    QCOMPARE(joins(1) + u' ' + joins(2), "1,2 2");
}

void TestClassification::removesACategoryWhole() {
    Classification classes = of(ItemKind::Recording);
    QVERIFY(classes.assign({1}, {1, 3}) && classes.assign({2}, {2}));
    m_cards = {};
    m_home->messages.willAnswer(Answer::Cancel);
    QVERIFY(!classes.remove(Classification::Category, m_shelf));
    QCOMPARE(m_home->count("RecSubCat"), 3);
    m_home->messages.willAnswer(Answer::Ok);
    QVERIFY(classes.remove(Classification::Category, m_shelf));
    QCOMPARE(m_home->messages.asked.back().title, "Deleting category");
    QCOMPARE(m_home->messages.asked.back().text, "Do you want to delete Shelf?");
    QCOMPARE(joins(1) + u' ' + joins(2), "3 ");
    QCOMPARE(m_home->count("RecClass"), 1);
    QCOMPARE(m_home->count("RecSubCat"), 1);
    QCOMPARE(m_home->count("Rec"), 3);
    QCOMPARE(QSet<QString>(m_cards.reloaded.begin(), m_cards.reloaded.end()),
             QSet<QString>({"#Rec1", "#Rec2"}));
    m_home->messages.willAnswer(Answer::Ok);
    QVERIFY(classes.remove(Classification::SubCategory, 3));
    QCOMPARE(m_home->messages.asked.back().title, "Deleting sub-category");
    QCOMPARE(m_home->count("RecSubCatJoin"), 0);
}

void TestClassification::asksWithItsWords() {
    Classification classes = of(ItemKind::Recording);
    for (const char* name : {"New", "Newer", "", "First", "Second"})
        m_home->messages.willType(name);
    const qint64 id = classes.add(Classification::Category);
    QVERIFY(classes.rename(Classification::Category, id));
    QCOMPARE(classes.add(Classification::Category), 0);
    const qint64 sub = classes.add(Classification::SubCategory, id);
    QVERIFY(classes.rename(Classification::SubCategory, sub));
    const auto words = [&](size_t i) {
        const NameRequest& r = m_home->messages.nameRequests[i];
        return QStringList{
            r.title, r.heading, r.label, r.button, r.iconKey, r.defaultText, QString::number(r.maxLength)};
    };
    QCOMPARE(words(0), QStringList({"Add a new category", "  New category", "Category name", "Add", "Class",
                                    "", "50"}));
    QCOMPARE(words(1), QStringList({"Rename category", "  Rename category", "Category name", "Rename",
                                    "Class", "New", "50"}));
    QCOMPARE(words(3), QStringList({"Add a new sub-category", "  New sub-category", "Sub-Category name",
                                    "Add", "Class", "", "50"}));
    QCOMPARE(words(4), QStringList({"Rename sub-category", "  Rename sub-category", "Sub-category name",
                                    "Rename", "Class", "First", "50"}));
}

void TestClassification::showsAllCards() {
    Classification classes = of(ItemKind::Recording);
    QVERIFY(classes.assign({2}, {1, 2, 3}) && classes.assign({3}, {1}));
    ItemList list;
    QVERIFY(classes.globalView(list));
    QStringList shown;
    for (int row = 0; row < list.rowCount(); ++row)
        shown << list.text(row, 0) + u'|' + list.text(row, 1) + u'|' + list.text(row, 2);
    QCOMPARE(list.headings()[1].caption + list.headings()[2].caption, "Mood & moreShelf");
    QCOMPARE(shown, QStringList({"Aida|Calm|Attic Left", "Évocations||Left", "Zaide||"}));
    const Classification::Tree tree = *classes.tree();
    QCOMPARE(tree.cards, 3);
    QCOMPARE(tree.unclassified, 1);
    QCOMPARE(tree.categories[1].cards, 2); // the shelf, where one recording stands twice
    QCOMPARE(tree.categories[1].subCategories[1].cards, 2);
    QVERIFY(classes.itemsOfCategory(m_shelf, list));
    QCOMPARE(list.rowCount(), 2);
}

void TestClassification::commandLine() {
    m_home->close();
    const auto code = [&](const QStringList& words) { return runCli(m_home->folder(), words).code; };
    QCOMPARE(code({"class", "assign", "Rec", "2", "1", "3"}), 0);
    QCOMPARE(code({"class", "assign", "Rec", "2", "1", "9"}), 1);
    QCOMPARE(code({"class", "assign", "Rec", "9", "1"}), 1);
    QCOMPARE(code({"class", "assign", "Rec", "2"}), 1);
    QCOMPARE(code({"class", "assign", "Label", "2", "1"}), 2);
    QCOMPARE(runCli(m_home->folder(), {"class", "tree", "Rec"}).out,
             "Category\tSubCatID\tSub-category\tCards\nMood & more\t\t\t1\nMood & more\t3\tCalm\t1\n"
             "Shelf\t\t\t1\nShelf\t2\tAttic\t0\nShelf\t1\tLeft\t1\nUnclassified\t\t\t2\n");
    QCOMPARE(code({"class", "assign", "Rec", "2", "--none"}), 0);
    QVERIFY(runCli(m_home->folder(), {"--json", "class", "tree", "Rec"}).out.contains("\"Cards\":3"));
}

QTEST_GUILESS_MAIN(TestClassification)
#include "test_classification.moc"
