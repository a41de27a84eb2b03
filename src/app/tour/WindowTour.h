// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessaranth {

class MainWindow;
class Session;
class TourCamera;

/// The frame with several cards open, one filling it, in a cascade and as tiles, and each of its menus.
void tourWindow(TourCamera& camera, Session& session, MainWindow& window);

} // namespace tessaranth
