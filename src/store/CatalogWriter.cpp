// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/CatalogWriter.h"

#include "store/Connection.h"
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

qint64 CatalogWriter::lookup(const QString& name, const QString& nameColumn, const QString& text,
                             qint64 composer) {
    if (text.isEmpty())
        return 0;
    const QString cached = name + u'\t' + QString::number(composer) + u'\t' + TextOrder::fold(text);
    const auto known = m_lookups.constFind(cached);
    if (known != m_lookups.constEnd())
        return *known;
    QString statement =
        QStringLiteral("SELECT * FROM %1 WHERE %2 = '%3'").arg(name, nameColumn, quoted(text));
    Recordset::Assignments values{{nameColumn, text}};
    if (composer != 0) {
        statement += QStringLiteral(" AND CpsID = ") + QString::number(composer);
        values.push_back({QStringLiteral("CpsID"), composer});
    }
    // The key is the first column of every lookup table.
    const Value found = m_connection.single(statement);
    const qint64 id = found.isNull() ? add(name, values) : found.toInteger();
    m_lookups.insert(cached, id);
    return id;
}

} // namespace tessaranth
