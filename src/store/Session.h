// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "platform/DesktopScheme.h"
#include "platform/Messages.h"
#include "store/Arrangements.h"
#include "store/Configuration.h"
#include "store/Connection.h"
#include "store/Fields.h"
#include "store/clsDb.h"

#include <QHash>
#include <QMap>
#include <memory>

namespace tessaranth {

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
    bool isOpen() const { return m_connection != nullptr; }
    clsDb& fieldLengths() { return m_fieldLengths; }
    const Fields& fields() const { return m_fields; } ///< checks values before they are stored

    const QString& applicationFolder() const { return m_applicationFolder; }
    QString applicationFile(const QString& name) const; ///< full path of a file beside the program
    const QString& databasePath() const { return m_databasePath; }
    QString dataFolder(Folder folder) const; ///< as configured; without a trailing separator
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
    void saveRuntime();

    Arrangements& arrangements() { return m_arrangements; }

    void setDatabasePath(const QString& path) { m_databasePath = path; }
    void setUserAgent(const QString& userAgent) { m_userAgent = userAgent; }
    void setDesktopScheme(DesktopScheme scheme) { m_desktopScheme = scheme; }
    void setAdministrator(bool value) { m_isAdministrator = value; }
    void setConnection(std::unique_ptr<Connection> connection);
    void closeConnection();

private:
    QString m_applicationFolder;
    Messages& m_messages;
    const Clock& m_clock;
    SystemDesktop m_systemDesktop;
    Desktop* m_desktop = &m_systemDesktop;
    Configuration m_configuration;
    Arrangements m_arrangements{m_configuration};
    std::unique_ptr<Connection> m_connection;
    clsDb m_fieldLengths;
    Fields m_fields{m_fieldLengths};
    QString m_databasePath;
    QString m_temporaryFolder;
    QString m_userAgent;
    bool m_isAdministrator = false;
    DesktopScheme m_desktopScheme = DesktopScheme::NormalColor;
    QMap<QString, QString> m_runtime;
    QHash<qint64, QString> m_carrierIcons;
    std::vector<KeyName> m_keyNames;
};

} // namespace tessaranth
