// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessaranth {

/// Keeps what Qt's offscreen platform says of every window that it shows ("This plugin does not support
/// ...") out of the output, where a message that matters would drown in it. Every other message is
/// handled as before.
void hideOffscreenWarnings();

} // namespace tessaranth
