// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

namespace tessaranth {

class IconStore;
class MainWindow;
class Session;

/// Opens every window on the open catalog, one after the other, and writes a picture (PNG) of each into a
/// folder. Answers with the files written; empty when the folder cannot be written.
QStringList runTour(Session& session, const IconStore& icons, MainWindow& window, const QString& folder);

} // namespace tessaranth
