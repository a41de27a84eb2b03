// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/CardRecordings.h"

#include "store/Guarded.h"

namespace tessaranth {

namespace {

/// `statement` reads RecID, RecTitle, Rating, ProdNbr, Notes, LabelName, SupportType, IconName, SourceType.
bool readRows(Session& session, const QString& statement, ItemList& list) {
    return guarded(session, [&] {
        ItemList found({{QStringLiteral("Title")},
                        {QStringLiteral("Label")},
                        {QStringLiteral("Prod. Nbr")},
                        {QStringLiteral("Support")},
                        {QStringLiteral("Source")},
                        {QStringLiteral("Rating")},
                        {QStringLiteral("Notes")}});
        Query run = session.connection().query(statement);
        while (run.next()) {
            const int row = found.addRow(run.integer(0), QStringLiteral("Recordings"),
                                         {run.text(1).trimmed(), run.text(5).trimmed(), run.text(3).trimmed(),
                                          run.text(6).trimmed(), run.text(8).trimmed(), run.text(2).trimmed(),
                                          run.text(4).simplified()});
            found.setCellIcon(row, 0, run.text(7));
        }
        list = std::move(found);
    });
}

} // namespace

bool LoadRecordings(Session& session, const QString& code, qint64 person, ItemList& list) {
    QString statement = QStringLiteral(
        "SELECT Rec.RecID, Rec.RecTitle, Rec.Rating, Rec.ProdNbr, Rec.Notes, Labels.LabelName, "
        "Supports.SupportType, Supports.IconName, Sources.SourceType, xxxOnRec.xxxID FROM (Supports "
        "RIGHT JOIN (Sources RIGHT JOIN (Labels RIGHT JOIN Rec ON Labels.LabelID = Rec.LabelID) ON "
        "Sources.SourceID = Rec.SourceID) ON Supports.SupportID = Rec.SupportID) INNER JOIN xxxOnRec ON "
        "Rec.RecID = xxxOnRec.RecID WHERE xxxOnRec.xxxID = ");
    statement.replace(QStringLiteral("xxx"), code);
    return readRows(session, statement + QString::number(person) + QStringLiteral(" ORDER BY Rec.RecTitle"),
                    list);
}

bool readWorkRecordings(Session& session, qint64 work, ItemList& list) {
    return readRows(
        session,
        QStringLiteral(
            "SELECT DISTINCT Rec.RecID, Rec.RecTitle, Rec.Rating, Rec.ProdNbr, Rec.Notes, "
            "Labels.LabelName, Supports.SupportType, Supports.IconName, Sources.SourceType, "
            "CompOnRec.CompID FROM (Supports RIGHT JOIN (Sources RIGHT JOIN (Labels RIGHT JOIN Rec ON "
            "Labels.LabelID = Rec.LabelID) ON Sources.SourceID = Rec.SourceID) ON Supports.SupportID = "
            "Rec.SupportID) INNER JOIN CompOnRec ON Rec.RecID = CompOnRec.RecID WHERE CompOnRec.CompID = ") +
            QString::number(work) + QStringLiteral(" ORDER BY Rec.RecTitle"),
        list);
}

} // namespace tessaranth
