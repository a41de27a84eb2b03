// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/FoldedText.h"

#include <QList>
#include <QString>
#include <algorithm>
#include <memory>
#include <vector>

namespace tessaranth::folded {

namespace {

char32_t foldCase(char32_t c) {
    const char32_t folded = QChar::toCaseFolded(c);
    if (folded != c)
        return folded;
    // Letters whose full folding has several characters (the capital sharp s) are left alone by Qt. Cherokee
    // folds to its capitals, so there the small letter leads back.
    const char32_t lower = QChar::toLower(c);
    return QChar::toCaseFolded(lower) == c ? c : lower;
}

/// Appends without asking a table; `QChar::decomposition` is one level deep and allocates.
void decompose(char32_t c, Cluster& cluster) {
    if (QChar::decompositionTag(c) != QChar::Canonical) {
        cluster.points[cluster.size++] = isMark(c) ? c : foldCase(c);
        return;
    }
    const QList<uint> parts = QChar::decomposition(c).toUcs4();
    for (uint part : parts)
        decompose(part, cluster);
}

/// What every changing character of the basic plane below the ideographs, and of its compatibility area,
/// folds to. Built once: asking Qt costs an allocation a character, which sorting cannot afford.
class FoldTable {
public:
    FoldTable() {
        for (char32_t c = 0x80; c < 0x3400; ++c)
            add(c);
        for (char32_t c = 0xa640; c < 0xac00; ++c)
            add(c);
        for (char32_t c = 0xf900; c < 0x10000; ++c)
            add(c);
    }

    void append(char32_t c, Cluster& cluster) const {
        const Page* page = m_pages[c >> 8].get();
        if (!page || !(*page)[c & 0xff]) {
            cluster.points[cluster.size++] = c;
            return;
        }
        const Entry& entry = m_entries[(*page)[c & 0xff] - 1];
        for (size_t i = 0; i < entry.size; ++i)
            cluster.points[cluster.size++] = entry.points[i];
    }

private:
    struct Entry {
        std::array<char32_t, 4> points;
        uint8_t size;
    };
    using Page = std::array<uint16_t, 256>;

    void add(char32_t c) {
        Cluster folded;
        decompose(c, folded);
        if (folded.size == 1 && folded.points[0] == c)
            return;
        auto& page = m_pages[c >> 8];
        if (!page)
            page = std::make_unique<Page>();
        Entry entry{{}, uint8_t(folded.size)};
        std::copy_n(folded.points.begin(), folded.size, entry.points.begin());
        m_entries.push_back(entry);
        (*page)[c & 0xff] = uint16_t(m_entries.size());
    }

    std::array<std::unique_ptr<Page>, 256> m_pages;
    std::vector<Entry> m_entries;
};

/// Korean syllables decompose by arithmetic (Unicode Standard, 3.12).
void appendSyllable(char32_t c, Cluster& cluster) {
    const char32_t index = c - 0xac00;
    cluster.points[cluster.size++] = 0x1100 + index / 588;
    cluster.points[cluster.size++] = 0x1161 + index % 588 / 28;
    if (index % 28)
        cluster.points[cluster.size++] = 0x11a7 + index % 28;
}

int combiningClass(char32_t c) { return c < 0x300 || c > 0x10ffff ? 0 : QChar::combiningClass(c); }

bool isContinuation(std::string_view text, size_t at) {
    return at < text.size() && (static_cast<unsigned char>(text[at]) & 0xc0) == 0x80;
}

} // namespace

char32_t Utf8::decode(View text, size_t& at) {
    const char32_t first = unit(text, at++);
    if (first < 0x80)
        return first;
    const int more = first >= 0xf0 ? 3 : first >= 0xe0 ? 2 : 1;
    constexpr char32_t smallest[] = {0, 0x80, 0x800, 0x10000};
    char32_t c = first & (0x3f >> more);
    bool valid = first >= 0xc2 && first <= 0xf4;
    for (int i = 0; valid && i < more; ++i) {
        valid = isContinuation(text, at + size_t(i));
        if (valid)
            c = c << 6 | (unit(text, at + size_t(i)) & 0x3f);
    }
    if (!valid || c < smallest[more] || c > 0x10ffff || (c >= 0xd800 && c <= 0xdfff))
        return firstInvalid + first;
    at += size_t(more);
    return c;
}

char32_t Utf16::decode(View text, size_t& at) {
    const char16_t first = text[at++];
    if (QChar::isHighSurrogate(first) && at < text.size() && QChar::isLowSurrogate(text[at]))
        return QChar::surrogateToUcs4(first, text[at++]);
    return first;
}

bool isMark(char32_t c) {
    if (c < 0x300 || c > 0x10ffff)
        return false;
    const QChar::Category category = QChar::category(c);
    return category == QChar::Mark_NonSpacing || category == QChar::Mark_Enclosing ||
           QChar::combiningClass(c) != 0;
}

bool extendsCluster(char32_t c) {
    if (c < 0x300 || c > 0x10ffff)
        return false;
    return (c >= 0x1160 && c <= 0x11ff) || QChar::isMark(c);
}

void appendFolded(char32_t c, Cluster& cluster) {
    static const FoldTable table;
    if (c < 0x80)
        cluster.points[cluster.size++] = asciiLower(c);
    else if (c >= 0xac00 && c <= 0xd7a3)
        appendSyllable(c, cluster);
    else if (c < 0x10000)
        table.append(c, cluster);
    else if (c < firstInvalid)
        decompose(c, cluster);
    else
        cluster.points[cluster.size++] = c;
}

void orderMarks(Cluster& cluster) {
    auto& points = cluster.points;
    for (size_t i = 1; i < cluster.size; ++i) {
        const int own = combiningClass(points[i]);
        for (size_t j = i; own && j > 0 && combiningClass(points[j - 1]) > own; --j)
            std::swap(points[j - 1], points[j]);
    }
}

} // namespace tessaranth::folded
