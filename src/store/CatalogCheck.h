// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Progress.h"
#include "store/CatalogFault.h"

#include <optional>

namespace tessaranth {

class Session;

/// Looks at everything that a whole catalog must fulfil, and mends what the user wants mended: SQLite's own
/// integrity, every link of every table, doubles, marks and counts, numbers that are none, the word index,
/// and what others add.
class CatalogCheck {
public:
    struct Finding {
        QString caption;
        CatalogFault::Found found;
        bool canMend = false;
        QString text() const; ///< "Tracks without a recording: 3 (TrackID 7, TrackID 9, ...)"
    };
    struct Outcome {
        int mended = 0;       ///< kinds of faults
        int left = 0;         ///< kinds that could not be mended or that the user did not want mended
        bool stopped = false; ///< the user stopped between two kinds
    };

    explicit CatalogCheck(Session& session);
    void add(CatalogFaults more);

    /// Changes nothing. What cannot be looked at is a finding too. The number of findings; nullopt when the
    /// user stopped.
    std::optional<int> find(Progress& progress, const std::function<void(const Finding&)>& found);

    /// Looks for each kind of fault anew, as mending one may bring forth another, asks, mends it in one
    /// transaction and tells each: what it found, what it did, what is left.
    Outcome repair(Progress& progress, const std::function<void(const QString&)>& told);

private:
    Finding look(const CatalogFault& fault);
    bool mend(const CatalogFault& fault, const std::function<void(const QString&)>& told);

    Session& m_session;
    CatalogFaults m_faults;
};

} // namespace tessaranth
