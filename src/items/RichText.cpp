// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/RichText.h"

#include <algorithm>
#include <cctype>
#include <vector>

namespace tessaranth::RichText {

namespace {

/// Windows-1252 where it differs from Latin-1: 0x80 to 0x9F (unicode.org, CP1252.TXT); 0 for none.
const char16_t windows1252[] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

/// Groups whose text is not the document's.
bool isHidden(const QByteArray& word) {
    static const char* const words[] = {"fonttbl", "colortbl", "stylesheet", "info",    "pict",
                                        "object",  "header",   "footer",     "footnote"};
    return std::any_of(std::begin(words), std::end(words),
                       [&](const char* hidden) { return word == hidden; });
}

struct Symbol {
    const char* word;
    char16_t character;
};
const Symbol symbols[] = {{"par", u'\n'},           {"line", u'\n'},       {"tab", u'\t'},
                          {"lquote", u'\u2018'},    {"rquote", u'\u2019'}, {"ldblquote", u'\u201C'},
                          {"rdblquote", u'\u201D'}, {"endash", u'\u2013'}, {"emdash", u'\u2014'},
                          {"bullet", u'\u2022'}};

class Reader {
public:
    explicit Reader(const QByteArray& document) : m_document(document) {}
    QString read();

private:
    struct Group {
        bool hidden = false;
        int fallbackLength = 1; ///< characters that follow \uN for readers without Unicode
    };
    bool atEnd() const { return m_position >= m_document.size(); }
    char next() { return m_document[m_position++]; }
    void control();
    void word();
    void put(char16_t character);

    const QByteArray& m_document;
    qsizetype m_position = 0;
    std::vector<Group> m_groups{Group()};
    int m_toSkip = 0;
    QString m_text;
};

void Reader::put(char16_t character) {
    if (m_toSkip > 0)
        --m_toSkip;
    else if (!m_groups.back().hidden && character != 0)
        m_text += QChar(character);
}

QString Reader::read() {
    // Deeper than any document; a hostile one must not fill the memory with groups.
    constexpr size_t deepest = 10'000;
    while (!atEnd()) {
        const char c = next();
        if (c == '{') {
            if (m_groups.size() > deepest)
                break;
            m_groups.push_back(m_groups.back());
        } else if (c == '}') {
            m_toSkip = 0;
            if (m_groups.size() > 1)
                m_groups.pop_back();
        } else if (c == '\\') {
            control();
        } else if (c != '\r' && c != '\n') {
            const auto byte = uchar(c);
            put(byte >= 0x80 && byte < 0xA0 ? windows1252[byte - 0x80] : char16_t(byte));
        }
    }
    if (m_text.endsWith(u'\n')) // the end of the last paragraph
        m_text.chop(1);
    return m_text;
}

void Reader::control() {
    if (atEnd())
        return;
    const char c = m_document[m_position];
    if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z')) {
        word();
        return;
    }
    ++m_position;
    if (c == '\'') {
        const auto byte = uchar(m_document.mid(m_position, 2).toUInt(nullptr, 16));
        m_position = std::min(m_position + 2, m_document.size());
        put(byte >= 0x80 && byte < 0xA0 ? windows1252[byte - 0x80] : char16_t(byte));
    } else if (c == '*') {
        m_groups.back().hidden = true;
    } else if (c == '\\' || c == '{' || c == '}') {
        put(char16_t(c));
    } else if (c == '~') {
        put(u'\u00A0');
    } else if (c == '\r' || c == '\n') {
        put(u'\n');
    }
}

void Reader::word() {
    const qsizetype start = m_position;
    while (!atEnd() && std::isalpha(uchar(m_document[m_position])))
        ++m_position;
    const QByteArray name = m_document.mid(start, m_position - start);
    const qsizetype digits = m_position;
    if (!atEnd() && m_document[m_position] == '-')
        ++m_position;
    while (!atEnd() && std::isdigit(uchar(m_document[m_position])))
        ++m_position;
    const int number = m_document.mid(digits, m_position - digits).toInt();
    if (!atEnd() && m_document[m_position] == ' ')
        ++m_position;
    if (name == "u") {
        m_toSkip = 0;
        put(char16_t(number));
        m_toSkip = m_groups.back().fallbackLength;
    } else if (name == "uc") {
        m_groups.back().fallbackLength = std::clamp(number, 0, 100);
    } else if (isHidden(name)) {
        m_groups.back().hidden = true;
    } else {
        for (const Symbol& symbol : symbols)
            if (name == symbol.word)
                put(symbol.character);
    }
}

} // namespace

QByteArray fromText(const QString& text) {
    QByteArray document("{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fswiss Verdana;}}\r\n"
                        "\\uc1\\pard\\f0\\fs18 ");
    for (const QChar c : text) {
        const char16_t code = c.unicode();
        if (code == u'\\' || code == u'{' || code == u'}')
            document.append('\\').append(char(code));
        else if (code == u'\n')
            document.append("\\par\r\n");
        else if (code == u'\t')
            document.append("\\tab ");
        else if (code >= 0x20 && code < 0x7F)
            document.append(char(code));
        else if (code >= 0x7F) // signed sixteen bits, as the format has it
            document.append("\\u" + QByteArray::number(qint16(code)) + '?');
    }
    return document + "\\par\r\n}\r\n";
}

QString toText(const QByteArray& document) {
    if (!document.startsWith("{\\rtf"))
        return QString::fromUtf8(document).remove(QChar(0)).remove(u'\r');
    return Reader(document).read();
}

} // namespace tessaranth::RichText
