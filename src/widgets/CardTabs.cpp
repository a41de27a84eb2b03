// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/CardTabs.h"

#include <QPainter>

namespace tessaranth {

namespace {
constexpr int margin = 9;
constexpr int gap = 5;
} // namespace

CardTabs::CardTabs(QWidget* parent) : QTabBar(parent) {
    setDrawBase(false);
    setExpanding(false);
    setUsesScrollButtons(true);
    setIconSize(QSize(16, 16));
}

QSize CardTabs::tabSizeHint(int index) const {
    const int icon = tabIcon(index).isNull() ? 0 : iconSize().width() + gap;
    return {fontMetrics().size(Qt::TextShowMnemonic, tabText(index)).width() + icon + 2 * margin,
            qMax(fontMetrics().height(), iconSize().height()) + 9};
}

void CardTabs::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    for (int index = 0; index < count(); ++index)
        if (isTabVisible(index))
            paintTab(painter, index);
}

void CardTabs::paintTab(QPainter& painter, int index) const {
    const bool active = index == currentIndex();
    const QRect area = tabRect(index).adjusted(0, 0, -1, 0);
    painter.fillRect(area, palette().color(active ? QPalette::Highlight : QPalette::Button));
    QRect text = area.adjusted(margin, 0, -margin, 0);
    if (const QIcon icon = tabIcon(index); !icon.isNull()) {
        icon.paint(&painter, QRect(text.topLeft(), QSize(iconSize().width(), text.height())));
        text.setLeft(text.left() + iconSize().width() + gap);
    }
    painter.setPen(palette().color(isTabEnabled(index) ? QPalette::Active : QPalette::Disabled,
                                   active ? QPalette::HighlightedText : QPalette::ButtonText));
    painter.drawText(text, int(Qt::AlignVCenter | Qt::AlignLeft | Qt::TextShowMnemonic | Qt::TextSingleLine),
                     tabText(index));
    if (active && hasFocus()) {
        painter.setPen(QPen(painter.pen().color(), 1, Qt::DotLine));
        painter.drawRect(area.adjusted(3, 3, -4, -4));
    }
}

} // namespace tessaranth
