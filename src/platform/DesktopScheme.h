// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>

namespace tessaranth {

/// The colour schemes that a desktop can have; tool panes are drawn to go with them.
enum class DesktopScheme { NormalColor, Metallic, HomeStead };

/// The scheme that the user has chosen, where the system names one; else the one that goes with its colours.
/// NormalColor without a desktop.
DesktopScheme desktopScheme();
/// A greenish highlight goes with HomeStead, a grey one or dark windows with Metallic.
DesktopScheme desktopScheme(const QColor& window, const QColor& highlight);

} // namespace tessaranth
