// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/CMIT.h"

#include "store/Guarded.h"

namespace tessaranth {

namespace {

QString listStatement(const ItemKind& kind, const QString& prefix) {
    QString statement = kind.list.select;
    if (!prefix.isEmpty())
        statement += QStringLiteral(" WHERE ") + kind.list.filterColumn + QStringLiteral(" LIKE '") +
                     quotedPattern(prefix) + QStringLiteral("%'");
    return statement + kind.list.orderBy;
}

QString displayName(const Query& query, const ItemKind::List& list) {
    return personName(query.text(1), list.firstNameColumn < 0 ? QString() : query.text(list.firstNameColumn));
}

} // namespace

bool CMIT::onKind(int number, const std::function<void(const ItemKind&)>& work) {
    const ItemKind* kind = itemKind(number);
    return kind && guarded(m_session, [&] { work(*kind); });
}

std::optional<Recordset> CMIT::ElencoInRecordset(int number, const QString& prefix) {
    std::optional<Recordset> rows;
    onKind(number, [&](const ItemKind& kind) {
        rows = Recordset::open(m_session.connection(), listStatement(kind, prefix));
    });
    return rows;
}

bool CMIT::ElencoInMatrice(int number, std::vector<std::vector<Value>>& rows, const QString& prefix) {
    return onKind(number, [&](const ItemKind& kind) {
        std::vector<std::vector<Value>> found;
        Query query = m_session.connection().query(listStatement(kind, prefix));
        while (query.next()) {
            std::vector<Value>& row = found.emplace_back();
            for (int column = 0; column < query.columnCount(); ++column)
                row.push_back(query.value(column));
        }
        rows = std::move(found);
    });
}

bool CMIT::ElencoInLv(int number, ItemList& list, const QString& prefix) {
    return onKind(number, [&](const ItemKind& kind) {
        const ItemKind::List& shape = kind.list;
        const bool hasSecond = shape.secondColumn >= 0 && !(number == ItemKind::Recording && DontGetRecLabel);
        std::vector<ItemList::Heading> headings;
        for (const QString& caption : shape.headings.first(hasSecond ? 2 : 1))
            headings.push_back({caption});

        ItemList found(std::move(headings));
        Query query = m_session.connection().query(listStatement(kind, prefix));
        while (query.next()) {
            const QString name = displayName(query, shape);
            const int row = hasSecond ? found.addRow(query.integer(0), kind.iconKey,
                                                     {name, query.text(shape.secondColumn).trimmed()})
                                      : found.addRow(query.integer(0), kind.iconKey, {name});
            if (shape.cellIconColumn >= 0)
                found.setCellIcon(row, 0, query.text(shape.cellIconColumn));
        }
        list = std::move(found);
    });
}

} // namespace tessaranth
