// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/Value.h"

#include <QByteArray>
#include <vector>

struct sqlite3_value;
namespace SQLite {
class Statement;
}

namespace tessaranth {

/// Values of a row as bytes: what the history stores. Each column is its number, a letter for its type and
/// the value; texts with their length before them. Bytes are kept as they are, valid text or not.
namespace RowImage {

struct Cell {
    int column = 0;
    char type = 'n'; ///< n null, i whole number, d number, t text, b bytes
    qint64 whole = 0;
    double number = 0;
    QByteArray bytes;

    Value value() const;
    bool isNull() const { return type == 'n'; }
    bool operator==(const Cell& other) const = default;
};

void append(QByteArray& image, int column, sqlite3_value* value);
/// Empty where the bytes are no image; a history file may come from anywhere.
std::vector<Cell> read(const QByteArray& image);
bool same(sqlite3_value* a, sqlite3_value* b);
/// Binds a cell to the parameter ?index.
void bind(SQLite::Statement& statement, int index, const Cell& cell);

} // namespace RowImage

} // namespace tessaranth
