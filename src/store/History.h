// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/HistoryFile.h"
#include "store/StepFiles.h"

namespace tessaranth {

class Session;
struct ColumnInfo;
class Value;

/// What an operation did to one row, in the user's words where there are any.
struct HistoryRow {
    struct Field {
        QString name, before, after; ///< a number that stands for a thing is followed by the thing's name
    };
    RowChange::Kind kind = RowChange::Kind::Changed;
    QString table;
    qint64 key = 0; ///< 0 for a link
    std::vector<Field> fields;
};

/// Everything that was done to the catalog, to be taken back and done again. It stands in a side file beside
/// the catalog, in step with it by a token that each commit writes into both, the history first: whatever a
/// kill leaves, the catalog's token says which steps came about.
///
/// Nothing that goes wrong with the history keeps an operation from succeeding; it is then said, once, that
/// what was done cannot be taken back.
class History final : public ChangeKeeper {
public:
    explicit History(Session& session);
    ~History() override;

    /// Opens the side file of the session's catalog, which must be up to date, and finishes what was cut off.
    /// The first step makes the file: a catalog that is only looked at gets none.
    void open();

    std::vector<HistoryStep> steps(); ///< oldest first; those undone are the last ones
    /// Calls `use` for every row of a step, from the first; ends early when it answers false.
    void eachRow(qint64 step, const std::function<bool(const HistoryRow&)>& use);
    std::vector<StepFile> files(qint64 step);
    /// The words of what would be undone or redone; empty where there is nothing.
    QString undoWords();
    QString redoWords();

    // One transaction each. Refused, with a message, where rows or files are no longer as the step left them;
    // nothing is changed then.
    bool undo();
    bool redo();
    /// Undoes or redoes one by one until this step is the last one done (0: until all are undone).
    bool goTo(qint64 step);

    StepFiles& stepFiles() { return m_files; }

    static QString pathFor(const QString& catalog); ///< "other.tsb" has "other.tsh"

private:
    void keep(qint64 number, const RowChange& change) noexcept override;
    void cutBack(qint64 number) noexcept override;
    std::optional<qint64> prepare(const Ending& ending) override;
    void committed() noexcept override;
    void cancelled() noexcept override;

    bool isRecording() { return (m_file || m_isNew) && !m_replaying && m_failure.isEmpty(); }
    qint64 stepNumber();
    template<typename Job>
    void recording(const Job& job) noexcept;
    void commitStep(qint64 token, const Ending& ending);
    void breakOff(qint64 token);
    void openFile();
    qint64 catalogToken();
    std::optional<HistoryStep> next(bool back);
    void replay(const HistoryStep& step, bool back);
    bool replayNext(bool back);
    HistoryRow described(const RowChange& change);
    QString described(const RecordedTable& table, const ColumnInfo& column, const QHash<QString, Value>& row);

    Session& m_session;
    StepFiles m_files;
    std::unique_ptr<HistoryFile> m_file;
    HistoryFile::Limits m_limits;
    bool m_isNew = false;  ///< there is no side file yet: the first step makes it
    qint64 m_token = 0;    ///< of the catalog as it stands,
    qint64 m_next = 0;     ///< and as it will
    qint64 m_step = 0;     ///< being recorded
    qint64 m_bytes = 0;    ///< of it so far
    qint64 m_previous = 0; ///< position before an undo or redo,
    qint64 m_target = 0;   ///< and after it
    bool m_replaying = false;
    bool m_moved = false;  ///< the side file went ahead of a catalog that is not committed yet
    bool m_isKept = false; ///< the step being committed is in the side file
    bool m_said = false;   ///< that the history cannot be kept
    QString m_failure;     ///< why the step being recorded cannot be kept
    QString m_lost;        ///< to be said after the commit
};

} // namespace tessaranth
