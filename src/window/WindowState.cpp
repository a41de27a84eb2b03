// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/WindowState.h"

#include "store/Configuration.h"

#include <QDockWidget>
#include <QGuiApplication>
#include <QMainWindow>
#include <QScreen>
#include <QToolBar>

namespace tessaranth::WindowState {

namespace {

const QString mdi = QStringLiteral("MDI");
const QString tools = QStringLiteral("Toolbox");
/// Widths of the tool box are kept in twips, as existing files have them: 15 to a pixel.
constexpr int twipsPerPixel = 15;
constexpr int narrowestPixels = 180;
/// So much of the title bar must be on a screen for the window to be moved by it.
constexpr int graspablePixels = 80;

QString rectangleText(const QRect& place) {
    return QStringLiteral("%1,%2,%3,%4").arg(place.x()).arg(place.y()).arg(place.width()).arg(place.height());
}

QRect rectangleOf(const QString& text) {
    const QStringList numbers = text.split(u',');
    if (numbers.size() != 4)
        return {};
    return {numbers[0].toInt(), numbers[1].toInt(), numbers[2].toInt(), numbers[3].toInt()};
}

const QString hiddenBars = QStringLiteral("HiddenBars");

QList<QToolBar*> barsOf(const QMainWindow& window) {
    return window.findChildren<QToolBar*>(QString(), Qt::FindDirectChildrenOnly);
}

bool isReachable(const QRect& place) {
    const QRect titleBar(place.left(), place.top(), place.width(), 24);
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect visible = screen->availableGeometry().intersected(titleBar);
        if (visible.width() >= graspablePixels && visible.height() > 8)
            return true;
    }
    return false;
}

} // namespace

void restore(QMainWindow& window, QDockWidget& toolbox, const Configuration& configuration) {
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QRect place = rectangleOf(configuration.read(mdi, QStringLiteral("Main")));
    if (place.width() < 400 || place.height() < 300 || !isReachable(place))
        place = QRect(QPoint(), screen.size() * 0.85);
    if (!isReachable(place) || place.topLeft().isNull())
        place.moveCenter(screen.center());
    window.setGeometry(place);
    if (configuration.read(mdi, QStringLiteral("Maximized")) == u"1")
        window.setWindowState(Qt::WindowMaximized);

    const QStringList hidden = configuration.read(mdi, hiddenBars).split(u',');
    for (QToolBar* bar : barsOf(window))
        bar->setVisible(!hidden.contains(bar->objectName()));

    const int width = configuration.number(tools, QStringLiteral("Width"), 3800) / twipsPerPixel;
    toolbox.setVisible(configuration.flag(tools, QStringLiteral("Visible")));
    if (!configuration.flag(tools, QStringLiteral("Position")))
        window.addDockWidget(Qt::RightDockWidgetArea, &toolbox);
    window.resizeDocks({&toolbox}, {qBound(narrowestPixels, width, place.width() / 2)}, Qt::Horizontal);
}

void save(const QMainWindow& window, const QDockWidget& toolbox, Configuration& configuration) {
    configuration.write(mdi, QStringLiteral("Main"), rectangleText(window.normalGeometry()));
    configuration.write(mdi, QStringLiteral("Maximized"),
                        window.isMaximized() ? QStringLiteral("1") : QStringLiteral("0"));
    QStringList hidden;
    for (const QToolBar* bar : barsOf(window))
        if (bar->isHidden())
            hidden.push_back(bar->objectName());
    configuration.write(mdi, hiddenBars, hidden.join(u','));

    const bool left = window.dockWidgetArea(const_cast<QDockWidget*>(&toolbox)) == Qt::LeftDockWidgetArea;
    if (toolbox.isVisible())
        configuration.write(tools, QStringLiteral("Width"), QString::number(toolbox.width() * twipsPerPixel));
    configuration.write(tools, QStringLiteral("Visible"),
                        toolbox.isHidden() ? QStringLiteral("0") : QStringLiteral("-1"));
    configuration.write(tools, QStringLiteral("Position"), left ? QStringLiteral("-1") : QStringLiteral("0"));
}

} // namespace tessaranth::WindowState
