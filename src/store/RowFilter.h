// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/Value.h"

#include <QStringView>
#include <functional>
#include <memory>

namespace tessaranth {

/// A record set's filter: comparisons (=, <>, <, <=, >, >=, LIKE) of a field with a number or a text,
/// joined by AND, OR and parentheses. Reading it throws SqlError with the position.
class RowFilter {
public:
    /// `fieldIndex` answers the index of a field by name, or -1.
    RowFilter(QStringView condition, const std::function<int(const QString&)>& fieldIndex);
    ~RowFilter();
    RowFilter(RowFilter&&) noexcept;

    bool accepts(const std::vector<Value>& cells) const;

private:
    struct Node;
    std::unique_ptr<Node> m_root;
};

} // namespace tessaranth
