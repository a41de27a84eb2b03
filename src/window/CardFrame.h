// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMdiSubWindow>

namespace tessaranth {

/// The frame around one window within the main window.
class CardFrame final : public QMdiSubWindow {
    Q_OBJECT

public:
    explicit CardFrame(QWidget* window);

signals:
    /// It let itself be closed and is about to go.
    void closed();
    void contextMenuAsked(const QPoint& globalPosition);

protected:
    void closeEvent(QCloseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
};

} // namespace tessaranth
