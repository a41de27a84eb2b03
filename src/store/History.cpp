// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/History.h"

#include "platform/Errors.h"
#include "store/RowReplay.h"
#include "store/Session.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QScopedValueRollback>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("History", text); }

constexpr qint64 megabyte = 1024 * 1024;
constexpr qint64 bytesOfARow = 40; ///< what a row takes beside its values

qint64 newToken() { return qint64(QRandomGenerator::system()->generate64()); }

} // namespace

History::History(Session& session) : m_session(session), m_files(session) {
    m_files.setNumbering([this] {
        recording([this] { stepNumber(); });
        return m_step;
    });
}

History::~History() = default;

QString History::pathFor(const QString& catalog) {
    const QFileInfo file(catalog);
    return file.path() + u'/' + file.completeBaseName() + QStringLiteral(".tsh");
}

// ---- opening and ending

// A file that is no history is somebody's, or what is left of one: it is set aside, never written over.
void History::openFile() {
    const QString path = pathFor(m_session.databasePath());
    const QString aside = path + QStringLiteral(".old");
    try {
        m_file = std::make_unique<HistoryFile>(path);
    } catch (const ForeignHistory& error) {
        QFile::remove(aside);
        if (!QFile::rename(path, aside))
            throw;
        for (const char* companion : {"-wal", "-shm"})
            QFile::remove(path + QLatin1String(companion));
        m_file = std::make_unique<HistoryFile>(path);
        m_session.messages().information(
            applicationTitle,
            tr("The history could not be read, so what was done before can no longer be taken back. The file "
               "was kept as %1.\n%2")
                .arg(QDir::toNativeSeparators(aside), error.reason()));
    }
}

qint64 History::catalogToken() {
    return m_session.connection().single(QStringLiteral("SELECT Token FROM TsrHistory")).toInteger();
}

void History::open() {
    const Configuration& configuration = m_session.configuration();
    const QString section = QStringLiteral("History");
    m_limits.steps = qMax(1, configuration.number(section, QStringLiteral("Steps"), 500));
    m_limits.bytes = qMax(0, configuration.number(section, QStringLiteral("Megabytes"), 256)) * megabyte;
    try {
        m_token = catalogToken();
        m_isNew = !QFileInfo::exists(pathFor(m_session.databasePath()));
        if (m_isNew) {
            m_files.forgetAllBut({});
            return;
        }
        openFile();
        m_files.setHistory(m_file->id());
        if (m_file->goTo(m_token)) {
            m_files.finishDone(m_file->files(m_file->position()));
            for (const HistoryStep& step : m_file->steps())
                if (step.undone) {
                    m_files.finishUndone(m_file->files(step.number));
                    break;
                }
            m_file->takeDropped();
            m_files.forgetAllBut(m_file->steps());
            return;
        }
        const bool hadSteps = !m_file->steps().empty();
        m_file->start(m_token);
        m_file->takeDropped();
        m_files.forgetAllBut({});
        if (hadSteps)
            m_session.messages().information(
                applicationTitle,
                tr("The catalog is not the one that the history belongs to: it was restored, "
                   "brought up to date or replaced. What was done before can no longer be "
                   "taken back."));
    } catch (const Error& error) {
        m_file.reset();
        m_said = true;
        m_session.messages().warning(
            applicationTitle,
            tr("There is no history now, so nothing can be taken back: %1").arg(error.reason()));
    }
}

void History::breakOff(qint64 token) {
    if (!m_file)
        return;
    if (!m_file->steps().empty())
        m_lost = tr("What was done before can no longer be taken back.");
    m_file->start(token);
}

// ---- an operation

template<typename Job>
void History::recording(const Job& job) noexcept {
    if (!isRecording())
        return;
    try {
        job();
    } catch (const Error& error) {
        m_failure = error.reason();
    } catch (const std::exception& error) {
        m_failure = QString::fromUtf8(error.what());
    }
    if (m_file && !m_failure.isEmpty())
        m_file->abandonStep();
}

qint64 History::stepNumber() {
    if (!m_file) {
        openFile();
        m_files.setHistory(m_file->id());
        m_file->start(m_token);
        m_isNew = false;
    }
    if (m_step == 0)
        m_step = m_file->beginStep();
    return m_step;
}

void History::keep(qint64 number, const RowChange& change) noexcept {
    recording([&] {
        stepNumber();
        m_bytes += bytesOfARow + change.before.size() + change.after.size();
        if (m_bytes > m_limits.bytes)
            throw Error(
                tr("it is larger than the %1 MB that the history may take").arg(m_limits.bytes / megabyte));
        m_file->addRow(number, change);
    });
}

void History::cutBack(qint64 number) noexcept {
    recording([&] {
        if (m_step != 0)
            m_file->cutBack(number);
    });
}

void History::commitStep(qint64 token, const Ending& ending) {
    stepNumber();
    for (const StepFile& file : m_files.pending())
        m_file->addFile(file);
    HistoryStep step;
    step.at = m_session.clock().now().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    step.words = ending.words.isEmpty() ? tr("Change the catalog") : ending.words;
    step.rows = ending.rows;
    for (const Thing card : {Thing::Composer, Thing::Performer, Thing::Recording, Thing::Custom})
        step.cards += ending.changes.count(card);
    step.bytes = m_bytes + m_files.pendingBytes();
    if (step.bytes > m_limits.bytes)
        throw Error(
            tr("it is larger than the %1 MB that the history may take").arg(m_limits.bytes / megabyte));
    m_file->commitStep(token, step, m_limits);
}

std::optional<qint64> History::prepare(const Ending& ending) {
    const qint64 token = newToken();
    m_next = token;
    if (m_replaying) {
        m_file->move(m_target, token);
        m_moved = true;
        return token;
    }
    const bool isStep = ending.rows > 0 || !m_files.pending().empty();
    if (!isStep && !ending.breaks) {
        if (m_file)
            m_file->abandonStep(); // all its rows were cut back
        m_next = m_token;
        return std::nullopt;
    }
    // Without a token of its own in the catalog, an operation that no history knows would seem to be the last
    // one that a history knows.
    if (!m_file) {
        if (!m_failure.isEmpty())
            m_lost = tr("The history cannot be kept, so nothing can be taken back: %1").arg(m_failure);
        return token;
    }
    try {
        if (ending.breaks) {
            breakOff(token);
            return token;
        }
        recording([&] { commitStep(token, ending); });
        m_isKept = m_failure.isEmpty();
        if (m_isKept)
            return token;
        m_lost = tr("%1: this cannot be taken back, nor what was done before, since %2.")
                     .arg(ending.words, m_failure);
        m_file->start(token);
    } catch (const Error& error) {
        m_lost = tr("The history cannot be kept, so nothing can be taken back: %1").arg(error.reason());
        m_file.reset();
    }
    return token;
}

void History::committed() noexcept {
    const bool isKept = std::exchange(m_isKept, false);
    m_token = m_next;
    m_files.committed(isKept);
    if (m_file)
        m_files.forget(m_file->takeDropped());
    m_step = m_bytes = 0;
    m_moved = false;
    m_failure.clear();
    QString lost = std::exchange(m_lost, {});
    if (isKept)
        m_said = false;
    else if (!lost.isEmpty() && std::exchange(m_said, true))
        lost.clear();
    const QStringList stuck = m_files.takeStuck();
    if (!stuck.isEmpty())
        lost += u'\n' + tr("These files could not be moved:") + u'\n' + stuck.join(u'\n');
    if (!lost.isEmpty())
        m_session.messages().warning(applicationTitle, lost.trimmed());
}

void History::cancelled() noexcept {
    m_files.cancelled();
    try {
        if (m_file && m_moved)
            m_file->moveBack(m_previous);
        else if (m_file && m_isKept)
            m_file->dropStep();
        else if (m_file)
            m_file->abandonStep();
    } catch (const Error&) {
        m_file.reset(); // the next opening finds out by the token
    }
    m_step = m_bytes = 0;
    m_moved = m_isKept = false;
    m_failure.clear();
    m_lost.clear();
}

// ---- back and forth

std::vector<HistoryStep> History::steps() { return m_file ? m_file->steps() : std::vector<HistoryStep>(); }

std::optional<HistoryStep> History::next(bool back) {
    std::optional<HistoryStep> found;
    for (const HistoryStep& step : steps()) {
        if (back && !step.undone)
            found = step;
        if (!back && step.undone)
            return step;
    }
    return found;
}

QString History::undoWords() {
    const auto step = next(true);
    return step ? step->words : QString();
}

QString History::redoWords() {
    const auto step = next(false);
    return step ? step->words : QString();
}

void History::replay(const HistoryStep& step, bool back) {
    const std::vector<StepFile> files = m_file->files(step.number);
    if (const QString missing = m_files.missing(files, back); !missing.isEmpty())
        throw Error(tr("The file %1 is no longer there. Nothing was changed.").arg(missing));
    Connection& connection = m_session.connection();
    {
        Transaction transaction(connection, step.words);
        const QScopedValueRollback replaying(m_replaying, true);
        m_previous = m_file->position();
        m_target = back ? step.number - 1 : step.number;
        RowReplay replay(connection);
        m_file->eachRow(step.number, back, [&](const RowChange& change) {
            replay.apply(change, back);
            return true;
        });
        replay.recount();
        m_files.announce(files);
        transaction.commit();
    }
    back ? m_files.finishUndone(files) : m_files.finishDone(files);
}

bool History::replayNext(bool back) {
    const auto step = next(back);
    if (!step) {
        m_session.messages().information(applicationTitle, back ? tr("There is nothing to undo.")
                                                                : tr("There is nothing to redo."));
        return false;
    }
    try {
        replay(*step, back);
        return true;
    } catch (const Error& error) {
        m_session.messages().warning(
            applicationTitle,
            (back ? tr("\"%1\" cannot be undone.") : tr("\"%1\" cannot be redone.")).arg(step->words) +
                u'\n' + error.reason());
        return false;
    }
}

bool History::undo() { return replayNext(true); }
bool History::redo() { return replayNext(false); }

bool History::goTo(qint64 number) {
    for (auto step = next(true); step && step->number > number; step = next(true))
        if (!undo())
            return false;
    for (auto step = next(false); step && step->number <= number; step = next(false))
        if (!redo())
            return false;
    return true;
}

} // namespace tessaranth
