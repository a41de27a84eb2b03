// SPDX-License-Identifier: GPL-3.0-or-later
#include "Measure.h"

#include "items/CMIT.h"
#include "platform/Progress.h"
#include "recordings/RecordingEditor.h"
#include "recordings/RecordingLists.h"
#include "store/Session.h"

#include <sqlite3.h>

namespace tessaranth {

namespace {

constexpr int discs = 20;
constexpr int tracksOnDisc = 20;
constexpr int worksOnSet = 120;

void run(sqlite3* database, const QString& sql) {
    char* fault = nullptr;
    if (sqlite3_exec(database, sql.toUtf8().constData(), nullptr, nullptr, &fault) != SQLITE_OK)
        std::fprintf(stderr, "%s\n", fault);
    sqlite3_free(fault);
}

std::vector<Track> someTracks(int count, int round) {
    std::vector<Track> tracks;
    for (int i = 0; i < count; ++i)
        tracks.push_back(
            {QStringLiteral("Track %1 of round %2").arg(i + 1).arg(round), QStringLiteral("04:30")});
    return tracks;
}

/// The set of 20 discs, on the program's side; the same id holds it on the other side after `copySet`.
qint64 makeSet(const BenchContext& context) {
    RecordingEditor editor(context.session, 0);
    RecordingSpecs specs;
    specs.title = QStringLiteral("A set of 20 discs");
    specs.units = discs;
    std::vector<PlacedWork> works;
    std::vector<qint64> composers;
    Query found = context.session.connection().query(
        QStringLiteral("SELECT CompID, CpsID FROM Compositions WHERE CompID < 5000"));
    while (int(works.size()) < worksOnSet && found.next()) {
        works.push_back({0, found.integer(1), found.integer(0), {}, {}, {{1, 0}, {2, 0}}});
        composers.push_back(found.integer(1));
    }
    editor.applySpecs(specs);
    editor.applyArtists(composers, {{1, 2, 3, 4}});
    editor.applyWorks(works);
    for (int disc = 1; disc <= discs; ++disc)
        editor.applyTracks(disc, someTracks(tracksOnDisc, 0), QStringLiteral("ab0c1d02"));
    return editor.id();
}

/// The rows of the set from the program's catalog, written into the bare one.
void copySet(const BenchContext& context, qint64 id) {
    run(context.bare, QStringLiteral("BEGIN"));
    const auto copy = [&](const char* table, const QString& condition) {
        Query rows = context.session.connection().query(
            QStringLiteral("SELECT * FROM %1 WHERE ").arg(QLatin1String(table)) + condition);
        while (rows.next()) {
            QStringList cells;
            for (int column = 0; column < rows.columnCount(); ++column)
                cells << (rows.isNull(column) ? QStringLiteral("NULL")
                                              : u'\'' + quoted(rows.text(column)) + u'\'');
            run(context.bare, QStringLiteral("INSERT INTO %1 VALUES (%2)")
                                  .arg(QLatin1String(table), cells.join(QStringLiteral(", "))));
        }
    };
    const QString ofSet = QStringLiteral("RecID = %1").arg(id);
    for (const char* table : {"Rec", "CpsOnRec", "PfrOnRec", "CompOnRec", "Tracks", "DiscIds"})
        copy(table, ofSet);
    copy("CompOnRecPfr",
         QStringLiteral("CompOnRecID IN (SELECT CompOnRecID FROM CompOnRec WHERE %1)").arg(ofSet));
    run(context.bare, QStringLiteral("COMMIT"));
}

void loading(const BenchContext& context, qint64 id) {
    const double ours = medianMs(context.repeat, [&] {
        RecordingEditor editor(context.session, id);
        editor.specs();
        editor.composers();
        editor.performers();
        for (const PlacedWork& work : editor.works())
            editor.cast(work.id);
        for (int disc = 1; disc <= discs; ++disc) {
            editor.tracks(disc);
            editor.discId(disc);
        }
    });
    const QByteArray key = QByteArray::number(id);
    double bare = 0;
    for (const char* sql :
         {"SELECT * FROM Rec WHERE RecID = ",
          "SELECT c.CpsID, CpsLname, CpsFname, CpsY, CatAcr FROM CpsOnRec o JOIN Cps c ON c.CpsID = o.CpsID "
          "WHERE RecID = ",
          "SELECT p.PfrID, PfrLname, PfrFname FROM PfrOnRec o JOIN Pfr p ON p.PfrID = o.PfrID WHERE RecID = ",
          "SELECT * FROM CompOnRec o JOIN Compositions w ON w.CompID = o.CompID JOIN Cps c ON c.CpsID = "
          "o.CpsID WHERE RecID = ",
          "SELECT p.* FROM CompOnRec o JOIN CompOnRecPfr p ON p.CompOnRecID = o.CompOnRecID WHERE RecID = ",
          "SELECT * FROM Tracks WHERE RecID = ", "SELECT * FROM DiscIds WHERE RecID = "})
        bare += bareQuery(context, (sql + key).constData());
    line("reading a set of 20 discs, 400 tracks, 120 works into its editor", ours, bare);
}

void applyingTracks(const BenchContext& context, qint64 id) {
    const qint64 first =
        context.session.connection()
            .single(QStringLiteral("SELECT TrackID FROM Tracks WHERE RecID = %1 ORDER BY TrackID").arg(id))
            .toInteger();
    int round = 0;
    RecordingEditor editor(context.session, id);
    const double ours =
        medianMs(context.repeat, [&] { editor.applyTracks(1, someTracks(400, ++round), std::nullopt); });
    // The other side has the same number of tracks in the set, on all its discs.
    sqlite3_stmt* update = nullptr;
    sqlite3_prepare_v2(
        context.bare,
        "UPDATE Tracks SET RecID = ?1, Disc = ?2, TrackNbr = ?3, TrackName = ?4, TrackLen = ?5 "
        "WHERE rowid = ?6",
        -1, &update, nullptr);
    const double bare = medianMs(context.repeat, [&] {
        sqlite3_exec(context.bare, "BEGIN", nullptr, nullptr, nullptr);
        ++round;
        for (int i = 1; i <= 400; ++i) {
            const QByteArray name =
                "Track " + QByteArray::number(i) + " of round " + QByteArray::number(round);
            sqlite3_bind_int64(update, 1, id);
            sqlite3_bind_int(update, 2, (i - 1) / tracksOnDisc + 1);
            sqlite3_bind_int(update, 3, (i - 1) % tracksOnDisc + 1);
            sqlite3_bind_text(update, 4, name.constData(), int(name.size()), SQLITE_STATIC);
            sqlite3_bind_text(update, 5, "04:30", 5, SQLITE_STATIC);
            sqlite3_bind_int64(update, 6, first + i - 1);
            sqlite3_step(update);
            sqlite3_reset(update);
        }
        sqlite3_exec(context.bare, "COMMIT", nullptr, nullptr, nullptr);
    });
    sqlite3_finalize(update);
    line("apply of 400 tracks", ours, bare);
}

void checkingAll(const BenchContext& context) {
    NoProgress progress;
    const double ours = medianMs(context.repeat, [&] {
        ItemList list;
        RecordingLists::parts(context.session, list, progress);
    });
    double bare = bareQuery(context, "SELECT Rec.RecID, RecTitle, LabelName, SupportType, IconName FROM Rec "
                                     "LEFT JOIN Labels ON Labels.LabelID = Rec.LabelID LEFT JOIN Supports ON "
                                     "Supports.SupportID = Rec.SupportID ORDER BY RecTitle");
    for (const char* sql : {"SELECT RecID FROM CpsOnRec", "SELECT RecID FROM PfrOnRec",
                            "SELECT RecID FROM CompOnRec", "SELECT RecID FROM Tracks"})
        bare += bareQuery(context, sql);
    line("which parts all recordings have", ours, bare);
}

/// A composer with 1,000 works, every second of which is on a recording of his.
qint64 makeComposer(const BenchContext& context) {
    Connection& connection = context.session.connection();
    Transaction transaction(connection, QStringLiteral("bench"));
    connection.execute(QStringLiteral("INSERT INTO Cps (CpsLname) VALUES ('Zelenka')"));
    const qint64 composer = connection.lastKey();
    for (int i = 1; i <= 1000; ++i) {
        connection.execute(
            QStringLiteral("INSERT INTO Compositions (CpsID, CompTitle) VALUES (%1, 'Work %2')")
                .arg(composer)
                .arg(i));
        const qint64 work = connection.lastKey();
        if (i % 2 != 0)
            continue;
        connection.execute(
            QStringLiteral("INSERT INTO CpsOnRec (CpsID, RecID) VALUES (%1, %2)").arg(composer).arg(i));
        connection.execute(
            QStringLiteral("INSERT INTO CompOnRec (RecID, CpsID, CompID, Pos) VALUES (%1, %2, %3, 9)")
                .arg(i)
                .arg(composer)
                .arg(work));
        connection.execute(
            QStringLiteral("INSERT INTO CompOnRecPfr (CompOnRecID, PfrID, PersonageID) VALUES (%1, 1, 0)")
                .arg(connection.lastKey()));
    }
    transaction.commit();
    return composer;
}

void deletingComposer(const BenchContext& context) {
    NoProgress progress;
    std::vector<qint64> composers;
    for (int i = 0; i <= context.repeat; ++i) // one for the warm run
        composers.push_back(makeComposer(context));
    size_t next = 0;
    line("deleting a composer with 1,000 works on 500 recordings",
         medianMs(
             context.repeat,
             [&] { CMIT(context.session).EliminaItem(ItemKind::Composer, {composers[next++]}, progress); }),
         0);
}

} // namespace

void measureRecordings(const BenchContext& context) {
    const qint64 id = makeSet(context);
    copySet(context, id);
    loading(context, id);
    applyingTracks(context, id);
    checkingAll(context);
    deletingComposer(context);
    measureHistory(context, makeComposer(context));
}

} // namespace tessaranth
