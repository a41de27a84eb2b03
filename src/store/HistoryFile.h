// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Errors.h"
#include "store/ChangeLog.h"

#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace tessaranth {

/// A file that is no history, or none that could be read to its end.
class ForeignHistory : public FileError {
public:
    using FileError::FileError;
};

/// One operation as the history keeps it.
struct HistoryStep {
    qint64 number = 0; ///< ascending; a number is never given twice
    QString at;        ///< local time, "yyyy-MM-dd HH:mm:ss"
    QString words;     ///< "Delete recording Tosca"
    qint64 rows = 0;
    qint64 cards = 0; ///< composers, performers, recordings and custom cards it concerned
    qint64 bytes = 0; ///< that it takes, files included
    bool undone = false;
};

/// A file of a data folder that a step brought, replaced or took away.
struct StepFile {
    qint64 step = 0;
    qint64 number = 0; ///< within the step
    int folder = 0;    ///< Session::Folder
    QString name;
    bool before = false; ///< there was one before the step,
    bool after = false;  ///< and there is one after it
};

/// The side file of a catalog: its steps with their rows, and the states through which the catalog went, each
/// known by the token that stands in the catalog too. A state knows the step that was the last one done.
/// Failing calls throw SqlError, opening FileError as well.
class HistoryFile {
public:
    /// How much is kept; what is older goes first.
    struct Limits {
        qint64 steps = 500;
        qint64 bytes = 256LL * 1024 * 1024;
    };

    /// Opens the file or makes it. Throws ForeignHistory where it is no history or damaged, FileError where
    /// it is in use or cannot be written.
    explicit HistoryFile(const QString& path);
    ~HistoryFile();

    /// Goes to the state of a catalog: what was written later never came about. False for an unknown one.
    bool goTo(qint64 token);
    /// Forgets everything; the state of the catalog is all there is.
    void start(qint64 token);
    /// Tells this history's files from those of others.
    qint64 id() const { return m_id; }
    qint64 position() const { return m_position; } ///< number of the last step done; 0 before the first

    // One step, in this order. Rows are written as they come, so that a step of any size takes no memory.
    qint64 beginStep(); ///< its number
    void addRow(qint64 number, const RowChange& change);
    void cutBack(qint64 number);
    void addFile(const StepFile& file);
    /// Writes the step for good. What had been undone is dropped, as are the oldest steps beyond the limits.
    void commitStep(qint64 token, const HistoryStep& step, const Limits& limits);
    void abandonStep(); ///< before it was committed
    void dropStep();    ///< after it, since the catalog could not follow

    /// The catalog goes to another state without a new step: an undo or a redo.
    void move(qint64 position, qint64 token);
    void moveBack(qint64 position); ///< it could not

    std::vector<HistoryStep> steps(); ///< oldest first; those undone are the last ones
    std::optional<HistoryStep> step(qint64 number);
    /// Calls `use` for every row of a step, from the first or from the last; ends early when it answers
    /// false.
    void eachRow(qint64 step, bool fromTheLast, const std::function<bool(const RowChange&)>& use);
    std::vector<StepFile> files(qint64 step);
    /// Files of steps dropped since the last call: nobody needs what is kept of them.
    std::vector<StepFile> takeDropped();

private:
    struct Impl;
    void define();
    void run(const char* statement, std::initializer_list<qint64> numbers = {});
    void dropSteps(const char* condition, std::initializer_list<qint64> numbers);
    void addState(qint64 token);
    void prune(const Limits& limits);

    std::unique_ptr<Impl> m_impl;
    std::vector<StepFile> m_dropped;
    qint64 m_id = 0;
    qint64 m_position = 0;
    qint64 m_step = 0;
};

} // namespace tessaranth
