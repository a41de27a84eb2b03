// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "attachments/CardFiles.h"
#include "text/PictureFile.h"

#include <QImage>
#include <QStringList>

namespace tessaranth {

class Progress;

/// The pictures of a card; the first is the card's main picture. The bytes of a file are kept as they came.
/// As to failures see CardFiles.
class CardImages {
public:
    CardImages(Session& session, CardOwner card);

    bool LoadImages(ItemList& list) { return m_files.load(list); }

    // Adding: the id of the new picture, or 0.
    qint64 ImportImageFromFile();                        ///< asks for the file and for the title
    qint64 PasteImageFromClipboard(const QImage& image); ///< asks for the title
    qint64 add(const QString& file, const QString& title);
    qint64 add(const QImage& image, const QString& title);
    /// Files that were dropped: asks for the title of a single one, and takes those of several from their
    /// names. The number added, those that are no pictures are named in one message.
    int addFiles(const QStringList& files, Progress& progress);

    bool Rename_Image(qint64 id) { return m_files.askRename(id); }
    bool rename(qint64 id, const QString& title) { return m_files.rename(id, title); }
    bool Replace_Image(qint64 id); ///< asks for the file
    bool replace(qint64 id, const QString& file);
    bool replace(qint64 id, const QImage& image);
    bool Remove_Image(qint64 id) { return m_files.askRemove(id); }
    bool remove(qint64 id) { return m_files.remove(id); }
    bool Sort_Images(const std::vector<qint64>& order) { return m_files.sort(order); }

    bool ExportImageToFile(qint64 id); ///< asks for the file
    bool exportTo(qint64 id, const QString& file);
    QImage whole(qint64 id); ///< in its own size, for the clipboard

    QString path(qint64 id) const { return m_files.path(id); }
    bool hasFile(qint64 id) const { return m_files.hasFile(id); }
    QString title(qint64 id) { return m_files.title(id); }
    CardFiles& files() { return m_files; }

private:
    QString chooseFile(const QString& title);
    QString askTitle(const QString& proposed);

    CardFiles m_files;
    Session& m_session;
};

} // namespace tessaranth
