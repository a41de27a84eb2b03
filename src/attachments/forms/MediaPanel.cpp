// SPDX-License-Identifier: GPL-3.0-or-later
#include "attachments/forms/MediaPanel.h"

#include "attachments/forms/frmMediaProperties.h"
#include "store/Guarded.h"
#include "store/Session.h"
#include "widgets/FormHelpers.h"
#include "widgets/WindowProgress.h"

#include <QClipboard>
#include <QDragEnterEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QMimeData>
#include <QStyledItemDelegate>
#include <QTreeView>

namespace tessaranth {

namespace {

constexpr int sizeColumn = 2;
const QString folderKind = QStringLiteral("Media");

/// Bytes as people read them; the list keeps the number, which sorts.
class SizeDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QString displayText(const QVariant& value, const QLocale& locale) const override {
        bool isNumber = false;
        const qint64 bytes = value.toString().toLongLong(&isNumber);
        return isNumber ? locale.formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat)
                        : value.toString();
    }
};

QStringList clipboardFiles() { return FormHelpers::filesOf(QGuiApplication::clipboard()->mimeData()); }

} // namespace

MediaPanel::MediaPanel(const CardContext& context, QWidget* parent)
    : ListPanel(
          context,
          {QStringLiteral("lvMedia"), QStringLiteral("Media title"), tr("Media files"),
           tr("No media files yet.\nDrop files here, paste them, or press Ins to choose some. The files "
              "stay where they are.")},
          parent),
      m_media(context.session, {context.code, context.id}) {
    const auto one = [this] { return hasOne(); };
    const auto some = [this] { return hasSome(); };
    addEntry(
        QStringLiteral("mnuCardMediaOpen"), tr("&Open"), {}, [this] { m_media.OpenMediaFile(theOne()); },
        one);
    addEntry(
        QStringLiteral("mnuCardMediaExplore"), tr("Sho&w in its folder"), {},
        [this] { m_media.ExploreMedia(theOne()); }, one);
    addEntry(QStringLiteral("mnuCardMediaAddFind"), tr("&Add files..."), QStringLiteral("Ins"),
             [this] { ImportMediaFromFile(); });
    addEntry(
        QStringLiteral("mnuCardMediaAddPaste"), tr("&Paste files"), QStringLiteral("Ctrl+V"),
        [this] { ImportMediaFromClipboard(); }, [] { return !clipboardFiles().isEmpty(); });
    addEntry(
        QStringLiteral("mnuCardMediaRename"), tr("&Rename..."), QStringLiteral("F2"),
        [this] {
            if (m_media.Rename_Media(theOne()))
                load();
        },
        one);
    addEntry(
        QStringLiteral("mnuCardMediaUpdate"), tr("&Update the path..."), {}, [this] { Update_Media(); },
        some);
    addEntry(
        QStringLiteral("mnuCardMediaRemove"), tr("Re&move..."), QStringLiteral("Del"),
        [this] { removeSelected(); }, some);
    addEntry(QStringLiteral("mnuCardMediaRefresh"), tr("Re&fresh"), QStringLiteral("F5"), [this] { load(); });
    addEntry(
        QStringLiteral("mnuCardMediaProperties"), tr("Propert&ies..."), QStringLiteral("Alt+Return"),
        [this] { ShowMediaProperties(); }, one);
    setDefaultCommand(QStringLiteral("mnuCardMediaOpen"));
    view()->setItemDelegateForColumn(sizeColumn, new SizeDelegate(view()));
    setAcceptDrops(true); // the list itself takes none, so that they come here
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, &MediaPanel::enable);
    load();
}

void MediaPanel::ImportMediaFromFile() {
    Configuration& configuration = m_context.session.configuration();
    FileRequest request;
    request.mode = FileRequest::Mode::OpenMany;
    request.title = tr("Add media files");
    request.folder = configuration.lastFolder(folderKind);
    request.filterName = tr("All files (*)");
    request.patterns = QStringList{QStringLiteral("*")};
    const QStringList files = m_context.session.messages().chooseFiles(request);
    if (files.isEmpty())
        return;
    configuration.setLastFolder(folderKind, files.front());
    addFiles(files);
}

void MediaPanel::ImportMediaFromClipboard() { addFiles(clipboardFiles()); }

void MediaPanel::addFiles(const QStringList& files) {
    {
        WindowProgress progress(this);
        m_media.add(files, progress);
    }
    load();
}

void MediaPanel::Update_Media() {
    FileRequest request;
    request.mode = FileRequest::Mode::Folder;
    request.title = tr("The folder in which the selected files lie now");
    request.folder = m_context.session.configuration().lastFolder(folderKind);
    const QStringList folder = m_context.session.messages().chooseFiles(request);
    if (folder.isEmpty())
        return;
    {
        WindowProgress progress(this, false);
        m_media.moveTo(selected(), folder.front(), progress);
    }
    load();
}

void MediaPanel::removeSelected() {
    bool removed = false;
    {
        WindowProgress progress(this, false);
        removed = m_media.Remove_Media(selected(), progress);
    }
    if (removed)
        load();
}

void MediaPanel::ShowMediaProperties() {
    MediaFile file;
    if (guarded(m_context.session, [&] { file = m_media.media(theOne()); }) && file.id != 0)
        frmMediaProperties(m_context.icons, file, this).exec();
}

void MediaPanel::dragEnterEvent(QDragEnterEvent* event) {
    if (FormHelpers::filesOf(event->mimeData()).isEmpty())
        return;
    event->setDropAction(Qt::CopyAction); // the files stay where they are
    event->accept();
}

void MediaPanel::dropEvent(QDropEvent* event) {
    event->setDropAction(Qt::CopyAction);
    event->accept();
    // The program the files come from waits until this returns, and the answer may be a message box.
    QMetaObject::invokeMethod(
        this, [this, files = FormHelpers::filesOf(event->mimeData())] { addFiles(files); },
        Qt::QueuedConnection);
}

} // namespace tessaranth
