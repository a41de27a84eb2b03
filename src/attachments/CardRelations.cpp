// SPDX-License-Identifier: GPL-3.0-or-later
#include "attachments/CardRelations.h"

#include "items/CMIT.h"
#include "store/Guarded.h"
#include "store/Recordset.h"
#include "store/TextOrder.h"

#include <QCoreApplication>
#include <algorithm>

namespace tessaranth {

qint64 CardRelations::Related::row() const {
    return card.id * qint64(itemKinds().size() + 1) + itemKind(card.code)->number;
}

bool CardRelations::isCustom() const { return m_card.code == itemKind(ItemKind::Custom)->code; }

std::vector<int> CardRelations::kinds() const {
    if (isCustom())
        return {ItemKind::Composer, ItemKind::Performer, ItemKind::Recording};
    return {ItemKind::Custom};
}

// The rows that link this card to cards of a kind.
QString CardRelations::rowsOf(int kind) const {
    if (isCustom())
        return QStringLiteral(" FROM Relations WHERE ItemType = '%1' AND UserDefID = %2")
            .arg(itemKind(kind)->code)
            .arg(m_card.id);
    return QStringLiteral(" FROM Relations WHERE ItemType = '%1' AND ItemID = %2")
        .arg(quoted(m_card.code))
        .arg(m_card.id);
}

QSet<qint64> CardRelations::related(int kind) {
    QSet<qint64> ids;
    Query run = m_session.connection().query(
        (isCustom() ? QStringLiteral("SELECT ItemID") : QStringLiteral("SELECT UserDefID")) + rowsOf(kind));
    while (run.next())
        ids.insert(run.integer(0));
    return ids;
}

bool CardRelations::LoadRelations(std::vector<Related>& related) {
    return guarded(m_session, [&] {
        std::vector<Related> found;
        CMIT items(m_session);
        for (const int kind : kinds()) {
            std::vector<Related> ofKind;
            for (const qint64 id : this->related(kind))
                if (items.exists(kind, id))
                    ofKind.push_back({{itemKind(kind)->code, id}, items.nameOf(kind, id)});
            std::sort(ofKind.begin(), ofKind.end(), [](const Related& a, const Related& b) {
                const int order = TextOrder::compareNatural(a.name, b.name);
                return order != 0 ? order < 0 : a.card.id < b.card.id;
            });
            found.insert(found.end(), ofKind.begin(), ofKind.end());
        }
        related = std::move(found);
        return true;
    });
}

ItemList CardRelations::list(const std::vector<Related>& related) {
    ItemList list({{QStringLiteral("Related with")}});
    for (const Related& one : related)
        list.addRow(one.row(), itemKind(one.card.code)->iconKey, {one.name});
    return list;
}

bool CardRelations::change(int kind, const QSet<qint64>& add, const QSet<qint64>& remove) {
    return guarded(m_session, [&] {
        m_card.require(m_session);
        CMIT items(m_session);
        Transaction transaction(m_session.connection(),
                                QCoreApplication::translate("CardRelations", "Change the relations of %1")
                                    .arg(m_card.name(m_session)));
        Recordset rows = Recordset::open(m_session.connection(), QStringLiteral("SELECT *") + rowsOf(kind));
        const QString other = isCustom() ? QStringLiteral("ItemID") : QStringLiteral("UserDefID");
        QSet<qint64> present;
        for (int row = rows.rowCount() - 1; row >= 0; --row) {
            const qint64 id = rows.value(row, other).toInteger();
            if (remove.contains(id))
                rows.remove(row);
            else
                present.insert(id);
        }
        // A set hands out its values in another order in every run of the program.
        QList<qint64> inOrder(add.cbegin(), add.cend());
        std::sort(inOrder.begin(), inOrder.end());
        for (const qint64 id : inOrder) {
            if (present.contains(id) || !items.exists(kind, id))
                continue;
            const CardOwner item = isCustom() ? CardOwner{itemKind(kind)->code, id} : m_card;
            rows.add({{QStringLiteral("ItemType"), item.code},
                      {QStringLiteral("ItemID"), item.id},
                      {QStringLiteral("UserDefID"), isCustom() ? m_card.id : id}});
        }
        transaction.commit();
        return true;
    });
}

} // namespace tessaranth
