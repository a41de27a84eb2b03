// SPDX-License-Identifier: GPL-3.0-or-later
#include "recordings/RecordingContents.h"

#include "items/Person.h"
#include "store/AttachmentFiles.h"
#include "store/Guarded.h"
#include "store/Recordset.h"
#include "works/CWKS.h"

#include <QDateTime>
#include <QFileInfo>
#include <QHash>
#include <QLocale>

namespace tessaranth {

namespace {

QString s(const char* text) { return QString::fromLatin1(text); }
const QString separator = QStringLiteral(" / ");

QString asStored(const Value& value) { return value.toText().trimmed(); }

QString asTime(const Value& value) {
    const QString text = asStored(value);
    const QDateTime time = QDateTime::fromString(text, s("yyyy-MM-dd hh:mm:ss"));
    return time.isValid() ? QLocale().toString(time, QLocale::ShortFormat) : text;
}

struct SpecColumn {
    const char* label;
    const char* column;
    QString (*text)(const Value& value) = asStored;
};
const SpecColumn specColumns[] = {
    {"LABEL:", "LabelName"}, {"PROD. #:", "ProdNbr"},       {"SUPPORT:", "SupportType"},
    {"BARCODE:", "Barcode"}, {"LOCAT. #:", "LocationCode"}, {"SOURCE:", "SourceType"},
    {"UNITS:", "UnitsNbr"},  {"SPARS:", "Spars"},           {"REL. DATE:", "RelDate"},
    {"PRICE:", "Price"},     {"RATING:", "Rating"},         {"REFERENCE:", "RefRec", nullptr},
    {"NOTES:", "Notes"},     {"ADDED:", "AddDate", asTime}, {"MODIFIED:", "ModDate", asTime}};

/// Seconds of a track length "mm:ss"; 0 for anything else.
int secondsOf(const QString& length) {
    const QStringList parts = length.split(u':');
    return parts.size() == 2 ? parts[0].toInt() * 60 + parts[1].toInt() : 0;
}

QString durationText(int seconds) {
    if (seconds == 0)
        return {};
    const QString rest =
        s("%1:%2").arg(seconds / 60 % 60, 2, 10, QChar(u'0')).arg(seconds % 60, 2, 10, QChar(u'0'));
    return seconds < 3600 ? rest : QString::number(seconds / 3600) + u':' + rest;
}

} // namespace

bool RecordingContents::LoadRecSpecs(Specs& specs) {
    return guarded(m_session, [&] {
        const Recordset row = Recordset::open(
            m_session.connection(),
            s("SELECT Rec.RecID, Rec.RecTitle, Rec.ProdNbr, Rec.Rating, Rec.Notes, Rec.Barcode, "
              "Rec.LocationCode, Rec.UnitsNbr, Rec.Spars, Rec.RelDate, Rec.Price, Rec.RefRec, Rec.AddDate, "
              "Rec.ModDate, Rec.LabelID, Labels.LabelName, Supports.SupportType, Supports.IconName, "
              "Sources.SourceType FROM Supports RIGHT JOIN (Sources RIGHT JOIN (Labels RIGHT JOIN Rec ON "
              "Labels.LabelID = Rec.LabelID) ON Sources.SourceID = Rec.SourceID) ON Supports.SupportID = "
              "Rec.SupportID WHERE Rec.RecID = ") +
                QString::number(m_id));
        Specs found;
        for (const SpecColumn& column : specColumns) {
            CardLine line{s(column.label), {}, false};
            if (!row.isEmpty()) {
                const Value& value = row.value(0, s(column.column));
                if (column.text)
                    line.value = column.text(value);
                else
                    line.heart = value.toBool();
            }
            found.lines.push_back(line);
        }
        if (!row.isEmpty()) {
            found.carrierIcon = row.value(0, s("IconName")).toText();
            found.labelName = asStored(row.value(0, s("LabelName")));
            const AttachmentFiles logos(m_session);
            const qint64 label = row.value(0, s("LabelID")).toInteger();
            if (logos.exists(Session::Folder::Labels, label))
                found.logoFile = logos.path(Session::Folder::Labels, label);
        }
        specs = std::move(found);
    });
}

bool RecordingContents::LoadRecArtists(Artists& artists) {
    return guarded(m_session, [&] {
        Artists found;
        found.list = ItemList({{s("Name")}, {s("Year")}});
        Query composers = m_session.connection().query(
            s("SELECT Cps.CpsID, Cps.CpsLname, Cps.CpsFname, Cps.CpsY, CpsOnRec.RecID FROM Cps INNER JOIN "
              "CpsOnRec ON Cps.CpsID = CpsOnRec.CpsID WHERE CpsOnRec.RecID = ") +
            QString::number(m_id));
        for (; composers.next(); ++found.composers)
            found.list.addRow(
                composers.integer(0), s("c"),
                {personName(composers.text(1), composers.text(2)), composers.text(3).trimmed()});
        Query performers = m_session.connection().query(
            s("SELECT Pfr.PfrID, Pfr.PfrLname, Pfr.PfrFname, PfrOnRec.RecID FROM Pfr INNER JOIN PfrOnRec ON "
              "Pfr.PfrID = PfrOnRec.PfrID WHERE PfrOnRec.RecID = ") +
            QString::number(m_id) + s(" ORDER BY PfrOnRec.Pos, Pfr.PfrLname"));
        for (; performers.next(); ++found.performers)
            found.list.addRow(performers.integer(0), s("p"),
                              {personName(performers.text(1), performers.text(2))});
        artists = std::move(found);
    });
}

// Whoever sings two roles is one performer here.
QString RecordingContents::performersOf(qint64 placedWork) {
    QStringList names;
    Query run = m_session.connection().query(
        s("SELECT Pfr.PfrLname, Pfr.PfrFname FROM (Pfr INNER JOIN CompOnRecPfr ON Pfr.PfrID = "
          "CompOnRecPfr.PfrID) INNER JOIN PfrOnRec ON Pfr.PfrID = PfrOnRec.PfrID WHERE "
          "CompOnRecPfr.CompOnRecID = ") +
        QString::number(placedWork) + s(" AND PfrOnRec.RecID = ") + QString::number(m_id) +
        s(" ORDER BY PfrOnRec.Pos"));
    while (run.next())
        if (const QString name = (run.text(1).trimmed() + u' ' + run.text(0).trimmed()).trimmed();
            !names.contains(name))
            names.push_back(name);
    return names.join(separator);
}

bool RecordingContents::LoadRecContents(Works& works) {
    return guarded(m_session, [&] {
        Works found;
        found.list = ItemList({{s("Nbr"), true}, {s("Composer")}, {s("Title")}, {s("Performers")}});
        CWKS manager(m_session);
        QHash<qint64, QString> acronyms;
        Query run = m_session.connection().query(
            s("SELECT CompOnRec.Pos,CompOnRec.CompOnRecID, CompOnRec.ExtraitName, Cps.CpsID, Cps.CpsLname, "
              "Cps.CpsFname, Cps.CpsY, Compositions.CompID, Compositions.CompTitle, "
              "Compositions.CompSubTitle, Compositions.CompNbr From Cps INNER JOIN (Compositions INNER JOIN "
              "CompOnRec ON Compositions.CompID = CompOnRec.CompID) ON Cps.CpsId = CompOnRec.CpsID WHERE "
              "CompOnRec.RecID = ") +
            QString::number(m_id) + s(" ORDER BY CompOnRec.Pos"));
        while (run.next()) {
            const qint64 composer = run.integer(3);
            if (!acronyms.contains(composer))
                acronyms.insert(composer, manager.acronym(composer));
            QString title = run.text(8).trimmed();
            const QString number = CWKS::numberText(acronyms.value(composer), run.text(10).trimmed());
            if (!number.isEmpty())
                title += s(", ") + number;
            if (const QString excerpt = run.text(2).trimmed(); !excerpt.isEmpty())
                title += s(" (") + excerpt + u')';
            found.list.addRow(run.integer(7), s("Comp"),
                              {QString::number(run.integer(0)), personName(run.text(4), run.text(5)), title,
                               performersOf(run.integer(1))});
        }
        QStringList names;
        Query all = m_session.connection().query(
            s("SELECT Pfr.PfrLname FROM Pfr INNER JOIN PfrOnRec ON Pfr.PfrID = PfrOnRec.PfrID WHERE "
              "PfrOnRec.RecID = ") +
            QString::number(m_id) + s(" ORDER BY Pos, PfrLname"));
        while (all.next())
            names.push_back(all.text(0).trimmed());
        found.performers = names.join(separator);
        works = std::move(found);
    });
}

bool RecordingContents::LoadRecTracks(Tracks& tracks) {
    return guarded(m_session, [&] {
        const Recordset rows = Recordset::open(m_session.connection(),
                                               s("SELECT * FROM Tracks WHERE RecID = ") +
                                                   QString::number(m_id) + s(" ORDER BY Disc, TrackNbr"));
        const int disc = rows.fieldIndex(s("Disc")), number = rows.fieldIndex(s("TrackNbr")),
                  name = rows.fieldIndex(s("TrackName")), length = rows.fieldIndex(s("TrackLen"));
        Tracks found;
        found.list = ItemList({{s("Nbr"), true}, {s("Title")}, {s("Length"), true}});
        int heading = -1;
        int seconds = 0;
        const auto closeDisc = [&] {
            if (heading >= 0)
                found.list.setText(heading, 2, durationText(seconds));
            seconds = 0;
        };
        for (int row = 0; row < rows.rowCount(); ++row) {
            if (row == 0 || rows.value(row, disc).toInteger() != rows.value(row - 1, disc).toInteger()) {
                closeDisc();
                heading = found.list.addRow(
                    0, s("Disc"),
                    {QString(), s("DISC ") + QString::number(rows.value(row, disc).toInteger())});
                found.list.setBold(heading, true);
                ++found.discs;
            }
            const QString time = asStored(rows.value(row, length));
            seconds += secondsOf(time);
            found.list.addRow(rows.value(row, s("TrackID")).toInteger(), s("Track"),
                              {QString::number(rows.value(row, number).toInteger()),
                               asStored(rows.value(row, name)), time});
            ++found.count;
        }
        closeDisc();
        tracks = std::move(found);
    });
}

} // namespace tessaranth
