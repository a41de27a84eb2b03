// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/forms/frmListChooser.h"

#include "items/CMIT.h"
#include "items/forms/frmPers.h"
#include "store/Session.h"
#include "ui/FormHelpers.h"
#include "ui/ItemListModel.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace tessaranth {

namespace {

bool isPerson(int kind) { return kind == ItemKind::Composer || kind == ItemKind::Performer; }

} // namespace

frmListChooser::frmListChooser(Session& session, const IconStore& icons, int kind, const QString& title,
                               bool several, QWidget* parent)
    : QDialog(parent), m_session(session), m_icons(icons), m_kind(kind) {
    setWindowTitle(title);
    if (isPerson(kind))
        m_create = [this](QWidget* above) {
            frmPers form(m_session, m_icons, m_kind, 0, above);
            return form.exec() == QDialog::Accepted ? form.id() : 0;
        };
    else if (!itemKind(kind)->isCard())
        m_create = [this](QWidget*) { return CMIT(m_session).AggiungiItem(m_kind); };
    buildUi(itemKind(kind)->iconKey, several);
}

frmListChooser::frmListChooser(Session& session, const IconStore& icons, const QString& iconKey,
                               ItemList list, const QString& title, bool several, QWidget* parent)
    : QDialog(parent), m_session(session), m_icons(icons), m_ready(std::move(list)) {
    setWindowTitle(title);
    buildUi(iconKey, several);
}

void frmListChooser::setCreator(Creator create, Filler reload) {
    m_create = std::move(create);
    m_reload = std::move(reload);
    m_new->setVisible(bool(m_create));
}

void frmListChooser::buildUi(const QString& iconKey, bool several) {
    setObjectName(QStringLiteral("frmListChooser"));
    auto* layout = new QVBoxLayout(this);
    const QString hint = several ? tr("Ctrl and Shift with a click or an arrow key select more than one row.")
                                 : tr("Type until the row is found, then press Enter.");
    layout->addWidget(FormHelpers::head(m_icons, iconKey, windowTitle().trimmed(), hint));
    m_text = FormHelpers::lineEdit(this, QStringLiteral("txtFilter"), tr("Narrow the list"), 250);
    m_text->setPlaceholderText(m_kind ? tr("Type the beginning of a name") : tr("Type a part of the title"));
    m_text->setClearButtonEnabled(true);
    connect(m_text, &QLineEdit::textChanged, this, &frmListChooser::fill);
    layout->addWidget(m_text);
    m_model = new ItemListModel(m_icons, this);
    m_view = FormHelpers::itemView(this, QStringLiteral("lvItems"), m_model, several);
    m_view->setAccessibleName(windowTitle().trimmed());
    // Enter in the list reaches the form's default button by itself.
    connect(m_view, &QTreeView::doubleClicked, this, &frmListChooser::choose);
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this, &frmListChooser::enable);
    FormHelpers::moveInList(m_text, m_view);
    layout->addWidget(m_view, 1);
    auto* line = new QHBoxLayout;
    m_state = new QLabel;
    m_state->setObjectName(QStringLiteral("state"));
    m_new = new QPushButton(tr("&New..."));
    m_new->setObjectName(QStringLiteral("cmdNew"));
    m_new->setAutoDefault(false);
    m_new->setVisible(bool(m_create));
    connect(m_new, &QPushButton::clicked, this, &frmListChooser::create);
    line->addWidget(m_state, 1);
    line->addWidget(m_new);
    layout->addLayout(line);
    m_choose = FormHelpers::buttonRow(this, layout, tr("&Choose"), QStringLiteral("cmdChoose"));
    connect(m_choose, &QPushButton::clicked, this, &frmListChooser::choose);
    resize(520, 520);
    fill();
    m_text->setFocus();
}

bool frmListChooser::readList(ItemList& list) const {
    const QString typed = m_text->text().trimmed();
    if (m_kind)
        return CMIT(m_session).ElencoInLv(m_kind, list, typed);
    list = m_ready.narrowed(typed);
    return true;
}

// The first match is selected while somebody types; with nothing typed nothing is chosen by chance.
void frmListChooser::fill() {
    ItemList list;
    if (!readList(list))
        return;
    m_model->setList(std::move(list));
    FormHelpers::fitColumns(m_view);
    const int rows = m_model->rowCount();
    const bool typed = !m_text->text().trimmed().isEmpty();
    if (typed && rows > 0)
        m_view->setCurrentIndex(m_model->index(0, 0));
    m_state->setText(rows > 0 ? tr("%1 in the list").arg(rows)
                     : typed  ? tr("No match")
                              : tr("The list is empty."));
    enable();
}

void frmListChooser::enable() { m_choose->setEnabled(m_view->selectionModel()->hasSelection()); }

void frmListChooser::choose() {
    if (m_choose->isEnabled())
        accept();
}

void frmListChooser::create() {
    const qint64 id = m_create(this);
    if (id == 0)
        return;
    m_created = true;
    if (m_reload)
        m_reload(m_ready);
    const QSignalBlocker blocker(m_text);
    m_text->clear();
    fill();
    select(id);
    m_text->setFocus();
}

void frmListChooser::select(qint64 id) {
    const QModelIndex index = m_model->indexOf(id);
    if (!index.isValid())
        return;
    m_view->setCurrentIndex(index);
    m_view->scrollTo(index);
}

std::vector<qint64> frmListChooser::ids() const { return FormHelpers::selectedIds(m_view, m_model); }

QStringList frmListChooser::names() const {
    QModelIndexList rows = m_view->selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    QStringList names;
    for (const QModelIndex& row : rows)
        names.push_back(row.data().toString());
    return names;
}

qint64 frmListChooser::id() const {
    const std::vector<qint64> chosen = ids();
    return chosen.empty() ? 0 : chosen.front();
}

} // namespace tessaranth
