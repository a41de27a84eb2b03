// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessaranth {

struct FormContext;
class MainWindow;
class TourCamera;

/// The classifications: their manager, the boxes of one card and of several, and browsing in the tool box.
void showClasses(TourCamera& camera, const FormContext& context, MainWindow& window);

} // namespace tessaranth
