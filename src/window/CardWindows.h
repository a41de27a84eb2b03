// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/OpenCards.h"
#include "items/forms/CardPanel.h"
#include "widgets/ChildWindow.h"
#include "widgets/FormContext.h"

#include <QHash>
#include <QObject>
#include <functional>
#include <optional>
#include <vector>

class QMdiArea;
class QMdiSubWindow;
class QMenu;

namespace tessaranth {

class TabStrip;

/// The windows within the frame: each has a tab, none is open twice under the same key.
class CardWindows final : public QObject, public OpenCards {
    Q_OBJECT

public:
    using Factory = std::function<ChildWindow*(const CardContext&)>;

    CardWindows(const FormContext& context, QMdiArea* area, TabStrip* tabs, QObject* parent = nullptr);

    /// Which window shows the card of a code ("Cps", ...; "Comp" for works). Nullptr takes it back.
    void setFactory(const QString& code, const Factory& factory) { m_factories.insert(code, factory); }

    void openCard(const QString& code, qint64 id) override;
    void closeCard(const QString& key) override;
    /// A card whose item is gone is closed.
    void reloadCard(const QString& key) override;
    void reloadAll();

    /// Takes a window in, such as a picture viewer, and makes it the active one.
    void add(ChildWindow* window);
    ChildWindow* window(const QString& key) const; ///< nullptr when none of that key is open
    ChildWindow* active() const { return m_active; }
    int count(std::optional<ChildWindow::Kind> kind = {}) const;

    void activate(const QString& key);
    void step(int direction); ///< to the next tab (1) or the one before (-1), round and round
    void fit();               ///< the active one fills the area
    void cascade();
    /// One above the other, or side by side; in a grid where such tiles would be too small to read, with
    /// scroll bars where even that would be.
    void tile(Qt::Orientation orientation);
    void closeActive();
    /// All, or all of a kind; false when one of them did not let itself be closed. The others stay then.
    bool closeAll(std::optional<ChildWindow::Kind> kind = {});
    /// Puts the open windows at the end of a menu, in place of those that stand there.
    void list(QMenu* menu);

signals:
    /// Another window is active, or the active one says that it changed; also when the last one was closed.
    void activeChanged();
    void contextMenuAsked(tessaranth::ChildWindow* window, const QPoint& globalPosition);

private:
    struct Entry {
        ChildWindow* window;
        QMdiSubWindow* frame;
    };
    const Entry* find(const QWidget* window) const;
    void AttivaTab(ChildWindow* window);        ///< its tab comes into being or to the front
    void RimuoviTab(const ChildWindow* window); ///< its tab goes
    void forget(const QMdiSubWindow* frame);
    void noteActive(QMdiSubWindow* frame);
    void addToMenu(QMenu* menu, const Entry& entry, int number);

    FormContext m_context;
    QMdiArea* m_area;
    TabStrip* m_tabs;
    QHash<QString, Factory> m_factories;
    std::vector<Entry> m_entries; ///< in the order of their opening
    ChildWindow* m_active = nullptr;
};

} // namespace tessaranth
