// SPDX-License-Identifier: GPL-3.0-or-later
#include "attachments/forms/frmAlign.h"

#include "items/OpenCards.h"
#include "widgets/CheckedList.h"
#include "widgets/FormHelpers.h"
#include "widgets/IconStore.h"
#include "widgets/ItemListModel.h"
#include "widgets/WindowProgress.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace tessaranth {

namespace {

QString iconOf(Session::Folder folder) {
    switch (folder) {
    case Session::Folder::Documents:
        return QStringLiteral("Doc");
    case Session::Folder::Labels:
        return QStringLiteral("Label");
    default:
        return QStringLiteral("Images");
    }
}

/// What was found, of the rows that are ticked; the lists' ids are the places in it, from 1.
template<typename Found>
std::vector<Found> tickedOf(const std::vector<Found>& all, const CheckedList& checks) {
    std::vector<Found> ticked;
    for (size_t i = 0; i < all.size(); ++i)
        if (checks.checked().contains(qint64(i) + 1))
            ticked.push_back(all[i]);
    return ticked;
}

} // namespace

frmAlign::frmAlign(const FormContext& context, OpenCards* cards, QWidget* parent)
    : QDialog(parent), m_context(context), m_cards(cards), m_alignment(context.session) {
    setObjectName(QStringLiteral("frmAlign"));
    setWindowTitle(tr("Files and database"));
    buildUi();
    load();
}

void frmAlign::buildUi() {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(FormHelpers::head(
        m_context.icons, QStringLiteral("Align"),
        QStringLiteral("Align database records with relative files"),
        tr("Only what you tick is changed. Files are never deleted: those without a row are moved into the "
           "folder \"%1\" within their own.")
            .arg(FileAlignment::unusedFolder)));
    m_note = new QLabel;
    m_note->setObjectName(QStringLiteral("note"));
    m_note->setTextFormat(Qt::PlainText);
    m_note->setWordWrap(true);
    layout->addWidget(m_note);
    m_lost.counted = QT_TR_NOOP("Rows without their file: %1, ticked: %2");
    addSide(layout, m_lost, tr("&Rows whose file is missing: delete the row"), QStringLiteral("Lost"));
    m_stray.counted = QT_TR_NOOP("Files without a row: %1, ticked: %2");
    addSide(layout, m_stray, tr("&Files without a row: set the file aside"), QStringLiteral("Stray"));
    m_repair = FormHelpers::buttonRow(this, layout, tr("Re&pair"), QStringLiteral("cmdRepair"));
    connect(m_repair, &QPushButton::clicked, this, &frmAlign::repair);
    // It stays open after a repair, which nothing takes back.
    findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Cancel)->setText(tr("&Close"));
    resize(680, 600);
}

void frmAlign::addSide(QVBoxLayout* layout, Side& side, const QString& caption, const QString& name) {
    side.model = new ItemListModel(m_context.icons, this);
    side.checks = new CheckedList(side.model);
    side.view = FormHelpers::itemView(this, QStringLiteral("lv") + name, side.model, false);
    side.view->setModel(side.checks);
    auto* label = new QLabel(caption);
    label->setBuddy(side.view);
    side.view->setAccessibleName(QString(caption).remove(u'&'));
    side.all = new QCheckBox(&side == &m_lost ? tr("Tick &all rows") : tr("&Tick all files"));
    side.all->setObjectName(QStringLiteral("chk") + name);
    side.state = new QLabel;
    side.state->setObjectName(QStringLiteral("lbl") + name);
    connect(side.all, &QCheckBox::clicked, this, [this, &side](bool on) { tickAll(side, on); });
    connect(side.checks, &CheckedList::toggled, this, &frmAlign::count);
    layout->addWidget(label);
    layout->addWidget(side.view, 1);
    auto* below = new QHBoxLayout;
    below->addWidget(side.all);
    below->addStretch();
    below->addWidget(side.state);
    layout->addLayout(below);
}

void frmAlign::load() {
    {
        WindowProgress progress(this);
        m_alignment.find(m_findings, progress);
    }
    showFindings();
}

void frmAlign::showFindings() {
    ItemList lost({{tr("Title")}, {tr("Card")}, {tr("File"), true}, {tr("Folder")}});
    for (const FileAlignment::LostFile& row : m_findings.lost)
        lost.addRow(lost.rowCount() + 1, iconOf(row.folder),
                    {row.title, row.card, QString::number(row.id), FileAlignment::caption(row.folder)});
    ItemList stray({{tr("File")}, {tr("Size in KB"), true}, {tr("Folder")}});
    for (const FileAlignment::StrayFile& file : m_findings.stray)
        stray.addRow(
            stray.rowCount() + 1, iconOf(file.folder),
            {file.name, QString::number((file.bytes + 1023) / 1024), FileAlignment::caption(file.folder)});
    m_lost.model->setList(std::move(lost));
    m_stray.model->setList(std::move(stray));
    for (Side* side : {&m_lost, &m_stray}) {
        FormHelpers::fitColumns(side->view);
        tickAll(*side, false);
    }
    QStringList notes;
    for (const QString& folder : m_findings.missingFolders)
        notes << tr("The folder %1 does not exist; the rows of its files were not compared. See the data "
                    "folders in the settings.")
                     .arg(QDir::toNativeSeparators(folder));
    if (notes.isEmpty() && m_findings.lost.empty() && m_findings.stray.empty())
        notes << tr("Every row has its file, and every file its row.");
    m_note->setText(notes.join(u'\n'));
    m_note->setVisible(!notes.isEmpty());
}

void frmAlign::tickAll(Side& side, bool on) {
    QSet<qint64> ids;
    for (int id = 1; on && id <= side.model->rowCount(); ++id)
        ids.insert(id);
    side.checks->setChecked(ids);
    count();
}

void frmAlign::count() {
    qsizetype ticked = 0;
    for (Side* side : {&m_lost, &m_stray}) {
        const qsizetype rows = side->model->rowCount(), on = side->checks->checked().size();
        side->state->setText(tr(side->counted).arg(rows).arg(on));
        side->all->setEnabled(rows > 0);
        side->all->setChecked(rows > 0 && on == rows);
        ticked += on;
    }
    m_repair->setEnabled(ticked > 0);
}

void frmAlign::repair() {
    const auto rows = tickedOf(m_findings.lost, *m_lost.checks);
    const auto files = tickedOf(m_findings.stray, *m_stray.checks);
    Question question;
    question.title = windowTitle();
    question.text = tr("Rows to delete: %1\nFiles to move into \"%2\": %3\nContinue?")
                        .arg(rows.size())
                        .arg(FileAlignment::unusedFolder)
                        .arg(files.size());
    question.defaultButton = Answer::Cancel;
    if (m_context.session.messages().ask(question) != Answer::Ok)
        return;
    {
        WindowProgress progress(this, false);
        if (!rows.empty())
            m_alignment.deleteRows(rows, progress);
        if (!files.empty())
            m_alignment.setAside(files, progress);
    }
    if (m_cards)
        for (const FileAlignment::LostFile& row : rows)
            m_cards->reloadCard(OpenCards::key(row.code, row.owner));
    load();
}

} // namespace tessaranth
