// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/AttachmentFiles.h"

#include "store/StepFiles.h"

#include <QFileInfo>

namespace tessaranth {

QString AttachmentFiles::path(Session::Folder folder, qint64 id) const {
    return m_session.dataFolder(folder) + u'/' + QString::number(id);
}

bool AttachmentFiles::exists(Session::Folder folder, qint64 id) const {
    return QFileInfo(path(folder, id)).isFile();
}

void AttachmentFiles::write(Session::Folder folder, qint64 id, const QByteArray& bytes) const {
    m_session.stepFiles().write(int(folder), id, bytes);
}

void AttachmentFiles::remove(Session::Folder folder, qint64 id) const {
    m_session.stepFiles().remove(int(folder), id);
}

} // namespace tessaranth
