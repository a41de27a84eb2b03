// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/RowImage.h"

#include <SQLiteCpp/Statement.h>
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
    cell.type = rest[1];
    rest = rest.sliced(2);
    quint32 size = 0;
    switch (cell.type) {
    case 'n':
        return true;
    case 'i':
        return readNumber(rest, cell.whole);
    case 'd':
        return readNumber(rest, cell.number);
    case 't':
    case 'b':
        if (!readNumber(rest, size) || rest.size() < qsizetype(size))
            return false;
        cell.bytes = rest.first(size).toByteArray();
        rest = rest.sliced(size);
        return true;
    default:
        return false;
    }
}

} // namespace

Value Cell::value() const {
    switch (type) {
    case 'i':
        return Value(whole);
    case 'd':
        return Value(number);
    case 't':
    case 'b':
        return Value(QString::fromUtf8(bytes));
    default:
        return {};
    }
}

void append(QByteArray& image, int column, sqlite3_value* value) {
    image.append(char(column));
    const int type = sqlite3_value_type(value);
    switch (type) {
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
        const auto* bytes =
            static_cast<const char*>(type == SQLITE_TEXT ? static_cast<const void*>(sqlite3_value_text(value))
                                                         : sqlite3_value_blob(value));
        const int size = sqlite3_value_bytes(value);
        image.append(type == SQLITE_TEXT ? 't' : 'b');
        appendNumber<quint32>(image, quint32(size));
        image.append(bytes, size);
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
        const void* bytesA = sqlite3_value_blob(a);
        const void* bytesB = sqlite3_value_blob(b);
        const int size = sqlite3_value_bytes(a);
        return size == sqlite3_value_bytes(b) &&
               (size == 0 || std::memcmp(bytesA, bytesB, size_t(size)) == 0);
    }
    }
}

void bind(SQLite::Statement& statement, int index, const Cell& cell) {
    switch (cell.type) {
    case 'i':
        statement.bind(index, int64_t(cell.whole));
        break;
    case 'd':
        statement.bind(index, cell.number);
        break;
    case 't':
        statement.bind(index, cell.bytes.toStdString());
        break;
    case 'b':
        statement.bind(index, cell.bytes.constData(), int(cell.bytes.size()));
        break;
    default:
        statement.bind(index);
    }
}

} // namespace tessaranth::RowImage
