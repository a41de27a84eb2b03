// SPDX-License-Identifier: GPL-3.0-or-later
#include "attachments/CardLinks.h"

#include "items/DeletionCounts.h"
#include "items/Person.h"
#include "store/Guarded.h"
#include "store/Recordset.h"

#include <QCoreApplication>
#include <QUrl>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("CardLinks", text); }

constexpr qsizetype charactersShown = 500;

bool isOfTheWeb(const QUrl& url) {
    static const QStringList schemes{QStringLiteral("http"), QStringLiteral("https"), QStringLiteral("ftp"),
                                     QStringLiteral("mailto")};
    return schemes.contains(url.scheme().toLower());
}

QString byId(qint64 id) { return QStringLiteral("SELECT * FROM Web WHERE WebID = ") + QString::number(id); }

} // namespace

bool CardLinks::LoadWeb(ItemList& list) {
    return guarded(m_session, [&] {
        ItemList found({{QStringLiteral("Alias")}, {QStringLiteral("Url")}});
        const Recordset rows = Recordset::open(
            m_session.connection(), QStringLiteral("SELECT * FROM Web WHERE ") + m_card.condition());
        for (int row = 0; row < rows.rowCount(); ++row) {
            const QString url = rows.value(row, QStringLiteral("Url")).toText();
            const QString alias = rows.value(row, QStringLiteral("Alias")).toText().trimmed();
            found.addRow(rows.value(row, QStringLiteral("WebID")).toInteger(), QStringLiteral("Web"),
                         {alias.isEmpty() ? url : alias, url});
        }
        list = std::move(found);
        return true;
    });
}

WebLink CardLinks::link(qint64 id) {
    const Recordset row = Recordset::open(m_session.connection(), byId(id));
    if (row.isEmpty())
        return {};
    return {id, row.value(0, QStringLiteral("Url")).toText(), row.value(0, QStringLiteral("Alias")).toText()};
}

bool CardLinks::save(WebLink& link) {
    return guarded(m_session, [&] {
        m_card.require(m_session);
        const QString table = QStringLiteral("Web"), alias = QStringLiteral("Alias");
        link.url = m_session.fields().fit(table, QStringLiteral("Url"), link.url);
        link.alias = m_session.fields().fit(table, alias, link.alias);
        if (link.alias.isEmpty())
            link.alias = m_session.fields().cut(table, alias, link.url);
        Recordset::Assignments values{{QStringLiteral("Url"), link.url},
                                      {QStringLiteral("Alias"), link.alias}};
        Transaction transaction(m_session.connection(),
                                (link.id == 0 ? tr("Add link %1") : tr("Change link %1")).arg(link.alias));
        if (link.id == 0) {
            Recordset rows = Recordset::open(m_session.connection(),
                                             QStringLiteral("SELECT * FROM Web WHERE ") + m_card.condition());
            values.insert(values.begin(), {{QStringLiteral("RelatedID"), m_card.id},
                                           {QStringLiteral("RelatedCat"), m_card.code}});
            rows.add(values);
            const qint64 added = m_session.connection().lastKey();
            transaction.commit();
            link.id = added;
            return true;
        }
        Recordset row = Recordset::open(m_session.connection(), byId(link.id));
        if (row.isEmpty())
            throw Error(tr("This item has been deleted meanwhile."));
        row.update(0, values);
        transaction.commit();
        return true;
    });
}

bool CardLinks::Remove_Web(const std::vector<qint64>& ids) {
    Question question;
    question.title = QStringLiteral("Remove web-link");
    question.text =
        QStringLiteral("Do you want to remove the selected web-link(s)?") + selectedCount(ids.size());
    question.defaultButton = Answer::Cancel;
    if (ids.empty() || m_session.messages().ask(question) != Answer::Ok)
        return false;
    return guarded(m_session, [&] {
        Transaction transaction(m_session.connection(),
                                tr("Remove %1 links from %2").arg(ids.size()).arg(m_card.name(m_session)));
        for (const qint64 id : ids)
            m_session.connection().execute(QStringLiteral("DELETE FROM Web WHERE WebId = ") +
                                           QString::number(id));
        transaction.commit();
        return true;
    });
}

bool CardLinks::OpenWeb(qint64 id) {
    QString text;
    if (!guarded(m_session, [&] { text = link(id).url.trimmed(); }) || text.isEmpty())
        return false;
    // "www.beethoven.de" is what people type for "http://www.beethoven.de".
    const QUrl url = QUrl::fromUserInput(text);
    Messages& messages = m_session.messages();
    if (!url.isValid() || url.scheme().isEmpty()) {
        messages.warning(applicationTitle,
                         tr("This is no address that could be opened:") + u'\n' + text.left(charactersShown));
        return false;
    }
    if (!isOfTheWeb(url)) {
        Question question;
        question.title = QStringLiteral("Web");
        question.text = tr("This link does not lead to the web. What it does on this computer is up to the "
                           "program that opens it:") +
                        u'\n' + text.left(charactersShown) + u'\n' + tr("Open it all the same?");
        question.buttons = {Answer::Yes, Answer::No};
        question.defaultButton = Answer::No;
        question.icon = MessageIcon::Warning;
        if (messages.ask(question) != Answer::Yes)
            return false;
    }
    if (m_session.desktop().openUrl(url))
        return true;
    messages.warning(applicationTitle, tr("The system has no program that opens this link:") + u'\n' +
                                           text.left(charactersShown));
    return false;
}

} // namespace tessaranth
