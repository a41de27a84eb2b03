// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/CommandLine.h"

#include "support/TestHome.h"

#include <QDir>
#include <QDirIterator>
#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#endif

namespace tessaranth {

QStringList CliResult::lines() const {
    QStringList lines = out.split(u'\n');
    lines.removeLast();
    return lines;
}

#ifdef Q_OS_UNIX
bool canLimitFiles() { return true; }

static void limitFiles(QProcess& process, qint64 largest) {
    process.setChildProcessModifier([largest] {
        // Without its signal the limit is an error of write(), as on a full disk.
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{rlim_t(largest), rlim_t(largest)};
        setrlimit(RLIMIT_FSIZE, &limit);
    });
}
#else
bool canLimitFiles() { return false; }

static void limitFiles(QProcess&, qint64) {}
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
    if (options.largestFile > 0)
        limitFiles(process, options.largestFile);
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
