// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPixmap>
#include <QWidget>

namespace tessaranth {

/// Shows a picture file as large as it fits, or words in its place. Nothing is decoded before it is painted,
/// and no more of it than is seen.
class PictureBox final : public QWidget {
    Q_OBJECT

public:
    explicit PictureBox(QWidget* parent = nullptr);

    void showFile(const QString& path); ///< reads it again when it is the same path
    void showText(const QString& text);
    QString text() const { return m_text; } ///< empty while a picture is shown

    QSize sizeHint() const override { return {240, 240}; }

signals:
    void doubleClicked();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    void decode();

    QString m_path;
    QString m_text;
    QPixmap m_pixmap;
    QSize m_decodedFor; ///< pixels of the box for which the picture was read
};

} // namespace tessaranth
