// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Startup.h"

#include "platform/AppFolder.h"
#include "platform/OperatingSystem.h"
#include "platform/Registry.h"
#include "store/CompanionFiles.h"
#include "store/History.h"
#include "store/Maintenance.h"
#include "store/Session.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace tessaranth {

namespace {

const QString catalogName = QStringLiteral("Tessaranth.tsb");

} // namespace

Startup::Startup(Session& session, Options options, Progress& progress)
    : m_session(session), m_options(std::move(options)), m_progress(progress) {}

StartResult Startup::run() {
    m_result = {};
    m_result.started = fillApplicationFolder() && passVersionGate() && locateDatabase() &&
                       checkCompanionFiles() && openConnection(false) && openConfiguration() &&
                       readConfiguration() && upgradeSchema() && loadLists();
    if (m_result.started) {
        m_session.setDesktopScheme(desktopScheme());
        m_session.history().open();
    } else {
        m_session.closeConnection();
    }
    return m_result;
}

StartResult Startup::openForInspection() {
    m_result = {};
    m_result.started = locateDatabase() && openConnection(true);
    return m_result;
}

bool Startup::refuse(const QString& reason) {
    m_result.reason = reason;
    return false;
}

bool Startup::fillApplicationFolder() {
    const QString failure = fillAppFolder(m_session.applicationFolder(), m_options.shareFolder);
    return failure.isEmpty() || refuse(failure);
}

bool Startup::passVersionGate() {
    const QString system = operatingSystemName();
    const QString refusal = versionGateMessage(system);
    if (!refusal.isEmpty()) {
        m_session.messages().critical(applicationTitle, refusal);
        return false;
    }
    m_session.setAdministrator(isAdministrator(system));
    if (m_options.showSplash)
        m_options.showSplash();
    return true;
}

bool Startup::reportMissing(const QString& name) {
    m_session.messages().critical(applicationTitle,
                                  QStringLiteral("Unable to locate ") + name + QStringLiteral("!\n") +
                                      QStringLiteral("Please correct the problem. Tessaranth cannot start."));
    return false;
}

// An empty setting means the file beside the program, which is used without a look: whether it exists shows
// when it is opened.
bool Startup::locateDatabase() {
    if (!m_options.catalog.isEmpty()) {
        m_session.setDatabasePath(m_options.catalog);
        return true;
    }
    QString path = m_session.configuration().read(QStringLiteral("Data folders"), QStringLiteral("Database"));
    if (path.isEmpty()) {
        path = m_session.applicationFile(catalogName);
    } else if (!QFileInfo::exists(path)) {
        FileRequest request;
        request.title = QStringLiteral("Select the database file (Tessaranth.tsb)");
        request.filterName = catalogName;
        request.patterns = QStringList{catalogName};
        const QStringList chosen = m_session.messages().chooseFiles(request);
        if (chosen.isEmpty() || QFileInfo(chosen.front()).fileName() != catalogName)
            return reportMissing(catalogName);
        path = chosen.front();
        m_session.configuration().write(QStringLiteral("Data folders"), QStringLiteral("Database"), path);
    }
    m_session.setDatabasePath(path);
    return true;
}

bool Startup::checkCompanionFiles() {
    for (const char* name : companionFiles())
        if (!QFileInfo(m_session.applicationFile(QString::fromLatin1(name))).isFile())
            return reportMissing(QString::fromLatin1(name));
    for (const char* name : companionFiles())
        if (const QString damage = companionDamage(m_session.applicationFile(QString::fromLatin1(name)));
            !damage.isEmpty())
            return refuse(damage);
    return true;
}

bool Startup::openConnection(bool inspect) {
    try {
        m_session.setConnection(
            Connection::open(m_session.databasePath(), m_session.clock(), newestUpgradeCode,
                             inspect ? Connection::Mode::Inspect : Connection::Mode::Normal));
        m_session.fieldLengths().load(m_session.connection());
        return true;
    } catch (const OpenError& error) {
        if (error.kind() == OpenError::Kind::Newer)
            m_result.upgrade.kind = UpgradeResult::Kind::Newer;
        return refuse(error.reason());
    } catch (const Error& error) {
        return refuse(error.reason());
    }
}

bool Startup::openConfiguration() {
    Configuration& configuration = m_session.configuration();
    if (configuration.exists())
        return true;
    // The folders first: with the configuration written, nobody would make them any more.
    for (const auto folder : {Session::Folder::Images, Session::Folder::Documents, Session::Folder::Labels,
                              Session::Folder::Media, Session::Folder::Html})
        QDir().mkpath(m_session.dataFolder(folder));
    if (!configuration.create(m_session.databasePath())) {
        m_session.messages().critical(applicationTitle,
                                      QStringLiteral("Unable to create the configuration file!\n") +
                                          QStringLiteral("Cannot continue"));
        return false;
    }
    return true;
}

bool Startup::readConfiguration() {
    m_session.configuration().addMissingKeys();
    m_session.loadRuntime();
    m_session.setUserAgent(userAgent());
    recordInstallation(m_session.applicationFolder(), QStringLiteral(TESSARANTH_VERSION));
    return true;
}

bool Startup::upgradeSchema() {
    m_result.upgrade = Upgrade(m_session).run(m_progress);
    if (m_result.upgrade.kind == UpgradeResult::Kind::NoMediaFolder)
        return false;
    if (m_result.upgrade.kind == UpgradeResult::Kind::Damaged ||
        m_result.upgrade.kind == UpgradeResult::Kind::Stopped)
        return refuse(m_result.upgrade.text());
    // Widths may have changed.
    m_session.fieldLengths().load(m_session.connection());
    return true;
}

bool Startup::loadLists() {
    try {
        m_session.loadCarrierIcons();
        m_session.loadKeyNames();
        return true;
    } catch (const Error& error) {
        return refuse(error.reason());
    }
}

void shutDown(Session& session, Progress& progress) {
    if (!session.isOpen())
        return;
    session.saveRuntime();
    session.arrangements().save();
    // Run on the open connection: closed and opened again, another program could come between.
    Maintenance(session).atExit(progress);
    session.closeConnection();
}

} // namespace tessaranth
