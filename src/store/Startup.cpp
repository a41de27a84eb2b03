// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Startup.h"

#include "platform/AppFolder.h"
#include "platform/FileWriter.h"
#include "platform/OperatingSystem.h"
#include "platform/Registry.h"
#include "store/CleanedCopy.h"
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

QString tr(const char* text) { return QCoreApplication::translate("Startup", text); }

} // namespace

Startup::Startup(Session& session, Options options, Progress& progress)
    : m_session(session), m_options(std::move(options)), m_progress(progress) {}

StartResult Startup::run() {
    m_result = {};
    if (fillApplicationFolder() && passVersionGate() && locateDatabase() && checkCompanionFiles()) {
        m_result.started = openCatalog();
        while (!m_result.started && m_options.asksForCatalog && !m_result.reason.isEmpty() && takeAnother())
            m_result.started = openCatalog();
    }
    if (m_result.started) {
        m_session.setDesktopScheme(desktopScheme());
        m_session.history().open();
    } else {
        m_session.closeConnection();
    }
    return m_result;
}

bool Startup::openCatalog() {
    const bool opened =
        openConnection(false) && openConfiguration() && readConfiguration() && upgradeSchema() && loadLists();
    if (opened && m_isChosen)
        m_session.configuration().write(QStringLiteral("Data folders"), QStringLiteral("Database"),
                                        m_session.databasePath());
    return opened;
}

// ---- another catalog than the one that cannot be opened

void Startup::useCatalog(const QString& path) {
    m_session.closeConnection();
    m_session.setDatabasePath(path);
    m_result = {};
    m_isForeign = false;
    m_isChosen = true;
}

bool Startup::takeCleaned() {
    const QString source = m_session.databasePath();
    const QString target = CleanedCopy::placeFor(source);
    Question question{
        applicationTitle,
        m_result.reason + QStringLiteral("\n\n") +
            tr("Open a cleaned copy of it instead? It holds the rows only, is written to %1, and "
               "the catalog stays as it is.")
                .arg(target),
        {Answer::Yes, Answer::No},
        Answer::No,
        MessageIcon::Warning};
    if (m_session.messages().ask(question) != Answer::Yes)
        return false;
    try {
        const CleanedCopy copy = CleanedCopy::write(source, target, m_progress);
        if (copy.left > 0)
            m_session.messages().warning(
                applicationTitle, tr("%1 row(s) have no usable key and are not in the copy.").arg(copy.left));
        useCatalog(target);
        return true;
    } catch (const Error& error) {
        m_session.messages().warning(applicationTitle, error.reason());
        return false;
    }
}

bool Startup::takeAnother() {
    if (m_options.hideSplash)
        m_options.hideSplash();
    if (m_isForeign && takeCleaned())
        return true;
    const Question question{applicationTitle,
                            m_result.reason + QStringLiteral("\n\n") + tr("Open another catalog?"),
                            {Answer::Yes, Answer::No},
                            Answer::Yes,
                            MessageIcon::Critical};
    m_result.reason.clear(); // the question tells it
    if (m_session.messages().ask(question) != Answer::Yes)
        return false;
    FileRequest request;
    request.title = tr("Open another catalog");
    request.folder = QFileInfo(m_session.databasePath()).absolutePath();
    request.filterName = tr("Catalogs (*.tsb)");
    request.patterns = QStringList{QStringLiteral("*.tsb")};
    const QStringList chosen = m_session.messages().chooseFiles(request);
    if (chosen.isEmpty())
        return false;
    useCatalog(chosen.front());
    return true;
}

StartResult Startup::openForInspection() {
    m_result = {};
    m_result.started = locateDatabase() && openConnection(true);
    return m_result;
}

QString Startup::catalogToOpen() { return locateDatabase() ? m_session.databasePath() : QString(); }

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
    // Read as empty, the configuration would be taken for one without settings, and the catalog and its files
    // would be looked for elsewhere.
    const Configuration& configuration = m_session.configuration();
    if (const QString fault = configuration.exists() ? configuration.fault() : QString(); !fault.isEmpty())
        return refuse(fault);
    if (!m_options.catalog.isEmpty()) {
        m_session.setOtherCatalog(m_options.catalog);
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
        m_isForeign = error.kind() == OpenError::Kind::Foreign;
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
        QDir().mkpath(m_session.configuredFolder(folder));
    // A catalog that was named for this time only is not the one of every later start.
    if (!configuration.create(m_session.isConfiguredCatalog() ? m_session.databasePath()
                                                              : m_session.applicationFile(catalogName))) {
        m_session.messages().critical(applicationTitle,
                                      QStringLiteral("Unable to create the configuration file!\n") +
                                          QStringLiteral("Cannot continue"));
        return refuse(configuration.failure());
    }
    return true;
}

bool Startup::readConfiguration() {
    m_session.configuration().addMissingKeys();
    m_session.loadRuntime();
    removeLeftovers();
    m_session.setUserAgent(userAgent());
    recordInstallation(m_session.applicationFolder(), QStringLiteral(TESSARANTH_VERSION));
    return true;
}

void Startup::removeLeftovers() {
    QStringList folders{m_session.applicationFolder(), QFileInfo(m_session.databasePath()).path()};
    for (const auto folder : {Session::Folder::Images, Session::Folder::Documents, Session::Folder::Labels})
        folders << m_session.dataFolder(folder);
    const QString copies =
        m_session.configuration().read(QStringLiteral("Maintenance"), QStringLiteral("DestFolder"));
    if (!copies.isEmpty())
        folders << copies;
    folders.removeDuplicates();
    for (const QString& folder : std::as_const(folders))
        tessaranth::removeLeftovers(folder);
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
    const bool runtimeSaved = session.saveRuntime();
    if (!session.arrangements().save() || !runtimeSaved)
        session.messages().warning(applicationTitle, session.configuration().failure());
    // Run on the open connection: closed and opened again, another program could come between.
    Maintenance(session).atExit(progress);
    session.closeConnection();
}

} // namespace tessaranth
