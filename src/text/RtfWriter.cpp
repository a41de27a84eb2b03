// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/RtfWriter.h"

#include "platform/CodePages.h"

#include <QBuffer>
#include <QImageReader>
#include <algorithm>

namespace tessaranth {

namespace {

constexpr int twipsPerPixel = 15; ///< at 96 pixels to the inch
constexpr int longest = 31680;

QByteArray word(const char* name, int number) { return QByteArray(name) + QByteArray::number(number); }

/// A byte of the document's code page where it has the character, which every reader knows best.
QByteArray foreign(QChar c) {
    const std::optional<QByteArray> byte = CodePages::toWindows1252(c);
    if (byte && !(c.unicode() >= 0x7F && c.unicode() < 0xA0))
        return "\\'" + byte->toHex();
    return word("\\u", qint16(c.unicode())) + '?'; // signed sixteen bits, as the format has it
}

QByteArray escaped(const QString& text) {
    QByteArray result;
    result.reserve(text.size());
    for (const QChar c : text) {
        switch (const char16_t code = c.unicode()) {
        case u'\\':
        case u'{':
        case u'}':
            result.append('\\').append(char(code));
            break;
        case u'\t':
            result += "\\tab ";
            break;
        case u'\n':
        case 0x2028:
            result += "\\line ";
            break;
        case 0x00A0:
            result += "\\~";
            break;
        case 0x00AD:
            result += "\\-";
            break;
        case 0x2011:
            result += "\\_";
            break;
        default:
            if (code >= 0x20 && code < 0x7F)
                result += char(code);
            else if (code >= 0x7F)
                result += foreign(c);
        }
    }
    return result;
}

QByteArray lines(const QByteArray& hex) {
    constexpr qsizetype width = 128;
    QByteArray result;
    result.reserve(hex.size() + hex.size() / width * 2 + 2);
    for (qsizetype start = 0; start < hex.size(); start += width)
        result += hex.mid(start, width) + "\r\n";
    return result;
}

} // namespace

int RtfWriter::colourNumber(QRgb colour) {
    const auto known = std::find(m_colours.begin(), m_colours.end(), colour);
    const auto place = int(known - m_colours.begin());
    if (known == m_colours.end())
        m_colours.push_back(colour);
    return place + 1; // 0 is the reader's own colour
}

void RtfWriter::setStyle(const RtfStyle& style) {
    RtfStyle wanted = style;
    wanted.link.clear(); // not a matter of looks
    if (m_style == wanted)
        return;
    m_style = wanted;
    if (!m_fonts.contains(style.font))
        m_fonts.push_back(style.font);
    m_paragraph += word("\\plain\\f", int(m_fonts.indexOf(style.font))) + word("\\fs", style.halfPoints);
    const std::pair<bool, const char*> marks[] = {
        {style.bold, "\\b"},           {style.italic, "\\i"},         {style.underline, "\\ul"},
        {style.strikeOut, "\\strike"}, {style.script > 0, "\\super"}, {style.script < 0, "\\sub"}};
    for (const auto& [isSet, name] : marks)
        if (isSet)
            m_paragraph += name;
    if (style.colour)
        m_paragraph += word("\\cf", colourNumber(*style.colour));
    // Word processors know one of the two, most both.
    if (style.background) {
        const int number = colourNumber(*style.background);
        m_paragraph += word("\\chcbpat", number) + word("\\cb", number);
    }
    m_paragraph += ' ';
}

void RtfWriter::text(const QString& text, const RtfStyle& style) {
    // Pieces that only the editor tells apart are one link.
    if (!style.link.isEmpty() && m_linkEnd == m_body.size() + m_paragraph.size() && m_link == style.link) {
        RtfStyle wanted = style;
        wanted.link.clear();
        if (m_style == wanted) {
            m_paragraph.insert(m_paragraph.size() - 2, escaped(text));
            m_linkEnd = m_body.size() + m_paragraph.size();
            return;
        }
    }
    setStyle(style);
    if (style.link.isEmpty()) {
        m_paragraph += escaped(text);
        return;
    }
    m_paragraph += "{\\field{\\*\\fldinst HYPERLINK \"" +
                   escaped(QString(style.link).remove(u'"').remove(u'\n')) + "\"}{\\fldrslt " +
                   escaped(text) + "}}";
    m_link = style.link;
    m_linkEnd = m_body.size() + m_paragraph.size();
}

void RtfWriter::picture(const RtfPicture& picture, const RtfStyle& style) {
    setStyle(style);
    QByteArray bytes = picture.bytes;
    QBuffer buffer(&bytes);
    const QSize pixels = QImageReader(&buffer).size();
    QSize goal(picture.width, picture.height);
    if (goal.isEmpty() && pixels.isValid())
        goal = pixels.boundedTo(QSize(longest, longest)) * twipsPerPixel;
    if (goal.width() > longest || goal.height() > longest)
        goal.scale(longest, longest, Qt::KeepAspectRatio);
    m_paragraph += "\r\n{\\*\\shppict{\\pict";
    m_paragraph += bytes.startsWith("\x89PNG") ? "\\pngblip" : "\\jpegblip";
    if (pixels.isValid())
        m_paragraph += word("\\picw", pixels.width()) + word("\\pich", pixels.height());
    if (!goal.isEmpty())
        m_paragraph += word("\\picwgoal", goal.width()) + word("\\pichgoal", goal.height());
    m_paragraph += "\r\n" + lines(bytes.toHex()) + "}}";
}

void RtfWriter::endParagraph(const RtfParagraph& paragraph, const RtfStyle& mark) {
    setStyle(mark);
    m_body += "\\pard";
    switch (int(paragraph.alignment)) {
    case Qt::AlignRight:
        m_body += "\\qr";
        break;
    case Qt::AlignHCenter:
        m_body += "\\qc";
        break;
    case Qt::AlignJustify:
        m_body += "\\qj";
        break;
    default:
        m_body += "\\ql";
        break;
    }
    if (paragraph.left != 0)
        m_body += word("\\li", std::clamp(paragraph.left, -longest, longest));
    if (paragraph.first != 0)
        m_body += word("\\fi", std::clamp(paragraph.first, -longest, longest));
    m_body += ' ' + std::exchange(m_paragraph, {}) + "\\par\r\n";
}

QByteArray RtfWriter::document() const {
    QByteArray head("{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl");
    for (int number = 0; number < m_fonts.size(); ++number)
        head += word("{\\f", number) + "\\fnil\\fcharset0 " +
                escaped(QString(m_fonts[number]).remove(u';').remove(u'\n')) + ";}";
    head += "}\r\n{\\colortbl ;";
    for (const QRgb colour : m_colours)
        head += word("\\red", qRed(colour)) + word("\\green", qGreen(colour)) +
                word("\\blue", qBlue(colour)) + ';';
    return head + "}\r\n\\viewkind4\\uc1\r\n" + m_body + "}\r\n";
}

} // namespace tessaranth
