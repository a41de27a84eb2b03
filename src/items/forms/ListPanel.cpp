// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/forms/ListPanel.h"

#include "store/Session.h"
#include "widgets/FormHelpers.h"
#include "widgets/ItemListModel.h"
#include "widgets/Reading.h"

#include <QEvent>
#include <QHeaderView>
#include <QLabel>
#include <QSet>
#include <QTreeView>
#include <QVBoxLayout>

namespace tessaranth {

namespace {
constexpr int emptyMargin = 4;
}

ListPanel::ListPanel(const CardContext& context, const Words& words, QWidget* parent)
    : CardPanel(context, parent), m_words(words) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    m_model = new ItemListModel(context.icons, this);
    m_view = FormHelpers::itemView(this, words.name, m_model, true);
    m_view->setAccessibleName(words.spoken);
    m_view->setFrameShape(QFrame::NoFrame);
    m_actions.serve(m_view);
    layout->addWidget(m_view);
    // On the list itself, so that its menu, its keys and files dropped on it work while it is empty.
    m_empty = new QLabel(words.empty);
    m_empty->setObjectName(QStringLiteral("empty"));
    m_empty->setAlignment(Qt::AlignCenter);
    m_empty->setWordWrap(true);
    m_empty->setAttribute(Qt::WA_TransparentForMouseEvents);
    auto* above = new QVBoxLayout(m_view->viewport());
    above->setContentsMargins(emptyMargin, 0, emptyMargin, 0);
    above->addWidget(m_empty);
    m_view->viewport()->installEventFilter(this);
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this, &ListPanel::enable);
    connect(m_view->header(), &QHeaderView::sectionResized, this, &ListPanel::keepWidths);
}

void ListPanel::addEntry(const QString& key, const QString& caption, const QString& shortcut,
                         std::function<void()> what, std::function<bool()> when) {
    m_actions.add({key, caption, {}, {}, shortcut, std::move(what), std::move(when)});
}

bool ListPanel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize)
        fitEmptyText();
    return CardPanel::eventFilter(watched, event);
}

// A card between two tiles may leave room for one line, which says what is the matter, or for none.
void ListPanel::fitEmptyText() {
    const QSize room = m_view->viewport()->size();
    for (const QString& text : {m_words.empty, m_words.empty.section(u'\n', 0, 0), QString()}) {
        m_empty->setText(text);
        if (m_empty->heightForWidth(room.width() - 2 * emptyMargin) <= room.height())
            break;
    }
}

void ListPanel::setDefaultCommand(const QString& key) {
    connect(m_view, &QTreeView::activated, this, [this, key] { run(key); });
}

void ListPanel::load() {
    if (!readInto(this, m_context.session, [this] { reload(); }))
        m_empty->hide(); // a list that could not be read is not empty
    enable();
}

void ListPanel::reload() {
    ItemList list;
    readList(list);
    const std::vector<qint64> before = selected();
    {
        const QSignalBlocker blocker(m_view->selectionModel());
        m_model->setList(std::move(list));
        if (const QHeaderView* header = m_view->header(); header->sortIndicatorSection() >= 0)
            m_model->sort(header->sortIndicatorSection(), header->sortIndicatorOrder());
    }
    restoreWidths();
    select(before);
    m_empty->setVisible(m_model->rowCount() == 0);
}

// What was selected may be thousands of rows.
void ListPanel::select(const std::vector<qint64>& ids) {
    const QSet<qint64> wanted(ids.begin(), ids.end());
    QItemSelection rows;
    for (int row = 0; row < m_model->rowCount() && !wanted.isEmpty(); ++row)
        if (const QModelIndex index = m_model->index(row, 0); wanted.contains(m_model->id(index)))
            rows.select(index, index.siblingAtColumn(m_model->columnCount() - 1));
    if (rows.isEmpty())
        return;
    m_view->selectionModel()->setCurrentIndex(rows.front().topLeft(), QItemSelectionModel::NoUpdate);
    m_view->selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect);
}

QString ListPanel::arrangementKey() const { return m_words.name + m_context.code; }

// A list that the user has not arranged yet is as wide as its texts.
void ListPanel::restoreWidths() {
    const QList<int> widths = m_context.session.arrangements().read(Arrangements::forms, arrangementKey());
    m_fitting = true;
    if (widths.size() == m_model->columnCount())
        for (int column = 0; column < widths.size(); ++column)
            m_view->setColumnWidth(column, widths[column]);
    else
        FormHelpers::fitColumns(m_view);
    m_fitting = false;
}

// Views stretch their last column by themselves whenever they are resized; that is nobody's wish.
void ListPanel::keepWidths(int column) {
    if (m_fitting || column + 1 == m_model->columnCount())
        return;
    QList<int> widths;
    for (int each = 0; each < m_model->columnCount(); ++each)
        widths.push_back(m_view->columnWidth(each));
    m_context.session.arrangements().keep(Arrangements::forms, arrangementKey(), widths);
}

QString ListPanel::heading() const {
    const QString count = isUnreadable(this) ? QStringLiteral("?") : QString::number(m_model->rowCount());
    return m_words.heading + QStringLiteral(" (") + count + u')';
}

std::vector<qint64> ListPanel::selected() const { return FormHelpers::selectedIds(m_view, m_model); }

qint64 ListPanel::theOne() const {
    const std::vector<qint64> ids = selected();
    return ids.size() == 1 ? ids.front() : 0;
}

void ListPanel::enable() {
    m_actions.enable();
    emit changed();
}

} // namespace tessaranth
