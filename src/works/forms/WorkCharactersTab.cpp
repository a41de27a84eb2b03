// SPDX-License-Identifier: GPL-3.0-or-later
#include "works/forms/WorkCharactersTab.h"

#include "store/Session.h"
#include "widgets/FormContext.h"
#include "widgets/FormHelpers.h"
#include "widgets/ItemListModel.h"
#include "works/CWKS.h"

#include <QAction>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace tessaranth {

WorkCharactersTab::WorkCharactersTab(const FormContext& context, std::function<qint64()> saved,
                                     QWidget* parent)
    : QWidget(parent), m_session(context.session), m_saved(std::move(saved)) {
    setObjectName(QStringLiteral("tabPersonages"));
    auto* layout = new QVBoxLayout(this);
    auto* row = new QHBoxLayout;
    m_model = new ItemListModel(context.icons, this);
    m_view = FormHelpers::itemView(this, QStringLiteral("lvPersonages"), m_model, true);
    m_view->setAccessibleName(tr("Personages"));
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &WorkCharactersTab::enable);
    connect(m_view, &QTreeView::activated, this, &WorkCharactersTab::rename);
    row->addWidget(m_view, 1);
    auto* buttons = new QVBoxLayout;
    buttons->addWidget(button(tr("&Add..."), QStringLiteral("cmdPersAdd"), &WorkCharactersTab::add));
    m_rename = button(tr("&Rename..."), QStringLiteral("cmdPersRename"), &WorkCharactersTab::rename);
    buttons->addWidget(m_rename);
    m_remove = button(tr("De&lete"), QStringLiteral("cmdPersDelete"), &WorkCharactersTab::remove);
    buttons->addWidget(m_remove);
    buttons->addWidget(
        button(tr("&Import..."), QStringLiteral("cmdPersImport"), &WorkCharactersTab::importFile));
    buttons->addStretch();
    row->addLayout(buttons);
    layout->addLayout(row, 1);
    m_note = new QLabel;
    m_note->setObjectName(QStringLiteral("persNote"));
    m_note->setTextFormat(Qt::PlainText);
    m_note->setWordWrap(true);
    layout->addWidget(m_note);

    auto* del = new QAction(m_view);
    del->setShortcut(Qt::Key_Delete);
    del->setShortcutContext(Qt::WidgetShortcut);
    connect(del, &QAction::triggered, this, &WorkCharactersTab::remove);
    m_view->addAction(del);
    setWork(0);
}

QPushButton* WorkCharactersTab::button(const QString& caption, const QString& objectName,
                                       void (WorkCharactersTab::*run)()) {
    auto* made = new QPushButton(caption);
    made->setObjectName(objectName);
    made->setAutoDefault(false);
    connect(made, &QPushButton::clicked, this, run);
    return made;
}

void WorkCharactersTab::setWork(qint64 work) {
    m_work = work;
    note(work == 0 ? tr("The work is saved before its first personage is added.") : QString());
    refresh();
}

void WorkCharactersTab::note(const QString& text) {
    m_note->setText(text);
    m_note->setVisible(!text.isEmpty());
}

void WorkCharactersTab::refresh() {
    ItemList list;
    if (CWKS(m_session).PersInLv(m_work, list))
        m_model->setList(std::move(list));
    enable();
}

void WorkCharactersTab::enable() {
    const qsizetype selected = m_view->selectionModel()->selectedRows().size();
    m_rename->setEnabled(selected == 1);
    m_remove->setEnabled(selected > 0);
}

bool WorkCharactersTab::save() {
    if (m_work == 0) {
        const qint64 work = m_saved();
        if (work == 0)
            return false;
        setWork(work);
        note(tr("The work has been saved."));
    }
    return true;
}

QString WorkCharactersTab::inputName(const QString& title, const QString& prompt, const QString& action,
                                     const QString& text) {
    return m_session.messages().inputName(
        {title, prompt, QStringLiteral("Personage name"), action, QStringLiteral("Pers"), text,
         m_session.fields().width(QStringLiteral("Personages"), QStringLiteral("PersonageName"))});
}

void WorkCharactersTab::add() {
    if (!save())
        return;
    const QString name = inputName(QStringLiteral("New personage"), QStringLiteral("Add a new personage"),
                                   QStringLiteral("Add"), {});
    const qint64 id = name.isEmpty() ? 0 : CWKS(m_session).addCharacter(m_work, name);
    if (id == 0)
        return;
    refresh();
    m_view->setCurrentIndex(m_model->indexOf(id));
}

void WorkCharactersTab::rename() {
    const std::vector<qint64> ids = FormHelpers::selectedIds(m_view, m_model);
    if (ids.size() != 1)
        return;
    const QString name = inputName(QStringLiteral("Rename personage"), QStringLiteral("Rename personage"),
                                   QStringLiteral("Rename"), m_model->indexOf(ids.front()).data().toString());
    if (name.isEmpty() || !CWKS(m_session).renameCharacter(ids.front(), name))
        return;
    refresh();
    m_view->setCurrentIndex(m_model->indexOf(ids.front()));
}

void WorkCharactersTab::remove() {
    const std::vector<qint64> ids = FormHelpers::selectedIds(m_view, m_model);
    if (ids.empty())
        return;
    Question question;
    question.title = tr("Delete personages");
    question.text = tr("Do you want to delete the selected personage(s)?");
    if (m_session.messages().ask(question) == Answer::Ok && CWKS(m_session).deleteCharacters(ids))
        refresh();
}

void WorkCharactersTab::importFile() {
    if (!save())
        return;
    FileRequest request;
    request.title = QStringLiteral("Import personages");
    request.folder = m_session.configuration().lastFolder(QStringLiteral("List"));
    request.filterName = QStringLiteral("Text file (*.txt)");
    request.patterns = {QStringLiteral("*.txt")};
    const QStringList files = m_session.messages().chooseFiles(request);
    if (files.isEmpty())
        return;
    m_session.configuration().setLastFolder(QStringLiteral("List"), files.front());
    const int added = CWKS(m_session).importCharacters(m_work, files.front());
    if (added < 0)
        return;
    refresh();
    note(tr("Personages added: %1").arg(added));
}

} // namespace tessaranth
