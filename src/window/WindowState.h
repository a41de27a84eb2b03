// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QDockWidget;
class QMainWindow;

namespace tessaranth {

class Configuration;

/// Where the main window and its tool box were, in the sections MDI and Toolbox of the configuration.
namespace WindowState {

/// A place off every screen, as after a screen has gone, is moved onto the first one.
void restore(QMainWindow& window, QDockWidget& toolbox, const Configuration& configuration);
void save(const QMainWindow& window, const QDockWidget& toolbox, Configuration& configuration);

} // namespace WindowState

} // namespace tessaranth
