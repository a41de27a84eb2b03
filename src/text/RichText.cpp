// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/RichText.h"

#include "platform/CodePages.h"
#include "text/RtfWriter.h"

namespace tessaranth::RichText {

namespace {

class TextSink final : public RtfSink {
public:
    void text(const QString& text, const RtfStyle&) override {
        startParagraph();
        result += text;
    }
    void picture(const RtfPicture&, const RtfStyle&) override { startParagraph(); }
    void endParagraph(const RtfParagraph&, const RtfStyle&) override {
        startParagraph();
        m_isOpen = false;
    }

    QString result;

private:
    void startParagraph() {
        if (!m_isOpen && m_hasParagraph)
            result += u'\n';
        m_isOpen = m_hasParagraph = true;
    }
    bool m_isOpen = false;
    bool m_hasParagraph = false;
};

} // namespace

QByteArray fromText(const QString& text) {
    RtfStyle style;
    style.font = defaultFont;
    style.halfPoints = defaultPoints * 2;
    RtfWriter writer;
    for (const QString& line : QString(text).remove(u'\r').split(u'\n')) {
        writer.text(line, style);
        writer.endParagraph({}, style);
    }
    return writer.document();
}

QString toText(const QByteArray& document) {
    TextSink sink;
    readRtf(looksLikeRtf(document) ? document : fromText(CodePages::decodeText(document)), sink);
    return sink.result.replace(QChar(QChar::LineSeparator), u'\n');
}

} // namespace tessaranth::RichText
