// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/ItemList.h"
#include "store/Value.h"

#include <QStringList>
#include <vector>

namespace tessaranth {

/// Prints rows on stdout: tab-separated with a heading line, or a JSON array of objects. In the first form a
/// tab, a line break and a backslash within a cell are written \t, \n and \\.
class Output {
public:
    explicit Output(bool json) : m_json(json) {}
    ~Output() { finish(); }
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    void headings(const QStringList& names);
    void row(const std::vector<Value>& cells);
    /// A whole list: the ids under `idHeading`, then its columns.
    void list(const QString& idHeading, const ItemList& list);
    void finish();

private:
    bool m_json;
    bool m_open = false;
    bool m_first = true;
    QStringList m_names;
};

} // namespace tessaranth
