// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/TsvFile.h"

#include "platform/Errors.h"

#include <QFile>

namespace tessaranth {

TsvFile::TsvFile(const QString& path) : m_path(path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw FileError(path + QStringLiteral(": ") + file.errorString());
    int number = 0;
    while (!file.atEnd()) {
        ++number;
        const QString line = QString::fromUtf8(file.readLine()).remove(u'\r').remove(u'\n');
        if (line.trimmed().isEmpty() || line.startsWith(u'#'))
            continue;
        Row row{number, line.split(u'\t')};
        for (QString& cell : row.cells)
            cell = cell.trimmed();
        if (m_columns.isEmpty()) {
            for (const QString& heading : std::as_const(row.cells))
                m_columns.insert(heading, int(m_columns.size()));
            continue;
        }
        if (row.cells.size() > m_columns.size())
            throw FileError(QStringLiteral("%1, line %2: %3 cells, but %4 headings")
                                .arg(path)
                                .arg(number)
                                .arg(row.cells.size())
                                .arg(m_columns.size()));
        m_rows.push_back(std::move(row));
    }
    if (m_columns.isEmpty())
        throw FileError(path + QStringLiteral(": no headings"));
}

QString TsvFile::cell(int row, const QString& heading) const {
    const auto column = m_columns.constFind(heading);
    if (column == m_columns.constEnd())
        throw FileError(QStringLiteral("%1 has no column \"%2\"").arg(m_path, heading));
    return m_rows.at(size_t(row)).cells.value(*column);
}

QString TsvFile::place(int row) const {
    return QStringLiteral("%1, line %2").arg(m_path).arg(m_rows.at(size_t(row)).line);
}

} // namespace tessaranth
