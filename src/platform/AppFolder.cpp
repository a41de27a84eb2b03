// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/AppFolder.h"

#include "platform/Errors.h"
#include "platform/FileWriter.h"
#include "platform/FolderLock.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryFile>

namespace tessaranth {

namespace {

const char* const companionFiles[] = {"tsrthres.dll", "tsrcps.dll", "tsrpfr.dll", "WKeys.dat"};
const QString catalogName = QStringLiteral("Tessaranth.tsb");
const QString configurationName = QStringLiteral("tsc.cfg");

QString text(const char* words) { return QCoreApplication::translate("AppFolder", words); }

QString inFolder(const QString& folder, const QString& name) { return folder + u'/' + name; }

/// An administrator may write into these, but a catalog has no business there.
bool isSystemFolder(const QString& folder) {
    static const QStringList folders{QStringLiteral("/bin"), QStringLiteral("/usr/bin"),
                                     QStringLiteral("/usr/games"), QStringLiteral("/usr/local/bin")};
    return folders.contains(QDir::cleanPath(folder));
}

/// Tried rather than asked: on Windows the attributes say nothing about the rights.
bool canBeWritten(const QString& folder) {
    QTemporaryFile probe(inFolder(folder, QStringLiteral("tsrtXXXXXX.tmp")));
    return probe.open();
}

bool isNewer(const QFileInfo& shipped, const QFileInfo& present) {
    return shipped.lastModified() > present.lastModified();
}

/// A file that is there is replaced only by a newer one of the program's own; never the catalog.
void fill(const QString& applicationFolder, const QString& shareFolder, bool isFirst, FirstStart firstStart) {
    // The copy keeps the time of the original, so that "newer" compares two versions of what was shipped and
    // not the day of the installation with the day of a build.
    const auto copy = [&](const QString& name, Existing existing) {
        copyFile(inFolder(shareFolder, name), inFolder(applicationFolder, name), existing);
    };
    for (const char* file : companionFiles) {
        const QString name = QString::fromLatin1(file);
        const QFileInfo shipped(inFolder(shareFolder, name));
        const QFileInfo present(inFolder(applicationFolder, name));
        if (shipped.isFile() && (present.exists() ? isNewer(shipped, present) : isFirst))
            copy(name, present.exists() ? Existing::Replace : Existing::Refuse);
    }
    if (firstStart == FirstStart::WithoutCatalog || !isFirst ||
        QFileInfo::exists(inFolder(applicationFolder, catalogName)) ||
        !QFileInfo(inFolder(shareFolder, catalogName)).isFile())
        return;
    // The log of a catalog that was deleted would be played into the new one.
    for (const char* log : {"-wal", "-shm", "-journal"})
        QFile::remove(inFolder(applicationFolder, catalogName + QLatin1String(log)));
    copy(catalogName, Existing::Refuse);
}

} // namespace

QString appFolder(const AppFolderChoice& choice) {
    if (!choice.fromEnvironment.isEmpty())
        return QDir::cleanPath(QDir(choice.fromEnvironment).absolutePath());
    QString program = QDir::cleanPath(choice.programFolder);
    if (QFileInfo(inFolder(program, configurationName)).isFile() ||
        (!isSystemFolder(program) && canBeWritten(program)))
        return program;
    return QDir::cleanPath(choice.userFolder);
}

QString appFolder() {
    // The window and the command line share one folder, whatever they call themselves.
    return appFolder({qEnvironmentVariable("TESSARANTH_HOME"), QCoreApplication::applicationDirPath(),
                      inFolder(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation),
                               QStringLiteral("Tessaranth"))});
}

QString shareFolder(const QString& programFolder) {
    const QString folder = QDir::cleanPath(inFolder(programFolder, QStringLiteral("../share/tessaranth")));
    return QFileInfo(folder).isDir() ? folder : QString();
}

QString shareFolder() { return shareFolder(QCoreApplication::applicationDirPath()); }

QString fillAppFolder(const QString& applicationFolder, const QString& shareFolder, FirstStart firstStart) {
    const auto isFirst = [&] { return !QFileInfo::exists(inFolder(applicationFolder, configurationName)); };
    if (isFirst() && !QDir().mkpath(applicationFolder))
        return text("The folder %1 could not be made.").arg(applicationFolder);
    if (shareFolder.isEmpty() || QDir(shareFolder) == QDir(applicationFolder))
        return {};
    // Several processes may start at once on an empty folder; the first one fills it.
    const FolderLock lock(applicationFolder);
    if (!lock.isFree())
        return text("Another program is filling the folder %1.").arg(applicationFolder);
    try {
        fill(applicationFolder, shareFolder, isFirst(), firstStart);
        return {};
    } catch (const FileError& error) {
        return error.reason();
    }
}

} // namespace tessaranth
