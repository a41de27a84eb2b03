// SPDX-License-Identifier: GPL-3.0-or-later
#include "attachments/CardImages.h"

#include "items/Person.h"
#include "platform/FileWriter.h"
#include "platform/Progress.h"
#include "store/Guarded.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("CardImages", text); }

const QString importKind = QStringLiteral("Image");
const QString exportKind = QStringLiteral("ImageEx");
constexpr qsizetype reasonsShown = 10;

const CardFileKind& images() {
    static const CardFileKind kind{QStringLiteral("Images"),
                                   QStringLiteral("ImageID"),
                                   QStringLiteral("ImageTitle"),
                                   Session::Folder::Images,
                                   QStringLiteral("Images"),
                                   QStringLiteral("Image title"),
                                   QStringLiteral("Rename the current image"),
                                   QStringLiteral("Rename Image"),
                                   QStringLiteral("Remove image"),
                                   tr("This picture has been deleted meanwhile."),
                                   tr("Add picture %2 to %1"),
                                   tr("Rename picture %2 of %1"),
                                   tr("Replace picture %2 of %1"),
                                   tr("Remove picture %2 from %1"),
                                   tr("Sort the pictures of %1")};
    return kind;
}

QString titleOf(const QString& file) {
    const QFileInfo info(file);
    const QString base = cleanName(info.completeBaseName());
    return base.isEmpty() ? cleanName(info.fileName()) : base;
}

} // namespace

CardImages::CardImages(Session& session, CardOwner card)
    : m_files(session, std::move(card), images()), m_session(session) {}

// ---- adding

QString CardImages::chooseFile(const QString& title) {
    FileRequest request;
    request.title = title;
    request.folder = m_session.configuration().lastFolder(importKind);
    request.filterName = QStringLiteral("Images (*.bmp;*.jpg;*.gif)");
    request.patterns = {QStringLiteral("*.bmp"), QStringLiteral("*.jpg"), QStringLiteral("*.gif")};
    const QStringList files = m_session.messages().chooseFiles(request);
    if (files.isEmpty())
        return {};
    m_session.configuration().setLastFolder(importKind, files.front());
    return files.front();
}

QString CardImages::askTitle(const QString& proposed) {
    return m_files.askTitle(QStringLiteral("New image title"), QStringLiteral("New image"),
                            QStringLiteral("Add"), proposed);
}

qint64 CardImages::add(const QString& file, const QString& title) {
    qint64 id = 0;
    guarded(m_session, [&] {
        m_files.card().require(m_session);
        id = m_files.addBytes(PictureFile::read(file), title);
    });
    return id;
}

qint64 CardImages::add(const QImage& image, const QString& title) {
    qint64 id = 0;
    guarded(m_session, [&] {
        m_files.card().require(m_session);
        id = m_files.addBytes(PictureFile::fromImage(image), title);
    });
    return id;
}

qint64 CardImages::ImportImageFromFile() {
    const QString file = chooseFile(QStringLiteral("Import Image"));
    qint64 id = 0;
    if (!file.isEmpty())
        guarded(m_session, [&] {
            m_files.card().require(m_session);
            // Read before the title is asked for: nobody should name what cannot be added.
            const QByteArray bytes = PictureFile::read(file);
            const QString title = askTitle(m_files.titleFrom(titleOf(file)));
            if (!title.isEmpty())
                id = m_files.addBytes(bytes, title);
        });
    return id;
}

qint64 CardImages::PasteImageFromClipboard(const QImage& image) {
    if (image.isNull())
        return 0;
    const QString title = askTitle({});
    return title.isEmpty() ? 0 : add(image, title);
}

int CardImages::addFiles(const QStringList& files, Progress& progress) {
    if (files.isEmpty() || !guarded(m_session, [&] { m_files.card().require(m_session); }))
        return 0;
    progress.stage(tr("Adding pictures"));
    int added = 0;
    QStringList reasons;
    for (qsizetype i = 0; i < files.size() && !progress.stopped(); ++i) {
        try {
            const QByteArray bytes = PictureFile::read(files[i]);
            const QString proposed = m_files.titleFrom(titleOf(files[i]));
            const QString title = files.size() == 1 ? askTitle(proposed) : proposed;
            if (!title.isEmpty() && m_files.addBytes(bytes, title) != 0)
                ++added;
        } catch (const Error& error) {
            reasons << error.reason();
        }
        progress.step(i + 1, files.size());
    }
    if (reasons.size() > reasonsShown)
        reasons = reasons.mid(0, reasonsShown) << tr("... (%1 in all)").arg(reasons.size());
    if (!reasons.isEmpty())
        m_session.messages().warning(applicationTitle, reasons.join(u'\n'));
    return added;
}

// ---- changing

bool CardImages::Replace_Image(qint64 id) {
    const QString file = chooseFile(tr("Replace the current image"));
    return !file.isEmpty() && replace(id, file);
}

bool CardImages::replace(qint64 id, const QString& file) {
    return guarded(m_session, [&] { m_files.replaceBytes(id, PictureFile::read(file)); });
}

bool CardImages::replace(qint64 id, const QImage& image) {
    return guarded(m_session, [&] { m_files.replaceBytes(id, PictureFile::fromImage(image)); });
}

// ---- giving away

bool CardImages::ExportImageToFile(qint64 id) {
    FileRequest request;
    request.mode = FileRequest::Mode::Save;
    request.title = QStringLiteral("Export Image");
    request.folder = m_session.configuration().lastFolder(exportKind);
    request.filterName = QStringLiteral("Bitmap image (bmp)");
    request.patterns = QStringList{QStringLiteral("*.bmp")};
    request.defaultExtension = QStringLiteral(".bmp");
    const QStringList files = m_session.messages().chooseFiles(request);
    if (files.isEmpty() || !exportTo(id, files.front()))
        return false;
    m_session.configuration().setLastFolder(exportKind, files.front());
    return true;
}

bool CardImages::exportTo(qint64 id, const QString& file) {
    return guarded(m_session, [&] {
        const QImage image = PictureFile::decode(path(id));
        FileWriter target(file);
        PictureFile::writeBitmap(image, target.device());
        target.commit();
    });
}

QImage CardImages::whole(qint64 id) {
    QImage image;
    guarded(m_session, [&] { image = PictureFile::decode(path(id)); });
    return image;
}

} // namespace tessaranth
