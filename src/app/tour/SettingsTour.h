// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessaranth {

struct FormContext;
class OpenCards;
class TourCamera;

/// The settings page by page and the quick search with what it finds.
void tourSettings(TourCamera& camera, const FormContext& context, OpenCards& cards);

} // namespace tessaranth
