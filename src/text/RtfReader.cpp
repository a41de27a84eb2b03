// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/RtfReader.h"

#include "text/RtfReading.h"

namespace tessaranth {

using Kind = RtfToken::Kind;

bool looksLikeRtf(const QByteArray& bytes) {
    constexpr qsizetype headLength = 64;
    return bytes.left(headLength).trimmed().startsWith("{\\rtf");
}

RtfOutcome readRtf(const QByteArray& document, RtfSink& sink) {
    if (!looksLikeRtf(document))
        return {RtfReading::tr("This is no document in Rich Text Format."), false};
    return RtfReading(document, sink).run();
}

RtfOutcome RtfReading::run() {
    // Deeper than any program nests; a hostile document must not fill the memory with groups.
    constexpr size_t deepest = 1000;
    for (RtfToken token = m_tokens.next(); token.kind != Kind::End; token = m_tokens.next()) {
        if (token.kind != Kind::Text && token.kind != Kind::Byte)
            flushBytes();
        if (token.kind == Kind::Open && m_groups.size() > deepest) {
            fail(tr("The document is nested too deep. What follows was left out."));
            break;
        }
        take(token);
        m_outcome.isCut = m_sink.isFull();
        if (m_outcome.isCut)
            break;
    }
    flushBytes();
    if (m_groups.size() > 1 && !m_outcome.isCut)
        fail(tr("The document ends in the middle; its end is missing."));
    m_picture = {}; // half a picture cannot be shown
    while (m_groups.size() > 1)
        close();
    if (m_hasContent)
        endParagraph();
    m_outcome.isCut = m_sink.isFull();
    return m_outcome;
}

void RtfReading::fail(const QString& reason) {
    if (m_outcome.error.isEmpty())
        m_outcome.error = reason;
}

void RtfReading::take(const RtfToken& token) {
    const bool wasStarred = std::exchange(m_starred, false);
    switch (token.kind) {
    case Kind::Open:
        m_toSkip = 0;
        m_groups.push_back(group());
        break;
    case Kind::Close:
        close();
        break;
    case Kind::Text:
        putBytes(token.text);
        break;
    case Kind::Byte: {
        const char byte = char(token.number);
        putBytes(QByteArrayView(&byte, 1));
        break;
    }
    case Kind::Symbol:
        if (!skipFallback())
            symbol(token.text.front());
        break;
    case Kind::Word:
        if (!skipFallback())
            word(token, wasStarred);
        break;
    case Kind::Data:
        if (!skipFallback() && group().destination == Destination::Picture)
            m_picture.bytes += token.text;
        break;
    case Kind::Damage:
        fail(tr("A picture in the document is damaged and was left out."));
        break;
    case Kind::End:
        break;
    }
}

// The characters after \uN are for readers without Unicode; a control counts as one of them.
bool RtfReading::skipFallback() {
    if (m_toSkip == 0)
        return false;
    --m_toSkip;
    return true;
}

void RtfReading::close() {
    m_toSkip = 0;
    if (m_groups.size() == 1) {
        fail(tr("The document has an end of a group without its beginning."));
        return;
    }
    const Destination ended = group().destination;
    m_groups.pop_back();
    if (group().destination == ended)
        return;
    if (ended == Destination::Picture)
        endPicture();
    else if (ended == Destination::Instruction)
        endInstruction();
    else if (ended == Destination::Fonts)
        endFont();
}

void RtfReading::symbol(char c) {
    switch (c) {
    case '*':
        m_starred = true;
        break;
    case '\\':
    case '{':
    case '}':
        put(QChar(QLatin1Char(c)));
        break;
    case '~':
        put(QChar(0x00A0));
        break;
    case '-':
        put(QChar(0x00AD));
        break;
    case '_':
        put(QChar(0x2011));
        break;
    case '\t':
        put(QChar(u'\t'));
        break;
    case '\r':
    case '\n':
        endParagraph();
        break;
    default:
        break;
    }
}

// ---- text

void RtfReading::putBytes(QByteArrayView bytes) {
    const qsizetype skipped = std::min<qsizetype>(m_toSkip, bytes.size());
    m_toSkip -= int(skipped);
    bytes = bytes.sliced(skipped);
    switch (group().destination) {
    case Destination::Body:
    case Destination::Fonts:
    case Destination::Instruction:
        m_bytes += bytes;
        break;
    case Destination::Colours:
        for (const char byte : bytes)
            if (byte == ';')
                endColour();
        break;
    case Destination::Picture:
        putHex(bytes);
        break;
    case Destination::Hidden:
        break;
    }
}

void RtfReading::putHex(QByteArrayView digits) {
    for (const char c : digits) {
        const int digit = c >= '0' && c <= '9'                     ? c - '0'
                          : (c | 0x20) >= 'a' && (c | 0x20) <= 'f' ? (c | 0x20) - 'a' + 10
                                                                   : -1;
        if (digit < 0)
            continue;
        if (m_highDigit < 0) {
            m_highDigit = digit;
        } else {
            m_picture.bytes += char(m_highDigit * 16 + digit);
            m_highDigit = -1;
        }
    }
}

void RtfReading::flushBytes() {
    if (m_bytes.isEmpty())
        return;
    const QByteArray bytes = std::exchange(m_bytes, {});
    const RtfFont font = m_fonts.value(fontOf(group().style));
    if (font.hasSymbols && group().destination == Destination::Body) {
        for (const char byte : bytes)
            put(symbolOf(uchar(byte)));
    } else {
        put(CodePages::decode(bytes, font.codePage == 0 ? m_codePage : font.codePage));
    }
}

void RtfReading::put(const QString& text) {
    if (group().destination == Destination::Instruction) {
        m_instruction += text;
    } else if (group().destination == Destination::Fonts) {
        putFontName(text);
    } else if (group().destination == Destination::Body && !group().style.hidden && !text.isEmpty()) {
        if (m_cellEnded) {
            m_cellEnded = false;
            append(QStringLiteral("\t"));
        }
        append(text);
    }
}

void RtfReading::append(const QString& text) {
    if (m_textStyle != group().style) {
        flushText();
        m_textStyle = group().style;
    }
    m_text += text;
    m_hasContent = true;
}

// What no text document can hold goes: control characters, half pairs, and the code points that Qt's text
// documents use for frames and pictures.
QString RtfReading::cleaned(const QString& text) {
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        const char16_t code = c.unicode();
        if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate())
            result += c, result += text[++i];
        else if (c.isSurrogate())
            result += QChar(QChar::ReplacementCharacter);
        else if (code == u'\t' || !(code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0x2029 ||
                                    code == 0xFFFC || code >= 0xFFFE || (code >= 0xFDD0 && code <= 0xFDEF)))
            result += c;
    }
    return result;
}

void RtfReading::flushText() {
    if (m_text.isEmpty())
        return;
    const QString text = cleaned(std::exchange(m_text, {}));
    if (!text.isEmpty())
        m_sink.text(text, resolved(m_textStyle));
}

void RtfReading::endParagraph() {
    if (group().destination != Destination::Body)
        return;
    m_cellEnded = false;
    flushText();
    m_sink.endParagraph(group().paragraph, resolved(group().style));
    m_hasContent = false;
}

int RtfReading::fontOf(const Style& style) const { return style.font < 0 ? m_defaultFont : style.font; }

RtfStyle RtfReading::resolved(const Style& raw) const {
    RtfStyle style = raw.plain;
    style.font = m_fonts.value(fontOf(raw)).name;
    const auto colour = [&](int index) {
        return index > 0 && size_t(index) < m_colours.size() ? m_colours[size_t(index)] : std::nullopt;
    };
    style.colour = colour(raw.colour);
    style.background = colour(raw.background);
    return style;
}

// ---- tables and pictures

void RtfReading::putFontName(const QString& text) {
    for (const QChar c : text) {
        if (c == u';')
            endFont();
        else if (c.isPrint() && m_fontName.size() < 100)
            m_fontName += c;
    }
}

void RtfReading::endFont() {
    if (!m_fontName.trimmed().isEmpty())
        m_fonts[fontOf(group().style)].name = cleaned(m_fontName.trimmed());
    m_fontName.clear();
}

void RtfReading::endColour() {
    m_colours.push_back(m_hasColour ? std::optional<QRgb>(m_colour) : std::nullopt);
    m_hasColour = false;
    m_colour = qRgb(0, 0, 0);
}

void RtfReading::endPicture() {
    RtfPicture picture = std::exchange(m_picture, {});
    m_highDigit = -1;
    if (group().destination != Destination::Body || group().style.hidden)
        return;
    if (!picture.bytes.startsWith("\x89PNG\r\n") && !picture.bytes.startsWith("\xFF\xD8\xFF")) {
        m_outcome.simplified = true;
        return;
    }
    if (m_cellEnded) {
        m_cellEnded = false;
        append(QStringLiteral("\t"));
    }
    flushText();
    m_sink.picture(picture, resolved(group().style));
    m_hasContent = true;
}

void RtfReading::endInstruction() {
    const QString instruction = cleaned(std::exchange(m_instruction, {})).trimmed();
    if (instruction.startsWith(QLatin1String("HYPERLINK"), Qt::CaseInsensitive))
        group().style.plain.link = instruction.section(u'"', 1, 1);
}

} // namespace tessaranth
