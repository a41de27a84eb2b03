// SPDX-License-Identifier: GPL-3.0-or-later
// Documents: whatever the bytes are, what was read of them is written so that it reads the same again.
#include "Demand.h"
#include "text/RichText.h"

#include <QGuiApplication>
#include <QTextDocument>

using namespace tessaranth;

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QGuiApplication application(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    const auto bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size));
    QTextDocument first, second;
    RichText::toDocument(bytes, first);
    const QByteArray written = RichText::fromDocument(first);
    demand(RichText::toDocument(written, second).error.isEmpty(), "a written document has no errors");
    demand(second.toRawText() == first.toRawText(),
           "a written document has the text of the one it was made of");
    demand(RichText::fromDocument(second) == written, "a document is written as it was read");
    demand(RichText::toText(written) == RichText::toText(bytes), "text and text document agree");
    return 0;
}
