// SPDX-License-Identifier: GPL-3.0-or-later
#include "attachments/forms/PictureBox.h"

#include "platform/Errors.h"
#include "text/PictureFile.h"
#include "widgets/FormHelpers.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>

namespace tessaranth {

namespace {

/// While the window is being resized the file is read again at these steps only.
constexpr int sizeStep = 256;

QSize roundedUp(QSize size) {
    const auto up = [](int length) { return (length + sizeStep - 1) / sizeStep * sizeStep; };
    return {up(size.width()), up(size.height())};
}

} // namespace

PictureBox::PictureBox(QWidget* parent) : QWidget(parent) {
    setMinimumSize(80, 24); // between tiles there is room for a line of text
    setFocusPolicy(Qt::StrongFocus);
}

void PictureBox::showFile(const QString& path) {
    m_path = path;
    m_text.clear();
    m_pixmap = {};
    m_decodedFor = {};
    update();
}

void PictureBox::showText(const QString& text) {
    showFile({});
    m_text = text;
}

void PictureBox::decode() {
    const QSize wanted = roundedUp(size() * devicePixelRatioF());
    if (m_path.isEmpty() || m_decodedFor == wanted)
        return;
    m_decodedFor = wanted;
    try {
        m_pixmap = QPixmap::fromImage(PictureFile::decode(m_path, wanted));
    } catch (const Error& error) {
        showText(error.reason());
    }
}

void PictureBox::paintEvent(QPaintEvent*) {
    decode();
    QPainter painter(this);
    if (m_pixmap.isNull()) {
        painter.setPen(palette().color(foregroundRole()));
        constexpr int margin = 6;
        painter.drawText(rect().adjusted(margin, margin, -margin, -margin),
                         Qt::AlignCenter | Qt::TextWordWrap, FormHelpers::fittingText(m_text, this, margin));
    } else {
        // A small picture is shown in its own size: enlarged it would only be blurred.
        QSize shown = m_pixmap.size() / devicePixelRatioF();
        if (shown.width() > width() || shown.height() > height())
            shown.scale(size(), Qt::KeepAspectRatio);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawPixmap(
            QStyle::alignedRect(layoutDirection(), Qt::AlignCenter, shown.expandedTo({1, 1}), rect()),
            m_pixmap);
    }
    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

void PictureBox::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        emit doubleClicked();
}

} // namespace tessaranth
