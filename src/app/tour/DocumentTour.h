// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessaranth {

struct FormContext;
class OpenCards;
class TourCamera;

/// Pictures of a card's documents: their panel, their list and their editor.
void tourDocuments(TourCamera& camera, const FormContext& context, OpenCards& cards);

} // namespace tessaranth
