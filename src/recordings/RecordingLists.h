// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/ItemList.h"

namespace tessaranth {

class Progress;
class Session;

/// Lists about recordings. A failure is told through the session's messages and answered with false; the list
/// stays as it was then.
namespace RecordingLists {

/// The recordings that contain a work: the title with the label in parentheses, and the carrier's icon.
bool withWork(Session& session, qint64 work, ItemList& list);

/// The recordings that have a disc of this identifier. The rows of identifiers outlive their recordings;
/// those of recordings that are gone are passed over.
bool withDisc(Session& session, const QString& discId, std::vector<qint64>& recordings);

/// The last columns of `parts` hold `present` or `missing`.
inline constexpr int firstPartColumn = 2;
inline constexpr int partCount = 4;
inline const QString present = QStringLiteral("yes");
inline const QString missing = QStringLiteral("no");
/// Every recording with whether it has composers, performers, works and tracks. False when stopped, too.
bool parts(Session& session, ItemList& list, Progress& progress);

/// What one performer does on a recording.
struct Performed {
    qint64 performer = 0;
    QString name;   ///< "Last, First"
    ItemList works; ///< composer, title with excerpt, roles joined by ", "; the ids are CompOnRecID
};
/// The performers of a recording in their order, each with the works in which he performs.
bool performed(Session& session, qint64 recording, std::vector<Performed>& performers);

} // namespace RecordingLists

} // namespace tessaranth
