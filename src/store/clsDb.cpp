// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/clsDb.h"

#include "platform/Messages.h"
#include "store/Connection.h"

#include <QFile>

namespace tessaranth {

namespace {

QString sizeKey(const QString& table, const QString& field) { return (table + u'_' + field).toLower(); }

} // namespace

void clsDb::load(const Connection& connection) {
    m_sizes.clear();
    for (const QString& table : connection.tables()) {
        for (const ColumnInfo& column : connection.columns(table)) {
            if (column.isText())
                m_sizes.insert(sizeKey(table, column.name), column.width);
        }
    }
}

int clsDb::maxLength(const QString& table, const QString& field) const {
    return m_sizes.value(sizeKey(table, field));
}

QString clsDb::LeftTrim(const QString& value) const {
    const int length = FldMaxLen();
    if (length <= 0 || value.size() <= length)
        return value;
    return value.left(value[length - 1].isHighSurrogate() ? length - 1 : length);
}

bool clsDb::CreateLog(const QString& folder) {
    m_logFile = folder + u'/' + applicationTitle + QStringLiteral(".log");
    return QFile(m_logFile).open(QIODevice::Append);
}

void clsDb::CleanLog() {
    if (!m_logFile.isEmpty())
        QFile::resize(m_logFile, 0);
}

void clsDb::log(const QString& line) {
    QFile file(m_logFile);
    if (!m_logFile.isEmpty() && file.open(QIODevice::Append | QIODevice::Text))
        file.write(line.toUtf8() + '\n');
}

} // namespace tessaranth
