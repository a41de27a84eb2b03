// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessaranth {

struct FormContext;
class TourCamera;

/// Pictures of the recording editor, tab by tab, and of what it opens.
void tourRecordings(TourCamera& camera, const FormContext& context);

} // namespace tessaranth
