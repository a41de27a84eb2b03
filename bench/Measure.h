// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <functional>

struct sqlite3;

namespace tessaranth {

class Session;

/// What one topic measures on: the program's session, and the bare library on a copy of the same catalog.
struct BenchContext {
    Session& session;
    sqlite3* bare;
    int repeat; ///< warm runs of which the median counts
};

double medianMs(int repeat, const std::function<void()>& work);
/// A row of the table; no comparison when `bare` is 0.
void line(const QString& what, double ours, double bare);
/// Every row fetched, every cell read as text: what any program has to do to show a list.
double bareQuery(const BenchContext& context, const char* sql);

// The topics, in the order of the table; each is a file of this folder.
void measureLists(const BenchContext& context);
void measureStatements(const BenchContext& context);
void measureRecordings(const BenchContext& context);
/// `composer` has 1,000 works, every second of which is on a recording.
void measureHistory(const BenchContext& context, qint64 composer);
void measureQuickSearch(const BenchContext& context);
void measureCards(const BenchContext& context);
void measureClasses(const BenchContext& context);
void measureDocuments(const BenchContext& context);

} // namespace tessaranth
