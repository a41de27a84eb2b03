// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "attachments/CardFiles.h"

#include <optional>

namespace tessaranth {

/// The documents of a card or work, in Rich Text Format; the first is the one that the card shows. As to
/// failures see CardFiles.
class CardDocuments {
public:
    CardDocuments(Session& session, CardOwner card);

    bool LoadDocs(ItemList& list) { return m_files.load(list); }
    /// What a document's file holds; nothing when the file is missing (`hasFile`) or cannot be read.
    std::optional<QByteArray> read(qint64 id);

    /// Asks for the title and keeps a new document: its id, or 0.
    qint64 Save_Doc(const QByteArray& rtf);
    qint64 add(const QByteArray& rtf, const QString& title);
    bool rewrite(qint64 id, const QByteArray& rtf);
    bool Rename_Doc(qint64 id) { return m_files.askRename(id); }
    bool rename(qint64 id, const QString& title) { return m_files.rename(id, title); }
    bool Remove_Doc(qint64 id) { return m_files.askRemove(id); }
    bool remove(qint64 id) { return m_files.remove(id); }
    bool Sort_Docs(const std::vector<qint64>& order) { return m_files.sort(order); }

    bool ExportDocToFile(qint64 id); ///< asks for the file
    bool exportTo(qint64 id, const QString& file);
    /// Asks for a text file ("Import text") and reads it; see `imported`.
    std::optional<QByteArray> importText();
    /// A file as a document: RTF as it is, a text file as plain paragraphs. Throws FileError for other files.
    static QByteArray imported(const QString& file);
    qint64 addFile(const QString& file, const QString& title = {}); ///< without a title: the file's name

    QString path(qint64 id) const { return m_files.path(id); }
    bool hasFile(qint64 id) const { return m_files.hasFile(id); }
    QString title(qint64 id) { return m_files.title(id); }
    CardFiles& files() { return m_files; }

    /// Largest file that is imported, in bytes.
    static constexpr qint64 maxBytes = 32LL * 1024 * 1024;

private:
    CardFiles m_files;
    Session& m_session;
};

} // namespace tessaranth
