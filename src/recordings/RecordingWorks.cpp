// SPDX-License-Identifier: GPL-3.0-or-later
// The works placed on a recording and who performs in them.
#include "items/Person.h"
#include "recordings/RecordingEditor.h"
#include "store/Guarded.h"
#include "store/Recordset.h"

#include "works/CWKS.h"
#include <QCoreApplication>

#include <QSet>
#include <algorithm>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("RecordingEditor", text); }

} // namespace

namespace {

constexpr auto placedStatement =
    "SELECT CompOnRecID, CpsID, CompID, Pos, ExtraitName FROM CompOnRec WHERE RecID = ";
const QString castPrefix =
    QStringLiteral("SELECT CompOnRecID, PfrID, PersonageID FROM CompOnRecPfr WHERE CompOnRecID = ");

Recordset::Assignments castRow(qint64 placedWork, const Casting& casting) {
    return {{QStringLiteral("CompOnRecID"), placedWork},
            {QStringLiteral("PfrID"), casting.performer},
            {QStringLiteral("PersonageID"), casting.role}};
}

} // namespace

QString RecordingEditor::castStatement(qint64 placedWork) const {
    return castPrefix + QString::number(placedWork);
}

void RecordingEditor::rememberCasts() {
    const QStringList parts = m_read.keys();
    for (const QString& part : parts)
        if (part.startsWith(castPrefix))
            remember(part);
}

std::vector<PlacedWork> RecordingEditor::works() {
    std::vector<PlacedWork> result;
    Connection& connection = m_session.connection();
    Query run = connection.query(
        ofRecording("SELECT CompOnRec.Pos,CompOnRec.CompOnRecID, CompOnRec.ExtraitName, Cps.CpsID, "
                    "Cps.CpsLname, Cps.CpsFname, Cps.CpsY, Cps.CatAcr, Compositions.CompID, "
                    "Compositions.CompTitle, Compositions.CompSubTitle, Compositions.CompNbr, "
                    "Compositions.Pers From Cps INNER JOIN (Compositions INNER JOIN CompOnRec ON "
                    "Compositions.CompID = CompOnRec.CompID) ON Cps.CpsId = CompOnRec.CpsID "
                    "WHERE CompOnRec.RecID = ") +
        QStringLiteral(" ORDER BY CompOnRec.Pos"));
    QHash<qint64, size_t> place;
    while (run.next()) {
        const QString number = CWKS::numberText(run.text(7).trimmed(), run.text(11).trimmed());
        place.insert(run.integer(1), result.size());
        result.push_back(
            {run.integer(1),
             run.integer(3),
             run.integer(8),
             run.text(9).trimmed() + (number.isEmpty() ? QString() : QStringLiteral(", ") + number),
             run.text(2).trimmed(),
             {},
             personName(run.text(4), run.text(5))});
    }
    Query cast = connection.query(
        ofRecording("SELECT CompOnRecPfr.CompOnRecID, CompOnRecPfr.PfrID, CompOnRecPfr.PersonageID FROM "
                    "CompOnRec INNER JOIN CompOnRecPfr ON CompOnRec.CompOnRecID = "
                    "CompOnRecPfr.CompOnRecID WHERE CompOnRec.RecID = "));
    while (cast.next())
        if (const auto found = place.constFind(cast.integer(0)); found != place.constEnd())
            result[*found].cast.push_back({cast.integer(1), cast.integer(2)});
    remember(ofRecording(placedStatement));
    return result;
}

// ---- placing

void RecordingEditor::checkCasting(qint64 work, const Casting& casting) {
    Connection& connection = m_session.connection();
    if (!connection.exists(QStringLiteral("SELECT PfrID FROM PfrOnRec WHERE RecID = %1 AND PfrID = %2")
                               .arg(m_id)
                               .arg(casting.performer)))
        throw Error(tr("A performer of the work is not on the recording."));
    if (casting.role != 0 &&
        !connection.exists(
            QStringLiteral("SELECT PersonageID FROM Personages WHERE PersonageID = %1 AND CompID = %2")
                .arg(casting.role)
                .arg(work)))
        throw Error(tr("A role does not belong to the work."));
}

void RecordingEditor::checkNewWork(const PlacedWork& work) {
    Connection& connection = m_session.connection();
    if (connection.single(QStringLiteral("SELECT CpsID FROM Compositions WHERE CompID = %1").arg(work.work))
            .toInteger() != work.composer)
        throw Error(tr("A work of the list has been deleted meanwhile, or is of another composer."));
    if (!connection.exists(QStringLiteral("SELECT CpsID FROM CpsOnRec WHERE RecID = %1 AND CpsID = %2")
                               .arg(m_id)
                               .arg(work.composer)))
        throw Error(tr("The composer of a work is not on the recording."));
    for (const Casting& casting : work.cast)
        checkCasting(work.work, casting);
}

// A work that stands on no recording any more is no longer in the collection.
void RecordingEditor::takeOff(qint64 placedWork) {
    Connection& connection = m_session.connection();
    const QString key = QString::number(placedWork);
    const QString work = QString::number(
        connection.single(QStringLiteral("SELECT CompID FROM CompOnRec WHERE CompOnRecID = ") + key)
            .toInteger());
    connection.execute(QStringLiteral("DELETE FROM CompOnRecPfr WHERE CompOnRecID = ") + key);
    connection.execute(QStringLiteral("DELETE FROM CompOnRec WHERE CompOnRecID = ") + key);
    if (!connection.exists(QStringLiteral("SELECT CompID FROM CompOnRec WHERE CompID = ") + work))
        connection.execute(QStringLiteral("UPDATE Compositions SET InCollection = False WHERE CompID = ") +
                           work);
}

void RecordingEditor::takeOffAll(const std::vector<qint64>& placedWorks) {
    if (placedWorks.empty())
        return;
    for (const qint64 placed : placedWorks)
        takeOff(placed);
    Recordset rest =
        Recordset::open(m_session.connection(), ofRecording("SELECT * FROM CompOnRec WHERE RecID = ") +
                                                    QStringLiteral(" ORDER BY Pos"));
    for (int row = 0; row < rest.rowCount(); ++row)
        rest.update(row, {{QStringLiteral("Pos"), row + 1}});
    rememberCasts();
    rememberAgain(ofRecording(placedStatement));
}

void RecordingEditor::placeWorks(const std::vector<PlacedWork>& works) {
    Connection& connection = m_session.connection();
    const QString statement =
        ofRecording("SELECT * FROM CompOnRec WHERE RecID = ") + QStringLiteral(" ORDER BY Pos");
    Recordset rows = Recordset::open(connection, statement);
    QSet<qint64> kept;
    for (const PlacedWork& work : works)
        kept.insert(work.id);
    std::vector<qint64> gone;
    for (int row = 0; row < rows.rowCount(); ++row)
        if (const qint64 id = rows.value(row, QStringLiteral("CompOnRecID")).toInteger(); !kept.contains(id))
            gone.push_back(id);
    for (const qint64 id : gone)
        takeOff(id);
    if (!gone.empty())
        rows = Recordset::open(connection, statement);
    QHash<std::pair<qint64, qint64>, int> stored; // by id and work
    for (int row = 0; row < rows.rowCount(); ++row)
        stored.insert({rows.value(row, QStringLiteral("CompOnRecID")).toInteger(),
                       rows.value(row, QStringLiteral("CompID")).toInteger()},
                      row);
    Recordset casts = Recordset::open(connection, QStringLiteral("SELECT * FROM CompOnRecPfr WHERE 1 = 0"));
    int position = 0;
    for (const PlacedWork& work : works) {
        const QString excerpt =
            m_session.fields().fit(QStringLiteral("CompOnRec"), QStringLiteral("ExtraitName"), work.excerpt);
        ++position;
        const auto row = stored.constFind({work.id, work.work});
        if (row != stored.constEnd()) {
            rows.update(*row, {{QStringLiteral("Pos"), position}, {QStringLiteral("ExtraitName"), excerpt}});
            continue;
        }
        checkNewWork(work);
        rows.add({{QStringLiteral("RecID"), m_id},
                  {QStringLiteral("CpsID"), work.composer},
                  {QStringLiteral("CompID"), work.work},
                  {QStringLiteral("Pos"), position},
                  {QStringLiteral("ExtraitName"), excerpt}});
        const qint64 id = connection.lastKey();
        connection.execute(
            QStringLiteral("UPDATE Compositions SET InCollection = True WHERE CompID = %1").arg(work.work));
        for (size_t i = 0; i < work.cast.size(); ++i)
            if (std::find(work.cast.begin(), work.cast.begin() + qsizetype(i), work.cast[i]) ==
                work.cast.begin() + qsizetype(i))
                casts.add(castRow(id, work.cast[i]));
    }
}

bool RecordingEditor::applyWorks(std::vector<PlacedWork>& works) {
    const bool stored = apply({ofRecording(placedStatement)}, tr("Change the works of recording %1"), [&] {
        if (!works.empty()) {
            placeWorks(works);
            return;
        }
        // Works keep their mark of being in the collection when a recording is emptied.
        Connection& connection = m_session.connection();
        connection.execute(ofRecording("DELETE FROM CompOnRecPfr WHERE CompOnRecId IN "
                                       "(SELECT CompOnRecId FROM CompOnRec WHERE RecID = ") +
                           u')');
        connection.execute(ofRecording("DELETE FROM CompOnRec WHERE RecID = "));
    });
    if (stored)
        works = this->works();
    return stored;
}

// ---- who performs

std::vector<Casting> RecordingEditor::cast(qint64 placedWork) {
    std::vector<Casting> result;
    Query run = m_session.connection().query(castStatement(placedWork));
    while (run.next())
        result.push_back({run.integer(1), run.integer(2)});
    remember(castStatement(placedWork));
    return result;
}

bool RecordingEditor::applyCast(qint64 placedWork, const std::vector<Casting>& cast) {
    return apply({castStatement(placedWork)}, tr("Change the performers of a work on recording %1"), [&] {
        Connection& connection = m_session.connection();
        const qint64 work =
            connection
                .single(QStringLiteral("SELECT CompID FROM CompOnRec WHERE CompOnRecID = %1 AND RecID = %2")
                            .arg(placedWork)
                            .arg(m_id))
                .toInteger();
        if (work == 0)
            throw Error(tr("This work has been taken off the recording meanwhile."));
        Recordset rows = Recordset::open(connection, castStatement(placedWork));
        std::vector<Casting> present;
        for (int row = 0; row < rows.rowCount();) {
            const Casting stored{rows.value(row, QStringLiteral("PfrID")).toInteger(),
                                 rows.value(row, QStringLiteral("PersonageID")).toInteger()};
            if (std::find(cast.begin(), cast.end(), stored) == cast.end() ||
                std::find(present.begin(), present.end(), stored) != present.end()) {
                rows.remove(row);
            } else {
                present.push_back(stored);
                ++row;
            }
        }
        for (const Casting& casting : cast) {
            if (std::find(present.begin(), present.end(), casting) != present.end())
                continue;
            checkCasting(work, casting);
            rows.add(castRow(placedWork, casting));
            present.push_back(casting);
        }
    });
}

// ---- from tracks to works

void RecordingEditor::readWorkIds(qint64 composer, std::vector<TrackWork>& works) {
    QHash<QString, qint64> ids;
    Query run = m_session.connection().query(
        QStringLiteral("SELECT CompID, CompTitle FROM Compositions WHERE CpsID = %1 ORDER BY CompID DESC")
            .arg(composer));
    while (run.next())
        ids.insert(run.text(1).trimmed().toCaseFolded(), run.integer(0));
    for (TrackWork& work : works)
        work.work = ids.value(cleanName(work.title).toCaseFolded());
}

bool RecordingEditor::findWorks(qint64 composer, std::vector<TrackWork>& works) {
    return guarded(m_session, [&] { readWorkIds(composer, works); });
}

void RecordingEditor::addToList(qint64 composer, TrackWork& work) {
    const QString title =
        m_session.fields().fit(QStringLiteral("Compositions"), QStringLiteral("CompTitle"), work.title);
    Recordset rows =
        Recordset::open(m_session.connection(), QStringLiteral("SELECT * FROM Compositions WHERE 1 = 0"));
    Recordset::Assignments values{{QStringLiteral("CpsID"), composer}, {QStringLiteral("CompTitle"), title}};
    for (const char* text : {"CompSubTitle", "CompNbr", "CompYear", "Descr"})
        values.emplace_back(QLatin1String(text), QString());
    for (const char* link : {"MainWorkID", "CpsGenreID", "GenreID", "KeyID"})
        values.emplace_back(QLatin1String(link), 0);
    rows.add(values);
    work.work = m_session.connection().lastKey();
}

void RecordingEditor::placeBehind(qint64 composer, const std::vector<TrackWork>& works) {
    Connection& connection = m_session.connection();
    const QString onRecording = QStringLiteral(" WHERE RecID = %1 AND ").arg(m_id);
    if (!connection.exists(QStringLiteral("SELECT CpsID FROM CpsOnRec") + onRecording +
                           QStringLiteral("CpsID = %1").arg(composer)))
        Recordset::open(connection, QStringLiteral("SELECT * FROM CpsOnRec WHERE 1 = 0"))
            .add({{QStringLiteral("CpsID"), composer}, {QStringLiteral("RecID"), m_id}});
    qint64 position =
        connection.single(ofRecording("SELECT MAX(Pos) FROM CompOnRec WHERE RecID = ")).toInteger();
    Recordset rows = Recordset::open(connection, QStringLiteral("SELECT * FROM CompOnRec WHERE 1 = 0"));
    for (const TrackWork& work : works) {
        if (connection.exists(QStringLiteral("SELECT CompID FROM CompOnRec") + onRecording +
                              QStringLiteral("CompID = %1").arg(work.work)))
            continue;
        rows.add({{QStringLiteral("RecID"), m_id},
                  {QStringLiteral("CpsID"), composer},
                  {QStringLiteral("CompID"), work.work},
                  {QStringLiteral("Pos"), ++position},
                  {QStringLiteral("ExtraitName"), QString()}});
        connection.execute(
            QStringLiteral("UPDATE Compositions SET InCollection = True WHERE CompID = %1").arg(work.work));
    }
    rememberAgain(ofRecording(placedStatement));
}

int RecordingEditor::addWorks(qint64 composer, std::vector<TrackWork> works, bool place) {
    int added = 0;
    const auto add = [&] {
        if (!m_session.connection().exists(
                QStringLiteral("SELECT CpsID FROM Cps WHERE CpsID = %1").arg(composer)))
            throw Error(tr("This composer has been deleted meanwhile."));
        std::erase_if(works, [](const TrackWork& work) { return cleanName(work.title).isEmpty(); });
        readWorkIds(composer, works);
        for (TrackWork& work : works) {
            if (work.work != 0)
                continue;
            addToList(composer, work);
            ++added;
        }
        if (place)
            placeBehind(composer, works);
    };
    const auto addOnly = [&] {
        Transaction transaction(m_session.connection(), tr("Add works"));
        add();
        transaction.describe(
            tr("Add %1 works of %2")
                .arg(added)
                .arg(m_session.connection()
                         .single(QStringLiteral("SELECT CpsLname FROM Cps WHERE CpsID = %1").arg(composer))
                         .toText()));
        transaction.commit();
    };
    return (place ? apply({}, tr("Add works to recording %1"), add) : guarded(m_session, addOnly)) ? added
                                                                                                   : -1;
}

} // namespace tessaranth
