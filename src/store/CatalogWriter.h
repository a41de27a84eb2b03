// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/Recordset.h"

#include <QHash>
#include <QString>
#include <map>
#include <memory>

namespace tessaranth {

class Connection;
class NameTable;

/// Adds cards and the links between them, row by row, for imports that bring many at once. It asks nothing
/// and checks no duplicates of cards; names of the lookup lists are found or added. The caller holds the
/// transaction. Failing calls throw SqlError.
class CatalogWriter {
public:
    explicit CatalogWriter(Connection& connection) : m_connection(connection) {}

    /// Adds a row to a table and answers with its key.
    qint64 add(const QString& table, const Recordset::Assignments& values);

    /// The row of a table of names (see NameTable) with this name, added when missing; 0 for an empty name.
    /// What the catalog has is read once. `owner` is the composer of genres or main works; `fixed` goes into
    /// a new row.
    qint64 lookup(const QString& table, const QString& name, qint64 owner = 0,
                  const Recordset::Assignments& fixed = {});

private:
    using Names = QHash<QString, qint64>; ///< by folded name: two are one as they are in a comparison
    Recordset& table(const QString& name);
    Names readNames(const NameTable& names, qint64 owner);

    Connection& m_connection;
    QHash<QString, std::shared_ptr<Recordset>> m_tables;   ///< opened empty, for adding
    std::map<std::pair<QString, qint64>, Names> m_lookups; ///< by table and owner
};

} // namespace tessaranth
