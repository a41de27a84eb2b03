// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tessaranth {

struct FormContext;
class TourCamera;

/// Media, links and relations of cards, and the editors of links, relations, labels and custom cards.
void tourAttachments(TourCamera& camera, const FormContext& context);

} // namespace tessaranth
