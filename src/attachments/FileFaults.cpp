// SPDX-License-Identifier: GPL-3.0-or-later
#include "attachments/FileFaults.h"

#include "attachments/FileAlignment.h"
#include "items/Attachments.h"
#include "platform/Errors.h"
#include "platform/Progress.h"
#include "store/AttachmentFiles.h"
#include "text/PictureFile.h"

#include <QCoreApplication>
#include <QDir>
#include <memory>
#include <optional>

namespace tessaranth {

namespace {

constexpr qsizetype examplesShown = 5;

QString tr(const char* text) { return QCoreApplication::translate("FileFaults", text); }

/// What was found in the folders, looked at once for all kinds of faults and anew after each repair.
class Folders {
public:
    explicit Folders(Session& session) : m_session(session) {}

    struct BadFile {
        Session::Folder folder = Session::Folder::Images;
        qint64 id = 0;
        QString path;
        bool isLocked = false; ///< cannot be opened, or is no plain file: nobody can say what it holds
    };

    const FileAlignment::Findings& findings() {
        look();
        return *m_findings;
    }
    std::vector<BadFile> bad(bool locked) {
        look();
        std::vector<BadFile> files;
        for (const BadFile& file : m_bad)
            if (file.isLocked == locked)
                files.push_back(file);
        return files;
    }
    qint64 deleteRowsWithoutFile() {
        const int deleted = FileAlignment(m_session).deleteRows(findings().lost, m_progress);
        m_findings.reset();
        if (deleted < 0)
            throw Error(tr("The rows could not be deleted."));
        return deleted;
    }
    /// Logos have no row of their own.
    qint64 deleteRowsOfBadFiles() {
        m_aside.clear();
        for (const BadFile& file : bad(false)) {
            m_aside.push_back({file.folder, QString::number(file.id), 0});
            if (file.folder == Session::Folder::Labels)
                continue;
            const bool isImage = file.folder == Session::Folder::Images;
            const QString table = isImage ? QStringLiteral("Images") : QStringLiteral("Cards");
            const QString row =
                QStringLiteral(" FROM %1 WHERE %2 = %3")
                    .arg(table, isImage ? QStringLiteral("ImageID") : QStringLiteral("CardID"))
                    .arg(file.id);
            Connection& connection = m_session.connection();
            QString code;
            qint64 owner = 0;
            {
                Query known = connection.query(QStringLiteral("SELECT RelatedCat, RelatedID") + row);
                if (known.next()) {
                    code = known.text(0);
                    owner = known.integer(1);
                }
            }
            connection.execute(QStringLiteral("DELETE") + row);
            Attachments(m_session).setOrder(table, code, owner);
        }
        m_findings.reset();
        return qint64(m_aside.size());
    }
    void keepStrayForLater() { m_aside = findings().stray; }
    void setAside() {
        FileAlignment(m_session).setAside(m_aside, m_progress, true);
        m_aside.clear();
        m_findings.reset();
    }

private:
    void look() {
        if (m_findings)
            return;
        FileAlignment::Findings found;
        if (!FileAlignment(m_session).find(found, m_progress))
            throw Error(tr("The data folders could not be compared with the catalog."));
        // Where something stands under the number, it is bad and not missing.
        std::erase_if(found.lost, [](const FileAlignment::LostFile& lost) {
            const QFileInfo info(lost.path);
            return info.exists() || info.isSymLink();
        });
        m_findings = std::move(found);
        m_bad.clear();
        lookInto(Session::Folder::Images, "SELECT ImageID FROM Images ORDER BY ImageID");
        lookInto(Session::Folder::Documents, "SELECT CardID FROM Cards ORDER BY CardID");
        lookInto(Session::Folder::Labels, "SELECT LabelID FROM Labels ORDER BY LabelID");
    }
    void lookInto(Session::Folder folder, const char* statement) {
        const AttachmentFiles files(m_session);
        Query rows = m_session.connection().query(QLatin1String(statement));
        while (rows.next()) {
            const qint64 id = rows.integer(0);
            const QString path = files.path(folder, id);
            const QFileInfo info(path);
            if (!info.exists() && !info.isSymLink())
                continue;
            // A pipe would wait for ever, a link may lead anywhere: neither is opened.
            const bool isPlain = info.isFile() && !info.isSymLink();
            if (!isPlain || !QFile(path).open(QIODevice::ReadOnly))
                m_bad.push_back({folder, id, path, true});
            else if (info.size() == 0 ||
                     (folder != Session::Folder::Documents && PictureFile::facts(path).size.isEmpty()))
                m_bad.push_back({folder, id, path, false});
        }
    }

    Session& m_session;
    NoProgress m_progress;
    std::optional<FileAlignment::Findings> m_findings;
    std::vector<BadFile> m_bad;
    std::vector<FileAlignment::StrayFile> m_aside;
};

CatalogFault::Found foundOf(qsizetype count, const QStringList& paths) {
    CatalogFault::Found found{count, {}};
    for (const QString& path : paths.mid(0, examplesShown))
        found.examples << QDir::toNativeSeparators(path);
    return found;
}

template<typename Files>
CatalogFault::Found pathsOf(const Files& files) {
    QStringList paths;
    for (const auto& file : files)
        paths << file.path;
    return foundOf(qsizetype(files.size()), paths);
}

} // namespace

CatalogFaults fileFaults(Session& session) {
    const auto folders = std::make_shared<Folders>(session);
    CatalogFaults faults;
    faults.push_back({tr("Data folders that are missing"),
                      [folders] {
                          const QStringList& missing = folders->findings().missingFolders;
                          return foundOf(missing.size(), missing);
                      },
                      {},
                      {},
                      {}});
    faults.push_back({tr("Pictures and documents whose file is missing"),
                      [folders] { return pathsOf(folders->findings().lost); }, tr("Delete their rows?"),
                      tr("%1 rows deleted"), [folders] { return folders->deleteRowsWithoutFile(); }});
    faults.push_back({tr("Files that are empty or hold no picture"),
                      [folders] { return pathsOf(folders->bad(false)); },
                      tr("Delete their rows and move the files into the folder \"%1\" within their own?")
                          .arg(FileAlignment::unusedFolder),
                      tr("%1 set aside"), [folders] { return folders->deleteRowsOfBadFiles(); },
                      [folders] { folders->setAside(); }});
    faults.push_back({tr("Files that cannot be opened or are no plain files"),
                      [folders] { return pathsOf(folders->bad(true)); },
                      {},
                      {},
                      {}});
    faults.push_back(
        {tr("Files without a row"),
         [folders, &session] {
             QStringList paths;
             for (const FileAlignment::StrayFile& file : folders->findings().stray)
                 paths << session.dataFolder(file.folder) + u'/' + file.name;
             return foundOf(paths.size(), paths);
         },
         tr("Move them into the folder \"%1\" within their own?").arg(FileAlignment::unusedFolder),
         tr("%1 set aside"),
         [folders] {
             folders->keepStrayForLater();
             return qint64(folders->findings().stray.size());
         },
         [folders] { folders->setAside(); }});
    return faults;
}

} // namespace tessaranth
