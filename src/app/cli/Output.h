// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/ItemList.h"
#include "store/Value.h"

#include <QStringList>
#include <exception>
#include <vector>

namespace tessaranth {

/// Prints rows on stdout: tab-separated with a heading line, or a JSON array of objects. In the first form a
/// tab, a line break and a backslash within a cell are written \t, \n and \\.
class Output {
public:
    explicit Output(bool json) : m_json(json) {}
    ~Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    void headings(const QStringList& names);
    void row(const std::vector<Value>& cells);
    /// A whole list: the ids under `idHeading`, then its columns.
    void list(const QString& idHeading, const ItemList& list);
    void finish();

private:
    void begin();

    bool m_json;
    int m_exceptions = std::uncaught_exceptions();
    bool m_begun = false;
    bool m_open = false;
    bool m_first = true;
    QStringList m_names;
};

} // namespace tessaranth
