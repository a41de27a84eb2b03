// SPDX-License-Identifier: GPL-3.0-or-later
#include "search/QuickSearch.h"

#include "store/Maintenance.h"
#include "store/TextIndex.h"
#include "support/ItemCatalog.h"
#include "support/Writing.h"

using namespace tessaranth;

class TestQuickSearch : public QObject {
    Q_OBJECT

    /// What a text finds, as "Group: text".
    static QStringList found(ItemCatalog& catalog, const QString& text) {
        QStringList lines;
        const auto groups = QuickSearch(*catalog.session).find(text);
        if (!groups)
            return {QStringLiteral("no answer")};
        for (const QuickSearch::Group& group : *groups)
            for (const QuickSearch::Hit& hit : group.hits)
                lines << group.caption + QStringLiteral(": ") + hit.text;
        return lines;
    }

private slots:
    void findsByTheBeginningsOfWords_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("hit");
        QTest::newRow("another case, no accent") << "DVORAK"
                                                 << "Composers: Dvořák, Antonín";
        QTest::newRow("two beginnings in any order") << "seb bac"
                                                     << "Composers: Bach, Johann Sebastian";
        QTest::newRow("a barcode") << "028944"
                                   << "Recordings: ";
        QTest::newRow("a work by its composer and number") << "bach 1007"
                                                           << "Works: ";
        QTest::newRow("an apostrophe parts words") << "d'amore"
                                                   << "Works: ";
        QTest::newRow("a track") << "allegro"
                                 << "Tracks: ";
    }
    void findsByTheBeginningsOfWords() {
        QFETCH(QString, text);
        QFETCH(QString, hit);
        ItemCatalog catalog(true);
        NoProgress progress;
        QVERIFY(QuickSearch(*catalog.session).prepare(progress));
        const QStringList lines = found(catalog, text);
        QVERIFY2(!lines.filter(hit).isEmpty(), qPrintable(lines.join(u'\n')));
    }

    void asksForEveryWordAndTakesAnyText() {
        ItemCatalog catalog(true);
        NoProgress progress;
        QVERIFY(QuickSearch(*catalog.session).prepare(progress));
        for (const char* text : {"", "  ", "\"*'%_[", "mozart qqqq", "NEAR(", "\xF0\x9F\x8E\xBB"})
            QCOMPARE(found(catalog, QString::fromUtf8(text)), QStringList());
        QVERIFY(!found(catalog, QStringLiteral("\"mozart\" OR*")).isEmpty() ||
                found(catalog, QStringLiteral("mozart")).size() > 1);
        const auto groups = QuickSearch(*catalog.session).find(QStringLiteral("a"));
        QVERIFY(groups && !groups->empty());
        for (const QuickSearch::Group& group : *groups)
            QVERIFY(group.hits.size() <= QuickSearch::hitsPerGroup);
    }

    // Whoever writes the tables, the words follow; also those of a row that stands in another table.
    void followsEveryChange() {
        ItemCatalog catalog;
        NoProgress progress;
        QVERIFY(QuickSearch(*catalog.session).prepare(progress));
        const auto is = [&](const QString& text, const QStringList& lines) {
            const QStringList now = found(catalog, text);
            if (now != lines)
                qWarning() << text << now;
            return now == lines;
        };
        catalog.run("INSERT INTO Cps (CpsLname, CpsFname, CatAcr) VALUES ('Zelenka', 'Jan Dismas', 'ZWV')");
        const qint64 composer = catalog.session->connection().lastKey();
        QCOMPARE(composer, 1); // the index adds rows of its own meanwhile
        catalog.run("INSERT INTO Compositions (CpsID, CompTitle, CompNbr) VALUES (1, 'Missa votiva', '18')");
        QVERIFY(is("zele votiv", {"Works: Missa votiva - ZWV 18"}));
        QVERIFY(is("zwv 18", {"Works: Missa votiva - ZWV 18"}));
        QVERIFY(is("dismas", {"Composers: Zelenka, Jan Dismas"}));

        catalog.run("UPDATE Cps SET CpsLname = 'Zelénka' WHERE CpsID = 1");
        catalog.run(
            "UPDATE Compositions SET CompTitle = 'Missa Omnium Sanctorum', CompNbr = '21' WHERE CompID = 1");
        QVERIFY(is("votiva", {}));
        QVERIFY(is("zelenka sanct", {"Works: Missa Omnium Sanctorum - ZWV 21"}));

        catalog.run("DELETE FROM Cps WHERE CpsID = 1");
        QVERIFY(is("zelenka", {}));
        QVERIFY(is("sanctorum", {"Works: Missa Omnium Sanctorum - 21"}));
        catalog.run("DELETE FROM Compositions WHERE CompID = 1");
        QVERIFY(is("sanctorum", {}));

        catalog.run("INSERT INTO Rec (RecTitle, Barcode) VALUES ('Requiem', '0028947')");
        const qint64 recording = catalog.session->connection().lastKey();
        catalog.run(QStringLiteral("INSERT INTO Tracks (RecID, Disc, TrackNbr, TrackName, TrackLen) VALUES "
                                   "(%1, 1, 1, 'Lacrimosa', '')")
                        .arg(recording));
        QVERIFY(is("0028", {"Recordings: Requiem"}));
        QVERIFY(is("lacri", {"Tracks: Lacrimosa"}));
        {
            Transaction undone(catalog.session->connection(), QStringLiteral("test"));
            catalog.run("UPDATE Rec SET RecTitle = 'Gloria'");
        }
        QVERIFY(is("gloria", {}));
        QVERIFY(is("requi", {"Recordings: Requiem"}));
    }

    void isMadeAgainWhenItIsMissingOrOld() {
        ItemCatalog catalog(true);
        NoProgress progress;
        Connection& connection = catalog.session->connection();
        const QStringList tables = connection.tables();
        QVERIFY(!TextIndex(connection).isCurrent());
        QVERIFY(QuickSearch(*catalog.session).prepare(progress));
        QVERIFY(TextIndex(connection).isCurrent());
        QCOMPARE(connection.tables(), tables);
        const QStringList before = found(catalog, "bach");
        QVERIFY(before.size() > 5);

        writeNative(connection, "DROP TRIGGER QuickRec_Rec_AFTERINSERT");
        catalog.run("INSERT INTO Rec (RecTitle) VALUES ('Bachiana')");
        QVERIFY(!TextIndex(connection).isCurrent());
        QVERIFY(QuickSearch(*catalog.session).prepare(progress));
        QCOMPARE(found(catalog, "bach").size(), before.size() + 1);
        QCOMPARE(connection.integrityFaults(), QStringList());

        // Tables are rebuilt under it, and emptied.
        catalog.run("ALTER TABLE Rec ALTER COLUMN RecTitle VARCHAR(240)");
        QVERIFY(!TextIndex(connection).isCurrent());
        QVERIFY(QuickSearch(*catalog.session).prepare(progress));
        QCOMPARE(found(catalog, "bachiana"), QStringList{"Recordings: Bachiana"});
        QVERIFY(Maintenance(*catalog.session).empty(progress));
        QVERIFY(QuickSearch(*catalog.session).prepare(progress));
        QCOMPARE(found(catalog, "b"), QStringList());
    }
};

QTEST_GUILESS_MAIN(TestQuickSearch)
#include "test_quicksearch.moc"
