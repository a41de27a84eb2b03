// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessaranth {

struct FormContext;
class TourCamera;

/// Pictures of the lists about recordings.
void tourRecordingLists(TourCamera& camera, const FormContext& context);

} // namespace tessaranth
