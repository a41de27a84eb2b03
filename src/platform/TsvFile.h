// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <vector>

namespace tessaranth {

/// A readable table: UTF-8, one row a line, cells separated by tabs, headings in the first line; empty lines
/// and lines that begin with "#" are comments. Cells are trimmed.
class TsvFile {
public:
    /// Throws FileError when the file cannot be read, has no headings, or a row has more cells than there
    /// are headings.
    explicit TsvFile(const QString& path);

    int rowCount() const { return int(m_rows.size()); }
    /// Empty where the row is shorter. Throws FileError for a heading that the file does not have.
    QString cell(int row, const QString& heading) const;
    bool hasHeading(const QString& heading) const { return m_columns.contains(heading); }
    /// "file, line n", for messages.
    QString place(int row) const;

private:
    struct Row {
        int line = 0;
        QStringList cells;
    };
    QString m_path;
    QHash<QString, int> m_columns;
    std::vector<Row> m_rows;
};

} // namespace tessaranth
