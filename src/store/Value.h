// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <variant>

namespace tessaranth {

/// One cell of a row: Null, a whole number, a number or a text. Yes/no columns hold 0 and 1.
class Value {
public:
    Value() = default;
    Value(int number) : m_data(qint64(number)) {}
    Value(qint64 number) : m_data(number) {}
    Value(double number) : m_data(number) {}
    Value(bool flag) : m_data(qint64(flag ? 1 : 0)) {}
    Value(QString text) : m_data(std::move(text)) {}
    Value(const char* text) : m_data(QString::fromUtf8(text)) {}

    bool isNull() const { return std::holds_alternative<std::monostate>(m_data); }
    bool isText() const { return std::holds_alternative<QString>(m_data); }
    bool isNumber() const { return !isNull() && !isText(); }

    QString toText() const;   ///< Null gives an empty text
    qint64 toInteger() const; ///< 0 for Null and for a text that is no number
    double toDouble() const;  ///< 0 likewise
    bool toBool() const { return toInteger() != 0; }

    bool operator==(const Value& other) const = default;

    const std::variant<std::monostate, qint64, double, QString>& data() const { return m_data; }

private:
    std::variant<std::monostate, qint64, double, QString> m_data;
};

} // namespace tessaranth
