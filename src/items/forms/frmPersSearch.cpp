// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/forms/frmPersSearch.h"

#include "items/ItemKind.h"
#include "store/Session.h"
#include "widgets/FormHelpers.h"
#include "widgets/ItemListModel.h"
#include "widgets/WindowProgress.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace tessaranth {

frmPersSearch::frmPersSearch(const FormContext& context, int kind, const QString& text, QWidget* parent,
                             Mode mode)
    : QDialog(parent), m_context(context), m_kind(kind), m_mode(mode),
      m_archive(PersonArchive::open(context.session, kind)) {
    setObjectName(QStringLiteral("frmPersSearch"));
    const bool composer = kind == ItemKind::Composer;
    if (mode == Mode::ImportMany)
        setWindowTitle(composer ? QStringLiteral("Import multiple composers")
                                : QStringLiteral("Import multiple performers"));
    else
        setWindowTitle(composer ? QStringLiteral("Import a composer from the internal list")
                                : QStringLiteral("Import a performer from the internal list"));
    buildUi();
    m_list.text->setText(text.trimmed());
    search();
}

void frmPersSearch::buildUi() {
    const ItemKind& kind = *itemKind(m_kind);
    auto* layout = new QVBoxLayout(this);
    QString hint =
        QStringLiteral("Enter a search string. Select the %1 and then click Import.").arg(kind.noun);
    if (m_mode == Mode::ImportMany)
        hint = tr("Select as many as you like (Ctrl and Shift add to the selection, Ctrl+A takes all) and "
                  "then click "
                  "Import. Those whose name is in the catalog already are left out.");
    layout->addWidget(FormHelpers::head(m_context.icons, kind.iconKey, windowTitle(), hint));
    m_list = FormHelpers::narrowedList(this, m_context.icons,
                                       {QStringLiteral("txtSearch"), tr("Search string"),
                                        tr("Part of a last or first name"), QStringLiteral("lvPersons"),
                                        kind.listCaption},
                                       m_mode == Mode::ImportMany);
    connect(m_list.text, &QLineEdit::textChanged, this, &frmPersSearch::search);
    layout->addWidget(m_list.text);
    layout->addWidget(m_list.view, 1);
    m_state = new QLabel;
    m_state->setObjectName(QStringLiteral("state"));
    layout->addWidget(m_state);

    m_import = FormHelpers::buttonRow(this, layout, tr("&Import"), QStringLiteral("cmdImport"));
    connect(m_import, &QPushButton::clicked, this, &frmPersSearch::run);
    // Enter in the list reaches the form's default button by itself.
    connect(m_list.view, &QTreeView::doubleClicked, this, &frmPersSearch::run);
    connect(m_list.view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &frmPersSearch::enable);
    resize(840, 520);
}

void frmPersSearch::search() {
    if (!m_archive)
        return;
    m_list.model->setList(m_archive->search(m_list.text->text()));
    FormHelpers::fitColumns(m_list.view);
    m_state->setText(m_list.model->rowCount() == 0
                         ? QStringLiteral("No match")
                         : itemKind(m_kind)->countCaption + QString::number(m_list.model->rowCount()));
    if (m_mode == Mode::ChooseOne && m_list.model->rowCount() > 0)
        m_list.view->setCurrentIndex(m_list.model->index(0, 0));
    enable();
}

void frmPersSearch::enable() { m_import->setEnabled(m_list.view->selectionModel()->hasSelection()); }

void frmPersSearch::run() {
    if (!m_list.view->selectionModel()->hasSelection())
        return;
    if (m_mode == Mode::ImportMany)
        importSelected();
    else
        accept();
}

void frmPersSearch::importSelected() {
    std::optional<PersonArchive::Summary> summary;
    {
        WindowProgress progress(this);
        summary = m_archive->import(FormHelpers::selectedIds(m_list.view, m_list.model), progress);
    }
    if (!summary)
        return;
    QString text = tr("%1 added to the catalog.").arg(summary->added) + u'\n' +
                   tr("%1 left out, as they are there already.").arg(summary->present);
    if (summary->stopped)
        text += u'\n' + tr("Stopped before the end.");
    m_context.session.messages().information(windowTitle(), text);
    accept();
}

Person frmPersSearch::person() const {
    return m_archive->person(m_list.model->id(m_list.view->currentIndex()));
}

QString frmPersSearch::dateNote() const {
    return m_archive->dateNote(m_list.model->id(m_list.view->currentIndex()));
}

} // namespace tessaranth
