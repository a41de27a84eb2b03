// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/CardWindows.h"

#include "items/ItemKind.h"
#include "store/Session.h"
#include "store/SqlError.h"
#include "widgets/FormHelpers.h"
#include "widgets/IconStore.h"
#include "widgets/TabStrip.h"
#include "window/CardFrame.h"

#include <QMdiArea>
#include <QMenu>
#include <algorithm>

namespace tessaranth {

namespace {
/// So many open windows stand in the menu itself; it would leave the screen with all of 200.
constexpr size_t listedInMenu = 12;
/// Tiles that are smaller show nothing, in pixels.
constexpr int narrowestTile = 260;
constexpr int lowestTile = 200;
/// Windows of a cascade before it begins at the top again.
constexpr int mostSteps = 8;
constexpr QSize firstSize(760, 520);

// What a list still shows may have been deleted since.
bool isThere(Session& session, const QString& code, qint64 id) {
    const ItemKind* kind = itemKind(code);
    const QString table = kind ? kind->table : QStringLiteral("Compositions");
    const QString column = kind ? kind->key : QStringLiteral("CompID");
    try {
        return !session.connection()
                    .single(QStringLiteral("SELECT %1 FROM %2 WHERE %1 = %3").arg(column, table).arg(id))
                    .isNull();
    } catch (const SqlError&) {
        return false;
    }
}

} // namespace

CardWindows::CardWindows(const FormContext& context, QMdiArea* area, TabStrip* tabs, QObject* parent)
    : QObject(parent), m_context(context), m_area(area), m_tabs(tabs) {
    m_tabs->hide();
    connect(m_area, &QMdiArea::subWindowActivated, this, &CardWindows::noteActive);
    connect(m_tabs, &TabStrip::activated, this, [this](const QWidget* window) {
        if (const Entry* entry = find(window))
            m_area->setActiveSubWindow(entry->frame);
    });
    connect(m_tabs, &TabStrip::closeAsked, this, [this](const QWidget* window) {
        if (const Entry* entry = find(window))
            entry->frame->close();
    });
}

const CardWindows::Entry* CardWindows::find(const QWidget* window) const {
    for (const Entry& entry : m_entries)
        if (entry.window == window)
            return &entry;
    return nullptr;
}

ChildWindow* CardWindows::window(const QString& key) const {
    for (const Entry& entry : m_entries)
        if (entry.window->key() == key)
            return entry.window;
    return nullptr;
}

int CardWindows::count(std::optional<ChildWindow::Kind> kind) const {
    return int(std::count_if(m_entries.begin(), m_entries.end(),
                             [kind](const Entry& entry) { return !kind || entry.window->kind() == *kind; }));
}

void CardWindows::openCard(const QString& code, qint64 id) {
    if (window(key(code, id))) {
        activate(key(code, id));
        return;
    }
    const Factory factory = m_factories.value(code);
    if (!factory)
        return;
    if (isThere(m_context.session, code, id))
        add(factory({m_context, *this, code, id}));
    else
        m_context.session.messages().information(applicationTitle, tr("This card has been deleted."));
}

// What hangs off the card, such as its picture viewers, goes with it.
void CardWindows::closeCard(const QString& key) {
    const std::vector<Entry> open = m_entries;
    for (const Entry& entry : open)
        if (find(entry.window) && (entry.window->key() == key || entry.window->owner() == key))
            entry.frame->close();
}

void CardWindows::reloadCard(const QString& key) {
    ChildWindow* card = window(key);
    if (card && !card->reload())
        closeCard(key);
}

void CardWindows::reloadAll() {
    QStringList keys;
    for (const Entry& entry : m_entries)
        keys.push_back(entry.window->key());
    for (const QString& key : keys)
        reloadCard(key);
}

void CardWindows::add(ChildWindow* window) {
    if (ChildWindow* open = this->window(window->key())) {
        if (open != window)
            delete window;
        activate(open->key());
        return;
    }
    const bool isFilling = !m_active || find(m_active)->frame->isMaximized();
    auto* frame = new CardFrame(window);
    m_area->addSubWindow(frame);
    frame->setWindowIcon(m_context.icons.icon(window->iconKey()));
    m_entries.push_back({window, frame});
    connect(frame, &CardFrame::closed, this, [this, frame] { forget(frame); });
    connect(frame, &CardFrame::contextMenuAsked, this,
            [this, window](const QPoint& position) { emit contextMenuAsked(window, position); });
    connect(window, &ChildWindow::changed, this, [this, window] {
        if (!find(window))
            return;
        m_tabs->show(window, m_context.icons.icon(window->iconKey()), window->windowTitle());
        if (window == m_active)
            emit activeChanged();
    });
    m_tabs->show(window, m_context.icons.icon(window->iconKey()), window->windowTitle());
    frame->resize(firstSize.boundedTo(m_area->size() * 0.9));
    if (isFilling)
        frame->showMaximized();
    else
        frame->show();
    m_area->setActiveSubWindow(frame);
    noteActive(frame);
}

void CardWindows::AttivaTab(ChildWindow* window) {
    m_tabs->setVisible(true);
    m_tabs->activate(window);
}

void CardWindows::RimuoviTab(const ChildWindow* window) {
    m_tabs->remove(window);
    m_tabs->setVisible(m_tabs->count() > 0);
}

void CardWindows::forget(const QMdiSubWindow* frame) {
    const auto entry = std::find_if(m_entries.begin(), m_entries.end(),
                                    [frame](const Entry& candidate) { return candidate.frame == frame; });
    if (entry == m_entries.end())
        return;
    const ChildWindow* window = entry->window;
    m_entries.erase(entry);
    RimuoviTab(window);
    if (m_active == window) {
        m_active = nullptr;
        noteActive(m_area->activeSubWindow());
    }
}

void CardWindows::noteActive(QMdiSubWindow* frame) {
    // While another program is in front no window is active here, yet the commands are still about it.
    if (!frame && m_active)
        return;
    auto* window = frame ? qobject_cast<ChildWindow*>(frame->widget()) : nullptr;
    m_active = find(window) ? window : nullptr;
    if (m_active)
        AttivaTab(m_active);
    emit activeChanged();
}

void CardWindows::activate(const QString& key) {
    if (const Entry* entry = find(window(key))) {
        if (entry->frame->isMinimized())
            entry->frame->showNormal();
        m_area->setActiveSubWindow(entry->frame);
        noteActive(entry->frame);
    }
}

void CardWindows::step(int direction) {
    if (const int tabs = m_tabs->count())
        m_tabs->setCurrentIndex((m_tabs->currentIndex() + direction + tabs) % tabs);
}

void CardWindows::fit() {
    if (const Entry* entry = find(m_active))
        entry->frame->showMaximized();
}

// The area's own cascade makes windows as small as what they hold would like to be.
void CardWindows::cascade() {
    const QSize area = m_area->viewport()->size();
    const QSize size = area * 2 / 3;
    int place = 0;
    for (const Entry& entry : m_entries) {
        if (entry.frame->isMinimized())
            continue;
        const int offset = place++ % mostSteps * (area - size).height() / mostSteps;
        entry.frame->showNormal();
        entry.frame->setGeometry(QRect(QPoint(offset, offset), size));
        entry.frame->raise();
    }
    if (const Entry* active = find(m_active))
        active->frame->raise();
}

void CardWindows::tile(Qt::Orientation orientation) {
    QList<QMdiSubWindow*> frames;
    for (const Entry& entry : m_entries)
        if (!entry.frame->isMinimized())
            frames.push_back(entry.frame);
    if (frames.isEmpty())
        return;
    const QSize area = m_area->viewport()->size();
    const int count = int(frames.size());
    const auto parts = [](int whole, int of) { return (whole + of - 1) / of; };
    int columns = parts(count, qMax(1, area.height() / lowestTile));
    if (orientation == Qt::Vertical)
        columns = parts(count, parts(count, qMax(1, area.width() / narrowestTile)));
    const int rows = parts(count, columns);
    const QSize whole(qMax(area.width(), columns * narrowestTile), qMax(area.height(), rows * lowestTile));
    for (int i = 0; i < count; ++i) {
        // The last row shares its width among those that are left.
        const int row = i / columns;
        const int inRow = qMin(columns, count - row * columns);
        const int left = whole.width() * (i % columns) / inRow;
        const int top = whole.height() * row / rows;
        frames[i]->showNormal();
        frames[i]->setGeometry(QRect(QPoint(left, top), QPoint(whole.width() * (i % columns + 1) / inRow - 1,
                                                               whole.height() * (row + 1) / rows - 1)));
    }
}

void CardWindows::closeActive() {
    if (const Entry* entry = find(m_active))
        entry->frame->close();
}

bool CardWindows::closeAll(std::optional<ChildWindow::Kind> kind) {
    const std::vector<Entry> open = m_entries;
    for (const Entry& entry : open)
        if (find(entry.window) && (!kind || entry.window->kind() == *kind) && !entry.frame->close())
            return false;
    return true;
}

void CardWindows::list(QMenu* menu) {
    for (QAction* action : menu->actions())
        if (action->data().isValid()) {
            if (action->menu())
                delete action->menu();
            else
                delete action;
        }
    if (m_entries.empty())
        return;
    menu->addSeparator()->setData(true);
    QMenu* more = nullptr;
    for (size_t i = 0; i < m_entries.size(); ++i) {
        if (i == listedInMenu) {
            more = menu->addMenu(tr("&More windows"));
            more->menuAction()->setData(true);
        }
        addToMenu(more ? more : menu, m_entries[i], int(i) + 1);
    }
}

void CardWindows::addToMenu(QMenu* menu, const Entry& entry, int number) {
    constexpr int longest = 60;
    QString title = entry.window->windowTitle();
    if (title.size() > longest)
        title = title.left(longest) + QChar(0x2026);
    const QString mnemonic = number <= 9 ? QStringLiteral("&%1  ").arg(number) : QString();
    const QString key = entry.window->key();
    QAction* action = menu->addAction(m_context.icons.icon(entry.window->iconKey()),
                                      mnemonic + FormHelpers::plainCaption(title));
    action->setData(key);
    action->setCheckable(true);
    action->setChecked(entry.window == m_active);
    connect(action, &QAction::triggered, this, [this, key] { activate(key); });
}

} // namespace tessaranth
