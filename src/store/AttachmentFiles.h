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
    explicit AttachmentFiles(const Session& session) : m_session(session) {}

    QString path(Session::Folder folder, qint64 id) const;
    /// Nothing for an id that names no file.
    std::optional<QString> path(Session::Folder folder, const Value& id) const;
    bool exists(Session::Folder folder, qint64 id) const;
    /// Throws FileError, also for one of more than `atMost` bytes.
    QByteArray read(Session::Folder folder, qint64 id, qint64 atMost) const;
    /// What stood there before stays whole until the new file is; makes the data folder when it is missing.
    /// Throws FileError.
    void write(Session::Folder folder, qint64 id, const QByteArray& bytes,
               Existing existing = Existing::Replace) const;
    /// False when the file is still there afterwards; one that was missing counts as removed.
    bool remove(Session::Folder folder, qint64 id) const;

    /// Adds a row and answers with its number. A number under which a file stands already is passed over: it
    /// may belong to a newer state of the catalog than the one that was restored. Throws SqlError.
    qint64 addRow(Recordset& rows, const QString& key, Recordset::Assignments values,
                  Session::Folder folder) const;

private:
    const Session& m_session;
};

} // namespace tessaranth
