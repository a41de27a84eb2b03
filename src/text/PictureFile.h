// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

class QIODevice;

namespace tessaranth {

/// Reading pictures that come from anywhere: the type is told by the content, never by the name, and nothing
/// is decoded before its size has been looked at. Sizes and pictures are upright, as EXIF says.
namespace PictureFile {

constexpr qint64 maxFileBytes = 200LL * 1024 * 1024;
constexpr qint64 maxPixels = 125'000'000;

/// What is known of a picture without decoding it.
struct Facts {
    qint64 bytes = 0; ///< of the file
    QSize size;       ///< in pixels; empty when it is no readable picture
};

/// The bytes of a file as it stands once they were found to be a picture in BMP, JPEG, GIF or PNG that can
/// be shown. Throws FileError, whose reason names the file and what is wrong with it.
QByteArray read(const QString& path);
/// A picture without a file of its own, as PNG; throws FileError for one that is empty or too large.
QByteArray fromImage(const QImage& image);

// Of a file of a data folder, where a link is none.
Facts facts(const QString& path);
/// The picture, made smaller to fit into `bounds` where it is larger; whole with empty bounds. Of an
/// animation the first frame. Throws FileError.
QImage decode(const QString& path, QSize bounds = {});
/// Writes a picture as a bitmap (BMP) without transparency: see-through parts become white. Throws FileError.
void writeBitmap(const QImage& image, QIODevice& target);

} // namespace PictureFile

} // namespace tessaranth
