// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessaranth {

class IconStore;
class OpenCards;
class Session;
class TourCamera;

/// Pictures of a card's documents: their panel, their list and their editor.
void tourDocuments(TourCamera& camera, Session& session, const IconStore& icons, OpenCards& cards);

} // namespace tessaranth
