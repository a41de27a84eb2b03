// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QString>
#include <QStringList>

namespace tessaranth {

/// Which colours the program is shown in: the configured ones, or one of two schemes that are made so that
/// every text is readable.
enum class Look { Classic, Light, Dark };

/// The words of the configuration, in the order of the enumeration.
const QStringList& lookWords();
/// Classic for a word that is none.
Look lookOf(const QString& word);

/// A scheme's colour for a key of the section Colors, such as "CpsBC"; invalid for Classic and for an unknown
/// key. Item kinds: BC is the back of the card, HC of its heading; FC is the text on both, LC that of labels.
QColor schemeColour(Look look, const QString& key);

} // namespace tessaranth
