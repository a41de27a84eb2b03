// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/TableDefinition.h"

#include <QList>

namespace tessaranth {

namespace {

bool isWordByte(char c) { return c == '_' || c < 0 || isalnum(static_cast<unsigned char>(c)); }

/// Splits at a separator that stands outside parentheses and quotes.
QList<QByteArray> splitOutside(const QByteArray& text, char separator) {
    QList<QByteArray> parts;
    QByteArray part;
    int depth = 0;
    char quote = 0;
    for (char c : text) {
        if (quote != 0) {
            quote = c == quote ? 0 : quote;
        } else if (c == '\'' || c == '"') {
            quote = c;
        } else if (c == '(') {
            ++depth;
        } else if (c == ')') {
            --depth;
        } else if (c == separator && depth == 0) {
            parts.push_back(part);
            part.clear();
            continue;
        }
        part += c;
    }
    parts.push_back(part);
    return parts;
}

/// The words of a column definition; what stands in parentheses stays with the word before it.
QList<QByteArray> words(const QByteArray& definition) {
    QList<QByteArray> result;
    for (const QByteArray& part : splitOutside(definition.simplified(), ' ')) {
        if (part.startsWith('(') && !result.isEmpty())
            result.last() += part;
        else if (!part.isEmpty())
            result.push_back(part);
    }
    return result;
}

QByteArray unquoted(QByteArray name) {
    if (name.size() >= 2 && name.front() == '"' && name.back() == '"')
        name = name.mid(1, name.size() - 2);
    return name.toLower();
}

bool endsType(const QByteArray& word) {
    static const QList<QByteArray> keywords{"NOT",    "NULL",  "DEFAULT", "CONSTRAINT", "PRIMARY",
                                            "UNIQUE", "CHECK", "COLLATE", "REFERENCES"};
    return keywords.contains(word.toUpper());
}

QByteArray changed(const QByteArray& definition, const ColumnChange& change) {
    QList<QByteArray> parts = words(definition);
    if (change.type) {
        qsizetype end = 1;
        while (end < parts.size() && !endsType(parts[end]))
            ++end;
        parts.erase(parts.begin() + 1, parts.begin() + end);
        parts.insert(1, *change.type);
    }
    if (change.setsDefault) {
        for (qsizetype i = 1; i + 1 < parts.size(); ++i) {
            if (parts[i].toUpper() == "DEFAULT") {
                parts.erase(parts.begin() + i, parts.begin() + i + 2);
                break;
            }
        }
        if (!change.defaultValue.isEmpty())
            parts.push_back("DEFAULT " + change.defaultValue);
    }
    return parts.join(' ');
}

} // namespace

QByteArray withColumnChanged(const QByteArray& createStatement, const ColumnChange& change,
                             const QByteArray& newTableName) {
    const qsizetype open = createStatement.indexOf('(');
    const qsizetype close = createStatement.lastIndexOf(')');
    if (open < 0 || close < open)
        return {};
    QList<QByteArray> definitions = splitOutside(createStatement.mid(open + 1, close - open - 1), ',');
    const QByteArray wanted = change.column.toUtf8().toLower();
    bool found = false;
    for (QByteArray& definition : definitions) {
        definition = definition.trimmed();
        qsizetype nameEnd = 0;
        while (nameEnd < definition.size() && (isWordByte(definition[nameEnd]) || definition[nameEnd] == '"'))
            ++nameEnd;
        if (unquoted(definition.left(nameEnd)) == wanted) {
            definition = changed(definition, change);
            found = true;
        }
    }
    if (!found)
        return {};
    return "CREATE TABLE " + newTableName + " (" + definitions.join(", ") + ')';
}

} // namespace tessaranth
