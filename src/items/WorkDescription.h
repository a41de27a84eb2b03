// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace tessaranth {

class Session;

/// The long description of a work: a document of its own beside the short text in the work's row. An
/// operation that fails reports it through the session's messages and answers false.
class WorkDescription {
public:
    struct Text {
        qint64 card = 0; ///< the document's key; 0 when there is none
        QString text;
        bool formatted = false; ///< it holds more than `text` says, which writing would lose
    };

    WorkDescription(Session& session, qint64 work) : m_session(session), m_work(work) {}

    /// A document whose file is missing has an empty text.
    bool read(Text& result);
    /// Writes the document, a new one behind the work's other documents if it has none.
    bool write(const QString& text);
    /// Deletes the document after a question; false when the answer is no.
    bool remove();

private:
    template<typename Job>
    bool guarded(const Job& job);
    qint64 card();
    QString file(qint64 card) const;
    void writeFile(const QString& path, const QString& text) const;

    Session& m_session;
    qint64 m_work;
};

} // namespace tessaranth
