// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessaranth {

struct FormContext;
class OpenCards;
class TourCamera;

/// A card's pictures, the viewer, their order and the comparison of files with rows. What it adds to the
/// catalog for that it removes again.
void tourImages(TourCamera& camera, const FormContext& context, OpenCards& cards);

} // namespace tessaranth
