// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/Session.h"

namespace tessaranth {

/// The files of pictures, documents and label logos: each lies in its data folder under the id of its row in
/// decimal, without a suffix.
class AttachmentFiles {
public:
    explicit AttachmentFiles(Session& session) : m_session(session) {}

    QString path(Session::Folder folder, qint64 id) const;
    bool exists(Session::Folder folder, qint64 id) const;
    // Within a transaction, and with it: what stood there before stays until the rows are safe, then goes
    // into the history. Makes the data folder when it is missing. Throws FileError.
    void write(Session::Folder folder, qint64 id, const QByteArray& bytes) const;
    void remove(Session::Folder folder, qint64 id) const; ///< a missing file counts as removed

private:
    Session& m_session;
};

} // namespace tessaranth
