// SPDX-License-Identifier: GPL-3.0-or-later
// The tracks and disc identifiers of a recording, disc by disc.
#include "items/Person.h"
#include "recordings/RecordingEditor.h"
#include "store/Guarded.h"
#include "store/Recordset.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QSet>
#include <algorithm>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("RecordingEditor", text); }

} // namespace

// ---- lengths

QString totalLength(const std::vector<Track>& tracks) {
    int seconds = 0;
    bool any = false;
    for (const Track& track : tracks) {
        const QString length = trackLength(track.length).value_or(QString());
        if (length.isEmpty())
            continue;
        any = true;
        seconds += length.left(2).toInt() * 60 + length.mid(3).toInt();
    }
    if (!any)
        return {};
    const auto twoDigits = [](int number) { return QStringLiteral("%1").arg(number, 2, 10, QChar(u'0')); };
    const QString hours = seconds >= 3600 ? QString::number(seconds / 3600) + u':' : QString();
    return hours + twoDigits(seconds / 60 % 60) + u':' + twoDigits(seconds % 60);
}

// ---- tracks as text

namespace {

/// A line of text taken apart. The number is put back into the name when it turns out to be part of it.
struct TrackLine {
    int number = -1;       ///< -1: the line does not begin with one
    bool isMarked = false; ///< the number can be nothing but a track's, as in "1." or "01"
    QString name;          ///< without the number
    QString whole;         ///< with it
    QString length;
};

/// "mm:ss" of hours, minutes and seconds; empty when the column cannot hold it.
QString lengthText(int hours, int minutes, int seconds) {
    minutes += hours * 60;
    if (minutes > 99 || seconds > 59)
        return {};
    return QStringLiteral("%1:%2").arg(minutes, 2, 10, QChar(u'0')).arg(seconds, 2, 10, QChar(u'0'));
}

TrackLine takeApart(const QString& text) {
    static const QRegularExpression atEnd(
        QStringLiteral("(?:^|[\\s(\\[]+)(?:(\\d{1,2}):)?(\\d{1,3}):(\\d\\d)[)\\]]?\\z"));
    static const QRegularExpression atStart(
        QStringLiteral("\\A(\\d{1,3})(\\s*[.)\\]:]\\s+|\\s*\\t\\s*|\\s+-\\s+|\\s+)(?=\\S)"));
    TrackLine line;
    line.whole = text;
    const QRegularExpressionMatch length = atEnd.match(text);
    if (length.hasMatch()) {
        line.length =
            lengthText(length.captured(1).toInt(), length.captured(2).toInt(), length.captured(3).toInt());
        if (!line.length.isEmpty())
            line.whole = text.left(length.capturedStart()).trimmed();
    }
    line.name = line.whole;
    const QRegularExpressionMatch number = atStart.match(line.whole);
    if (number.hasMatch()) {
        line.number = number.captured(1).toInt();
        line.isMarked = number.captured(1).startsWith(u'0') || !number.captured(2).trimmed().isEmpty() ||
                        number.captured(2).contains(u'\t');
        line.name = line.whole.mid(number.capturedEnd());
    }
    return line;
}

/// The lines with something in them, without the blanks around it.
QStringList fullLines(const QString& text) {
    static const QRegularExpression lineBreak(QStringLiteral("\\r\\n|[\\n\\r\\x{2028}\\x{2029}]"));
    QStringList lines;
    for (const QString& line : text.split(lineBreak))
        if (!line.trimmed().isEmpty())
            lines << line.trimmed();
    return lines;
}

} // namespace

QStringList oddLengthsOfText(const QString& text) {
    static const QRegularExpression column(QStringLiteral("\\t\\s*(\\d+[.,:'\\x{2019}]\\d[^\\s\\pL]*)\\z"));
    QStringList odd;
    for (const QString& line : fullLines(text)) {
        const QRegularExpressionMatch match = column.match(line);
        if (match.hasMatch() && takeApart(line).length.isEmpty())
            odd << match.captured(1);
    }
    return odd;
}

std::vector<Track> tracksOfText(const QString& text) {
    std::vector<TrackLine> lines;
    for (const QString& line : fullLines(text))
        lines.push_back(takeApart(line));
    // "4 Lieder" is a name: numbers are those of tracks only when they count up from line to line.
    bool areNumbered =
        !lines.empty() && lines.front().number >= 0 && (lines.size() > 1 || lines.front().isMarked);
    for (size_t i = 1; i < lines.size(); ++i)
        areNumbered = areNumbered && lines[i].number == lines[i - 1].number + 1;
    std::vector<Track> tracks;
    tracks.reserve(lines.size());
    for (const TrackLine& line : lines)
        tracks.push_back({cleanName(areNumbered ? line.name : line.whole), line.length});
    return tracks;
}

// ---- stored tracks

QString RecordingEditor::tracksStatement(int disc) const {
    return QStringLiteral("SELECT * FROM Tracks WHERE RecID = %1 AND Disc = %2 ORDER BY Disc, TrackNbr")
        .arg(m_id)
        .arg(disc);
}

QString RecordingEditor::discIdStatement(int disc) const {
    return QStringLiteral("SELECT * From DiscIds WHERE RecID = %1 AND DiscNbr = %2").arg(m_id).arg(disc);
}

std::vector<Track> RecordingEditor::tracks(int disc) {
    std::vector<Track> result;
    const Recordset rows = Recordset::open(m_session.connection(), tracksStatement(disc));
    const int name = rows.fieldIndex(QStringLiteral("TrackName"));
    const int length = rows.fieldIndex(QStringLiteral("TrackLen"));
    for (int row = 0; row < rows.rowCount(); ++row)
        result.push_back(
            {rows.value(row, name).toText().trimmed(), rows.value(row, length).toText().trimmed()});
    remember(tracksStatement(disc));
    return result;
}

// Merged recordings, and those whose units were lowered by other programs, have tracks above their units.
int RecordingEditor::lastDisc() {
    qint64 last = 0;
    for (const char* statement : {"SELECT MAX(Disc) FROM Tracks WHERE RecID = ",
                                  "SELECT MAX(DiscNbr) FROM DiscIds WHERE DiscId <> '' AND RecID = "})
        last = std::max(last, m_session.connection().single(ofRecording(statement)).toInteger());
    return int(std::min<qint64>(last, mostUnits));
}

int RecordingEditor::countDiscs() {
    const qint64 units =
        m_session.connection().single(ofRecording("SELECT UnitsNbr FROM Rec WHERE RecID = ")).toInteger();
    return std::max(int(std::clamp<qint64>(units, 1, mostUnits)), lastDisc());
}

int RecordingEditor::discs() { return countDiscs(); }

// `remove` becomes true when what stands on the upper discs is to go; else the units reach as far as it.
bool RecordingEditor::settleUpperDiscs(RecordingSpecs& specs, bool& remove) {
    Answer answer = Answer::Cancel;
    guarded(m_session, [&] {
        Connection& connection = m_session.connection();
        const int last = lastDisc();
        const qint64 units =
            connection.single(ofRecording("SELECT UnitsNbr FROM Rec WHERE RecID = ")).toInteger();
        if (specs.units() >= last || specs.units() >= units) {
            answer = Answer::Ok;
            return;
        }
        const qint64 tracks = connection
                                  .single(QStringLiteral("SELECT COUNT(*) FROM Tracks WHERE RecID = %1 AND "
                                                         "Disc > %2")
                                              .arg(m_id)
                                              .arg(specs.units()))
                                  .toInteger();
        answer = m_session.messages().ask(
            {applicationTitle,
             tr("%1 tracks, or disc identifiers, belong to the discs %2 to %3.\n"
                "Do you want to remove them?\n\nNo keeps them, and the number of discs is %3.")
                 .arg(tracks)
                 .arg(specs.units() + 1)
                 .arg(last),
             {Answer::Yes, Answer::No, Answer::Cancel},
             Answer::Cancel});
        remove = answer == Answer::Yes;
        if (answer == Answer::No)
            specs.set("UnitsNbr", last);
    });
    return answer != Answer::Cancel;
}

void RecordingEditor::removeDiscsAbove(int units) {
    for (const char* statement : {"DELETE FROM Tracks WHERE RecID = %1 AND Disc > %2",
                                  "DELETE FROM DiscIds WHERE RecID = %1 AND DiscNbr > %2"})
        m_session.connection().execute(QString::fromLatin1(statement).arg(m_id).arg(units));
    const QStringList parts = m_read.keys();
    for (const QString& part : parts)
        if (part.contains(QStringLiteral(" FROM Tracks ")) || part.contains(QStringLiteral(" From DiscIds ")))
            remember(part);
}

QString RecordingEditor::discId(int disc) {
    QString result;
    const Recordset rows = Recordset::open(m_session.connection(), discIdStatement(disc));
    if (!rows.isEmpty())
        result = rows.value(0, QStringLiteral("DiscId")).toText().trimmed();
    remember(discIdStatement(disc));
    return result;
}

void RecordingEditor::storeTracks(int disc, const std::vector<Track>& tracks) {
    Recordset rows = Recordset::open(m_session.connection(), tracksStatement(disc));
    const int numberField = rows.fieldIndex(QStringLiteral("TrackNbr"));
    QHash<qint64, int> stored; // by number
    QSet<QString> lengths;     // catalogs of other makers may hold "4:30", which no other edit shall refuse
    for (int row = 0; row < rows.rowCount();) {
        lengths.insert(rows.value(row, QStringLiteral("TrackLen")).toText().trimmed());
        const qint64 number = rows.value(row, numberField).toInteger();
        if (number < 1 || number > qint64(tracks.size()) || stored.contains(number))
            rows.remove(row);
        else
            stored.insert(number, row++);
    }
    for (size_t i = 0; i < tracks.size(); ++i) {
        const qint64 number = qint64(i) + 1;
        const auto fit = [&](const QString& column, const QString& text) {
            try {
                return m_session.fields().fit(QStringLiteral("Tracks"), column, text);
            } catch (const Error& error) {
                throw Error(tr("Track %1: %2").arg(number).arg(error.reason()));
            }
        };
        const QString name = fit(QStringLiteral("TrackName"), tracks[i].name);
        QString length = tracks[i].length.trimmed();
        if (!lengths.contains(length))
            length = fit(QStringLiteral("TrackLen"), length);
        const Recordset::Assignments values{{QStringLiteral("RecID"), m_id},
                                            {QStringLiteral("Disc"), disc},
                                            {QStringLiteral("TrackNbr"), number},
                                            {QStringLiteral("TrackName"), name},
                                            {QStringLiteral("TrackLen"), length}};
        const auto row = stored.constFind(number);
        if (row == stored.constEnd())
            rows.add(values);
        else
            rows.update(*row, values);
    }
}

void RecordingEditor::storeDiscId(int disc, const QString& text) {
    const QString discId = m_session.fields().fit(QStringLiteral("DiscIds"), QStringLiteral("DiscId"), text);
    Recordset rows = Recordset::open(m_session.connection(), discIdStatement(disc));
    if (!rows.isEmpty())
        rows.update(0, {{QStringLiteral("DiscId"), discId}});
    else if (!discId.isEmpty())
        rows.add({{QStringLiteral("RecID"), m_id},
                  {QStringLiteral("DiscNbr"), disc},
                  {QStringLiteral("DiscId"), discId}});
}

bool RecordingEditor::applyTracks(int disc, const std::optional<std::vector<Track>>& tracks,
                                  const std::optional<QString>& discId) {
    QStringList parts;
    if (tracks)
        parts << tracksStatement(disc);
    if (discId)
        parts << discIdStatement(disc);
    return apply(parts, tr("Change the tracks of recording %1"), [&] {
        if (disc < 1 || disc > countDiscs())
            throw Error(tr("The recording has no disc %1.").arg(disc));
        if (tracks)
            storeTracks(disc, *tracks);
        if (discId)
            storeDiscId(disc, *discId);
    });
}

} // namespace tessaranth
