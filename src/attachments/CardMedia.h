// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/CardOwner.h"
#include "store/ItemList.h"

#include <QStringList>
#include <vector>

namespace tessaranth {

class Progress;
class Session;

/// A reference to a file that stays where it is.
struct MediaFile {
    qint64 id = 0;
    QString title;
    QString file;   ///< name with its suffix
    QString folder; ///< as the system writes it, beginning with the drive
    qint64 size = 0;
    QString type; ///< in words of the system, such as "MP3 audio"
    QString volumeName;
    QString volumeType;

    QString path() const;
};

/// The media files of a card. An operation that fails reports it through the session's messages and answers
/// false.
class CardMedia {
public:
    CardMedia(Session& session, CardOwner card) : m_session(session), m_card(std::move(card)) {}

    bool LoadMedia(ItemList& list); ///< the sizes in bytes
    MediaFile media(qint64 id);     ///< an empty one (id 0) when there is none

    /// Adds references to files, titled by their names. Names what is no file, or has a path that is too long
    /// to be kept, in one message. The number added, or -1 when it failed and nothing was added.
    int add(const QStringList& files, Progress& progress);

    bool Rename_Media(qint64 id); ///< asks for the title
    bool rename(qint64 id, const QString& title);
    /// Asks, and deletes the references; never a file.
    bool Remove_Media(const std::vector<qint64>& ids, Progress& progress);
    /// "Update": the files lie in another folder now. Those that are not there keep their place and are
    /// named in a message; of the others the facts are read again. The number changed, or -1 on failure.
    int moveTo(const std::vector<qint64>& ids, const QString& folder, Progress& progress);

    /// Opens the file in its program; asks first where that would run it. A name with a place in it, as no
    /// file that was added has, is refused.
    bool OpenMediaFile(qint64 id);
    /// Shows the folder that holds it.
    bool ExploreMedia(qint64 id);

private:
    bool folderIsThere(const MediaFile& media);
    bool confirmRunning(const MediaFile& file);
    void nameSkipped(const QStringList& names, const QString& reason);

    Session& m_session;
    CardOwner m_card;
};

} // namespace tessaranth
