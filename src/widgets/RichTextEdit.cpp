// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/RichTextEdit.h"

#include "text/RichText.h"

#include <QImage>
#include <QKeyEvent>
#include <QMimeData>
#include <QTextDocumentFragment>

namespace tessaranth {

namespace {

const QString typing = QStringLiteral("Typing");

/// Under these names programs give RTF away; the last is how Qt passes on what Windows calls so.
const QString rtfFormats[] = {QStringLiteral("text/rtf"), QStringLiteral("application/rtf"),
                              QStringLiteral("text/richtext"),
                              QStringLiteral("application/x-qt-windows-mime;value=\"Rich Text Format\"")};

/// What was copied, in the format; empty when it is no more than plain text.
QByteArray rtfOf(const QMimeData& source) {
    for (const QString& format : rtfFormats)
        if (source.hasFormat(format))
            return source.data(format);
    if (source.hasHtml()) {
        QTextDocument document;
        document.setDefaultFont(QFont(RichText::defaultFont, RichText::defaultPoints));
        document.setHtml(source.html());
        return RichText::fromDocument(document);
    }
    if (source.hasImage() && !source.hasText())
        return RichText::fromImage(qvariant_cast<QImage>(source.imageData()));
    return {};
}

} // namespace

RichTextEdit::RichTextEdit(QWidget* parent) : QTextEdit(parent), m_action(typing) {
    setUndoRedoEnabled(true);
    connect(document(), &QTextDocument::undoCommandAdded, this,
            [this] { m_names.insert(document()->availableUndoSteps(), m_action); });
}

QString RichTextEdit::undoName() const {
    return document()->isUndoAvailable() ? m_names.value(document()->availableUndoSteps(), typing)
                                         : QString();
}

QString RichTextEdit::redoName() const {
    return document()->isRedoAvailable() ? m_names.value(document()->availableUndoSteps() + 1, typing)
                                         : QString();
}

void RichTextEdit::cutSelection() {
    change(QStringLiteral("Cut"), [this] { cut(); });
}

void RichTextEdit::pasteClipboard() {
    change(QStringLiteral("Paste"), [this] { paste(); });
}

void RichTextEdit::keyPressEvent(QKeyEvent* event) {
    struct Named {
        QKeySequence::StandardKey key;
        const char* name;
    };
    static const Named all[] = {{QKeySequence::Cut, "Cut"},
                                {QKeySequence::Paste, "Paste"},
                                {QKeySequence::Delete, "Delete"},
                                {QKeySequence::DeleteEndOfWord, "Delete"},
                                {QKeySequence::DeleteStartOfWord, "Delete"},
                                {QKeySequence::DeleteEndOfLine, "Delete"},
                                {QKeySequence::DeleteCompleteLine, "Delete"}};
    QString name = event->key() == Qt::Key_Backspace ? QStringLiteral("Delete") : typing;
    for (const Named& each : all)
        if (event->matches(each.key))
            name = QLatin1String(each.name);
    change(name, [&] { QTextEdit::keyPressEvent(event); });
}

void RichTextEdit::dropEvent(QDropEvent* event) {
    change(QStringLiteral("Drag Drop"), [&] { QTextEdit::dropEvent(event); });
}

QMimeData* RichTextEdit::createMimeDataFromSelection() const {
    QMimeData* data = QTextEdit::createMimeDataFromSelection();
    QTextDocument copied;
    copied.setDefaultFont(document()->defaultFont());
    QTextCursor(&copied).insertFragment(textCursor().selection());
    const QByteArray rtf = RichText::fromDocument(copied);
    for (const QString& format : rtfFormats)
        data->setData(format, rtf);
    return data;
}

bool RichTextEdit::canInsertFromMimeData(const QMimeData* source) const {
    return source->hasText() || !rtfOf(*source).isEmpty();
}

void RichTextEdit::insertFromMimeData(const QMimeData* source) {
    const QByteArray rtf = rtfOf(*source);
    if (!looksLikeRtf(rtf)) {
        QTextEdit::insertFromMimeData(source);
        return;
    }
    QTextCursor cursor = textCursor();
    RichText::insert(rtf, cursor);
    ensureCursorVisible();
}

} // namespace tessaranth
