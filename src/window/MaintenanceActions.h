// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <functional>

class QWidget;

namespace tessaranth {

class IconStore;
class Session;

/// The commands of the Tools menu that care for the catalog file.
class MaintenanceActions {
public:
    MaintenanceActions(Session& session, const IconStore& icons, QWidget* window)
        : m_session(session), m_icons(icons), m_window(window) {}

    void compact();
    void backup();
    void copyToDestination();
    void empty();
    void cleanup();

    std::function<void()> changed; ///< the catalog's cards are others than before
    std::function<void()> restart; ///< the program is to be started again
    std::function<void(const QString&)> notice;

private:
    Session& m_session;
    const IconStore& m_icons;
    QWidget* m_window;
};

} // namespace tessaranth
