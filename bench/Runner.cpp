// SPDX-License-Identifier: GPL-3.0-or-later
#include "Runner.h"

#include "Measure.h"

#include "items/CMIT.h"
#include "platform/Clock.h"
#include "platform/Progress.h"
#include "store/Maintenance.h"
#include "store/Session.h"
#include "store/Startup.h"
#ifdef TESSARANTH_BENCH_MODEL
#include "widgets/IconStore.h"
#include "widgets/ItemListModel.h"
#endif

#include <QFile>
#include <cstdio>
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

long memoryKb(const char* key) {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& text : status.readAll().split('\n'))
        if (text.startsWith(key))
            return text.mid(qsizetype(strlen(key)) + 1).simplified().split(' ').front().toLong();
    return 0;
}

/// The bare library on the copy, set up as the program sets up its own connection.
class BareCatalog {
public:
    explicit BareCatalog(const QString& file) {
        sqlite3_open(file.toUtf8().constData(), &m_database);
        sqlite3_exec(m_database,
                     "PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL; PRAGMA locking_mode = EXCLUSIVE; "
                     "PRAGMA cache_size = -32768",
                     nullptr, nullptr, nullptr);
    }
    ~BareCatalog() { sqlite3_close(m_database); }
    sqlite3* database() const { return m_database; }

private:
    sqlite3* m_database = nullptr;
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
    // First of all: what the measuring itself takes would count as the program's later.
    const long before = memoryKb("VmRSS:");
    long withList = 0;
    {
        ItemList list;
        CMIT(session).ElencoInLv(ItemKind::Recording, list);
        withList = memoryKb("VmRSS:");
    }
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
        line(QStringLiteral("start to the first list in its model: %1").arg(itemKind(kind)->listCaption),
             filled, 0);
    }
#endif
    {
        const BareCatalog bare(copy);
        const BenchContext context{session, bare.database(), repeat};
        for (const auto& measure : {measureLists, measureStatements, measureRecordings, measureQuickSearch,
                                    measureCards, measureClasses, measureDocuments})
            measure(context);
    }
    line("backup, checked", medianMs(1, [&] { Maintenance(session).backup(progress); }), 0);
    std::printf(
        "\nMemory: %ld MB with the list of recordings held (%ld MB before it was read), %ld MB at most "
        "while everything was measured.\n",
        withList / 1024, before / 1024, memoryKb("VmHWM:") / 1024);
    return 0;
}

} // namespace tessaranth
