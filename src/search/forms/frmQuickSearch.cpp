// SPDX-License-Identifier: GPL-3.0-or-later
#include "search/forms/frmQuickSearch.h"

#include "items/OpenCards.h"
#include "widgets/FormHelpers.h"
#include "widgets/IconStore.h"
#include "widgets/WindowProgress.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace tessaranth {

namespace {

enum Role { CodeRole = Qt::UserRole, IdRole };

bool isHit(const QTreeWidgetItem* item) { return item && item->parent(); }

} // namespace

frmQuickSearch::frmQuickSearch(const FormContext& context, OpenCards& cards, QWidget* parent)
    : QDialog(parent), m_context(context), m_cards(cards), m_search(context.session) {
    setObjectName(QStringLiteral("frmQuickSearch"));
    setWindowTitle(tr("Quick search in database"));
    buildUi();
    // A pause so short that it is not felt, yet a fast typist's letters are looked up together.
    m_typing.setSingleShot(true);
    m_typing.setInterval(40);
    connect(&m_typing, &QTimer::timeout, this, &frmQuickSearch::find);
    find();
}

void frmQuickSearch::buildUi() {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(
        FormHelpers::head(m_context.icons, QStringLiteral("Quick"), windowTitle(),
                          tr("Type the beginning of any words: a name, a title, a catalogue number, "
                             "a barcode. Enter opens the card.")));
    m_text = FormHelpers::lineEdit(this, QStringLiteral("txtQuick"), tr("Words to find"), 250);
    m_text->setPlaceholderText(tr("for example moz requ, or bwv 1007"));
    m_text->setClearButtonEnabled(true);
    m_text->installEventFilter(this);
    connect(m_text, &QLineEdit::textChanged, this, [this] { m_typing.start(); });
    layout->addWidget(m_text);

    m_hits = new QTreeWidget;
    m_hits->setObjectName(QStringLiteral("lstHits"));
    m_hits->setAccessibleName(tr("What was found"));
    m_hits->setColumnCount(2);
    m_hits->setHeaderHidden(true);
    m_hits->setUniformRowHeights(true);
    m_hits->setRootIsDecorated(false);
    m_hits->setAllColumnsShowFocus(true);
    m_hits->header()->setStretchLastSection(true);
    connect(m_hits, &QTreeWidget::itemActivated, this, &frmQuickSearch::openCard);
    layout->addWidget(m_hits, 1);

    m_state = new QLabel;
    m_state->setObjectName(QStringLiteral("state"));
    m_state->setTextFormat(Qt::PlainText);
    layout->addWidget(m_state);
    resize(760, 560);
    m_text->setFocus();
}

bool frmQuickSearch::prepare() {
    WindowProgress progress(this);
    return m_search.prepare(progress);
}

void frmQuickSearch::find() {
    const QString text = m_text->text();
    m_hits->clear();
    auto found = m_search.find(text);
    if (!found && m_search.wantsIndexAnew()) {
        WindowProgress progress(this);
        if (m_search.makeIndexAnew(progress))
            found = m_search.find(text);
    }
    for (const QuickSearch::Group& group : found.value_or(std::vector<QuickSearch::Group>()))
        addGroup(group);
    if (m_hits->topLevelItemCount() > 0)
        m_hits->setCurrentItem(m_hits->topLevelItem(0)->child(0));
    m_hits->setColumnWidth(0, m_hits->viewport()->width() * 3 / 5);
    m_state->setText(!found                     ? tr("The word index is damaged: nothing was searched.")
                     : text.trimmed().isEmpty() ? tr("Accents and capital letters do not matter.")
                     : m_hits->topLevelItemCount() == 0
                         ? tr("Nothing in the catalog has words that begin so.")
                         : QString());
}

void frmQuickSearch::addGroup(const QuickSearch::Group& group) {
    auto* head = new QTreeWidgetItem(m_hits);
    head->setText(0, group.isCut ? tr("%1 (the first %2)").arg(group.caption).arg(group.hits.size())
                                 : tr("%1 (%2)").arg(group.caption).arg(group.hits.size()));
    head->setFlags(Qt::ItemIsEnabled);
    QFont bold = font();
    bold.setBold(true);
    head->setFont(0, bold);
    for (const QuickSearch::Hit& hit : group.hits) {
        auto* row = new QTreeWidgetItem(head, {hit.text, hit.detail});
        row->setIcon(0, m_context.icons.icon(group.iconKey));
        row->setToolTip(0, hit.text.toHtmlEscaped());
        row->setForeground(1, palette().color(QPalette::PlaceholderText));
        row->setData(0, CodeRole, hit.code);
        row->setData(0, IdRole, hit.id);
    }
    head->setExpanded(true);
    m_hits->setFirstColumnSpanned(m_hits->topLevelItemCount() - 1, {}, true);
}

// The headings of the groups are passed over.
void frmQuickSearch::step(int direction) {
    const QTreeWidgetItem* item = m_hits->currentItem();
    QTreeWidgetItem* next = m_hits->currentItem();
    do {
        next = next ? (direction > 0 ? m_hits->itemBelow(next) : m_hits->itemAbove(next)) : nullptr;
    } while (next && !isHit(next));
    if (next && next != item) {
        m_hits->setCurrentItem(next);
        m_hits->scrollToItem(next);
    }
}

bool frmQuickSearch::eventFilter(QObject* watched, QEvent* event) {
    if (watched != m_text || event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Down:
        step(1);
        return true;
    case Qt::Key_Up:
        step(-1);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (m_typing.isActive()) {
            m_typing.stop();
            find();
        }
        openCard(m_hits->currentItem());
        return true;
    default:
        return false;
    }
}

void frmQuickSearch::openCard(const QTreeWidgetItem* item) {
    if (!isHit(item))
        return;
    const QString code = item->data(0, CodeRole).toString();
    const qint64 id = item->data(0, IdRole).toLongLong();
    accept();
    m_cards.openCard(code, id);
}

} // namespace tessaranth
