// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/Connection.h"
#include "store/Fields.h"
#include "support/Writing.h"

namespace tessaranth {

/// Gives every column of a table another name, so that whatever reads it fails; the columns that no user
/// meets in any window, such as the state of a card, too. Puts them back when it goes.
class BrokenTable {
public:
    BrokenTable(Connection& connection, const CatalogTable& table)
        : m_connection(connection), m_table(table) {
        rename(QString(), QStringLiteral("Lost"));
    }
    ~BrokenTable() { rename(QStringLiteral("Lost"), QString()); }
    BrokenTable(const BrokenTable&) = delete;
    BrokenTable& operator=(const BrokenTable&) = delete;

private:
    void rename(const QString& before, const QString& after) {
        for (const CatalogField& field : m_table.fields)
            writeNative(m_connection, QStringLiteral("ALTER TABLE %1 RENAME COLUMN %2 TO %3")
                                          .arg(m_table.name(), before + field.name(), after + field.name())
                                          .toUtf8());
    }

    Connection& m_connection;
    const CatalogTable& m_table;
};

} // namespace tessaranth
