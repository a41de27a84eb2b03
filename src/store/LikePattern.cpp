// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/LikePattern.h"

#include "store/FoldedText.h"

#include <optional>
#include <string>
#include <vector>

namespace tessaranth {

using namespace folded;

namespace {

struct Range {
    std::u32string first;
    std::u32string last;
};

bool contains(const Range& range, const Cluster& character) {
    if (range.first == range.last)
        return character.view() == range.first;
    return comparePoints(range.first, character.view()) <= 0 &&
           comparePoints(character.view(), range.last) <= 0;
}

} // namespace

struct LikePattern::Element {
    enum class Kind { Character, Any, Run, Set };
    Kind kind = Kind::Character;
    char32_t ascii = 0; ///< lower case, where the character is a plain ASCII one
    std::u32string character;
    std::vector<Range> ranges;
    bool negated = false;

    bool matches(const Cluster& other) const {
        switch (kind) {
        case Kind::Character:
            return ascii ? other.size == 1 && other.points[0] == ascii : other.view() == character;
        case Kind::Set:
            for (const Range& range : ranges) {
                if (contains(range, other))
                    return !negated;
            }
            return negated;
        default:
            return true;
        }
    }
};

namespace {

bool is(const Cluster& character, char32_t c) { return character.size == 1 && character.points[0] == c; }

/// A set from behind its "[" up to and with its "]"; nothing when it is not closed. Ranges run in
/// TextOrder's order, so [a-f] holds é. A "-" at either end stands for itself.
template<typename Encoding>
std::optional<std::vector<Range>> readSet(typename Encoding::View text, size_t& at, bool& negated) {
    std::vector<Range> ranges;
    Cluster character;
    size_t position = at;
    bool isFirst = true;
    bool isRange = false;
    while (position < text.size()) {
        readCluster<Encoding>(text, position, character);
        if (is(character, ']')) {
            if (isRange)
                ranges.push_back({U"-", U"-"});
            at = position;
            return ranges;
        }
        if (isFirst && is(character, '!')) {
            negated = true;
        } else if (isRange) {
            ranges.back().last = character.view();
            isRange = false;
        } else if (is(character, '-') && !ranges.empty() && ranges.back().first == ranges.back().last) {
            isRange = true;
        } else {
            ranges.push_back({std::u32string(character.view()), std::u32string(character.view())});
        }
        isFirst = false;
    }
    return std::nullopt;
}

template<typename Encoding, typename Element>
void compile(typename Encoding::View pattern, std::vector<Element>& elements) {
    using Kind = typename Element::Kind;
    Cluster character;
    size_t at = 0;
    while (at < pattern.size()) {
        readCluster<Encoding>(pattern, at, character);
        Element element;
        if (is(character, '%')) {
            element.kind = Kind::Run;
            if (!elements.empty() && elements.back().kind == Kind::Run)
                continue;
        } else if (is(character, '_')) {
            element.kind = Kind::Any;
        } else {
            auto ranges = is(character, '[') ? readSet<Encoding>(pattern, at, element.negated) : std::nullopt;
            if (ranges && ranges->empty()) {
                if (!element.negated)
                    continue; // "[]" asks for nothing
                ranges->push_back({U"!", U"!"});
                element.negated = false;
            }
            if (ranges) {
                element.kind = Kind::Set;
                element.ranges = std::move(*ranges);
            } else {
                element.negated = false;
                element.character = character.view();
                if (character.size == 1 && character.points[0] < 0x80)
                    element.ascii = character.points[0];
            }
        }
        elements.push_back(std::move(element));
    }
}

/// Moves to the next place where a plain ASCII character can stand, without reading those between. Stops
/// before anything that could carry a mark.
template<typename Encoding>
void skipTo(char32_t ascii, typename Encoding::View text, size_t& at) {
    while (at + 1 < text.size() && Encoding::unit(text, at) < 0x80 && Encoding::unit(text, at + 1) < 0x80 &&
           asciiLower(Encoding::unit(text, at)) != ascii)
        ++at;
}

/// The greedy match with one way back, to the run seen last: its cost is at most the product of both
/// lengths, whatever the pattern.
template<typename Encoding, typename Element>
bool matchesWhole(typename Encoding::View text, const std::vector<Element>& elements) {
    using Kind = typename Element::Kind;
    constexpr size_t none = size_t(-1);
    Cluster character;
    size_t at = 0;
    size_t element = 0;
    size_t afterRun = none;
    size_t runEnd = 0;
    while (at < text.size()) {
        if (element < elements.size() && elements[element].kind == Kind::Run) {
            afterRun = ++element;
            if (afterRun == elements.size())
                return true;
            runEnd = at;
        }
        if (element == afterRun && elements[element].ascii) {
            skipTo<Encoding>(elements[element].ascii, text, at);
            runEnd = at;
        }
        readCluster<Encoding>(text, at, character);
        if (element < elements.size() && elements[element].matches(character)) {
            ++element;
            continue;
        }
        if (afterRun == none)
            return false;
        at = runEnd;
        readCluster<Encoding>(text, at, character);
        runEnd = at;
        element = afterRun;
    }
    while (element < elements.size() && elements[element].kind == Kind::Run)
        ++element;
    return element == elements.size();
}

} // namespace

LikePattern::LikePattern(std::string_view utf8) { compile<Utf8>(utf8, m_elements); }
LikePattern::LikePattern(QStringView text) { compile<Utf16>(utf16(text), m_elements); }
LikePattern::~LikePattern() = default;
LikePattern::LikePattern(LikePattern&&) noexcept = default;
LikePattern& LikePattern::operator=(LikePattern&&) noexcept = default;

bool LikePattern::matches(std::string_view utf8) const { return matchesWhole<Utf8>(utf8, m_elements); }
bool LikePattern::matches(QStringView text) const { return matchesWhole<Utf16>(utf16(text), m_elements); }

} // namespace tessaranth
