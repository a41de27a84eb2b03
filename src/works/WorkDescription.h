// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "attachments/CardDocuments.h"

namespace tessaranth {

/// The long description of a work: a document of its own beside the short text in the work's row. An
/// operation that fails reports it through the session's messages and answers with false or nothing.
class WorkDescription {
public:
    WorkDescription(Session& session, qint64 work)
        : m_session(session), m_work(work), m_documents(session, {QStringLiteral("Comp"), work}) {}

    qint64 document();                ///< its id; 0 when there is none; throws SqlError
    std::optional<QByteArray> read(); ///< nothing as well when its file is missing
    /// Writes the document, a new one behind the work's other documents if it has none.
    bool write(const QByteArray& rtf);
    /// Deletes the document after a question; false when the answer is no.
    bool remove();

private:
    Session& m_session;
    qint64 m_work;
    CardDocuments m_documents;
};

} // namespace tessaranth
