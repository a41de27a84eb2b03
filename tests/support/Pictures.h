// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QBuffer>
#include <QFile>
#include <QImage>

namespace tessaranth {

/// A picture whose left half has another colour than its right one.
inline QImage halves(QSize size, const QColor& left = Qt::red, const QColor& right = Qt::blue) {
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            image.setPixelColor(x, y, x < size.width() / 2 ? left : right);
    return image;
}

inline QByteArray encoded(const QImage& image, const char* format) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return buffer.data();
}

inline QString written(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? path : QString();
}

} // namespace tessaranth
