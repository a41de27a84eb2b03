// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/PictureView.h"

#include "platform/Errors.h"
#include "text/PictureFile.h"

#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <cmath>

namespace tessaranth {

namespace {

constexpr double zoomSteps[] = {1,  2,  3,   5,   7,   10,  15,  20,  25,  33,  50,
                                67, 75, 100, 125, 150, 200, 300, 400, 600, 800, 1600};

/// Most pixels kept of a picture, four bytes each: enough for any screen, and no reason to fear a poster.
constexpr double maxKeptPixels = 32'000'000;

/// From this zoom on the pixels themselves are what one wants to see.
constexpr double sharpFrom = 300;

} // namespace

PictureView::PictureView(QWidget* parent) : QAbstractScrollArea(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(QFrame::NoFrame);
    viewport()->setBackgroundRole(QPalette::Dark);
    viewport()->setAutoFillBackground(true);
    setPointer(Pointer::Move);
}

void PictureView::showFile(const QString& path) {
    m_path = path;
    m_text.clear();
    m_image = {};
    m_size = PictureFile::facts(path).size;
    if (m_size.isEmpty())
        decode(); // its failure says why
    fit();
}

void PictureView::showText(const QString& text) {
    m_path.clear();
    m_image = {};
    m_size = {};
    m_text = text;
    fit();
}

// ---- size and place

QSizeF PictureView::shownSize() const { return QSizeF(m_size) * (m_zoom / 100); }

double PictureView::fittingZoom() const {
    if (m_size.isEmpty())
        return 100;
    const QSizeF room = maximumViewportSize();
    return qBound(smallest, 100 * qMin(room.width() / m_size.width(), room.height() / m_size.height()),
                  100.0);
}

/// Upper left corner of the picture within the viewport; a picture smaller than that stands in its middle.
QPointF PictureView::origin() const {
    const QSizeF shown = shownSize();
    const auto place = [](double room, double length, int scrolled) {
        return length < room ? (room - length) / 2 : -double(scrolled);
    };
    return {place(viewport()->width(), shown.width(), horizontalScrollBar()->value()),
            place(viewport()->height(), shown.height(), verticalScrollBar()->value())};
}

void PictureView::placeBars() {
    const QSizeF shown = m_fitted ? QSizeF() : shownSize();
    const auto place = [](QScrollBar* bar, double length, int room) {
        bar->setRange(0, qMax(0, int(std::ceil(length)) - room));
        bar->setPageStep(room);
        bar->setSingleStep(qMax(1, room / 10));
    };
    // Twice: a bar that appears takes room from the other direction.
    for (int round = 0; round < 2; ++round) {
        place(horizontalScrollBar(), shown.width(), viewport()->width());
        place(verticalScrollBar(), shown.height(), viewport()->height());
    }
    viewport()->update();
}

void PictureView::fit() {
    m_fitted = true;
    m_zoom = fittingZoom();
    placeBars();
    emit zoomChanged();
}

void PictureView::setZoom(double percentage) { zoomAt(percentage, QRectF(viewport()->rect()).center()); }

// What lies under the anchor stays there.
void PictureView::zoomAt(double percentage, QPointF anchor) {
    if (m_size.isEmpty())
        return;
    const QPointF inPicture = (anchor - origin()) / m_zoom;
    m_fitted = false;
    m_zoom = qBound(smallest, percentage, largest);
    placeBars();
    const QPointF scrolled = inPicture * m_zoom - anchor;
    horizontalScrollBar()->setValue(qRound(scrolled.x()));
    verticalScrollBar()->setValue(qRound(scrolled.y()));
    emit zoomChanged();
}

void PictureView::step(int direction) { step(direction, QRectF(viewport()->rect()).center()); }

void PictureView::step(int direction, QPointF anchor) {
    constexpr double nearly = 0.01;
    const double* next = direction > 0
                             ? std::upper_bound(std::begin(zoomSteps), std::end(zoomSteps), m_zoom + nearly)
                             : std::lower_bound(std::begin(zoomSteps), std::end(zoomSteps), m_zoom - nearly);
    if (direction < 0 && next != std::begin(zoomSteps))
        zoomAt(*(next - 1), anchor);
    else if (direction > 0 && next != std::end(zoomSteps))
        zoomAt(*next, anchor);
}

// ---- painting

// Read again when more detail is wanted, and when so much less is that scaling it down at each stroke of the
// brush would be slow and coarse.
void PictureView::decode() {
    if (m_path.isEmpty())
        return;
    const double pixels = double(m_size.width()) * m_size.height();
    const double affordable = pixels > maxKeptPixels ? std::sqrt(maxKeptPixels / pixels) : 1;
    const double wanted = qMin(affordable, m_zoom / 100 * devicePixelRatioF());
    const double held = m_image.isNull() ? 0 : double(m_image.width()) / m_size.width();
    if (!m_image.isNull() && held > wanted * 0.99 && held < wanted * 2)
        return;
    try {
        const QSize bounds = (QSizeF(m_size) * wanted).toSize().expandedTo({1, 1});
        m_image = PictureFile::decode(m_path, m_size.isEmpty() ? QSize() : bounds);
    } catch (const Error& error) {
        showText(error.reason());
    }
}

void PictureView::paintEvent(QPaintEvent*) {
    decode();
    QPainter painter(viewport());
    if (m_image.isNull()) {
        painter.setPen(viewport()->palette().color(QPalette::BrightText));
        painter.drawText(viewport()->rect().adjusted(24, 24, -24, -24), Qt::AlignCenter | Qt::TextWordWrap,
                         m_text);
        return;
    }
    const QRectF all(origin(), shownSize());
    const QRectF seen = all & QRectF(viewport()->rect());
    const double scaleX = m_image.width() / all.width();
    const double scaleY = m_image.height() / all.height();
    const QRectF source((seen.x() - all.x()) * scaleX, (seen.y() - all.y()) * scaleY, seen.width() * scaleX,
                        seen.height() * scaleY);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, m_zoom < sharpFrom);
    painter.drawImage(seen, m_image, source);
}

void PictureView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    if (m_fitted)
        fit();
    else
        placeBars();
}

// ---- keys and mouse

// Only Up and Down scroll; the other keys that a scroll area takes are the window's, for its other pictures.
void PictureView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down)
        QAbstractScrollArea::keyPressEvent(event);
    else
        event->ignore();
}

void PictureView::wheelEvent(QWheelEvent* event) {
    if (event->angleDelta().y() != 0)
        step(event->angleDelta().y() > 0 ? 1 : -1, event->position());
    event->accept();
}

void PictureView::setPointer(Pointer pointer) {
    m_pointer = pointer;
    viewport()->setCursor(pointer == Pointer::Move ? Qt::OpenHandCursor : Qt::CrossCursor);
}

void PictureView::mousePressEvent(QMouseEvent* event) {
    m_lastMouse = event->pos();
    if (event->button() != Qt::LeftButton)
        return;
    if (m_pointer == Pointer::Move)
        viewport()->setCursor(Qt::ClosedHandCursor);
    else
        step(m_pointer == Pointer::ZoomIn ? 1 : -1, event->position());
}

void PictureView::mouseMoveEvent(QMouseEvent* event) {
    if (m_pointer != Pointer::Move || !(event->buttons() & Qt::LeftButton))
        return;
    const QPoint moved = event->pos() - m_lastMouse;
    m_lastMouse = event->pos();
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - moved.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() - moved.y());
}

void PictureView::mouseReleaseEvent(QMouseEvent*) { setPointer(m_pointer); }

void PictureView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (m_pointer != Pointer::Move)
        mousePressEvent(event);
    else if (m_fitted)
        zoomAt(100, event->position());
    else
        fit();
}

} // namespace tessaranth
