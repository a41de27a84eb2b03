// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/CommandLine.h"

#include "support/TestHome.h"

#include <QDir>
#include <QDirIterator>
#include <QTest>
#ifdef Q_OS_UNIX
#include <csignal>
#include <grp.h>
#include <sys/resource.h>
#include <unistd.h>
#endif

namespace tessaranth {

QStringList CliResult::lines() const {
    QStringList lines = out.split(u'\n');
    lines.removeLast();
    return lines;
}

#ifdef Q_OS_UNIX
constexpr unsigned nobody = 65534;

bool canLimitFiles() { return true; }
bool canDropRights() { return geteuid() == 0; }

static void give(const QString& path, unsigned owner) {
    if (chown(QFile::encodeName(path).constData(), owner, owner) != 0)
        QTest::qFail(qPrintable("cannot give away " + path), __FILE__, __LINE__);
}

void giveToNobody(const QString& folder) {
    give(folder, nobody);
    QDirIterator entries(folder, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden,
                         QDirIterator::Subdirectories);
    while (entries.hasNext())
        give(entries.next(), nobody);
}

void takeFromNobody(const QString& path) {
    give(path, 0);
    QFile::setPermissions(path, QFile::permissions(path) | QFile::ReadOther | QFile::ExeOther);
}

static void limit(QProcess& process, const CliOptions& options) {
    process.setChildProcessModifier([largest = options.largestFile, asNobody = options.asNobody] {
        if (largest > 0) {
            // Without its signal the limit is an error of write(), as on a full disk.
            std::signal(SIGXFSZ, SIG_IGN);
            const rlimit limit{rlim_t(largest), rlim_t(largest)};
            setrlimit(RLIMIT_FSIZE, &limit);
        }
        if (asNobody && (setgroups(0, nullptr) != 0 || setgid(nobody) != 0 || setuid(nobody) != 0))
            _exit(99);
    });
}
#else
bool canLimitFiles() { return false; }
bool canDropRights() { return false; }
void giveToNobody(const QString&) {}
void takeFromNobody(const QString&) {}
static void limit(QProcess&, const CliOptions&) {}
#endif

void prepareCli(QProcess& process, const QString& folder, const QStringList& words,
                const CliOptions& options) {
    process.setProgram(QStringLiteral(TESSARANTH_CLI));
    process.setArguments(QStringList{QStringLiteral("--app-dir"), folder} + words);
    process.setStandardInputFile(QProcess::nullDevice());
    if (!options.workingFolder.isEmpty())
        process.setWorkingDirectory(options.workingFolder);
    if (!options.outputFile.isEmpty())
        process.setStandardOutputFile(options.outputFile);
    if (options.largestFile > 0 || options.asNobody)
        limit(process, options);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (auto one = options.environment.cbegin(); one != options.environment.cend(); ++one)
        environment.insert(one.key(), one.value());
    process.setProcessEnvironment(environment);
}

CliResult runCli(const QString& folder, const QStringList& words, const CliOptions& options) {
    QProcess process;
    prepareCli(process, folder, words, options);
    process.start();
    const bool ended = process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit;
    return {ended ? process.exitCode() : -1, QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

QMap<QString, QByteArray> filesOf(const QString& folder) {
    QMap<QString, QByteArray> files;
    QDirIterator entries(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString path = entries.next();
        files.insert(QDir(folder).relativeFilePath(path), bytesOf(path));
    }
    return files;
}

} // namespace tessaranth
