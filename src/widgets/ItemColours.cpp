// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/ItemColours.h"

#include "store/Configuration.h"

#include <QTreeView>

namespace tessaranth {

void paintInItemColours(QTreeView* view, const Configuration& configuration, const QString& prefix) {
    const QColor back = configuration.colour(prefix + QStringLiteral("BC"));
    const QColor fore = configuration.colour(prefix + QStringLiteral("FC"));
    QPalette palette = view->palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        palette.setColor(group, QPalette::Base, back);
        palette.setColor(group, QPalette::Text, fore);
        palette.setColor(group, QPalette::Highlight, fore);
        palette.setColor(group, QPalette::HighlightedText, back);
    }
    view->setPalette(palette);
}

} // namespace tessaranth
