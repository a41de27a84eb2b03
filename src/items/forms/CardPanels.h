// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QString;
class QWidget;

namespace tessaranth {

class CardPanel;
struct CardContext;

/// Makes the panel, filled, of a name ("Docs", "Comp", ...); nullptr for another name.
CardPanel* makeCardPanel(const QString& name, const CardContext& context, QWidget* parent);

} // namespace tessaranth
