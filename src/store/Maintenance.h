// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Progress.h"

#include <QString>
#include <functional>

namespace tessaranth {

class Session;

/// The care of the catalog file as a whole. Each operation reports a failure through Messages, answers false
/// and leaves the catalog and the previous backup as they were.
class Maintenance {
public:
    explicit Maintenance(Session& session);

    bool compact(Progress& progress);
    /// To Tessaranth.bak in the application folder; another catalog than the configured one beside itself.
    bool backup(Progress& progress);
    bool copyToDestination(Progress& progress); ///< to the folder "DestFolder" of the configuration
    /// Deletes every row of every table and the backup file; the tables stay.
    bool empty(Progress& progress);

    /// What the configuration asks for at the end of a session. A catalog without free space is not
    /// compacted, and one that nobody changed is not backed up again.
    void atExit(Progress& progress);

    QString backupPath() const;

private:
    bool guarded(const QString& stage, Progress& progress, const std::function<void()>& work);

    Session& m_session;
};

} // namespace tessaranth
