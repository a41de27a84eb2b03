// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FileWriter.h"
#include "store/Recordset.h"
#include "store/Session.h"

#include <optional>

namespace tessaranth {

/// The files of pictures, documents and label logos: each lies in its data folder under the id of its row in
/// decimal, without a suffix. A number that is no whole number names no file: a catalog from elsewhere could
/// hold a path in its place. What stands there and is no file of its own (a link, a pipe, a folder) is never
/// opened, written to or followed.
class AttachmentFiles {
public:
    explicit AttachmentFiles(Session& session) : m_session(session) {}

    QString path(Session::Folder folder, qint64 id) const;
    /// Nothing for an id that names no file.
    std::optional<QString> path(Session::Folder folder, const Value& id) const;
    bool exists(Session::Folder folder, qint64 id) const;
    /// Throws FileError, also for one of more than `atMost` bytes.
    QByteArray read(Session::Folder folder, qint64 id, qint64 atMost) const;
    // Within a transaction, and with it: what stood there before stays until the rows are safe, then goes
    // into the history. Writing makes the data folder when it is missing, and throws FileError.
    void write(Session::Folder folder, qint64 id, const QByteArray& bytes,
               Existing existing = Existing::Replace) const;
    void remove(Session::Folder folder, qint64 id) const; ///< a missing file counts as removed

    /// Adds a row and answers with its number. A number under which a file stands already is passed over: it
    /// may belong to a newer state of the catalog than the one that was restored. Throws SqlError.
    qint64 addRow(Recordset& rows, const QString& key, Recordset::Assignments values,
                  Session::Folder folder) const;

private:
    Session& m_session;
};

} // namespace tessaranth
