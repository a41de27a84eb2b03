// SPDX-License-Identifier: GPL-3.0-or-later
#include "attachments/forms/ImagesPanel.h"

#include "attachments/forms/PictureBox.h"
#include "store/Session.h"
#include "widgets/FormHelpers.h"
#include "widgets/WindowProgress.h"

#include <QAction>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QGuiApplication>
#include <QMimeData>

namespace tessaranth {

namespace {

/// More windows than these are not opened without a question.
constexpr int windowsUnasked = 20;

QImage imageOf(const QMimeData* data) {
    return data && data->hasImage() ? qvariant_cast<QImage>(data->imageData()) : QImage();
}

bool clipboardHasImage() {
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    return data && data->hasImage();
}

QImage clipboardImage() { return imageOf(QGuiApplication::clipboard()->mimeData()); }

} // namespace

ImagesPanel::ImagesPanel(const CardContext& context, QWidget* parent)
    : ImagesPanel(context, std::make_unique<CardImages>(context.session, CardOwner{context.code, context.id}),
                  parent) {}

ImagesPanel::ImagesPanel(const CardContext& context, std::unique_ptr<CardImages> images, QWidget* parent)
    : PagedPanel(context, images->files(),
                 {QStringLiteral("mnuCardImages"), QStringLiteral("Images"), QStringLiteral("Back1"),
                  QStringLiteral("Forward1"), QStringLiteral("Show previous image"),
                  QStringLiteral("Show next image"), QStringLiteral("PgUp"), QStringLiteral("PgDown"),
                  tr("Sort images"), tr("Order of the images"), QStringLiteral("Images")},
                 parent),
      m_images(std::move(images)) {
    setObjectName(QStringLiteral("imagesPanel"));
    setAcceptDrops(true);
    addCommands();
    buildUi(buildBox());
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, &ImagesPanel::enable);
    load();
}

void ImagesPanel::addCommands() {
    const auto one = [this] { return hasCurrent(); };
    const auto readable = [this] { return hasFile(); };
    const auto added = [this](qint64 id) {
        if (id != 0)
            loadChanged(id);
    };
    const auto replaced = [this](bool done) {
        if (done)
            loadChanged(current());
    };
    addTurning();
    addEntry(QStringLiteral("AddFile"), tr("&Add from file..."), QStringLiteral("Ins"), QStringLiteral("Add"),
             [this, added] { added(m_images->ImportImageFromFile()); });
    addEntry(
        QStringLiteral("AddClip"), tr("Add from clip&board..."), QStringLiteral("Ctrl+V"),
        QStringLiteral("Paste"),
        [this, added] { added(m_images->PasteImageFromClipboard(clipboardImage())); }, clipboardHasImage);
    addKeeping();
    addEntry(
        QStringLiteral("ReplaceFile"), tr("Replace from &file..."), {}, QStringLiteral("Replace"),
        [this, replaced] { replaced(m_images->Replace_Image(current())); }, one);
    addEntry(
        QStringLiteral("ReplaceClip"), tr("Replace from c&lipboard"), {}, QStringLiteral("Replace"),
        [this, replaced] { replaced(m_images->replace(current(), clipboardImage())); },
        [this] { return hasCurrent() && clipboardHasImage(); });
    addEntry(
        QStringLiteral("All"), tr("&Open all"), {}, QStringLiteral("Images"), [this] { ImagesAllToPic(); },
        one);
    addSorting();
    addEntry(
        QStringLiteral("Export"), tr("&Export..."), {}, QStringLiteral("Export"),
        [this] { m_images->ExportImageToFile(current()); }, readable);
    addEntry(
        QStringLiteral("Copy"), tr("&Copy"), QStringLiteral("Ctrl+C"), QStringLiteral("Copy"),
        [this] { copy(); }, readable);
}

QWidget* ImagesPanel::buildBox() {
    m_box = new PictureBox;
    m_box->setObjectName(QStringLiteral("picImage"));
    const auto open = [this] {
        if (hasCurrent())
            emit openPictures(m_context.code, m_context.id, index());
    };
    connect(m_box, &PictureBox::doubleClicked, this, open);
    auto* enlarge = new QAction(m_box);
    enlarge->setShortcuts({Qt::Key_Return, Qt::Key_Enter});
    enlarge->setShortcutContext(Qt::WidgetShortcut);
    connect(enlarge, &QAction::triggered, this, open);
    m_box->addAction(enlarge);
    return m_box;
}

void ImagesPanel::showCurrent() {
    QString tip;
    if (!hasCurrent()) {
        m_box->showText(
            tr("No images yet.\nDrop picture files here, paste one, or press Ins to choose one."));
    } else if (!hasFile()) {
        m_box->showText(QStringLiteral("Missed file"));
    } else {
        const QString file = m_images->path(current());
        const PictureFile::Facts facts = PictureFile::facts(file);
        tip = QStringLiteral("File size: ") +
              QLocale().formattedDataSize(facts.bytes, 1, QLocale::DataSizeTraditionalFormat) +
              QStringLiteral("; ") + QString::number(facts.size.width()) + QStringLiteral(" x ") +
              QString::number(facts.size.height()) + QStringLiteral(" pixel. Double-Click to enlarge");
        m_box->showFile(file);
    }
    m_box->setToolTip(tip.isEmpty() ? m_box->text() : tip);
    m_box->setAccessibleName(hasCurrent() && !currentTitle().isEmpty() ? currentTitle()
                                                                       : tr("Image of the card"));
    m_box->setAccessibleDescription(m_box->text());
}

void ImagesPanel::ImagesAllToPic() {
    if (count() > windowsUnasked &&
        m_context.session.messages().ask({applicationTitle,
                                          tr("Open %1 windows, one for each image?").arg(count()),
                                          {Answer::Yes, Answer::No},
                                          Answer::No}) != Answer::Yes)
        return;
    for (int index = 0; index < count(); ++index)
        emit openPictures(m_context.code, m_context.id, index);
}

void ImagesPanel::copy() {
    const QImage image = m_images->whole(current());
    if (!image.isNull())
        QGuiApplication::clipboard()->setImage(image);
}

void ImagesPanel::dragEnterEvent(QDragEnterEvent* event) {
    if (FormHelpers::filesOf(event->mimeData()).isEmpty() && !event->mimeData()->hasImage())
        return;
    event->setDropAction(Qt::CopyAction); // the source keeps its files
    event->accept();
}

// The program that the pictures come from waits until this returns, and adding them asks for titles.
void ImagesPanel::dropEvent(QDropEvent* event) {
    event->setDropAction(Qt::CopyAction);
    event->accept();
    QMetaObject::invokeMethod(
        this,
        [this, files = FormHelpers::filesOf(event->mimeData()), image = imageOf(event->mimeData())] {
            if (!files.isEmpty())
                addFiles(files);
            else if (const qint64 added = m_images->PasteImageFromClipboard(image))
                loadChanged(added);
        },
        Qt::QueuedConnection);
}

void ImagesPanel::addFiles(const QStringList& files) {
    int added = 0;
    {
        WindowProgress progress(this);
        added = m_images->addFiles(files, progress);
    }
    if (added == 0)
        return;
    loadChanged(current());
    showPage(count() - added);
}

} // namespace tessaranth
