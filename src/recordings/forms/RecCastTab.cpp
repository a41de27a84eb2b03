// SPDX-License-Identifier: GPL-3.0-or-later
#include "recordings/forms/RecCastTab.h"

#include "items/forms/frmListChooser.h"
#include "store/Session.h"
#include "widgets/IconStore.h"
#include "widgets/OrderedTree.h"
#include "works/CWKS.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace tessaranth {

RecCastTab::RecCastTab(RecContext& context) : RecTab(context) {
    setObjectName(QStringLiteral("tabCast"));
    auto* layout = new QHBoxLayout(this);
    buildWorks(layout);
    buildPerformers(layout);
}

void RecCastTab::buildWorks(QBoxLayout* layout) {
    auto* side = new QVBoxLayout;
    m_works = new OrderedTree(this, QStringLiteral("lvWorks"), tr("Works on the recording"),
                              {tr("Work"), tr("Performers")});
    m_works->setDragDropMode(QAbstractItemView::NoDragDrop);
    auto* label = new QLabel(tr("&Works:"));
    label->setBuddy(m_works);
    side->addWidget(label);
    side->addWidget(m_works, 1);
    auto* buttons = new QHBoxLayout;
    m_previous = command(m_works, tr("Pre&vious"), "cmdCastPrevious", tr("Previous work"), "Alt+Left",
                         [this] { step(-1); });
    m_next = command(m_works, tr("Ne&xt"), "cmdCastNext", tr("Next work"), "Alt+Right", [this] { step(1); });
    buttons->addWidget(m_previous);
    buttons->addWidget(m_next);
    buttons->addStretch();
    side->addLayout(buttons);
    layout->addLayout(side, 2);
    connect(m_works, &QTreeWidget::itemSelectionChanged, this, [this] {
        const Part* part = currentPart();
        m_context.work = part ? part->work.id : 0;
        readRoles();
        showPerformers();
    });
}

void RecCastTab::buildPerformers(QBoxLayout* layout) {
    auto* side = new QVBoxLayout;
    m_list = new OrderedTree(this, QStringLiteral("lvPfr"), tr("Performers on the work"),
                             {tr("Performer"), tr("Personages")});
    m_list->setDragDropMode(QAbstractItemView::NoDragDrop);
    m_heading = new QLabel;
    m_heading->setBuddy(m_list);
    side->addWidget(m_heading);
    side->addWidget(m_list, 1);
    auto* buttons = new QHBoxLayout;
    const auto add = [&](const QString& text, const char* name, const QString& tip, const char* key,
                         const std::function<void()>& run) {
        QPushButton* button = command(m_list, text, name, tip, key, run);
        buttons->addWidget(button);
        return button;
    };
    m_add = add(tr("Add &performers..."), "cmdCastAdd", tr("Add performer(s) to the current work"), "Ins",
                [this] { addPerformers(); });
    m_remove =
        add(tr("&Remove"), "cmdCastRemove", tr("Remove the selected performer(s) from the current work"),
            "Del", [this] { removePerformers(); });
    m_roles = add(tr("Per&sonages..."), "cmdCastRoles", tr("Associate personages to the selected performer"),
                  "F2", [this] { chooseRoles(); });
    m_clear = add(tr("No persona&ges"), "cmdCastClear",
                  tr("The selected performer(s) are no personage of the work"), "", [this] { clearRoles(); });
    side->addLayout(buttons);
    layout->addLayout(side, 3);
    connect(m_list, &QTreeWidget::itemSelectionChanged, this, &RecCastTab::enable);
    connect(m_list, &QTreeWidget::itemActivated, this, &RecCastTab::chooseRoles);
}

QWidget* RecCastTab::firstField() const { return m_works; }

QString RecCastTab::obstacle() const {
    return m_context.editor.works().empty() ? tr("There is no work on the recording yet.") : QString();
}

// ---- reading and saving

RecCastTab::Cast RecCastTab::castOf(const std::vector<Casting>& rows) {
    Cast cast;
    for (const Casting& row : rows) {
        std::vector<qint64>& roles = cast[row.performer];
        if (row.role != 0 && std::find(roles.begin(), roles.end(), row.role) == roles.end())
            roles.push_back(row.role);
    }
    for (auto& [performer, roles] : cast)
        std::sort(roles.begin(), roles.end());
    return cast;
}

std::vector<Casting> RecCastTab::rowsOf(const Cast& cast) {
    std::vector<Casting> rows;
    for (const auto& [performer, roles] : cast) {
        if (roles.empty())
            rows.push_back({performer, 0});
        for (const qint64 role : roles)
            rows.push_back({performer, role});
    }
    return rows;
}

void RecCastTab::load() {
    m_performers = m_context.editor.performers();
    m_parts.clear();
    for (PlacedWork& work : m_context.editor.works()) {
        const Cast cast = castOf(work.cast);
        m_parts.push_back({std::move(work), cast, cast});
    }
    showWorks();
    emit changed();
}

bool RecCastTab::isChanged() const {
    return std::any_of(m_parts.begin(), m_parts.end(),
                       [](const Part& part) { return part.cast != part.read; });
}

bool RecCastTab::apply() {
    for (Part& part : m_parts) {
        if (part.cast == part.read)
            continue;
        if (!m_context.editor.applyCast(part.work.id, rowsOf(part.cast))) {
            emit changed();
            return false;
        }
        part.read = part.cast;
    }
    emit changed();
    return true;
}

// ---- showing

void RecCastTab::showWorks() {
    int current = 0;
    {
        const QSignalBlocker blocker(m_works);
        m_works->clear();
        for (size_t i = 0; i < m_parts.size(); ++i) {
            const PlacedWork& work = m_parts[i].work;
            const QString title =
                work.excerpt.isEmpty() ? work.title : work.title + QStringLiteral(" - ") + work.excerpt;
            auto* item = new QTreeWidgetItem(m_works, {title, QString()});
            item->setIcon(0, m_context.icons.icon(QStringLiteral("Comp")));
            item->setToolTip(0, title);
            item->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
            if (work.id == m_context.work)
                current = int(i);
        }
        showCounts();
        m_works->fitColumns(0);
    }
    if (!m_parts.empty())
        m_works->selectRows({current});
    readRoles();
    showPerformers();
}

void RecCastTab::showCounts() {
    for (size_t i = 0; i < m_parts.size(); ++i) {
        QTreeWidgetItem* item = m_works->topLevelItem(int(i));
        item->setText(1, QString::number(m_parts[i].cast.size()));
        QFont font = item->font(0);
        font.setItalic(m_parts[i].cast != m_parts[i].read);
        item->setFont(0, font);
    }
}

void RecCastTab::readRoles() {
    m_roleNames.clear();
    ItemList list;
    const Part* part = currentPart();
    if (part && CWKS(m_context.session).PersInLv(part->work.work, list))
        for (int row = 0; row < list.rowCount(); ++row)
            m_roleNames.insert(list.id(row), list.text(row, 0));
}

QString RecCastTab::rolesOf(const std::vector<qint64>& roles) const {
    QStringList names;
    for (const qint64 role : roles)
        if (m_roleNames.contains(role))
            names.push_back(m_roleNames.value(role));
    return names.join(QStringLiteral(", "));
}

void RecCastTab::showPerformers() {
    const QSignalBlocker blocker(m_list);
    const std::vector<int> selected = m_list->selectedRows();
    std::vector<qint64> keep;
    for (const int row : selected)
        if (row < int(m_shown.size()))
            keep.push_back(m_shown[size_t(row)]);
    m_list->clear();
    m_shown.clear();
    const Part* part = currentPart();
    std::vector<int> again;
    for (const RecordingArtist& performer : m_performers) {
        if (!part || !part->cast.contains(performer.id))
            continue;
        if (std::find(keep.begin(), keep.end(), performer.id) != keep.end())
            again.push_back(int(m_shown.size()));
        m_shown.push_back(performer.id);
        auto* item = new QTreeWidgetItem(m_list, {performer.name, rolesOf(part->cast.at(performer.id))});
        item->setIcon(0, m_context.icons.icon(QStringLiteral("p")));
    }
    m_list->fitColumns(1);
    m_list->selectRows(again);
    const size_t works = selectedParts().size();
    m_heading->setText(works > 1 ? tr("Per&formers on the last of %1 selected works:").arg(works)
                                 : tr("Per&formers on the work:"));
    enable();
}

RecCastTab::Part* RecCastTab::currentPart() {
    const int row = m_works->currentIndex().row();
    return row >= 0 && row < int(m_parts.size()) ? &m_parts[size_t(row)] : nullptr;
}

std::vector<RecCastTab::Part*> RecCastTab::selectedParts() {
    std::vector<Part*> parts;
    for (const int row : m_works->selectedRows())
        parts.push_back(&m_parts[size_t(row)]);
    return parts;
}

void RecCastTab::enable() {
    const bool any = !m_list->selectedItems().isEmpty();
    m_add->setEnabled(!selectedParts().empty());
    m_remove->setEnabled(any);
    m_roles->setEnabled(m_list->selectedItems().size() == 1);
    m_clear->setEnabled(any);
    const int row = m_works->currentIndex().row();
    m_previous->setEnabled(row > 0);
    m_next->setEnabled(row + 1 < int(m_parts.size()));
}

void RecCastTab::step(int places) {
    const int row = m_works->currentIndex().row() + places;
    if (row >= 0 && row < int(m_parts.size()))
        m_works->selectRows({row});
}

// ---- changes

void RecCastTab::changedCast() {
    showCounts();
    showPerformers();
    emit changed();
}

void RecCastTab::addPerformers() {
    ItemList list({{QStringLiteral("Performers")}});
    for (const RecordingArtist& performer : m_performers)
        list.addRow(performer.id, QStringLiteral("p"), {performer.name});
    frmListChooser form(m_context, QStringLiteral("p"), std::move(list),
                        QStringLiteral("  Performers on work"), true, this);
    if (form.exec() != QDialog::Accepted)
        return;
    for (Part* part : selectedParts())
        for (const qint64 performer : form.ids())
            part->cast.try_emplace(performer);
    changedCast();
    m_list->setFocus();
    if (m_list->selectedItems().isEmpty() && !m_shown.empty())
        m_list->selectRows({0});
}

void RecCastTab::removePerformers() {
    for (const int row : m_list->selectedRows())
        for (Part* part : selectedParts())
            part->cast.erase(m_shown[size_t(row)]);
    changedCast();
}

void RecCastTab::chooseRoles() {
    const std::vector<int> rows = m_list->selectedRows();
    Part* part = currentPart();
    if (rows.size() != 1 || !part)
        return;
    std::vector<qint64>& roles = part->cast[m_shown[size_t(rows.front())]];
    CWKS works(m_context.session);
    const qint64 work = part->work.work;
    ItemList list;
    if (!works.PersInLv(work, list))
        return;
    frmListChooser form(m_context, QStringLiteral("Pers"), std::move(list),
                        QStringLiteral("  Personages on work"), true, this);
    form.setCreator(
        [&](QWidget*) {
            const QString name = m_context.session.messages().inputName(
                {QStringLiteral("New personage"), QStringLiteral("Add a new personage"),
                 QStringLiteral("Personage name"), QStringLiteral("Add"), QStringLiteral("Pers"), QString(),
                 m_context.session.fields().width(QStringLiteral("Personages"),
                                                  QStringLiteral("PersonageName"))});
            return name.isEmpty() ? qint64(0) : works.addCharacter(work, name);
        },
        [&](ItemList& again) { return works.PersInLv(work, again); });
    for (const qint64 role : roles)
        form.select(role);
    if (form.exec() == QDialog::Accepted) {
        roles = form.ids();
        std::sort(roles.begin(), roles.end());
    }
    readRoles();
    changedCast();
}

void RecCastTab::clearRoles() {
    if (Part* part = currentPart())
        for (const int row : m_list->selectedRows())
            part->cast[m_shown[size_t(row)]].clear();
    changedCast();
}

} // namespace tessaranth
