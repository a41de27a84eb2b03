// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QIODevice;
class QString;

namespace tessaranth {

/// Goes over an XML file once before a parser sees it, and refuses what no record set has and what would keep
/// the parser busy for minutes or fill the memory: document types, hundreds of attributes in one element,
/// cells of megabytes, encodings in which a sign of the markup may be half of a letter. Leaves the device at
/// its beginning. Throws FileError, which names `path`.
void checkXmlLimits(QIODevice& file, const QString& path);

constexpr int mostAttributes = 300;               ///< of one element
constexpr int mostFields = 255;                   ///< of one table
constexpr long long longestCell = 1024 * 1024;    ///< bytes
constexpr long long largestXmlFile = 256LL << 20; ///< bytes

} // namespace tessaranth
