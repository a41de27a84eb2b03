// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QString>

namespace tessaranth {

class Connection;

/// The declared size of every text column of the catalog, learned once a session, and an optional log.
class clsDb {
public:
    void load(const Connection& connection);

    void TableName(const QString& table) { m_table = table; }
    void FieldName(const QString& field) { m_field = field; }
    /// Declared size in characters of the selected column; 0 when it has none or is unknown.
    int FldMaxLen() const { return maxLength(m_table, m_field); }
    /// The value cut to the selected column's size from the left; unchanged where there is no size.
    QString LeftTrim(const QString& value) const;
    int maxLength(const QString& table, const QString& field) const;

    /// Opens the log file, named after the program, in a folder; false when it cannot be written.
    bool CreateLog(const QString& folder);
    void CleanLog(); ///< empties it
    const QString& LogFileName() const { return m_logFile; }
    void log(const QString& line); ///< appends a line with its line break

private:
    QHash<QString, int> m_sizes; ///< by table + "_" + field, lower case
    QString m_table;
    QString m_field;
    QString m_logFile;
};

} // namespace tessaranth
