// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/RtfTokens.h"

#include <algorithm>
#include <limits>

namespace tessaranth {

namespace {

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isSpecial(char c) { return c == '{' || c == '}' || c == '\\' || c == '\r' || c == '\n'; }

int hexDigit(char c) {
    if (isDigit(c))
        return c - '0';
    const char lower = char(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

} // namespace

RtfToken RtfTokens::next() {
    while (!atEnd() && (peek() == '\r' || peek() == '\n'))
        ++m_position;
    if (atEnd())
        return {};
    switch (peek()) {
    case '{':
        ++m_position;
        return {RtfToken::Kind::Open, {}};
    case '}':
        ++m_position;
        return {RtfToken::Kind::Close, {}};
    case '\\':
        ++m_position;
        return control();
    default:
        return text();
    }
}

RtfToken RtfTokens::text() {
    const qsizetype start = m_position;
    while (!atEnd() && !isSpecial(peek()))
        ++m_position;
    return {RtfToken::Kind::Text, m_document.sliced(start, m_position - start)};
}

RtfToken RtfTokens::control() {
    if (atEnd())
        return {};
    if (isLetter(peek()))
        return word();
    ++m_position;
    if (m_document[m_position - 1] == '\'')
        return hexByte();
    return {RtfToken::Kind::Symbol, m_document.sliced(m_position - 1, 1)};
}

// What is not hexadecimal stays in the text.
RtfToken RtfTokens::hexByte() {
    int value = 0;
    for (int digit = 0; digit < 2 && !atEnd() && hexDigit(peek()) >= 0; ++digit)
        value = value * 16 + hexDigit(m_document[m_position++]);
    return {RtfToken::Kind::Byte, {}, value, true};
}

int RtfTokens::number() {
    const bool negative = peek() == '-';
    if (negative)
        ++m_position;
    qint64 value = 0;
    for (; !atEnd() && isDigit(peek()); ++m_position)
        value = std::min<qint64>(value * 10 + (peek() - '0'), std::numeric_limits<int>::max());
    return int(negative ? -value : value);
}

RtfToken RtfTokens::word() {
    const qsizetype start = m_position;
    while (!atEnd() && isLetter(peek()))
        ++m_position;
    RtfToken token{RtfToken::Kind::Word, m_document.sliced(start, m_position - start)};
    const auto digitAt = [&](qsizetype place) {
        return place < m_document.size() && isDigit(m_document[place]);
    };
    token.hasNumber = digitAt(m_position) || (!atEnd() && peek() == '-' && digitAt(m_position + 1));
    if (token.hasNumber)
        token.number = number();
    if (!atEnd() && peek() == ' ')
        ++m_position;
    if (token.text == "bin") {
        if (token.number < 0 || token.number > m_document.size() - m_position)
            return {RtfToken::Kind::Damage, {}};
        token = {RtfToken::Kind::Data, m_document.sliced(m_position, token.number)};
        m_position += token.text.size();
    }
    return token;
}

} // namespace tessaranth
