// SPDX-License-Identifier: GPL-3.0-or-later
#include "recordings/RecordingLists.h"

#include "items/CardRecordings.h"
#include "platform/Progress.h"
#include "recordings/RecordingEditor.h"
#include "store/Guarded.h"
#include "store/Session.h"

#include <QCoreApplication>
#include <QSet>
#include <algorithm>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("RecordingLists", text); }

/// A part that a recording should have; each is a column of the list.
struct Part {
    const char* caption;
    const char* statement;
};
const Part partsOfRecording[] = {{"Composers", "SELECT RecID FROM CpsOnRec"},
                                 {"Performers", "SELECT RecID FROM PfrOnRec"},
                                 {"Works", "SELECT RecID FROM CompOnRec"},
                                 {"Tracks", "SELECT RecID FROM Tracks"}};
static_assert(std::size(partsOfRecording) == RecordingLists::partCount);
constexpr int stages = 1 + RecordingLists::partCount;
constexpr int rowsPerStep = 1024; // between two looks at whether to stop

/// False when stopped.
bool readIds(Session& session, const Part& part, QSet<qint64>& ids, int percentage, Progress& progress) {
    Query run = session.connection().query(QLatin1String(part.statement));
    qint64 last = 0;
    for (int row = 0; run.next(); ++row) {
        // The rows of a recording come together, since its index is what is read.
        if (const qint64 id = run.integer(0); id != last)
            ids.insert(last = id);
        if (row % rowsPerStep == 0) {
            progress.percentage(percentage);
            if (progress.stopped())
                return false;
        }
    }
    return true;
}

} // namespace

bool RecordingLists::withWork(Session& session, qint64 work, ItemList& list) {
    return guarded(session, [&] {
        ItemList rows;
        if (!readWorkRecordings(session, work, rows))
            return false;
        ItemList found({{tr("Recordings")}});
        for (int row = 0; row < rows.rowCount(); ++row) {
            const QString& label = rows.text(row, 1);
            found.addRow(
                rows.id(row), rows.iconKey(row),
                {rows.text(row, 0) + (label.isEmpty() ? QString() : QStringLiteral(" (") + label + u')')});
            found.setCellIcon(row, 0, rows.cellIconKey(row, 0));
        }
        list = std::move(found);
        return true;
    });
}

bool RecordingLists::withDisc(Session& session, const QString& discId, std::vector<qint64>& recordings) {
    return guarded(session, [&] {
        std::vector<qint64> found;
        Connection& connection = session.connection();
        Query run = connection.query(QStringLiteral("SELECT RecID FROM DiscIds WHERE DiscId = '") +
                                     quoted(discId.trimmed()) + u'\'');
        while (run.next()) {
            const qint64 id = run.integer(0);
            const QString row = QStringLiteral("SELECT RecID FROM Rec WHERE RecID = ") + QString::number(id);
            if (std::find(found.begin(), found.end(), id) == found.end() && connection.exists(row))
                found.push_back(id);
        }
        recordings = std::move(found);
    });
}

bool RecordingLists::parts(Session& session, ItemList& list, Progress& progress) {
    return guarded(session, [&] {
        std::vector<ItemList::Heading> headings{{tr("Title")}, {tr("Label")}};
        for (const Part& part : partsOfRecording)
            headings.push_back({tr(part.caption)});
        ItemList found(std::move(headings));
        Connection& connection = session.connection();
        progress.stage(tr("Recordings"));
        QSet<qint64> ids[partCount];
        for (int i = 0; i < partCount; ++i)
            if (!readIds(session, partsOfRecording[i], ids[i], i * 100 / stages, progress))
                return false;
        const int total = int(connection.single(QStringLiteral("SELECT COUNT(*) FROM Rec")).toInteger());
        found.reserve(total);
        Query run = connection.query(
            QStringLiteral("SELECT Rec.RecID, Rec.RecTitle, Labels.LabelName, Supports.SupportType, "
                           "Supports.IconName FROM Supports RIGHT JOIN (Labels RIGHT JOIN Rec ON "
                           "Labels.LabelID = Rec.LabelID) ON Supports.SupportID = Rec.SupportID "
                           "ORDER BY Rec.RecTitle"));
        const QString carrierless = QStringLiteral("Recordings");
        while (run.next()) {
            const qint64 id = run.integer(0);
            const auto state = [&](int part) { return ids[part].contains(id) ? present : missing; };
            const int row = found.addRow(
                id, carrierless,
                {run.text(1).trimmed(), run.text(2).trimmed(), state(0), state(1), state(2), state(3)});
            found.setCellIcon(row, 0, run.text(4));
            if (row % rowsPerStep == 0) {
                progress.percentage((100 * (stages - 1) + 100 * row / std::max(1, total)) / stages);
                if (progress.stopped())
                    return false;
            }
        }
        progress.percentage(100);
        list = std::move(found);
        return true;
    });
}

bool RecordingLists::performed(Session& session, qint64 recording, std::vector<Performed>& performers) {
    return guarded(session, [&] {
        RecordingEditor editor(session, recording);
        std::vector<Performed> found;
        for (const RecordingArtist& artist : editor.performers())
            found.push_back(
                {artist.id, artist.name, ItemList({{tr("Composer")}, {tr("Work")}, {tr("Roles")}})});
        QHash<qint64, QString> composers;
        for (const RecordingArtist& artist : editor.composers())
            composers.insert(artist.id, artist.name);
        QHash<qint64, QString> roles;
        Query run = session.connection().query(
            QStringLiteral(
                "SELECT Personages.PersonageID, Personages.PersonageName FROM Personages INNER "
                "JOIN CompOnRec ON Personages.CompID = CompOnRec.CompID WHERE CompOnRec.RecID = ") +
            QString::number(recording));
        while (run.next())
            roles.insert(run.integer(0), run.text(1).trimmed());
        for (const PlacedWork& work : editor.works()) {
            const QString title =
                work.title + (work.excerpt.isEmpty() ? QString() : QStringLiteral(": ") + work.excerpt);
            for (Performed& performer : found) {
                bool performs = false;
                QStringList names;
                for (const Casting& casting : work.cast) {
                    if (casting.performer != performer.performer)
                        continue;
                    performs = true;
                    if (const QString role = roles.value(casting.role); !role.isEmpty())
                        names << role;
                }
                if (performs)
                    performer.works.addRow(
                        work.id, QStringLiteral("Comp"),
                        {composers.value(work.composer), title, names.join(QStringLiteral(", "))});
            }
        }
        performers = std::move(found);
        return true;
    });
}

} // namespace tessaranth
