// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/AttachmentFiles.h"

#include "platform/Errors.h"
#include "platform/FileReader.h"
#include "store/StepFiles.h"

#include <QCoreApplication>
#include <QDir>

namespace tessaranth {

QString AttachmentFiles::path(Session::Folder folder, qint64 id) const {
    return m_session.dataFolder(folder) + u'/' + QString::number(id);
}

std::optional<QString> AttachmentFiles::path(Session::Folder folder, const Value& id) const {
    const auto* number = std::get_if<qint64>(&id.data());
    return number ? std::optional(path(folder, *number)) : std::nullopt;
}

bool AttachmentFiles::exists(Session::Folder folder, qint64 id) const {
    return isPlainFile(path(folder, id));
}

QByteArray AttachmentFiles::read(Session::Folder folder, qint64 id, qint64 atMost) const {
    return readFile(path(folder, id), atMost, Links::Refuse);
}

void AttachmentFiles::write(Session::Folder folder, qint64 id, const QByteArray& bytes,
                            Existing existing) const {
    const QString file = path(folder, id);
    if (isTaken(file) && existing == Existing::Refuse)
        throw FileError(
            QCoreApplication::translate("AttachmentFiles", "%1 cannot be written: a file stands there")
                .arg(QDir::toNativeSeparators(file)));
    if (isTaken(file) && !isPlainFile(file))
        throw FileError(QCoreApplication::translate("AttachmentFiles", "%1 cannot be written: it is no file")
                            .arg(QDir::toNativeSeparators(file)));
    m_session.stepFiles().write(int(folder), id, bytes);
}

void AttachmentFiles::remove(Session::Folder folder, qint64 id) const {
    m_session.stepFiles().remove(int(folder), id);
}

qint64 AttachmentFiles::addRow(Recordset& rows, const QString& key, Recordset::Assignments values,
                               Session::Folder folder) const {
    const int row = rows.add(values);
    qint64 id = rows.value(row, key).toInteger();
    if (!isTaken(path(folder, id)))
        return id;
    rows.remove(row);
    while (isTaken(path(folder, id)))
        ++id;
    values.emplace_back(key, id);
    rows.add(values);
    return id;
}

} // namespace tessaranth
