// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessaranth {

struct FormContext;
class TourCamera;

/// Pictures of the item cards, each panel of each kind, and of a work card.
void tourCards(TourCamera& camera, const FormContext& context);

} // namespace tessaranth
