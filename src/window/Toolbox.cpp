// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/Toolbox.h"

#include "items/CMIT.h"
#include "store/Session.h"
#include "widgets/FormHelpers.h"
#include "widgets/IconStore.h"
#include "widgets/ItemColours.h"
#include "widgets/ItemListModel.h"
#include "widgets/Reading.h"
#include "window/BrowseTree.h"

#include <QAction>
#include <QComboBox>
#include <QEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTabBar>
#include <QToolBar>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace tessaranth {

namespace {
/// Between two keys of somebody who types; the list is read when the typing pauses.
constexpr int typingPauseMs = 120;
const QString columnsKey = QStringLiteral("Toolbox.");

/// The heading of a pane in the colour that goes with the desktop's.
QLabel* paneHeading(const QString& text, DesktopScheme scheme) {
    QColor back(0x2f, 0x5f, 0xa3);
    if (scheme == DesktopScheme::Metallic)
        back = QColor(0x55, 0x5c, 0x68);
    else if (scheme == DesktopScheme::HomeStead)
        back = QColor(0x58, 0x6b, 0x33);
    auto* heading = new QLabel(text);
    QFont font = heading->font();
    font.setBold(true);
    heading->setFont(font);
    heading->setMargin(4);
    heading->setAutoFillBackground(true);
    QPalette palette = heading->palette();
    palette.setColor(QPalette::Window, back);
    palette.setColor(QPalette::WindowText, Qt::white);
    heading->setPalette(palette);
    return heading;
}
} // namespace

Toolbox::Toolbox(const FormContext& context, QWidget* parent) : QWidget(parent), m_context(context) {
    m_model = new ItemListModel(context.icons, this);
    buildUi();
    m_typing.setSingleShot(true);
    m_typing.setInterval(typingPauseMs);
    connect(&m_typing, &QTimer::timeout, this, &Toolbox::PopolaLV2);
    connect(m_filter, &QLineEdit::textChanged, &m_typing, qOverload<>(&QTimer::start));
    connect(m_filter, &QLineEdit::returnPressed, this, &Toolbox::openFirst);
    FormHelpers::moveInList(m_filter, m_view);
    connect(m_kinds, &QComboBox::currentIndexChanged, this, [this] {
        const QSignalBlocker blocker(m_filter);
        m_filter->clear();
        restoreColumns();
        PopolaLV2();
        emit kindChanged();
    });
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &Toolbox::selectionChanged);
    connect(m_view, &QTreeView::activated, this,
            [this](const QModelIndex& index) { emit activated(m_model->id(index)); });
    connect(m_view->header(), &QHeaderView::sortIndicatorChanged, this, &Toolbox::noteColumns);
    connect(m_view->header(), &QHeaderView::sectionResized, this, &Toolbox::noteColumns);
    restoreColumns();
    PopolaLV2();
}

void Toolbox::buildUi() {
    setObjectName(QStringLiteral("toolbox"));
    auto* layout = new QVBoxLayout(buildModes());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);

    m_kinds = new QComboBox;
    m_kinds->setObjectName(QStringLiteral("cboKind"));
    m_kinds->setAccessibleName(tr("Kind of card"));
    for (const ItemKind& kind : itemKinds())
        if (kind.isCard())
            m_kinds->addItem(m_context.icons.icon(kind.iconKey), kind.listCaption, kind.number);
    layout->addWidget(m_kinds);

    m_bar = new QToolBar;
    m_bar->setIconSize(QSize(16, 16)); // all of it in sight at the usual width
    m_bar->setAccessibleName(tr("Commands of the list"));
    layout->addWidget(m_bar);

    m_filter = FormHelpers::lineEdit(this, QStringLiteral("txtFilter"), tr("Apply filter"), 250);
    m_filter->setPlaceholderText(tr("Type the beginning of a name"));
    m_filter->setClearButtonEnabled(true);
    layout->addWidget(m_filter);

    m_view = FormHelpers::itemView(this, QStringLiteral("lvItems"), m_model, true);
    m_view->setAccessibleName(tr("Cards"));
    m_view->setContextMenuPolicy(Qt::ActionsContextMenu);
    layout->addWidget(m_view, 1);
    m_empty = new QLabel(m_view->viewport());
    m_empty->setObjectName(QStringLiteral("emptyState"));
    m_empty->setAlignment(Qt::AlignCenter);
    m_empty->setWordWrap(true);
    m_empty->setTextFormat(Qt::PlainText);
    m_empty->setMargin(16);
    m_view->viewport()->installEventFilter(this);

    m_count = new QLabel;
    m_count->setObjectName(QStringLiteral("count"));
    layout->addWidget(m_count);
}

// Answers with the page of the first mode.
QWidget* Toolbox::buildModes() {
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(8, 8, 8, 6);
    outer->setSpacing(6);
    m_modes = new QTabBar;
    m_modes->setObjectName(QStringLiteral("modes"));
    m_modes->setAccessibleName(tr("What the toolbox shows"));
    m_modes->setDrawBase(false);
    m_modes->setExpanding(true);
    QLabel* heading = paneHeading(QStringLiteral("Manage collection"), m_context.session.desktopScheme());
    outer->addWidget(heading);
    outer->addWidget(m_modes);
    auto* pages = new QStackedWidget;
    outer->addWidget(pages, 1);
    auto* manage = new QWidget;
    m_browse = new BrowseTree(m_context);
    pages->addWidget(manage);
    pages->addWidget(m_browse);
    m_modes->addTab(m_context.icons.icon(QStringLiteral("Manage")), tr("Manage"));
    m_modes->setTabToolTip(0, QStringLiteral("Manage collection"));
    m_modes->addTab(m_context.icons.icon(QStringLiteral("TvClass")), tr("Browse"));
    m_modes->setTabToolTip(1, QStringLiteral("Browse classifications"));
    connect(m_modes, &QTabBar::currentChanged, pages, &QStackedWidget::setCurrentIndex);
    connect(m_modes, &QTabBar::currentChanged, heading,
            [this, heading](int mode) { heading->setText(m_modes->tabToolTip(mode)); });
    return manage;
}

bool Toolbox::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize) {
        m_empty->setGeometry(m_view->viewport()->rect());
        fitColumns();
    }
    return QWidget::eventFilter(watched, event);
}

void Toolbox::setActions(const QList<QAction*>& onBar, const QList<QAction*>& inMenu) {
    m_bar->addActions(onBar);
    m_view->addActions(inMenu);
    // The filter's button has to say that one is on.
    for (QAction* action : onBar)
        if (action->objectName() == u"mnuToolboxFilter")
            qobject_cast<QToolButton*>(m_bar->widgetForAction(action))
                ->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
}

bool Toolbox::isFiltered() const { return !m_filter->text().trimmed().isEmpty(); }

void Toolbox::focusFilter() {
    m_filter->setFocus(Qt::ShortcutFocusReason);
    m_filter->selectAll();
}

void Toolbox::clearFilter() {
    m_filter->clear();
    PopolaLV2();
}

int Toolbox::kind() const { return m_kinds->currentData().toInt(); }

void Toolbox::showKind(int kind) { m_kinds->setCurrentIndex(m_kinds->findData(kind)); }

void Toolbox::showBrowse(bool browse) { m_modes->setCurrentIndex(browse ? 1 : 0); }

void Toolbox::refresh() {
    m_browse->refresh();
    const std::vector<qint64> selected = selectedIds();
    const int scrolled = m_view->verticalScrollBar()->value();
    PopolaLV2();
    m_view->verticalScrollBar()->setValue(scrolled);
    if (!selected.empty())
        select(selected.front());
}

std::vector<qint64> Toolbox::selectedIds() const { return FormHelpers::selectedIds(m_view, m_model); }

QStringList Toolbox::selectedNames() const {
    QStringList names;
    QModelIndexList rows = m_view->selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    for (const QModelIndex& row : rows)
        names.push_back(row.data().toString());
    return names;
}

void Toolbox::select(qint64 id) {
    const QModelIndex index = m_model->indexOf(id);
    if (index.isValid()) {
        m_view->setCurrentIndex(index);
        m_view->scrollTo(index);
    }
}

// Enter means what was typed, even while the list still waits for the next letter.
void Toolbox::openFirst() {
    if (m_typing.isActive())
        PopolaLV2();
    if (selectedIds().empty() && isFiltered())
        m_view->setCurrentIndex(m_model->index(0, 0));
    if (const QModelIndex current = m_view->currentIndex(); current.isValid() && !selectedIds().empty())
        emit activated(m_model->id(current));
}

void Toolbox::PopolaLV2() {
    m_typing.stop();
    const ItemKind* chosen = itemKind(kind());
    ItemList list;
    readInto(m_view, m_context.session,
             [&] { CMIT(m_context.session).ElencoInLv(chosen->number, list, m_filter->text().trimmed()); });
    m_model->setList(std::move(list));
    const QHeaderView* header = m_view->header();
    if (header->sortIndicatorSection() >= 0 && header->sortIndicatorSection() < m_model->columnCount())
        m_model->sort(header->sortIndicatorSection(), header->sortIndicatorOrder());
    paintInItemColours(m_view, m_context.session.configuration(), chosen->colourPrefix);
    fitColumns();
    showState();
    emit selectionChanged();
}

// The name takes what room there is; what stands beside it no more than it needs, and at most two fifths,
// unless the user has made it as wide as it is.
void Toolbox::fitColumns() {
    QHeaderView* header = m_view->header();
    const QScopedValueRollback fitting(m_isFitting, true);
    header->setStretchLastSection(false);
    if (m_model->columnCount() == 0)
        return;
    header->setSectionResizeMode(0, QHeaderView::Stretch);
    if (m_model->columnCount() > 1) {
        constexpr int leftForNames = 60;
        header->setSectionResizeMode(1, QHeaderView::Interactive);
        m_view->resizeColumnToContents(1);
        const int chosen = m_columns[kind()].width;
        m_view->setColumnWidth(1, chosen > 0
                                      ? qMin(chosen, qMax(leftForNames, m_view->width() - leftForNames))
                                      : qMin(m_view->columnWidth(1), m_view->width() * 2 / 5));
    }
}

void Toolbox::noteColumns() {
    if (m_isFitting)
        return;
    const QHeaderView* header = m_view->header();
    Columns& columns = m_columns[kind()];
    columns.sorted = header->sortIndicatorSection();
    columns.order = header->sortIndicatorOrder();
    if (header->count() > 1 && header->sectionSize(1) != columns.width && header->isVisible() &&
        QGuiApplication::mouseButtons() != Qt::NoButton)
        columns.width = header->sectionSize(1);
}

void Toolbox::restoreColumns() {
    const QString code = itemKind(kind())->code;
    if (!m_columns.contains(kind())) {
        const QStringList parts =
            m_context.session.configuration().read(QStringLiteral("Forms"), columnsKey + code).split(u',');
        Columns stored;
        if (parts.size() == 3)
            stored = {qBound(-1, parts[0].toInt(), 9), parts[1].toInt(), parts[2].toInt()};
        m_columns.insert(kind(), stored);
    }
    const Columns columns = m_columns[kind()];
    const QScopedValueRollback fitting(m_isFitting, true);
    m_view->header()->setSortIndicator(
        columns.sorted, columns.order == Qt::DescendingOrder ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void Toolbox::saveColumns() {
    for (auto one = m_columns.cbegin(); one != m_columns.cend(); ++one)
        m_context.session.configuration().write(
            QStringLiteral("Forms"), columnsKey + itemKind(one.key())->code,
            QStringLiteral("%1,%2,%3").arg(one->sorted).arg(one->order).arg(one->width));
}

void Toolbox::showState() {
    const ItemKind* chosen = itemKind(kind());
    const QString typed = m_filter->text().trimmed();
    m_count->setText(chosen->countCaption + QString::number(m_model->rowCount()));
    m_empty->setVisible(m_model->rowCount() == 0);
    m_empty->setPalette(m_view->palette());
    const QString caption = chosen->listCaption.toLower();
    m_empty->setText(
        typed.isEmpty()
            ? tr("There are no %1 in this catalog yet.\n\nAdd the first one with \"New\", or see how a "
                 "filled catalog looks: tessaranth-cli sample FILE writes one.")
                  .arg(caption)
            : tr("None of the %1 begins with \"%2\".\n\nClear the filter to see all of them.")
                  .arg(caption, typed));
}

} // namespace tessaranth
