// SPDX-License-Identifier: GPL-3.0-or-later
#include "attachments/MediaLocations.h"

#include "items/OpenCards.h"
#include "platform/Progress.h"
#include "platform/Volumes.h"
#include "store/Guarded.h"
#include "store/Recordset.h"

#include <QCoreApplication>
#include <QSet>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("MediaLocations", text); }

const QString title = QStringLiteral("Media files locations update");

bool hasLetter(const QString& drive) { return drive.size() >= 2 && drive[1] == u':'; }

QString withoutEnd(QString drive) {
    while (drive.size() > 1 && (drive.endsWith(u'/') || drive.endsWith(u'\\')))
        drive.chop(1);
    return drive;
}

QString condition(const LocationChange& change) {
    if (change.isDrive && change.from.isEmpty())
        return QStringLiteral("MediaFolder LIKE '%'");
    // A mount point has no colon that would part "/mnt/a" from "/mnt/ab"; what merely begins alike is left
    // out later. Its own folder has nothing behind it.
    const QString end =
        change.isDrive && hasLetter(change.from) ? QStringLiteral("\\%") : QStringLiteral("%");
    return QStringLiteral("MediaFolder LIKE '") + quotedPattern(change.from) + end + u'\'';
}

QString joined(const QString& place, QString rest, QChar separator) {
    if (rest.startsWith(u'/') || rest.startsWith(u'\\'))
        rest.remove(0, 1);
    if (rest.isEmpty())
        return hasLetter(place) && place.size() == 2 ? place + separator : place;
    return place.endsWith(separator) ? place + rest : place + separator + rest;
}

/// What the change puts in place of `folder`; empty when the folder is not meant. Whole parts of a path
/// count:
/// "/Music2" does not lie in "/Music".
QString changed(const QString& folder, const LocationChange& change) {
    const QString from = change.isDrive && change.from.isEmpty() ? driveOf(folder) : change.from;
    if (from.isEmpty() || !isBelow(folder, from))
        return {};
    QString rest = folder.mid(from.size());
    const QChar own = hasLetter(change.to) ? u'\\' : u'/';
    if (!change.isDrive)
        return joined(change.to, rest, rest.startsWith(u'/') || rest.startsWith(u'\\') ? rest[0] : own);
    // Disks move between systems, and each writes the parts of a path in its own way.
    rest.replace(own == u'/' ? u'\\' : u'/', own);
    return joined(change.to, rest, own);
}

struct Move {
    qint64 id;
    QString folder;
    QString card;
};

} // namespace

QStringList MediaLocations::drives() {
    QStringList drives;
    Query run = m_session.connection().query(
        QStringLiteral("SELECT DISTINCT MediaFolder FROM Media ORDER BY MediaFolder"));
    while (run.next()) {
        const QString drive = driveOf(run.text(0));
        drives.push_back(hasLetter(drive) ? drive.toUpper() : drive);
    }
    drives.removeAll(QString());
    drives.removeDuplicates();
    drives.sort();
    return drives;
}

bool MediaLocations::update(const LocationChange& wanted, Progress& progress) {
    m_changedCards.clear();
    LocationChange change = wanted;
    change.from = withoutEnd(change.from);
    change.to = withoutEnd(change.to);
    Messages& messages = m_session.messages();
    return guarded(m_session, [&] {
        if (change.to.isEmpty() || (!change.isDrive && change.from.isEmpty()))
            throw Error(tr("Both the old and the new place are needed."));
        std::vector<Move> moves;
        Query run = m_session.connection().query(
            QStringLiteral("SELECT MediaFolder, MediaID, RelatedCat, RelatedID FROM Media WHERE ") +
            condition(change) + QStringLiteral(" ORDER BY MediaFolder"));
        while (run.next()) {
            const QString folder = changed(run.text(0), change);
            if (folder.isEmpty())
                continue;
            if (!m_session.fields().fits(QStringLiteral("Media"), QStringLiteral("MediaFolder"), folder))
                throw Error(tr("The new path would be too long:") + u'\n' + folder);
            moves.push_back({run.integer(1), folder, OpenCards::key(run.text(2), run.integer(3))});
        }
        if (moves.empty()) {
            messages.information(title, QStringLiteral("There are no items that match your request"));
            return false;
        }
        Question question{title,
                          QString::number(moves.size()) +
                              QStringLiteral(" items will be updated.\nWished to continue?"),
                          {Answer::Yes, Answer::No},
                          Answer::No};
        if (messages.ask(question) != Answer::Yes)
            return false;
        progress.stage(tr("Updating the locations"));
        Transaction transaction(m_session.connection(), tr("Change the place of %1 media").arg(moves.size()));
        QSet<QString> cards;
        for (size_t i = 0; i < moves.size(); ++i) {
            if (progress.stopped())
                return false;
            m_session.connection().execute(
                QStringLiteral("UPDATE Media SET MediaFolder = '%1' WHERE MediaID = ")
                    .arg(quoted(moves[i].folder)) +
                QString::number(moves[i].id));
            cards.insert(moves[i].card);
            progress.step(qint64(i) + 1, qint64(moves.size()));
        }
        transaction.commit();
        m_changedCards = cards.values();
        return true;
    });
}

} // namespace tessaranth
