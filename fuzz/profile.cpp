// SPDX-License-Identifier: GPL-3.0-or-later
// Configuration files: in whatever file a value is written, it reads back, and the other values stay. The
// first line of the input is the value, the rest is the file.
#include "Demand.h"
#include "platform/ProfileFile.h"

#include <QFile>
#include <QTemporaryDir>

using namespace tessaranth;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    static const QTemporaryDir folder;
    const auto bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size));
    const qsizetype end = qMax<qsizetype>(bytes.indexOf('\n'), 0);
    const QString value = QString::fromUtf8(bytes.left(qMin<qsizetype>(end, 250))).simplified();
    QFile file(folder.filePath(QStringLiteral("tsc.cfg")));
    if (!file.open(QIODevice::WriteOnly))
        return 0;
    file.write(bytes.mid(end));
    file.close();

    ProfileFile profile(file.fileName());
    const QString section = QStringLiteral("Colors");
    const QString other = profile.read(section, QStringLiteral("Other"));
    if (!profile.write(section, QStringLiteral("Key"), value))
        return 0;
    if (!value.contains(QChar(0)) && value.size() <= 250)
        demand(profile.read(section, QStringLiteral("key")) == value, "a value that was written reads back");
    demand(profile.read(section, QStringLiteral("Other")) == other, "other values stay");
    return 0;
}
