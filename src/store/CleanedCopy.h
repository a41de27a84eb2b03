// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace tessaranth {

class Progress;

/// A copy of a catalog from a stranger that holds its rows and nothing that could run: tables as this program
/// makes them, at the version that the catalog has, filled row by row. Nothing in the catalog is run for it.
struct CleanedCopy {
    qint64 rows = 0;
    qint64 left = 0; ///< rows left out, as their key was no number or was there twice

    /// Where the window puts the copy: beside the catalog, under a name that no file has.
    static QString placeFor(const QString& catalog);
    /// Throws OpenError when the catalog cannot be read or is not whole even without what is foreign in it,
    /// and FileError when the copy cannot be written or `target` exists.
    static CleanedCopy write(const QString& catalog, const QString& target, Progress& progress);
};

} // namespace tessaranth
