// SPDX-License-Identifier: GPL-3.0-or-later
#include "attachments/FileAlignment.h"

#include "items/Attachments.h"
#include "items/CardOwner.h"
#include "platform/Progress.h"
#include "store/AttachmentFiles.h"
#include "store/Guarded.h"

#include <QCoreApplication>
#include <QDir>
#include <QSet>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("FileAlignment", text); }

constexpr qsizetype namesShown = 10;

/// A name that is free in a folder: "12", "12 (2)", "12 (3)" ...
QString freeName(const QDir& folder, const QString& name) {
    QString free = name;
    for (int number = 2; folder.exists(free); ++number)
        free = name + QStringLiteral(" (%1)").arg(number);
    return free;
}

} // namespace

const QString FileAlignment::unusedFolder = QStringLiteral("Unused");

/// One data folder and the table whose keys name its files.
struct FileAlignment::Kept {
    Session::Folder folder;
    const char* table;
    const char* key;
    const char* title; ///< nullptr where a row needs no file
    const char* caption;
};

const FileAlignment::Kept FileAlignment::kinds[] = {
    {Session::Folder::Images, "Images", "ImageID", "ImageTitle",
     QT_TRANSLATE_NOOP("FileAlignment", "Images")},
    {Session::Folder::Documents, "Cards", "CardID", "CardTitle",
     QT_TRANSLATE_NOOP("FileAlignment", "Documents")},
    {Session::Folder::Labels, "Labels", "LabelID", nullptr, QT_TRANSLATE_NOOP("FileAlignment", "Labels")}};

QString FileAlignment::caption(Session::Folder folder) {
    for (const Kept& kept : kinds)
        if (kept.folder == folder)
            return tr(kept.caption);
    return {};
}

// One listing of the folder instead of a question a file: a folder of covers can hold tens of thousands.
void FileAlignment::compare(const Kept& kept, Findings& findings, Progress& progress) {
    const QDir folder(m_session.dataFolder(kept.folder));
    const QFileInfoList listed = folder.entryInfoList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
    QSet<QString> files, rows;
    for (const QFileInfo& file : listed)
        if (file.isFile() && !file.isSymLink())
            files.insert(file.fileName());
    const bool needsFiles = kept.title != nullptr;
    Query run = m_session.connection().query(
        QStringLiteral("SELECT %1%2 FROM %3 ORDER BY %1")
            .arg(QLatin1String(kept.key),
                 needsFiles ? u',' + QLatin1String(kept.title) + QStringLiteral(",RelatedCat,RelatedID")
                            : QString(),
                 QLatin1String(kept.table)));
    while (run.next() && !progress.stopped()) {
        if (!AttachmentFiles(m_session).path(kept.folder, run.value(0)))
            continue;
        rows.insert(run.text(0));
        if (needsFiles && folder.exists() && !files.contains(run.text(0)))
            findings.lost.push_back({kept.folder, run.integer(0), run.text(1), run.text(2), run.integer(3),
                                     CardOwner{run.text(2), run.integer(3)}.name(m_session),
                                     AttachmentFiles(m_session).path(kept.folder, run.integer(0))});
    }
    if (needsFiles && !folder.exists() && !rows.isEmpty())
        findings.missingFolders << folder.path();
    // Stopped half-way, not every row is known, and a file of an unknown row would seem to be stray.
    if (progress.stopped())
        return;
    for (const QFileInfo& file : listed)
        if (!rows.contains(file.fileName()))
            findings.stray.push_back({kept.folder, file.fileName(), file.size()});
}

bool FileAlignment::find(Findings& findings, Progress& progress) {
    return guarded(m_session, [&] {
        Findings found;
        qint64 done = 0;
        progress.stage(tr("Comparing the catalog with the data folders"));
        for (const Kept& kept : kinds) {
            if (progress.stopped())
                break;
            compare(kept, found, progress);
            progress.step(++done, std::size(kinds));
        }
        findings = std::move(found);
        return true;
    });
}

int FileAlignment::deleteRows(const std::vector<LostFile>& rows, Progress& progress) {
    int deleted = 0;
    const bool done = guarded(m_session, [&] {
        progress.stage(tr("Deleting rows"));
        Connection& connection = m_session.connection();
        const AttachmentFiles files(m_session);
        Transaction transaction(connection, tr("Delete rows without their files"));
        qint64 seen = 0;
        for (const LostFile& row : rows) {
            progress.step(++seen, qint64(rows.size()));
            const bool isImage = row.folder == Session::Folder::Images;
            const QString table = isImage ? QStringLiteral("Images") : QStringLiteral("Cards");
            const QString byKey =
                QStringLiteral(" FROM %1 WHERE %2 = %3")
                    .arg(table, isImage ? QStringLiteral("ImageID") : QStringLiteral("CardID"))
                    .arg(row.id);
            if (row.folder == Session::Folder::Labels || files.exists(row.folder, row.id))
                continue;
            if (connection.execute(QStringLiteral("DELETE") + byKey) == 0)
                continue;
            // A card that has a picture has a first one, which lists and pages ask for.
            Attachments(m_session).setOrder(table, row.code, row.owner);
            ++deleted;
        }
        transaction.commit();
        return true;
    });
    return done ? deleted : -1;
}

int FileAlignment::setAside(const std::vector<StrayFile>& files, Progress& progress, bool evenOwned) {
    int moved = 0;
    qint64 seen = 0;
    QStringList stuck;
    guarded(m_session, [&] {
        progress.stage(tr("Moving files"));
        for (const StrayFile& file : files) {
            const Kept& kept = *std::find_if(std::begin(kinds), std::end(kinds),
                                             [&](const Kept& known) { return known.folder == file.folder; });
            progress.step(++seen, qint64(files.size()));
            bool isNumber = false;
            const qint64 id = file.name.toLongLong(&isNumber);
            if (isNumber && !evenOwned &&
                m_session.connection().exists(QStringLiteral("SELECT * FROM %1 WHERE %2 = %3")
                                                  .arg(QLatin1String(kept.table), QLatin1String(kept.key))
                                                  .arg(id)))
                continue;
            const QDir folder(m_session.dataFolder(file.folder));
            const QDir unused(folder.filePath(unusedFolder));
            if (folder.mkpath(unusedFolder) &&
                QFile::rename(folder.filePath(file.name), unused.filePath(freeName(unused, file.name))))
                ++moved;
            else
                stuck << QDir::toNativeSeparators(folder.filePath(file.name));
        }
        return true;
    });
    if (stuck.size() > namesShown)
        stuck = stuck.mid(0, namesShown) << tr("... (%1 in all)").arg(stuck.size());
    if (!stuck.isEmpty())
        m_session.messages().warning(applicationTitle,
                                     tr("These files could not be moved:") + u'\n' + stuck.join(u'\n'));
    return moved;
}

} // namespace tessaranth
