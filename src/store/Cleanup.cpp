// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Cleanup.h"

#include "store/Recordset.h"
#include "store/Session.h"

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
     "SELECT DISTINCT CompOnRec.CompOnRecID, CompOnRecPfr.CompOnRecID FROM CompOnRecPfr LEFT JOIN CompOnRec "
     "ON CompOnRecPfr.CompOnRecID = CompOnRec.CompOnRecID WHERE CompOnRec.CompOnRecID IS NULL",
     ""},
    {"Checking for bad records: ", "No bad records.", " bad records cleaned.", Remedy::DeleteStrangers,
     "SELECT * FROM CompOnRecPfr", ""},
    {"Cleaning duplicated performers: ", "No duplicate performers.", " duplicate performers cleaned.",
     Remedy::DeleteDuplicates,
     "SELECT CompOnRecID, PfrID, PersonageID FROM CompOnRecPfr "
     "GROUP BY CompOnRecID, PfrID, PersonageID HAVING COUNT(*)>1",
     ""},
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
    StepRun(Session& session, const Step& step, bool change, Progress& progress)
        : m_session(session), m_step(step), m_change(change), m_progress(progress),
          m_rows(Recordset::open(session.connection(), QString::fromLatin1(step.statement))) {}

    /// The number of rows found (and, with `change`, mended).
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

    const QStringList& documents() const { return m_documents; }

private:
    int mendRows() {
        const int total = m_rows.rowCount();
        const QString column = QString::fromLatin1(m_step.column);
        // From the last to the first: removing a row then moves no other.
        for (int row = total - 1; m_change && row >= 0; --row) {
            if (m_step.remedy == Remedy::SetToNone) {
                m_rows.update(row, {{column, 0}});
            } else {
                if (m_step.remedy == Remedy::DeleteRowsAndDocuments)
                    m_documents.push_back(m_rows.value(row, QStringLiteral("CardID")).toText());
                m_rows.remove(row);
            }
            m_progress.step(total - row, total);
        }
        return total;
    }

    /// The performers of works on a recording that are there no more, counted by the work.
    int deleteByWork() {
        constexpr int lostWork = 1;
        for (int row = 0; m_change && row < m_rows.rowCount(); ++row)
            m_session.connection().execute(QStringLiteral("DELETE FROM CompOnRecPfr WHERE CompOnRecID = ") +
                                           m_rows.value(row, lostWork).toText());
        return m_rows.rowCount();
    }

    /// Performers of a work who are not among the performers of the recording that holds it.
    int deleteStrangers() {
        Connection& connection = m_session.connection();
        QHash<qint64, qint64> recordingOf;
        Query works = connection.query(QStringLiteral("SELECT CompOnRecID, RecID FROM CompOnRec"));
        while (works.next())
            recordingOf.insert(works.integer(0), works.integer(1));
        QSet<std::pair<qint64, qint64>> performers;
        Query onRecordings = connection.query(QStringLiteral("SELECT RecID, PfrID FROM PfrOnRec"));
        while (onRecordings.next())
            performers.insert({onRecordings.integer(0), onRecordings.integer(1)});

        int found = 0;
        const int total = m_rows.rowCount();
        for (int row = 0; row < total; ++row) {
            const qint64 work = m_rows.value(row, 0).toInteger();
            const qint64 performer = m_rows.value(row, 1).toInteger();
            if (!performers.contains({recordingOf.value(work), performer})) {
                ++found;
                if (m_change)
                    connection.execute(
                        QStringLiteral("DELETE FROM CompOnRecPfr WHERE CompOnRecID = %1 AND PfrID = %2")
                            .arg(work)
                            .arg(performer));
            }
            m_progress.step(row + 1, total);
        }
        return found;
    }

    int deleteDuplicates() {
        int found = 0;
        const int total = m_rows.rowCount();
        for (int group = 0; group < total; ++group) {
            QStringList conditions;
            for (int field = 0; field < 3; ++field) {
                const QString& name = m_rows.fields()[size_t(field)].name;
                const Value& value = m_rows.value(group, field);
                conditions += value.isNull() ? QStringLiteral("IsNull(%1)").arg(name)
                                             : name + QStringLiteral(" = ") + value.toText();
            }
            Recordset same =
                Recordset::open(m_session.connection(), QStringLiteral("SELECT * FROM CompOnRecPfr WHERE ") +
                                                            conditions.join(QStringLiteral(" AND ")));
            for (int row = same.rowCount() - 1; row > 0; --row) {
                ++found;
                if (m_change)
                    same.remove(row);
            }
            m_progress.step(group + 1, total);
        }
        return found;
    }

    Session& m_session;
    const Step& m_step;
    bool m_change;
    Progress& m_progress;
    Recordset m_rows;
    QStringList m_documents;
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
    return each(true, progress, [&](const StepResult& result) {
        log.line(result.progressText + result.resultText);
        if (stepDone)
            stepDone(result);
    });
}

bool Cleanup::inspect(Progress& progress, const std::function<void(const StepResult&)>& stepDone) {
    return each(false, progress, stepDone);
}

bool Cleanup::each(bool change, Progress& progress, const std::function<void(const StepResult&)>& stepDone) {
    try {
        for (const Step& step : steps) {
            if (progress.stopped())
                return false;
            StepResult result{QString::fromLatin1(step.progressText), QString::fromLatin1(step.nothingText),
                              0};
            progress.stage(result.progressText);
            std::unique_ptr<Transaction> transaction;
            if (change)
                transaction = std::make_unique<Transaction>(
                    m_session.connection(), QCoreApplication::translate("Cleanup", "Repair the catalog: %1")
                                                .arg(QString::fromLatin1(step.countText).trimmed()));
            StepRun run(m_session, step, change, progress);
            result.count = run.run();
            if (transaction)
                transaction->commit();
            // After the rows: a file without a row is found by the next alignment, a row without a file is
            // a loss shown to the user.
            for (const QString& document : run.documents())
                QFile::remove(m_session.dataFolder(Session::Folder::Documents) + u'/' + document);
            progress.percentage(100);
            if (result.count > 0)
                result.resultText = QString::number(result.count) + QString::fromLatin1(step.countText);
            stepDone(result);
        }
        return true;
    } catch (const Error& error) {
        m_session.messages().warning(QStringLiteral("Cleanup"), error.reason());
        return false;
    }
}

} // namespace tessaranth
