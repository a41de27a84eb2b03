// SPDX-License-Identifier: GPL-3.0-or-later
#include "attachments/forms/frmPic.h"

#include "items/OpenCards.h"
#include "widgets/IconStore.h"
#include "widgets/PictureView.h"

#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <QVBoxLayout>

namespace tessaranth {

namespace {

constexpr int zoomChoices[] = {10, 25, 50, 75, 100, 150, 200, 400, 800};

struct PointerMode {
    PictureView::Pointer pointer;
    const char* command;
    const char* iconKey;
    const char* tip;
};
const PointerMode pointerModes[] = {{PictureView::Pointer::Move, "mnuToolsZoomNone", "ZoomNone",
                                     QT_TRANSLATE_NOOP("frmPic", "Move the picture")},
                                    {PictureView::Pointer::ZoomIn, "mnuToolsZoomIn", "ZoomIn",
                                     QT_TRANSLATE_NOOP("frmPic", "A click zooms in")},
                                    {PictureView::Pointer::ZoomOut, "mnuToolsZoomOut", "ZoomOut",
                                     QT_TRANSLATE_NOOP("frmPic", "A click zooms out")}};

} // namespace

frmPic::frmPic(const FormContext& context, const CardOwner& card, int index, QWidget* parent)
    : ChildWindow(parent), m_context(context), m_owner(OpenCards::key(card.code, card.id)),
      m_images(context.session, card), m_commands(this, context.icons) {
    setObjectName(QStringLiteral("frmPic"));
    addCommands();
    buildUi();
    setPointer(0);
    readList();
    showImage(index);
    resize(720, 560);
}

// Several windows may show the same picture, and one window shows several.
QString frmPic::key() const { return QStringLiteral("#Pic") + QString::number(quintptr(this), 16); }

void frmPic::addCommands() {
    const auto readable = [this] { return hasFile(); };
    m_commands.carry(
        QStringLiteral("mnuCardImagesBack"), [this] { step(-1); }, [this] { return m_index > 0; });
    m_commands.carry(
        QStringLiteral("mnuCardImagesForward"), [this] { step(1); },
        [this] { return m_index + 1 < count(); });
    m_commands.carry(
        QStringLiteral("mnuCardImagesExport"), [this] { m_images.ExportImageToFile(m_list.id(m_index)); },
        readable);
    m_commands.carry(
        QStringLiteral("mnuCardImagesCopy"), [this] { copy(); }, readable);
    for (int mode = 0; mode < int(std::size(pointerModes)); ++mode)
        m_commands.carry(QLatin1String(pointerModes[mode].command), [this, mode] { setPointer(mode); });
}

void frmPic::buildUi() {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    auto* row = new QHBoxLayout;
    row->setContentsMargins(6, 4, 6, 4);
    m_view = new PictureView;
    m_view->setObjectName(QStringLiteral("picView"));
    m_back = addButton(row, QStringLiteral("Back1"), QStringLiteral("Back1"),
                       QStringLiteral("Show previous image"), [this] { step(-1); });
    m_position = new QLabel;
    m_position->setObjectName(QStringLiteral("lblImagePosition"));
    m_position->setContentsMargins(4, 0, 4, 0);
    row->addWidget(m_position);
    m_forward = addButton(row, QStringLiteral("Forward1"), QStringLiteral("Forward1"),
                          QStringLiteral("Show next image"), [this] { step(1); });
    row->addSpacing(12);
    addZoomControls(row);
    row->addSpacing(12);
    addPointerButtons(row);
    row->addSpacing(12);
    m_facts = new QLabel;
    m_facts->setObjectName(QStringLiteral("lblFacts"));
    m_facts->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_facts->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    row->addWidget(m_facts, 1);
    layout->addLayout(row);
    layout->addWidget(m_view, 1);
    connect(m_view, &PictureView::zoomChanged, this, &frmPic::showZoom);
    setTabOrder(m_view, m_back);
    setFocusProxy(m_view);
    m_view->setFocus();
}

QToolButton* frmPic::addButton(QHBoxLayout* row, const QString& name, const QString& iconKey,
                               const QString& tip, const std::function<void()>& what) {
    auto* button = new QToolButton;
    button->setObjectName(name);
    button->setIcon(m_context.icons.icon(iconKey));
    button->setAutoRaise(true);
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    button->setFocusPolicy(Qt::TabFocus); // a click leaves the keys to the picture
    connect(button, &QToolButton::clicked, this, what);
    row->addWidget(button);
    return button;
}

void frmPic::addZoomControls(QHBoxLayout* row) {
    addButton(row, QStringLiteral("cmdZoomOut"), QStringLiteral("ZoomOut"), tr("Smaller (-)"),
              [this] { m_view->zoomOut(); });
    m_zoom = new QComboBox;
    m_zoom->setObjectName(QStringLiteral("cboZoom"));
    m_zoom->setAccessibleName(tr("Zoom in percent"));
    m_zoom->setEditable(true);
    m_zoom->setInsertPolicy(QComboBox::NoInsert);
    for (const int choice : zoomChoices)
        m_zoom->addItem(QString::number(choice) + u'%');
    connect(m_zoom, &QComboBox::activated, this, &frmPic::zoomAsTyped);
    connect(m_zoom->lineEdit(), &QLineEdit::editingFinished, this, &frmPic::zoomAsTyped);
    row->addWidget(m_zoom);
    addButton(row, QStringLiteral("cmdZoomIn"), QStringLiteral("ZoomIn"), tr("Larger (+)"),
              [this] { m_view->zoomIn(); });
    addButton(row, QStringLiteral("cmdFit"), QStringLiteral("WinFit"), tr("Fit into the window (F)"),
              [this] { m_view->fit(); });
    QToolButton* own = addButton(row, QStringLiteral("cmdOwnSize"), {}, tr("Its own size (0)"),
                                 [this] { m_view->setZoom(100); });
    own->setText(QStringLiteral("1:1"));
}

void frmPic::addPointerButtons(QHBoxLayout* row) {
    row->addWidget(new QLabel(tr("Click:")));
    for (int mode = 0; mode < int(std::size(pointerModes)); ++mode) {
        const PointerMode& pointer = pointerModes[mode];
        QToolButton* button = addButton(row, QLatin1String(pointer.command), QLatin1String(pointer.iconKey),
                                        tr(pointer.tip), [this, mode] { setPointer(mode); });
        button->setCheckable(true);
        m_pointers.push_back(button);
    }
}

void frmPic::setPointer(int pointer) {
    m_view->setPointer(pointerModes[pointer].pointer);
    for (int mode = 0; mode < int(m_pointers.size()); ++mode)
        m_pointers[size_t(mode)]->setChecked(mode == pointer);
    emit changed();
}

// ---- which picture

bool frmPic::readList() {
    ItemList list;
    if (!m_images.LoadImages(list))
        return false;
    m_list = std::move(list);
    return true;
}

bool frmPic::reload() {
    const qint64 id = m_index >= 0 ? m_list.id(m_index) : 0;
    if (!readList())
        return true; // the failure was told; what is shown may stay
    int index = m_index;
    for (int row = 0; row < count(); ++row)
        if (m_list.id(row) == id)
            index = row;
    showImage(index);
    return count() > 0;
}

bool frmPic::hasFile() const { return m_index >= 0 && m_images.hasFile(m_list.id(m_index)); }

void frmPic::showImage(int index) {
    m_index = qMin(qMax(index, 0), count() - 1);
    showCurrent();
}

void frmPic::step(int by) {
    const int target = m_index + by;
    if (target < 0 || target >= count())
        return;
    showImage(target);
}

void frmPic::showCurrent() {
    if (m_index < 0)
        m_view->showText(tr("The card has no images."));
    else if (!hasFile())
        m_view->showText(QStringLiteral("Missed file"));
    else
        m_view->showFile(m_images.path(m_list.id(m_index)));
    const QString title = m_index >= 0 ? m_list.text(m_index, 0) : QString();
    setWindowTitle(title.isEmpty() ? tr("Image") : title);
    m_view->setAccessibleName(windowTitle());
    m_position->setText(m_index >= 0
                            ? QString::number(m_index + 1) + QStringLiteral(" of ") + QString::number(count())
                            : QString());
    const QSize size = m_view->pictureSize();
    m_facts->setText(size.isEmpty() ? QString()
                                    : QStringLiteral("%1 x %2 pixel").arg(size.width()).arg(size.height()));
    m_back->setEnabled(m_index > 0);
    m_forward->setEnabled(m_index + 1 < count());
    emit changed();
}

void frmPic::copy() {
    const QImage image = m_images.whole(m_list.id(m_index));
    if (!image.isNull())
        QGuiApplication::clipboard()->setImage(image);
}

// ---- zoom

void frmPic::showZoom() { m_zoom->setEditText(QString::number(qRound(m_view->zoom())) + u'%'); }

void frmPic::zoomAsTyped() {
    QString text = m_zoom->currentText();
    bool isNumber = false;
    const double typed = text.remove(u'%').trimmed().toDouble(&isNumber);
    // What is shown already was not typed: a fitted picture would otherwise lose its fit when the field is
    // left.
    if (isNumber && typed >= PictureView::smallest && typed <= PictureView::largest &&
        qRound(typed) != qRound(m_view->zoom()))
        m_view->setZoom(typed);
    showZoom();
    m_view->setFocus();
}

void frmPic::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal: // the key of + without Shift on many keyboards
        return m_view->zoomIn();
    case Qt::Key_Minus:
        return m_view->zoomOut();
    case Qt::Key_0:
        return m_view->setZoom(100);
    case Qt::Key_F:
        return m_view->fit();
    case Qt::Key_Left:
    case Qt::Key_PageUp:
        return step(-1);
    case Qt::Key_Right:
    case Qt::Key_PageDown:
        return step(1);
    case Qt::Key_Home:
        return showImage(0);
    case Qt::Key_End:
        return showImage(count() - 1);
    default:
        ChildWindow::keyPressEvent(event);
    }
}

} // namespace tessaranth
