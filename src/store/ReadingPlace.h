// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <memory>

class QTemporaryDir;

namespace tessaranth {

/// From where a catalog is read that is only looked at, so that nothing near it changes.
struct ReadingPlace {
    enum class Way {
        InPlace,   ///< locked against others while it is read
        Immutable, ///< it cannot be written and no log belongs to it: read as it stands
        Copy       ///< it cannot be written but what a log holds belongs to it: read from a private copy
    };
    Way way = Way::InPlace;
    QString file;
    std::shared_ptr<QTemporaryDir> folder; ///< of the copy, which goes with it

    /// Throws FileError when the copy cannot be made.
    static ReadingPlace of(const QString& catalog);
};

} // namespace tessaranth
