// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>
#include <functional>

class QWidget;

namespace tessaranth {

class IconStore;
class MainWindow;
class Session;

using TourVisit = std::function<void(QWidget& window, const QString& name)>;

/// Opens every window on the open catalog, one after the other, and writes a picture (PNG) of each into a
/// folder. Answers with the files written; empty when the folder cannot be written. `visit` is called with
/// each window as it is shown, and the name of its picture.
QStringList runTour(Session& session, const IconStore& icons, MainWindow& window, const QString& folder,
                    const TourVisit& visit = {});

} // namespace tessaranth
