// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Registry.h"

#ifdef Q_OS_WIN
#include <QDir>
#include <QSettings>
#endif

namespace tessaranth {

void recordInstallation([[maybe_unused]] const QString& applicationFolder,
                        [[maybe_unused]] const QString& version) {
#ifdef Q_OS_WIN
    for (const auto* hive : {"HKEY_CURRENT_USER", "HKEY_LOCAL_MACHINE"}) {
        QSettings record(QLatin1String(hive) + QStringLiteral("\\SOFTWARE\\Tessaranth\\Tessaranth\\Program"),
                         QSettings::NativeFormat);
        record.setValue(QStringLiteral("InstallPath"), QDir::toNativeSeparators(applicationFolder));
        record.setValue(QStringLiteral("Version"), version);
    }
#endif
}

QString userAgent() {
    QString agent;
#ifdef Q_OS_WIN
    agent = QSettings(QStringLiteral("HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\"
                                     "Internet Settings"),
                      QSettings::NativeFormat)
                .value(QStringLiteral("User Agent"))
                .toString();
#endif
    return agent.isEmpty() ? QStringLiteral("Mozilla/4.0 (compatible; MSIE 6.0; Win32)") : agent;
}

} // namespace tessaranth
