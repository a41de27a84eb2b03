// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/ElidedLabel.h"

#include <QPainter>

namespace tessaranth {

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
}

void ElidedLabel::setText(const QString& text) {
    QLabel::setText(text);
    setAccessibleName(text);
    setToolTip(shown() == text ? QString() : text);
    updateGeometry();
}

// A pixel more than the text: rounding must not elide a text that has all the place it asks for.
QSize ElidedLabel::sizeHint() const {
    const QMargins around = contentsMargins();
    return {fontMetrics().horizontalAdvance(text()) + 1 + around.left() + around.right(),
            fontMetrics().height() + around.top() + around.bottom()};
}

QSize ElidedLabel::minimumSizeHint() const {
    const QSize whole = sizeHint();
    return {qMin(whole.width(), fontMetrics().averageCharWidth() * 6), whole.height()};
}

QString ElidedLabel::shown() const {
    return fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
}

void ElidedLabel::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    setToolTip(shown() == text() ? QString() : text());
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setFont(font());
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(contentsRect(), int(Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine), shown());
}

} // namespace tessaranth
