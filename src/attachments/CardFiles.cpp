// SPDX-License-Identifier: GPL-3.0-or-later
#include "attachments/CardFiles.h"

#include "items/Attachments.h"
#include "items/Person.h"
#include "store/Guarded.h"
#include "store/Recordset.h"

namespace tessaranth {

QString CardFiles::fitTitle(const QString& text) const {
    return m_session.fields().fit(m_kind.table, m_kind.title, text);
}

QString CardFiles::titleFrom(const QString& text) const {
    return m_session.fields().cut(m_kind.table, m_kind.title, cleanName(text));
}

QString CardFiles::byId(qint64 id) const {
    return QStringLiteral(" FROM %1 WHERE %2 = %3").arg(m_kind.table, m_kind.key).arg(id);
}

void CardFiles::require(qint64 id) {
    if (!m_session.connection().exists(QStringLiteral("SELECT *") + byId(id)))
        throw Error(m_kind.gone);
}

bool CardFiles::load(ItemList& list) {
    return guarded(m_session, [&] {
        ItemList found({{QStringLiteral("Title")}});
        const Recordset rows = Recordset::open(
            m_session.connection(),
            QStringLiteral("SELECT * FROM %1 WHERE (RelatedID = %2) AND (RelatedCat LIKE '%3') "
                           "ORDER BY OrderNbr")
                .arg(m_kind.table)
                .arg(m_card.id)
                .arg(quotedPattern(m_card.code)));
        const int key = rows.fieldIndex(m_kind.key);
        const int title = rows.fieldIndex(m_kind.title);
        for (int row = 0; row < rows.rowCount(); ++row)
            found.addRow(rows.value(row, key).toInteger(), m_kind.iconKey, {rows.value(row, title).toText()});
        list = std::move(found);
        return true;
    });
}

QString CardFiles::title(qint64 id) {
    return m_session.connection().single(QStringLiteral("SELECT ") + m_kind.title + byId(id)).toText();
}

QString CardFiles::askTitle(const QString& windowTitle, const QString& heading, const QString& button,
                            const QString& proposed) {
    NameRequest request;
    request.title = windowTitle;
    request.heading = heading;
    request.label = m_kind.label;
    request.iconKey = m_kind.iconKey;
    request.button = button;
    request.defaultText = proposed;
    request.maxLength = m_session.fields().width(m_kind.table, m_kind.title);
    return m_session.messages().inputName(request);
}

QString CardFiles::words(const QString& pattern, const QString& title) {
    return pattern.contains(QLatin1String("%2")) ? pattern.arg(m_card.name(m_session), title)
                                                 : pattern.arg(m_card.name(m_session));
}

qint64 CardFiles::addBytes(const QByteArray& bytes, const QString& text) {
    const QString title = fitTitle(text);
    Transaction transaction(m_session.connection(), words(m_kind.addWords, title));
    Recordset rows = Recordset::open(
        m_session.connection(),
        QStringLiteral("SELECT * FROM %1 WHERE (RelatedID = %2) AND (RelatedCat = '%3') ORDER BY OrderNbr")
            .arg(m_kind.table)
            .arg(m_card.id)
            .arg(quoted(m_card.code)));
    const QString number = QStringLiteral("OrderNbr");
    const qint64 last = rows.isEmpty() ? 0 : rows.value(rows.rowCount() - 1, number).toInteger();
    const qint64 id = m_files.addRow(rows, m_kind.key,
                                     {{m_kind.title, title},
                                      {QStringLiteral("RelatedID"), m_card.id},
                                      {QStringLiteral("RelatedCat"), m_card.code},
                                      {number, qMax<qint64>(last, rows.rowCount()) + 1}},
                                     m_kind.folder);
    m_files.write(m_kind.folder, id, bytes, Existing::Refuse);
    transaction.commit();
    return id;
}

void CardFiles::replaceBytes(qint64 id, const QByteArray& bytes) {
    require(id);
    Transaction transaction(m_session.connection(), words(m_kind.replaceWords, title(id)));
    m_files.write(m_kind.folder, id, bytes);
    transaction.commit();
}

bool CardFiles::askRename(qint64 id) {
    QString old;
    if (!guarded(m_session, [&] { old = title(id); }))
        return false;
    const QString name = askTitle(m_kind.renameTitle, m_kind.renameHeading, QStringLiteral("Rename"), old);
    return !name.isEmpty() && rename(id, name);
}

bool CardFiles::rename(qint64 id, const QString& text) {
    return guarded(m_session, [&] {
        const QString title = fitTitle(text);
        require(id);
        Recordset row = Recordset::open(m_session.connection(), QStringLiteral("SELECT *") + byId(id));
        Transaction transaction(m_session.connection(), words(m_kind.renameWords, title));
        row.update(0, {{m_kind.title, title}});
        transaction.commit();
    });
}

bool CardFiles::askRemove(qint64 id) {
    QString name, card;
    const bool isRead = guarded(m_session, [&] {
        name = title(id);
        card = m_card.name(m_session);
    });
    if (!isRead)
        return false;
    Question question;
    question.title = m_kind.removeTitle;
    question.text =
        QStringLiteral("Do you want to delete\n") + name + QStringLiteral("\nfrom ") + card + u'?';
    question.defaultButton = Answer::Cancel;
    return m_session.messages().ask(question) == Answer::Ok && remove(id);
}

bool CardFiles::remove(qint64 id) {
    return guarded(m_session, [&] {
        Transaction transaction(m_session.connection(), words(m_kind.removeWords, title(id)));
        m_session.connection().execute(QStringLiteral("DELETE") + byId(id));
        Attachments(m_session).setOrder(m_kind.table, m_card.code, m_card.id);
        m_files.remove(m_kind.folder, id);
        transaction.commit();
    });
}

bool CardFiles::sort(const std::vector<qint64>& order) {
    return guarded(m_session, [&] {
        Transaction transaction(m_session.connection(), words(m_kind.sortWords, {}));
        Attachments(m_session).setOrder(m_kind.table, m_card.code, m_card.id, order);
        transaction.commit();
    });
}

} // namespace tessaranth
