// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/LabelEditor.h"

#include "items/CMIT.h"
#include "store/AttachmentFiles.h"
#include "store/Guarded.h"
#include "text/PictureFile.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QImageReader>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("LabelEditor", text); }

constexpr auto folder = Session::Folder::Labels;

} // namespace

bool LabelEditor::save(qint64& id, const QString& name, const LogoChange& logo) {
    const AttachmentFiles files(m_session);
    return guarded(m_session, [&] {
        Transaction transaction(m_session.connection(),
                                (id == 0 ? tr("Add label %1") : tr("Change label %1")).arg(name.trimmed()));
        CMIT items(m_session);
        const qint64 label = id == 0 ? items.addNamed(ItemKind::Label, name) : id;
        if (label == 0 || (id != 0 && !items.rename(ItemKind::Label, id, name)))
            return false;
        if (logo.what == LogoChange::What::Replace)
            files.write(folder, label, logo.bytes);
        else if (logo.what == LogoChange::What::Remove)
            files.remove(folder, label);
        transaction.commit();
        id = label;
        return true;
    });
}

QByteArray LabelEditor::logo(qint64 id) const {
    const AttachmentFiles files(m_session);
    return id != 0 && files.exists(folder, id) ? files.read(folder, id, PictureFile::maxFileBytes)
                                               : QByteArray();
}

QByteArray LabelEditor::importLogo(const QString& file) {
    QByteArray bytes;
    guarded(m_session, [&] { bytes = PictureFile::read(file); });
    return bytes;
}

QByteArray LabelEditor::pastedLogo(const QImage& image) {
    QByteArray bytes;
    guarded(m_session, [&] { bytes = PictureFile::fromImage(image); });
    return bytes;
}

QImage LabelEditor::decoded(const QByteArray& bytes, const QSize& box) {
    QBuffer buffer;
    buffer.setData(bytes);
    QImageReader reader(&buffer);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (size.width() > box.width() || size.height() > box.height())
        reader.setScaledSize(size.scaled(box, Qt::KeepAspectRatio));
    return reader.read();
}

} // namespace tessaranth
