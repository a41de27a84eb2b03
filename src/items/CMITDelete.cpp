// SPDX-License-Identifier: GPL-3.0-or-later
// Deleting and merging items.
#include "items/Attachments.h"
#include "items/CMIT.h"
#include "items/DeletionCounts.h"
#include "items/ItemCascades.h"
#include "items/OpenCards.h"
#include "platform/Progress.h"
#include "store/AttachmentFiles.h"
#include "store/Guarded.h"

#include <QCoreApplication>
#include <QFile>
#include <QSet>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("CMIT", text); }

/// Names shown in a question; with more of them the box would not fit the screen.
constexpr qsizetype namesShown = 20;

} // namespace

bool CMIT::ConfermaEliminazione(int number, const QStringList& names, const std::vector<qint64>& ids) {
    QString counts;
    const bool counted = onKind(number, [&](const ItemKind& kind) {
        counts = deletionCounts(m_session.connection(), kind.code, ids);
    });
    const ItemKind* kind = itemKind(number);
    if (!counted || names.isEmpty())
        return false;
    QString shown = names.mid(0, namesShown).join(QStringLiteral(", "));
    if (names.size() > namesShown)
        shown += tr(" ... (%1 in all)").arg(names.size());
    Question question;
    question.title = QStringLiteral("Delete item(s)");
    question.text =
        kind->messageLabel + shown +
        QStringLiteral("\nwill be deleted.\n\nWarning!!\nAll related data will be deleted!\n\nContinue?") +
        counts;
    question.buttons = {Answer::Yes, Answer::No};
    question.defaultButton = Answer::No;
    return m_session.messages().ask(question) == Answer::Yes;
}

void CMIT::CloseAllOpenFormWork(int number, const std::vector<qint64>& ids) {
    const ItemKind* kind = itemKind(number);
    if (!m_cards || !kind || !kind->isCard())
        return;
    for (const qint64 id : ids)
        m_cards->closeCard(OpenCards::key(kind->code, id));
}

// The cards that the works of a composer would have; empty for other kinds.
QStringList CMIT::workCards(int number, qint64 id) {
    QStringList keys;
    if (!m_cards || number != ItemKind::Composer)
        return keys;
    onKind(number, [&](const ItemKind&) {
        Query run = m_session.connection().query(
            QStringLiteral("SELECT CompID FROM Compositions WHERE CpsID = %1").arg(id));
        while (run.next())
            keys << OpenCards::key(QStringLiteral("Comp"), run.integer(0));
    });
    return keys;
}

bool CMIT::EliminaItem(int number, const std::vector<qint64>& ids, Progress& progress) {
    // Closed first: a card that is open would store its state into a row that is gone.
    CloseAllOpenFormWork(number, ids);
    progress.stage(tr("Deleting"));
    QStringList works;
    bool all = true;
    const bool deleted = onKind(number, [&](const ItemKind& kind) {
        Transaction transaction(m_session.connection(),
                                ids.size() == 1
                                    ? tr("Delete %1 %2").arg(kind.noun, nameOf(number, ids.front()))
                                    : tr("Delete %1 %2s").arg(ids.size()).arg(kind.noun));
        qint64 done = 0;
        for (const qint64 id : ids) {
            all = !progress.stopped();
            if (!all)
                return;
            works += workCards(number, id);
            deleteOne(kind, id);
            progress.step(++done, qint64(ids.size()));
        }
        transaction.commit();
    });
    if (!deleted || !all)
        return false;
    for (const QString& work : works)
        m_cards->closeCard(work);
    return true;
}

void CMIT::deleteOne(const ItemKind& kind, qint64 id) {
    Transaction transaction(m_session.connection(),
                            tr("Delete %1 %2").arg(kind.noun, nameOf(kind.number, id)));
    for (const CascadeStep& step : deletionSteps(kind.number))
        runStep(kind, step, id);
    transaction.commit();
}

void CMIT::runStep(const ItemKind& kind, const CascadeStep& step, qint64 id) {
    switch (step.action) {
    case CascadeStep::Action::Run:
        m_session.connection().execute(QString::fromLatin1(step.statement).arg(id));
        break;
    case CascadeStep::Action::Attachments:
        Attachments(m_session).deleteAll(kind.code, id);
        break;
    case CascadeStep::Action::WorkDocuments:
        Attachments(m_session).deleteDocuments(
            QStringLiteral("SELECT * FROM Cards WHERE RelatedCat = 'Comp' AND "
                           "RelatedID IN "
                           "(SELECT CompID FROM Compositions WHERE CpsID = %1)")
                .arg(id));
        break;
    case CascadeStep::Action::LabelLogo:
        AttachmentFiles(m_session).remove(Session::Folder::Labels, id);
        break;
    }
}

// ---- merging

bool CMIT::Migra(int number, qint64 from, qint64 to) {
    if (from == to)
        return refuse(tr("An item cannot be merged into itself."), QStringLiteral("Migrate "));
    bool areThere = false;
    QString source, target;
    const bool isRead = guarded(m_session, [&] {
        areThere = exists(number, from) && exists(number, to);
        source = nameOf(number, from);
        target = nameOf(number, to);
    });
    if (!isRead)
        return false;
    if (!areThere)
        return refuse(tr("This card has been deleted meanwhile."), QStringLiteral("Migrate "));
    Question question;
    question.title = QStringLiteral("Migrate ");
    question.text = QStringLiteral("Do you want to migrate all the data from ") + source +
                    QStringLiteral("\nto ") + target + u'?';
    question.defaultButton = Answer::Cancel;
    if (m_session.messages().ask(question) != Answer::Ok)
        return false;
    CloseAllOpenFormWork(number, {from});
    const bool merged = onKind(number, [&](const ItemKind& kind) {
        Transaction transaction(
            m_session.connection(),
            tr("Merge %1 %2 into %3").arg(kind.noun, nameOf(number, from), nameOf(number, to)));
        transaction.merge({Thing(number), from}, {Thing(number), to});
        foldLinks(kind, from, to);
        if (kind.isCard())
            Attachments(m_session).moveAll(kind.code, from, to);
        if (kind.number == ItemKind::Recording)
            moveTracks(from, to);
        for (const CascadeStep& step : mergeSteps(kind.number))
            m_session.connection().execute(QString::fromLatin1(step.statement).arg(to).arg(from));
        if (kind.number == ItemKind::Label)
            moveLogo(from, to);
        deleteOne(kind, from);
        transaction.commit();
        if (m_cards && kind.isCard())
            m_cards->reloadCard(OpenCards::key(kind.code, to));
    });
    for (const QString& work : merged ? workCards(number, to) : QStringList())
        m_cards->reloadCard(work);
    return merged;
}

// A label without a logo gets that of the other; one that has its own keeps it, as nothing is written over a
// file.
void CMIT::moveLogo(qint64 from, qint64 to) {
    const AttachmentFiles logos(m_session);
    constexpr auto folder = Session::Folder::Labels;
    QFile logo(logos.path(folder, from));
    if (logos.exists(folder, to) || !logo.exists())
        return;
    if (!logo.open(QIODevice::ReadOnly))
        throw FileError(tr("%1 cannot be read: %2").arg(logo.fileName(), logo.errorString()));
    logos.write(folder, to, logo.readAll());
}

// What the source holds follows what the target holds: tracks of the same disc, performers and works keep
// their own order behind it.
void CMIT::moveTracks(qint64 from, qint64 to) {
    Connection& connection = m_session.connection();
    // The units reach as far as the tracks.
    const qint64 lastDisc =
        connection
            .single(QStringLiteral("SELECT MAX(Disc) FROM Tracks WHERE RecID IN (%1, %2)").arg(from).arg(to))
            .toInteger();
    connection.execute(QStringLiteral("UPDATE Rec SET UnitsNbr = %1 WHERE RecID = %2 AND UnitsNbr < %1")
                           .arg(lastDisc)
                           .arg(to));
    const auto highest = [&](const char* column, const char* table, const QString& condition) {
        return connection.single(QStringLiteral("SELECT MAX(%1) FROM %2 WHERE RecID = %3")
                                     .arg(QLatin1String(column), QLatin1String(table))
                                     .arg(to) +
                                 condition);
    };
    for (const char* table : {"PfrOnRec", "CompOnRec"})
        connection.execute(QStringLiteral("UPDATE %1 SET Pos = Pos + %2 WHERE RecID = %3")
                               .arg(QLatin1String(table))
                               .arg(highest("Pos", table, {}).toInteger())
                               .arg(from));
    Recordset discs = Recordset::open(
        connection, QStringLiteral("SELECT DISTINCT Disc FROM Tracks WHERE RecID = %1").arg(from));
    for (int row = 0; row < discs.rowCount(); ++row) {
        const QString onDisc = QStringLiteral(" AND Disc = ") + discs.value(row, 0).toText();
        connection.execute(QStringLiteral("UPDATE Tracks SET TrackNbr = TrackNbr + %1 WHERE RecID = %2")
                               .arg(highest("TrackNbr", "Tracks", onDisc).toInteger())
                               .arg(from) +
                           onDisc);
    }
}

// Two items of a kind often share links: the same recording under both composers. Of links that would become
// alike the target's stays. Before anything moves, so that a catalog whose index allows a link only once
// takes the move as any other does.
void CMIT::foldLinks(const ItemKind& kind, qint64 from, qint64 to) {
    for (const LinkTable& links : linkTables(kind.number)) {
        QSet<QString> seen;
        for (const qint64 id : {to, from}) {
            Recordset rows = Recordset::open(
                m_session.connection(), QStringLiteral("SELECT %1 FROM %2 WHERE %3 = %4")
                                                .arg(QLatin1String(links.columns), QLatin1String(links.table),
                                                     QLatin1String(links.key))
                                                .arg(id) +
                                            QLatin1String(links.rows));
            const int key = rows.fieldIndex(QLatin1String(links.key));
            for (int row = 0; row < rows.rowCount();) {
                QStringList cells;
                for (int field = 0; field < int(rows.fields().size()); ++field)
                    cells.push_back(field == key ? QString() : rows.value(row, field).toText());
                const QString link = cells.join(u'\t');
                if (seen.contains(link)) {
                    rows.remove(row);
                } else {
                    seen.insert(link);
                    ++row;
                }
            }
        }
    }
}

} // namespace tessaranth
