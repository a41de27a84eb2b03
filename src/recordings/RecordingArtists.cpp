// SPDX-License-Identifier: GPL-3.0-or-later
// The composers and performers of a recording.
#include "items/Person.h"
#include "recordings/RecordingEditor.h"
#include "store/Guarded.h"
#include "store/Recordset.h"

#include <QCoreApplication>

#include <QSet>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("RecordingEditor", text); }

} // namespace

namespace {

constexpr auto composersStatement = "SELECT CpsID FROM CpsOnRec WHERE RecID = ";
constexpr auto performersStatement = "SELECT PfrID, Pos FROM PfrOnRec WHERE RecID = ";

} // namespace

std::vector<RecordingArtist> RecordingEditor::composers() {
    std::vector<RecordingArtist> result;
    Query run = m_session.connection().query(
        ofRecording("SELECT Cps.CpsID, Cps.CpsLname, Cps.CpsFname, Cps.CpsY, Cps.CatAcr, CpsOnRec.RecID "
                    "FROM Cps INNER JOIN CpsOnRec ON Cps.CpsID = CpsOnRec.CpsID "
                    "WHERE CpsOnRec.RecID = "));
    while (run.next())
        result.push_back({run.integer(0), personName(run.text(1), run.text(2)), run.text(3).trimmed(),
                          run.text(4).trimmed()});
    remember(ofRecording(composersStatement));
    return result;
}

std::vector<RecordingArtist> RecordingEditor::performers() {
    std::vector<RecordingArtist> result;
    Query run = m_session.connection().query(
        ofRecording("SELECT Pfr.PfrID, Pfr.PfrLname, Pfr.PfrFname, PfrOnRec.RecID, PfrOnRec.Pos "
                    "FROM Pfr INNER JOIN PfrOnRec ON Pfr.PfrID = PfrOnRec.PfrID "
                    "WHERE PfrOnRec.RecID = ") +
        QStringLiteral(" ORDER BY Pos, PfrLname"));
    while (run.next())
        result.push_back({run.integer(0), personName(run.text(1), run.text(2)), {}, {}});
    remember(ofRecording(performersStatement));
    return result;
}

// The works of a composer who goes would stand on the recording without him: they go together, or nobody
// goes. `leaving` becomes the placed works that go.
bool RecordingEditor::settleWorksOf(const std::vector<qint64>& composers, std::vector<qint64>& leaving) {
    QStringList titles;
    const bool found = guarded(m_session, [&] {
        QSet<qint64> going;
        Query run = m_session.connection().query(ofRecording(composersStatement));
        while (run.next())
            if (std::find(composers.begin(), composers.end(), run.integer(0)) == composers.end())
                going.insert(run.integer(0));
        Query placed = m_session.connection().query(
            ofRecording(
                "SELECT CompOnRec.CompOnRecID, CompOnRec.CpsID, Compositions.CompTitle FROM CompOnRec "
                "LEFT JOIN Compositions ON CompOnRec.CompID = Compositions.CompID WHERE "
                "CompOnRec.RecID = ") +
            QStringLiteral(" ORDER BY CompOnRec.Pos"));
        while (placed.next())
            if (going.contains(placed.integer(1))) {
                leaving.push_back(placed.integer(0));
                titles << placed.text(2).trimmed();
            }
    });
    if (!found || leaving.empty())
        return found;
    constexpr qsizetype mostLines = 10;
    QString shown = titles.mid(0, mostLines).join(u'\n');
    if (titles.size() > mostLines)
        shown += u'\n' + tr("... (%1 in all)").arg(titles.size());
    return m_session.messages().ask(
               {applicationTitle,
                tr("Works of the composers who are removed stand on the recording:\n%1\n\n"
                   "Do you want to take them off the recording as well?")
                    .arg(shown),
                {Answer::Yes, Answer::No},
                Answer::No}) == Answer::Yes;
}

// `code` is "Cps" or "Pfr"; the two lists differ by the order that performers have.
void RecordingEditor::applyPersons(const char* code, const std::vector<qint64>& ids) {
    Connection& connection = m_session.connection();
    const bool ordered = QByteArrayView(code) == "Pfr";
    const QString key = QLatin1String(code) + QStringLiteral("ID");
    QHash<qint64, int> places; // of those still to be stored
    for (const qint64 id : ids)
        if (!places.contains(id))
            places.insert(id, int(places.size()) + 1);
    Recordset rows = Recordset::open(
        connection,
        QStringLiteral("SELECT * FROM %1OnRec WHERE RecID = %2").arg(QLatin1String(code)).arg(m_id));
    QSet<qint64> present;
    for (int row = 0; row < rows.rowCount();) {
        const qint64 id = rows.value(row, key).toInteger();
        const bool isTwice = present.contains(id);
        if (places.contains(id) && !isTwice) {
            present.insert(id);
            if (ordered)
                rows.update(row, {{QStringLiteral("Pos"), places.value(id)}});
            ++row;
            continue;
        }
        if (ordered && !isTwice)
            connection.execute(QStringLiteral("DELETE FROM CompOnRecPfr WHERE PfrID = %1 AND CompOnRecID IN "
                                              "(SELECT CompOnRecID FROM CompOnRec WHERE RecID = %2)")
                                   .arg(id)
                                   .arg(m_id));
        rows.remove(row);
    }
    for (const qint64 id : ids) {
        if (present.contains(id))
            continue;
        if (!connection.exists(
                QStringLiteral("SELECT %1 FROM %2 WHERE %1 = %3").arg(key, QLatin1String(code)).arg(id)))
            throw Error(ordered ? tr("A performer of the list has been deleted meanwhile.")
                                : tr("A composer of the list has been deleted meanwhile."));
        Recordset::Assignments values{{key, id}, {QStringLiteral("RecID"), m_id}};
        if (ordered)
            values.emplace_back(QStringLiteral("Pos"), places.value(id));
        rows.add(values);
        present.insert(id);
    }
}

bool RecordingEditor::applyArtists(const std::optional<std::vector<qint64>>& composers,
                                   const std::optional<std::vector<qint64>>& performers) {
    QStringList parts;
    if (composers)
        parts << ofRecording(composersStatement);
    if (performers)
        parts << ofRecording(performersStatement);
    std::vector<qint64> leaving;
    if (composers && !settleWorksOf(*composers, leaving))
        return false;
    return apply(parts, tr("Change the artists of recording %1"), [&] {
        takeOffAll(leaving);
        if (composers)
            applyPersons("Cps", *composers);
        if (performers) {
            applyPersons("Pfr", *performers);
            rememberCasts(); // who left, left the works as well
        }
    });
}

} // namespace tessaranth
