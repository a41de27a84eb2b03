// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Session.h"

#include "store/History.h"
#include "store/KeyNamesFile.h"

#include <QDir>
#include <QFileInfo>
#include <iterator>

namespace tessaranth {

namespace {

const QString runtimeSection = QStringLiteral("Runtime");

struct FolderKey {
    Session::Folder folder;
    const char* section;
    const char* key;
    const char* name;
};
const FolderKey folderKeys[] = {{Session::Folder::Images, "Data folders", "Images", "Tessaranth_Images"},
                                {Session::Folder::Documents, "Data folders", "Documents", "Tessaranth_Docs"},
                                {Session::Folder::Labels, "Data folders", "Labels", "Tessaranth_Labels"},
                                {Session::Folder::Media, "Data folders", "Media", "Tessaranth_Media"},
                                {Session::Folder::Html, "Reports", "OutputDir", "Tessaranth_Html"}};

constexpr const char* commonName = "Tessaranth"; ///< what the names of the folders begin with

const FolderKey& keyOf(Session::Folder folder) {
    return *std::find_if(std::begin(folderKeys), std::end(folderKeys),
                         [folder](const FolderKey& candidate) { return candidate.folder == folder; });
}

/// By whatever links they are named; two that do not exist are compared by their paths.
bool isSamePlace(const QString& a, const QString& b) {
    const QFileInfo first(a), second(b);
    return first.exists() && second.exists()
               ? first.canonicalFilePath() == second.canonicalFilePath()
               : QDir::cleanPath(first.absoluteFilePath()) == QDir::cleanPath(second.absoluteFilePath());
}

} // namespace

Session::Session(QString applicationFolder, Messages& messages, const Clock& clock)
    : m_applicationFolder(std::move(applicationFolder)), m_messages(messages), m_clock(clock),
      m_configuration(applicationFile(QStringLiteral("tsc.cfg")), m_applicationFolder),
      m_temporaryFolder(QDir::tempPath() + QStringLiteral("/TsrtTemp")) {}

Session::~Session() { closeConnection(); }

QString Session::applicationFile(const QString& name) const { return m_applicationFolder + u'/' + name; }

QString Session::configuredFolder(Folder folder) const {
    const FolderKey& entry = keyOf(folder);
    QString path =
        m_configuration.read(QString::fromLatin1(entry.section), QString::fromLatin1(entry.key)).trimmed();
    if (path.isEmpty())
        path = applicationFile(QString::fromLatin1(entry.name));
    while (path.size() > 1 && (path.endsWith(u'/') || path.endsWith(u'\\')))
        path.chop(1);
    return path;
}

QString Session::dataFolder(Folder folder) const {
    const QString configured = configuredFolder(folder);
    const auto ending = QString::fromLatin1(keyOf(folder).name).mid(qsizetype(qstrlen(commonName)));
    return m_isConfiguredCatalog || folder == Folder::Html ? configured : besideCatalog(ending, configured);
}

QString Session::backupFile() const {
    const QString configured = applicationFile(QStringLiteral("Tessaranth.bak"));
    return m_isConfiguredCatalog ? configured : besideCatalog(QStringLiteral(".bak"), configured);
}

// "Sample.tsb" has "Sample_Images", but a copy "Sample.bak" beside it must not share them; and where the
// configured catalog has its own under that name, this one has "Sample.tsb_Images".
QString Session::besideCatalog(const QString& ending, const QString& configured) const {
    const QFileInfo catalog(m_databasePath);
    const QString folder = catalog.path() + u'/';
    const QString usual =
        folder + (catalog.suffix() == u"tsb" ? catalog.completeBaseName() : catalog.fileName()) + ending;
    return isSamePlace(usual, configured) ? folder + catalog.fileName() + ending : usual;
}

void Session::setOtherCatalog(const QString& path) {
    QString configured = m_configuration.read(QStringLiteral("Data folders"), QStringLiteral("Database"));
    if (configured.isEmpty())
        configured = applicationFile(QStringLiteral("Tessaranth.tsb"));
    m_databasePath = path;
    m_isConfiguredCatalog = isSamePlace(path, configured);
}

void Session::loadCarrierIcons() {
    m_carrierIcons.clear();
    Query run =
        connection().query(QStringLiteral("SELECT SupportID, IconName FROM Supports WHERE DefIcon = True"));
    while (run.next())
        m_carrierIcons.insert(run.integer(0), run.text(1));
}

void Session::loadKeyNames() {
    m_keyNames.clear();
    for (const int language : {interfaceLanguage(), englishLanguage}) {
        Query run = connection().query(QStringLiteral("SELECT * FROM WKeys WHERE LangID = ") +
                                       QString::number(language));
        while (run.next())
            m_keyNames.push_back({run.integer(2), run.text(3)});
        if (!m_keyNames.empty())
            return;
    }
}

void Session::loadRuntime() {
    m_runtime.clear();
    for (const Configuration::Setting& setting : m_configuration.defaults(m_databasePath))
        if (setting.section == runtimeSection)
            m_runtime.insert(setting.key, m_configuration.read(runtimeSection, setting.key));
}

// Only what has changed: the file may have been edited meanwhile.
bool Session::saveRuntime() {
    std::vector<ProfileFile::Entry> changed;
    for (auto it = m_runtime.constBegin(); it != m_runtime.constEnd(); ++it)
        if (m_configuration.read(runtimeSection, it.key()) != it.value())
            changed.push_back({runtimeSection, it.key(), it.value()});
    return changed.empty() || m_configuration.write(changed);
}

void Session::setConnection(std::unique_ptr<Connection> connection) {
    closeConnection();
    m_connection = std::move(connection);
    m_connection->setAnnouncer([this](const CatalogChanges& changes) { m_changes.announce(changes); });
    m_history = std::make_unique<History>(*this);
    m_connection->setKeeper(m_history.get());
    m_connection->setNotice([this](const QString& text) { m_messages.warning(applicationTitle, text); });
}

void Session::closeConnection() {
    if (m_connection)
        m_connection->setKeeper(nullptr);
    m_history.reset();
    m_connection.reset();
}

StepFiles& Session::stepFiles() { return m_history->stepFiles(); }

} // namespace tessaranth
