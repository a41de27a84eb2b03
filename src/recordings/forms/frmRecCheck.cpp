// SPDX-License-Identifier: GPL-3.0-or-later
#include "recordings/forms/frmRecCheck.h"

#include "items/OpenCards.h"
#include "platform/Progress.h"
#include "recordings/RecordingLists.h"
#include "store/Session.h"
#include "widgets/FormHelpers.h"
#include "widgets/IconStore.h"
#include "widgets/ItemListModel.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QShowEvent>
#include <QStyledItemDelegate>
#include <QTimer>
#include <QTreeView>
#include <QVBoxLayout>

namespace tessaranth {

namespace {

const QString section = QStringLiteral("Misc");
const QString widthKey = QStringLiteral("LastCheckWidth");
constexpr int leastWidth = 300;
constexpr int mostWidth = 8000;

/// Shows a part's state as its picture. The word stays in the model, which sorts by it and tells it to
/// screen readers.
class PartDelegate final : public QStyledItemDelegate {
public:
    PartDelegate(const IconStore& icons, QObject* parent)
        : QStyledItemDelegate(parent), m_present(icons.icon(QStringLiteral("CheckGreen"))),
          m_missing(icons.icon(QStringLiteral("CheckRed"))) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const bool isPresent = index.data().toString() == RecordingLists::present;
        const QIcon& icon = isPresent ? m_present : m_missing;
        if (icon.isNull()) {
            QStyledItemDelegate::paint(painter, option, index);
            return;
        }
        QStyleOptionViewItem bare(option);
        const QStyle* style = option.widget->style();
        style->drawPrimitive(QStyle::PE_PanelItemViewItem, &bare, painter, option.widget);
        QRect place(QPoint(), option.decorationSize);
        place.moveCenter(option.rect.center());
        icon.paint(painter, place);
    }

private:
    QIcon m_present;
    QIcon m_missing;
};

/// Writes how far a run is into a status line, and stops it when its window was closed.
class StatusProgress final : public Progress {
public:
    StatusProgress(QLabel* label, const bool& closed) : m_label(label), m_closed(closed) { m_turn.start(); }
    void stage(const QString&) override { percentage(0); }
    void percentage(int value) override {
        if (m_turn.elapsed() < 30)
            return;
        m_label->setText(QStringLiteral("Progress: ") + QString::number(value) + u'%');
        QApplication::processEvents();
        m_turn.restart();
    }
    bool stopped() const override { return m_closed; }

private:
    QLabel* m_label;
    const bool& m_closed;
    QElapsedTimer m_turn;
};

} // namespace

frmRecCheck::frmRecCheck(const FormContext& context, OpenCards& cards, QWidget* parent)
    : QDialog(parent), m_context(context), m_cards(cards) {
    setObjectName(QStringLiteral("frmRecCheck"));
    setWindowTitle(QStringLiteral("Incomplete recordings"));
    buildUi();
}

void frmRecCheck::buildUi() {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(
        FormHelpers::head(m_context.icons, QStringLiteral("MissedRec"),
                          QStringLiteral("Show the status of all the parts of the recordings"),
                          QStringLiteral("List of the status of all the parts of all recordings")));
    m_model = new ItemListModel(m_context.icons, this);
    m_view = FormHelpers::itemView(this, QStringLiteral("lvCheck"), m_model, false);
    m_view->setAccessibleName(windowTitle());
    m_view->setToolTip(QStringLiteral("Double-click to load the Card"));
    auto* parts = new PartDelegate(m_context.icons, this);
    for (int column = 0; column < RecordingLists::partCount; ++column)
        m_view->setItemDelegateForColumn(RecordingLists::firstPartColumn + column, parts);
    connect(m_view, &QTreeView::activated, this, &frmRecCheck::openCard);
    layout->addWidget(m_view, 1);
    m_state = new QLabel;
    m_state->setObjectName(QStringLiteral("lblState"));
    layout->addWidget(m_state);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    const int kept = m_context.session.configuration().read(section, widthKey).toInt();
    const QMargins margins = layout->contentsMargins();
    resize(qBound(leastWidth, kept > 0 ? kept : 940, mostWidth) + margins.left() + margins.right(), 520);
}

// The window is there before its rows are, so that a large catalog shows how far it is.
void frmRecCheck::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    m_closed = false;
    if (!event->spontaneous() && !m_filled)
        QTimer::singleShot(0, this, &frmRecCheck::fill);
}

void frmRecCheck::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && isVisible() && !m_filled)
        QTimer::singleShot(0, this, &frmRecCheck::fill);
    QDialog::changeEvent(event);
}

void frmRecCheck::fill() {
    if (m_filled)
        return;
    m_filled = true;
    ItemList list;
    StatusProgress progress(m_state, m_closed);
    if (!RecordingLists::parts(m_context.session, list, progress)) {
        m_filled = false;
        return;
    }
    const qint64 before = m_model->id(m_view->currentIndex());
    const bool isFirst = m_model->columnCount() == 0;
    m_model->setList(std::move(list));
    if (const QHeaderView* header = m_view->header(); !isFirst && header->sortIndicatorSection() >= 0)
        m_model->sort(header->sortIndicatorSection(), header->sortIndicatorOrder());
    if (isFirst)
        fitColumns();
    const QModelIndex again = m_model->indexOf(before);
    m_view->setCurrentIndex(again.isValid() ? again : m_model->index(0, 0));
    m_state->setText(QStringLiteral("Recordings: ") + QString::number(m_model->rowCount()));
}

// The pictures take what their headings need; the titles get the rest.
void frmRecCheck::fitColumns() {
    FormHelpers::fitColumns(m_view);
    QHeaderView* header = m_view->header();
    header->setStretchLastSection(false);
    for (int column = 1; column < m_model->columnCount(); ++column)
        header->setSectionResizeMode(column, QHeaderView::Interactive);
    header->setSectionResizeMode(0, QHeaderView::Stretch);
}

void frmRecCheck::done(int result) {
    m_closed = true;
    m_context.session.configuration().write(section, widthKey, QString::number(m_view->width()));
    QDialog::done(result);
}

void frmRecCheck::openCard() {
    const qint64 id = m_model->id(m_view->currentIndex());
    if (id != 0)
        m_cards.openCard(QStringLiteral("Rec"), id);
}

} // namespace tessaranth
