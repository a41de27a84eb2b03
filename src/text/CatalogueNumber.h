// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace tessaranth {

/// The numbers of works as the catalogues of their composers write them: "988", "I:101", "Anh. 114", "WoO
/// 59".
namespace CatalogueNumber {

/// A number as it is read, after the acronym of the composer's catalogue: "BWV 988", "Hob. I:101", "BWV Anh.
/// 114". One that names a catalogue itself, such as "WoO 59", stands alone. Empty for an empty number.
QString withAcronym(const QString& acronym, const QString& number);
/// A number without the acronym, which users type too: "988" for "BWV 988" of a composer with "BWV".
QString withoutAcronym(const QString& acronym, const QString& number);

/// The order of a catalogue, negative, 0 or positive: runs of digits and Roman numerals count as numbers,
/// digits come before numerals and those before words, so "2", "10", "10a", "II:1", "IX:1", "Anh. 3", "WoO
/// 1".
int compare(QStringView a, QStringView b);

} // namespace CatalogueNumber

} // namespace tessaranth
