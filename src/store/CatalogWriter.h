// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/Recordset.h"

#include <QHash>
#include <QString>
#include <memory>

namespace tessaranth {

class Connection;

/// Adds cards and the links between them, row by row, for imports that bring many at once. It asks nothing
/// and checks no duplicates of cards; names of the lookup lists are found or added. The caller holds the
/// transaction. Failing calls throw SqlError.
class CatalogWriter {
public:
    explicit CatalogWriter(Connection& connection) : m_connection(connection) {}

    /// Adds a row to a table and answers with its key.
    qint64 add(const QString& table, const Recordset::Assignments& values);

    /// The row of a lookup list with this name, added when missing; 0 for an empty name. `owner` narrows the
    /// search to one composer's genres or main works and is stored with a new row.
    qint64 lookup(const QString& table, const QString& nameColumn, const QString& name, qint64 composer = 0);

private:
    Recordset& table(const QString& name);

    Connection& m_connection;
    QHash<QString, std::shared_ptr<Recordset>> m_tables; ///< opened empty, for adding
    QHash<QString, qint64> m_lookups;
};

} // namespace tessaranth
