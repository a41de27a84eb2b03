// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures: what is said to be one can be shown in the size that was said, and no larger than was asked for.
#include "Demand.h"
#include "platform/Errors.h"
#include "text/PictureFile.h"

#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>

using namespace tessaranth;

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QGuiApplication application(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    static const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("picture"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return 0;
    file.write(reinterpret_cast<const char*>(data), qint64(size));
    file.close();
    const PictureFile::Facts facts = PictureFile::facts(path);
    // A large picture is decoded as any other, only slower.
    constexpr qint64 mostPixels = 1'000'000;
    if (qint64(facts.size.width()) * facts.size.height() > mostPixels)
        return 0;
    try {
        const QByteArray bytes = PictureFile::read(path);
        demand(bytes == QByteArrayView(data, qsizetype(size)), "the bytes stay as they are");
        demand(!facts.size.isEmpty(), "a picture that can be shown has a size");
        const QSize bounds(50, 40);
        const QImage shown = PictureFile::decode(path, bounds);
        demand(!shown.isNull() && shown.width() <= bounds.width() && shown.height() <= bounds.height(),
               "a picture fits into its bounds");
    } catch (const Error& error) {
        demand(!error.reason().isEmpty(), "a refusal has a reason");
    }
    return 0;
}
