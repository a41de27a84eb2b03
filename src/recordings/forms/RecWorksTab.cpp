// SPDX-License-Identifier: GPL-3.0-or-later
#include "recordings/forms/RecWorksTab.h"

#include "items/forms/frmListChooser.h"
#include "store/Guarded.h"
#include "widgets/FormHelpers.h"
#include "widgets/IconStore.h"
#include "widgets/OrderedTree.h"
#include "works/CWKS.h"
#include "works/ComposerCatalog.h"
#include "works/forms/frmWorkEditor.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardItemModel>

namespace tessaranth {

namespace {

enum Role { KeyRole = Qt::UserRole, WorkRole, ComposerRole };
enum Column { WorkColumn, ExcerptColumn, PerformersColumn, ComposerColumn, NumberColumn };
enum Category { BranchRole = Qt::UserRole, NodeRole };

/// What this tab changes of a work. Its cast belongs to another one, and its title to the work itself.
bool isSamePlace(const PlacedWork& a, const PlacedWork& b) {
    return a.id == b.id && a.composer == b.composer && a.work == b.work && a.excerpt == b.excerpt;
}
bool arePlacesSame(const std::vector<PlacedWork>& a, const std::vector<PlacedWork>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), isSamePlace);
}

void addHeading(QComboBox* combo, const QString& text) {
    combo->addItem(text);
    auto* item = static_cast<QStandardItemModel*>(combo->model())->item(combo->count() - 1);
    item->setFlags(Qt::NoItemFlags);
    QFont font = item->font();
    font.setBold(true);
    item->setFont(font);
}

QLabel* caption(const QString& text, QWidget* buddy) {
    auto* label = new QLabel(text);
    label->setBuddy(buddy);
    return label;
}

} // namespace

RecWorksTab::RecWorksTab(RecContext& context) : RecTab(context) {
    setObjectName(QStringLiteral("tabWorks"));
    auto* layout = new QVBoxLayout(this);
    buildChoice(layout);
    buildOrder(layout);
    buildTree(layout);
    buildExcerpt(layout);
}

void RecWorksTab::buildChoice(QBoxLayout* layout) {
    auto* row = new QHBoxLayout;
    const auto combo = [&](const QString& text, const char* name, const QString& spoken) {
        auto* made = new QComboBox;
        made->setObjectName(QLatin1String(name));
        made->setAccessibleName(spoken);
        made->setMaxVisibleItems(24);
        made->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        row->addWidget(caption(text, made));
        row->addWidget(made, 1);
        row->addSpacing(8);
        return made;
    };
    m_composer = combo(tr("C&omposer:"), "cboCps", tr("Composer"));
    m_category = combo(tr("Cate&gory:"), "cboCat", tr("Category of the works offered"));
    layout->addLayout(row);
    connect(m_composer, &QComboBox::currentIndexChanged, this,
            [this] { reading([this] { fillCategories(); }); });
}

void RecWorksTab::buildOrder(QBoxLayout* layout) {
    m_order = new QCheckBox(tr("In the order of the d&isc"));
    m_order->setObjectName(QStringLiteral("chkOrder"));
    m_order->setToolTip(tr("Shows the works as they stand on the disc, where each of them can be moved "
                           "anywhere, instead of beneath their composers"));
    connect(m_order, &QCheckBox::clicked, this, [this] {
        m_isOrderChosen = true;
        show(selectedWorks());
    });
    layout->addWidget(m_order);
}

void RecWorksTab::buildTree(QBoxLayout* layout) {
    auto* row = new QHBoxLayout;
    m_tree = new OrderedTree(this, QStringLiteral("TV"), tr("Works on the recording"),
                             {tr("Work"), tr("Excerpt"), tr("Performers"), tr("Composer"), tr("No.")});
    m_tree->setTreePosition(WorkColumn);
    m_tree->header()->moveSection(NumberColumn, 0);
    m_tree->header()->moveSection(m_tree->header()->visualIndex(ComposerColumn), 2);
    row->addWidget(m_tree, 1);
    auto* buttons = new QVBoxLayout;
    const auto add = [&](const QString& text, const char* name, const QString& tip, const char* key,
                         const std::function<void()>& run) {
        QPushButton* button = command(m_tree, text, name, tip, key, run);
        buttons->addWidget(button);
        return button;
    };
    m_add =
        add(tr("Add &works..."), "cmdWksAdd", tr("Add works to recording"), "Ins", [this] { addWorks(); });
    m_remove =
        add(tr("&Remove"), "cmdWksRemove", tr("Remove selected work"), "Del", [this] { removeWorks(); });
    m_up = add(tr("Move &up"), "cmdWksUp", tr("Move up the selected work"), "Alt+Up", [this] { moveBy(-1); });
    m_down = add(tr("Move &down"), "cmdWksDown", tr("Move down the selected work"), "Alt+Down",
                 [this] { moveBy(1); });
    m_previous =
        add(tr("&Previous"), "cmdWksPrevious", tr("Previous work"), "Alt+Left", [this] { step(-1); });
    m_next = add(tr("Nex&t"), "cmdWksNext", tr("Next work"), "Alt+Right", [this] { step(1); });
    buttons->addStretch();
    row->addLayout(buttons);
    layout->addLayout(row, 1);
    connect(m_tree, &QTreeWidget::itemSelectionChanged, this, &RecWorksTab::followSelection);
    connect(m_tree, &OrderedTree::rowsDropped, this, &RecWorksTab::drop, Qt::QueuedConnection);
}

void RecWorksTab::buildExcerpt(QBoxLayout* layout) {
    auto* row = new QHBoxLayout;
    m_excerpt = FormHelpers::lineEdit(
        this, QStringLiteral("txtExcerpt"), tr("Excerpt"),
        m_context.session.fields().width(QStringLiteral("CompOnRec"), QStringLiteral("ExtraitName")));
    m_excerpt->setPlaceholderText(
        tr("Only when a part of the work is recorded; Enter goes to the next work"));
    connect(m_excerpt, &QLineEdit::textEdited, this, &RecWorksTab::setExcerpt);
    connect(m_excerpt, &QLineEdit::returnPressed, this, [this] {
        step(1);
        m_excerpt->selectAll();
    });
    row->addWidget(caption(tr("E&xcerpt:"), m_excerpt));
    row->addWidget(m_excerpt, 1);
    layout->addLayout(row);
    m_all = new QCheckBox(tr("A&ll performers of the recording perform in the works that are added"));
    m_all->setObjectName(QStringLiteral("chkAllPerformers"));
    layout->addWidget(m_all);
}

QWidget* RecWorksTab::firstField() const { return m_tree; }

QString RecWorksTab::obstacle() const {
    if (!m_context.editor.works().empty() ||
        (!m_context.editor.composers().empty() && !m_context.editor.performers().empty()))
        return {};
    return QStringLiteral("In order to insert works, at least one composer and one performer are required.");
}

// ---- reading and showing

void RecWorksTab::read() {
    m_performers = m_context.editor.performers();
    m_works = m_read = m_context.editor.works();
    if (!m_isOrderChosen)
        m_order->setChecked(doesComposerReturn(m_works));
    fillComposers();
    std::vector<int> selected;
    for (size_t i = 0; i < m_works.size(); ++i)
        if (m_works[i].id == m_context.work)
            selected.push_back(int(i));
    if (selected.empty() && !m_works.empty())
        selected.push_back(0);
    show(selected);
}

bool RecWorksTab::isChanged() const { return !arePlacesSame(m_works, m_read); }

void RecWorksTab::fillComposers() {
    const QVariant before = m_composer->currentData();
    {
        const QSignalBlocker blocker(m_composer);
        m_composer->clear();
        for (const RecordingArtist& composer : m_context.editor.composers())
            m_composer->addItem(m_context.icons.icon(QStringLiteral("c")), composer.name, composer.id);
        m_composer->setCurrentIndex(qMax(0, m_composer->findData(before)));
    }
    fillCategories();
}

void RecWorksTab::fillCategories() {
    const QString before = m_category->currentText();
    m_category->clear();
    m_category->addItem(QStringLiteral("All / Unclassifieds"));
    ComposerCatalog catalog(m_context.session, m_composer->currentData().toLongLong());
    const std::pair<CatalogBranch::Number, QString> branches[] = {
        {CatalogBranch::Genres, QStringLiteral("Catalog genres")},
        {CatalogBranch::MainWorks, QStringLiteral("Mainworks")}};
    for (const auto& [branch, heading] : branches) {
        addHeading(m_category, heading);
        for (const ComposerCatalog::Node& node : catalog.nodes(branch)) {
            if (node.id == 0)
                continue;
            m_category->addItem(node.name);
            m_category->setItemData(m_category->count() - 1, branch, BranchRole);
            m_category->setItemData(m_category->count() - 1, node.id, NodeRole);
        }
    }
    // Composers share the names of genres: sonatas stay sonatas.
    const int same = m_category->findText(before);
    m_category->setCurrentIndex(same > 0 && m_category->itemData(same, NodeRole).isValid() ? same : 0);
}

bool RecWorksTab::readComposersWorks(ItemList& list) const {
    ComposerCatalog catalog(m_context.session, m_composer->currentData().toLongLong());
    const QVariant node = m_category->currentData(NodeRole);
    return catalog.works(CatalogBranch::Number(m_category->currentData(BranchRole).toInt()),
                         node.isValid() ? std::optional(node.toLongLong()) : std::nullopt, list);
}

QString RecWorksTab::performersOf(const PlacedWork& work) const {
    QStringList names;
    for (const RecordingArtist& performer : m_performers)
        if (std::any_of(work.cast.begin(), work.cast.end(),
                        [&](const Casting& casting) { return casting.performer == performer.id; }))
            names.push_back(performer.name);
    return names.join(QStringLiteral(" / "));
}

bool RecWorksTab::isInOrder() const { return m_order->isChecked(); }

void RecWorksTab::arrangeColumns() {
    m_tree->setRootIsDecorated(!isInOrder());
    for (const int column : {ComposerColumn, NumberColumn})
        m_tree->setColumnHidden(column, !isInOrder());
    m_tree->fitColumns(PerformersColumn);
    constexpr int widest = 300;
    for (const int column : {WorkColumn, ExcerptColumn, ComposerColumn})
        m_tree->setColumnWidth(column, qMin(m_tree->columnWidth(column), widest));
}

void RecWorksTab::addComposer(const ComposerNode& composer) {
    auto* node = new QTreeWidgetItem(m_tree, {composer.name});
    node->setIcon(WorkColumn, m_context.icons.icon(QStringLiteral("c")));
    node->setData(0, KeyRole, QStringLiteral("#C%1").arg(composer.composer));
    node->setData(0, ComposerRole, composer.composer);
    node->setFirstColumnSpanned(true);
    for (const int work : composer.works)
        addItem(node, work);
}

void RecWorksTab::addItem(QTreeWidgetItem* parent, int number) {
    const PlacedWork& work = m_works[size_t(number)];
    auto* item = new QTreeWidgetItem(parent, {work.title, work.excerpt, performersOf(work), work.composerName,
                                              QString::number(number + 1)});
    item->setIcon(WorkColumn, m_context.icons.icon(QStringLiteral("Comp")));
    for (const int column : {WorkColumn, PerformersColumn, ComposerColumn})
        item->setToolTip(column, item->text(column));
    item->setTextAlignment(NumberColumn, Qt::AlignRight | Qt::AlignVCenter);
    item->setData(0, KeyRole, work.id == 0 ? QString() : QStringLiteral("#W%1").arg(work.id));
    item->setData(0, WorkRole, number);
    item->setData(0, ComposerRole, work.composer);
    item->setFlags(item->flags() & ~Qt::ItemIsDropEnabled);
}

void RecWorksTab::show(const std::vector<int>& selected) {
    {
        const QSignalBlocker blocker(m_tree);
        m_tree->clear();
        if (isInOrder())
            for (int work = 0; work < int(m_works.size()); ++work)
                addItem(m_tree->invisibleRootItem(), work);
        else
            for (const ComposerNode& composer : byComposer(m_works))
                addComposer(composer);
        m_tree->expandAll();
        arrangeColumns();
        selectWorks(selected);
    }
    followSelection();
    emit changed();
}

// From top to bottom, as Previous and Next go.
std::vector<int> RecWorksTab::shownOrder() const {
    std::vector<int> order;
    for (QTreeWidgetItemIterator it(m_tree); *it; ++it)
        if (const QVariant number = (*it)->data(0, WorkRole); number.isValid())
            order.push_back(number.toInt());
    return order;
}

// ---- selection

void RecWorksTab::selectWorks(const std::vector<int>& works) {
    m_tree->clearSelection();
    bool first = true;
    for (QTreeWidgetItemIterator it(m_tree); *it; ++it) {
        const QVariant number = (*it)->data(0, WorkRole);
        if (!number.isValid() || !std::binary_search(works.begin(), works.end(), number.toInt()))
            continue;
        if (std::exchange(first, false))
            m_tree->setCurrentItem(*it);
        (*it)->setSelected(true);
    }
    m_tree->scrollToItem(m_tree->currentItem());
}

int RecWorksTab::currentWork() const {
    const QTreeWidgetItem* item = m_tree->currentItem();
    const QVariant number = item ? item->data(0, WorkRole) : QVariant();
    return number.isValid() ? number.toInt() : -1;
}

// A composer who is selected stands for all of his works.
std::vector<int> RecWorksTab::selectedWorks() const {
    std::vector<int> works;
    for (const QTreeWidgetItem* item : m_tree->selectedItems()) {
        if (const QVariant number = item->data(0, WorkRole); number.isValid())
            works.push_back(number.toInt());
        else
            for (const int one : worksOf(item->data(0, ComposerRole).toLongLong()))
                works.push_back(one);
    }
    std::sort(works.begin(), works.end());
    works.erase(std::unique(works.begin(), works.end()), works.end());
    return works;
}

std::vector<int> RecWorksTab::worksOf(qint64 composer) const {
    std::vector<int> works;
    for (size_t i = 0; i < m_works.size(); ++i)
        if (m_works[i].composer == composer)
            works.push_back(int(i));
    return works;
}

void RecWorksTab::followSelection() {
    const int work = currentWork();
    m_context.work = work < 0 ? 0 : m_works[size_t(work)].id;
    if (QTreeWidgetItem* item = m_tree->currentItem())
        m_composer->setCurrentIndex(m_composer->findData(item->data(0, ComposerRole)));
    m_excerpt->setText(work < 0 ? QString() : m_works[size_t(work)].excerpt);
    enable();
}

void RecWorksTab::enable() {
    const int work = currentWork();
    const std::vector<int> order = shownOrder();
    const bool any = !m_tree->selectedItems().isEmpty();
    m_excerpt->setEnabled(work >= 0);
    m_add->setEnabled(m_composer->currentIndex() >= 0);
    for (QPushButton* button : {m_remove, m_up, m_down})
        button->setEnabled(any);
    m_previous->setEnabled(work >= 0 && work != order.front());
    m_next->setEnabled(!order.empty() && work != order.back());
}

void RecWorksTab::step(int places) {
    const std::vector<int> order = shownOrder();
    const auto current = std::find(order.begin(), order.end(), currentWork());
    const auto target =
        (current == order.end() ? -1 : current - order.begin()) + places; // from no work, to the first
    if (target >= 0 && target < std::ssize(order))
        selectWorks({order[size_t(target)]});
}

// ---- changes

void RecWorksTab::addWorks() {
    ItemList list;
    const qint64 composer = m_composer->currentData().toLongLong();
    if (composer == 0 || !readComposersWorks(list))
        return;
    frmListChooser form(m_context, QStringLiteral("Comp"), std::move(list),
                        QStringLiteral("  Composer works"), true, this);
    form.setCreator(
        [&](QWidget* above) {
            frmWorkEditor editor(m_context, composer, 0, above);
            const bool made = editor.exec() == QDialog::Accepted;
            // A new work need not be in the category that is chosen, but it must be seen now.
            if (made)
                m_category->setCurrentIndex(0);
            return made ? editor.workId() : qint64(0);
        },
        [this](ItemList& works) { return readComposersWorks(works); });
    if (form.exec() != QDialog::Accepted)
        return;
    const std::vector<int> present = worksOf(composer);
    int place = present.empty() || isInOrder() ? int(m_works.size()) : present.back() + 1;
    std::vector<int> selected;
    QString acronym;
    std::vector<Work> chosen;
    const bool isRead = guarded(m_context.session, [&] {
        CWKS works(m_context.session);
        acronym = works.acronym(composer);
        for (const qint64 id : form.ids())
            chosen.push_back(works.work(id));
    });
    if (!isRead)
        return;
    for (const Work& work : chosen) {
        const QString number = CWKS::numberText(acronym, work.number);
        PlacedWork placed;
        placed.composer = composer;
        placed.composerName = m_composer->currentText();
        placed.work = work.id;
        placed.title = number.isEmpty() ? work.title : work.title + QStringLiteral(", ") + number;
        if (m_all->isChecked())
            for (const RecordingArtist& performer : m_performers)
                placed.cast.push_back({performer.id, 0});
        selected.push_back(place);
        m_works.insert(m_works.begin() + place++, placed);
    }
    show(selected);
    m_tree->setFocus();
}

void RecWorksTab::removeWorks() {
    const std::vector<int> works = selectedWorks();
    if (works.empty())
        return;
    show(removeElements(m_works, works));
}

void RecWorksTab::showMoved(const std::vector<int>& moved) {
    if (!moved.empty())
        show(moved);
}

void RecWorksTab::moveBy(int step) {
    const std::vector<int> works = selectedWorks();
    showMoved(isInOrder() ? stepOnDisc(m_works, works, step) : stepInTree(m_works, works, step));
}

void RecWorksTab::drop(QTreeWidgetItem* target, bool behind) {
    const std::vector<int> works = selectedWorks();
    if (works.empty())
        return;
    const QVariant number = target ? target->data(0, WorkRole) : QVariant();
    if (isInOrder())
        showMoved(moveOnDisc(m_works, works, target ? number.toInt() + behind : int(m_works.size())));
    else if (target && number.isValid() &&
             m_works[size_t(works.front())].composer == m_works[size_t(number.toInt())].composer)
        showMoved(moveInTree(m_works, works, number.toInt() + behind));
    else if (target)
        showMoved(dropOnComposer(m_works, works, target->data(0, ComposerRole).toLongLong()));
}

void RecWorksTab::setExcerpt(const QString& text) {
    const int work = currentWork();
    if (work < 0)
        return;
    m_works[size_t(work)].excerpt = text;
    m_tree->currentItem()->setText(ExcerptColumn, text);
    emit changed();
}

bool RecWorksTab::apply() {
    std::vector<PlacedWork> works = m_works;
    const int current = currentWork();
    if (!m_context.editor.applyWorks(works))
        return false;
    m_context.work = current < 0 ? 0 : works[size_t(current)].id;
    load();
    return true;
}

} // namespace tessaranth
