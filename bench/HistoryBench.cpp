// SPDX-License-Identifier: GPL-3.0-or-later
// What the change log and the history add, in pairs with both off, and how long taking back lasts.
#include "Measure.h"

#include "items/CMIT.h"
#include "platform/Progress.h"
#include "store/CatalogWriter.h"
#include "store/History.h"
#include "store/Session.h"

#include <QElapsedTimer>

namespace tessaranth {

namespace {

/// With the history, and without it or any note of what changed.
void pair(const BenchContext& context, const QString& what, const std::function<void()>& work) {
    const double on = medianMs(context.repeat, work);
    Connection& connection = context.session.connection();
    connection.setKeeper(nullptr);
    const double off = medianMs(context.repeat, [&] {
        Transaction unseen(connection, Transaction::Unrecorded());
        work();
        unseen.commit();
    });
    connection.setKeeper(&context.session.history());
    line(what, on, off);
}

void importWorks(Connection& connection, int count) {
    Transaction transaction(connection, QStringLiteral("bench"));
    CatalogWriter writer(connection);
    for (int i = 0; i < count; ++i)
        writer.add(
            QStringLiteral("Compositions"),
            {{QStringLiteral("CpsID"), 1},
             {QStringLiteral("CompTitle"), QStringLiteral("Sonata %1").arg(i)},
             {QStringLiteral("CompNbr"), QString::number(i)},
             {QStringLiteral("CpsGenreID"),
              writer.lookup(QStringLiteral("CpsGenres"), QStringLiteral("Sonatas"), 1)},
             {QStringLiteral("GenreID"), writer.lookup(QStringLiteral("Genres"), QStringLiteral("Sonata"))}});
    transaction.commit();
}

double timedMs(const std::function<void()>& work) {
    QElapsedTimer timer;
    timer.start();
    work();
    return double(timer.nsecsElapsed()) / 1e6;
}

} // namespace

void measureHistory(const BenchContext& context, qint64 composer) {
    Connection& connection = context.session.connection();
    History& history = context.session.history();
    int save = 0;
    pair(context, QStringLiteral("a save; beside it with the history off"), [&] {
        Transaction transaction(connection, QStringLiteral("bench"));
        connection.execute(QStringLiteral("UPDATE Rec SET Notes = 'note %1' WHERE RecID = 7").arg(++save));
        transaction.commit();
    });
    pair(context, QStringLiteral("importing 20,000 works; beside it with the history off"),
         [&] { importWorks(connection, 20000); });

    NoProgress progress;
    std::vector<double> times, redone;
    for (int i = 0; i <= context.repeat; ++i) {
        CMIT(context.session).EliminaItem(ItemKind::Composer, {composer}, progress);
        times.push_back(timedMs([&] { history.undo(); }));
        redone.push_back(timedMs([&] { history.redo(); }));
        history.undo();
    }
    std::sort(times.begin(), times.end());
    std::sort(redone.begin(), redone.end());
    line(QStringLiteral("undo of deleting a composer with 1,000 works on 500 recordings"),
         times[times.size() / 2], 0);
    line(QStringLiteral("the same redone"), redone[redone.size() / 2], 0);
}

} // namespace tessaranth
