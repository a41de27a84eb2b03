// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/TextOrder.h"

#include "store/FoldedText.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace tessaranth {

namespace {

using namespace folded;

// Marks that stand for what a Latin letter has beyond its base letter and that no decomposition names. As in
// the Default Unicode Collation Element Table, a stroke counts as the overlay mark of its shape; a ligature
// counts as its letters under a tie, and a letter of its own shape as one joined to nothing.
constexpr char16_t stroke = 0x335;
constexpr char16_t slash = 0x338;
constexpr char16_t shortSlash = 0x337;
constexpr char16_t hook = 0x321;
constexpr char16_t tail = 0x322;
constexpr char16_t curl = 0x31c;
constexpr char16_t tie = 0x361;
constexpr char16_t variant = 0x34f;

struct LatinLetter {
    char16_t letter; ///< case already folded
    char first;
    char16_t mark;
    char second; ///< 0 for none
};

/// The letters that U+00C0 to U+024F hold or fold to and that have no canonical decomposition, by code.
/// Those left out, such as the click letters, follow z as they are.
constexpr LatinLetter latinLetters[] = {
    {0x00df, 's', tie, 's'},   {0x00e6, 'a', tie, 'e'},      {0x00f0, 'd', shortSlash, 0},
    {0x00f8, 'o', slash, 0},   {0x00fe, 't', tie, 'h'},      {0x0111, 'd', stroke, 0},
    {0x0127, 'h', stroke, 0},  {0x0131, 'i', variant, 0},    {0x0133, 'i', tie, 'j'},
    {0x0138, 'k', variant, 0}, {0x0140, 'l', variant, 0},    {0x0142, 'l', slash, 0},
    {0x0149, 'n', variant, 0}, {0x014b, 'n', shortSlash, 0}, {0x0153, 'o', tie, 'e'},
    {0x0167, 't', stroke, 0},  {0x0180, 'b', stroke, 0},     {0x0183, 'b', variant, 0},
    {0x0188, 'c', hook, 0},    {0x018c, 'd', variant, 0},    {0x0192, 'f', hook, 0},
    {0x0195, 'h', tie, 'v'},   {0x0199, 'k', hook, 0},       {0x019a, 'l', stroke, 0},
    {0x019e, 'n', tail, 0},    {0x01a3, 'o', tie, 'i'},      {0x01a5, 'p', hook, 0},
    {0x01ab, 't', variant, 0}, {0x01ad, 't', hook, 0},       {0x01b4, 'y', hook, 0},
    {0x01b6, 'z', stroke, 0},  {0x01c6, 'd', variant, 'z'},  {0x01c9, 'l', tie, 'j'},
    {0x01cc, 'n', tie, 'j'},   {0x01dd, 'e', variant, 0},    {0x01e5, 'g', stroke, 0},
    {0x01f3, 'd', tie, 'z'},   {0x0221, 'd', curl, 0},       {0x0223, 'o', tie, 'u'},
    {0x0225, 'z', hook, 0},    {0x0234, 'l', curl, 0},       {0x0235, 'n', curl, 0},
    {0x0236, 't', curl, 0},    {0x0237, 'j', variant, 0},    {0x0238, 'd', tie, 'b'},
    {0x0239, 'q', tie, 'p'},   {0x023c, 'c', slash, 0},      {0x023f, 's', tail, 0},
    {0x0240, 'z', tail, 0},    {0x0247, 'e', slash, 0},      {0x0249, 'j', stroke, 0},
    {0x024b, 'q', hook, 0},    {0x024d, 'r', stroke, 0},     {0x024f, 'y', stroke, 0},
    {0x0253, 'b', hook, 0},    {0x0254, 'o', variant, 0},    {0x0256, 'd', tail, 0},
    {0x0257, 'd', hook, 0},    {0x0259, 'e', hook, 0},       {0x025b, 'e', curl, 0},
    {0x0260, 'g', hook, 0},    {0x0268, 'i', stroke, 0},     {0x0272, 'n', hook, 0},
    {0x0275, 'o', stroke, 0},  {0x0280, 'r', variant, 0},    {0x0288, 't', tail, 0},
    {0x0289, 'u', stroke, 0},  {0x028b, 'v', hook, 0},       {0x2c65, 'a', slash, 0},
    {0x2c66, 't', slash, 0}};

constexpr char32_t firstLatin = 0xdf;
constexpr char32_t endLatin = 0x28c;

/// Row of a letter in the table, counted from 1; 0 for none. Two letters lie far from the others.
constexpr auto latinRows = [] {
    std::array<uint8_t, endLatin - firstLatin> rows{};
    for (size_t i = 0; i < std::size(latinLetters) - 2; ++i)
        rows[latinLetters[i].letter - firstLatin] = uint8_t(i + 1);
    return rows;
}();

const LatinLetter* latinLetter(char32_t c) {
    if (c >= firstLatin && c < endLatin) {
        const uint8_t row = latinRows[c - firstLatin];
        return row ? &latinLetters[row - 1] : nullptr;
    }
    const LatinLetter* const last = std::end(latinLetters);
    return c == last[-1].letter ? last - 1 : c == last[-2].letter ? last - 2 : nullptr;
}

// ---- weights

enum Group : uint32_t { Control = 1, Space, Punctuation, Symbol, Number, Letter, Unassigned };

constexpr uint32_t weight(Group group, char32_t c) { return uint32_t(group) << 21 | uint32_t(c); }

constexpr Group asciiGroup(char32_t c) {
    if (c < ' ' || c == 0x7f)
        return Control;
    if (c == ' ')
        return Space;
    if (c >= '0' && c <= '9')
        return Number;
    if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'))
        return Letter;
    return std::string_view("$+<=>^`|~").find(char(c)) == std::string_view::npos ? Punctuation : Symbol;
}

Group groupOf(char32_t c) {
    if (c >= firstInvalid)
        return Unassigned;
    switch (QChar::category(c)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
        return Control;
    case QChar::Separator_Space:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return Space;
    case QChar::Punctuation_Connector:
    case QChar::Punctuation_Dash:
    case QChar::Punctuation_Open:
    case QChar::Punctuation_Close:
    case QChar::Punctuation_InitialQuote:
    case QChar::Punctuation_FinalQuote:
    case QChar::Punctuation_Other:
        return Punctuation;
    case QChar::Symbol_Math:
    case QChar::Symbol_Currency:
    case QChar::Symbol_Modifier:
    case QChar::Symbol_Other:
        return Symbol;
    case QChar::Number_DecimalDigit:
    case QChar::Number_Letter:
    case QChar::Number_Other:
        return Number;
    case QChar::Other_Surrogate:
    case QChar::Other_PrivateUse:
    case QChar::Other_NotAssigned:
        return Unassigned;
    default:
        return Letter;
    }
}

constexpr auto asciiWeights = [] {
    std::array<uint32_t, 128> weights{};
    for (char32_t c = 0; c < 128; ++c)
        weights[c] = weight(asciiGroup(c), asciiLower(c));
    return weights;
}();

/// 0 for a mark, which the first level skips.
uint32_t primaryOf(char32_t c) {
    if (c < 0x80)
        return asciiWeights[c];
    return isMark(c) ? 0 : weight(groupOf(c), c);
}

bool isDigit(uint32_t primary) { return primary >= weight(Number, '0') && primary <= weight(Number, '9'); }

// ---- a text as its weights

/// The code points of a text decomposed, case folded and with Latin letters taken apart.
template<typename Encoding>
class Points {
public:
    static constexpr char32_t end = 0xffffffff;

    explicit Points(typename Encoding::View text) : m_text(text) {}

    char32_t next() {
        if (m_mark)
            return std::exchange(m_mark, 0);
        if (m_second)
            return std::exchange(m_second, 0);
        if (m_at == m_cluster.size) {
            if (m_position == m_text.size())
                return end;
            readCluster<Encoding>(m_text, m_position, m_cluster);
            m_at = 0;
        }
        const char32_t c = m_cluster.points[m_at++];
        const LatinLetter* const letter = c < firstLatin ? nullptr : latinLetter(c);
        if (!letter)
            return c;
        m_mark = letter->mark;
        m_second = char32_t(letter->second);
        return char32_t(letter->first);
    }

    /// The next weight of the first level; 0 at the end.
    uint32_t nextPrimary() {
        for (;;) {
            const char32_t c = next();
            if (c == end)
                return 0;
            if (const uint32_t primary = primaryOf(c))
                return primary;
        }
    }

    /// The next weight of the second level: 1 for a base character, a mark's own otherwise; 0 at the end.
    uint32_t nextSecondary() {
        const char32_t c = next();
        return c == end ? 0 : isMark(c) ? uint32_t(c) : 1;
    }

private:
    typename Encoding::View m_text;
    size_t m_position = 0;
    Cluster m_cluster;
    size_t m_at = 0;
    char32_t m_mark = 0; ///< still to come of a Latin letter
    char32_t m_second = 0;
};

constexpr int order(uint32_t a, uint32_t b) { return a < b ? -1 : a > b; }

template<typename Encoding>
int compareLevels(typename Encoding::View a, typename Encoding::View b) {
    Points<Encoding> firstA(a), firstB(b);
    for (;;) {
        const uint32_t primary = firstA.nextPrimary();
        const uint32_t other = firstB.nextPrimary();
        if (primary != other)
            return order(primary, other);
        if (!primary)
            break;
    }
    Points<Encoding> secondA(a), secondB(b);
    for (;;) {
        const uint32_t secondary = secondA.nextSecondary();
        const uint32_t other = secondB.nextSecondary();
        if (secondary != other || !secondary)
            return order(secondary, other);
    }
}

/// How many units both texts share at their beginning.
template<typename View>
size_t sharedPrefix(View a, View b) {
    constexpr size_t chunk = 8 / sizeof(typename View::value_type);
    const size_t limit = std::min(a.size(), b.size());
    size_t at = 0;
    while (at + chunk <= limit && std::memcmp(a.data() + at, b.data() + at, 8) == 0)
        at += chunk;
    while (at < limit && a[at] == b[at])
        ++at;
    return at;
}

/// A shared beginning decides nothing. From its end on ASCII is compared at once; where other characters
/// come into play, from the last place at which a character surely begins.
template<typename Encoding>
int compareText(typename Encoding::View a, typename Encoding::View b) {
    const size_t limit = std::min(a.size(), b.size());
    size_t at = sharedPrefix(a, b);
    for (; at < limit; ++at) {
        const char32_t x = Encoding::unit(a, at);
        const char32_t y = Encoding::unit(b, at);
        if ((x | y) >= 0x80)
            break;
        if (asciiWeights[x] != asciiWeights[y])
            return order(asciiWeights[x], asciiWeights[y]);
    }
    if (at == a.size() && at == b.size())
        return 0;
    while (at > 0) {
        --at;
        if ((Encoding::unit(a, at) | Encoding::unit(b, at)) < 0x80)
            break;
    }
    return compareLevels<Encoding>(a.substr(at), b.substr(at));
}

// ---- numbers within a text

/// The first level of a text with one weight of look-ahead.
class Primaries {
public:
    explicit Primaries(std::u16string_view text) : m_points(text), current(m_points.nextPrimary()) {}
    void advance() { current = m_points.nextPrimary(); }

private:
    Points<Utf16> m_points;

public:
    uint32_t current;
};

/// Compares two runs of digits by value and moves behind both.
int compareNumbers(Primaries& a, Primaries& b) {
    constexpr uint32_t zero = weight(Number, '0');
    while (a.current == zero)
        a.advance();
    while (b.current == zero)
        b.advance();
    int difference = 0;
    for (; isDigit(a.current) && isDigit(b.current); a.advance(), b.advance()) {
        if (!difference)
            difference = order(a.current, b.current);
    }
    if (isDigit(a.current) != isDigit(b.current))
        return isDigit(a.current) ? 1 : -1; // the longer number is the greater
    return difference;
}

} // namespace

int folded::comparePoints(std::u32string_view a, std::u32string_view b) { return compareText<Utf32>(a, b); }

int TextOrder::compareUtf8(std::string_view a, std::string_view b) { return compareText<Utf8>(a, b); }

int TextOrder::compare(QStringView a, QStringView b) { return compareText<Utf16>(utf16(a), utf16(b)); }

QString TextOrder::fold(QStringView text) {
    QString key;
    key.reserve(text.size());
    Points<Utf16> points(utf16(text));
    for (char32_t c = points.next(); c != points.end; c = points.next()) {
        if (QChar::requiresSurrogates(c))
            key.append(QChar(QChar::highSurrogate(c))).append(QChar(QChar::lowSurrogate(c)));
        else
            key.append(QChar(char16_t(c)));
    }
    return key;
}

int TextOrder::compareNatural(QStringView a, QStringView b) {
    const std::u16string_view textA = utf16(a), textB = utf16(b);
    size_t at = sharedPrefix(textA, textB);
    // Numbers are compared whole, so the part left out ends before a character that is surely no digit.
    while (at > 0) {
        const char16_t c = textA[--at];
        if (c < 0x80 && !isDigit(asciiWeights[c]))
            break;
    }
    Primaries x(textA.substr(at)), y(textB.substr(at));
    while (x.current || y.current) {
        if (isDigit(x.current) && isDigit(y.current)) {
            if (const int difference = compareNumbers(x, y))
                return difference;
            continue;
        }
        if (x.current != y.current)
            return order(x.current, y.current);
        x.advance();
        y.advance();
    }
    return compare(a, b);
}

} // namespace tessaranth
