// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/OperatingSystem.h"

#include <QOperatingSystemVersion>
#include <QStringList>

#ifdef Q_OS_WIN
#include <qt_windows.h>
#else
#include <unistd.h>
#endif

namespace tessaranth {

namespace {

/// The first version, counted from the end of the table, that is not newer decides. Numbers after
/// Microsoft's list of OSVERSIONINFO values; 1111 and 2222 are the builds of the second editions.
struct NamedVersion {
    SystemVersion::Platform platform;
    int major;
    int minor;
    int build;
    const char* name;
};
constexpr NamedVersion versions[] = {
    {SystemVersion::Platform::Win32s, 0, 0, 0, "Windows 3.x"},
    {SystemVersion::Platform::Windows9x, 0, 0, 0, "95"},
    {SystemVersion::Platform::Windows9x, 4, 0, 1111, "95OSR2"},
    {SystemVersion::Platform::Windows9x, 4, 10, 0, "98"},
    {SystemVersion::Platform::Windows9x, 4, 10, 2222, "98SE"},
    {SystemVersion::Platform::Windows9x, 4, 90, 0, "ME"},
    {SystemVersion::Platform::WindowsNt, 0, 0, 0, "NT3"},
    {SystemVersion::Platform::WindowsNt, 3, 10, 0, "NT31"},
    {SystemVersion::Platform::WindowsNt, 3, 11, 0, "NT3"},
    {SystemVersion::Platform::WindowsNt, 3, 50, 0, "NT35"},
    {SystemVersion::Platform::WindowsNt, 3, 51, 0, "NT351"},
    {SystemVersion::Platform::WindowsNt, 4, 0, 0, "NT4"},
    {SystemVersion::Platform::WindowsNt, 5, 0, 0, "2000"},
    {SystemVersion::Platform::WindowsNt, 5, 1, 0, "XP"},
    {SystemVersion::Platform::WindowsNt, 6, 0, 0, "VISTA"},
};

} // namespace

QString operatingSystemName(const SystemVersion& version) {
    const auto numbers = [](const auto& v) { return std::tuple(v.major, v.minor, v.build); };
    QString name;
    for (const NamedVersion& candidate : versions) {
        if (candidate.platform == version.platform && numbers(candidate) <= numbers(version))
            name = QString::fromLatin1(candidate.name);
    }
    return name;
}

QString operatingSystemName() {
#ifdef Q_OS_WIN
    // No Windows that Qt runs on is of the older line.
    const auto current = QOperatingSystemVersion::current();
    return operatingSystemName({SystemVersion::Platform::WindowsNt, current.majorVersion(),
                                current.minorVersion(), current.microVersion()});
#else
    return QStringLiteral("VISTA");
#endif
}

QString versionGateMessage(const QString& operatingSystem) {
    // "& vbcrLf" stands in the message as users have always seen it.
    const QString start = QStringLiteral("Cannot continue! & vbcrLf");
    if (operatingSystem == u"95" || operatingSystem == u"95OSR2")
        return start + QStringLiteral("This program require at least Windows 98!");
    if (operatingSystem.startsWith(u"NT3"))
        return start + QStringLiteral("This program require at least Windows NT 4!");
    return {};
}

bool isAdministrator(const QString& operatingSystem) {
    static const QStringList withAdministrators{QStringLiteral("NT4"), QStringLiteral("2000"),
                                                QStringLiteral("XP"), QStringLiteral("VISTA")};
    if (!withAdministrators.contains(operatingSystem))
        return false;
#ifdef Q_OS_WIN
    SID_IDENTIFIER_AUTHORITY authority = SECURITY_NT_AUTHORITY;
    PSID group = nullptr;
    if (!AllocateAndInitializeSid(&authority, 2, SECURITY_BUILTIN_DOMAIN_RID, DOMAIN_ALIAS_RID_ADMINS, 0, 0,
                                  0, 0, 0, 0, &group))
        return false;
    BOOL isMember = FALSE;
    const bool isKnown = CheckTokenMembership(nullptr, group, &isMember);
    FreeSid(group);
    return isKnown && isMember;
#else
    return geteuid() == 0;
#endif
}

} // namespace tessaranth
