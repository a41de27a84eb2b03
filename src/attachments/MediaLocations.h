// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

namespace tessaranth {

class Progress;
class Session;

/// Which recorded places begin differently now, and how.
struct LocationChange {
    /// On the drive `from` ("D:", or a mount point), or on any drive when it is empty.
    static LocationChange byDrive(const QString& from, const QString& to) { return {true, from, to}; }
    /// In folders whose path begins with `from`.
    static LocationChange byFolder(const QString& from, const QString& to) { return {false, from, to}; }

    bool isDrive = true;
    QString from;
    QString to;
};

/// Keeps the recorded places of media files up to date when a disk or a folder has moved, in the whole
/// catalog. Files are not looked at: a disk may be away.
class MediaLocations {
public:
    explicit MediaLocations(Session& session) : m_session(session) {}

    /// The drives at the beginning of the recorded places. Throws SqlError.
    QStringList drives();
    /// Asks, and changes the recorded places in one transaction. False when the answer is no, when there is
    /// nothing to change, and when it failed or was stopped: then every place is as it was.
    bool update(const LocationChange& change, Progress& progress);
    /// Cards whose media were changed by the last update, by their key.
    const QStringList& changedCards() const { return m_changedCards; }

private:
    Session& m_session;
    QStringList m_changedCards;
};

} // namespace tessaranth
