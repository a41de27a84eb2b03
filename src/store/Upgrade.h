// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Progress.h"
#include "store/UpgradeSteps.h"

#include <QString>
#include <vector>

namespace tessaranth {

class Connection;
class Recordset;
class Session;

/// What became of a catalog at start-up.
struct UpgradeResult {
    enum class Kind {
        Current,       ///< nothing was to be done
        Upgraded,      ///< `applied` holds the codes in their order
        Newer,         ///< written by a newer version; untouched
        Damaged,       ///< the file is damaged; what was applied before is in `applied`
        FailedAtStep,  ///< `failedStep` could not be applied; it is tried again at the next start
        Stopped,       ///< the disk is full or failing; `reason` says why, `applied` holds what stands
        NoMediaFolder, ///< the media step needs the media folder; the user has been told
    };
    Kind kind = Kind::Current;
    std::vector<int> applied;
    int failedStep = 0;
    QString reason;

    /// In words for the user; empty where there is nothing to say.
    QString text() const;
};

/// Brings a catalog of any older version up to date in place: makes the tables it lacks, applies each
/// numbered step at most once and records it in DbUpgrades. Every table and step is one transaction, so a
/// kill between any two leaves a catalog that the next start completes.
class Upgrade {
public:
    explicit Upgrade(Session& session);
    UpgradeResult run(Progress& progress);

    /// Adds a column with its default. True when both statements succeed; the second is issued even for an
    /// empty default.
    bool addColumn(const QString& table, const QString& column, const QString& type,
                   const QString& defaultValue);
    bool changeTypeAndDefault(const QString& table, const QString& column, const QString& type,
                              const QString& defaultValue);
    bool changeWidth(const QString& table, const QString& column, const QString& typeWord, int width);

private:
    bool createMissingTables();
    void fillKeyNames();
    bool setDefault(const QString& table, const QString& column, const QString& defaultValue);
    bool applyChange(const UpgradeStep& step);
    bool changeMedia(const UpgradeStep& step);
    void migrateMedia(Progress& progress);
    bool isAlreadySo(const UpgradeStep& step) const;
    bool applyStep(const UpgradeStep& step, Recordset& upgrades, Progress& progress);

    Session& m_session;
    Connection& m_connection;
    UpgradeResult m_result;
};

} // namespace tessaranth
