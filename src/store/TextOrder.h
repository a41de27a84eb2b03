// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <string_view>

namespace tessaranth {

/// How the program compares and sorts text, the same on every machine whatever its locale: letters
/// first by their base letter, then by accent; case never counts. So É equals é, é differs from e
/// but sorts directly beside it; spaces and punctuation come before digits, digits before letters.
/// Composed and decomposed forms are equal. Rules after the Unicode Collation Algorithm (UTS #10),
/// levels one and two.
namespace TextOrder {

/// Negative, 0 or positive; both texts are UTF-8.
int compareUtf8(std::string_view a, std::string_view b);
int compare(QStringView a, QStringView b);

/// A text that is the same for two texts exactly when `compare` gives 0: the key of hash sets for bulk
/// checks.
QString fold(QStringView text);

/// `compare`, with runs of digits compared as numbers: "Op. 2" before "Op. 10", "K. 16" before "K. 16a".
int compareNatural(QStringView a, QStringView b);

} // namespace TextOrder

} // namespace tessaranth
