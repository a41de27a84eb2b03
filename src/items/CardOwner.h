// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace tessaranth {

class Session;

/// The card that something hangs off: RelatedCat and RelatedID of the attachment tables.
struct CardOwner {
    QString code; ///< "Cps", "Pfr", "Rec", "UserDef", or "Comp" for a work
    qint64 id = 0;

    bool operator==(const CardOwner&) const = default;
    /// "RelatedCat = 'Rec' AND RelatedID = 7".
    QString condition() const;
    /// The card's name, or the work's title, for questions. Throws SqlError.
    QString name(Session& session) const;
    /// Tells the user and answers false when the card has gone: what is attached to nothing is never seen
    /// again. As a part of an operation it ends that.
    bool require(Session& session) const;
};

} // namespace tessaranth
