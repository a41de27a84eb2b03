// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/Value.h"

#include <QByteArray>
#include <vector>

struct sqlite3_value;

namespace tessaranth {

/// Values of a row as bytes: what the history stores. Each column is its number, a letter for its type and
/// the value; texts with their length before them.
namespace RowImage {

struct Cell {
    int column = 0;
    Value value;
};

void append(QByteArray& image, int column, sqlite3_value* value);
/// Empty where the bytes are no image; a history file may come from anywhere.
std::vector<Cell> read(const QByteArray& image);
bool same(sqlite3_value* a, sqlite3_value* b);

} // namespace RowImage

} // namespace tessaranth
