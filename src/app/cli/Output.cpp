// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/cli/Output.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <iostream>

namespace tessaranth {

namespace {

void write(const QByteArray& bytes) { std::cout.write(bytes.constData(), bytes.size()); }

QString escaped(QString text) {
    return text.replace(u'\\', QLatin1String("\\\\"))
        .replace(u'\t', QLatin1String("\\t"))
        .replace(u'\n', QLatin1String("\\n"))
        .replace(u'\r', QString());
}

QJsonValue jsonOf(const Value& value) {
    if (value.isNull())
        return QJsonValue::Null;
    if (const auto* whole = std::get_if<qint64>(&value.data()))
        return *whole;
    if (value.isNumber())
        return value.toDouble();
    return value.toText();
}

} // namespace

void Output::headings(const QStringList& names) {
    m_names = names;
    m_open = true;
}

// Not before there is something to print below them: a failing command prints none.
void Output::begin() {
    if (m_open && !m_begun)
        write(m_json ? QByteArray("[") : m_names.join(u'\t').toUtf8() + '\n');
    m_begun = true;
}

void Output::row(const std::vector<Value>& cells) {
    begin();
    if (m_json) {
        QJsonObject object;
        for (qsizetype i = 0; i < m_names.size(); ++i)
            object.insert(m_names[i], jsonOf(cells[size_t(i)]));
        write((m_first ? "\n" : ",\n") + QJsonDocument(object).toJson(QJsonDocument::Compact));
        m_first = false;
        return;
    }
    QStringList texts;
    for (const Value& cell : cells)
        texts.push_back(escaped(cell.toText()));
    write(texts.join(u'\t').toUtf8() + '\n');
}

void Output::list(const QString& idHeading, const ItemList& list) {
    QStringList names{idHeading};
    for (const ItemList::Heading& heading : list.headings())
        names.push_back(heading.caption);
    headings(names);
    for (int line = 0; line < list.rowCount(); ++line) {
        std::vector<Value> cells{list.id(line)};
        for (int column = 0; column < list.columnCount(); ++column)
            cells.emplace_back(list.text(line, column));
        row(cells);
    }
}

Output::~Output() {
    if (std::uncaught_exceptions() == m_exceptions)
        finish();
}

void Output::finish() {
    begin();
    if (m_open && m_json)
        write(m_first ? QByteArray("]\n") : QByteArray("\n]\n"));
    m_open = false;
    std::cout.flush();
}

} // namespace tessaranth
