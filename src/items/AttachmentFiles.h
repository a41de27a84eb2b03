// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/Session.h"

namespace tessaranth {

/// The files of pictures, documents and label logos: each lies in its data folder under the id of its row in
/// decimal, without a suffix.
class AttachmentFiles {
public:
    explicit AttachmentFiles(const Session& session) : m_session(session) {}

    QString path(Session::Folder folder, qint64 id) const;
    bool exists(Session::Folder folder, qint64 id) const;
    /// Writes under a temporary name and renames, so that what stood there before stays whole until the new
    /// file is; makes the data folder when it is missing. Throws FileError.
    void write(Session::Folder folder, qint64 id, const QByteArray& bytes) const;
    /// False when the file is still there afterwards; one that was missing counts as removed.
    bool remove(Session::Folder folder, qint64 id) const;

private:
    const Session& m_session;
};

} // namespace tessaranth
