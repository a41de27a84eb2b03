// SPDX-License-Identifier: GPL-3.0-or-later
#include "Measure.h"

#include "platform/Progress.h"
#include "search/QuickSearch.h"
#include "store/Session.h"
#include "store/TextIndex.h"

namespace tessaranth {

void measureQuickSearch(const BenchContext& context) {
    QuickSearch search(context.session);
    NoProgress progress;
    line("making the word index of the quick search",
         medianMs(1,
                  [&] {
                      TextIndex(context.session.connection()).drop();
                      search.prepare(progress);
                  }),
         0);
    // Each text is one keystroke further than the one before it.
    for (const char* text : {"a", "al", "allegr", "allegro b", "conc ba 1"})
        line(QStringLiteral("quick search: \"%1\"").arg(QLatin1String(text)),
             medianMs(context.repeat, [&] { search.find(QLatin1String(text)); }), 0);
}

} // namespace tessaranth
