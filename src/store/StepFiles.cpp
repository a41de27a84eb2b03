// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/StepFiles.h"

#include "platform/FileWriter.h"
#include "store/Session.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <algorithm>

namespace tessaranth {

namespace {

struct FolderThing {
    Session::Folder folder;
    const char* name;
    Thing thing;
    const char* owner; ///< asks for the code and id of the card; nullptr for one that stands alone
};
const FolderThing things[] = {{Session::Folder::Images, "Images", Thing::Image,
                               "SELECT RelatedCat, RelatedID FROM Images WHERE ImageID = "},
                              {Session::Folder::Documents, "Documents", Thing::Document,
                               "SELECT RelatedCat, RelatedID FROM Cards WHERE CardID = "},
                              {Session::Folder::Labels, "Labels", Thing::Label, nullptr}};

} // namespace

const QString StepFiles::historyFolder = QStringLiteral("History");

QString StepFiles::folderName(const StepFile& file) {
    for (const FolderThing& thing : things)
        if (int(thing.folder) == file.folder)
            return QLatin1String(thing.name);
    return {};
}

QString StepFiles::path(const StepFile& file) const {
    return m_session.dataFolder(Session::Folder(file.folder)) + u'/' + file.name;
}

// Two catalogs may share a data folder, and a catalog may have had another history before.
QString StepFiles::keptName(const StepFile& file) const {
    return QFileInfo(m_session.databasePath()).completeBaseName() +
           QStringLiteral(".%1.%2.%3.").arg(m_history).arg(file.step).arg(file.number);
}

QString StepFiles::kept(const StepFile& file, const char* side) const {
    return m_session.dataFolder(Session::Folder(file.folder)) + u'/' + historyFolder + u'/' + keptName(file) +
           QLatin1String(side);
}

// ---- within a transaction

StepFile StepFiles::next(int folder, qint64 id) const {
    return {m_stepNumber ? m_stepNumber() : 0,
            qint64(m_pending.size()) + 1,
            folder,
            QString::number(id),
            false,
            false};
}

void StepFiles::write(int folder, qint64 id, const QByteArray& bytes) {
    StepFile file = next(folder, id);
    file.after = true;
    file.before = QFileInfo::exists(path(file));
    const auto removed = std::find_if(m_pending.begin(), m_pending.end(), [&](const StepFile& other) {
        return other.folder == file.folder && other.name == file.name && !other.after;
    });
    if (removed != m_pending.end())
        file.number = removed->number;
    // A new file stands before its row does: cut off in between, it is a file too many, and the alignment
    // finds it. A file that is there already stays what it is until the rows are safe.
    const QString target = file.before ? kept(file, "after") : path(file);
    QDir().mkpath(QFileInfo(target).path());
    writeFile(target, bytes);
    if (removed != m_pending.end())
        removed->after = true;
    else
        m_pending.push_back(file);
    announce({file});
}

void StepFiles::remove(int folder, qint64 id) {
    StepFile file = next(folder, id);
    file.before = true;
    if (!QFileInfo::exists(path(file)))
        return;
    announce({file});
    m_pending.push_back(file);
}

qint64 StepFiles::pendingBytes() const {
    qint64 bytes = 0;
    for (const StepFile& file : m_pending)
        if (file.before)
            bytes += QFileInfo(path(file)).size();
    return bytes;
}

void StepFiles::committed(bool isKept) {
    const std::vector<StepFile> files = std::exchange(m_pending, {});
    finishDone(files);
    if (!isKept)
        forget(files);
}

void StepFiles::cancelled() {
    for (const StepFile& file : std::exchange(m_pending, {}))
        if (file.after)
            QFile::remove(file.before ? kept(file, "after") : path(file));
}

// ---- there and back

void StepFiles::move(const QString& from, const QString& to) {
    QDir().mkpath(QFileInfo(to).path());
    if (QFileInfo::exists(from) && !QFile::rename(from, to))
        m_stuck << QDir::toNativeSeparators(from);
}

// "Before" in its place says that the first half of a way has been gone, "after" that the second is still to
// go; so a way that was cut off can be gone to its end, and one that was not changes nothing.
void StepFiles::finishDone(const std::vector<StepFile>& files) {
    for (const StepFile& file : files) {
        if (file.after && !QFileInfo::exists(kept(file, "after")))
            continue;
        if (file.before && !QFileInfo::exists(kept(file, "before")))
            move(path(file), kept(file, "before"));
        if (file.after)
            move(kept(file, "after"), path(file));
    }
}

void StepFiles::finishUndone(const std::vector<StepFile>& files) {
    for (auto file = files.rbegin(); file != files.rend(); ++file) {
        if (file->before && !QFileInfo::exists(kept(*file, "before")))
            continue;
        if (file->after && !QFileInfo::exists(kept(*file, "after")))
            move(path(*file), kept(*file, "after"));
        if (file->before)
            move(kept(*file, "before"), path(*file));
    }
}

QString StepFiles::missing(const std::vector<StepFile>& files, bool back) const {
    for (const StepFile& file : files) {
        const QString needed = kept(file, back ? "before" : "after");
        if ((back ? file.before : file.after) && !QFileInfo::exists(needed))
            return QDir::toNativeSeparators(needed);
    }
    return {};
}

void StepFiles::forget(const std::vector<StepFile>& dropped) {
    for (const StepFile& file : dropped)
        for (const char* side : {"before", "after"})
            QFile::remove(kept(file, side));
}

// What a killed program had begun to write belongs to no step, and the next one would get its number.
void StepFiles::forgetAllBut(const std::vector<HistoryStep>& steps) {
    const QString ours = QFileInfo(m_session.databasePath()).completeBaseName() + u'.';
    QSet<QString> kept;
    for (const HistoryStep& step : steps)
        kept.insert(QStringLiteral("%1.%2").arg(m_history).arg(step.number));
    for (const FolderThing& thing : things) {
        QDir folder(m_session.dataFolder(thing.folder) + u'/' + historyFolder);
        for (const QString& name : folder.entryList({ours + u'*'}, QDir::Files)) {
            const QStringList parts = name.mid(ours.size()).split(u'.'); // history, step, number, side
            if (parts.size() == 4 && !kept.contains(parts[0] + u'.' + parts[1]))
                folder.remove(name);
        }
    }
}

void StepFiles::announce(const std::vector<StepFile>& files) {
    Connection& connection = m_session.connection();
    for (const StepFile& file : files) {
        for (const FolderThing& thing : things) {
            if (int(thing.folder) != file.folder)
                continue;
            connection.touch({thing.thing, file.name.toLongLong()});
            if (!thing.owner)
                continue;
            Query run = connection.query(QLatin1String(thing.owner) + file.name);
            if (run.next())
                if (const auto owner = thingOfCode(run.text(0).toUtf8().constData()))
                    connection.touch({*owner, run.integer(1)});
        }
    }
}

} // namespace tessaranth
