// SPDX-License-Identifier: GPL-3.0-or-later
#include "attachments/forms/frmRTB.h"

#include "store/Guarded.h"
#include "store/Session.h"
#include "text/RichText.h"
#include "widgets/FormHelpers.h"
#include "widgets/IconStore.h"
#include "widgets/Reading.h"
#include "widgets/RichTextEdit.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFontDatabase>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolBar>
#include <QVBoxLayout>

namespace tessaranth {

namespace {

const QStringList sizes{QStringLiteral("8"), QStringLiteral("9"), QStringLiteral("10"), QStringLiteral("11"),
                        QStringLiteral("12")};
constexpr int smallest = 4;
constexpr int largest = 200;

} // namespace

frmRTB::frmRTB(const FormContext& context, const CardOwner& owner, Mode mode, qint64 document,
               QWidget* parent, Writer write)
    : QDialog(parent), m_context(context), m_owner(owner), m_documents(context.session, owner), m_mode(mode),
      m_write(std::move(write)), m_document(document) {
    setObjectName(QStringLiteral("frmRTB"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    buildUi();
    load();
}

// ---- building

void frmRTB::buildUi() {
    auto* layout = new QVBoxLayout(this);
    m_edit = new RichTextEdit;
    m_edit->setObjectName(QStringLiteral("txtDocument"));
    m_edit->setAccessibleName(tr("Text of the document"));
    m_edit->setContextMenuPolicy(Qt::ActionsContextMenu);
    // Colours are chosen for paper, which is what other programs and printers show them on.
    QPalette paper = m_edit->palette();
    paper.setColor(QPalette::Base, Qt::white);
    paper.setColor(QPalette::Text, Qt::black);
    m_edit->setPalette(paper);
    QToolBar* bar = buildToolBar();
    layout->addWidget(bar);
    layout->addWidget(m_edit, 1);
    m_note = FormHelpers::quietLabel({});
    m_note->setObjectName(QStringLiteral("documentNote"));
    m_note->setWordWrap(true);
    layout->addWidget(m_note);
    QPushButton* done =
        FormHelpers::buttonRow(this, layout, tr("&Save and close"), QStringLiteral("cmdSave"));
    done->setAutoDefault(false);
    done->setDefault(false); // Enter in the fields of the tool bar is for them
    connect(done, &QPushButton::clicked, this, [this] {
        if (!m_edit->document()->isModified() || save())
            reject();
    });
    connect(m_edit, &QTextEdit::currentCharFormatChanged, this, &frmRTB::followFormat);
    connect(m_edit, &QTextEdit::cursorPositionChanged, this, &frmRTB::followFormat);
    connect(m_edit, &QTextEdit::selectionChanged, this, &frmRTB::enable);
    connect(m_edit->document(), &QTextDocument::contentsChanged, this, &frmRTB::followUndo);
    connect(m_edit->document(), &QTextDocument::modificationChanged, this, &QDialog::setWindowModified);
    connect(QApplication::clipboard(), &QClipboard::dataChanged, this, &frmRTB::enable);
    resize(740, 560);
    m_edit->setFocus();
}

QToolBar* frmRTB::buildToolBar() {
    auto* bar = new QToolBar;
    bar->setObjectName(QStringLiteral("tbrDocument"));
    bar->setIconSize(QSize(20, 20));
    const auto add = [&](const char* key, const QString& tip, const QKeySequence& keys,
                         std::function<void()> run, bool isCheckable = false) {
        auto* action = new QAction(m_context.icons.icon(QString::fromLatin1(key).remove(u' ')), tip, this);
        action->setObjectName(QString::fromLatin1(key));
        action->setShortcut(keys);
        action->setCheckable(isCheckable);
        action->setToolTip(keys.isEmpty()
                               ? tip
                               : tip + QStringLiteral(" (") + keys.toString(QKeySequence::NativeText) + u')');
        connect(action, &QAction::triggered, this, std::move(run));
        bar->addAction(action);
        m_actions.insert(action->objectName(), action);
        return action;
    };
    const auto style = [this](const QString& name, void (*change)(QTextCharFormat&, bool)) {
        return [this, name, change] {
            setFormat(name, [&](QTextCharFormat& format) { change(format, m_actions[name]->isChecked()); });
        };
    };
    add("New", tr("New document"), QKeySequence::New, [this] { makeNew(); });
    add("Open", tr("Import a text file"), QKeySequence::Open, [this] { openFile(); });
    add("Save", tr("Save"), QKeySequence::Save, [this] { save(); });
    bar->addSeparator();
    for (QAction* action :
         {add("Cut", tr("Cut"), QKeySequence::Cut, [this] { m_edit->cutSelection(); }),
          add("Copy", tr("Copy"), QKeySequence::Copy, [this] { m_edit->copy(); }),
          add("Paste", tr("Paste"), QKeySequence::Paste, [this] { m_edit->pasteClipboard(); })})
        m_edit->addAction(action);
    bar->addSeparator();
    add("Undo", tr("Undo"), QKeySequence::Undo, [this] { m_edit->undo(); });
    add("Redo", tr("Redo"), QKeySequence::Redo, [this] { m_edit->redo(); });
    bar->addSeparator();
    addFontFields(bar);
    add("Bold", tr("Bold"), QKeySequence::Bold,
        style(
            QStringLiteral("Bold"),
            [](QTextCharFormat& format, bool on) { format.setFontWeight(on ? QFont::Bold : QFont::Normal); }),
        true);
    add("Italic", tr("Italic"), QKeySequence::Italic,
        style(QStringLiteral("Italic"), [](QTextCharFormat& format, bool on) { format.setFontItalic(on); }),
        true);
    add("Underline", tr("Underline"), QKeySequence::Underline,
        style(QStringLiteral("Underline"),
              [](QTextCharFormat& format, bool on) { format.setFontUnderline(on); }),
        true);
    add("TextColor", tr("Text color"), {}, [this] { chooseColour(); });
    bar->addSeparator();
    const auto align = [&](const char* key, const QString& tip, const QKeySequence& keys, Qt::Alignment how) {
        add(
            key, tip, keys, [this, name = QString::fromLatin1(key), how] { setAlignment(name, how); }, true);
    };
    align("Align Left", tr("Align left"), Qt::CTRL | Qt::Key_L, Qt::AlignLeft);
    align("Center", tr("Center"), Qt::CTRL | Qt::Key_E, Qt::AlignHCenter);
    align("Align Right", tr("Align right"), Qt::CTRL | Qt::Key_R, Qt::AlignRight);
    return bar;
}

void frmRTB::addFontFields(QToolBar* bar) {
    m_font = new QComboBox;
    m_font->setObjectName(QStringLiteral("cboFont"));
    m_font->setAccessibleName(tr("Font"));
    m_font->setToolTip(tr("Font"));
    QStringList families = QFontDatabase::families();
    if (!families.contains(RichText::defaultFont))
        families.prepend(RichText::defaultFont);
    m_font->addItems(families);
    m_font->setMaximumWidth(180);
    connect(m_font, &QComboBox::activated, this, [this] {
        setFormat(tr("Font"),
                  [&](QTextCharFormat& format) { format.setFontFamilies({m_font->currentText()}); });
    });
    bar->addWidget(m_font);
    m_size = new QComboBox;
    m_size->setObjectName(QStringLiteral("cboSize"));
    m_size->setAccessibleName(tr("Size"));
    m_size->setToolTip(tr("Size"));
    m_size->setEditable(true);
    m_size->setValidator(new QIntValidator(smallest, largest, m_size));
    m_size->setInsertPolicy(QComboBox::NoInsert);
    m_size->addItems(sizes);
    const auto apply = [this] {
        const int points = m_size->currentText().toInt();
        if (points >= smallest && points <= largest)
            setFormat(tr("Size"), [&](QTextCharFormat& format) { format.setFontPointSize(points); });
        m_edit->setFocus();
    };
    connect(m_size, &QComboBox::activated, this, apply);
    connect(m_size->lineEdit(), &QLineEdit::returnPressed, this, apply);
    bar->addWidget(m_size);
}

// ---- the document

void frmRTB::load() {
    if (m_document == 0) {
        startEmpty();
        return;
    }
    readInto(this, m_context.session, [this] {
        m_title = m_documents.title(m_document);
        const std::optional<QByteArray> stored = m_documents.read(m_document);
        if (!stored)
            m_context.session.messages().warning(caption().trimmed(), QStringLiteral("File not found!"));
        showText(stored.value_or(QByteArray()));
    });
}

void frmRTB::showText(const QByteArray& rtf) {
    const RtfOutcome outcome = RichText::toDocument(rtf, *m_edit->document());
    QStringList notes;
    if (!outcome.error.isEmpty())
        notes << outcome.error;
    if (outcome.simplified)
        notes << tr("Tables, notes or drawings of this document are shown as plain text or not at all.");
    if (!notes.isEmpty())
        notes << tr("The file stays as it is until you save.");
    m_note->setText(notes.join(u' '));
    m_note->setVisible(!notes.isEmpty());
    m_edit->document()->setModified(false);
    m_edit->moveCursor(QTextCursor::Start);
    setWindowTitle(caption() + QStringLiteral("[*]"));
    followFormat();
    followUndo();
}

void frmRTB::startEmpty() {
    showText(RichText::fromText({}));
    QTextCharFormat format;
    format.setFontFamilies({RichText::defaultFont});
    format.setFontPointSize(RichText::defaultPoints);
    m_edit->setCurrentCharFormat(format);
    m_edit->document()->setModified(false);
}

QString frmRTB::caption() {
    const QString fresh =
        m_mode == Mode::Doc ? QStringLiteral(" New document") : QStringLiteral(" New description");
    const QString known =
        m_mode == Mode::Doc ? tr(" Edit document: %1").arg(m_title) : tr(" Edit description");
    return m_document == 0 ? fresh : known;
}

bool frmRTB::save() {
    const QByteArray rtf = RichText::fromDocument(*m_edit->document());
    qint64 stored = 0;
    if (m_mode == Mode::Descr)
        stored = m_write(rtf);
    else if (m_document == 0)
        stored = m_documents.Save_Doc(rtf);
    else if (m_documents.rewrite(m_document, rtf))
        stored = m_document;
    if (stored == 0)
        return false;
    m_document = stored;
    guarded(m_context.session, [this] { m_title = m_documents.title(m_document); });
    m_saved = true;
    m_note->hide();
    m_edit->document()->setModified(false);
    setWindowTitle(caption() + QStringLiteral("[*]"));
    return true;
}

bool frmRTB::settled() {
    return !m_edit->document()->isModified() ||
           FormHelpers::settleUnsaved(m_context.session.messages(), caption().trimmed(),
                                      QStringLiteral("The data has been modified. ") +
                                          QStringLiteral("Do you want to save the changes?"),
                                      [this] { return save(); }) != FormHelpers::Unsaved::Kept;
}

void frmRTB::makeNew() {
    if (!settled())
        return;
    // A work has one description only; an empty one is begun in its place.
    if (m_mode == Mode::Doc)
        m_document = 0;
    startEmpty();
    m_edit->document()->setModified(m_document != 0);
    m_edit->setFocus();
}

// A document with a text is not written over by one that is imported: that becomes a new one.
void frmRTB::openFile() {
    if (!settled())
        return;
    const std::optional<QByteArray> text = m_documents.importText();
    if (!text)
        return;
    if (m_mode == Mode::Doc && !m_edit->document()->isEmpty())
        m_document = 0;
    showText(*text);
    m_edit->document()->setModified(true);
}

void frmRTB::reject() {
    if (!settled())
        return;
    if (m_saved)
        accept();
    else
        QDialog::reject();
}

// ---- formatting

void frmRTB::setFormat(const QString& name, const std::function<void(QTextCharFormat&)>& change) {
    QTextCharFormat format;
    change(format);
    m_edit->change(name, [&] { m_edit->mergeCurrentCharFormat(format); });
    m_edit->setFocus();
}

void frmRTB::setAlignment(const QString& name, Qt::Alignment alignment) {
    m_edit->change(name, [&] { m_edit->setAlignment(alignment); });
    followFormat();
}

void frmRTB::chooseColour() {
    const std::optional<QColor> colour =
        m_context.session.messages().chooseColour(tr("Text color"), m_edit->textColor());
    if (colour)
        setFormat(tr("Text color"), [&](QTextCharFormat& format) { format.setForeground(*colour); });
}

void frmRTB::followFormat() {
    const QTextCharFormat format = m_edit->currentCharFormat();
    m_actions[QStringLiteral("Bold")]->setChecked(format.fontWeight() >= QFont::DemiBold);
    m_actions[QStringLiteral("Italic")]->setChecked(format.fontItalic());
    m_actions[QStringLiteral("Underline")]->setChecked(format.fontUnderline());
    const Qt::Alignment alignment = m_edit->alignment();
    m_actions[QStringLiteral("Center")]->setChecked(alignment.testFlag(Qt::AlignHCenter));
    m_actions[QStringLiteral("Align Right")]->setChecked(alignment.testFlag(Qt::AlignRight));
    m_actions[QStringLiteral("Align Left")]->setChecked(
        !(alignment & (Qt::AlignHCenter | Qt::AlignRight | Qt::AlignJustify)));
    QString family = format.fontFamilies().toStringList().value(0);
    if (family.isEmpty())
        family = m_edit->document()->defaultFont().family();
    if (m_font->findText(family) < 0)
        m_font->addItem(family);
    m_font->setCurrentText(family);
    const double points = format.fontPointSize() > 0 ? format.fontPointSize() : RichText::defaultPoints;
    m_size->setEditText(QString::number(points));
}

void frmRTB::followUndo() {
    const auto show = [&](const char* key, const QString& caption, const QString& name) {
        QAction* action = m_actions[QLatin1String(key)];
        action->setEnabled(!name.isEmpty());
        action->setToolTip(name.isEmpty() ? caption : caption + u' ' + name);
    };
    show("Undo", tr("Undo"), m_edit->undoName());
    show("Redo", tr("Redo"), m_edit->redoName());
    enable();
}

void frmRTB::enable() {
    const bool hasSelection = m_edit->textCursor().hasSelection();
    m_actions[QStringLiteral("Cut")]->setEnabled(hasSelection);
    m_actions[QStringLiteral("Copy")]->setEnabled(hasSelection);
    m_actions[QStringLiteral("Paste")]->setEnabled(m_edit->canPaste());
}

} // namespace tessaranth
