// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/PictureFile.h"

#include "platform/Errors.h"
#include "platform/FileReader.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QImageReader>
#include <QPainter>
#include <QtEndian>

namespace tessaranth::PictureFile {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("PictureFile", text); }

/// Room for the largest picture that is accepted, at four bytes a pixel; what a header claims beyond that is
/// refused by the decoders before they ask for the memory.
constexpr int decoderMegabytes = 512;

/// Decoding at this size is enough to know that a picture can be shown.
constexpr QSize sampleSize{64, 64};

// Other decoders that may be installed read formats that nobody asked for, some of them with scripts or
// links.
const QByteArrayList formats{"bmp", "jpeg", "gif", "png"};

bool isKnown(const QImageReader& reader) { return formats.contains(reader.format()); }

void prepare(QImageReader& reader) {
    QImageReader::setAllocationLimit(decoderMegabytes);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
}

bool liesOnItsSide(const QImageReader& reader) {
    return reader.transformation().testFlag(QImageIOHandler::TransformationRotate90);
}

qint64 pixelsOf(QSize size) { return qint64(size.width()) * size.height(); }

/// As it lies in the file. An animation is as large as its canvas, whatever its first frame says.
QSize sizeOf(const QImageReader& reader) {
    const QSize size = reader.size();
    QIODevice* device = reader.device();
    if (reader.format() != "gif" || !device)
        return size;
    const qint64 position = device->pos();
    device->seek(6);
    const QByteArray canvas = device->read(4);
    device->seek(position);
    if (canvas.size() != 4)
        return {};
    return size.expandedTo(
        {qFromLittleEndian<quint16>(canvas.constData()), qFromLittleEndian<quint16>(canvas.constData() + 2)});
}

/// The size as it lies in the file, before it is turned upright.
QSize checkedSize(QImageReader& reader, const QString& name) {
    if (!reader.canRead() || !isKnown(reader))
        throw FileError(tr("%1 is not a picture in BMP, JPEG, GIF or PNG.").arg(name));
    const QSize size = sizeOf(reader);
    if (size.isEmpty())
        throw FileError(tr("%1 is damaged: it does not say how large the picture is.").arg(name));
    if (pixelsOf(size) > maxPixels)
        throw FileError(tr("%1 is too large: %2 x %3 pixels, of which at most %4 million are shown.")
                            .arg(name)
                            .arg(size.width())
                            .arg(size.height())
                            .arg(maxPixels / 1'000'000));
    return size;
}

QImage decodeWith(QImageReader& reader, const QString& name, QSize bounds) {
    const QSize size = checkedSize(reader, name);
    if (liesOnItsSide(reader))
        bounds.transpose();
    if (!bounds.isEmpty() && (size.width() > bounds.width() || size.height() > bounds.height()))
        reader.setScaledSize(size.scaled(bounds, Qt::KeepAspectRatio).expandedTo({1, 1}));
    QImage image;
    if (!reader.read(&image) || image.isNull())
        throw FileError(tr("%1 is damaged: the picture in it cannot be read.").arg(name));
    // Some decoders take the wish for a size as it suits them.
    if (!bounds.isEmpty() && (image.width() > bounds.width() || image.height() > bounds.height()))
        image = image.scaled(image.size().scaled(bounds, Qt::KeepAspectRatio).expandedTo({1, 1}));
    return image;
}

} // namespace

QByteArray read(const QString& path) {
    const QString name = QDir::toNativeSeparators(path);
    QByteArray bytes = readFile(path, maxFileBytes);
    if (bytes.isEmpty())
        throw FileError(tr("%1 is empty.").arg(name));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    prepare(reader);
    decodeWith(reader, name, sampleSize);
    return bytes;
}

QByteArray fromImage(const QImage& image) {
    if (image.isNull())
        throw FileError(tr("The clipboard holds no picture."));
    if (pixelsOf(image.size()) > maxPixels)
        throw FileError(
            tr("The picture is too large: %1 x %2 pixels.").arg(image.width()).arg(image.height()));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "PNG"))
        throw FileError(tr("The picture cannot be converted."));
    return bytes;
}

Facts facts(const QString& path) {
    Facts found;
    QFile file(path);
    try {
        openToRead(file, Links::Refuse);
    } catch (const FileError&) {
        return found;
    }
    found.bytes = file.size();
    QImageReader reader(&file);
    prepare(reader);
    if (!reader.canRead() || !isKnown(reader) || pixelsOf(sizeOf(reader)) > maxPixels)
        return found;
    found.size = liesOnItsSide(reader) ? sizeOf(reader).transposed() : sizeOf(reader);
    return found;
}

QImage decode(const QString& path, QSize bounds) {
    QFile file(path);
    openToRead(file, Links::Refuse);
    QImageReader reader(&file);
    prepare(reader);
    return decodeWith(reader, QDir::toNativeSeparators(path), bounds);
}

void writeBitmap(const QImage& image, QIODevice& target) {
    QImage opaque = image;
    if (image.hasAlphaChannel()) {
        opaque = QImage(image.size(), QImage::Format_RGB32);
        if (opaque.isNull())
            throw FileError(tr("There is not enough memory for a picture of this size."));
        opaque.fill(Qt::white);
        QPainter(&opaque).drawImage(0, 0, image);
    }
    if (!opaque.save(&target, "BMP"))
        throw FileError(tr("The picture cannot be written: %1").arg(target.errorString()));
}

} // namespace tessaranth::PictureFile
