// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace tessaranth {

class Session;

/// What hangs off cards, by the card's code ("Cps", "Pfr", "Rec", "UserDef", "Comp" for works) and id.
/// Failing calls throw SqlError; the caller holds the transaction.
class Attachments {
public:
    explicit Attachments(Session& session) : m_session(session) {}

    /// Deletes the rows of a card's pictures, documents, media, links and relations, and with the transaction
    /// the files of pictures and documents.
    void deleteAll(const QString& code, qint64 id);
    /// Deletes the documents whose rows a statement reads from Cards.
    void deleteDocuments(const QString& statement);
    /// Moves everything to another card of the same kind, pictures and documents behind its own.
    void moveAll(const QString& code, qint64 from, qint64 to);

    /// Writes OrderNbr 1, 2, 3 ... to a card's rows of Images or Cards in the order of their ids; rows that
    /// are not named follow in their old order, so that an empty order closes gaps.
    void setOrder(const QString& table, const QString& code, qint64 id,
                  const std::vector<qint64>& order = {});

private:
    void moveOrdered(const QString& table, const QString& code, qint64 from, qint64 to);

    Session& m_session;
};

} // namespace tessaranth
