// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/forms/frmOrder.h"

#include "widgets/FormHelpers.h"
#include "widgets/IconStore.h"

#include <QListWidget>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace tessaranth {

namespace {

constexpr int idRole = Qt::UserRole;

} // namespace

frmOrder::frmOrder(const IconStore& icons, const QString& title, const QString& heading,
                   const QString& iconKey, const Entries& entries, QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("frmOrder"));
    setWindowTitle(title);
    buildUi(icons, heading, iconKey);
    for (const auto& [id, name] : entries) {
        auto* item =
            new QListWidgetItem(icons.icon(iconKey), name.isEmpty() ? tr("(no title)") : name, m_list);
        item->setData(idRole, id);
        // Dropping onto a row would replace it; between two rows is what moving means.
        item->setFlags(item->flags() & ~Qt::ItemIsDropEnabled);
    }
    m_list->setCurrentRow(0);
}

void frmOrder::buildUi(const IconStore& icons, const QString& heading, const QString& iconKey) {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(
        FormHelpers::head(icons, iconKey, heading,
                          tr("Drag the titles, or move the selected ones with Ctrl and the arrow keys.")));
    m_list = new QListWidget;
    m_list->setObjectName(QStringLiteral("lstOrder"));
    m_list->setAccessibleName(tr("Titles in their order"));
    m_list->setDragDropMode(QAbstractItemView::InternalMove);
    m_list->setDefaultDropAction(Qt::MoveAction);
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    connect(m_list, &QListWidget::itemSelectionChanged, this, &frmOrder::enableButtons);
    connect(m_list->model(), &QAbstractItemModel::rowsMoved, this, &frmOrder::enableButtons);

    struct Row {
        Move where;
        const char* name;
        QString caption;
        QKeySequence keys;
    };
    const Row rows[] = {{Move::First, "cmdFirst", tr("&First"), Qt::CTRL | Qt::Key_Home},
                        {Move::Up, "cmdUp", tr("Move &up"), Qt::CTRL | Qt::Key_Up},
                        {Move::Down, "cmdDown", tr("Move &down"), Qt::CTRL | Qt::Key_Down},
                        {Move::Last, "cmdLast", tr("&Last"), Qt::CTRL | Qt::Key_End}};
    auto* buttons = new QVBoxLayout;
    for (const Row& row : rows) {
        auto* button = new QPushButton(row.caption);
        button->setObjectName(QLatin1String(row.name));
        button->setAutoDefault(false);
        button->setToolTip(row.keys.toString(QKeySequence::NativeText));
        connect(button, &QPushButton::clicked, this, [this, where = row.where] { move(where); });
        connect(new QShortcut(row.keys, this), &QShortcut::activated, button, &QPushButton::click);
        buttons->addWidget(button);
        m_buttons.emplace_back(button, row.where);
    }
    buttons->addStretch();
    auto* middle = new QHBoxLayout;
    middle->addWidget(m_list, 1);
    middle->addLayout(buttons);
    layout->addLayout(middle, 1);
    QPushButton* done = FormHelpers::buttonRow(this, layout, tr("&OK"), QStringLiteral("cmdOk"));
    connect(done, &QPushButton::clicked, this, &QDialog::accept);
    resize(460, 420);
    m_list->setFocus();
}

// The selected rows keep their order among themselves; each stops where the one before it stopped.
void frmOrder::move(Move where) {
    std::vector<int> rows;
    for (const QModelIndex& index : m_list->selectionModel()->selectedRows())
        rows.push_back(index.row());
    std::sort(rows.begin(), rows.end());
    const bool upwards = where == Move::First || where == Move::Up;
    if (!upwards)
        std::reverse(rows.begin(), rows.end());
    const int step = upwards ? -1 : 1;
    int limit = upwards ? 0 : m_list->count() - 1;
    std::vector<QListWidgetItem*> moved;
    for (const int row : rows) {
        const bool wholeWay = where == Move::First || where == Move::Last;
        const int target = wholeWay ? limit : upwards ? qMax(limit, row - 1) : qMin(limit, row + 1);
        QListWidgetItem* item = m_list->takeItem(row);
        m_list->insertItem(target, item);
        moved.push_back(item);
        limit = target - step;
    }
    m_list->clearSelection();
    for (QListWidgetItem* item : moved)
        item->setSelected(true);
    if (!moved.empty()) {
        m_list->setCurrentItem(moved.front(), QItemSelectionModel::NoUpdate);
        m_list->scrollToItem(moved.front());
    }
}

void frmOrder::enableButtons() {
    const QModelIndexList rows = m_list->selectionModel()->selectedRows();
    const int selected = int(rows.size());
    int below = 0, above = 0; // selected rows that could still go up, and down
    for (const QModelIndex& row : rows) {
        below += row.row() >= selected;
        above += row.row() < m_list->count() - selected;
    }
    for (const auto& [button, where] : m_buttons)
        button->setEnabled((where == Move::First || where == Move::Up ? below : above) > 0);
}

std::vector<qint64> frmOrder::order() const {
    std::vector<qint64> ids;
    ids.reserve(size_t(m_list->count()));
    for (int row = 0; row < m_list->count(); ++row)
        ids.push_back(m_list->item(row)->data(idRole).toLongLong());
    return ids;
}

} // namespace tessaranth
