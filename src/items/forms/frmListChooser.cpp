// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/forms/frmListChooser.h"

#include "items/CMIT.h"
#include "items/forms/LookupEditing.h"
#include "items/forms/frmNewUserDef.h"
#include "items/forms/frmPers.h"
#include "store/Session.h"
#include "widgets/FormHelpers.h"
#include "widgets/ItemListModel.h"
#include "widgets/Reading.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace tessaranth {

namespace {

bool isPerson(int kind) { return kind == ItemKind::Composer || kind == ItemKind::Performer; }

} // namespace

frmListChooser::frmListChooser(const FormContext& context, int kind, const QString& title, bool several,
                               QWidget* parent)
    : QDialog(parent), m_context(context), m_several(several), m_kind(kind) {
    setWindowTitle(title);
    if (isPerson(kind))
        m_create = [this](QWidget* above) {
            frmPers form(m_context, m_kind, 0, above);
            return form.exec() == QDialog::Accepted ? form.id() : 0;
        };
    else if (kind == ItemKind::Custom)
        m_create = [this](QWidget* above) {
            frmNewUserDef form(m_context, 0, nullptr, above);
            return form.exec() == QDialog::Accepted ? form.id() : 0;
        };
    else if (!itemKind(kind)->isCard())
        m_create = [this](QWidget* above) { return addLookup(m_context, m_kind, above); };
    buildUi(itemKind(kind)->iconKey);
}

frmListChooser::frmListChooser(const FormContext& context, const QString& iconKey, ItemList list,
                               const QString& title, bool several, QWidget* parent)
    : QDialog(parent), m_context(context), m_several(several), m_ready(std::move(list)) {
    setWindowTitle(title);
    buildUi(iconKey);
}

void frmListChooser::setCreator(Creator create, Filler reload) {
    m_create = std::move(create);
    m_reload = std::move(reload);
    m_new->setVisible(bool(m_create));
}

void frmListChooser::buildUi(const QString& iconKey) {
    setObjectName(QStringLiteral("frmListChooser"));
    auto* layout = new QVBoxLayout(this);
    const QString title = windowTitle().trimmed();
    const QString hint = m_several
                             ? tr("Ctrl+Space chooses the row found and lets you search on; Ctrl or Shift "
                                  "with a click add to what is chosen.")
                             : tr("Type until the row is found, then press Enter.");
    layout->addWidget(FormHelpers::head(m_context.icons, iconKey, title, hint));
    m_list = FormHelpers::narrowedList(
        this, m_context.icons,
        {QStringLiteral("txtFilter"), tr("Narrow the list"),
         m_kind ? tr("Type the beginning of a name") : tr("Type a part of the name or number"),
         QStringLiteral("lvItems"), title},
        m_several);
    m_list.text->installEventFilter(this);
    connect(m_list.text, &QLineEdit::textChanged, this, &frmListChooser::fill);
    layout->addWidget(m_list.text);
    // Enter in the list reaches the form's default button by itself.
    connect(m_list.view, &QTreeView::doubleClicked, this, &frmListChooser::choose);
    connect(m_list.view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &frmListChooser::followSelection);
    layout->addWidget(m_list.view, 1);
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
    fill();
    constexpr int narrowColumns = 2;
    resize(m_list.model->columnCount() > narrowColumns ? 820 : 520, 520);
    m_list.text->setFocus();
}

bool frmListChooser::readList(ItemList& list) const {
    const QString typed = m_list.text->text().trimmed();
    if (m_kind)
        return CMIT(m_context.session).ElencoInLv(m_kind, list, typed);
    list = m_ready.narrowed(typed);
    return true;
}

// The first match is selected while somebody types; with nothing typed nothing is chosen by chance.
void frmListChooser::fill() {
    ItemList list;
    readInto(m_list.view, m_context.session, [&] { return readList(list); });
    if (m_match != 0)
        std::erase_if(m_chosen, [this](const Chosen& chosen) { return chosen.id == m_match; });
    if (!m_several)
        m_chosen.clear();
    m_match = 0;
    m_filling = true;
    m_list.model->setList(std::move(list));
    FormHelpers::fitColumns(m_list.view);
    const QModelIndex first = m_list.model->index(0, 0);
    if (!m_list.text->text().trimmed().isEmpty() && first.isValid()) {
        const qint64 id = m_list.model->id(first);
        m_list.view->selectionModel()->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
        if (std::none_of(m_chosen.begin(), m_chosen.end(), [&](const Chosen& one) { return one.id == id; })) {
            m_match = id;
            m_chosen.push_back({id, first.data().toString()});
        }
    }
    showChosen();
}

void frmListChooser::showChosen() {
    m_filling = true;
    QItemSelection rows;
    for (const Chosen& chosen : m_chosen)
        if (const QModelIndex index = m_list.model->indexOf(chosen.id); index.isValid())
            rows.select(index, index);
    m_list.view->selectionModel()->select(rows,
                                          QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    m_filling = false;
    enable();
}

// Rows that the text hides stay chosen; those that are shown are as the user left them.
void frmListChooser::followSelection() {
    if (m_filling)
        return;
    m_match = 0;
    const QItemSelectionModel& selection = *m_list.view->selectionModel();
    std::erase_if(m_chosen, [&](const Chosen& chosen) {
        const QModelIndex index = m_list.model->indexOf(chosen.id);
        return !m_several || (index.isValid() && !selection.isSelected(index));
    });
    QModelIndexList rows = selection.selectedRows();
    std::sort(rows.begin(), rows.end());
    for (const QModelIndex& row : rows) {
        const qint64 id = m_list.model->id(row);
        if (std::none_of(m_chosen.begin(), m_chosen.end(), [&](const Chosen& one) { return one.id == id; }))
            m_chosen.push_back({id, row.data().toString()});
    }
    enable();
}

bool frmListChooser::eventFilter(QObject* watched, QEvent* event) {
    if (m_several && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Space && key->modifiers() == Qt::ControlModifier) {
            keepCurrent();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

// The text is selected, so that the next name can be typed at once.
void frmListChooser::keepCurrent() {
    const QModelIndex index = m_list.view->currentIndex();
    if (!index.isValid())
        return;
    if (m_match != 0 && m_match == m_list.model->id(index)) {
        m_match = 0;
        enable();
    } else {
        m_list.view->selectionModel()->select(index, QItemSelectionModel::Toggle | QItemSelectionModel::Rows);
    }
    m_list.text->selectAll();
}

void frmListChooser::enable() {
    m_choose->setEnabled(!m_chosen.empty());
    const int rows = m_list.model->rowCount();
    const bool typed = !m_list.text->text().trimmed().isEmpty();
    QString state = rows > 0 ? tr("%1 in the list").arg(rows)
                    : typed  ? tr("No match")
                             : tr("The list is empty.");
    if (m_several && !m_chosen.empty())
        state += tr(", %1 chosen").arg(m_chosen.size());
    m_state->setText(state);
    m_state->setToolTip(m_several ? names().join(u'\n') : QString());
}

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
    const QSignalBlocker blocker(m_list.text);
    m_list.text->clear();
    fill();
    select(id);
    m_list.text->setFocus();
}

void frmListChooser::narrow(const QString& text) {
    m_list.text->setText(text);
    // A dialog that is shown selects the text of its first field, and the next letter would replace it.
    QMetaObject::invokeMethod(
        m_list.text, [edit = m_list.text] { edit->end(false); }, Qt::QueuedConnection);
}

void frmListChooser::select(qint64 id) {
    const QModelIndex index = m_list.model->indexOf(id);
    if (!index.isValid())
        return;
    const auto how = m_several ? QItemSelectionModel::Select : QItemSelectionModel::ClearAndSelect;
    m_list.view->selectionModel()->setCurrentIndex(index, how | QItemSelectionModel::Rows);
    m_list.view->scrollTo(index);
}

std::vector<qint64> frmListChooser::ids() const {
    std::vector<qint64> ids;
    for (const Chosen& chosen : m_chosen)
        ids.push_back(chosen.id);
    return ids;
}

QStringList frmListChooser::names() const {
    QStringList names;
    for (const Chosen& chosen : m_chosen)
        names.push_back(chosen.name);
    return names;
}

qint64 frmListChooser::id() const { return m_chosen.empty() ? 0 : m_chosen.front().id; }

} // namespace tessaranth
