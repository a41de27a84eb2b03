// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/CardImages.h"

#include "items/Attachments.h"
#include "items/CMIT.h"
#include "items/Guarded.h"
#include "items/Person.h"
#include "platform/Progress.h"
#include "store/Recordset.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSaveFile>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("CardImages", text); }

constexpr auto folder = Session::Folder::Images;
const QString table = QStringLiteral("Images");
const QString importKind = QStringLiteral("Image");
const QString exportKind = QStringLiteral("ImageEx");
constexpr qsizetype reasonsShown = 10;

QString byId(qint64 id) { return QStringLiteral(" FROM Images WHERE ImageID = ") + QString::number(id); }

QString titleOf(const QString& file) {
    const QFileInfo info(file);
    const QString base = cleanName(info.completeBaseName());
    return (base.isEmpty() ? cleanName(info.fileName()) : base).left(CardImages::maxTitle);
}

QString checkedTitle(const QString& text) {
    const QString title = cleanName(text);
    if (title.isEmpty() || title.size() > CardImages::maxTitle)
        throw Error(tr("A title has 1 to %1 characters.").arg(CardImages::maxTitle));
    return title;
}

} // namespace

bool CardImages::LoadImages(ItemList& list) {
    return guarded(m_session, [&] {
        ItemList found({{QStringLiteral("Title")}});
        const Recordset rows = Recordset::open(
            m_session.connection(),
            QStringLiteral("SELECT * FROM Images WHERE (RelatedID = %1) AND (RelatedCat LIKE '%2') "
                           "ORDER BY OrderNbr")
                .arg(m_card.id)
                .arg(quotedPattern(m_card.code)));
        const int key = rows.fieldIndex(QStringLiteral("ImageID"));
        const int title = rows.fieldIndex(QStringLiteral("ImageTitle"));
        for (int row = 0; row < rows.rowCount(); ++row)
            found.addRow(rows.value(row, key).toInteger(), table, {rows.value(row, title).toText()});
        list = std::move(found);
        return true;
    });
}

QString CardImages::title(qint64 id) {
    QString found;
    guarded(m_session, [&] {
        found = m_session.connection().single(QStringLiteral("SELECT ImageTitle") + byId(id)).toText();
        return true;
    });
    return found;
}

void CardImages::requireImage(qint64 id) {
    if (!m_session.connection().exists(QStringLiteral("SELECT *") + byId(id)))
        throw Error(tr("This picture has been deleted meanwhile."));
}

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
    NameRequest request;
    request.title = QStringLiteral("New image title");
    request.heading = QStringLiteral("New image");
    request.label = QStringLiteral("Image title");
    request.iconKey = table;
    request.button = QStringLiteral("Add");
    request.defaultText = proposed;
    request.maxLength = maxTitle;
    return m_session.messages().inputName(request);
}

qint64 CardImages::addBytes(const QByteArray& bytes, const QString& text) {
    const QString title = checkedTitle(text);
    Transaction transaction(m_session.connection());
    Recordset rows = Recordset::open(
        m_session.connection(),
        QStringLiteral(
            "SELECT * FROM Images WHERE (RelatedID = %1) AND (RelatedCat = '%2') ORDER BY OrderNbr")
            .arg(m_card.id)
            .arg(quoted(m_card.code)));
    rows.add({{QStringLiteral("ImageTitle"), title},
              {QStringLiteral("RelatedID"), m_card.id},
              {QStringLiteral("RelatedCat"), m_card.code},
              {QStringLiteral("OrderNbr"), rows.rowCount() + 1}});
    const qint64 id = m_session.connection().lastKey();
    // The file first: once the row stands it has its picture, and without the file there is no row.
    m_files.write(folder, id, bytes);
    try {
        transaction.commit();
    } catch (const Error&) {
        m_files.remove(folder, id);
        throw;
    }
    return id;
}

qint64 CardImages::add(const QString& file, const QString& title) {
    qint64 id = 0;
    if (m_card.require(m_session))
        guarded(m_session, [&] { return (id = addBytes(PictureFile::read(file), title)) != 0; });
    return id;
}

qint64 CardImages::add(const QImage& image, const QString& title) {
    qint64 id = 0;
    if (m_card.require(m_session))
        guarded(m_session, [&] { return (id = addBytes(PictureFile::fromImage(image), title)) != 0; });
    return id;
}

qint64 CardImages::ImportImageFromFile() {
    const QString file = chooseFile(QStringLiteral("Import Image"));
    qint64 id = 0;
    if (!file.isEmpty() && m_card.require(m_session))
        guarded(m_session, [&] {
            // Read before the title is asked for: nobody should name what cannot be added.
            const QByteArray bytes = PictureFile::read(file);
            const QString title = askTitle(titleOf(file));
            return !title.isEmpty() && (id = addBytes(bytes, title)) != 0;
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
    if (files.isEmpty() || !m_card.require(m_session))
        return 0;
    progress.stage(tr("Adding pictures"));
    int added = 0;
    QStringList reasons;
    for (qsizetype i = 0; i < files.size() && !progress.stopped(); ++i) {
        try {
            const QByteArray bytes = PictureFile::read(files[i]);
            const QString proposed = titleOf(files[i]);
            const QString title = files.size() == 1 ? askTitle(proposed) : proposed;
            if (!title.isEmpty() && addBytes(bytes, title) != 0)
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

bool CardImages::Rename_Image(qint64 id) {
    NameRequest request;
    request.title = QStringLiteral("Rename the current image");
    request.heading = QStringLiteral("Rename Image");
    request.label = QStringLiteral("Image title");
    request.iconKey = table;
    request.button = QStringLiteral("Rename");
    request.defaultText = title(id);
    request.maxLength = maxTitle;
    const QString name = m_session.messages().inputName(request);
    return !name.isEmpty() && rename(id, name);
}

bool CardImages::rename(qint64 id, const QString& text) {
    return guarded(m_session, [&] {
        const QString title = checkedTitle(text);
        requireImage(id);
        Recordset row = Recordset::open(m_session.connection(), QStringLiteral("SELECT *") + byId(id));
        row.update(0, {{QStringLiteral("ImageTitle"), title}});
        return true;
    });
}

bool CardImages::Replace_Image(qint64 id) {
    const QString file = chooseFile(tr("Replace the current image"));
    return !file.isEmpty() && replace(id, file);
}

bool CardImages::replace(qint64 id, const QString& file) {
    return guarded(m_session, [&] { return replaceBytes(id, PictureFile::read(file)); });
}

bool CardImages::replace(qint64 id, const QImage& image) {
    return guarded(m_session, [&] { return replaceBytes(id, PictureFile::fromImage(image)); });
}

bool CardImages::replaceBytes(qint64 id, const QByteArray& bytes) {
    requireImage(id);
    m_files.write(folder, id, bytes);
    return true;
}

QString CardImages::cardName() {
    const ItemKind* kind = itemKind(m_card.code);
    return kind ? CMIT(m_session).nameOf(kind->number, m_card.id) : QString();
}

bool CardImages::Remove_Image(qint64 id) {
    Question question;
    question.title = QStringLiteral("Remove image");
    question.text =
        QStringLiteral("Do you want to delete\n") + title(id) + QStringLiteral("\nfrom ") + cardName() + u'?';
    question.defaultButton = Answer::Cancel;
    return m_session.messages().ask(question) == Answer::Ok && remove(id);
}

bool CardImages::remove(qint64 id) {
    return guarded(m_session, [&] {
        Transaction transaction(m_session.connection());
        m_session.connection().execute(QStringLiteral("DELETE") + byId(id));
        Attachments(m_session).setOrder(table, m_card.code, m_card.id);
        transaction.commit();
        // After the row: a file that is left over can be found and set aside, a lost one cannot.
        m_files.remove(folder, id);
        return true;
    });
}

bool CardImages::Sort_Images(const std::vector<qint64>& order) {
    return guarded(m_session, [&] {
        Transaction transaction(m_session.connection());
        Attachments(m_session).setOrder(table, m_card.code, m_card.id, order);
        transaction.commit();
        return true;
    });
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
        QSaveFile target(file);
        const auto refuse = [&] {
            throw FileError(tr("%1 cannot be written: %2").arg(file, target.errorString()));
        };
        if (!target.open(QIODevice::WriteOnly))
            refuse();
        PictureFile::writeBitmap(image, target);
        if (!target.commit())
            refuse();
        return true;
    });
}

QImage CardImages::whole(qint64 id) {
    QImage image;
    guarded(m_session, [&] {
        image = PictureFile::decode(path(id));
        return true;
    });
    return image;
}

} // namespace tessaranth
