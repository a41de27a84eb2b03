// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessaranth {

class IconStore;
class Session;
class TourCamera;

/// Media, links and relations of cards, and the editors of links, relations, labels and custom cards.
void tourAttachments(TourCamera& camera, Session& session, const IconStore& icons);

} // namespace tessaranth
