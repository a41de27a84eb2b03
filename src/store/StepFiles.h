// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/HistoryFile.h"

#include <QByteArray>
#include <QStringList>

namespace tessaranth {

class Session;

/// The files of pictures, documents and logos within operations. Rows and files go together: a file is
/// written, replaced or removed inside a transaction and with it, and where the history is kept, what was
/// there before goes into a folder of the history beside it, by a rename.
///
/// A step's file stands in three places at most: in its data folder, and in the history's folder as it was
/// before the step and as it was after it. What the step left is done when "before" is put away and "after"
/// stands in the data folder; undone is the reverse. Each way can be finished where it was cut off.
class StepFiles {
public:
    explicit StepFiles(Session& session) : m_session(session) {}

    // Within a transaction, whose failure takes them back. Both throw FileError; the data folder is made when
    // it is missing.
    void write(int folder, qint64 id, const QByteArray& bytes);
    void remove(int folder, qint64 id); ///< one that is not there counts as removed

    const std::vector<StepFile>& pending() const { return m_pending; }
    qint64 pendingBytes() const; ///< of what the history will keep of them
    /// Asked, before the first file, for the number of the step that the open transaction becomes.
    void setNumbering(std::function<qint64()> stepNumber) { m_stepNumber = std::move(stepNumber); }
    /// The catalog has its rows: now the files follow. What was there before goes for good unless it is kept.
    void committed(bool isKept);
    void cancelled(); ///< it has not: as before

    // What the history's steps need.
    void setHistory(qint64 history) { m_history = history; }
    void finishDone(const std::vector<StepFile>& files);
    void finishUndone(const std::vector<StepFile>& files);
    void forget(const std::vector<StepFile>& dropped);
    /// Removes every file that a history of this catalog kept but those of these steps.
    void forgetAllBut(const std::vector<HistoryStep>& steps);
    /// The first file that a way back, or forth, would need and that is there no more; empty when all are.
    QString missing(const std::vector<StepFile>& files, bool back) const;
    /// The things whose files these are, and the cards they belong to.
    void announce(const std::vector<StepFile>& files);
    /// Files that could not be moved since the last call.
    QStringList takeStuck() { return std::exchange(m_stuck, {}); }

    static const QString historyFolder;              ///< within each data folder
    static QString folderName(const StepFile& file); ///< "Images"

private:
    StepFile next(int folder, qint64 id) const;
    QString path(const StepFile& file) const;
    QString kept(const StepFile& file, const char* side) const;
    QString keptName(const StepFile& file) const;
    void move(const QString& from, const QString& to);

    Session& m_session;
    std::vector<StepFile> m_pending;
    QStringList m_stuck;
    qint64 m_history = 0;
    std::function<qint64()> m_stepNumber;
};

} // namespace tessaranth
