// SPDX-License-Identifier: GPL-3.0-or-later
#include "recordings/forms/RecContentsPanel.h"

#include "items/OpenCards.h"
#include "items/forms/SpecsView.h"
#include "recordings/RecordingContents.h"
#include "recordings/forms/frmRec.h"
#include "store/Session.h"
#include "widgets/CardColours.h"
#include "widgets/CardTabs.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FormHelpers.h"
#include "widgets/IconStore.h"
#include "widgets/ItemListModel.h"

#include <QAction>
#include <QHeaderView>
#include <QResizeEvent>
#include <QSplitter>
#include <QStackedWidget>
#include <QStyledItemDelegate>
#include <QTreeView>
#include <QVBoxLayout>

namespace tessaranth {

namespace {

/// Rows as high as their texts within the columns' widths; one may be everybody who sings in an opera.
class WrappingDelegate final : public QStyledItemDelegate {
public:
    explicit WrappingDelegate(QTreeView* view) : QStyledItemDelegate(view), m_view(view) {}

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        QSize size = QStyledItemDelegate::sizeHint(option, index);
        const int margin = m_view->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, m_view) + 1;
        const int width = m_view->columnWidth(index.column()) - 2 * margin;
        if (index.column() > 0 && width > 0)
            size.setHeight(qMax(
                size.height(),
                option.fontMetrics.boundingRect(0, 0, width, 10000, Qt::TextWordWrap, index.data().toString())
                        .height() +
                    4));
        return size;
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        option->displayAlignment = (option->displayAlignment & Qt::AlignHorizontal_Mask) | Qt::AlignTop;
        option->decorationAlignment = Qt::AlignTop | Qt::AlignHCenter;
    }

private:
    QTreeView* m_view;
};

} // namespace

RecContentsPanel::RecContentsPanel(const CardContext& context, QWidget* parent) : CardPanel(context, parent) {
    setObjectName(QStringLiteral("panelRecContents"));
    addCommands();
    buildUi();
    load();
}

void RecContentsPanel::buildUi() {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    m_splitter = new QSplitter;
    m_splitter->setObjectName(QStringLiteral("contentsSplitter"));
    layout->addWidget(m_splitter);
    m_specs = new SpecsView(m_context.icons);
    m_splitter->addWidget(m_specs);

    auto* right = new QWidget;
    auto* column = new QVBoxLayout(right);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    m_tabs = new CardTabs;
    m_tabs->setObjectName(QStringLiteral("contentsTabs"));
    m_tabs->setAccessibleName(tr("Parts of the recording"));
    column->addWidget(m_tabs);
    m_performers = new ElidedLabel;
    m_performers->setObjectName(QStringLiteral("performersLine"));
    m_performers->setContentsMargins(8, 3, 8, 3);
    m_performers->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    column->addWidget(m_performers);
    m_areas = new QStackedWidget;
    column->addWidget(m_areas, 1);
    m_lists[Works] = buildList(Works, QStringLiteral("lvContents"), tr("Works"));
    m_lists[Tracks] = buildList(Tracks, QStringLiteral("lvTracks"), tr("Tracks"));
    m_lists[Artists] = buildList(Artists, QStringLiteral("lvArtists"), tr("Artists"));
    m_splitter->addWidget(right);
    m_splitter->setStretchFactor(0, 1);
    m_splitter->setStretchFactor(1, 1);
    m_splitter->setChildrenCollapsible(false);
    connect(m_tabs, &QTabBar::currentChanged, this, &RecContentsPanel::bringToFront);
    connect(m_splitter, &QSplitter::splitterMoved, this, [this] {
        const QList<int> sizes = m_splitter->sizes();
        const int whole = sizes[0] + sizes[1];
        if (whole > 0)
            m_percent = (sizes[0] * 100 + whole / 2) / whole;
    });

    connect(m_lists[Artists].view, &QTreeView::activated, this, &RecContentsPanel::GoToArtistCard);
    connect(m_lists[Works].view, &QTreeView::activated, this, [this](const QModelIndex& index) {
        m_context.cards.openCard(QStringLiteral("Comp"), m_lists[Works].model->id(index));
    });
    QTreeView* works = m_lists[Works].view;
    works->setUniformRowHeights(false);
    works->setWordWrap(true);
    works->setItemDelegate(new WrappingDelegate(works));
    connect(works->header(), &QHeaderView::sectionResized, works, &QTreeView::doItemsLayout);
    works->viewport()->installEventFilter(this);
    // The headings of the discs belong where they stand.
    m_lists[Tracks].view->setSortingEnabled(false);
    m_lists[Tracks].view->header()->setSectionsClickable(false);
    m_lists[Tracks].view->header()->setSortIndicatorShown(false);
}

RecContentsPanel::List RecContentsPanel::buildList(Area area, const QString& objectName,
                                                   const QString& name) {
    List list;
    list.model = new ItemListModel(m_context.icons, this);
    list.view = FormHelpers::itemView(this, objectName, list.model, false);
    list.view->setAccessibleName(name);
    list.view->setFrameShape(QFrame::NoFrame);
    m_actions.serve(list.view);
    connect(list.view->selectionModel(), &QItemSelectionModel::selectionChanged, this, &CardPanel::changed);
    m_areas->insertWidget(area, list.view);
    m_tabs->insertTab(area, name);
    return list;
}

void RecContentsPanel::addCommands() {
    m_actions.add({{QStringLiteral("mnuCardRecContentsManage"),
                    tr("&Manage..."),
                    {},
                    QStringLiteral("Manage"),
                    {},
                    [this] { manage(); },
                    {}},
                   {QStringLiteral("mnuCardRecContentsGoTo"),
                    tr("&Open artist card"),
                    {},
                    QStringLiteral("GoToCard"),
                    {},
                    [this] { GoToArtistCard(); },
                    [this] { return !selectedArtist().isEmpty(); }},
                   {QStringLiteral("mnuCardRecContentsRefresh"),
                    tr("Re&fresh"),
                    {},
                    QStringLiteral("Refresh"),
                    QStringLiteral("F5"),
                    [this] { load(); },
                    {}}});
    connect(this, &CardPanel::changed, &m_actions, &ActionTable::enable);
}

// The editor reloads the card after each part that it stores.
void RecContentsPanel::manage() { frmRec(m_context, m_context.id, &m_context.cards, window()).exec(); }

// ---- reading

void RecContentsPanel::load() {
    m_specs->setLabelColour(CardColours::read(m_context.session.configuration(), m_context.code).label);
    RecordingContents::Specs specs;
    if (RecordingContents(m_context.session, m_context.id).LoadRecSpecs(specs)) {
        m_specs->show(specs.lines);
        m_specs->showLogo(specs.logoFile, specs.labelName);
    }
    loadArtists();
    loadWorks();
    loadTracks();
    emit changed();
}

void RecContentsPanel::loadArtists() {
    RecordingContents::Artists artists;
    if (!RecordingContents(m_context.session, m_context.id).LoadRecArtists(artists))
        return;
    m_tabs->setTabText(Artists,
                       tr("Composers (%1), performers (%2)").arg(artists.composers).arg(artists.performers));
    m_lists[Artists].model->setList(std::move(artists.list));
    FormHelpers::fitColumns(m_lists[Artists].view);
}

void RecContentsPanel::loadWorks() {
    RecordingContents::Works works;
    if (!RecordingContents(m_context.session, m_context.id).LoadRecContents(works))
        return;
    m_tabs->setTabText(Works, tr("Works (%1)").arg(works.list.rowCount()));
    m_performers->setText(works.performers);
    m_lists[Works].model->setList(std::move(works.list));
    fitWorks();
}

void RecContentsPanel::loadTracks() {
    RecordingContents::Tracks tracks;
    if (!RecordingContents(m_context.session, m_context.id).LoadRecTracks(tracks))
        return;
    m_tabs->setTabText(Tracks, tr("Tracks (%1)").arg(tracks.count));
    QTreeView* view = m_lists[Tracks].view;
    m_lists[Tracks].model->setList(std::move(tracks.list));
    FormHelpers::fitColumns(view);
    view->header()->setStretchLastSection(false);
    view->header()->setSectionResizeMode(1, QHeaderView::Stretch);
    view->resizeColumnToContents(2);
}

// ---- state

int RecContentsPanel::area() const { return m_tabs->currentIndex(); }

int RecContentsPanel::splitterPercent() const { return m_percent; }

void RecContentsPanel::restore(int area, int splitterPercent) {
    m_tabs->setCurrentIndex(area >= Works && area <= Artists ? area : Works);
    m_percent = qBound(10, splitterPercent, 90);
    placeSplitter();
}

void RecContentsPanel::bringToFront(int area) {
    m_areas->setCurrentIndex(area);
    m_performers->setVisible(area != Artists);
    emit changed();
}

// Whatever the width, the performers are in sight.
void RecContentsPanel::fitWorks() {
    QTreeView* view = m_lists[Works].view;
    const int whole = view->viewport()->width();
    FormHelpers::fitColumns(view);
    view->setColumnWidth(1, qMin(view->columnWidth(1), whole * 20 / 100));
    view->setColumnWidth(2, qMin(view->columnWidth(2), whole * 34 / 100));
}

bool RecContentsPanel::eventFilter(QObject* watched, QEvent* event) {
    const auto* resize = event->type() == QEvent::Resize ? static_cast<QResizeEvent*>(event) : nullptr;
    if (resize && resize->size().width() != resize->oldSize().width())
        fitWorks();
    return CardPanel::eventFilter(watched, event);
}

void RecContentsPanel::resizeEvent(QResizeEvent* event) {
    CardPanel::resizeEvent(event);
    placeSplitter();
}

void RecContentsPanel::placeSplitter() {
    const int whole = width() - m_splitter->handleWidth();
    m_splitter->setSizes({whole * m_percent / 100, whole - whole * m_percent / 100});
}

// ---- artists

QString RecContentsPanel::selectedArtist() const {
    const List& list = m_lists[Artists];
    const std::vector<qint64> ids = FormHelpers::selectedIds(list.view, list.model);
    if (area() != Artists || ids.empty())
        return {};
    // A composer and a performer may have the same id: the row tells which of them it is.
    const QModelIndex row = list.view->selectionModel()->selectedRows().front();
    return list.model->iconKey(row) == u'c' ? QStringLiteral("Cps") : QStringLiteral("Pfr");
}

void RecContentsPanel::GoToArtistCard() {
    const List& list = m_lists[Artists];
    if (const QString code = selectedArtist(); !code.isEmpty())
        m_context.cards.openCard(code, FormHelpers::selectedIds(list.view, list.model).front());
}

} // namespace tessaranth
