// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessaranth {

class IconStore;
class MainWindow;
class Session;
class TourCamera;

/// The classifications: their manager, the boxes of one card and of several, and browsing in the tool box.
void showClasses(TourCamera& camera, Session& session, const IconStore& icons, MainWindow& window);

} // namespace tessaranth
