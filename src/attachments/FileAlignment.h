// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/Session.h"

#include <QStringList>
#include <vector>

namespace tessaranth {

class Progress;

/// Compares the catalog with the data folders of pictures, documents and label logos, and repairs what the
/// user chose. A label without a logo is in order; a picture or document without its file is not.
class FileAlignment {
public:
    explicit FileAlignment(Session& session) : m_session(session) {}

    struct LostFile { ///< a row whose file is missing
        Session::Folder folder = Session::Folder::Images;
        qint64 id = 0;
        QString title;
        QString code;     ///< kind of the item that it belongs to; "Comp" for a work
        qint64 owner = 0; ///< that item
        QString card;     ///< its name
        QString path;     ///< where the file should lie
    };
    struct StrayFile { ///< a file to which no row belongs
        Session::Folder folder = Session::Folder::Images;
        QString name;
        qint64 bytes = 0;
    };
    struct Findings {
        std::vector<LostFile> lost;   ///< pictures first, each by id
        std::vector<StrayFile> stray; ///< by folder and name
        /// Folders that do not exist though files should lie in them. Their rows are not among `lost`: a
        /// disk that is not connected is no reason to give up what is on it.
        QStringList missingFolders;
    };

    /// What does not fit together; changes nothing. False when the catalog cannot be read, which is told.
    /// Stopped, it answers with what it has.
    bool find(Findings& findings, Progress& progress);

    /// Deletes rows whose file is still missing; those behind them move up. The number deleted, or -1 when it
    /// failed, which is told, and nothing was deleted.
    int deleteRows(const std::vector<LostFile>& rows, Progress& progress);
    /// Moves files to which still no row belongs into the folder "Unused" within their own. Files are never
    /// deleted. The number moved; those that could not be are named in a message. With `evenOwned` also a
    /// file that a row names, such as a logo that is none.
    int setAside(const std::vector<StrayFile>& files, Progress& progress, bool evenOwned = false);

    static QString caption(Session::Folder folder); ///< such as "Images"
    static const QString unusedFolder;

private:
    struct Kept;
    static const Kept kinds[];
    void compare(const Kept& kept, Findings& findings, Progress& progress);

    Session& m_session;
};

} // namespace tessaranth
