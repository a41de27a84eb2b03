// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/FormContext.h"

#include <QStringList>
#include <functional>

class QWidget;

namespace tessaranth {

using TourVisit = std::function<void(QWidget& window, const QString& name)>;

/// Opens every window on the open catalog, one after the other, once in each look, and writes a picture (PNG)
/// of each into a folder of the look's name below `folder`. Answers with the files written; empty when the
/// folder cannot be written. `visit` is called with each window as it is shown, and the name of its picture.
/// The configured look is as before afterwards.
QStringList runTour(const FormContext& context, const QString& folder, const TourVisit& visit = {});

} // namespace tessaranth
