// SPDX-License-Identifier: GPL-3.0-or-later
// Deleting items with everything that depends on them, and merging one item into another.
#include "store/AttachmentFiles.h"
#include "store/CatalogCheck.h"
#include "support/ItemCatalog.h"
#include "support/Writing.h"

#include <QDir>

using namespace tessaranth;

namespace {

/// The sample, in which cards can be given things that hang off them.
struct Sample : ItemCatalog {
    Sample() : ItemCatalog(true) {
        for (const char* table : {"Web", "Relations"}) // only what the test adds is counted
            run(QString("DELETE FROM ") + table);
    }

    QString addFile(Session::Folder folder, const QString& name) const {
        QDir().mkpath(session->dataFolder(folder));
        QFile file(session->dataFolder(folder) + '/' + name);
        if (!file.open(QIODevice::WriteOnly) || file.write("x") != 1)
            QTest::qFail("no file", __FILE__, __LINE__);
        return file.fileName();
    }
    /// One of each: picture, document, media, link and relation. Answers with the files.
    QStringList attach(const QString& code, qint64 id, const QString& title = "a") const {
        QStringList files;
        const auto add = [&](const char* table, const char* column, const char* more) {
            const QString last =
                QString("SELECT MAX(OrderNbr) FROM %1 WHERE RelatedCat = '%2' AND RelatedID = %3");
            const qint64 order = *more ? number(last.arg(table, code).arg(id)) + 1 : 0;
            run(QString("INSERT INTO %1 (RelatedCat, RelatedID, %2%3) VALUES ('%4', %5, '%6'%7)")
                    .arg(table, column, more, code)
                    .arg(id)
                    .arg(title, *more ? QString(", %1").arg(order) : QString()));
            return QString::number(session->connection().lastKey());
        };
        files << addFile(Session::Folder::Images, add("Images", "ImageTitle", ", OrderNbr"));
        files << addFile(Session::Folder::Documents, add("Cards", "CardTitle", ", OrderNbr"));
        add("Media", "MediaTitle", "");
        add("Web", "Alias", "");
        run(QString("INSERT INTO Relations (UserDefID, ItemType, ItemID) VALUES (%1)")
                .arg(relation(code, id)));
        return files;
    }
    qint64 attached(const QString& code, qint64 id) const {
        qint64 rows = 0;
        for (const char* table : {"Images", "Cards", "Media", "Web"})
            rows += number(QString("SELECT COUNT(*) FROM %1 WHERE RelatedCat = '%2' AND RelatedID = %3")
                               .arg(table, code)
                               .arg(id));
        return rows +
               number("SELECT COUNT(*) FROM Relations WHERE " +
                      (code == "UserDef" ? QString("UserDefID = %1").arg(id)
                                         : QString("ItemType = '%1' AND ItemID = %2").arg(code).arg(id)));
    }
    /// Relations are between a custom card and one of another kind.
    static QString relation(const QString& code, qint64 id) {
        return code == "UserDef" ? QString("%1, 'Rec', 7").arg(id) : QString("9, '%1', %2").arg(code).arg(id);
    }
    /// What the check finds.
    QStringList orphans() {
        QStringList found;
        CatalogCheck(*session).find(progress, [&found](const CatalogCheck::Finding& finding) {
            if (!finding.caption.startsWith("Disc identifiers")) // these outlive their recording
                found << finding.text();
        });
        return found;
    }
    /// Every row of every table.
    QString contents() const {
        QString all;
        for (const QString& table : session->connection().tables()) {
            Query rows = session->connection().query("SELECT * FROM " + table);
            while (rows.next())
                for (int column = 0; column < rows.columnCount(); ++column)
                    all += rows.text(column) + (column ? '\t' : '\n');
        }
        return all;
    }
    qint64 rowsOf(const QString& tables, const QString& condition) const {
        qint64 rows = 0;
        for (const QString& table : tables.split(' '))
            rows += number("SELECT COUNT(*) FROM " + table + " WHERE " + condition);
        return rows;
    }
};

/// Tables that a card's key stands in, and those whose rows must all outlive the card.
const struct KindTables {
    int kind;
    const char *own, *others;
} kindTables[] = {{ItemKind::Composer,
                   "CpsGenres MainWorks CpsSubCatJoin Catalogs Compositions CompOnRec CpsOnRec Cps",
                   "Rec Tracks Pfr PfrOnRec UserDef"},
                  {ItemKind::Performer, "PfrSubCatJoin PfrOnRec CompOnRecPfr Pfr",
                   "Rec Tracks Cps Compositions CompOnRec UserDef"},
                  {ItemKind::Recording, "RecSubCatJoin CompOnRec CpsOnRec PfrOnRec Rec Tracks",
                   "Cps Pfr Compositions Personages UserDef DiscIds"},
                  {ItemKind::Custom, "UserDefSubCatJoin UserDef", "Cps Pfr Rec Tracks Compositions"}};

const KindTables& tablesOf(int kind) { return kindTables[kind - 1]; }

QString cardAnd(const ItemKind& kind, qint64 id) { return QString("%1 = %2").arg(kind.key).arg(id); }

void addCardKinds() {
    QTest::addColumn<int>("kind");
    for (const ItemKind& kind : itemKinds())
        if (kind.isCard())
            QTest::newRow(qPrintable(kind.code)) << kind.number;
}

void addAllKinds() {
    QTest::addColumn<int>("kind");
    for (const ItemKind& kind : itemKinds())
        QTest::newRow(qPrintable(kind.code)) << kind.number;
}

void addLookupKinds() {
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("user");
    for (const ItemKind& kind : itemKinds())
        if (!kind.isCard())
            QTest::newRow(qPrintable(kind.code))
                << kind.number << (kind.number == ItemKind::Genre ? "Compositions" : "Rec");
}

} // namespace

namespace {

/// Cards by key but those of a composer's works, which go and come with him.
QStringList withoutWorks(QStringList cards) {
    cards.removeIf([](const QString& key) { return key.startsWith("#Comp"); });
    return cards;
}

} // namespace

class TestDeletions : public QObject {
    Q_OBJECT

private slots:
    void questionNamesWhatGoes();
    void questionCountsWhatGoes_data();
    void questionCountsWhatGoes();
    void cardGoesWithWhatHangsOffIt_data() { addCardKinds(); }
    void cardGoesWithWhatHangsOffIt();
    void composersWorksGoWithTheirDocuments();
    void worksHeldElsewhereStayInTheCollection();
    void lookupLeavesNoReference_data() { addLookupKinds(); }
    void lookupLeavesNoReference();
    void userStopsBetweenTwo();
    void failureAnywhereTakesAllBack_data() { addAllKinds(); }
    void failureAnywhereTakesAllBack();
    void deletingSeveralIsOneStep();
    void uniqueIndexEndsOrFoldsAMerge();
    void mergeAsksFirst();
    void cardMovesWhole_data() { addCardKinds(); }
    void cardMovesWhole();
    void sharedLinksBecomeOne();
    void recordingsAreJoinedInOrder();
    void lookupMoves_data() { addLookupKinds(); }
    void lookupMoves();
    void logoOutlivesAMergeThatFailed();
};

void TestDeletions::questionNamesWhatGoes() {
    ItemCatalog catalog;
    CMIT items = catalog.items();
    catalog.messages.willAnswer(Answer::No);
    QVERIFY(!items.ConfermaEliminazione(ItemKind::Custom, {"One", "Two"}, {1, 2}));
    const Question asked = catalog.messages.asked.back();
    QCOMPARE(asked.title, QString("Delete item(s)"));
    QCOMPARE(asked.text, QString("Custom: One, Two\nwill be deleted.\n\nWarning!!\nAll related data will be "
                                 "deleted!\n\nContinue?"));
    QCOMPARE(asked.buttons, std::vector({Answer::Yes, Answer::No}));
    QCOMPARE(asked.defaultButton, Answer::No);
    QCOMPARE(asked.icon, MessageIcon::Question);
    for (const ItemKind& kind : itemKinds()) {
        catalog.messages.willAnswer(Answer::Yes);
        QVERIFY(items.ConfermaEliminazione(kind.number, {"%1"}, {1}));
        QVERIFY(catalog.messages.asked.back().text.startsWith(kind.messageLabel + "%1\n"));
    }
    QVERIFY(!items.ConfermaEliminazione(ItemKind::Genre, {}, {})); // nothing to ask
}

void TestDeletions::questionCountsWhatGoes_data() {
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("counts");
    QTest::newRow("composer") << int(ItemKind::Composer)
                              << "Deleted too: 2 works, 1 picture, 1 document, 1 document of a work, 1 media "
                                 "entry, 1 web link, 1 relation\nChanged: 2 recordings";
    QTest::newRow("performer") << int(ItemKind::Performer) << "Changed: 1 recording";
    QTest::newRow("recording") << int(ItemKind::Recording) << "Deleted too: 3 tracks";
    QTest::newRow("custom item") << int(ItemKind::Custom) << "Deleted too: 1 relation";
    QTest::newRow("genre") << int(ItemKind::Genre) << "Changed: 1 work";
    QTest::newRow("label") << int(ItemKind::Label) << "Changed: 1 recording";
    QTest::newRow("source") << int(ItemKind::Source) << "";
}

void TestDeletions::questionCountsWhatGoes() {
    QFETCH(int, kind);
    QFETCH(QString, counts);
    ItemCatalog catalog;
    for (const char* statement :
         {"INSERT INTO Compositions (CompID, CpsID, GenreID) VALUES (1, 1, 1)",
          "INSERT INTO Compositions (CompID, CpsID, GenreID) VALUES (2, 1, 0)",
          "INSERT INTO Compositions (CompID, CpsID, GenreID) VALUES (3, 2, 2)",
          "INSERT INTO Rec (RecID, RecTitle, LabelID) VALUES (1, 'a', 1)",
          "INSERT INTO Rec (RecID, RecTitle, LabelID) VALUES (2, 'b', 2)",
          "INSERT INTO CpsOnRec (CpsID, RecID) VALUES (1, 1)",
          "INSERT INTO CompOnRec (CompID, CpsID, RecID) VALUES (1, 1, 1)",
          "INSERT INTO CompOnRec (CompID, CpsID, RecID) VALUES (2, 1, 1)",
          "INSERT INTO CompOnRec (CompID, CpsID, RecID) VALUES (1, 1, 2)",
          "INSERT INTO PfrOnRec (PfrID, RecID) VALUES (1, 2)",
          "INSERT INTO Tracks (RecID, Disc, TrackNbr, TrackName, TrackLen) VALUES (1, 1, 1, 'a', '')",
          "INSERT INTO Tracks (RecID, Disc, TrackNbr, TrackName, TrackLen) VALUES (1, 1, 1, 'a', '')",
          "INSERT INTO Tracks (RecID, Disc, TrackNbr, TrackName, TrackLen) VALUES (1, 1, 1, 'a', '')",
          "INSERT INTO Images (RelatedCat, RelatedID) VALUES ('Cps', 1)",
          "INSERT INTO Cards (RelatedCat, RelatedID) VALUES ('Cps', 1)",
          "INSERT INTO Cards (RelatedCat, RelatedID) VALUES ('Comp', 2)",
          "INSERT INTO Media (RelatedCat, RelatedID) VALUES ('Cps', 1)",
          "INSERT INTO Web (RelatedCat, RelatedID) VALUES ('Cps', 1)",
          "INSERT INTO Relations (ItemType, ItemID, UserDefID) VALUES ('Cps', 1, 1)"})
        catalog.run(statement);
    catalog.messages.willAnswer(Answer::No);
    QVERIFY(!catalog.items().ConfermaEliminazione(kind, {"One"}, {1, 99}));
    QCOMPARE(catalog.messages.asked[0].text.section("Continue?", 1),
             counts.isEmpty() ? counts : "\n\n" + counts);
}

void TestDeletions::cardGoesWithWhatHangsOffIt() {
    QFETCH(int, kind);
    Sample sample;
    const ItemKind& what = *itemKind(kind);
    const QStringList before = sample.orphans();
    QStringList gone = sample.attach(what.code, 1);
    const QStringList stay = sample.attach(what.code, 2);
    sample.run("INSERT INTO Catalogs (CpsID, CpsName, FileName, DateAdded) VALUES (1, 'a', 'b', Now)");
    sample.run("INSERT INTO DiscIds (RecID, DiscNbr, DiscId) VALUES (1, 1, 'abc')");
    QHash<QString, qint64> others;
    for (const QString& table : QString(tablesOf(kind).others).split(' '))
        others[table] = sample.count(table);
    const qint64 second = sample.rowsOf(tablesOf(kind).own, cardAnd(what, 2));
    QVERIFY(sample.rowsOf(tablesOf(kind).own, cardAnd(what, 1)) > 1);

    FakeCards cards;
    CMIT items = sample.items();
    items.setOpenCards(&cards);
    QVERIFY(items.EliminaItem(kind, {1}, sample.progress));
    QCOMPARE(sample.messages.told, QStringList());
    QCOMPARE(sample.rowsOf(tablesOf(kind).own, cardAnd(what, 1)), 0);
    QCOMPARE(sample.attached(what.code, 1), 0);
    for (const QString& file : gone)
        QVERIFY2(!QFile::exists(file), qPrintable(file));
    // Nothing of anybody else's went.
    QCOMPARE(sample.attached(what.code, 2), 5);
    for (const QString& file : stay)
        QVERIFY2(QFile::exists(file), qPrintable(file));
    QCOMPARE(sample.rowsOf(tablesOf(kind).own, cardAnd(what, 2)), second);
    for (auto table = others.cbegin(); table != others.cend(); ++table)
        QCOMPARE(sample.count(table.key()), table.value());
    QCOMPARE(sample.orphans(), before);
    QCOMPARE(withoutWorks(cards.closed), QStringList("#" + what.code + "1"));
}

void TestDeletions::composersWorksGoWithTheirDocuments() {
    Sample sample;
    const qint64 work = sample.number("SELECT CompID FROM Compositions WHERE CpsID = 1");
    const qint64 other = sample.number("SELECT CompID FROM Compositions WHERE CpsID = 2");
    sample.run("INSERT INTO Cards (RelatedCat, RelatedID) VALUES ('Comp', " + QString::number(work) + ")");
    const QString gone =
        sample.addFile(Session::Folder::Documents, QString::number(sample.session->connection().lastKey()));
    sample.run("INSERT INTO Cards (RelatedCat, RelatedID) VALUES ('Comp', " + QString::number(other) + ")");
    const QString stays =
        sample.addFile(Session::Folder::Documents, QString::number(sample.session->connection().lastKey()));
    sample.run("INSERT INTO Personages (CompID, PersonageName) VALUES (" + QString::number(work) + ", 'X')");
    QVERIFY(sample.items().EliminaItem(ItemKind::Composer, {1}, sample.progress));
    QCOMPARE(sample.count("Cards"), 1);
    QVERIFY(!QFile::exists(gone));
    QVERIFY(QFile::exists(stays));
    QCOMPARE(sample.number("SELECT COUNT(*) FROM Personages WHERE PersonageName = 'X'"), 0);
}

void TestDeletions::worksHeldElsewhereStayInTheCollection() {
    Sample sample;
    sample.run("INSERT INTO Compositions (CpsID, CompTitle, InCollection) VALUES (1, 'Both', True)");
    const qint64 both = sample.session->connection().lastKey();
    sample.run("INSERT INTO Compositions (CpsID, CompTitle, InCollection) VALUES (1, 'Only here', True)");
    const qint64 only = sample.session->connection().lastKey();
    for (const auto& [recording, work] : {std::pair(1, both), std::pair(2, both), std::pair(1, only)})
        sample.run(QString("INSERT INTO CompOnRec (RecID, CpsID, CompID) VALUES (%1, 1, %2)")
                       .arg(recording)
                       .arg(work));
    QVERIFY(sample.items().EliminaItem(ItemKind::Recording, {1}, sample.progress));
    const QString collected = "SELECT COUNT(*) FROM Compositions WHERE InCollection = True AND CompID = ";
    QCOMPARE(sample.number(collected + QString::number(both)), 1);
    QCOMPARE(sample.number(collected + QString::number(only)), 0);
    // Two parts of it on one recording are one recording.
    sample.run(QString("INSERT INTO CompOnRec (RecID, CpsID, CompID) VALUES (2, 1, %1)").arg(both));
    QVERIFY(sample.items().EliminaItem(ItemKind::Recording, {2}, sample.progress));
    QCOMPARE(sample.number(collected + QString::number(both)), 0);
}

void TestDeletions::lookupLeavesNoReference() {
    QFETCH(int, kind);
    QFETCH(QString, user);
    Sample sample;
    const ItemKind& what = *itemKind(kind);
    const QString logo = sample.addFile(Session::Folder::Labels, "1");
    const QString otherLogo = sample.addFile(Session::Folder::Labels, "2");
    for (const int id : {1, 2})
        sample.run(QString("UPDATE %1 SET %2 = %3 WHERE %1ID = %3")
                       .arg(user, what.key)
                       .arg(id)
                       .replace("CompositionsID", "CompID"));
    const qint64 users = sample.count(user);
    const qint64 names = sample.count(what.table);
    const auto used = [&](int id) { return sample.rowsOf(user, cardAnd(what, id)); };
    const qint64 none = used(0);
    const qint64 first = used(1);
    const qint64 second = used(2);
    QVERIFY(first > 0 && second > 0);
    QVERIFY(sample.items().EliminaItem(kind, {1}, sample.progress));
    QCOMPARE(sample.count(what.table), names - 1);
    QCOMPARE(sample.items().nameOf(kind, 1), QString());
    QCOMPARE(sample.count(user), users);
    QCOMPARE(used(0), none + first);
    QCOMPARE(used(1), 0);
    QCOMPARE(used(2), second);
    QCOMPARE(QFile::exists(logo), kind != ItemKind::Label);
    QVERIFY(QFile::exists(otherLogo));
}

void TestDeletions::userStopsBetweenTwo() {
    struct StopsAfterOne : Progress {
        void stage(const QString&) override {}
        void percentage(int) override { ++steps; }
        bool stopped() const override { return steps > 0; }
        int steps = 0;
    } progress;
    Sample sample;
    const qint64 before = sample.count("Cps");
    const QStringList files = sample.attach("Cps", 5);
    QVERIFY(!sample.items().EliminaItem(ItemKind::Composer, {5, 6, 7}, progress));
    QCOMPARE(sample.count("Cps"), before);
    QVERIFY(QFile::exists(files.front()));
    QCOMPARE(sample.messages.told, QStringList()); // he knows that he stopped it
}

// Each table that a deletion or a merge writes in turn refuses, as a full or strange catalog would.
void TestDeletions::failureAnywhereTakesAllBack() {
    QFETCH(int, kind);
    Sample sample;
    const ItemKind& what = *itemKind(kind);
    QString tables = what.table;
    if (what.isCard()) {
        for (const int id : {1, 2})
            sample.attach(what.code, id);
        tables = QString(tablesOf(kind).own) + " Images Cards Media Web Relations";
        sample.run("INSERT INTO Catalogs (CpsID, CpsName, FileName, DateAdded) VALUES (1, 'a', 'b', Now)");
    } else {
        const QString user = kind == ItemKind::Genre ? "Compositions" : "Rec";
        sample.run(QString("UPDATE %1 SET %2 = 1").arg(user, what.key));
        tables += ' ' + user;
    }
    const QString before = sample.contents();
    for (const QString& table : tables.split(' '))
        for (const bool merge : {false, true}) {
            for (const char* event : {"UPDATE", "DELETE"})
                writeNative(
                    sample.session->connection(),
                    QString(
                        "CREATE TRIGGER refuse%1 BEFORE %1 ON %2 BEGIN SELECT RAISE(ABORT, 'refused'); END")
                        .arg(event, table)
                        .toUtf8());
            const QByteArray where = (merge ? "merge, " : "delete, ") + table.toUtf8();
            sample.messages.told.clear();
            if (merge)
                sample.messages.willAnswer(Answer::Ok);
            const bool done = merge ? sample.items().Migra(kind, 1, 2)
                                    : sample.items().EliminaItem(kind, {1}, sample.progress);
            QVERIFY2(!done, where);
            QVERIFY2(sample.messages.told.join(' ').contains("refused"), where);
            QVERIFY2(sample.contents() == before, where);
            for (const char* event : {"UPDATE", "DELETE"})
                writeNative(sample.session->connection(), "DROP TRIGGER refuse" + QByteArray(event));
        }
}

void TestDeletions::deletingSeveralIsOneStep() {
    Sample sample;
    const QStringList files = sample.attach("Cps", 5);
    const QString before = sample.contents();
    writeNative(sample.session->connection(), "CREATE TRIGGER refuse BEFORE DELETE ON Cps WHEN old.CpsID = 7 "
                                              "BEGIN SELECT RAISE(ABORT, 'refused'); END");
    QVERIFY(!sample.items().EliminaItem(ItemKind::Composer, {5, 6, 7}, sample.progress));
    QCOMPARE(sample.messages.told.size(), 1);
    QVERIFY(sample.contents() == before);
    for (const QString& file : files)
        QVERIFY2(QFile::exists(file), qPrintable(file));
}

void TestDeletions::uniqueIndexEndsOrFoldsAMerge() {
    Sample sample;
    Connection& connection = sample.session->connection();
    // Links that are in both are folded before the index sees them.
    sample.run("DELETE FROM CpsOnRec");
    for (const char* link : {"1, 10", "2, 10", "2, 11"})
        sample.run(QString("INSERT INTO CpsOnRec (CpsID, RecID) VALUES (%1)").arg(link));
    sample.run("INSERT INTO Relations (UserDefID, ItemType, ItemID) VALUES (9, 'Pfr', 2)");
    sample.run("INSERT INTO Relations (UserDefID, ItemType, ItemID) VALUES (9, 'Cps', 1)");
    writeNative(connection, "CREATE UNIQUE INDEX once ON CpsOnRec (CpsID, RecID)");
    sample.messages.willAnswer(Answer::Ok);
    QVERIFY(sample.items().Migra(ItemKind::Composer, 2, 1));
    QCOMPARE(sample.rowsOf("CpsOnRec", "CpsID = 1"), 2);
    QCOMPARE(sample.rowsOf("Relations", "ItemType = 'Pfr' AND ItemID = 2"), 1);

    // Works are no links: what the index refuses ends the merge.
    for (const char* composer : {"1", "3"})
        writeNative(connection,
                    QByteArray("UPDATE Compositions SET CompTitle = 'Same' WHERE CompID = (SELECT "
                               "MIN(CompID) FROM Compositions WHERE CpsID = ") +
                        composer + ')');
    writeNative(connection,
                "CREATE UNIQUE INDEX title ON Compositions (CpsID, CompTitle) WHERE CompTitle = 'Same'");
    const QString before = sample.contents();
    sample.messages.willAnswer(Answer::Ok);
    QVERIFY(!sample.items().Migra(ItemKind::Composer, 3, 1));
    QCOMPARE(sample.messages.told.size(), 1);
    QVERIFY(sample.contents() == before);
}

void TestDeletions::mergeAsksFirst() {
    Sample sample;
    CMIT items = sample.items();
    FakeCards cards;
    items.setOpenCards(&cards);
    const qint64 before = sample.session->connection().changesOfSession();
    QVERIFY(!items.Migra(ItemKind::Composer, 1, 1));
    QVERIFY(!items.Migra(ItemKind::Composer, 1, 9999));
    QCOMPARE(sample.messages.told.size(), 2);
    sample.messages.willAnswer(Answer::Cancel);
    QVERIFY(!items.Migra(ItemKind::Composer, 1, 2));
    const Question asked = sample.messages.asked.back();
    QCOMPARE(asked.title, QString("Migrate "));
    QCOMPARE(asked.text, "Do you want to migrate all the data from " + items.nameOf(ItemKind::Composer, 1) +
                             "\nto " + items.nameOf(ItemKind::Composer, 2) + "?");
    QCOMPARE(asked.buttons, std::vector({Answer::Ok, Answer::Cancel}));
    QCOMPARE(asked.defaultButton, Answer::Cancel);
    QCOMPARE(sample.session->connection().changesOfSession(), before);
    QCOMPARE(cards.closed + cards.reloaded, QStringList());
}

void TestDeletions::cardMovesWhole() {
    QFETCH(int, kind);
    Sample sample;
    const ItemKind& what = *itemKind(kind);
    const QStringList before = sample.orphans();
    QStringList files;
    for (const char* title : {"target 1", "target 2"})
        files += sample.attach(what.code, 1, title);
    for (const char* title : {"source 1", "source 2"})
        files += sample.attach(what.code, 2, title);
    sample.run("INSERT INTO Catalogs (CpsID, CpsName, FileName, DateAdded) VALUES (2, 'a', 'b', Now)");
    sample.run("INSERT INTO DiscIds (RecID, DiscNbr, DiscId) VALUES (2, 1, 'abc')");
    const qint64 related = sample.attached(what.code, 1) + sample.attached(what.code, 2);

    FakeCards cards;
    CMIT items = sample.items();
    items.setOpenCards(&cards);
    sample.messages.willAnswer(Answer::Ok);
    QVERIFY(items.Migra(kind, 2, 1));
    QCOMPARE(sample.messages.told, QStringList());
    QCOMPARE(sample.rowsOf(tablesOf(kind).own, cardAnd(what, 2)), 0);
    QCOMPARE(sample.number("SELECT COUNT(*) FROM " + what.table + " WHERE " + cardAnd(what, 1)), 1);
    QCOMPARE(sample.attached(what.code, 2), 0);
    // Four relations to the same card have become one.
    QCOMPARE(sample.attached(what.code, 1), related - 3);
    for (const QString& file : files)
        QVERIFY2(QFile::exists(file), qPrintable(file));
    QCOMPARE(sample.orphans(), before);
    QCOMPARE(cards.closed.first(), "#" + what.code + "2");
    QCOMPARE(withoutWorks(cards.reloaded), QStringList("#" + what.code + "1"));
    if (kind == ItemKind::Recording)
        QCOMPARE(sample.number("SELECT RecID FROM DiscIds"), 1);

    // The target's own picture stays the first, and what came follows in its own order.
    for (const char* table : {"Image", "Card"}) {
        Query rows = sample.session->connection().query(
            QString("SELECT %1Title, OrderNbr FROM %1s WHERE RelatedCat = '%2' ORDER BY OrderNbr")
                .arg(table, what.code));
        QStringList order;
        while (rows.next())
            order << QString::number(rows.integer(1)) + ' ' + rows.text(0);
        QCOMPARE(order, QStringList({"1 target 1", "2 target 2", "3 source 1", "4 source 2"}));
    }
}

void TestDeletions::sharedLinksBecomeOne() {
    Sample sample;
    sample.run("DELETE FROM CpsOnRec");
    sample.run("DELETE FROM CpsSubCatJoin");
    for (const char* link : {"1, 10", "2, 10", "2, 11", "3, 10"})
        sample.run(QString("INSERT INTO CpsOnRec (CpsID, RecID) VALUES (%1)").arg(link));
    for (const char* link : {"1, 4", "2, 4", "2, 5"})
        sample.run(QString("INSERT INTO CpsSubCatJoin (CpsID, CpsSubCatID) VALUES (%1)").arg(link));
    const qint64 works = sample.rowsOf("Compositions", "CpsID < 3");
    const qint64 genres = sample.rowsOf("CpsGenres", "CpsID < 3");
    sample.messages.willAnswer(Answer::Ok);
    QVERIFY(sample.items().Migra(ItemKind::Composer, 2, 1));
    QCOMPARE(sample.rowsOf("CpsOnRec", "CpsID = 1 AND RecID = 10"), 1);
    QCOMPARE(sample.rowsOf("CpsOnRec", "CpsID = 1 AND RecID = 11"), 1);
    QCOMPARE(sample.rowsOf("CpsOnRec", "CpsID = 3 AND RecID = 10"), 1);
    QCOMPARE(sample.count("CpsOnRec"), 3);
    QCOMPARE(sample.count("CpsSubCatJoin"), 2);
    // Works and genres of the same name are two still: only somebody who knows them can tell.
    QCOMPARE(sample.rowsOf("Compositions", "CpsID = 1"), works);
    QCOMPARE(sample.rowsOf("CpsGenres", "CpsID = 1"), genres);
}

void TestDeletions::recordingsAreJoinedInOrder() {
    Sample sample;
    const qint64 tracks = sample.rowsOf("Tracks", "RecID < 3");
    const qint64 first = sample.number("SELECT MAX(TrackNbr) FROM Tracks WHERE RecID = 1 AND Disc = 1");
    const QString name =
        sample.text("SELECT TrackName FROM Tracks WHERE RecID = 2 AND Disc = 1 AND TrackNbr = 1");
    QVERIFY(first > 0 && !name.isEmpty());
    sample.messages.willAnswer(Answer::Ok);
    QVERIFY(sample.items().Migra(ItemKind::Recording, 2, 1));
    QCOMPARE(sample.rowsOf("Tracks", "RecID = 1"), tracks);
    QCOMPARE(
        sample.text(QString("SELECT TrackName FROM Tracks WHERE RecID = 1 AND Disc = 1 AND TrackNbr = %1")
                        .arg(first + 1)),
        name);
    const QString twice = "SELECT Disc, TrackNbr FROM Tracks WHERE RecID = 1 GROUP BY Disc, TrackNbr HAVING "
                          "Count(TrackID) > 1";
    QVERIFY(!sample.session->connection().exists(twice));
}

void TestDeletions::lookupMoves() {
    QFETCH(int, kind);
    QFETCH(QString, user);
    Sample sample;
    const ItemKind& what = *itemKind(kind);
    for (const int id : {1, 2})
        sample.run(QString("UPDATE %1 SET %2 = %3 WHERE %1ID = %3")
                       .arg(user, what.key)
                       .arg(id)
                       .replace("CompositionsID", "CompID"));
    const auto used = [&](int id) { return sample.rowsOf(user, cardAnd(what, id)); };
    const qint64 both = used(1) + used(2);
    const qint64 names = sample.count(what.table);
    sample.messages.willAnswer(Answer::Ok);
    QVERIFY(sample.items().Migra(kind, 1, 2));
    QCOMPARE(used(1), 0);
    QCOMPARE(used(2), both);
    QCOMPARE(sample.count(what.table), names - 1);
    QCOMPARE(sample.items().nameOf(kind, 1), QString());
}

void TestDeletions::logoOutlivesAMergeThatFailed() {
    Sample sample;
    const QString logo = sample.addFile(Session::Folder::Labels, "1");
    writeNative(sample.session->connection(),
                "CREATE TRIGGER broken BEFORE DELETE ON Labels BEGIN SELECT RAISE(ROLLBACK, 'broken'); END");
    sample.messages.willAnswer(Answer::Ok);
    QVERIFY(!sample.items().Migra(ItemKind::Label, 1, 2));
    QVERIFY(QFile::exists(logo));
    writeNative(sample.session->connection(), "DROP TRIGGER broken");
    sample.messages.willAnswer(Answer::Ok);
    QVERIFY(sample.items().Migra(ItemKind::Label, 1, 2));
    QVERIFY(!QFile::exists(logo) &&
            AttachmentFiles(*sample.session).exists(Session::Folder::Labels, 2)); // it had none
}

QTEST_GUILESS_MAIN(TestDeletions)
#include "test_deletions.moc"
