// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QPalette>

class QWidget;

namespace tessaranth {

class Configuration;

/// The colours of a card as they are configured for its kind.
struct CardColours {
    QColor back;    ///< BC: the card
    QColor fore;    ///< FC: texts on it
    QColor heading; ///< HC: the band behind the name
    QColor label;   ///< LC: the names of fields

    /// By the prefix "Cps", "Pfr", "Rec" or "Cus". Texts that could not be read on their background come in a
    /// lighter or darker shade.
    static CardColours read(const Configuration& configuration, const QString& prefix);
    /// Those of work cards.
    static CardColours readWork(const Configuration& configuration);
    /// For the card and all that lies on it; the selection is in inverted colours.
    QPalette palette() const;
};

/// The contrast ratio of two colours, 1 to 21 (WCAG 2.1, 1.4.3).
double contrast(const QColor& one, const QColor& other);
/// A text's colour, moved towards white or black just as far as it has to be for reading it.
QColor readableOn(const QColor& text, const QColor& back);
/// Gives a label its own colour on the card's.
void setTextColour(QWidget* label, const QColor& colour);
/// A neighbouring shade of a background, on which its text is read even better.
QColor shadeOf(const QColor& back, const QColor& text);

} // namespace tessaranth
