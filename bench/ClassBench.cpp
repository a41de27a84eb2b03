// SPDX-License-Identifier: GPL-3.0-or-later
#include "Measure.h"

#include "classes/Classification.h"
#include "items/ItemKind.h"
#include "store/Session.h"

namespace tessaranth {

// The bare side reads the cards and the links; what puts names into cells is the program's own.
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
             bareQuery(context, "SELECT RecID, RecSubCatID FROM RecSubCatJoin ORDER BY RecID"));
    const double tree = medianMs(context.repeat, [&] { classes.tree(); });
    line(QStringLiteral("classification: tree with its numbers of cards"), tree, 0);
}

} // namespace tessaranth
