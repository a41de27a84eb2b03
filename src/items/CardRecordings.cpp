// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/CardRecordings.h"

#include "items/Guarded.h"

namespace tessaranth {

bool readCardRecordings(Session& session, const QString& code, qint64 person, ItemList& list) {
    return guarded(session, [&] {
        ItemList found({{QStringLiteral("Title")},
                        {QStringLiteral("Label")},
                        {QStringLiteral("Prod. Nbr")},
                        {QStringLiteral("Support")},
                        {QStringLiteral("Source")},
                        {QStringLiteral("Rating")},
                        {QStringLiteral("Notes")}});
        QString statement = QStringLiteral(
            "SELECT Rec.RecID, Rec.RecTitle, Rec.Rating, Rec.ProdNbr, Rec.Notes, Labels.LabelName, "
            "Supports.SupportType, Supports.IconName, Sources.SourceType, xxxOnRec.xxxID FROM (Supports "
            "RIGHT JOIN (Sources RIGHT JOIN (Labels RIGHT JOIN Rec ON Labels.LabelID = Rec.LabelID) ON "
            "Sources.SourceID = Rec.SourceID) ON Supports.SupportID = Rec.SupportID) INNER JOIN xxxOnRec ON "
            "Rec.RecID = xxxOnRec.RecID WHERE xxxOnRec.xxxID = ");
        statement.replace(QStringLiteral("xxx"), code);
        Query run = session.connection().query(statement + QString::number(person) +
                                               QStringLiteral(" ORDER BY Rec.RecTitle"));
        while (run.next()) {
            const int row = found.addRow(run.integer(0), QStringLiteral("Recordings"),
                                         {run.text(1).trimmed(), run.text(5).trimmed(), run.text(3).trimmed(),
                                          run.text(6).trimmed(), run.text(8).trimmed(), run.text(2).trimmed(),
                                          run.text(4).trimmed()});
            found.setCellIcon(row, 0, run.text(7));
        }
        list = std::move(found);
    });
}

} // namespace tessaranth
