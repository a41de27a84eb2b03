// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTabBar>

namespace tessaranth {

/// The strip of tabs above the windows of the frame. A tab stands for a window and is known by its address.
class TabStrip final : public QTabBar {
    Q_OBJECT

public:
    explicit TabStrip(QWidget* parent = nullptr);

    /// Adds the window's tab, or shows its new title.
    void show(const QWidget* window, const QIcon& icon, const QString& title);
    void remove(const QWidget* window);
    void activate(const QWidget* window);

signals:
    void activated(const QWidget* window);
    void closeAsked(const QWidget* window);

protected:
    QSize tabSizeHint(int index) const override;
    QSize minimumTabSizeHint(int index) const override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void tabInserted(int index) override;

private:
    int indexOf(const QWidget* window) const;
    const QWidget* windowAt(int index) const;
};

} // namespace tessaranth
