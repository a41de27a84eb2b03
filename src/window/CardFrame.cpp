// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/CardFrame.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QMenu>

namespace tessaranth {

CardFrame::CardFrame(QWidget* window) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWidget(window);
    // The main window has these keys; the same key twice would carry out neither.
    for (QAction* action : systemMenu()->actions())
        action->setShortcuts(QList<QKeySequence>());
}

void CardFrame::closeEvent(QCloseEvent* event) {
    QMdiSubWindow::closeEvent(event);
    if (event->isAccepted())
        emit closed();
}

void CardFrame::contextMenuEvent(QContextMenuEvent* event) {
    if (widget() && widget()->geometry().contains(event->pos()))
        emit contextMenuAsked(event->globalPos());
    else
        QMdiSubWindow::contextMenuEvent(event);
}

} // namespace tessaranth
