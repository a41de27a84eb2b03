// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QString;
class QWidget;

namespace tessaranth {

class CardPanel;
struct CardContext;

/// Makes the panel of a name, filled: one of those below the panel bar ("Docs", "Comp", ...) or of the two
/// above it ("Images", "Doc"). Nullptr for another name.
CardPanel* makeCardPanel(const QString& name, const CardContext& context, QWidget* parent);

} // namespace tessaranth
