// SPDX-License-Identifier: GPL-3.0-or-later
#include "Measure.h"

#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>
#include <sqlite3.h>
#include <vector>

namespace tessaranth {

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

void line(const QString& what, double ours, double bare) {
    if (bare > 0)
        std::printf("| %s | %.3f | %.3f | %.1f |\n", qPrintable(what), ours, bare, ours / bare);
    else
        std::printf("| %s | %.3f | | |\n", qPrintable(what), ours);
    std::fflush(stdout);
}

double bareQuery(const BenchContext& context, const char* sql) {
    return medianMs(context.repeat, [&] {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(context.bare, sql, -1, &statement, nullptr) != SQLITE_OK)
            std::fprintf(stderr, "%s\n", sqlite3_errmsg(context.bare));
        size_t bytes = 0;
        while (sqlite3_step(statement) == SQLITE_ROW)
            for (int column = 0; column < sqlite3_column_count(statement); ++column) {
                sqlite3_column_text(statement, column);
                bytes += size_t(sqlite3_column_bytes(statement, column));
            }
        sqlite3_finalize(statement);
    });
}

} // namespace tessaranth
