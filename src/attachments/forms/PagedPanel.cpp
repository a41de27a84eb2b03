// SPDX-License-Identifier: GPL-3.0-or-later
#include "attachments/forms/PagedPanel.h"

#include "items/forms/frmOrder.h"
#include "widgets/IconStore.h"

#include <QAction>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

namespace tessaranth {

PagedPanel::PagedPanel(const CardContext& context, CardFiles& files, const Words& words, QWidget* parent)
    : CardPanel(context, parent), m_files(files), m_words(words) {
    m_actions.serve(this);
}

QString PagedPanel::heading() const {
    return m_words.heading + QStringLiteral(" (") + QString::number(count()) + u')';
}

// ---- building

void PagedPanel::addEntry(const QString& name, const QString& caption, const QString& shortcut,
                          const QString& iconKey, std::function<void()> what, std::function<bool()> when) {
    m_actions.add(
        {m_words.commands + name, caption, {}, iconKey, shortcut, std::move(what), std::move(when)});
}

void PagedPanel::addTurning() {
    addEntry(
        QStringLiteral("Back"), tr("&Previous"), m_words.backKeys, m_words.backIcon,
        [this] { showPage(m_index - 1); }, [this] { return m_index > 0; });
    addEntry(
        QStringLiteral("Forward"), tr("&Next"), m_words.forwardKeys, m_words.forwardIcon,
        [this] { showPage(m_index + 1); }, [this] { return m_index + 1 < count(); });
}

void PagedPanel::addKeeping() {
    const auto one = [this] { return hasCurrent(); };
    addEntry(
        QStringLiteral("Rename"), tr("&Rename..."), QStringLiteral("F2"), QStringLiteral("Rename"),
        [this] {
            if (m_files.askRename(current()))
                loadChanged(current());
        },
        one);
    addEntry(
        QStringLiteral("Remove"), tr("Re&move..."), QStringLiteral("Del"), QStringLiteral("Remove"),
        [this] {
            if (m_files.askRemove(current()))
                loadChanged(current());
        },
        one);
}

void PagedPanel::addSorting() {
    addEntry(
        QStringLiteral("Sort"), tr("&Sort..."), {}, QStringLiteral("Sort"), [this] { sort(); },
        [this] { return count() > 1; });
}

QAction* PagedPanel::entry(const QString& name) const { return m_actions.action(m_words.commands + name); }

void PagedPanel::buildUi(QWidget* page) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(page, 1);
    auto* row = new QHBoxLayout;
    const auto button = [&](QAction* action, const QString& name, const QString& tip) {
        auto* made = new QToolButton;
        made->setDefaultAction(action);
        made->setObjectName(name);
        made->setAutoRaise(true);
        made->setToolTip(tip);
        made->setAccessibleName(tip);
        row->addWidget(made);
    };
    button(entry(QStringLiteral("Back")), m_words.backIcon, m_words.backTip);
    m_position = new QLabel;
    m_position->setObjectName(QStringLiteral("lblPosition"));
    row->addWidget(m_position);
    button(entry(QStringLiteral("Forward")), m_words.forwardIcon, m_words.forwardTip);
    m_title = new QLabel;
    m_title->setObjectName(QStringLiteral("lblTitle"));
    m_title->setTextFormat(Qt::PlainText);
    m_title->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    row->addWidget(m_title, 1);
    layout->addLayout(row);
}

// ---- showing

void PagedPanel::loadAt(qint64 id) {
    ItemList list;
    if (!m_files.load(list))
        return;
    m_list = std::move(list);
    int row = 0;
    while (row < count() && m_list.id(row) != id)
        ++row;
    m_index = row < count() ? row : qMin(qMax(m_index, 0), count() - 1);
    refresh();
}

void PagedPanel::loadChanged(qint64 id) {
    loadAt(id);
    emit listChanged();
}

void PagedPanel::showPage(int index) {
    if (index < 0 || index >= count())
        return;
    m_index = index;
    refresh();
}

void PagedPanel::showItem(qint64 id) {
    for (int row = 0; row < count(); ++row)
        if (m_list.id(row) == id)
            showPage(row);
}

void PagedPanel::refresh() {
    showCurrent();
    m_title->setText(currentTitle());
    m_title->setToolTip(currentTitle().toHtmlEscaped());
    m_position->setText(hasCurrent()
                            ? QString::number(m_index + 1) + QStringLiteral(" of ") + QString::number(count())
                            : QString());
    enable();
}

void PagedPanel::enable() {
    m_actions.enable();
    emit changed();
}

void PagedPanel::sort() {
    frmOrder::Entries entries;
    for (int row = 0; row < count(); ++row)
        entries.emplace_back(m_list.id(row), m_list.text(row, 0));
    frmOrder form(m_context.icons, m_words.sortTitle, m_words.sortHeading, m_words.iconKey, entries, this);
    if (form.exec() == QDialog::Accepted && m_files.sort(form.order()))
        loadChanged(current());
}

} // namespace tessaranth
