// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/CardOwner.h"
#include "store/AttachmentFiles.h"
#include "store/ItemList.h"

#include <vector>

namespace tessaranth {

/// What is kept in files for a card and has a title: its pictures or its documents.
struct CardFileKind {
    QString table;
    QString key;   ///< column of the id
    QString title; ///< column of the title
    Session::Folder folder;
    QString iconKey;
    QString label;         ///< before the field of a title
    QString renameTitle;   ///< of the window that asks for another title,
    QString renameHeading; ///< and its heading
    QString removeTitle;   ///< of the question
    QString gone;          ///< said when another window deleted it
    // The names of the operations, with %1 for the card and %2 for the title.
    QString addWords, renameWords, replaceWords, removeWords, sortWords;
};

/// The rows and files of one kind that a card has, numbered from 1 without gaps. An operation that fails
/// reports it through the session's messages and answers with false, 0 or nothing; catalog and data folder
/// are then as before.
class CardFiles {
public:
    CardFiles(Session& session, CardOwner card, const CardFileKind& kind)
        : m_session(session), m_files(session), m_card(std::move(card)), m_kind(kind) {}

    bool load(ItemList& list); ///< ids and titles in their order; reads no file
    bool askRename(qint64 id);
    bool rename(qint64 id, const QString& title);
    bool askRemove(qint64 id);
    bool remove(qint64 id); ///< those behind it move up
    bool sort(const std::vector<qint64>& order);

    /// A new row, last in the order, with its file. All three throw Error.
    qint64 addBytes(const QByteArray& bytes, const QString& title);
    void replaceBytes(qint64 id, const QByteArray& bytes);

    QByteArray bytes(qint64 id, qint64 atMost) const { return m_files.read(m_kind.folder, id, atMost); }
    QString path(qint64 id) const { return m_files.path(m_kind.folder, id); }
    bool hasFile(qint64 id) const { return m_files.exists(m_kind.folder, id); }
    QString title(qint64 id); ///< empty when there is none such; throws SqlError
    QString askTitle(const QString& windowTitle, const QString& heading, const QString& button,
                     const QString& proposed);

    /// A title for what came without one, such as from the name of its file, cut to what is kept.
    QString titleFrom(const QString& text) const;

    Session& session() const { return m_session; }
    const CardOwner& card() const { return m_card; }

private:
    QString byId(qint64 id) const;
    QString fitTitle(const QString& text) const;
    void require(qint64 id);
    QString words(const QString& pattern, const QString& title);

    Session& m_session;
    AttachmentFiles m_files;
    CardOwner m_card;
    const CardFileKind& m_kind;
};

} // namespace tessaranth
