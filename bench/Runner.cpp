// SPDX-License-Identifier: GPL-3.0-or-later
#include "Runner.h"

#include "items/CMIT.h"
#include "items/CWKS.h"
#include "platform/Clock.h"
#include "platform/Progress.h"
#include "store/Maintenance.h"
#include "store/Session.h"
#include "store/Startup.h"
#ifdef TESSARANTH_BENCH_MODEL
#include "ui/IconStore.h"
#include "ui/ItemListModel.h"
#endif

#include <QElapsedTimer>
#include <QFile>
#include <cstdio>
#include <functional>
#include <sqlite3.h>

namespace tessaranth {

namespace {

/// Nobody is asked while measuring.
class SilentMessages final : public Messages {
public:
    void tell(MessageIcon, const QString&, const QString& text) override {
        std::fprintf(stderr, "%s\n", qPrintable(text));
    }
    Answer ask(const Question& question) override { return question.buttons.front(); }
    QString inputName(const NameRequest&) override { return {}; }
    QStringList chooseFiles(const FileRequest&) override { return {}; }
    std::optional<QColor> chooseColour(const QString&, const QColor&) override { return std::nullopt; }
};

double medianMs(int repeat, const std::function<void()>& work) {
    std::vector<double> times;
    work(); // warm
    for (int i = 0; i < repeat; ++i) {
        QElapsedTimer timer;
        timer.start();
        work();
        times.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

void line(const char* what, double ours, double bare) {
    if (bare > 0)
        std::printf("| %s | %.3f | %.3f | %.1f |\n", what, ours, bare, ours / bare);
    else
        std::printf("| %s | %.3f | | |\n", what, ours);
    std::fflush(stdout);
}

/// Every row fetched, every cell read as text: what any program has to do to show a list.
double bareQuery(sqlite3* database, const char* sql, int repeat) {
    return medianMs(repeat, [&] {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(database, sql, -1, &statement, nullptr) != SQLITE_OK)
            std::fprintf(stderr, "%s\n", sqlite3_errmsg(database));
        size_t bytes = 0;
        while (sqlite3_step(statement) == SQLITE_ROW)
            for (int column = 0; column < sqlite3_column_count(statement); ++column) {
                sqlite3_column_text(statement, column);
                bytes += size_t(sqlite3_column_bytes(statement, column));
            }
        sqlite3_finalize(statement);
    });
}

struct ListCase {
    int kind;
    const char* name;
    const char* prefix;
    const char* bare; ///< SQLite's own words: joins as a left chain, sorted by the bytes of the text
};
const ListCase lists[] = {
    {ItemKind::Composer, "list: composers", "",
     "SELECT CpsID, CpsLname, CpsFname, CpsY FROM Cps ORDER BY CpsLname, CpsFname"},
    {ItemKind::Performer, "list: performers", "",
     "SELECT PfrID, PfrLname, PfrFname FROM Pfr ORDER BY PfrLname, PfrFname"},
    {ItemKind::Recording, "list: recordings", "",
     "SELECT Rec.RecID, RecTitle, LabelName, IconName FROM Rec LEFT JOIN Labels ON Labels.LabelID = "
     "Rec.LabelID LEFT JOIN "
     "Supports ON Supports.SupportID = Rec.SupportID ORDER BY RecTitle"},
    {ItemKind::Custom, "list: custom items", "",
     "SELECT UserDefID, UserDefTitle, LastState FROM UserDef ORDER BY UserDefTitle"},
    {ItemKind::Genre, "list: genres", "", "SELECT GenreID, GenreName FROM Genres ORDER BY GenreName"},
    {ItemKind::Label, "list: labels", "", "SELECT LabelID, LabelName FROM Labels ORDER BY LabelName"},
    {ItemKind::Source, "list: sources", "", "SELECT SourceID, SourceType FROM Sources ORDER BY SourceType"},
    {ItemKind::Support, "list: carriers", "",
     "SELECT SupportID, SupportType, IconName, DefIcon FROM Supports"},
    {ItemKind::Composer, "filter \"Ba\": composers", "Ba",
     "SELECT CpsID, CpsLname, CpsFname, CpsY FROM Cps WHERE CpsLname LIKE 'Ba%' ORDER BY CpsLname, CpsFname"},
    {ItemKind::Performer, "filter \"Ba\": performers", "Ba",
     "SELECT PfrID, PfrLname, PfrFname FROM Pfr WHERE PfrLname LIKE 'Ba%' ORDER BY PfrLname, PfrFname"},
    {ItemKind::Recording, "filter \"Ba\": recordings", "Ba",
     "SELECT Rec.RecID, RecTitle, LabelName, IconName FROM Rec LEFT JOIN Labels ON Labels.LabelID = "
     "Rec.LabelID LEFT JOIN "
     "Supports ON Supports.SupportID = Rec.SupportID WHERE RecTitle LIKE 'Ba%' ORDER BY RecTitle"},
};

long memoryKb(const char* key) {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& text : status.readAll().split('\n'))
        if (text.startsWith(key))
            return text.mid(qsizetype(strlen(key)) + 1).simplified().split(' ').front().toLong();
    return 0;
}

class Bench {
public:
    Bench(Session& session, const QString& copy, int repeat) : m_session(session), m_repeat(repeat) {
        sqlite3_open(copy.toUtf8().constData(), &m_bare);
        sqlite3_exec(m_bare,
                     "PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL; PRAGMA locking_mode = EXCLUSIVE; "
                     "PRAGMA cache_size = -32768",
                     nullptr, nullptr, nullptr);
    }
    ~Bench() { sqlite3_close(m_bare); }

    void listTimes() {
        for (const ListCase& one : lists) {
            const double ours = medianMs(m_repeat, [&] {
                ItemList list;
                CMIT(m_session).ElencoInLv(one.kind, list, QString::fromLatin1(one.prefix));
            });
            line(one.name, ours, bareQuery(m_bare, one.bare, m_repeat));
        }
        largestWorksList();
    }

    void statementTimes() {
        Connection& connection = m_session.connection();
        constexpr int times = 1000;
        int id = 0;
        const double ours = medianMs(m_repeat, [&] {
            for (int i = 0; i < times; ++i)
                connection.single(
                    QStringLiteral("SELECT RecTitle FROM Rec WHERE RecID = %1").arg(++id % 1000 + 1));
        });
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(m_bare, "SELECT RecTitle FROM Rec WHERE RecID = ?", -1, &statement, nullptr);
        const double bare = medianMs(m_repeat, [&] {
            for (int i = 0; i < times; ++i) {
                sqlite3_bind_int(statement, 1, i % 1000 + 1);
                sqlite3_step(statement);
                sqlite3_column_text(statement, 0);
                sqlite3_reset(statement);
            }
        });
        sqlite3_finalize(statement);
        line("a row by its key (per 1,000, statement already translated)", ours, bare);
        translationTimes();
        const double save = medianMs(m_repeat, [&] {
            connection.execute(QStringLiteral("UPDATE Rec SET ModDate = NOW() WHERE RecID = 7"));
        });
        line("a durable save", save, medianMs(m_repeat, [&] {
                 sqlite3_exec(m_bare, "UPDATE Rec SET ModDate = datetime('now') WHERE RecID = 7", nullptr,
                              nullptr, nullptr);
             }));
    }

private:
    void largestWorksList() {
        const qint64 composer = m_session.connection()
                                    .single(QStringLiteral("SELECT CpsID FROM Compositions GROUP BY CpsID "
                                                           "HAVING COUNT(*) > 1000"))
                                    .toInteger();
        if (composer == 0)
            return;
        const QByteArray id = QByteArray::number(composer);
        int rows = 0;
        const double ours = medianMs(m_repeat, [&] {
            ItemList list;
            CWKS(m_session).ElencoInLvC(composer, list);
            rows = list.rowCount();
        });
        const QByteArray bare = "SELECT c.CompID, CompTitle, CompSubTitle, CompNbr, CompYear, InCollection, "
                                "Descr, MainWorkName, CpsGenreName "
                                "FROM Compositions c LEFT JOIN MainWorks m ON m.MainWorkID = c.MainWorkID "
                                "LEFT JOIN CpsGenres g ON "
                                "g.CpsGenreID = c.CpsGenreID WHERE c.CpsID = " +
                                id + " ORDER BY CompNbr, CompTitle";
        line(qPrintable(QStringLiteral("list: %1 works of one composer").arg(rows)), ours,
             bareQuery(m_bare, bare.constData(), m_repeat));
    }

    void translationTimes() {
        const JetSql dialect(m_session.connection());
        const QString one = QStringLiteral(
            "SELECT Rec.RecID, Rec.RecTitle, Labels.LabelName, Supports.IconName FROM Supports "
            "RIGHT JOIN (Labels RIGHT JOIN Rec ON Labels.LabelID = Rec.LabelID) ON "
            "Supports.SupportID = Rec.SupportID WHERE RecTitle LIKE 'x%' ORDER BY Rec.RecTitle");
        constexpr int times = 1000;
        line("translating a joined statement anew (per 1,000)",
             medianMs(m_repeat,
                      [&] {
                          for (int i = 0; i < times; ++i)
                              JetSql(m_session.connection()).translate(one);
                      }),
             0);
        line("translating it again with another text (per 1,000)",
             medianMs(m_repeat,
                      [&] {
                          for (int i = 0; i < times; ++i)
                              dialect.translate(QString(one).replace(u'x', QChar(u'a' + i % 26)));
                      }),
             0);
    }

    Session& m_session;
    int m_repeat;
    sqlite3* m_bare = nullptr;
};

} // namespace

int runBench(const QString& catalog, const QString& folder, int repeat) {
    const QString own = folder + QStringLiteral("/Tessaranth.tsb");
    const QString copy = folder + QStringLiteral("/bare.db");
    for (const QString& file : {own, copy}) {
        QFile::remove(file);
        if (!QFile::copy(catalog, file))
            return std::fprintf(stderr, "%s cannot be written\n", qPrintable(file)), 1;
    }
    SilentMessages messages;
    SystemClock clock;
    NoProgress progress;
    Session session(folder, messages, clock);
    std::printf("| what | program, ms | bare SQLite, ms | times |\n| --- | ---: | ---: | ---: |\n");
    if (!Startup(session, {}, progress).run().started)
        return 1;
    const double open = medianMs(repeat, [&] {
        session.closeConnection();
        Startup(session, {}, progress).run();
    });
    const double bareOpen = medianMs(repeat, [&] {
        sqlite3* database = nullptr;
        sqlite3_open(copy.toUtf8().constData(), &database);
        sqlite3_exec(database, "SELECT COUNT(*) FROM sqlite_schema", nullptr, nullptr, nullptr);
        sqlite3_close(database);
    });
    line("start: every step from the configuration to the lists", open, bareOpen);
#ifdef TESSARANTH_BENCH_MODEL
    const IconStore icons(session.applicationFile(QStringLiteral("tsrthres.dll")));
    for (const int kind : {ItemKind::Composer, ItemKind::Recording}) {
        const double filled = medianMs(repeat, [&] {
            session.closeConnection();
            Startup(session, {}, progress).run();
            ItemList list;
            CMIT(session).ElencoInLv(kind, list);
            ItemListModel model(icons);
            model.setList(std::move(list));
        });
        line(qPrintable(
                 QStringLiteral("start to the first list in its model: %1").arg(itemKind(kind)->listCaption)),
             filled, 0);
    }
#endif
    {
        Bench bench(session, copy, repeat);
        bench.listTimes();
        bench.statementTimes();
    }
    line("backup, checked", medianMs(1, [&] { Maintenance(session).backup(progress); }), 0);
    const long before = memoryKb("VmRSS:");
    ItemList list;
    CMIT(session).ElencoInLv(ItemKind::Recording, list);
    std::printf(
        "\nMemory: %ld MB with the list of recordings held (%ld MB before it was read), %ld MB at most.\n",
        memoryKb("VmRSS:") / 1024, before / 1024, memoryKb("VmHWM:") / 1024);
    return 0;
}

} // namespace tessaranth
