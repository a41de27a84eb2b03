// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessaranth {

class IconStore;
class Session;
class TourCamera;

/// Pictures of the item cards, each panel of each kind, and of a work card.
void tourCards(TourCamera& camera, Session& session, const IconStore& icons);

} // namespace tessaranth
