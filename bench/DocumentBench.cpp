// SPDX-License-Identifier: GPL-3.0-or-later
#include "Measure.h"

#include "text/RichText.h"

#include <QTextDocument>

namespace tessaranth {

namespace {

/// One megabyte as a word processor writes it: a change of format in every few words.
QByteArray largeDocument() {
    QByteArray rtf("{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0 Verdana;}{\\f1\\fcharset238 Times;}}"
                   "{\\colortbl;\\red255\\green0\\blue0;}");
    while (rtf.size() < 1'000'000)
        rtf += "\\pard\\ql\\f0\\fs20 Words of a paragraph, {\\b some of them bold}, caf\\'e9 and \\u345? and "
               "{\\cf1\\i others} in red, {\\f1 Dvo\\'f8\\'e1k} in another font.\\par\r\n";
    return rtf + "}";
}

} // namespace

void measureDocuments(const BenchContext& context) {
    const QByteArray rtf = largeDocument();
    QTextDocument document;
    line(QStringLiteral("a document of 1 MB read"),
         medianMs(context.repeat, [&] { RichText::toDocument(rtf, document); }), 0);
    line(QStringLiteral("the same as plain text"), medianMs(context.repeat, [&] { RichText::toText(rtf); }),
         0);
    line(QStringLiteral("the same written"),
         medianMs(context.repeat, [&] { RichText::fromDocument(document); }), 0);
}

} // namespace tessaranth
