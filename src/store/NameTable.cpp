// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/NameTable.h"

#include "store/Recordset.h"
#include "store/Session.h"

namespace tessaranth {

namespace {

QString equals(const QString& column, qint64 id) {
    return column + QStringLiteral(" = ") + QString::number(id);
}

} // namespace

NameTable::NameTable(const QString& name)
    : m_table(&catalogTable(name)), table(m_table->name()), key(m_table->key()),
      column(QLatin1String(m_table->nameColumn)), ownerColumn(QLatin1String(m_table->ownerColumn)) {}

QString NameTable::label() const { return m_table->field(column).captionText(); }

std::vector<NameTable::Row> NameTable::rows(Session& session, qint64 owner) const {
    QString statement = QStringLiteral("SELECT %1, %2 FROM %3").arg(key, column, table);
    if (!ownerColumn.isEmpty())
        statement += QStringLiteral(" WHERE ") + equals(ownerColumn, owner);
    std::vector<Row> found;
    Query run = session.connection().query(statement + QStringLiteral(" ORDER BY ") + column);
    while (run.next())
        found.push_back({run.integer(0), run.text(1).trimmed()});
    return found;
}

int NameTable::maxLength(Session& session) const { return session.fields().width(table, column); }

QString NameTable::fit(Session& session, const QString& text) const {
    return session.fields().fit(table, column, text);
}

qint64 NameTable::find(Session& session, qint64 owner, const QString& name, qint64 except) const {
    QString statement = QStringLiteral("SELECT %1 FROM %2 WHERE ").arg(key, table) + column +
                        QStringLiteral(" LIKE '") + quotedPattern(name) + u'\'';
    if (!ownerColumn.isEmpty())
        statement += QStringLiteral(" AND ") + equals(ownerColumn, owner);
    if (except != 0)
        statement += QStringLiteral(" AND %1 <> %2").arg(key).arg(except);
    return session.connection().single(statement).toInteger();
}

QString NameTable::nameOf(Session& session, qint64 id) const {
    return session.connection()
        .single(QStringLiteral("SELECT %1 FROM %2 WHERE ").arg(column, table) + equals(key, id))
        .toText()
        .trimmed();
}

qint64 NameTable::add(Session& session, qint64 owner, const QString& name) const {
    Recordset rows =
        Recordset::open(session.connection(), QStringLiteral("SELECT * FROM %1 WHERE 1 = 0").arg(table));
    Recordset::Assignments values{{column, name}};
    if (!ownerColumn.isEmpty())
        values.emplace_back(ownerColumn, owner);
    rows.add(values);
    return session.connection().lastKey();
}

bool NameTable::rename(Session& session, qint64 id, const QString& name) const {
    return session.connection().execute(QStringLiteral("UPDATE %1 SET %2 = '").arg(table, column) +
                                        quoted(name) + QStringLiteral("' WHERE ") + equals(key, id)) > 0;
}

} // namespace tessaranth
