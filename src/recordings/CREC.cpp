// SPDX-License-Identifier: GPL-3.0-or-later
#include "recordings/CREC.h"

#include "store/AttachmentFiles.h"

namespace tessaranth {

bool CREC::CaricaDati(qint64 recId) {
    RecId = 0;
    for (QString* text :
         {&Title, &ProdNbr, &Rating, &Notes, &LabelName, &SupportType, &SupportIcon, &SourceType, &LabelFile})
        text->clear();
    try {
        Connection& connection = m_session.connection();
        Query run = connection.query(
            QStringLiteral(
                "SELECT Rec.RecID, Rec.RecTitle, Rec.ProdNbr, Rec.Rating, Rec.Notes, Labels.LabelName, "
                "Supports.SupportType, Supports.IconName, Sources.SourceType FROM Supports RIGHT JOIN "
                "(Sources RIGHT JOIN (Labels RIGHT JOIN Rec ON Labels.LabelID = Rec.LabelID) ON "
                "Sources.SourceID = Rec.SourceID) ON Supports.SupportID = Rec.SupportID WHERE Rec.RecID = ") +
            QString::number(recId));
        if (!run.next())
            return false;
        RecId = run.integer(0);
        int column = 0;
        for (QString* text :
             {&Title, &ProdNbr, &Rating, &Notes, &LabelName, &SupportType, &SupportIcon, &SourceType})
            *text = run.text(++column).trimmed();
        const qint64 label =
            connection.single(QStringLiteral("SELECT LabelID FROM Rec WHERE RecID = %1").arg(recId))
                .toInteger();
        if (label != 0)
            LabelFile = AttachmentFiles(m_session).path(Session::Folder::Labels, label);
        return true;
    } catch (const Error& error) {
        m_session.messages().warning(applicationTitle, error.reason());
        return false;
    }
}

} // namespace tessaranth
