// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/MdiArea.h"

#include <QPainter>

namespace tessaranth {

MdiArea::MdiArea(const QColor& back, QPixmap emblem, QWidget* parent)
    : QMdiArea(parent), m_emblem(std::move(emblem)) {
    setObjectName(QStringLiteral("mdiArea"));
    setBackground(back);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
}

void MdiArea::paintEvent(QPaintEvent* event) {
    QMdiArea::paintEvent(event);
    if (!subWindowList().isEmpty())
        return;
    QPainter painter(viewport());
    const QRect area = viewport()->rect();
    const QSize size = m_emblem.deviceIndependentSize().toSize();
    const QRect emblem(area.center().x() - size.width() / 2, area.center().y() - size.height() - 8,
                       size.width(), size.height());
    painter.setOpacity(0.85);
    painter.drawPixmap(emblem, m_emblem);
    // Readable on whatever colour the user has chosen.
    painter.setPen(background().color().lightnessF() > 0.6 ? Qt::black : Qt::white);
    const QRect text(area.left() + 24, emblem.bottom() + 16, area.width() - 48, 80);
    painter.drawText(text, Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap,
                     tr("Choose a kind of card in the toolbox and type the beginning of a name."));
}

} // namespace tessaranth
