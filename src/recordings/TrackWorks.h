// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>
#include <vector>

namespace tessaranth {

/// A work to be made of tracks.
struct TrackWork {
    QString title;
    std::vector<int> tracks; ///< numbers of the names that it is made of, from 0 up
    qint64 work = 0;         ///< CompID of the composer's work of this title; 0 while he has none

    bool operator==(const TrackWork&) const = default;
};

/// The works that names of tracks tell, in their order: one each, or one of all movements of a work, as
/// "Symphony No. 5" of "Symphony No. 5: I. Allegro" and "Symphony No. 5: II. Andante". Blank names are
/// passed over.
std::vector<TrackWork> worksOfTracks(const QStringList& names, bool mergeMovements);

} // namespace tessaranth
