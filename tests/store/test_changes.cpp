// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/ChangeAnnouncer.h"

#include "attachments/CardImages.h"
#include "attachments/CardLinks.h"
#include "attachments/CardRelations.h"
#include "classes/Classification.h"
#include "items/CardHeading.h"
#include "items/CustomCards.h"
#include "recordings/RecordingEditor.h"
#include "store/History.h"
#include "store/RecordedTables.h"
#include "support/ItemCatalog.h"
#include "support/Pictures.h"
#include "works/CWKS.h"
#include "works/ComposerCatalog.h"
#include "works/KeyNames.h"

#include <QCoreApplication>
#include <QTest>

using namespace tessaranth;

/// What each operation announces, and its undo.
class TestChanges : public QObject {
    Q_OBJECT
private slots:
    void operations_data();
    void operations();
    void listenersAreToldOnce();
    void tablesAreThoseOfTheCatalog();
};

namespace {

const char* const catalogRows[] = {
    "INSERT INTO Cps (CpsLname) VALUES ('Bach')",
    "INSERT INTO Cps (CpsLname) VALUES ('Verdi')",
    "INSERT INTO Pfr (PfrLname) VALUES ('Gould')",
    "INSERT INTO Pfr (PfrLname) VALUES ('Callas')",
    "INSERT INTO Labels (LabelName) VALUES ('Decca')",
    "INSERT INTO Labels (LabelName) VALUES ('Philips')",
    "INSERT INTO Rec (RecTitle, LabelID) VALUES ('Goldberg', 1)",
    "INSERT INTO Rec (RecTitle, LabelID) VALUES ('Traviata', 2)",
    "INSERT INTO UserDef (UserDefTitle) VALUES ('Scala')",
    "INSERT INTO UserDef (UserDefTitle) VALUES ('House')",
    "INSERT INTO Compositions (CpsID, CompTitle, InCollection) VALUES (1, 'Goldberg', True)",
    "INSERT INTO Compositions (CpsID, CompTitle, InCollection, Pers) VALUES (2, 'Traviata', True, True)",
    "INSERT INTO Compositions (CpsID, CompTitle) VALUES (1, 'Partita')",
    "INSERT INTO Personages (CompID, PersonageName) VALUES (2, 'Violetta')",
    "INSERT INTO MainWorks (CpsID, MainWorkName) VALUES (1, 'Clavier')",
    "INSERT INTO CpsGenres (CpsID, CpsGenreName) VALUES (1, 'Keyboard')",
    "INSERT INTO CompOnRec (RecID, CpsID, CompID, Pos) VALUES (1, 1, 1, 1)",
    "INSERT INTO CompOnRec (RecID, CpsID, CompID, Pos) VALUES (2, 2, 2, 1)",
    "INSERT INTO CompOnRecPfr (CompOnRecID, PfrID, PersonageID) VALUES (1, 1, 0)",
    "INSERT INTO CompOnRecPfr (CompOnRecID, PfrID, PersonageID) VALUES (2, 2, 1)",
    "INSERT INTO CpsOnRec (CpsID, RecID) VALUES (1, 1)",
    "INSERT INTO CpsOnRec (CpsID, RecID) VALUES (2, 2)",
    "INSERT INTO PfrOnRec (PfrID, RecID, Pos) VALUES (1, 1, 1)",
    "INSERT INTO PfrOnRec (PfrID, RecID, Pos) VALUES (2, 2, 1)",
    "INSERT INTO RecClass (RecClassName) VALUES ('Period')",
    "INSERT INTO RecSubCat (RecClassID, RecSubCatName) VALUES (1, 'Baroque')",
    "INSERT INTO RecSubCatJoin (RecID, RecSubCatID) VALUES (1, 1)",
    "INSERT INTO Relations (UserDefID, ItemType, ItemID) VALUES (1, 'Rec', 2)",
    "INSERT INTO Web (RelatedCat, RelatedID, Url, Alias) VALUES ('Cps', 1, 'http://a', 'a')",
    "INSERT INTO Images (RelatedCat, RelatedID, ImageTitle, OrderNbr) VALUES ('Rec', 1, 'Cover', 1)",
    "INSERT INTO Tracks (RecID, Disc, TrackNbr, TrackName, TrackLen) VALUES (1, 1, 1, 'Aria', '')"};

const char* const thingNames[] = {
    "",         "Composer", "Performer",    "Recording", "Custom",   "Genre",    "Label",
    "Source",   "Support",  "Work",         "Personage", "MainWork", "CpsGenre", "PlacedWork",
    "Track",    "Image",    "Document",     "Media",     "Link",     "KeyName",  "CpsClass",
    "PfrClass", "RecClass", "UserDefClass", "CpsSub",    "PfrSub",   "RecSub",   "UserDefSub"};

/// "~Recording 1, -Label 1; Label 1 into Label 2".
QString text(const CatalogChanges& changes) {
    using How = CatalogChanges::How;
    QStringList parts, merges;
    for (int kind = 1; kind < int(std::size(thingNames)); ++kind)
        for (const auto& [how, sign] : {std::pair{How::Added, '+'}, {How::Changed, '~'}, {How::Removed, '-'}})
            for (const qint64 id : changes.ids(Thing(kind), how))
                parts << QString("%1%2 %3").arg(QChar(sign)).arg(thingNames[kind]).arg(id);
    for (const CatalogChanges::Merge& merge : changes.merges())
        merges << QString("; %1 %2 into %3")
                      .arg(thingNames[int(merge.from.kind)])
                      .arg(merge.from.id)
                      .arg(merge.to.id);
    return (changes.isEverything() ? "everything " : "") + parts.join(", ") + merges.join(QString());
}

/// What taking it back announces: what came goes, what went comes.
QString reversed(QString told) {
    told = told.section(';', 0, 0);
    for (QChar& c : told)
        c = c == '+' ? QChar('-') : c == '-' ? QChar('+') : c;
    return told;
}

struct Row {
    const char* name;
    std::function<void(ItemCatalog&)> run;
    const char* told;
};

void eliminate(ItemCatalog& home, int kind, qint64 id) {
    NoProgress progress;
    QVERIFY(home.items().EliminaItem(kind, {id}, progress));
}

void merge(ItemCatalog& home, int kind) {
    home.messages.willAnswer(Answer::Ok);
    QVERIFY(home.items().Migra(kind, 1, 2));
}

const std::vector<Row>& rows() {
    static const std::vector<Row> all{
        {"rename a label", [](ItemCatalog& home) { QVERIFY(home.items().rename(6, 1, "London")); },
         "~Label 1"},
        {"add a label", [](ItemCatalog& home) { QVERIFY(home.items().addNamed(6, "Erato") == 3); },
         "+Label 3"},
        {"delete a label", [](ItemCatalog& home) { eliminate(home, 6, 1); }, "~Recording 1, -Label 1"},
        {"merge labels", [](ItemCatalog& home) { merge(home, 6); }, "~Recording 1, -Label 1; Label 1 into 2"},
        {"add a composer",
         [](ItemCatalog& home) {
             Person person;
             person.last = "Haydn";
             QVERIFY(home.items().AggiungiItem(1, person));
         },
         "+Composer 3"},
        {"delete a composer", [](ItemCatalog& home) { eliminate(home, 1, 1); },
         "-Composer 1, ~Performer 1, ~Recording 1, -Work 1, -Work 3, -MainWork 1, -CpsGenre 1, -PlacedWork "
         "1, -Link 1"},
        {"merge composers", [](ItemCatalog& home) { merge(home, 1); },
         "~Composer 2, -Composer 1, ~Recording 1, ~Work 1, ~Work 3, ~MainWork 1, ~CpsGenre 1, ~PlacedWork 1, "
         "~Link 1; Composer 1 into 2"},
        {"delete a performer", [](ItemCatalog& home) { eliminate(home, 2, 2); },
         "-Performer 2, ~Recording 2, ~PlacedWork 2"},
        {"delete a recording", [](ItemCatalog& home) { eliminate(home, 3, 2); },
         "~Composer 2, ~Performer 2, -Recording 2, ~Custom 1, ~Work 2, -PlacedWork 2"},
        {"delete a custom card", [](ItemCatalog& home) { eliminate(home, 4, 1); }, "~Recording 2, -Custom 1"},
        {"add a custom card",
         [](ItemCatalog& home) {
             qint64 id = 0;
             QVERIFY(CustomCards(*home.session).save(id, "Third"));
         },
         "+Custom 3"},
        {"change a work",
         [](ItemCatalog& home) {
             Work work = CWKS(*home.session).work(3);
             work.title = "Partita 2";
             QVERIFY(CWKS(*home.session).ModificaWork(work));
         },
         "~Composer 1, ~Work 3"},
        {"delete a work",
         [](ItemCatalog& home) {
             home.messages.willAnswer(Answer::Yes);
             QVERIFY(CWKS(*home.session).EliminaWork(2));
         },
         "~Composer 2, ~Performer 2, ~Recording 2, -Work 2, -Personage 1, -PlacedWork 2"},
        {"add a character",
         [](ItemCatalog& home) { QVERIFY(CWKS(*home.session).addCharacter(1, "Aria") == 2); },
         "~Composer 1, ~Work 1, +Personage 2"},
        {"delete a character", [](ItemCatalog& home) { QVERIFY(CWKS(*home.session).deleteCharacters({1})); },
         "~Composer 2, ~Performer 2, ~Recording 2, ~Work 2, -Personage 1, ~PlacedWork 2"},
        {"change a recording",
         [](ItemCatalog& home) {
             RecordingEditor editor(*home.session, 1);
             RecordingSpecs specs = editor.specs();
             specs.set("RecTitle", "Goldberg 1981");
             QVERIFY(editor.applySpecs(specs));
         },
         "~Recording 1"},
        {"add an artist",
         [](ItemCatalog& home) {
             QVERIFY(RecordingEditor(*home.session, 1).applyArtists(std::vector<qint64>{1, 2}, std::nullopt));
         },
         "~Composer 2, ~Recording 1"},
        {"tracks",
         [](ItemCatalog& home) {
             QVERIFY(RecordingEditor(*home.session, 1)
                         .applyTracks(1, std::vector<Track>{{"A", ""}, {"B", ""}}, {}));
         },
         "~Recording 1, +Track 2, ~Track 1"},
        {"classify", [](ItemCatalog& home) { QVERIFY(Classification(*home.session, 3).assign({2}, {1})); },
         "~Recording 2, ~RecSub 1"},
        {"delete a category",
         [](ItemCatalog& home) {
             home.messages.willAnswer(Answer::Ok);
             QVERIFY(Classification(*home.session, 3).remove(Classification::Category, 1));
         },
         "~Recording 1, -RecClass 1, -RecSub 1"},
        {"add a picture",
         [](ItemCatalog& home) {
             QVERIFY(CardImages(*home.session, {"Rec", 1}).add(halves({4, 4}), "Back") == 2);
         },
         "~Recording 1, +Image 2"},
        {"replace a picture",
         [](ItemCatalog& home) {
             QVERIFY(CardImages(*home.session, {"Rec", 1}).replace(1, halves({4, 4})));
         },
         "~Recording 1, ~Image 1"},
        {"remove a picture",
         [](ItemCatalog& home) {
             QVERIFY(CardImages(*home.session, {"Rec", 1}).remove(1));
         },
         "~Recording 1, -Image 1"},
        {"add a link",
         [](ItemCatalog& home) {
             WebLink link{0, "http://b", ""};
             QVERIFY(CardLinks(*home.session, {"Cps", 2}).save(link));
         },
         "~Composer 2, +Link 2"},
        {"relate",
         [](ItemCatalog& home) {
             QVERIFY(CardRelations(*home.session, {"UserDef", 2}).change(1, {1}, {}));
         },
         "~Composer 1, ~Custom 2"},
        {"group a work",
         [](ItemCatalog& home) {
             QVERIFY(ComposerCatalog(*home.session, 1).assign(CatalogBranch::Genres, 1, {3}));
         },
         "~Composer 1, ~Work 3"},
        {"rename a key", [](ItemCatalog& home) { QVERIFY(KeyNames(*home.session).rename(1, "C")); },
         "~KeyName 1"},
        {"look at a card",
         [](ItemCatalog& home) { QVERIFY(saveCardState(*home.session, "Rec", 1, "RecContents")); }, ""}};
    return all;
}

} // namespace

void TestChanges::operations_data() {
    QTest::addColumn<int>("row");
    for (int row = 0; row < int(rows().size()); ++row)
        QTest::newRow(rows()[size_t(row)].name) << row;
}

void TestChanges::operations() {
    QFETCH(int, row);
    const Row& tried = rows()[size_t(row)];
    ItemCatalog home;
    for (const char* statement : catalogRows)
        home.run(statement);
    QStringList told;
    QObject listener;
    QObject::connect(&home.session->changes(), &ChangeAnnouncer::committed, &listener,
                     [&](const CatalogChanges& changes) { told << text(changes); });
    tried.run(home);
    const QString wanted = QString::fromLatin1(tried.told);
    QCOMPARE(told, wanted.isEmpty() ? QStringList() : QStringList(wanted));
    if (wanted.isEmpty())
        return;
    QVERIFY(home.session->history().undo());
    QStringList expected = reversed(wanted).split(", ");
    QStringList found = told.value(1).split(", ");
    expected.sort();
    found.sort();
    QCOMPARE(found, expected);
}

void TestChanges::listenersAreToldOnce() {
    ItemCatalog home(true);
    int calls = 0;
    CatalogChanges told;
    auto listener = std::make_unique<QObject>();
    home.session->changes().subscribe(listener.get(), [&](const CatalogChanges& changes) {
        ++calls;
        told = changes;
    });
    for (int i = 0; i < 100; ++i)
        QVERIFY(home.items().rename(ItemKind::Label, 1 + i % 10, QString("Name %1").arg(i)));
    const qint64 passing = home.items().addNamed(ItemKind::Label, "Passing");
    eliminate(home, ItemKind::Label, passing);
    QCOMPARE(calls, 0); // not within the event
    QCoreApplication::processEvents();
    QCOMPARE(calls, 1);
    QCOMPARE(told.ids(Thing::Label, CatalogChanges::How::Changed).size(), 10);
    QVERIFY(!told.concerns({Thing::Label, passing}));
    QVERIFY(told.touches(Thing::Label) && !told.touches(Thing::Work));
    QVERIFY(home.items().rename(ItemKind::Label, 1, "Later"));
    listener.reset();
    QCoreApplication::processEvents();
    QCOMPARE(calls, 1); // whoever is gone is not told
}

// A table that the log does not know would change unseen.
void TestChanges::tablesAreThoseOfTheCatalog() {
    ItemCatalog home;
    Connection& connection = home.session->connection();
    QStringList known{"TsrHistory"};
    for (const RecordedTable& table : recordedTables()) {
        known << table.name;
        const QStringList columns = connection.columnsOf(table.name);
        if (table.key)
            QCOMPARE(columns.front(), table.key);
        for (const RowMeaning& meaning : table.meanings)
            QVERIFY2(columns.contains(meaning.column, Qt::CaseInsensitive), table.name);
    }
    known.sort(Qt::CaseInsensitive);
    QCOMPARE(connection.tables(), known);
    for (const ItemKind& kind : itemKinds()) {
        const ThingName* name = thingName(Thing(kind.number));
        QVERIFY(name);
        QCOMPARE(name->table, kind.table);
        QCOMPARE(name->key, kind.key);
    }
}

QTEST_GUILESS_MAIN(TestChanges)
#include "test_changes.moc"
