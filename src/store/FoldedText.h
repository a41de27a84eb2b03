// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringView>
#include <array>
#include <string_view>

namespace tessaranth::folded {

/// One character as a reader sees it: a letter with the marks that stand on it, decomposed, its case
/// folded and its marks in canonical order (Unicode Standard, 3.11). Longer runs of marks than fit are
/// split, which no written language needs (UAX #15 allows 30 in a row).
struct Cluster {
    static constexpr size_t capacity = 36;
    std::array<char32_t, capacity> points;
    size_t size = 0;

    std::u32string_view view() const { return {points.data(), size}; }
    bool operator==(const Cluster& other) const { return view() == other.view(); }
};

/// Nothing a text can hold; bytes that are no UTF-8 count as the characters from here on, a lone surrogate
/// as itself, so that any content has one fixed place in the order.
constexpr char32_t firstInvalid = 0x110000;

struct Utf8 {
    using View = std::string_view;
    static char32_t unit(View text, size_t at) { return static_cast<unsigned char>(text[at]); }
    static char32_t decode(View text, size_t& at);
};

struct Utf16 {
    using View = std::u16string_view;
    static char32_t unit(View text, size_t at) { return text[at]; }
    static char32_t decode(View text, size_t& at);
};

struct Utf32 {
    using View = std::u32string_view;
    static char32_t unit(View text, size_t at) { return text[at]; }
    static char32_t decode(View text, size_t& at) { return text[at++]; }
};

inline std::u16string_view utf16(QStringView text) { return {text.utf16(), size_t(text.size())}; }

constexpr char32_t asciiLower(char32_t c) { return c >= 'A' && c <= 'Z' ? c + 32 : c; }

/// A mark written over, under or through the letter before it.
bool isMark(char32_t c);
/// True for what belongs to the character before it: marks, vowel signs, the later parts of a Korean
/// syllable.
bool extendsCluster(char32_t c);
/// Appends the canonical decomposition of a character with its case folded; at most four code points.
void appendFolded(char32_t c, Cluster& cluster);
/// Brings the marks of a cluster into canonical order.
void orderMarks(Cluster& cluster);

/// Reads the character at `at` and moves behind it; the text must not be at its end.
template<typename Encoding>
void readCluster(typename Encoding::View text, size_t& at, Cluster& cluster) {
    const char32_t first = Encoding::unit(text, at);
    const size_t next = at + 1;
    if (first < 0x80 && (next == text.size() || Encoding::unit(text, next) < 0x80)) {
        cluster.points[0] = asciiLower(first);
        cluster.size = 1;
        at = next;
        return;
    }
    cluster.size = 0;
    appendFolded(Encoding::decode(text, at), cluster);
    while (at < text.size() && cluster.size + 4 <= Cluster::capacity) {
        size_t after = at;
        const char32_t c = Encoding::decode(text, after);
        if (!extendsCluster(c))
            break;
        appendFolded(c, cluster);
        at = after;
    }
    orderMarks(cluster);
}

/// TextOrder's comparison for texts already taken apart into code points.
int comparePoints(std::u32string_view a, std::u32string_view b);

} // namespace tessaranth::folded
