// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/forms/CardListPanel.h"

#include "store/Session.h"
#include "ui/FormHelpers.h"
#include "ui/IconStore.h"
#include "ui/ItemListModel.h"

#include <QAction>
#include <QDataStream>
#include <QHeaderView>
#include <QSet>
#include <QTreeView>
#include <QVBoxLayout>

namespace tessaranth {

CardListPanel::CardListPanel(const CardContext& context, const QString& objectName,
                             const QString& accessibleName, QWidget* parent)
    : CardPanel(context, parent) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    m_model = new ItemListModel(context.icons, this);
    m_view = FormHelpers::itemView(this, objectName, m_model, true);
    m_view->setAccessibleName(accessibleName);
    m_view->setContextMenuPolicy(Qt::ActionsContextMenu);
    m_view->setFrameShape(QFrame::NoFrame);
    layout->addWidget(m_view);
    connect(m_view, &QTreeView::activated, this,
            [this](const QModelIndex& index) { open(m_model->id(index)); });
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this, &CardPanel::changed);
    connect(m_view->header(), &QHeaderView::sectionResized, this, &CardListPanel::keepWidths);
}

void CardListPanel::addMenuCommand(const QString& key, const QString& caption, const QString& iconKey,
                                   std::function<void()> what, std::function<bool()> when) {
    addCommand(key, std::move(what), std::move(when));
    auto* action = new QAction(m_context.icons.icon(iconKey), caption, m_view);
    connect(action, &QAction::triggered, this, [this, key] { run(key); });
    connect(this, &CardPanel::changed, action, [this, action, key] { action->setEnabled(canRun(key)); });
    m_view->addAction(action);
}

void CardListPanel::load() {
    ItemList list;
    if (!read(list))
        return;
    const std::vector<qint64> before = selected();
    m_model->setList(std::move(list));
    const QHeaderView* header = m_view->header();
    if (header->sortIndicatorSection() >= 0)
        m_model->sort(header->sortIndicatorSection(), header->sortIndicatorOrder());
    restoreWidths();
    select(before);
    emit changed();
}

QString CardListPanel::heading() const {
    const QString caption = m_model->headerData(0, Qt::Horizontal).toString();
    return caption.isEmpty() ? caption : QStringLiteral("%1 (%2)").arg(caption).arg(m_model->rowCount());
}

std::vector<qint64> CardListPanel::selected() const { return FormHelpers::selectedIds(m_view, m_model); }

void CardListPanel::select(const std::vector<qint64>& ids) {
    const QSet<qint64> wanted(ids.begin(), ids.end());
    QItemSelection rows;
    for (int row = 0; row < m_model->rowCount() && !wanted.isEmpty(); ++row)
        if (const QModelIndex index = m_model->index(row, 0); wanted.contains(m_model->id(index)))
            rows.select(index, index);
    m_view->selectionModel()->select(rows, QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

QString CardListPanel::widthsKey() const { return m_view->objectName() + m_context.code; }

// What the user did not arrange yet follows the texts.
void CardListPanel::restoreWidths() {
    m_fitting = true;
    QDataStream stored(m_context.session.arrangement(widthsKey()));
    QList<int> widths;
    stored >> widths;
    if (widths.size() == m_model->columnCount())
        for (int column = 0; column < widths.size(); ++column)
            m_view->setColumnWidth(column, widths[column]);
    else
        FormHelpers::fitColumns(m_view);
    m_fitting = false;
}

void CardListPanel::keepWidths() {
    if (m_fitting)
        return;
    QList<int> widths;
    for (int column = 0; column < m_model->columnCount(); ++column)
        widths.push_back(m_view->columnWidth(column));
    QByteArray state;
    QDataStream stream(&state, QIODevice::WriteOnly);
    stream << widths;
    m_context.session.setArrangement(widthsKey(), state);
}

} // namespace tessaranth
