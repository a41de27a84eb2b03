// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/RowImage.h"

#include <cstring>
#include <sqlite3.h>

namespace tessaranth::RowImage {

namespace {

template<typename Number>
void appendNumber(QByteArray& image, Number number) {
    image.append(reinterpret_cast<const char*>(&number), sizeof number);
}

template<typename Number>
bool readNumber(QByteArrayView& rest, Number& number) {
    if (rest.size() < qsizetype(sizeof number))
        return false;
    std::memcpy(&number, rest.data(), sizeof number);
    rest = rest.sliced(sizeof number);
    return true;
}

bool readCell(QByteArrayView& rest, Cell& cell) {
    if (rest.size() < 2)
        return false;
    cell.column = uchar(rest[0]);
    const char type = rest[1];
    rest = rest.sliced(2);
    qint64 whole = 0;
    double number = 0;
    quint32 size = 0;
    switch (type) {
    case 'n':
        return true;
    case 'i':
        if (!readNumber(rest, whole))
            return false;
        cell.value = Value(whole);
        return true;
    case 'd':
        if (!readNumber(rest, number))
            return false;
        cell.value = Value(number);
        return true;
    case 't':
        if (!readNumber(rest, size) || rest.size() < qsizetype(size))
            return false;
        cell.value = Value(QString::fromUtf8(rest.first(size)));
        rest = rest.sliced(size);
        return true;
    default:
        return false;
    }
}

} // namespace

// Blobs do not occur: the catalog's columns are numbers and texts, and bytes that another tool put there
// read as text everywhere in the program.
void append(QByteArray& image, int column, sqlite3_value* value) {
    image.append(char(column));
    switch (sqlite3_value_type(value)) {
    case SQLITE_NULL:
        image.append('n');
        break;
    case SQLITE_INTEGER:
        image.append('i');
        appendNumber<qint64>(image, sqlite3_value_int64(value));
        break;
    case SQLITE_FLOAT:
        image.append('d');
        appendNumber<double>(image, sqlite3_value_double(value));
        break;
    default: {
        const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
        const int size = sqlite3_value_bytes(value);
        image.append('t');
        appendNumber<quint32>(image, quint32(size));
        image.append(text, size);
    }
    }
}

std::vector<Cell> read(const QByteArray& image) {
    std::vector<Cell> cells;
    QByteArrayView rest(image);
    while (!rest.isEmpty()) {
        Cell cell;
        if (!readCell(rest, cell))
            return {};
        cells.push_back(std::move(cell));
    }
    return cells;
}

bool same(sqlite3_value* a, sqlite3_value* b) {
    const int type = sqlite3_value_type(a);
    if (type != sqlite3_value_type(b))
        return false;
    switch (type) {
    case SQLITE_NULL:
        return true;
    case SQLITE_INTEGER:
        return sqlite3_value_int64(a) == sqlite3_value_int64(b);
    case SQLITE_FLOAT:
        return sqlite3_value_double(a) == sqlite3_value_double(b);
    default: {
        const void* textA = sqlite3_value_blob(a);
        const void* textB = sqlite3_value_blob(b);
        const int size = sqlite3_value_bytes(a);
        return size == sqlite3_value_bytes(b) && (size == 0 || std::memcmp(textA, textB, size_t(size)) == 0);
    }
    }
}

} // namespace tessaranth::RowImage
