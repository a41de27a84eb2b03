// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/forms/ImagesPanel.h"

#include "items/forms/PictureBox.h"
#include "items/forms/frmOrder.h"
#include "store/Session.h"
#include "ui/IconStore.h"
#include "ui/WindowProgress.h"

#include <QAction>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QMimeData>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

namespace tessaranth {

namespace {

/// More windows than these are not opened without a question.
constexpr int windowsUnasked = 20;

QStringList filesOf(const QMimeData* data) {
    QStringList files;
    for (const QUrl& url : data->urls())
        if (url.isLocalFile())
            files.push_back(url.toLocalFile());
    return files;
}

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
    : CardPanel(context, parent), m_images(context.session, {context.code, context.id}) {
    setObjectName(QStringLiteral("imagesPanel"));
    setAcceptDrops(true);
    addCommands();
    buildUi();
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, &ImagesPanel::enable);
    load();
}

void ImagesPanel::addCommands() {
    const auto one = [this] { return hasCurrent(); };
    const auto readable = [this] { return hasReadableFile(); };
    const auto several = [this] { return m_list.rowCount() > 1; };
    const auto changedImage = [this](bool done) {
        if (done)
            load();
    };
    const auto added = [this](qint64 id) {
        if (id != 0)
            loadAt(id);
    };
    addEntry(
        QStringLiteral("mnuCardImagesBack"), tr("&Previous image"), QStringLiteral("PgUp"),
        QStringLiteral("Back1"), [this] { showImage(m_index - 1); }, [this] { return m_index > 0; });
    addEntry(
        QStringLiteral("mnuCardImagesForward"), tr("&Next image"), QStringLiteral("PgDown"),
        QStringLiteral("Forward1"), [this] { showImage(m_index + 1); },
        [this] { return m_index + 1 < m_list.rowCount(); });
    addEntry(QStringLiteral("mnuCardImagesAddFile"), tr("&Add from file..."), QStringLiteral("Ins"),
             QStringLiteral("Add"), [this, added] { added(m_images.ImportImageFromFile()); });
    addEntry(
        QStringLiteral("mnuCardImagesAddClip"), tr("Add from clip&board..."), QStringLiteral("Ctrl+V"),
        QStringLiteral("Paste"), [this, added] { added(m_images.PasteImageFromClipboard(clipboardImage())); },
        clipboardHasImage);
    addEntry(
        QStringLiteral("mnuCardImagesRename"), tr("&Rename..."), QStringLiteral("F2"),
        QStringLiteral("Rename"), [this, changedImage] { changedImage(m_images.Rename_Image(current())); },
        one);
    addEntry(
        QStringLiteral("mnuCardImagesRemove"), tr("Re&move..."), QStringLiteral("Del"),
        QStringLiteral("Remove"), [this, changedImage] { changedImage(m_images.Remove_Image(current())); },
        one);
    addEntry(
        QStringLiteral("mnuCardImagesReplaceFile"), tr("Replace from &file..."), {},
        QStringLiteral("Replace"), [this, changedImage] { changedImage(m_images.Replace_Image(current())); },
        one);
    addEntry(
        QStringLiteral("mnuCardImagesReplaceClip"), tr("Replace from c&lipboard"), {},
        QStringLiteral("Replace"),
        [this, changedImage] { changedImage(m_images.replace(current(), clipboardImage())); },
        [this] { return hasCurrent() && clipboardHasImage(); });
    addEntry(
        QStringLiteral("mnuCardImagesAll"), tr("&Open all"), {}, QStringLiteral("Images"),
        [this] { openAll(); }, one);
    addEntry(
        QStringLiteral("mnuCardImagesSort"), tr("&Sort..."), {}, QStringLiteral("Sort"), [this] { sort(); },
        several);
    addEntry(
        QStringLiteral("mnuCardImagesExport"), tr("&Export..."), {}, QStringLiteral("Export"),
        [this] { m_images.ExportImageToFile(current()); }, readable);
    addEntry(
        QStringLiteral("mnuCardImagesCopy"), tr("&Copy"), QStringLiteral("Ctrl+C"), QStringLiteral("Copy"),
        [this] { copy(); }, readable);
}

void ImagesPanel::addEntry(const QString& key, const QString& caption, const QString& shortcut,
                           const QString& iconKey, std::function<void()> what, std::function<bool()> when) {
    addCommand(key, std::move(what), std::move(when));
    auto* action = new QAction(m_context.icons.icon(iconKey), caption, this);
    action->setObjectName(key);
    action->setShortcut(QKeySequence(shortcut));
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(action, &QAction::triggered, this, [this, key] { run(key); });
    addAction(action);
    m_entries.emplace_back(key, action);
}

void ImagesPanel::buildUi() {
    setContextMenuPolicy(Qt::ActionsContextMenu);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    m_box = new PictureBox;
    m_box->setObjectName(QStringLiteral("picImage"));
    const auto open = [this] {
        if (hasCurrent())
            emit openPictures(m_context.code, m_context.id, m_index);
    };
    connect(m_box, &PictureBox::doubleClicked, this, open);
    auto* enlarge = new QAction(m_box);
    enlarge->setShortcuts({Qt::Key_Return, Qt::Key_Enter});
    enlarge->setShortcutContext(Qt::WidgetShortcut);
    connect(enlarge, &QAction::triggered, this, open);
    m_box->addAction(enlarge);
    layout->addWidget(m_box, 1);

    auto* row = new QHBoxLayout;
    const auto button = [&](int entry, const QString& name, const QString& tip) {
        auto* made = new QToolButton;
        made->setDefaultAction(m_entries[size_t(entry)].second);
        made->setObjectName(name);
        made->setAutoRaise(true);
        made->setToolTip(tip);
        made->setAccessibleName(tip);
        row->addWidget(made);
    };
    button(0, QStringLiteral("Back1"), QStringLiteral("Show previous image"));
    m_position = new QLabel;
    m_position->setObjectName(QStringLiteral("lblImagePosition"));
    row->addWidget(m_position);
    button(1, QStringLiteral("Forward1"), QStringLiteral("Show next image"));
    m_title = new QLabel;
    m_title->setObjectName(QStringLiteral("lblImageTitle"));
    m_title->setTextFormat(Qt::PlainText);
    m_title->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    row->addWidget(m_title, 1);
    layout->addLayout(row);
}

qint64 ImagesPanel::current() const { return hasCurrent() ? m_list.id(m_index) : 0; }

bool ImagesPanel::hasReadableFile() const { return hasCurrent() && m_images.hasFile(current()); }

QString ImagesPanel::heading() const {
    return QStringLiteral("Images (") + QString::number(m_list.rowCount()) + u')';
}

void ImagesPanel::load() { loadAt(current()); }

// Of a picture that is gone the next one takes the place.
void ImagesPanel::loadAt(qint64 id) {
    ItemList list;
    if (!m_images.LoadImages(list))
        return;
    m_list = std::move(list);
    const int count = m_list.rowCount();
    int row = 0;
    while (row < count && m_list.id(row) != id)
        ++row;
    m_index = row < count ? row : qMin(qMax(m_index, 0), count - 1);
    showCurrent();
}

void ImagesPanel::showImage(int index) {
    if (index < 0 || index >= m_list.rowCount())
        return;
    m_index = index;
    showCurrent();
}

void ImagesPanel::showCurrent() {
    QString tip;
    if (!hasCurrent()) {
        m_box->showText(
            tr("No images yet.\nDrop picture files here, paste one, or press Ins to choose one."));
    } else if (!hasReadableFile()) {
        m_box->showText(QStringLiteral("Missed file"));
    } else {
        const QString file = m_images.path(current());
        const PictureFile::Facts facts = PictureFile::facts(file);
        tip = QStringLiteral("File size: ") +
              QLocale().formattedDataSize(facts.bytes, 1, QLocale::DataSizeTraditionalFormat) +
              QStringLiteral("; ") + QString::number(facts.size.width()) + QStringLiteral(" x ") +
              QString::number(facts.size.height()) + QStringLiteral(" pixel. Double-Click to enlarge");
        m_box->showFile(file);
    }
    m_box->setToolTip(tip);
    const QString title = hasCurrent() ? m_list.text(m_index, 0) : QString();
    m_box->setAccessibleName(title.isEmpty() ? tr("Image of the card") : title);
    m_box->setAccessibleDescription(m_box->text());
    m_title->setText(title);
    m_title->setToolTip(title.toHtmlEscaped());
    m_position->setText(hasCurrent() ? QString::number(m_index + 1) + QStringLiteral(" of ") +
                                           QString::number(m_list.rowCount())
                                     : QString());
    enable();
}

void ImagesPanel::enable() {
    for (const auto& [key, action] : m_entries)
        action->setEnabled(canRun(key));
    emit changed();
}

void ImagesPanel::openAll() {
    const int count = m_list.rowCount();
    if (count > windowsUnasked &&
        m_context.session.messages().ask({applicationTitle,
                                          tr("Open %1 windows, one for each image?").arg(count),
                                          {Answer::Yes, Answer::No},
                                          Answer::No}) != Answer::Yes)
        return;
    for (int index = 0; index < count; ++index)
        emit openPictures(m_context.code, m_context.id, index);
}

void ImagesPanel::sort() {
    frmOrder::Entries entries;
    for (int row = 0; row < m_list.rowCount(); ++row)
        entries.emplace_back(m_list.id(row), m_list.text(row, 0));
    frmOrder form(m_context.icons, tr("Sort images"), tr("Order of the images"), QStringLiteral("Images"),
                  entries, this);
    if (form.exec() == QDialog::Accepted && m_images.Sort_Images(form.order()))
        load();
}

void ImagesPanel::copy() {
    const QImage image = m_images.whole(current());
    if (!image.isNull())
        QGuiApplication::clipboard()->setImage(image);
}

void ImagesPanel::dragEnterEvent(QDragEnterEvent* event) {
    if (filesOf(event->mimeData()).isEmpty() && !event->mimeData()->hasImage())
        return;
    event->setDropAction(Qt::CopyAction); // the source keeps its files
    event->accept();
}

void ImagesPanel::dropEvent(QDropEvent* event) {
    event->setDropAction(Qt::CopyAction);
    event->accept();
    const QStringList files = filesOf(event->mimeData());
    if (files.isEmpty()) {
        loadAt(m_images.PasteImageFromClipboard(imageOf(event->mimeData())));
        return;
    }
    int added = 0;
    {
        WindowProgress progress(this);
        added = m_images.addFiles(files, progress);
    }
    if (added == 0)
        return;
    load();
    showImage(m_list.rowCount() - added);
}

} // namespace tessaranth
