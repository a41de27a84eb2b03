// SPDX-License-Identifier: GPL-3.0-or-later
// Adding and changing persons and the names of lookup lists, and the reference archives.
#include "items/PersonArchive.h"
#include "support/ItemCatalog.h"
#include "support/Writing.h"

using namespace tessaranth;

namespace {

/// Texts that a user, or a file that was pasted from, may bring into any field.
const struct {
    const char* name;
    QString typed, stored;
} awkward[] = {{"apostrophes", "O'Neil''", "O'Neil''"},
               {"wildcards", "100%_[a-z]", "100%_[a-z]"},
               {"placeholders", "%1 %2", "%1 %2"},
               {"double quotes and a backslash", "\"a\" \\ b", "\"a\" \\ b"},
               {"a statement", "'; DELETE FROM Cps; --", "'; DELETE FROM Cps; --"},
               {"emoji", QString::fromUtf8("\U0001F3BB Trio"), QString::fromUtf8("\U0001F3BB Trio")},
               {"blanks around it", "  Bach\t", "Bach"},
               {"line break", "two\nlines", "two lines"},
               {"line separator", QString::fromUtf8("three\u2028lines"), "three lines"},
               {"NUL", QString("a") + QChar(0) + "b", "a b"}};

} // namespace

class TestPersons : public QObject {
    Q_OBJECT

private slots:
    void yearsAreMadeOfWhatIsKnown_data();
    void yearsAreMadeOfWhatIsKnown();
    void duplicatesAreRefused_data();
    void duplicatesAreRefused();
    void aPersonIsNoDuplicateOfItself();
    void namesakesWithOtherYears();
    void storedValuesAreNotChecked();
    void otherRefusals();
    void awkwardTextsComeBack();
    void textsThatAreTooLongAreRefused();
    void lookupNames_data();
    void lookupNames();
    void namesAreAskedFor();
    void archiveIsSearched();
    void archiveBringsManyIn();
    void damagedArchiveIsTold();
};

void TestPersons::yearsAreMadeOfWhatIsKnown_data() {
    QTest::addColumn<QString>("born");
    QTest::addColumn<QString>("died");
    QTest::addColumn<QString>("years"); // empty: refused
    QTest::newRow("both") << "1685"
                          << "1750"
                          << "1685-1750";
    QTest::newRow("living") << "1935"
                            << ""
                            << "1935-?";
    QTest::newRow("birth unknown") << ""
                                   << "1652"
                                   << "?-1652";
    QTest::newRow("none") << ""
                          << ""
                          << "?-?";
    QTest::newRow("blanks count as none") << "  "
                                          << " 1652 "
                                          << "?-1652";
    QTest::newRow("three digits") << "985"
                                  << ""
                                  << "";
    QTest::newRow("five digits") << ""
                                 << "17500"
                                 << "";
    QTest::newRow("about") << "c168"
                           << ""
                           << "";
    QTest::newRow("digits of another script") << "١٦٨٥"
                                              << ""
                                              << "";
}

void TestPersons::yearsAreMadeOfWhatIsKnown() {
    QFETCH(QString, born);
    QFETCH(QString, died);
    QFETCH(QString, years);
    ItemCatalog catalog;
    Person person{0, "Bach", "Johann Sebastian", born, died, "BWV"};
    QCOMPARE(catalog.items().AggiungiItem(ItemKind::Composer, person), !years.isEmpty());
    QCOMPARE(catalog.count("Cps"), years.isEmpty() ? 0 : 1);
    QCOMPARE(catalog.messages.told.size(), years.isEmpty() ? 1 : 0);
    if (!years.isEmpty())
        QCOMPARE(catalog.text("SELECT CpsY FROM Cps"), years);
}

void TestPersons::duplicatesAreRefused_data() {
    QTest::addColumn<QString>("last");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("told"); // empty: added
    QTest::newRow("same") << "Dvořák"
                          << "Antonín"
                          << "Antonín Dvořák is already in archive";
    QTest::newRow("letter case") << "DVOŘÁK"
                                 << "antonín"
                                 << "antonín DVOŘÁK is already in archive";
    QTest::newRow("blanks") << " Dvořák "
                            << "Antonín\t"
                            << "Antonín Dvořák is already in archive";
    QTest::newRow("accents differ") << "Dvorak"
                                    << "Antonin"
                                    << "";
    QTest::newRow("other first name") << "Dvořák"
                                      << ""
                                      << "";
    QTest::newRow("no first name") << "anonymous"
                                   << ""
                                   << "anonymous is already in archive";
    QTest::newRow("first name is Null") << "From An Old Catalog"
                                        << ""
                                        << "From An Old Catalog is already in archive";
    QTest::newRow("a pattern matches only itself") << "%"
                                                   << "%"
                                                   << "";
    QTest::newRow("quoted") << "o'neil"
                            << ""
                            << "o'neil is already in archive";
}

void TestPersons::duplicatesAreRefused() {
    QFETCH(QString, last);
    QFETCH(QString, first);
    QFETCH(QString, told);
    for (const int kind : {ItemKind::Composer, ItemKind::Performer}) {
        ItemCatalog catalog;
        const QString code = itemKind(kind)->code;
        write(catalog.session->connection(),
              QString("INSERT INTO %1 (%1Lname) VALUES ('From an old catalog')").arg(code));
        for (Person person : {Person{0, "Dvořák", "Antonín", {}, {}, {}},
                              Person{0, "Anonymous", {}, {}, {}, {}}, Person{0, "O'Neil", {}, {}, {}, {}}})
            QVERIFY(catalog.items().AggiungiItem(kind, person));
        Person person{0, last, first, {}, {}, {}};
        QCOMPARE(catalog.items().AggiungiItem(kind, person), told.isEmpty());
        QCOMPARE(catalog.messages.told, told.isEmpty() ? QStringList() : QStringList(told));
        QCOMPARE(catalog.count(code), told.isEmpty() ? 5 : 4);
    }
}

void TestPersons::aPersonIsNoDuplicateOfItself() {
    ItemCatalog catalog(true);
    FakeCards cards;
    CMIT items = catalog.items();
    items.setOpenCards(&cards);
    Person bach = items.person(ItemKind::Composer, 1);
    QCOMPARE(bach.last, QString("Bach"));
    bach.last = "BACH";
    bach.died.clear();
    QVERIFY(items.ModificaItem(ItemKind::Composer, bach));
    QCOMPARE(cards.reloaded, QStringList("#Cps1"));
    QCOMPARE(catalog.text("SELECT CpsLname FROM Cps WHERE CpsID = 1"), QString("BACH"));
    QCOMPARE(catalog.text("SELECT CpsY FROM Cps WHERE CpsID = 1"), QString("1685-?"));
    QCOMPARE(catalog.text("SELECT CatAcr FROM Cps WHERE CpsID = 1"), QString("BWV"));
    // But of another one it is.
    Person other = items.person(ItemKind::Composer, 2);
    const qint64 id = other.id;
    other = bach;
    other.id = id;
    QVERIFY(!items.ModificaItem(ItemKind::Composer, other));
    QVERIFY(catalog.text("SELECT CpsLname FROM Cps WHERE CpsID = 2") != "BACH");
}

void TestPersons::namesakesWithOtherYears() {
    for (const int kind : {ItemKind::Composer, ItemKind::Performer}) {
        ItemCatalog catalog;
        CMIT items = catalog.items();
        Person father{0, "Strauss", "Johann", "1804", "1849", {}};
        QVERIFY(items.AggiungiItem(kind, father));
        Person son{0, "Strauss", "Johann", "1825", "1899", {}};
        catalog.messages.willAnswer(Answer::No);
        QVERIFY(!items.AggiungiItem(kind, son));
        QCOMPARE(catalog.messages.asked[0].text,
                 QString("Johann Strauss is already in archive (1804-1849).\n\n"
                         "Is 1825-1899 another person of this name?"));
        catalog.messages.willAnswer(Answer::Yes);
        QVERIFY(items.AggiungiItem(kind, son));
        // Now each of them can be changed, and a third needs years of his own.
        for (const qint64 id : {father.id, son.id}) {
            Person one = items.person(kind, id);
            one.died = "1900";
            QVERIFY(items.ModificaItem(kind, one));
        }
        QCOMPARE(catalog.messages.told, QStringList());
        for (const char* born : {"", "1804"}) {
            Person third{0, "Strauss", "Johann", born, *born ? "1900" : "", {}};
            QVERIFY(!items.AggiungiItem(kind, third));
        }
        QCOMPARE(catalog.messages.told, QStringList(2, "Johann Strauss is already in archive"));
        QCOMPARE(catalog.count(itemKind(kind)->code), 2);
    }
}

// What other programs stored keeps nobody from changing the rest, and is not written again.
void TestPersons::storedValuesAreNotChecked() {
    ItemCatalog catalog;
    catalog.run("INSERT INTO Cps (CpsID, CpsLname, CpsFname, CpsB, CpsD, CpsY, CatAcr) VALUES "
                "(7, '  Dufay', 'Guillaume', 'c.1397', '', 'about 1397 to 1474', '" +
                QString(30, 'x') + "')");
    CMIT items = catalog.items();
    Person dufay = items.person(ItemKind::Composer, 7);
    dufay.first = " Guillaume\tdu ";
    QVERIFY(items.ModificaItem(ItemKind::Composer, dufay));
    const Person back = items.person(ItemKind::Composer, 7);
    QCOMPARE(back.last + back.first + back.born, QString("  DufayGuillaume duc.1397"));
    QCOMPARE(catalog.text("SELECT CpsY FROM Cps"), QString("about 1397 to 1474"));
    dufay.born = "1398?";
    QVERIFY(!items.ModificaItem(ItemKind::Composer, dufay));
    dufay.born = "1398";
    QVERIFY(items.ModificaItem(ItemKind::Composer, dufay));
    QCOMPARE(catalog.text("SELECT CpsY FROM Cps"), QString("1398-?"));
    QCOMPARE(catalog.messages.told, QStringList("A year has four digits, or the field is empty."));
}

void TestPersons::otherRefusals() {
    ItemCatalog catalog;
    Person nobody{0, " \t", "First", {}, {}, {}};
    QVERIFY(!catalog.items().AggiungiItem(ItemKind::Performer, nobody));
    Person gone{77, "Gone", {}, {}, {}, {}};
    QVERIFY(!catalog.items().ModificaItem(ItemKind::Composer, gone));
    QCOMPARE(catalog.messages.told.size(), 2);
    QCOMPARE(catalog.count("Cps") + catalog.count("Pfr"), 0);
    QCOMPARE(catalog.items().person(ItemKind::Composer, 77).id, 0);
    QCOMPARE(catalog.items().nameOf(ItemKind::Composer, 77), QString());
}

void TestPersons::awkwardTextsComeBack() {
    ItemCatalog catalog;
    CMIT items = catalog.items();
    for (const auto& text : awkward) {
        Person person{0, text.typed, text.typed, {}, {}, text.typed.left(20)};
        QVERIFY2(items.AggiungiItem(ItemKind::Composer, person), text.name);
        const Person back = items.person(ItemKind::Composer, person.id);
        QCOMPARE(back.last, text.stored);
        QCOMPARE(back.first, text.stored);
        QCOMPARE(items.nameOf(ItemKind::Composer, person.id), text.stored + ' ' + text.stored);
        Person again{0, text.stored.toUpper(), text.stored, {}, {}, {}};
        QVERIFY2(!items.AggiungiItem(ItemKind::Composer, again), text.name);
        // Typed into the filter it finds what begins so, and nothing else.
        ItemList found;
        QVERIFY2(items.ElencoInLv(ItemKind::Composer, found, text.stored), text.name);
        QCOMPARE(found.rowCount(), 1);
        QCOMPARE(found.id(0), person.id);
    }
    QCOMPARE(catalog.count("Cps"), qint64(std::size(awkward)));
}

void TestPersons::textsThatAreTooLongAreRefused() {
    ItemCatalog catalog;
    CMIT items = catalog.items();
    const QString ten = QString(10000, 'x');
    const auto refused = [&](int kind, Person person, int limit) {
        const qsizetype told = catalog.messages.told.size();
        return !items.AggiungiItem(kind, person) && catalog.messages.told.size() == told + 1 &&
               catalog.messages.told.last().contains(QString::number(limit));
    };
    for (const int kind : {ItemKind::Composer, ItemKind::Performer}) {
        QVERIFY(refused(kind, {0, ten, {}, {}, {}, {}}, 250));
        QVERIFY(refused(kind, {0, "a", ten, {}, {}, {}}, 250));
        QVERIFY(refused(kind, {0, "a", {}, ten, {}, {}}, 10));
        QVERIFY(refused(kind, {0, "a", {}, {}, ten, {}}, 10));
    }
    QVERIFY(refused(ItemKind::Composer, {0, "a", {}, {}, {}, ten}, 20));
    Person longest{0, QString(250, 'y'), QString(250, 'y'), {}, {}, QString(20, 'y')};
    QVERIFY(items.AggiungiItem(ItemKind::Composer, longest));
    QCOMPARE(items.person(ItemKind::Composer, longest.id).first.size(), 250);
    QCOMPARE(catalog.count("Cps"), 1);
}

void TestPersons::lookupNames_data() {
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("exists");
    QTest::newRow("genre") << int(ItemKind::Genre) << " alredy exists!";
    QTest::newRow("label") << int(ItemKind::Label) << " is already in archive!";
    QTest::newRow("source") << int(ItemKind::Source) << " alredy exists!";
    QTest::newRow("support") << int(ItemKind::Support) << " alredy exists!";
}

void TestPersons::lookupNames() {
    QFETCH(int, kind);
    QFETCH(QString, exists);
    ItemCatalog catalog;
    CMIT items = catalog.items();
    for (const auto& text : awkward) {
        const qint64 id = items.addNamed(kind, text.typed);
        QVERIFY2(id > 0, text.name);
        QCOMPARE(items.nameOf(kind, id), text.stored);
        QCOMPARE(items.addNamed(kind, text.stored.toUpper()), 0);
        QCOMPARE(catalog.messages.told.takeLast(), text.stored.toUpper() + exists);
    }
    const qint64 rows = catalog.count(itemKind(kind)->table);
    for (const QString& refused : {QString(), QString(" "), QString(10000, 'x')}) {
        QCOMPARE(items.addNamed(kind, refused), 0);
        QCOMPARE(catalog.messages.told.size(), 1);
        catalog.messages.told.clear();
    }
    const qint64 id = items.addNamed(kind, "Old");
    QVERIFY(items.rename(kind, id, "OLD"));
    QVERIFY(!items.rename(kind, id, "bach"));
    QCOMPARE(catalog.messages.told.takeLast(), "bach" + exists);
    QVERIFY(!items.rename(kind, 99999, "Unheard of"));
    QCOMPARE(items.nameOf(kind, id), QString("OLD"));
    QCOMPARE(catalog.count(itemKind(kind)->table), rows + 1);
}

void TestPersons::namesAreAskedFor() {
    ItemCatalog catalog;
    CMIT items = catalog.items();
    const struct {
        int kind;
        const char *newTitle, *heading, *label, *renameTitle;
        int width;
    } rows[] = {
        {ItemKind::Genre, "  New genre", "Add a new global genre", "Genre name", "Rename genre", 250},
        {ItemKind::Source, "  New source", "Add a new recording source", "Source name", "Rename source", 50},
        {ItemKind::Support, "  New support", "Add a new recording support", "Support name", "Rename support",
         50}};
    for (const auto& row : rows) {
        catalog.messages.willType("First name of it");
        const qint64 id = items.AggiungiItem(row.kind);
        const NameRequest asked = catalog.messages.nameRequests.back();
        QCOMPARE(asked.title, QString(row.newTitle));
        QCOMPARE(asked.heading, QString(row.heading));
        QCOMPARE(asked.label, QString(row.label));
        QCOMPARE(asked.button, QString("Add"));
        QCOMPARE(asked.maxLength, row.width);
        catalog.messages.willType("Second");
        QVERIFY(items.ModificaItem(row.kind, id));
        QCOMPARE(catalog.messages.nameRequests.back().title, QString(row.renameTitle));
        QCOMPARE(catalog.messages.nameRequests.back().button, QString("Rename"));
        QCOMPARE(catalog.messages.nameRequests.back().defaultText, QString("First name of it"));
        QCOMPARE(items.nameOf(row.kind, id), QString("Second"));
        catalog.messages.willType({}); // cancelled
        QVERIFY(!items.ModificaItem(row.kind, id));
        catalog.messages.willType({});
        QCOMPARE(items.AggiungiItem(row.kind), 0);
    }
    QVERIFY(catalog.messages.told.isEmpty());
}

void TestPersons::archiveIsSearched() {
    ItemCatalog catalog;
    auto archive = PersonArchive::open(*catalog.session, ItemKind::Composer);
    QVERIFY(archive);
    ItemList hits = archive->search(" mozart ");
    QVERIFY(hits.rowCount() >= 1);
    QStringList headings;
    for (const auto& heading : hits.headings())
        headings << heading.caption;
    QCOMPARE(headings, QStringList({"Last Name", "First Name", "Born", "Death", "Date note", "Catalog"}));
    int wolfgang = -1;
    for (int row = 0; row < hits.rowCount(); ++row)
        if (hits.text(row, 1).startsWith("Wolfgang Amadeus"))
            wolfgang = row;
    QVERIFY(wolfgang >= 0);
    const Person person = archive->person(hits.id(wolfgang));
    QCOMPARE(person.last + person.born + person.died, QString("Mozart17561791"));
    QCOMPARE(archive->search("wolfgang amadeus").rowCount(), 1); // first names as well
    for (const char* nobody : {"%", "_", "[a-z]", "nobody is called so", "''"})
        QCOMPARE(archive->search(nobody).rowCount(), 0);
    hits = archive->search("D'");
    QVERIFY(hits.rowCount() > 0);
    for (int row = 0; row < hits.rowCount(); ++row)
        QVERIFY((hits.text(row, 0) + '|' + hits.text(row, 1)).contains("d'", Qt::CaseInsensitive));
    QVERIFY(archive->search({}).rowCount() > 100);
}

void TestPersons::archiveBringsManyIn() {
    for (const int kind : {ItemKind::Composer, ItemKind::Performer}) {
        ItemCatalog catalog;
        auto archive = PersonArchive::open(*catalog.session, kind);
        std::vector<qint64> ids;
        const ItemList all = archive->search({});
        for (int row = 0; row < all.rowCount(); ++row)
            ids.push_back(all.id(row));
        // One of them is there already, in capitals; and one was selected twice.
        Person known = archive->person(ids[3]);
        known.last = known.last.toUpper();
        QVERIFY(catalog.items().AggiungiItem(kind, known));
        ids.push_back(ids[5]);
        auto summary = archive->import(ids, catalog.progress);
        QVERIFY(summary);
        QCOMPARE(summary->added, all.rowCount() - 1);
        QCOMPARE(summary->present, 2);
        QCOMPARE(catalog.count(itemKind(kind)->table), all.rowCount());
        // Each came in as the editor would have stored it: it is found by the duplicate check.
        Person again = archive->person(ids.front());
        QVERIFY(!catalog.items().AggiungiItem(kind, again));
        summary = archive->import(ids, catalog.progress);
        QCOMPARE(summary->added, 0);
        if (kind == ItemKind::Composer) {
            QCOMPARE(catalog.number("SELECT COUNT(*) FROM Cps WHERE IsNull(CpsY) OR CpsY = ''"), 0);
            QCOMPARE(catalog.text("SELECT CpsY FROM Cps WHERE CpsLname = 'Mozart' AND CpsFname LIKE 'Wolf%'"),
                     QString("1756-1791"));
        }
    }
}

void TestPersons::damagedArchiveIsTold() {
    ItemCatalog catalog;
    QFile file(catalog.file("tsrcps.dll"));
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("MZ not a record set");
    file.close();
    QVERIFY(!PersonArchive::open(*catalog.session, ItemKind::Composer));
    QFile::remove(file.fileName());
    QVERIFY(!PersonArchive::open(*catalog.session, ItemKind::Composer));
    QCOMPARE(catalog.messages.told.size(), 2);
}

QTEST_GUILESS_MAIN(TestPersons)
#include "test_persons.moc"
