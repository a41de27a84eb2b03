// SPDX-License-Identifier: GPL-3.0-or-later
// Recordings through their operations; the tables are compared row by row.
#include "cd/DiscDetector.h"
#include "cd/Radar.h"
#include "recordings/CREC.h"
#include "recordings/RecordingEditor.h"
#include "recordings/RecordingLists.h"
#include "recordings/WorkOrder.h"
#include "support/ItemCatalog.h"
#include "works/CWKS.h"

#include <QSignalSpy>
#include <functional>

using namespace tessaranth;

class TestRecordings : public QObject {
    Q_OBJECT

private slots:
    void init();
    void specificationsAreStoredAsTyped();
    void refusesWhatIsNoRecording();
    void readsUnitsAndLengths();
    void artistsKeepTheirOrder();
    void whoLeavesTheRecordingLeavesItsWorks();
    void worksArePlacedMovedAndTakenOff();
    void composersGoWithTheirWorks();
    void worksMoveInTheTreeAndOnTheDisc();
    void deletingCountsRecordings();
    void refusesWhoIsNotOnTheRecording();
    void castIsOneRowARole();
    void tracksOfOneDiscOnly();
    void refusesBadTracks();
    void asksWhatBecomesOfUpperDiscs();
    void readsPastedTracks();
    void doublesAreTold();
    void nothingIsWrittenOnceItIsDeleted();
    void asksBeforeReplacingWhatChangedElsewhere();
    void movementsTellTheirWork();
    void tracksBecomeWorks();
    void listsTellWhatIsThere();
    void discsOpenTheirCards();

private:
    RecordingEditor editor(qint64 id) { return RecordingEditor(*m_catalog->session, id, &m_cards); }
    qint64 add(const QString& title, int units = 1);
    qint64 person(int kind, const QString& last);
    QStringList rows(const QString& statement) const;
    QStringList placed(qint64 recording) const {
        return rows("SELECT CpsID, CompID, Pos, ExtraitName FROM CompOnRec WHERE RecID = " +
                    QString::number(recording) + " ORDER BY Pos");
    }
    bool isCollected(qint64 work) const {
        return m_catalog->number("SELECT InCollection FROM Compositions WHERE CompID = " +
                                 QString::number(work)) != 0;
    }

    std::unique_ptr<ItemCatalog> m_catalog;
    FakeCards m_cards;
    qint64 m_verdi = 0, m_bizet = 0, m_callas = 0, m_gobbi = 0, m_serafin = 0;
    qint64 m_aida = 0, m_ernani = 0, m_carmen = 0, m_aidaRole = 0, m_ernaniRole = 0;
    qint64 m_rec = 0, m_other = 0;
};

void TestRecordings::init() {
    m_catalog = std::make_unique<ItemCatalog>();
    m_cards = {};
    m_verdi = person(ItemKind::Composer, "Verdi");
    m_bizet = person(ItemKind::Composer, "Bizet");
    m_callas = person(ItemKind::Performer, "Callas");
    m_gobbi = person(ItemKind::Performer, "Gobbi");
    m_serafin = person(ItemKind::Performer, "Serafin");
    CWKS works(*m_catalog->session);
    const auto work = [&](qint64 composer, const QString& title) {
        Work one;
        one.composer = composer;
        one.title = title;
        works.AggiungiWork(one);
        return one.id;
    };
    m_aida = work(m_verdi, "Aida");
    m_ernani = work(m_verdi, "Ernani");
    m_carmen = work(m_bizet, "Carmen");
    m_aidaRole = works.addCharacter(m_aida, "Aida");
    m_ernaniRole = works.addCharacter(m_ernani, "Elvira");
    m_rec = add("An evening", 2);
    m_other = add("Another");
    for (const qint64 id : {m_rec, m_other})
        QVERIFY(editor(id).applyArtists({{m_verdi, m_bizet}}, {{m_callas, m_gobbi, m_serafin}}));
    m_cards = {};
}

qint64 TestRecordings::add(const QString& title, int units) {
    RecordingSpecs specs;
    specs.set("RecTitle", title);
    specs.set("UnitsNbr", units);
    return editor(0).applySpecs(specs) ? specs.id : 0;
}

qint64 TestRecordings::person(int kind, const QString& last) {
    Person one;
    one.last = last;
    m_catalog->items().AggiungiItem(kind, one);
    return one.id;
}

QStringList TestRecordings::rows(const QString& statement) const {
    QStringList result;
    Query run = m_catalog->session->connection().query(statement);
    while (run.next()) {
        QStringList cells;
        for (int column = 0; column < run.columnCount(); ++column)
            cells << run.text(column);
        result << cells.join('|');
    }
    return result;
}

// ---- specifications

void TestRecordings::specificationsAreStoredAsTyped() {
    const QString all = "SELECT RecTitle, RecSubTitle, LabelID, SupportID, SourceID, ProdNbr, Notes, Rating, "
                        "Barcode, LocationCode, UnitsNbr, Spars, RelDate, Price, RefRec, AddDate, ModDate "
                        "FROM Rec WHERE RecID = ";
    RecordingEditor one = editor(0);
    QVERIFY(!one.exists());
    RecordingSpecs specs;
    const std::pair<const char*, Value> given[] = {
        {"RecTitle", QString::fromUtf8("  100% [O'Neill]_\xF0\x9F\x8E\xBA ")},
        {"RecSubTitle", " live "},
        {"LabelID", 3},
        {"SupportID", 1},
        {"SourceID", 2},
        {"Rating", "Very good"},
        {"ProdNbr", " AB 1 "},
        {"Notes", "a\nb "},
        {"Barcode", "0123456789012"},
        {"LocationCode", "A-1"},
        {"UnitsNbr", 3},
        {"Spars", "A?D"},
        {"RelDate", "May 1999"},
        {"Price", "9,90"},
        {"RefRec", true}};
    for (const auto& [column, value] : given)
        specs.set(column, value);
    QVERIFY(one.applySpecs(specs));
    QVERIFY(one.exists());
    QCOMPARE(rows(all + QString::number(one.id())),
             QStringList{QString::fromUtf8("100% [O'Neill]_\xF0\x9F\x8E\xBA|live|3|1|2|AB 1|a\nb|Very good|"
                                           "0123456789012|A-1|3|A?D|May 1999|9,90|1|2021-05-08 20:30:15|"
                                           "2021-05-08 20:30:15")});
    RecordingSpecs read = editor(one.id()).specs();
    QVERIFY(read.edited() == specs.edited());
    for (const char* column : {"AddDate", "ModDate"})
        QCOMPARE(read.text(column), QString("2021-05-08 20:30:15"));
    m_catalog->clock.time = m_catalog->clock.time.addDays(1);
    read.set("RecTitle", "Changed");
    read.set("Rating", QString());
    QVERIFY(one.applySpecs(read));
    QCOMPARE(
        rows("SELECT RecTitle, Rating, AddDate, ModDate FROM Rec WHERE RecID = " + QString::number(one.id())),
        QStringList{"Changed|N/A|2021-05-08 20:30:15|2021-05-09 20:30:15"});
    QCOMPARE(m_cards.reloaded.last(), OpenCards::key("Rec", one.id()));
}

void TestRecordings::refusesWhatIsNoRecording() {
    const struct {
        std::function<void(RecordingSpecs&)> spoil;
        const char* told;
    } cases[] = {
        {[](RecordingSpecs& s) { s.set("RecTitle", " \t "); },
         "At least you must insert the recording title."},
        {[](RecordingSpecs& s) { s.set("RecTitle", QString(251, 'x')); }, "Title: at most 250 characters."},
        {[](RecordingSpecs& s) { s.set("Barcode", QString(21, '1')); }, "Barcode: at most 20 characters."},
        {[](RecordingSpecs& s) { s.set("UnitsNbr", 0); }, "Units"},
        {[](RecordingSpecs& s) { s.set("UnitsNbr", 1000); }, "Units"},
        {[](RecordingSpecs& s) { s.set("Rating", "Superb"); }, "Rating"},
        {[](RecordingSpecs& s) { s.set("Spars", "XYZ"); }, "SPARS"}};
    const QStringList before = rows("SELECT * FROM Rec");
    for (const auto& [spoil, told] : cases)
        for (const qint64 id : {qint64(0), m_rec}) {
            RecordingSpecs specs = editor(id).specs();
            specs.set("RecTitle", "Good");
            specs.set("Barcode", "Good");
            spoil(specs);
            QVERIFY2(!editor(id).applySpecs(specs), told);
            QVERIFY2(m_catalog->messages.told.last().startsWith(told), told);
        }
    QCOMPARE(rows("SELECT * FROM Rec"), before);
}

void TestRecordings::readsUnitsAndLengths() {
    m_catalog->run("UPDATE Rec SET UnitsNbr = 2000000");
    QCOMPARE(editor(m_rec).specs().units(), 999);
    QCOMPARE(RecordingEditor::units(" 2 "), std::optional<int>(2));
    QCOMPARE(RecordingEditor::units("999"), std::optional<int>(999));
    for (const char* text : {"", "0", "abc", "1.5", "1000", "-1", "+1", "99999999999999999999", "1 2"})
        QVERIFY2(!RecordingEditor::units(text), text);
    for (const auto& [typed, stored] :
         {std::pair("", ""), {"04:30", "04:30"}, {"04.30", "04:30"}, {"0430", "04:30"}, {"99'59", "99:59"}})
        QCOMPARE(trackLength(typed), std::optional<QString>(stored));
    for (const char* text : {"4.30", "4:30", "430", "04:3", "04:300", "04.60", "04530", "ab:cd", " "})
        QVERIFY2(!trackLength(text), text);
}

// ---- artists and works

void TestRecordings::artistsKeepTheirOrder() {
    RecordingEditor one = editor(m_rec);
    QVERIFY(one.applyArtists(std::nullopt, {{m_serafin, m_callas, m_serafin}}));
    const QString performers =
        QStringLiteral("SELECT PfrID, Pos FROM PfrOnRec WHERE RecID = %1 ORDER BY Pos");
    QCOMPARE(rows(performers.arg(m_rec)),
             (QStringList{QString("%1|1").arg(m_serafin), QString("%1|2").arg(m_callas)}));
    QCOMPARE(one.performers().front().name, "Serafin");
    QCOMPARE(one.composers().size(), size_t(2)); // not given, not touched
    QCOMPARE(rows(performers.arg(m_other)).size(), 3);
    QVERIFY(!one.applyArtists({{m_verdi, 4711}}, {{}}));
    QCOMPARE(rows(performers.arg(m_rec)).size(), 2);
    QVERIFY(one.applyArtists({{m_bizet}}, {{}}));
    QCOMPARE(rows(QString("SELECT CpsID FROM CpsOnRec WHERE RecID = %1").arg(m_rec)),
             QStringList{QString::number(m_bizet)});
    QVERIFY(rows(performers.arg(m_rec)).isEmpty());
}

void TestRecordings::whoLeavesTheRecordingLeavesItsWorks() {
    for (const qint64 id : {m_rec, m_other}) {
        std::vector<PlacedWork> works{{0, m_verdi, m_aida, {}, {}, {{m_callas, m_aidaRole}, {m_gobbi, 0}}},
                                      {0, m_bizet, m_carmen, {}, "Habanera", {{m_callas, 0}}}};
        QVERIFY(editor(id).applyWorks(works));
    }
    RecordingEditor one = editor(m_rec);
    const qint64 aida = one.works().front().id;
    QCOMPARE(one.cast(aida).size(), size_t(2));
    QVERIFY(one.applyArtists(std::nullopt, {{m_gobbi, m_serafin}}));
    const QString casts = QStringLiteral("SELECT PfrID, PersonageID FROM CompOnRecPfr WHERE CompOnRecID IN "
                                         "(SELECT CompOnRecID FROM CompOnRec WHERE RecID = %1)");
    QCOMPARE(rows(casts.arg(m_rec)), QStringList{QString("%1|0").arg(m_gobbi)});
    QCOMPARE(rows(casts.arg(m_other)).size(), 3);
    // What the editor itself did is no change made elsewhere.
    QVERIFY(one.applyCast(aida, {{m_serafin, 0}}));
}

void TestRecordings::worksArePlacedMovedAndTakenOff() {
    RecordingEditor one = editor(m_rec);
    std::vector<PlacedWork> works{{0, m_verdi, m_aida, {}, {}, {{m_callas, m_aidaRole}, {m_gobbi, 0}}},
                                  {0, m_verdi, m_ernani, {}, " Act 1 ", {}},
                                  {0, m_bizet, m_carmen, {}, {}, {}}};
    QVERIFY(one.applyWorks(works));
    const QString line = QStringLiteral("%1|%2|%3|%4");
    QCOMPARE(placed(m_rec), (QStringList{line.arg(m_verdi).arg(m_aida).arg(1).arg(""),
                                         line.arg(m_verdi).arg(m_ernani).arg(2).arg("Act 1"),
                                         line.arg(m_bizet).arg(m_carmen).arg(3).arg("")}));
    QCOMPARE(rows("SELECT * FROM CompOnRecPfr"),
             (QStringList{QString("%1|%2|%3").arg(works[0].id).arg(m_callas).arg(m_aidaRole),
                          QString("%1|%2|0").arg(works[0].id).arg(m_gobbi)}));
    QVERIFY(isCollected(m_aida) && isCollected(m_ernani) && isCollected(m_carmen));
    std::vector<PlacedWork> elsewhere{{0, m_verdi, m_ernani, {}, {}, {}}};
    QVERIFY(editor(m_other).applyWorks(elsewhere));

    const qint64 carmen = works[2].id;
    std::vector<PlacedWork> kept{works[2]};
    kept[0].excerpt = "Suite";
    QVERIFY(one.applyWorks(kept));
    QCOMPARE(placed(m_rec), QStringList{line.arg(m_bizet).arg(m_carmen).arg(1).arg("Suite")});
    QCOMPARE(kept[0].id, carmen);
    QCOMPARE(kept[0].title, "Carmen");
    QVERIFY(rows("SELECT * FROM CompOnRecPfr").isEmpty());
    QVERIFY(!isCollected(m_aida));  // no recording holds it any more
    QVERIFY(isCollected(m_ernani)); // another one does
    kept.clear();
    QVERIFY(one.applyWorks(kept));
    QVERIFY(placed(m_rec).isEmpty());
    QVERIFY(isCollected(m_carmen)); // emptying a recording leaves the marks
    QCOMPARE(m_cards.reloaded.size(), 4);
}

void TestRecordings::composersGoWithTheirWorks() {
    std::vector<PlacedWork> works{{0, m_verdi, m_aida, {}, {}, {{m_callas, 0}}},
                                  {0, m_bizet, m_carmen, {}, {}, {{m_callas, 0}}},
                                  {0, m_verdi, m_aida, {}, "Act 2", {}}};
    QVERIFY(editor(m_rec).applyWorks(works));
    m_catalog->messages.willAnswer(Answer::No);
    QVERIFY(!editor(m_rec).applyArtists({{m_bizet}}, {{}}));
    QVERIFY(m_catalog->messages.asked.back().text.contains("Aida\nAida"));
    QCOMPARE(editor(m_rec).composers().size() + editor(m_rec).performers().size(), size_t(5));
    m_catalog->messages.willAnswer(Answer::Yes);
    QVERIFY(editor(m_rec).applyArtists({{m_bizet}}, std::nullopt));
    QCOMPARE(placed(m_rec), QStringList{QString("%1|%2|1|").arg(m_bizet).arg(m_carmen)});
    QCOMPARE(m_catalog->count("CompOnRecPfr"), 1);
    QVERIFY(!isCollected(m_aida) && isCollected(m_carmen));
}

void TestRecordings::worksMoveInTheTreeAndOnTheDisc() {
    using Works = std::vector<PlacedWork>;
    using Numbers = std::vector<int>;
    const auto disc = [](const QString& titles) { // the composer is the capital letter
        Works works;
        for (const QString& title : titles.split(' '))
            works.push_back({0, title[0].unicode(), 0, title, {}, {}, title.left(1)});
        return works;
    };
    QVERIFY(doesComposerReturn(disc("C1 B1 C2")) && !doesComposerReturn(disc("C1 C2 B1")));
    const std::vector<ComposerNode> nodes = byComposer(disc("C1 B1 C2"));
    QCOMPARE(nodes.size(), size_t(2));
    QVERIFY(nodes[0].name == "C" && nodes[0].works == (Numbers{0, 2}));
    const struct {
        std::function<Numbers(Works&)> move;
        const char* before;
        const char* after;
        Numbers now;
    } cases[] = {{[](Works& w) { return stepOnDisc(w, {2}, -1); }, "C1 B1 C2", "C1 C2 B1", {1}},
                 {[](Works& w) {
                      return stepOnDisc(w, {0, 2}, 1);
                  },
                  "C1 B1 C2 D1",
                  "B1 D1 C1 C2",
                  {2, 3}},
                 {[](Works& w) { return stepOnDisc(w, {0}, -1); }, "C1 B1", "C1 B1", {}},
                 {[](Works& w) { return moveOnDisc(w, {1}, 3); }, "C1 B1 C2", "C1 C2 B1", {2}},
                 {[](Works& w) { return stepInTree(w, {2}, -1); }, "C1 B1 C2", "C2 B1 C1", {0}},
                 {[](Works& w) { return stepInTree(w, {0}, 1); }, "C1 B1 C2 C3", "C2 B1 C1 C3", {2}},
                 {[](Works& w) { return stepInTree(w, {0}, -1); }, "C1 B1 C2", "C1 B1 C2", {}},
                 {[](Works& w) { return stepInTree(w, {1}, -1); }, "C1 B1 C2", "B1 C1 C2", {0}},
                 {[](Works& w) {
                      return stepInTree(w, {0, 2}, 1);
                  },
                  "C1 B1 C2 B2",
                  "B1 B2 C1 C2",
                  {2, 3}},
                 {[](Works& w) {
                      return stepInTree(w, {0, 1}, 1);
                  },
                  "C1 B1 C2",
                  "C1 B1 C2",
                  {}},
                 {[](Works& w) { return moveInTree(w, {0}, 4); }, "C1 B1 C2 C3", "C2 B1 C3 C1", {3}},
                 {[](Works& w) { return dropOnComposer(w, {2}, 'C'); }, "C1 B1 C2", "C2 B1 C1", {0}},
                 {[](Works& w) { return dropOnComposer(w, {2}, 'B'); }, "C1 B1 C2", "C1 B1 C2", {}}};
    for (const auto& [move, before, after, now] : cases) {
        Works works = disc(before);
        QCOMPARE(move(works), now);
        QStringList titles;
        for (const PlacedWork& work : works)
            titles << work.title;
        QCOMPARE(titles.join(' '), after);
    }
}

void TestRecordings::deletingCountsRecordings() {
    std::vector<PlacedWork> works{{0, m_verdi, m_aida, {}, "Act 1", {}},
                                  {0, m_verdi, m_aida, {}, "Act 2", {}},
                                  {0, m_bizet, m_carmen, {}, {}, {}}};
    std::vector<PlacedWork> other{{0, m_bizet, m_carmen, {}, {}, {}}};
    QVERIFY(editor(m_rec).applyWorks(works) && editor(m_other).applyWorks(other));
    QVERIFY(m_catalog->items().EliminaItem(ItemKind::Recording, {m_rec}, m_catalog->progress));
    QVERIFY(!isCollected(m_aida) && isCollected(m_carmen));
}

void TestRecordings::refusesWhoIsNotOnTheRecording() {
    QVERIFY(editor(m_rec).applyArtists({{m_verdi}}, {{m_callas}}));
    const std::vector<PlacedWork> bad{{0, m_bizet, m_carmen, {}, {}, {}},
                                      {0, m_verdi, m_carmen, {}, {}, {}},
                                      {0, m_verdi, m_aida, {}, {}, {{m_gobbi, 0}}},
                                      {0, m_verdi, m_aida, {}, {}, {{m_callas, m_ernaniRole}}},
                                      {0, m_verdi, m_aida, {}, QString(251, 'x'), {}}};
    for (const PlacedWork& one : bad) {
        std::vector<PlacedWork> works{{0, m_verdi, m_ernani, {}, {}, {}}, one};
        const auto told = m_catalog->messages.told.size();
        QVERIFY(!editor(m_rec).applyWorks(works));
        QCOMPARE(m_catalog->messages.told.size(), told + 1);
        QVERIFY(placed(m_rec).isEmpty() && !isCollected(m_ernani));
    }
}

void TestRecordings::castIsOneRowARole() {
    RecordingEditor one = editor(m_rec);
    std::vector<PlacedWork> works{{0, m_verdi, m_aida, {}, {}, {}}};
    QVERIFY(one.applyWorks(works));
    const qint64 id = works[0].id;
    const qint64 second = CWKS(*m_catalog->session).addCharacter(m_aida, "Amneris");
    QVERIFY(one.applyCast(id, {{m_callas, m_aidaRole}, {m_callas, second}, {m_serafin, 0}, {m_serafin, 0}}));
    const QString line = QString("%1|%2|%3").arg(id);
    QCOMPARE(rows("SELECT * FROM CompOnRecPfr"),
             (QStringList{line.arg(m_callas).arg(m_aidaRole), line.arg(m_callas).arg(second),
                          line.arg(m_serafin).arg(0)}));
    QVERIFY(one.applyCast(id, {{m_callas, second}, {m_gobbi, 0}}));
    const QStringList now{line.arg(m_callas).arg(second), line.arg(m_gobbi).arg(0)};
    QCOMPARE(rows("SELECT * FROM CompOnRecPfr"), now);
    for (const Casting& bad : {Casting{m_callas, m_ernaniRole}, Casting{4711, 0}})
        QVERIFY(!one.applyCast(id, {bad}));
    QVERIFY(!editor(m_other).applyCast(id, {}));
    QCOMPARE(rows("SELECT * FROM CompOnRecPfr"), now);
}

// ---- tracks

void TestRecordings::tracksOfOneDiscOnly() {
    const QString stored = QStringLiteral(
        "SELECT TrackNbr, TrackName, TrackLen FROM Tracks WHERE RecID = %1 AND Disc = %2 ORDER BY TrackNbr");
    std::vector<Track> tracks;
    for (int i = 1; i <= 10; ++i)
        tracks.push_back({QString("T%1").arg(i), i == 1 ? "04.30" : ""});
    RecordingEditor one = editor(m_rec);
    QVERIFY(one.applyTracks(1, tracks, "AB0C1D02"));
    QVERIFY(one.applyTracks(2, {{{"Other", "61:00"}}}, std::nullopt));
    QCOMPARE(rows(stored.arg(m_rec).arg(1)).front(), "1|T1|04:30");
    const QStringList keys = rows("SELECT TrackID FROM Tracks WHERE Disc = 1 ORDER BY TrackNbr");
    tracks.erase(tracks.begin() + 2);
    QVERIFY(one.applyTracks(1, tracks, std::nullopt));
    const QStringList now = rows(stored.arg(m_rec).arg(1));
    QCOMPARE(now.size(), 9);
    QCOMPARE(now[2], "3|T4|");
    QCOMPARE(now[8], "9|T10|");
    QCOMPARE(rows("SELECT TrackID FROM Tracks WHERE Disc = 1 ORDER BY TrackNbr"), keys.mid(0, 9));
    QCOMPARE(rows(stored.arg(m_rec).arg(2)), QStringList{"1|Other|61:00"});
    QVERIFY(one.applyTracks(1, std::nullopt, "ff0c1d02"));
    QVERIFY(one.applyTracks(2, std::nullopt, ""));
    QCOMPARE(rows("SELECT RecID, DiscNbr, DiscId FROM DiscIds"),
             QStringList{QString("%1|1|ff0c1d02").arg(m_rec)});
    QVERIFY(one.applyTracks(2, std::vector<Track>(1000, {"x", "01:02"}), std::nullopt));
    QCOMPARE(one.tracks(2).size(), size_t(1000));
    QCOMPARE(totalLength(one.tracks(2)), "17:13:20");
    QCOMPARE(totalLength(one.tracks(1)), "04:30");
}

void TestRecordings::refusesBadTracks() {
    RecordingEditor one = editor(m_rec);
    QVERIFY(one.applyTracks(1, {{{"Kept", ""}}}, "00000001"));
    const QStringList before = rows("SELECT * FROM Tracks") + rows("SELECT * FROM DiscIds");
    for (const Track& bad : {Track{"a", "4.30"}, Track{"a", "04:60"}, Track{QString(251, 'a'), ""}})
        QVERIFY(!one.applyTracks(1, {{{"Lost", ""}, bad}}, "00000002"));
    QVERIFY(!one.applyTracks(1, {{{"Lost", ""}}}, "0123456789abc"));
    for (const int disc : {0, 3})
        QVERIFY(!one.applyTracks(disc, {{{"Lost", ""}}}, std::nullopt));
    QCOMPARE(rows("SELECT * FROM Tracks") + rows("SELECT * FROM DiscIds"), before);
    QCOMPARE(m_catalog->messages.told.size(), 6);
    // What another program has stored does not get in the way of other edits.
    m_catalog->run("UPDATE Tracks SET TrackLen = '4:30'");
    QVERIFY(editor(m_rec).applyTracks(1, {{{"Renamed", "4:30"}, {"New", "0430"}}}, std::nullopt));
    QCOMPARE(rows("SELECT TrackName, TrackLen FROM Tracks"), (QStringList{"Renamed|4:30", "New|04:30"}));
}

// ---- discs above the units

void TestRecordings::asksWhatBecomesOfUpperDiscs() {
    const QString discs = QString("SELECT UnitsNbr FROM Rec WHERE RecID = %1").arg(m_rec);
    for (int disc = 1; disc <= 2; ++disc)
        QVERIFY(editor(m_rec).applyTracks(disc, {{{"Kept", ""}}}, QString("0000000%1").arg(disc)));
    RecordingSpecs specs = editor(m_rec).specs();
    specs.set("UnitsNbr", 1);
    m_catalog->messages.willAnswer(Answer::Cancel);
    QVERIFY(!editor(m_rec).applySpecs(specs));
    m_catalog->messages.willAnswer(Answer::No);
    QVERIFY(editor(m_rec).applySpecs(specs));
    QCOMPARE(specs.units(), 2);
    QCOMPARE(rows(discs), QStringList("2"));
    QCOMPARE(m_catalog->count("Tracks"), 2);
    specs.set("UnitsNbr", 1);
    m_catalog->messages.willAnswer(Answer::Yes);
    QVERIFY(editor(m_rec).applySpecs(specs));
    QCOMPARE(rows("SELECT Disc FROM Tracks") + rows("SELECT DiscNbr FROM DiscIds"), (QStringList{"1", "1"}));
    specs.set("UnitsNbr", 3);
    QVERIFY(editor(m_rec).applySpecs(specs)); // nothing on the discs above the next
    specs.set("UnitsNbr", 2);
    QVERIFY(editor(m_rec).applySpecs(specs));

    // Whatever lies above the units is within reach, and no edit of something else asks about it.
    m_catalog->run("UPDATE Tracks SET Disc = 3");
    specs.set("RecTitle", "Renamed");
    QVERIFY(editor(m_rec).applySpecs(specs));
    QCOMPARE(editor(m_rec).discs(), 3);
    QVERIFY(editor(m_rec).applyTracks(3, {{{"Within reach", ""}}}, std::nullopt));
    m_catalog->run("UPDATE Rec SET UnitsNbr = 2000000000");
    QCOMPARE(editor(m_rec).discs(), 999);
    m_catalog->run("UPDATE Rec SET UnitsNbr = 1");
    m_catalog->messages.willAnswer(Answer::Ok);
    QVERIFY(m_catalog->items().Migra(ItemKind::Recording, m_rec, m_other));
    QCOMPARE(rows("SELECT UnitsNbr FROM Rec"), QStringList("3"));
}

void TestRecordings::readsPastedTracks() {
    const std::pair<QString, QString> cases[] = {
        {" Kyrie \r\n\r\nGloria\n", "Kyrie=|Gloria="},
        {"1. Kyrie 4:30\n2. Gloria (12:05)", "Kyrie=04:30|Gloria=12:05"},
        {"01\tKyrie\t04:30\n02\tGloria\t1:02:00", "Kyrie=04:30|Gloria=62:00"},
        {"9 Kyrie\n10 Gloria", "Kyrie=|Gloria="},
        {"3) Kyrie\n4 - Gloria", "Kyrie=|Gloria="},
        {"4 Lieder 3:00\n12 Etudes", "4 Lieder=03:00|12 Etudes="}, // numbers that are part of a name
        {"4 Lieder", "4 Lieder="},
        {"1. Kyrie", "Kyrie="},
        {"Parsifal 4:30:00", "Parsifal 4:30:00="}, // too long for the column
        {"Mass 1:75", "Mass 1:75="},
        {" \n\t\n", ""}};
    for (const auto& [text, tracks] : cases) {
        QStringList read;
        for (const Track& track : tracksOfText(text))
            read << track.name + '=' + track.length;
        QCOMPARE(read.join('|'), tracks);
    }
    QCOMPARE(
        oddLengthsOfText("A\t4.30\nB\t4:30\nC\t 4:75\nD\t4'30\"\n1\tE\nSymphony 4.30\n02\tF\tlive\n03\t104"),
        QStringList({"4.30", "4:75", "4'30\""}));
}

// ---- others at work

void TestRecordings::doublesAreTold() {
    RecordingSpecs specs = editor(m_rec).specs();
    specs.set("Barcode", "4006381333931");
    specs.set("LabelID", 2);
    specs.set("ProdNbr", "SXL 1%");
    QVERIFY(editor(m_rec).applySpecs(specs));
    QVERIFY(editor(m_rec).doubles(specs).empty()); // itself is none
    RecordingSpecs fresh;
    QVERIFY(editor(0).doubles(fresh).empty());
    fresh.set("Barcode", " 4006381333931 ");
    QCOMPARE(editor(0).doubles(fresh).size(), size_t(1));
    fresh.set("Barcode", QString());
    fresh.set("ProdNbr", "sxl 1%");
    QVERIFY(editor(0).doubles(fresh).empty());
    fresh.set("LabelID", 2);
    const std::vector<RecordingDouble> found = editor(0).doubles(fresh);
    QCOMPARE(found.size(), size_t(1));
    QCOMPARE(found[0].id, m_rec);
    QCOMPARE(found[0].title, "An evening");
}

void TestRecordings::nothingIsWrittenOnceItIsDeleted() {
    std::vector<PlacedWork> works{{0, m_verdi, m_aida, {}, {}, {}}};
    QVERIFY(editor(m_rec).applyWorks(works));
    RecordingEditor one = editor(m_rec);
    RecordingSpecs specs = one.specs();
    QVERIFY(m_catalog->items().EliminaItem(ItemKind::Recording, {m_rec}, m_catalog->progress));
    m_cards = {};
    const std::vector<std::function<bool()>> applies{
        [&] { return one.applySpecs(specs); }, [&] { return one.applyArtists({{m_verdi}}, {{m_callas}}); },
        [&] { return one.applyWorks(works); }, [&] { return one.applyCast(works[0].id, {}); },
        [&] {
            return one.applyTracks(1, {{{"a", ""}}}, "00000001");
        }};
    for (const auto& apply : applies) {
        m_catalog->messages.told.clear();
        QVERIFY(!apply());
        QCOMPARE(m_catalog->messages.told, QStringList{"This recording has been deleted meanwhile."});
    }
    QVERIFY(!one.exists());
    for (const char* table : {"CpsOnRec", "PfrOnRec", "CompOnRec", "Tracks", "DiscIds"})
        QCOMPARE(rows(QString("SELECT * FROM %1 WHERE RecID = %2").arg(table).arg(m_rec)), QStringList());
    QVERIFY(m_cards.reloaded.isEmpty());
}

void TestRecordings::asksBeforeReplacingWhatChangedElsewhere() {
    RecordingEditor first = editor(m_rec);
    RecordingEditor second = editor(m_rec);
    first.tracks(1);
    second.tracks(1);
    RecordingSpecs specs = first.specs();
    QVERIFY(second.applyTracks(1, {{{"Typed there", ""}}}, std::nullopt));
    QVERIFY(first.applySpecs(specs)); // another part: nothing to ask
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        m_catalog->messages.willAnswer(answer);
        QCOMPARE(first.applyTracks(1, {{{"Typed here", ""}}}, std::nullopt), answer == Answer::Yes);
        QCOMPARE(rows("SELECT TrackName FROM Tracks"),
                 QStringList{answer == Answer::Yes ? "Typed here" : "Typed there"});
    }
    QVERIFY(first.applyTracks(1, {{{"Typed again", ""}}}, std::nullopt)); // its own change
    // Who looks at the specifications again, as a heading does, has not seen what changed in them.
    specs = first.openSpecs();
    RecordingSpecs there = second.openSpecs();
    there.set("Notes", "Typed there");
    QVERIFY(second.applySpecs(there));
    QCOMPARE(first.specs().text("Notes"), QString("Typed there"));
    m_catalog->messages.willAnswer(Answer::No);
    QVERIFY(!first.applySpecs(specs));
}

void TestRecordings::movementsTellTheirWork() {
    const std::pair<QString, QString> cases[] = {
        {"Symphony No. 5: I. Allegro|Symphony no. 5: II. Andante| |Coriolan",
         "Symphony No. 5=0,1|Coriolan=3"},
        {"Suite: No. 2 - 1. Prelude|Suite: No. 2 - 2. Air|Suite: No. 3 - 1. Prelude",
         "Suite: No. 2=0,1|Suite: No. 3 - 1. Prelude=2"},
        {"Carmen: Habanera|Aida|Carmen: Act 4: Finale|Carmen: Seguidilla",
         "Carmen=0,3|Aida=1|Carmen: Act 4: Finale=2"},
        {"Sonata No. 2|Sonata No. 2|Lied, op. 3", "Sonata No. 2=0,1|Lied, op. 3=2"}};
    for (const auto& [names, expected] : cases) {
        QStringList merged;
        for (const TrackWork& work : worksOfTracks(names.split('|'), true)) {
            QStringList tracks;
            for (const int track : work.tracks)
                tracks << QString::number(track);
            merged << work.title + '=' + tracks.join(',');
        }
        QCOMPARE(merged.join('|'), expected);
    }
    QCOMPARE(worksOfTracks({"A: I. x", "A: II. y", ""}, false).size(), size_t(2));
}

void TestRecordings::tracksBecomeWorks() {
    const auto works = [](const QStringList& titles) { return worksOfTracks(titles, false); };
    QCOMPARE(editor(m_rec).addWorks(m_bizet, works({" Habanera ", " ", "L'amour"}), false), 2);
    const char* texts = "SELECT CompTitle FROM Compositions WHERE CompSubTitle = '' AND CompNbr = '' AND "
                        "CompYear = '' AND Descr = '' AND GenreID = 0 AND CompTitle > 'H'";
    QCOMPARE(rows(texts), (QStringList{"Habanera", "L'amour"}));
    QCOMPARE(editor(m_rec).addWorks(m_bizet, works({"Good", QString(251, 'x')}), true), -1);
    QCOMPARE(editor(m_rec).addWorks(4711, works({"Good"}), true), -1);
    QVERIFY(placed(m_rec).isEmpty());
    // Another time nothing is doubled, in the list or on the recording.
    std::vector<TrackWork> again = works({"HABANERA", "Toreador"});
    QVERIFY(editor(m_rec).findWorks(m_bizet, again) && again[0].work != 0 && again[1].work == 0);
    QVERIFY(editor(m_rec).applyArtists({{m_verdi}}, std::nullopt));
    QCOMPARE(editor(m_rec).addWorks(m_bizet, again, true), 1);
    QCOMPARE(editor(m_rec).addWorks(m_bizet, again, true), 0);
    QCOMPARE(placed(m_rec).size(), 2);
    QCOMPARE(editor(m_rec).works()[1].title, "Toreador");
    QVERIFY(isCollected(again[0].work));
    QCOMPARE(editor(m_rec).composers().size(), size_t(2)); // the composer came with his works
}

void TestRecordings::listsTellWhatIsThere() {
    Session& session = *m_catalog->session;
    RecordingSpecs specs = editor(m_rec).specs();
    specs.set("LabelID", m_catalog->items().addNamed(ItemKind::Label, "Decca"));
    specs.set("SupportID", 2);
    QVERIFY(editor(m_rec).applySpecs(specs));
    std::vector<PlacedWork> works{{0, m_verdi, m_aida, {}, "Act 1", {{m_callas, m_aidaRole}, {m_gobbi, 0}}},
                                  {0, m_verdi, m_aida, {}, "Act 2", {{m_gobbi, 0}}}};
    QVERIFY(editor(m_rec).applyWorks(works));
    ItemList list;
    QVERIFY(RecordingLists::withWork(session, m_aida, list));
    QCOMPARE(list.rowCount(), 1);
    QCOMPARE(list.text(0, 0), "An evening (Decca)");
    QCOMPARE(list.cellIconKey(0, 0), "Lp");

    QVERIFY(RecordingLists::parts(session, list, m_catalog->progress));
    QStringList states;
    for (int row = 0; row < list.rowCount(); ++row)
        for (int column = 0; column < list.columnCount(); ++column)
            states << list.text(row, column);
    QCOMPARE(states.join('|'), "An evening|Decca|yes|yes|yes|no|Another||yes|yes|no|no");
    struct : Progress {
        void stage(const QString&) override {}
        void percentage(int) override {}
        bool stopped() const override { return true; }
    } stop;
    QVERIFY(!RecordingLists::parts(session, list, stop));
    QCOMPARE(list.rowCount(), 2); // as it was

    std::vector<RecordingLists::Performed> performers;
    QVERIFY(RecordingLists::performed(session, m_rec, performers));
    QCOMPARE(performers.size(), size_t(3));
    QCOMPARE(performers[0].works.rowCount(), 1);
    QCOMPARE(performers[0].works.text(0, 2), "Aida");
    QCOMPARE(performers[1].works.text(1, 1), "Aida: Act 2");
    QCOMPARE(performers[2].works.rowCount(), 0);

    CREC record(session);
    QVERIFY(record.CaricaDati(m_rec));
    QCOMPARE(record.Title + '|' + record.LabelName + '|' + record.SupportIcon + '|' + record.SourceType,
             "An evening|Decca|Lp|");
    QVERIFY(record.LabelFile.endsWith(QString("/%1").arg(specs.number("LabelID"))));
    QVERIFY(!record.CaricaDati(4711));
    QVERIFY(record.Title.isEmpty());
}

void TestRecordings::discsOpenTheirCards() {
    const qint64 recording = add("Owned");
    QVERIFY(editor(recording).applyTracks(1, std::nullopt, "9a0b'1"));
    m_catalog->run("INSERT INTO DiscIds (RecID, DiscNbr, DiscId) VALUES (999, 1, '9a0b''1')"); // sold since
    struct : DiscDrives {
        QStringList volumeNames() const override { return names; }
        QStringList names{"Audio CD (D:)"};
    } drives;
    struct : DiscReader {
        QString discId(const QString& volume) override { return volume.endsWith("(D:)") ? id : QString(); }
        QString id = "9a0b'1";
    } reader;
    Radar radar(drives);
    const DiscDetector detector(*m_catalog->session, radar, reader, m_cards);
    QSignalSpy unknown(&detector, &DiscDetector::unknownDisc);
    m_cards.opened.clear();
    radar.setEnabled(true);
    QCOMPARE(m_cards.opened, QStringList(OpenCards::key("Rec", recording)));
    drives.names = QStringList{"audio cd, unreadable"};
    radar.look();
    drives.names = QStringList{"Audio CD of somebody else (D:)"};
    reader.id = "ffffffff";
    radar.look();
    QCOMPARE(m_cards.opened.size(), 1);
    QCOMPARE(unknown.size(), 1);
}

QTEST_GUILESS_MAIN(TestRecordings)
#include "test_recordings.moc"
