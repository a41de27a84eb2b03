// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tour/WindowTour.h"

#include "app/tour/TourCamera.h"
#include "items/ItemKind.h"
#include "store/Session.h"
#include "window/CardWindows.h"
#include "window/Commands.h"
#include "window/MainWindow.h"

#include <QAction>
#include <QMenu>

namespace tessaranth {

namespace {

void openSome(Session& session, MainWindow& window) {
    for (const ItemKind& kind : itemKinds()) {
        if (!kind.isCard())
            continue;
        Query query = session.connection().query(
            QStringLiteral("SELECT %1 FROM %2 ORDER BY %1").arg(kind.key, kind.table));
        for (int opened = 0; opened < 2 && query.next(); ++opened)
            window.openCard(kind.code, query.integer(0));
    }
}

} // namespace

void tourWindow(TourCamera& camera, Session& session, MainWindow& window) {
    openSome(session, window);
    camera.take(window, QStringLiteral("window-cards"));
    const std::pair<const char*, const char*> arrangements[] = {{"mnuWindowTileC", "window-cascade"},
                                                                {"mnuWindowTileH", "window-tiles-horizontal"},
                                                                {"mnuWindowTileV", "window-tiles-vertical"}};
    for (const auto& [key, name] : arrangements) {
        window.commands().action(QLatin1String(key))->trigger();
        camera.take(window, QLatin1String(name));
    }
    window.cards().fit();
    for (const Command& command : commandTable()) {
        if (command.when != When::Menu)
            continue;
        QMenu* menu = window.commands().menu(QLatin1String(command.key));
        emit menu->aboutToShow();
        camera.take(*menu, QStringLiteral("menu-") + QLatin1String(command.key).mid(3));
        menu->hide();
    }
    window.cards().closeAll();
    camera.take(window, QStringLiteral("window-empty"));
}

} // namespace tessaranth
