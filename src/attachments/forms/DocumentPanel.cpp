// SPDX-License-Identifier: GPL-3.0-or-later
#include "attachments/forms/DocumentPanel.h"

#include "attachments/forms/frmRTB.h"
#include "text/RichText.h"
#include "widgets/CardColours.h"
#include "widgets/FormHelpers.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QTextBlock>
#include <QTextEdit>

namespace tessaranth {

DocumentPanel::DocumentPanel(const CardContext& context, QWidget* parent)
    : DocumentPanel(context,
                    std::make_unique<CardDocuments>(context.session, CardOwner{context.code, context.id}),
                    parent) {}

DocumentPanel::DocumentPanel(const CardContext& context, std::unique_ptr<CardDocuments> documents,
                             QWidget* parent)
    : PagedPanel(context, documents->files(),
                 {QStringLiteral("mnuCardDoc"), QStringLiteral("Documents"), QStringLiteral("Back2"),
                  QStringLiteral("Forward2"), QStringLiteral("Show previous document"),
                  QStringLiteral("Show next document"), QStringLiteral("Alt+Left"),
                  QStringLiteral("Alt+Right"), tr("Sort documents"), tr("Order of the documents"),
                  QStringLiteral("Doc")},
                 parent),
      m_documents(std::move(documents)) {
    setObjectName(QStringLiteral("documentPanel"));
    setAcceptDrops(true);
    m_text = new QTextEdit;
    m_text->setObjectName(QStringLiteral("txtDocument"));
    m_text->setReadOnly(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_text->setAcceptDrops(false);
    m_text->setFrameShape(QFrame::NoFrame);
    m_text->setMinimumHeight(24); // as the pictures beside it
    m_text->setTabChangesFocus(true);
    m_text->setContextMenuPolicy(Qt::NoContextMenu); // the panel's own
    m_text->viewport()->installEventFilter(this);
    addCommands();
    buildUi(m_text);
    connect(m_text, &QTextEdit::selectionChanged, this, &DocumentPanel::enable);
    load();
}

void DocumentPanel::addCommands() {
    const auto one = [this] { return hasCurrent(); };
    addTurning();
    addEntry(QStringLiteral("Add"), tr("&Add..."), QStringLiteral("Ins"), QStringLiteral("Add"),
             [this] { New_Doc(); });
    addEntry(
        QStringLiteral("Edit"), tr("&Edit..."), QStringLiteral("Return"), QStringLiteral("Edit"),
        [this] { Edit_Doc(current()); }, one);
    addKeeping();
    addSorting();
    addEntry(
        QStringLiteral("Export"), tr("E&xport..."), {}, QStringLiteral("Export"),
        [this] { m_documents->ExportDocToFile(current()); }, [this] { return hasFile(); });
    addEntry(
        QStringLiteral("Copy"), tr("&Copy"), QStringLiteral("Ctrl+C"), QStringLiteral("Copy"),
        [this] { m_text->copy(); }, [this] { return m_text->textCursor().hasSelection(); });
}

void DocumentPanel::showCurrent() {
    QString instead;
    std::optional<QByteArray> stored;
    if (!hasCurrent())
        instead = tr("No documents yet.\nPress Ins to write one, or drop a text file here.");
    else if (!hasFile())
        instead = QStringLiteral("File not found!");
    else
        stored = m_documents->read(current());
    const RtfOutcome outcome =
        RichText::toDocument(stored.value_or(QByteArray()), *m_text->document(), RichText::charactersAtOnce);
    keepReadable();
    if (outcome.isCut) {
        QTextCursor end(m_text->document());
        end.movePosition(QTextCursor::End);
        end.insertBlock(QTextBlockFormat(), QTextCharFormat());
        end.insertText(tr("(The document goes on. \"Edit\" shows all of it.)"));
    }
    m_instead = instead;
    fitEmptyText();
    m_text->setAccessibleName(hasCurrent() ? currentTitle() : tr("Document of the card"));
    m_text->setAccessibleDescription(instead);
    m_text->moveCursor(QTextCursor::Start);
}

// A card between two tiles may leave room for one line, which says what is the matter, or for none.
void DocumentPanel::fitEmptyText() {
    constexpr int margin = 4;
    m_text->setPlaceholderText(FormHelpers::fittingText(m_instead, m_text->viewport(), margin));
}

bool DocumentPanel::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_text->viewport() && event->type() == QEvent::Resize)
        fitEmptyText();
    return PagedPanel::eventFilter(watched, event);
}

// The colours of a text were chosen for paper; here they stand on the card's.
void DocumentPanel::keepReadable() {
    // The panel hears of another palette before the text in it does.
    const QColor card = palette().color(QPalette::Base);
    struct Piece {
        int from, to;
        QTextCharFormat format;
    };
    std::vector<Piece> pieces; // changing a format while going through them would lose the way
    for (QTextBlock block = m_text->document()->begin(); block.isValid(); block = block.next())
        for (auto at = block.begin(); !at.atEnd(); ++at) {
            const QTextCharFormat format = at.fragment().charFormat();
            const bool hasGround = format.background().style() != Qt::NoBrush;
            if (!hasGround && format.foreground().style() == Qt::NoBrush)
                continue;
            const QColor text =
                format.foreground().style() == Qt::NoBrush ? QColor(Qt::black) : format.foreground().color();
            QTextCharFormat changed;
            changed.setForeground(readableOn(text, hasGround ? format.background().color() : card));
            pieces.push_back(
                {at.fragment().position(), at.fragment().position() + at.fragment().length(), changed});
        }
    QTextCursor cursor(m_text->document());
    cursor.beginEditBlock(); // laid out once
    for (const Piece& piece : pieces) {
        cursor.setPosition(piece.from);
        cursor.setPosition(piece.to, QTextCursor::KeepAnchor);
        cursor.mergeCharFormat(piece.format);
    }
    cursor.endEditBlock();
}

void DocumentPanel::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange && m_text)
        showCurrent();
    PagedPanel::changeEvent(event);
}

void DocumentPanel::Edit_Doc(qint64 id) {
    frmRTB form(m_context, {m_context.code, m_context.id}, frmRTB::Mode::Doc, id, this);
    if (form.exec() == QDialog::Accepted)
        loadChanged(form.document());
}

void DocumentPanel::dragEnterEvent(QDragEnterEvent* event) {
    if (FormHelpers::filesOf(event->mimeData()).isEmpty())
        return;
    event->setDropAction(Qt::CopyAction); // the source keeps its files
    event->accept();
}

// The program that the files come from waits until this returns; a file that is no text leads to a message.
void DocumentPanel::dropEvent(QDropEvent* event) {
    event->setDropAction(Qt::CopyAction);
    event->accept();
    QMetaObject::invokeMethod(
        this,
        [this, files = FormHelpers::filesOf(event->mimeData())] {
            qint64 last = 0;
            for (const QString& file : files)
                if (const qint64 added = m_documents->addFile(file))
                    last = added;
            if (last != 0)
                loadChanged(last);
        },
        Qt::QueuedConnection);
}

} // namespace tessaranth
