// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "platform/DesktopScheme.h"
#include "platform/Messages.h"
#include "store/Arrangements.h"
#include "store/ChangeAnnouncer.h"
#include "store/Configuration.h"
#include "store/Connection.h"
#include "store/Fields.h"
#include "store/clsDb.h"

#include <QHash>
#include <QMap>
#include <memory>

namespace tessaranth {

class History;
class StepFiles;

/// One musical key in the user's language.
struct KeyName {
    qint64 id = 0; ///< WKeys.KeyID
    QString name;
};

/// What every part of the program works inside: the folders, the configuration, the one connection and the
/// few tables that are read once at start-up. Made by Startup, passed to whoever needs it.
class Session {
public:
    enum class Folder { Images, Documents, Labels, Media, Html };

    Session(QString applicationFolder, Messages& messages, const Clock& clock);
    ~Session();

    Messages& messages() const { return m_messages; }
    const Clock& clock() const { return m_clock; }
    /// What opens files, folders and links; the system's own unless another was set.
    Desktop& desktop() const { return *m_desktop; }
    void setDesktop(Desktop& desktop) { m_desktop = &desktop; } ///< must outlive the session
    Configuration& configuration() { return m_configuration; }
    const Configuration& configuration() const { return m_configuration; }
    Connection& connection() { return *m_connection; }
    /// Whoever shows what the catalog holds listens here; lives as long as the session, whatever is open.
    ChangeAnnouncer& changes() { return m_changes; }
    /// What was done to the catalog that is open, to be taken back; and the files of cards, which are written
    /// and removed with their rows. Only while a connection is open.
    History& history() { return *m_history; }
    StepFiles& stepFiles();
    bool isOpen() const { return m_connection != nullptr; }
    clsDb& fieldLengths() { return m_fieldLengths; }
    const Fields& fields() const { return m_fields; } ///< checks values before they are stored

    const QString& applicationFolder() const { return m_applicationFolder; }
    QString applicationFile(const QString& name) const; ///< full path of a file beside the program
    const QString& databasePath() const { return m_databasePath; }
    /// Without a trailing separator. Pictures, documents, logos and media belong to a catalog: those of the
    /// configured one lie where the configuration says, those of any other beside it, under its own name.
    QString dataFolder(Folder folder) const;
    QString configuredFolder(Folder folder) const; ///< whichever catalog is open
    QString backupFile() const; ///< of the open catalog; never that of the configured one for another
    bool isConfiguredCatalog() const { return m_isConfiguredCatalog; }
    const QString& temporaryFolder() const { return m_temporaryFolder; }
    const QString& userAgent() const { return m_userAgent; }
    bool isAdministrator() const { return m_isAdministrator; }
    DesktopScheme desktopScheme() const { return m_desktopScheme; }

    /// Icon names of the carriers with a built-in icon, by SupportID.
    const QHash<qint64, QString>& carrierIcons() const { return m_carrierIcons; }
    const std::vector<KeyName>& keyNames() const { return m_keyNames; }
    /// Reads the names of the musical keys in the user's language, in English where it has none.
    void loadKeyNames();
    void loadCarrierIcons();

    // The settings of the section Runtime: read at start-up, kept here while the program runs, written back
    // when it ends.
    QString runtime(const QString& key) const { return m_runtime.value(key); }
    void setRuntime(const QString& key, const QString& value) { m_runtime.insert(key, value); }
    void loadRuntime();
    bool saveRuntime(); ///< false when the configuration could not be written

    Arrangements& arrangements() { return m_arrangements; }

    void setDatabasePath(const QString& path) { m_databasePath = path; }
    /// A catalog that is opened in place of the configured one, unless it is the same file.
    void setOtherCatalog(const QString& path);
    void setUserAgent(const QString& userAgent) { m_userAgent = userAgent; }
    void setDesktopScheme(DesktopScheme scheme) { m_desktopScheme = scheme; }
    void setAdministrator(bool value) { m_isAdministrator = value; }
    void setConnection(std::unique_ptr<Connection> connection);
    void closeConnection();

private:
    QString besideCatalog(const QString& ending, const QString& configured) const;

    QString m_applicationFolder;
    Messages& m_messages;
    const Clock& m_clock;
    SystemDesktop m_systemDesktop;
    Desktop* m_desktop = &m_systemDesktop;
    Configuration m_configuration;
    Arrangements m_arrangements{m_configuration};
    ChangeAnnouncer m_changes;
    std::unique_ptr<Connection> m_connection;
    std::unique_ptr<History> m_history;
    clsDb m_fieldLengths;
    Fields m_fields{m_fieldLengths};
    QString m_databasePath;
    bool m_isConfiguredCatalog = true;
    QString m_temporaryFolder;
    QString m_userAgent;
    bool m_isAdministrator = false;
    DesktopScheme m_desktopScheme = DesktopScheme::NormalColor;
    QMap<QString, QString> m_runtime;
    QHash<qint64, QString> m_carrierIcons;
    std::vector<KeyName> m_keyNames;
};

} // namespace tessaranth
