// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMap>
#include <QProcess>
#include <QStringList>

namespace tessaranth {

/// What the command line came to.
struct CliResult {
    int code = -1; ///< -1 when it crashed or did not end within a minute
    QString out;
    QString err;
    QStringList lines() const; ///< of `out`, without the empty one at the end
};

struct CliOptions {
    QString workingFolder = {};
    QString outputFile = {};
    /// No file may grow beyond this many bytes: what a full disk looks like to the program. 0 for no limit.
    /// Has no effect where the system knows no such limit; see `canLimitFiles`.
    qint64 largestFile = 0;
    bool asNobody = false; ///< as a user without rights; see `canDropRights`
    QMap<QString, QString> environment = {};
};

bool canLimitFiles();
/// Whether this test runs as an administrator, who alone can give files away and start programs as nobody.
bool canDropRights();
void giveToNobody(const QString& folder); ///< with all that is in it
void takeFromNobody(const QString& path);

/// Prepares the command line on the given application folder; without terminal, so nobody can be asked.
void prepareCli(QProcess& process, const QString& folder, const QStringList& words,
                const CliOptions& options = {});
CliResult runCli(const QString& folder, const QStringList& words, const CliOptions& options = {});

/// The bytes of every file below a folder, by its path in it.
QMap<QString, QByteArray> filesOf(const QString& folder);

} // namespace tessaranth
