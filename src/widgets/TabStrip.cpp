// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/TabStrip.h"

#include "widgets/FormHelpers.h"

#include <QMouseEvent>

namespace tessaranth {

namespace {
constexpr int widestTab = 220;
constexpr int narrowestTab = 150;
} // namespace

TabStrip::TabStrip(QWidget* parent) : QTabBar(parent) {
    setObjectName(QStringLiteral("tabStrip"));
    setAccessibleName(tr("Open cards"));
    setDocumentMode(true);
    setExpanding(false);
    setTabsClosable(true);
    setMovable(true);
    setUsesScrollButtons(true);
    setElideMode(Qt::ElideRight);
    setIconSize(QSize(16, 16));
    // A tab of its own accord takes the focus away from what the user works on.
    setFocusPolicy(Qt::TabFocus);
    connect(this, &QTabBar::currentChanged, this, [this](int index) {
        if (index >= 0)
            emit activated(windowAt(index));
    });
    connect(this, &QTabBar::tabCloseRequested, this, [this](int index) { emit closeAsked(windowAt(index)); });
}

int TabStrip::indexOf(const QWidget* window) const {
    for (int index = 0; index < count(); ++index)
        if (windowAt(index) == window)
            return index;
    return -1;
}

const QWidget* TabStrip::windowAt(int index) const {
    return static_cast<const QWidget*>(tabData(index).value<void*>());
}

void TabStrip::show(const QWidget* window, const QIcon& icon, const QString& title) {
    const QSignalBlocker quiet(this);
    int index = indexOf(window);
    if (index < 0) {
        index = addTab(QString());
        setTabData(index, QVariant::fromValue(static_cast<void*>(const_cast<QWidget*>(window))));
    }
    setTabIcon(index, icon);
    setTabText(index, FormHelpers::plainCaption(title));
    setTabToolTip(index, title.toHtmlEscaped());
    setAccessibleTabName(index, title);
}

void TabStrip::remove(const QWidget* window) {
    const QSignalBlocker quiet(this);
    if (const int index = indexOf(window); index >= 0)
        removeTab(index);
}

void TabStrip::activate(const QWidget* window) {
    const QSignalBlocker quiet(this);
    if (const int index = indexOf(window); index >= 0)
        setCurrentIndex(index);
}

QSize TabStrip::tabSizeHint(int index) const {
    const QSize size = QTabBar::tabSizeHint(index);
    return {qMin(size.width(), widestTab), size.height()};
}

// Rather scrolled than cut down to a letter or two.
QSize TabStrip::minimumTabSizeHint(int index) const {
    const QSize size = tabSizeHint(index);
    return {qMin(size.width(), narrowestTab), size.height()};
}

void TabStrip::mouseReleaseEvent(QMouseEvent* event) {
    const int index = tabAt(event->position().toPoint());
    if (event->button() == Qt::MiddleButton && index >= 0)
        emit closeAsked(windowAt(index));
    QTabBar::mouseReleaseEvent(event);
}

void TabStrip::tabInserted(int index) {
    QTabBar::tabInserted(index);
    for (const ButtonPosition side : {LeftSide, RightSide})
        if (QWidget* button = tabButton(index, side))
            button->setAccessibleName(tr("Close the card"));
}

} // namespace tessaranth
