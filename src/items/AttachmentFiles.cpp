// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/AttachmentFiles.h"

#include "platform/Errors.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSaveFile>

namespace tessaranth {

QString AttachmentFiles::path(Session::Folder folder, qint64 id) const {
    return m_session.dataFolder(folder) + u'/' + QString::number(id);
}

bool AttachmentFiles::exists(Session::Folder folder, qint64 id) const {
    return QFileInfo(path(folder, id)).isFile();
}

void AttachmentFiles::write(Session::Folder folder, qint64 id, const QByteArray& bytes) const {
    QDir().mkpath(m_session.dataFolder(folder));
    QSaveFile target(path(folder, id));
    if (!target.open(QIODevice::WriteOnly) || target.write(bytes) != bytes.size() || !target.commit())
        throw FileError(QCoreApplication::translate("AttachmentFiles", "%1 cannot be written: %2")
                            .arg(QDir::toNativeSeparators(target.fileName()), target.errorString()));
}

bool AttachmentFiles::remove(Session::Folder folder, qint64 id) const {
    const QString file = path(folder, id);
    return QFile::remove(file) || !QFileInfo::exists(file);
}

} // namespace tessaranth
