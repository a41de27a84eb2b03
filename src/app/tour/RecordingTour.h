// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessaranth {

class IconStore;
class Session;
class TourCamera;

/// Pictures of the recording editor, tab by tab, and of what it opens.
void tourRecordings(TourCamera& camera, Session& session, const IconStore& icons);

} // namespace tessaranth
