// SPDX-License-Identifier: GPL-3.0-or-later
#include "Measure.h"

#include "items/Classification.h"
#include "items/ItemKind.h"
#include "store/Session.h"

namespace tessaranth {

// The bare side reads the cards, and every link with the names it leads to; what puts the names into cells is
// the program's own.
void measureClasses(const BenchContext& context) {
    Classification classes(context.session, ItemKind::Recording);
    int categories = 0;
    const double view = medianMs(context.repeat, [&] {
        ItemList list;
        classes.globalView(list);
        categories = list.columnCount() - 1;
    });
    line(QStringLiteral("classification: global view, %1 categories").arg(categories), view,
         bareQuery(context, "SELECT RecID, RecTitle FROM Rec ORDER BY RecTitle") +
             bareQuery(context, "SELECT j.RecID, s.RecClassID, s.RecSubCatName FROM RecSubCatJoin j JOIN "
                                "RecSubCat s ON s.RecSubCatID = j.RecSubCatID"));
    const double tree = medianMs(context.repeat, [&] { classes.tree(); });
    line(QStringLiteral("classification: tree with its numbers of cards"), tree,
         bareQuery(context, "SELECT RecSubCatID, COUNT(*) FROM RecSubCatJoin GROUP BY RecSubCatID"));
}

} // namespace tessaranth
