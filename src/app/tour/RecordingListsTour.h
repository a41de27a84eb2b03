// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessaranth {

class IconStore;
class Session;
class TourCamera;

/// Pictures of the lists about recordings.
void tourRecordingLists(TourCamera& camera, Session& session, const IconStore& icons);

} // namespace tessaranth
