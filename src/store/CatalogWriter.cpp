// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/CatalogWriter.h"

#include "store/Connection.h"
#include "store/NameTable.h"
#include "store/TextOrder.h"

namespace tessaranth {

Recordset& CatalogWriter::table(const QString& name) {
    std::shared_ptr<Recordset>& set = m_tables[name];
    // A set keeps what is added to it; started anew it holds no more than a batch.
    if (!set || set->rowCount() >= 1000)
        set = std::make_shared<Recordset>(
            Recordset::open(m_connection, QStringLiteral("SELECT * FROM %1 WHERE 1 = 0").arg(name)));
    return *set;
}

qint64 CatalogWriter::add(const QString& name, const Recordset::Assignments& values) {
    table(name).add(values);
    return m_connection.lastKey();
}

CatalogWriter::Names CatalogWriter::readNames(const NameTable& names, qint64 owner) {
    QString statement = QStringLiteral("SELECT %1, %2 FROM %3").arg(names.key, names.column, names.table);
    if (owner != 0)
        statement += QStringLiteral(" WHERE %1 = %2").arg(names.ownerColumn).arg(owner);
    Names known;
    Query run = m_connection.query(statement + QStringLiteral(" ORDER BY ") + names.key);
    while (run.next())
        if (const QString name = TextOrder::fold(run.text(1).trimmed()); !known.contains(name))
            known.insert(name, run.integer(0));
    return known;
}

qint64 CatalogWriter::lookup(const QString& table, const QString& name, qint64 owner,
                             const Recordset::Assignments& fixed) {
    if (name.isEmpty())
        return 0;
    const NameTable names(table);
    auto known = m_lookups.find({table, owner});
    if (known == m_lookups.end())
        known = m_lookups.emplace(std::pair(table, owner), readNames(names, owner)).first;
    qint64& id = known->second[TextOrder::fold(name)];
    if (id == 0) {
        Recordset::Assignments values = fixed;
        values.emplace_back(names.column, name);
        if (owner != 0)
            values.emplace_back(names.ownerColumn, owner);
        id = add(table, values);
    }
    return id;
}

} // namespace tessaranth
