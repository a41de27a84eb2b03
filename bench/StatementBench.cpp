// SPDX-License-Identifier: GPL-3.0-or-later
#include "Measure.h"

#include "store/Session.h"

#include <sqlite3.h>

namespace tessaranth {

namespace {

void translationTimes(const BenchContext& context) {
    const JetSql dialect(context.session.connection());
    const QString one =
        QStringLiteral("SELECT Rec.RecID, Rec.RecTitle, Labels.LabelName, Supports.IconName FROM Supports "
                       "RIGHT JOIN (Labels RIGHT JOIN Rec ON Labels.LabelID = Rec.LabelID) ON "
                       "Supports.SupportID = Rec.SupportID WHERE RecTitle LIKE 'x%' ORDER BY Rec.RecTitle");
    constexpr int times = 1000;
    line("translating a joined statement anew (per 1,000)",
         medianMs(context.repeat,
                  [&] {
                      for (int i = 0; i < times; ++i)
                          JetSql(context.session.connection()).translate(one);
                  }),
         0);
    line("translating it again with another text (per 1,000)",
         medianMs(context.repeat,
                  [&] {
                      for (int i = 0; i < times; ++i)
                          dialect.translate(QString(one).replace(u'x', QChar(u'a' + i % 26)));
                  }),
         0);
}

} // namespace

void measureStatements(const BenchContext& context) {
    Connection& connection = context.session.connection();
    constexpr int times = 1000;
    int id = 0;
    const double ours = medianMs(context.repeat, [&] {
        for (int i = 0; i < times; ++i)
            connection.single(
                QStringLiteral("SELECT RecTitle FROM Rec WHERE RecID = %1").arg(++id % 1000 + 1));
    });
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(context.bare, "SELECT RecTitle FROM Rec WHERE RecID = ?", -1, &statement, nullptr);
    const double bare = medianMs(context.repeat, [&] {
        for (int i = 0; i < times; ++i) {
            sqlite3_bind_int(statement, 1, i % 1000 + 1);
            sqlite3_step(statement);
            sqlite3_column_text(statement, 0);
            sqlite3_reset(statement);
        }
    });
    sqlite3_finalize(statement);
    line("a row by its key (per 1,000, statement already translated)", ours, bare);
    translationTimes(context);
    const double save = medianMs(context.repeat, [&] {
        Transaction transaction(connection, QStringLiteral("bench"));
        connection.execute(QStringLiteral("UPDATE Rec SET ModDate = NOW() WHERE RecID = 7"));
        transaction.commit();
    });
    line("a durable save", save, medianMs(context.repeat, [&] {
             sqlite3_exec(context.bare, "UPDATE Rec SET ModDate = datetime('now') WHERE RecID = 7", nullptr,
                          nullptr, nullptr);
         }));
}

} // namespace tessaranth
