// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractScrollArea>
#include <QImage>

namespace tessaranth {

/// A picture at any size, to be zoomed with the wheel and moved with the mouse. It holds no more pixels than
/// what is seen asks for.
class PictureView final : public QAbstractScrollArea {
    Q_OBJECT

public:
    enum class Pointer { Move, ZoomIn, ZoomOut };         ///< what a click does
    static constexpr double smallest = 1, largest = 1600; ///< percent

    explicit PictureView(QWidget* parent = nullptr);

    /// Shows another file, fitted into the window; or words in place of a picture that cannot be read.
    void showFile(const QString& path);
    void showText(const QString& text);
    QString text() const { return m_text; }
    QSize pictureSize() const { return m_size; } ///< in its own pixels; empty while words are shown

    double zoom() const { return m_zoom; } ///< in percent of the picture's own size
    void setZoom(double percentage);
    void zoomIn() { step(1); }
    void zoomOut() { step(-1); }
    /// As large as the window allows, and again when the window changes; never beyond its own size.
    void fit();

    Pointer pointer() const { return m_pointer; }
    void setPointer(Pointer pointer);

signals:
    void zoomChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void scrollContentsBy(int, int) override { viewport()->update(); }

private:
    void step(int direction);
    void step(int direction, QPointF anchor);
    void zoomAt(double percentage, QPointF anchor);
    double fittingZoom() const;
    QSizeF shownSize() const;
    QPointF origin() const;
    void placeBars();
    void decode();

    QString m_path;
    QString m_text;
    QSize m_size;
    QImage m_image; ///< the picture, perhaps smaller than it is
    double m_zoom = 100;
    bool m_fitted = true;
    Pointer m_pointer = Pointer::Move;
    QPoint m_lastMouse;
};

} // namespace tessaranth
