// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Value.h"

namespace tessaranth {

QString Value::toText() const {
    if (const auto* text = std::get_if<QString>(&m_data))
        return *text;
    if (const auto* whole = std::get_if<qint64>(&m_data))
        return QString::number(*whole);
    if (const auto* number = std::get_if<double>(&m_data))
        return QString::number(*number, 'g', 15);
    return {};
}

qint64 Value::toInteger() const {
    if (const auto* whole = std::get_if<qint64>(&m_data))
        return *whole;
    if (const auto* number = std::get_if<double>(&m_data))
        return qint64(*number);
    if (const auto* text = std::get_if<QString>(&m_data))
        return text->trimmed().toLongLong();
    return 0;
}

double Value::toDouble() const {
    if (const auto* whole = std::get_if<qint64>(&m_data))
        return double(*whole);
    if (const auto* number = std::get_if<double>(&m_data))
        return *number;
    if (const auto* text = std::get_if<QString>(&m_data))
        return text->trimmed().toDouble();
    return 0;
}

} // namespace tessaranth
