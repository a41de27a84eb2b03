// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/ColourScheme.h"

class QPalette;

namespace tessaranth {

/// Shows all windows of the program in a look: light and classic in the desktop's own colours where those are
/// light, dark in colours of our own.
void applyLook(Look look);

/// The palette of the dark look.
QPalette darkPalette();

} // namespace tessaranth
