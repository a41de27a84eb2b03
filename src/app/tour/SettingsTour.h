// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessaranth {

class IconStore;
class OpenCards;
class Session;
class TourCamera;

/// The settings page by page and the quick search with what it finds.
void tourSettings(TourCamera& camera, Session& session, const IconStore& icons, OpenCards& cards);

} // namespace tessaranth
