// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <string_view>
#include <vector>

namespace tessaranth {

/// A LIKE pattern: "%" any run, "_" any one character, "[a-f]" one of a set, "[!a-f]" one outside it.
/// Case does not count in any script, accents do. An unclosed "[" stands for itself.
class LikePattern {
public:
    explicit LikePattern(std::string_view utf8);
    explicit LikePattern(QStringView text);
    ~LikePattern();
    LikePattern(LikePattern&&) noexcept;
    LikePattern& operator=(LikePattern&&) noexcept;

    bool matches(std::string_view utf8) const;
    bool matches(QStringView text) const;

private:
    struct Element;
    std::vector<Element> m_elements;
};

} // namespace tessaranth
