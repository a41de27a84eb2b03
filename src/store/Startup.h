// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Progress.h"
#include "store/Upgrade.h"

#include <QString>
#include <functional>

namespace tessaranth {

class Session;

/// What start-up came to. Where it did not start, `reason` says why in words for the user; it is empty
/// when the user has been told already and there is no more to say.
struct StartResult {
    bool started = false;
    QString reason;
    UpgradeResult upgrade;
};

/// Brings a session from nothing to an open, current catalog. The sequence is `run`; every step is one call.
class Startup {
public:
    struct Options {
        QString catalog;                  ///< opens this file instead of the configured one
        QString shareFolder;              ///< what the program was installed with; fills a new folder
        std::function<void()> showSplash; ///< may be empty
        /// Where a catalog cannot be opened the user is asked for another one, and whether to open a cleaned
        /// copy of one that holds what is not of this program.
        bool asksForCatalog = false;
        std::function<void()> hideSplash{}; ///< before the user is asked, who could not see it; may be empty
    };

    Startup(Session& session, Options options, Progress& progress);
    StartResult run();

    /// The first steps only: an open connection to a catalog that is left as it is, to look at it.
    StartResult openForInspection();

    /// The catalog that `run` would open; empty when there is none, which the user has been told.
    QString catalogToOpen();

private:
    bool fillApplicationFolder();
    bool passVersionGate();
    bool locateDatabase();
    bool checkCompanionFiles();
    bool openCatalog();
    bool openConnection(bool inspect);
    bool takeAnother();
    bool takeCleaned();
    void useCatalog(const QString& path);
    bool openConfiguration();
    bool readConfiguration();
    void removeLeftovers();
    bool upgradeSchema();
    bool loadLists();
    bool reportMissing(const QString& name);
    bool refuse(const QString& reason);

    Session& m_session;
    Options m_options;
    Progress& m_progress;
    StartResult m_result;
    bool m_isForeign = false; ///< the catalog that was refused last
    bool m_isChosen = false;  ///< the user has chosen another catalog than the configured one
};

/// Ends the session: the maintenance that the configuration asks for, then the connection is closed.
void shutDown(Session& session, Progress& progress);

} // namespace tessaranth
