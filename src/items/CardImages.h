// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/AttachmentFiles.h"
#include "items/CardOwner.h"
#include "items/ItemList.h"
#include "items/PictureFile.h"

#include <QImage>
#include <QStringList>
#include <vector>

namespace tessaranth {

class Progress;

/// The pictures of a card, numbered from 1 without gaps; the first is the card's main picture. The bytes of a
/// file are kept as they came. An operation that fails reports it through the session's messages and answers
/// with false, 0 or nothing; catalog and data folder are then as before.
class CardImages {
public:
    CardImages(Session& session, CardOwner card)
        : m_session(session), m_files(session), m_card(std::move(card)) {}

    bool LoadImages(ItemList& list); ///< ids and titles in their order; reads no file

    // Adding: the id of the new picture, or 0.
    qint64 ImportImageFromFile();                        ///< asks for the file and for the title
    qint64 PasteImageFromClipboard(const QImage& image); ///< asks for the title
    qint64 add(const QString& file, const QString& title);
    qint64 add(const QImage& image, const QString& title);
    /// Files that were dropped: asks for the title of a single one, and takes those of several from their
    /// names. The number added, those that are no pictures are named in one message.
    int addFiles(const QStringList& files, Progress& progress);

    bool Rename_Image(qint64 id); ///< asks for the title
    bool rename(qint64 id, const QString& title);
    bool Replace_Image(qint64 id); ///< asks for the file
    bool replace(qint64 id, const QString& file);
    bool replace(qint64 id, const QImage& image);
    bool Remove_Image(qint64 id); ///< asks; those behind it move up
    bool remove(qint64 id);
    bool Sort_Images(const std::vector<qint64>& order);

    bool ExportImageToFile(qint64 id); ///< asks for the file
    bool exportTo(qint64 id, const QString& file);
    QImage whole(qint64 id); ///< in its own size, for the clipboard

    QString path(qint64 id) const { return m_files.path(Session::Folder::Images, id); }
    bool hasFile(qint64 id) const { return m_files.exists(Session::Folder::Images, id); }
    QString title(qint64 id); ///< empty when there is none such

    /// Longest title, in characters.
    static constexpr int maxTitle = 250;

private:
    qint64 addBytes(const QByteArray& bytes, const QString& title);
    bool replaceBytes(qint64 id, const QByteArray& bytes);
    QString chooseFile(const QString& title);
    QString askTitle(const QString& proposed);
    void requireImage(qint64 id);
    QString cardName();

    Session& m_session;
    AttachmentFiles m_files;
    CardOwner m_card;
};

} // namespace tessaranth
