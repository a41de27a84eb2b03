// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Cleanup.h"

#include "store/AttachmentFiles.h"
#include "store/Guarded.h"
#include "store/Recordset.h"

#include <QCoreApplication>
#include <QFile>
#include <QSet>
#include <span>

namespace tessaranth {

namespace {

/// What a step does with the rows that its query finds.
enum class Remedy {
    DeleteRows,
    DeleteByWork,
    DeleteRowsAndDocuments,
    SetToNone,
    DeleteStrangers,
    DeleteDuplicates
};

struct Step {
    const char* progressText;
    const char* nothingText;
    const char* countText;
    Remedy remedy;
    const char* statement;
    const char* column; ///< for SetToNone: the column that names what does not exist
};

const Step steps[] = {
    {"Checking for orphan records : ", "No orphan records.", " orphan records cleaned.", Remedy::DeleteByWork,
     "SELECT CompOnRecPfr.* FROM CompOnRecPfr LEFT JOIN CompOnRec "
     "ON CompOnRecPfr.CompOnRecID = CompOnRec.CompOnRecID WHERE CompOnRec.CompOnRecID IS NULL",
     ""},
    {"Checking for bad records: ", "No bad records.", " bad records cleaned.", Remedy::DeleteStrangers,
     "SELECT * FROM CompOnRecPfr", ""},
    {"Cleaning duplicated performers: ", "No duplicate performers.", " duplicate performers cleaned.",
     Remedy::DeleteDuplicates, "SELECT CompOnRecID, PfrID, PersonageID FROM CompOnRecPfr", ""},
    {"Cleaning orphan tracks: ", "No orphan tracks.", " orphan tracks cleaned.", Remedy::DeleteRows,
     "SELECT Tracks.* "
     "FROM Tracks "
     "LEFT JOIN Rec "
     "ON Tracks.RecID = Rec.RecID "
     "WHERE Rec.RecID IS NULL",
     ""},
    {"Cleaning orphan works: ", "No orphan works.", " orphan works cleaned.", Remedy::DeleteRows,
     "SELECT CompOnRecPfr.* FROM (CompOnRecPfr INNER JOIN CompOnRec "
     "ON CompOnRecPfr.CompOnRecID = CompOnRec.CompOnRecID) LEFT JOIN Compositions "
     "ON CompOnRec.CompID = Compositions.CompID WHERE Compositions.CompID IS NULL",
     ""},
    {"Cleaning orphan mainworks: ", "No orphan mainworks.", " orphan mainworks cleaned.", Remedy::DeleteRows,
     "SELECT MainWorks.* FROM MainWorks LEFT JOIN Cps ON MainWorks.CpsID = Cps.CpsID WHERE Cps.CpsID IS NULL",
     ""},
    {"Fixing bad mainworks: ", "No bad mainworks.", " bad mainworks fixed.", Remedy::SetToNone,
     "SELECT Compositions.* FROM Compositions LEFT JOIN MainWorks "
     "ON Compositions.MainWorkID = MainWorks.MainWorkID "
     "WHERE Compositions.MainWorkID <> 0 AND MainWorks.MainWorkID IS NULL",
     "MainWorkID"},
    {"Cleaning orphan catalog genres: ", "No orphan catalog genres.", " orphan catalog genres cleaned.",
     Remedy::DeleteRows,
     "SELECT CpsGenres.* FROM CpsGenres LEFT JOIN Cps ON CpsGenres.CpsID = Cps.CpsID WHERE Cps.CpsID IS NULL",
     ""},
    {"Fixing bad catalog genres: ", "No bad catalog genres.", " bad catalog genres fixed.", Remedy::SetToNone,
     "SELECT Compositions.* FROM Compositions LEFT JOIN CpsGenres "
     "ON Compositions.CpsGenreID = CpsGenres.CpsGenreID "
     "WHERE Compositions.CpsGenreID <> 0 AND CpsGenres.CpsGenreID IS NULL",
     "CpsGenreID"},
    {"Cleaning orphan personages: ", "No orphan personages.", " orphan personages cleaned.",
     Remedy::DeleteRows,
     "SELECT Personages.* FROM Personages LEFT JOIN Compositions ON Personages.CompID = Compositions.CompID "
     "WHERE Compositions.CompID IS NULL",
     ""},
    {"Cleaning orphan documents: ", "No orphan documents.", " orphan documents cleaned.",
     Remedy::DeleteRowsAndDocuments,
     "SELECT Cards.* FROM Cards LEFT JOIN Compositions ON Cards.RelatedID = Compositions.CompID "
     "WHERE  RelatedCat LIKE 'Comp' AND (Compositions.CompID) IS NULL",
     ""},
};

/// One step at work on the open catalog.
class StepRun {
public:
    StepRun(Session& session, const Step& step, Progress& progress)
        : m_session(session), m_step(step), m_progress(progress),
          m_rows(Recordset::open(session.connection(), QString::fromLatin1(step.statement))) {}

    /// The number of rows found and mended.
    int run() {
        switch (m_step.remedy) {
        case Remedy::DeleteByWork:
            return deleteByWork();
        case Remedy::DeleteStrangers:
            return deleteStrangers();
        case Remedy::DeleteDuplicates:
            return deleteDuplicates();
        default:
            return mendRows();
        }
    }

private:
    int mendRows() {
        const int total = m_rows.rowCount();
        const QString column = QString::fromLatin1(m_step.column);
        // From the last to the first: removing a row then moves no other.
        for (int row = total - 1; row >= 0; --row) {
            if (m_step.remedy == Remedy::SetToNone) {
                m_rows.update(row, {{column, 0}});
            } else {
                if (m_step.remedy == Remedy::DeleteRowsAndDocuments)
                    removeDocument(m_rows.value(row, QStringLiteral("CardID")));
                m_rows.remove(row);
            }
            m_progress.step(total - row, total);
        }
        return total;
    }

    void removeDocument(const Value& id) {
        const AttachmentFiles files(m_session);
        if (files.path(Session::Folder::Documents, id))
            files.remove(Session::Folder::Documents, id.toInteger());
    }

    // A number in a catalog may be Null or a text, so rows are deleted by what SQLite itself knows them by,
    // never by a statement into which a cell was written.

    /// The performers of works on a recording that are there no more, counted by the work.
    int deleteByWork() {
        QSet<QString> works;
        for (int row = m_rows.rowCount() - 1; row >= 0; --row) {
            works.insert(m_rows.value(row, 0).toText());
            m_rows.remove(row);
        }
        return int(works.size());
    }

    /// Performers of a work who are not among the performers of the recording that holds it.
    int deleteStrangers() {
        Connection& connection = m_session.connection();
        QHash<QString, QString> recordingOf;
        Query works = connection.query(QStringLiteral("SELECT CompOnRecID, RecID FROM CompOnRec"));
        while (works.next())
            recordingOf.insert(works.text(0), works.text(1));
        QSet<std::pair<QString, QString>> performers;
        Query onRecordings = connection.query(QStringLiteral("SELECT RecID, PfrID FROM PfrOnRec"));
        while (onRecordings.next())
            performers.insert({onRecordings.text(0), onRecordings.text(1)});

        int found = 0;
        const int total = m_rows.rowCount();
        for (int row = total - 1; row >= 0; --row) {
            const QString recording = recordingOf.value(m_rows.value(row, 0).toText());
            if (!performers.contains({recording, m_rows.value(row, 1).toText()})) {
                ++found;
                m_rows.remove(row);
            }
            m_progress.step(total - row, total);
        }
        return found;
    }

    int deleteDuplicates() {
        int found = 0;
        QSet<QString> seen;
        for (int row = 0; row < m_rows.rowCount();) {
            QStringList cells;
            for (int field = 0; field < 3; ++field)
                cells << (m_rows.value(row, field).isNull() ? QStringLiteral("Null")
                                                            : m_rows.value(row, field).toText());
            const QString key = cells.join(u'\t');
            if (seen.contains(key)) {
                ++found;
                m_rows.remove(row);
            } else {
                seen.insert(key);
                ++row;
            }
            m_progress.step(row, m_rows.rowCount());
        }
        return found;
    }

    Session& m_session;
    const Step& m_step;
    Progress& m_progress;
    Recordset m_rows;
};

class Log {
public:
    explicit Log(const QString& path) : m_file(path) {
        m_open = m_file.open(QIODevice::Append | QIODevice::Text);
    }
    void line(const QString& text) {
        if (m_open) {
            m_file.write(text.toUtf8() + '\n');
            m_file.flush();
        }
    }

private:
    QFile m_file;
    bool m_open = false;
};

} // namespace

bool Cleanup::run(Progress& progress, const std::function<void(const StepResult&)>& stepDone) {
    Log log(m_session.applicationFile(QStringLiteral("Cleanup.log")));
    log.line(QString(54, u'-'));
    log.line(QStringLiteral("CLEANUP IS STARTED"));
    return guarded(m_session, [&] {
        for (const Step& step : steps) {
            if (progress.stopped())
                return false;
            StepResult result{QString::fromLatin1(step.progressText), QString::fromLatin1(step.nothingText),
                              0};
            progress.stage(result.progressText);
            Transaction transaction(m_session.connection(),
                                    QCoreApplication::translate("Cleanup", "Repair the catalog: %1")
                                        .arg(QString::fromLatin1(step.countText).trimmed()));
            StepRun run(m_session, step, progress);
            result.count = run.run();
            transaction.commit();
            progress.percentage(100);
            if (result.count > 0)
                result.resultText = QString::number(result.count) + QString::fromLatin1(step.countText);
            log.line(result.progressText + result.resultText);
            if (stepDone)
                stepDone(result);
        }
        return true;
    });
}

} // namespace tessaranth
