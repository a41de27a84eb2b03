// SPDX-License-Identifier: GPL-3.0-or-later
#include "works/forms/frmWork.h"

#include "attachments/forms/DocumentPanel.h"
#include "items/CardOwner.h"
#include "items/OpenCards.h"
#include "items/forms/CardBand.h"
#include "items/forms/SpecsView.h"
#include "store/Session.h"
#include "widgets/CardColours.h"
#include "widgets/FormHelpers.h"
#include "widgets/IconStore.h"
#include "widgets/ItemListModel.h"
#include "works/forms/frmWorkEditor.h"

#include <QAction>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSplitter>
#include <QTreeView>
#include <QVBoxLayout>

namespace tessaranth {

frmWork::frmWork(const CardContext& context, QWidget* parent)
    : ChildWindow(parent), m_context(context), m_own(this, context.icons) {
    setObjectName(QStringLiteral("frmWork"));
    setAutoFillBackground(true);
    buildUi();
    reload();
}

QString frmWork::key() const { return OpenCards::key(QStringLiteral("Comp"), m_context.id); }

void frmWork::buildUi() {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    m_band = new CardBand(m_context.icons, iconKey());
    layout->addWidget(m_band);
    auto* split = new QSplitter;
    split->setObjectName(QStringLiteral("workSplitter"));
    split->setChildrenCollapsible(false);
    split->addWidget(buildLeft());
    split->addWidget(buildRight());
    split->setStretchFactor(0, 2);
    split->setStretchFactor(1, 3);
    FormHelpers::keepSplitter(split, m_context.session.arrangements(), split->objectName());
    layout->addWidget(split, 1);
    addEntry(
        QStringLiteral("mnuCardWorkCardGoto"), tr("&Go to card"), {}, [this] { goToRecording(); },
        [this] { return selectedRecording() != 0; });
    addEntry(QStringLiteral("mnuCardWorkCardEdit"), tr("&Edit the work..."), QStringLiteral("F2"),
             [this] { edit(); });
    addEntry(QStringLiteral("mnuCardWorkCardExport"), tr("E&xport..."), {}, [this] { exportCard(); });
    m_own.serve(m_recordings);
    connect(this, &ChildWindow::changed, &m_own, &ActionTable::enable);
    resize(860, 520);
}

QWidget* frmWork::buildLeft() {
    auto* left = new QWidget;
    auto* column = new QVBoxLayout(left);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    m_lines = new SpecsView(m_context.icons);
    column->addWidget(m_lines, 1);
    m_composer = new QPushButton(m_context.icons.icon(QStringLiteral("c")), tr("Go to the &composer's card"));
    m_composer->setObjectName(QStringLiteral("cmdComposer"));
    m_composer->setFlat(true);
    connect(m_composer, &QPushButton::clicked, this,
            [this] { m_context.cards.openCard(QStringLiteral("Cps"), m_work.composer); });
    column->addWidget(m_composer, 0, Qt::AlignLeft);
    return left;
}

QWidget* frmWork::buildRight() {
    auto* right = new QSplitter(Qt::Vertical);
    right->setObjectName(QStringLiteral("workTexts"));
    m_description = new QPlainTextEdit;
    m_description->setObjectName(QStringLiteral("txtDescription"));
    m_description->setAccessibleName(tr("Description"));
    m_description->setReadOnly(true);
    m_description->setFrameShape(QFrame::NoFrame);
    m_description->document()->setDocumentMargin(8);
    right->addWidget(m_description);
    m_documents = new DocumentPanel(m_context);
    connect(m_documents, &CardPanel::changed, this, &frmWork::showDocuments);
    right->addWidget(m_documents);
    auto* lower = new QWidget;
    auto* column = new QVBoxLayout(lower);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    m_count = new QLabel;
    m_count->setObjectName(QStringLiteral("recordingsHeading"));
    m_count->setMargin(6);
    column->addWidget(m_count);
    m_model = new ItemListModel(m_context.icons, this);
    m_recordings = FormHelpers::itemView(this, QStringLiteral("lvRec"), m_model, false);
    m_recordings->setAccessibleName(tr("Recordings"));
    m_recordings->setFrameShape(QFrame::NoFrame);
    connect(m_recordings, &QTreeView::activated, this, &frmWork::goToRecording);
    connect(m_recordings->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ChildWindow::changed);
    column->addWidget(m_recordings, 1);
    right->addWidget(lower);
    return right;
}

// A work without documents leaves their place to its recordings; the first comes from the Card menu.
void frmWork::showDocuments() {
    m_documents->setVisible(m_documents->index() >= 0);
    emit changed();
}

bool frmWork::knows(const QString& command) const {
    return m_own.knows(command) || m_documents->knows(command);
}

bool frmWork::canRun(const QString& command) const {
    return m_own.knows(command) ? m_own.canRun(command) : m_documents->canRun(command);
}

void frmWork::run(const QString& command) {
    m_own.knows(command) ? m_own.run(command) : m_documents->run(command);
}

void frmWork::addEntry(const QString& key, const QString& caption, const QString& shortcut,
                       std::function<void()> what, std::function<bool()> when) {
    m_own.add({key, caption, {}, {}, shortcut, std::move(what), std::move(when)});
}

bool frmWork::reload() {
    if (!readWorkCard(m_context.session, m_context.id, m_work))
        return false;
    paint();
    showWork();
    m_documents->load();
    return true;
}

void frmWork::paint() {
    const CardColours colours = CardColours::readWork(m_context.session.configuration());
    setPalette(colours.palette());
    m_band->setColours(colours);
    m_lines->setLabelColour(colours.label);
}

void frmWork::showWork() {
    m_band->show(m_work.title, m_work.number, m_work.subTitle, m_work.composerName);
    setWindowTitle(m_work.title);
    setWindowIcon(m_context.icons.icon(iconKey()));
    m_lines->show(m_work.lines);
    m_composer->setEnabled(m_work.composer != 0);
    m_description->setPlainText(m_work.description);
    m_description->setVisible(!m_work.description.isEmpty());
    m_count->setText(m_work.recordings.rowCount() == 0
                         ? tr("On no recording of the collection")
                         : tr("On recordings (%1)").arg(m_work.recordings.rowCount()));
    m_model->setList(m_work.recordings);
    FormHelpers::fitColumns(m_recordings);
    emit changed();
}

void frmWork::edit() {
    if (!CardOwner{m_context.code, m_context.id}.require(m_context.session))
        return m_context.cards.closeCard(key());
    frmWorkEditor editor(m_context, m_work.composer, m_context.id, window());
    if (editor.exec() != QDialog::Accepted)
        return;
    if (!reload())
        m_context.cards.closeCard(key());
    m_context.cards.reloadCard(OpenCards::key(QStringLiteral("Cps"), m_work.composer));
}

void frmWork::exportCard() {
    const QString folderKind = QStringLiteral("DocEx");
    Configuration& configuration = m_context.session.configuration();
    FileRequest request;
    request.mode = FileRequest::Mode::Save;
    request.title = tr("Export work card");
    request.folder = configuration.lastFolder(folderKind);
    request.filterName = QStringLiteral("Rich Text Format (rtf)");
    request.patterns = QStringList{QStringLiteral("*.rtf")};
    request.defaultExtension = QStringLiteral(".rtf");
    const QStringList chosen = m_context.session.messages().chooseFiles(request);
    if (!chosen.isEmpty() && exportWorkCard(m_context.session, m_work, chosen.front()))
        configuration.setLastFolder(folderKind, chosen.front());
}

qint64 frmWork::selectedRecording() const {
    const std::vector<qint64> ids = FormHelpers::selectedIds(m_recordings, m_model);
    return ids.empty() ? 0 : ids.front();
}

void frmWork::goToRecording() {
    if (const qint64 id = selectedRecording())
        m_context.cards.openCard(QStringLiteral("Rec"), id);
}

} // namespace tessaranth
