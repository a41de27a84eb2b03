// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/Attachments.h"

#include "store/AttachmentFiles.h"
#include "store/Recordset.h"
#include "store/Session.h"

#include <algorithm>
#include <limits>
#include <numeric>

namespace tessaranth {

namespace {

QString ownedBy(const QString& code, qint64 id) {
    return QStringLiteral(" WHERE RelatedID = %1 AND RelatedCat = '%2'").arg(id).arg(quoted(code));
}

QString itemIs(const QString& code, qint64 id) {
    return QStringLiteral(" WHERE ItemID = %1 AND ItemType = '%2'").arg(id).arg(quoted(code));
}

} // namespace

void Attachments::deleteAll(const QString& code, qint64 id) {
    Connection& connection = m_session.connection();
    const AttachmentFiles files(m_session);
    const std::pair<QString, Session::Folder> kept[] = {
        {QStringLiteral("Images"), Session::Folder::Images},
        {QStringLiteral("Cards"), Session::Folder::Documents}};
    for (const auto& [table, folder] : kept) {
        Query rows = connection.query(QStringLiteral("SELECT * FROM ") + table + ownedBy(code, id));
        while (rows.next())
            if (files.path(folder, rows.value(0)))
                files.remove(folder, rows.integer(0));
    }
    for (const char* table : {"Images", "Cards", "Media", "Web"})
        connection.execute(QStringLiteral("DELETE FROM ") + QLatin1String(table) + ownedBy(code, id));
    connection.execute(QStringLiteral("DELETE FROM Relations") + itemIs(code, id));
}

void Attachments::deleteDocuments(const QString& statement) {
    Recordset rows = Recordset::open(m_session.connection(), statement);
    const AttachmentFiles files(m_session);
    for (int row = rows.rowCount() - 1; row >= 0; --row) {
        const Value& id = rows.value(row, QStringLiteral("CardID"));
        if (files.path(Session::Folder::Documents, id))
            files.remove(Session::Folder::Documents, id.toInteger());
        rows.remove(row);
    }
}

void Attachments::moveOrdered(const QString& table, const QString& code, qint64 from, qint64 to) {
    Connection& connection = m_session.connection();
    qint64 next = std::clamp<qint64>(
        connection.single(QStringLiteral("SELECT MAX(OrderNbr) As maxNbr FROM ") + table + ownedBy(code, to))
            .toInteger(),
        0, std::numeric_limits<int>::max());
    Recordset rows =
        Recordset::open(connection, QStringLiteral("SELECT * FROM ") + table + ownedBy(code, from) +
                                        QStringLiteral(" ORDER BY OrderNbr"));
    for (int row = 0; row < rows.rowCount(); ++row)
        rows.update(row, {{QStringLiteral("RelatedID"), to}, {QStringLiteral("OrderNbr"), ++next}});
}

void Attachments::moveAll(const QString& code, qint64 from, qint64 to) {
    for (const char* table : {"Images", "Cards"})
        moveOrdered(QString::fromLatin1(table), code, from, to);
    Connection& connection = m_session.connection();
    for (const char* table : {"Media", "Web"})
        connection.execute(QStringLiteral("UPDATE %1 SET RelatedID = %2").arg(QLatin1String(table)).arg(to) +
                           ownedBy(code, from));
    connection.execute(QStringLiteral("UPDATE Relations SET ItemID = %1").arg(to) + itemIs(code, from));
}

void Attachments::setOrder(const QString& table, const QString& code, qint64 id,
                           const std::vector<qint64>& order) {
    Recordset rows = Recordset::open(
        m_session.connection(),
        QStringLiteral("SELECT * FROM %1 WHERE (RelatedID = %2) AND (RelatedCat = '%3') ORDER BY OrderNbr")
            .arg(table)
            .arg(id)
            .arg(quoted(code)));
    std::vector<int> sorted(size_t(rows.rowCount()));
    std::iota(sorted.begin(), sorted.end(), 0);
    const auto place = [&](int row) {
        return std::find(order.begin(), order.end(), rows.value(row, 0).toInteger()) - order.begin();
    };
    std::vector<std::ptrdiff_t> places;
    places.reserve(sorted.size());
    for (const int row : sorted)
        places.push_back(place(row));
    std::stable_sort(sorted.begin(), sorted.end(),
                     [&](int a, int b) { return places[size_t(a)] < places[size_t(b)]; });
    const QString number = QStringLiteral("OrderNbr");
    for (qint64 next = 1; const int row : sorted) {
        if (rows.value(row, number).toInteger() != next)
            rows.update(row, {{number, next}});
        ++next;
    }
}

} // namespace tessaranth
