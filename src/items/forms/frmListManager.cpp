// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/forms/frmListManager.h"

#include "items/CMIT.h"
#include "items/forms/LookupEditing.h"
#include "items/forms/frmMigrate.h"
#include "store/Session.h"
#include "widgets/FormHelpers.h"
#include "widgets/ItemListModel.h"
#include "widgets/WindowProgress.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace tessaranth {

namespace {

struct ManagerWords {
    const char* title;
    const char* hint;
};

ManagerWords wordsOf(int kind) {
    switch (kind) {
    case ItemKind::Genre:
        return {"Manage global genres", "Genres are shared by the works of all composers."};
    case ItemKind::Label:
        return {"Manage labels", "The record labels on which recordings are published."};
    case ItemKind::Source:
        return {"Manage sources", "Where recordings come from: studio, concert, broadcast."};
    default:
        return {"Manage supports", "What recordings are stored on: discs, tapes, files."};
    }
}

} // namespace

frmListManager::frmListManager(const FormContext& context, int kind, OpenCards* cards, QWidget* parent)
    : QDialog(parent), m_context(context), m_kind(kind), m_cards(cards), m_commands(this, context.icons) {
    setObjectName(QStringLiteral("frmListManager"));
    setWindowTitle(tr(wordsOf(kind).title));
    buildUi();
    fill();
}

void frmListManager::buildUi() {
    const ItemKind& kind = *itemKind(m_kind);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(
        FormHelpers::head(m_context.icons, kind.iconKey, windowTitle(), tr(wordsOf(m_kind).hint)));
    m_list = FormHelpers::narrowedList(this, m_context.icons,
                                       {QStringLiteral("txtFilter"), tr("Narrow the list"),
                                        tr("Type the beginning of a name"), QStringLiteral("lvItems"),
                                        kind.listCaption},
                                       true);
    connect(m_list.text, &QLineEdit::textChanged, this, &frmListManager::fill);
    connect(m_list.view, &QTreeView::doubleClicked, this, &frmListManager::rename);
    connect(m_list.view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { m_commands.enable(); });
    m_count = new QLabel;
    m_count->setObjectName(QStringLiteral("count"));

    auto* left = new QVBoxLayout;
    left->addWidget(m_list.text);
    left->addWidget(m_list.view, 1);
    left->addWidget(m_count);
    auto* buttons = new QVBoxLayout;
    const auto some = [this] { return selectedCount() > 0; };
    const auto one = [this] { return selectedCount() == 1; };
    const auto add = [&](const QString& caption, const char* name, const char* keys,
                         void (frmListManager::*run)(), const std::function<bool()>& when) {
        const QString key = QLatin1String(name);
        m_commands.add({key, caption, {}, {}, QLatin1String(keys), [this, run] { (this->*run)(); }, when});
        buttons->addWidget(m_commands.button(key, key));
    };
    add(tr("&New..."), "cmdNew", "Ins", &frmListManager::create, {});
    add(tr("&Rename..."), "cmdRename", "F2", &frmListManager::rename, one);
    add(tr("&Delete..."), "cmdDelete", "Del", &frmListManager::remove, some);
    add(tr("&Migrate..."), "cmdMigrate", "", &frmListManager::merge, one);
    m_commands.serve(m_list.view);
    buttons->addStretch();
    auto* middle = new QHBoxLayout;
    middle->addLayout(left, 1);
    middle->addLayout(buttons);
    layout->addLayout(middle, 1);

    auto* box = new QDialogButtonBox(QDialogButtonBox::Close);
    // Enter in the filter must not close the window.
    box->button(QDialogButtonBox::Close)->setAutoDefault(false);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(box);
    resize(520, 480);
    m_list.text->setFocus();
}

void frmListManager::fill() {
    ItemList list;
    if (CMIT(m_context.session).ElencoInLv(m_kind, list, m_list.text->text().trimmed()))
        m_list.model->setList(std::move(list));
    if (!m_list.text->text().trimmed().isEmpty() && m_list.model->rowCount() > 0)
        m_list.view->setCurrentIndex(m_list.model->index(0, 0));
    m_count->setText(itemKind(m_kind)->countCaption + QString::number(m_list.model->rowCount()));
    m_commands.enable();
}

qsizetype frmListManager::selectedCount() const {
    return m_list.view->selectionModel()->selectedRows().size();
}

void frmListManager::refresh(qint64 id) {
    m_changed = true;
    const int row = m_list.view->currentIndex().row();
    fill();
    QModelIndex index = m_list.model->indexOf(id);
    if (!index.isValid() && id != 0) {
        m_list.text->clear(); // what was typed hides the item
        index = m_list.model->indexOf(id);
    }
    if (!index.isValid() && m_list.model->rowCount() > 0)
        index = m_list.model->index(qBound(0, row, m_list.model->rowCount() - 1), 0);
    if (index.isValid()) {
        m_list.view->setCurrentIndex(index);
        m_list.view->scrollTo(index);
    }
}

void frmListManager::create() {
    if (const qint64 id = addLookup(m_context, m_kind, this))
        refresh(id);
}

void frmListManager::rename() {
    const std::vector<qint64> ids = FormHelpers::selectedIds(m_list.view, m_list.model);
    if (ids.size() == 1 && editLookup(m_context, m_kind, ids.front(), this))
        refresh(ids.front());
}

void frmListManager::remove() {
    const std::vector<qint64> ids = FormHelpers::selectedIds(m_list.view, m_list.model);
    QStringList names;
    for (const qint64 id : ids)
        names.push_back(m_list.model->indexOf(id).data().toString());
    CMIT items(m_context.session);
    if (!items.ConfermaEliminazione(m_kind, names, ids))
        return;
    {
        WindowProgress progress(this);
        items.EliminaItem(m_kind, ids, progress);
    }
    refresh(0);
}

void frmListManager::merge() {
    const std::vector<qint64> ids = FormHelpers::selectedIds(m_list.view, m_list.model);
    if (ids.size() != 1)
        return;
    frmMigrate form(m_context, m_kind, ids.front(), m_cards, this);
    if (form.exec() == QDialog::Accepted)
        refresh(form.target());
}

} // namespace tessaranth
