// SPDX-License-Identifier: GPL-3.0-or-later
#include "recordings/forms/RecArtistsTab.h"

#include "items/CMIT.h"
#include "items/forms/frmListChooser.h"
#include "recordings/forms/WksOnPfr.h"
#include "store/Guarded.h"
#include "widgets/IconStore.h"
#include "widgets/OrderedTree.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace tessaranth {

RecArtistsTab::RecArtistsTab(RecContext& context)
    : RecTab(context), m_composers{ItemKind::Composer, nullptr, {}, {}, {}},
      m_performers{ItemKind::Performer, nullptr, {}, {}, {}} {
    setObjectName(QStringLiteral("tabArtists"));
    auto* layout = new QVBoxLayout(this);
    const auto half = [&](Artists& artists, const QString& caption, const QStringList& headings, int share) {
        auto* row = new QHBoxLayout;
        auto* list = new QVBoxLayout;
        auto* buttons = new QVBoxLayout;
        build(artists, list, caption, headings);
        row->addLayout(list, 1);
        row->addLayout(buttons);
        layout->addLayout(row, share);
        return buttons;
    };
    QBoxLayout* composers =
        half(m_composers, tr("Co&mposers:"), {tr("Composer"), tr("Years"), tr("Catalog")}, 2);
    QBoxLayout* performers =
        half(m_performers, tr("Per&formers, in their order:"), {tr("No."), tr("Performer")}, 3);
    buildCommands(composers, performers);
    m_composers.tree->setDragDropMode(QAbstractItemView::NoDragDrop); // they have no order
    connect(
        m_performers.tree, &OrderedTree::rowsDropped, this,
        [this](QTreeWidgetItem* target, bool behind) {
            move(target ? m_performers.tree->indexOfTopLevelItem(target) + behind
                        : int(m_performers.shown.size()));
        },
        Qt::QueuedConnection);
}

void RecArtistsTab::build(Artists& artists, QBoxLayout* layout, const QString& caption,
                          const QStringList& headings) {
    const ItemKind& kind = *itemKind(artists.kind);
    artists.tree = new OrderedTree(this, QStringLiteral("lv") + kind.code, kind.listCaption, headings);
    auto* label = new QLabel(caption);
    label->setBuddy(artists.tree);
    layout->addWidget(label);
    layout->addWidget(artists.tree);
    connect(artists.tree, &QTreeWidget::itemSelectionChanged, this, [this, &artists] { enable(artists); });
}

void RecArtistsTab::buildCommands(QBoxLayout* composers, QBoxLayout* performers) {
    struct Row {
        Artists& artists;
        QBoxLayout* layout;
        QString caption;
        const char* name;
        QString tip;
        const char* key;
        bool needsSelection;
        std::function<void()> run;
    };
    const Row rows[] = {
        {m_composers, composers, tr("Add c&omposers..."), "cmdCpsAdd", tr("Add composer(s) to the recording"),
         "Ins", false, [this] { add(m_composers, QStringLiteral("  Composers list")); }},
        {m_composers, composers, tr("Remo&ve"), "cmdCpsRemove",
         tr("Remove the selected composers from the recording"), "Del", true,
         [this] { remove(m_composers); }},
        {m_performers, performers, tr("Add &performers..."), "cmdPfrAdd",
         tr("Add performer(s) to the recording"), "Ins", false,
         [this] { add(m_performers, QStringLiteral("  Performers list")); }},
        {m_performers, performers, tr("&Remove"), "cmdPfrRemove",
         tr("Remove selected performers from the recording"), "Del", true, [this] { remove(m_performers); }},
        {m_performers, performers, tr("Move &up"), "cmdPfrUp", tr("Move up the selected performer"), "Alt+Up",
         true, [this] { moveUp(); }},
        {m_performers, performers, tr("Move &down"), "cmdPfrDown", tr("Move down the selected performer"),
         "Alt+Down", true, [this] { moveDown(); }},
        {m_performers, performers, tr("Performed &works..."), "cmdPfrWorks",
         tr("Performed works on recording"), "", true, [this] { showPerformedWorks(); }}};
    for (const Row& row : rows) {
        QPushButton* button = command(row.artists.tree, row.caption, row.name, row.tip, row.key, row.run);
        row.layout->addWidget(button);
        if (row.needsSelection)
            row.artists.forSelection.push_back(button);
    }
    int width = 0;
    for (const QPushButton* button : findChildren<QPushButton*>())
        width = qMax(width, button->sizeHint().width());
    for (QPushButton* button : findChildren<QPushButton*>())
        button->setMinimumWidth(width); // both columns alike
    for (QBoxLayout* layout : {composers, performers}) {
        layout->insertSpacing(0,
                              fontMetrics().height() + layout->spacing()); // beside the list, not its label
        layout->addStretch();
    }
}

QWidget* RecArtistsTab::firstField() const { return m_composers.tree; }

std::vector<qint64> RecArtistsTab::idsOf(const std::vector<RecordingArtist>& artists) {
    std::vector<qint64> ids;
    ids.reserve(artists.size());
    for (const RecordingArtist& artist : artists)
        ids.push_back(artist.id);
    return ids;
}

void RecArtistsTab::read() {
    m_composers.shown = m_context.editor.composers();
    m_performers.shown = m_context.editor.performers();
    for (Artists* artists : {&m_composers, &m_performers}) {
        artists->read = idsOf(artists->shown);
        show(*artists);
    }
}

bool RecArtistsTab::apply() {
    const auto changedIds = [](const Artists& artists) {
        return isChanged(artists) ? std::optional(idsOf(artists.shown)) : std::nullopt;
    };
    if (!m_context.editor.applyArtists(changedIds(m_composers), changedIds(m_performers)))
        return false;
    load();
    return true;
}

void RecArtistsTab::show(Artists& artists, const std::vector<int>& selected) {
    const bool composers = artists.kind == ItemKind::Composer;
    const QIcon& icon = m_context.icons.icon(itemKind(artists.kind)->iconKey);
    artists.tree->clear();
    int number = 0;
    for (const RecordingArtist& artist : artists.shown) {
        ++number;
        auto* item = new QTreeWidgetItem(artists.tree,
                                         composers ? QStringList{artist.name, artist.years, artist.acronym}
                                                   : QStringList{QString::number(number), artist.name});
        item->setFlags(item->flags() & ~Qt::ItemIsDropEnabled); // between the rows, not onto one
        item->setIcon(composers ? 0 : 1, icon);
    }
    artists.tree->fitColumns(composers ? 0 : 1);
    if (!selected.empty())
        artists.tree->selectRows(selected);
    enable(artists);
    emit changed();
}

void RecArtistsTab::enable(const Artists& artists) {
    for (QPushButton* button : artists.forSelection)
        button->setEnabled(!artists.tree->selectedItems().isEmpty());
}

void RecArtistsTab::add(Artists& artists, const QString& listTitle) {
    frmListChooser form(m_context, artists.kind, listTitle, true, this);
    if (form.exec() != QDialog::Accepted)
        return;
    const std::vector<qint64> ids = form.ids();
    const QStringList names = form.names();
    const std::vector<qint64> present = idsOf(artists.shown);
    std::vector<int> selected;
    for (size_t i = 0; i < ids.size(); ++i) {
        const auto found = std::find(present.begin(), present.end(), ids[i]);
        if (found != present.end()) {
            selected.push_back(int(found - present.begin()));
            continue;
        }
        Person person;
        if (!guarded(m_context.session,
                     [&] { person = CMIT(m_context.session).person(artists.kind, ids[i]); }))
            break;
        selected.push_back(int(artists.shown.size()));
        artists.shown.push_back(
            {ids[i], names[qsizetype(i)], yearsText(person.born, person.died), person.acronym});
    }
    show(artists, selected);
    artists.tree->setFocus();
}

void RecArtistsTab::remove(Artists& artists) {
    const std::vector<int> rows = artists.tree->selectedRows();
    if (rows.empty())
        return;
    show(artists, removeElements(artists.shown, rows));
}

void RecArtistsTab::move(int target) {
    const std::vector<int> rows = m_performers.tree->selectedRows();
    if (rows.empty() || target < 0 || target > int(m_performers.shown.size()))
        return;
    const int first = moveElements(m_performers.shown, rows, target);
    show(m_performers, numbersFrom(first, rows.size()));
}

void RecArtistsTab::moveUp() {
    const std::vector<int> rows = m_performers.tree->selectedRows();
    if (!rows.empty())
        move(rows.front() - 1);
}

void RecArtistsTab::moveDown() {
    const std::vector<int> rows = m_performers.tree->selectedRows();
    if (!rows.empty())
        move(rows.back() + 2);
}

void RecArtistsTab::showPerformedWorks() {
    const std::vector<int> rows = m_performers.tree->selectedRows();
    std::vector<RecordingLists::Performed> performed;
    if (rows.empty() || !RecordingLists::performed(m_context.session, m_context.editor.id(), performed))
        return;
    const qint64 selected = m_performers.shown[size_t(rows.front())].id;
    const auto found = std::find_if(performed.begin(), performed.end(),
                                    [&](const auto& performer) { return performer.performer == selected; });
    if (found == performed.end())
        m_context.session.messages().information(
            tr("Performed works on recording"),
            tr("This performer is not on the recording as it is saved: apply the changes first."));
    else
        WksOnPfr(m_context.icons, performed, size_t(found - performed.begin()), this).exec();
}

} // namespace tessaranth
