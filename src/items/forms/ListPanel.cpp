// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/forms/ListPanel.h"

#include "ui/FormHelpers.h"
#include "ui/ItemListModel.h"

#include <QAction>
#include <QLabel>
#include <QTreeView>
#include <QVBoxLayout>

namespace tessaranth {

ListPanel::ListPanel(const CardContext& context, const Words& words, QWidget* parent)
    : CardPanel(context, parent), m_words(words) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    m_model = new ItemListModel(context.icons, this);
    m_view = FormHelpers::itemView(this, words.name, m_model, true);
    m_view->setAccessibleName(words.spoken);
    m_view->setContextMenuPolicy(Qt::ActionsContextMenu);
    layout->addWidget(m_view);
    // On the list itself, so that its menu, its keys and files dropped on it work while it is empty.
    m_empty = new QLabel(words.empty);
    m_empty->setObjectName(QStringLiteral("empty"));
    m_empty->setAlignment(Qt::AlignCenter);
    m_empty->setWordWrap(true);
    m_empty->setAttribute(Qt::WA_TransparentForMouseEvents);
    auto* above = new QVBoxLayout(m_view->viewport());
    above->addWidget(m_empty);
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this, &ListPanel::enable);
}

void ListPanel::addEntry(const QString& key, const QString& caption, const QString& shortcut,
                         std::function<void()> what, std::function<bool()> when) {
    addCommand(key, std::move(what), std::move(when));
    auto* action = new QAction(caption, m_view);
    action->setShortcut(QKeySequence(shortcut));
    action->setShortcutContext(Qt::WidgetShortcut);
    connect(action, &QAction::triggered, this, [this, key] { run(key); });
    m_view->addAction(action);
    m_entries.emplace_back(key, action);
}

void ListPanel::setDefaultCommand(const QString& key) {
    connect(m_view, &QTreeView::activated, this, [this, key] { run(key); });
}

void ListPanel::load() {
    ItemList list;
    if (!readList(list))
        return;
    const std::vector<qint64> before = selected();
    const bool isFirst = m_model->columnCount() == 0;
    {
        const QSignalBlocker blocker(m_view->selectionModel());
        m_model->setList(std::move(list));
    }
    if (isFirst)
        FormHelpers::fitColumns(m_view);
    QItemSelection again;
    for (const qint64 id : before) {
        const QModelIndex row = m_model->indexOf(id);
        if (row.isValid())
            again.select(row, row.siblingAtColumn(m_model->columnCount() - 1));
    }
    if (!again.isEmpty()) {
        m_view->selectionModel()->setCurrentIndex(again.indexes().front(), QItemSelectionModel::NoUpdate);
        m_view->selectionModel()->select(again, QItemSelectionModel::ClearAndSelect);
    }
    m_empty->setVisible(m_model->rowCount() == 0);
    enable();
}

QString ListPanel::heading() const {
    return m_words.heading + QStringLiteral(" (") + QString::number(m_model->rowCount()) + u')';
}

std::vector<qint64> ListPanel::selected() const { return FormHelpers::selectedIds(m_view, m_model); }

qint64 ListPanel::theOne() const {
    const std::vector<qint64> ids = selected();
    return ids.size() == 1 ? ids.front() : 0;
}

void ListPanel::enable() {
    for (const auto& [key, action] : m_entries)
        action->setEnabled(canRun(key));
    emit changed();
}

} // namespace tessaranth
