// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/TextIndex.h"

namespace tessaranth {

/// Compares the word indexes with ones made in memory from the rows as they are, word by word. FTS5's own
/// check takes a stale index that holds no text for a good one, and writes.
class TextIndexCheck {
public:
    explicit TextIndexCheck(Connection& connection) : m_connection(connection) {}

    /// One line for each index that is not as it should be; empty when all agree or there are none yet, as
    /// before the first search. Changes nothing. Throws SqlError when the rows cannot be read.
    QStringList faults();

private:
    QString compare(const TextIndexTable& table);

    Connection& m_connection;
};

} // namespace tessaranth
