// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Maintenance.h"

#include "store/Guarded.h"
#include "store/TextIndex.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("Maintenance", text); }
const QString section = QStringLiteral("Maintenance");

} // namespace

Maintenance::Maintenance(Session& session) : m_session(session) {}

QString Maintenance::backupPath() const { return m_session.backupFile(); }

bool Maintenance::run(const QString& stage, Progress& progress, const std::function<void()>& work) {
    progress.stage(stage);
    return guarded(m_session, [&] {
        work();
        progress.percentage(100);
    });
}

bool Maintenance::compact(Progress& progress) {
    return run(tr("Compacting the catalog"), progress, [this] { m_session.connection().compact(); });
}

bool Maintenance::backup(Progress& progress) {
    return run(tr("Backing up the catalog"), progress, [&] {
        m_session.connection().copyTo(backupPath(), [&progress](int value) { progress.percentage(value); });
    });
}

bool Maintenance::copyToDestination(Progress& progress) {
    return run(tr("Copying the catalog"), progress, [&] {
        const QString folder = m_session.configuration().read(section, QStringLiteral("DestFolder"));
        if (folder.isEmpty())
            throw FileError(tr("No folder for the copy of the catalog is set."));
        if (!QFileInfo(folder).isDir())
            throw FileError(tr("The folder for the copy of the catalog, %1, is not available.").arg(folder));
        const QString target = folder + u'/' + QFileInfo(m_session.databasePath()).fileName();
        if (QFileInfo(target).canonicalFilePath() == QFileInfo(m_session.databasePath()).canonicalFilePath())
            throw FileError(tr("The folder for the copy of the catalog holds the catalog itself."));
        m_session.connection().copyTo(target, [&progress](int value) { progress.percentage(value); });
    });
}

bool Maintenance::empty(Progress& progress) {
    return run(tr("Emptying the catalog"), progress, [&] {
        Connection& connection = m_session.connection();
        const QStringList tables = connection.tables();
        Transaction transaction(connection, Transaction::Unrecorded());
        TextIndex(connection).drop(); // rather than taking every word out of it, row by row
        for (qsizetype i = 0; i < tables.size(); ++i) {
            if (!tables[i].startsWith(QLatin1String("MSys")))
                connection.execute(QStringLiteral("DELETE * FROM [%1]").arg(tables[i]));
            progress.step(i + 1, tables.size());
        }
        transaction.commit();
        QFile::remove(backupPath());
    });
}

void Maintenance::atExit(Progress& progress) {
    const Configuration& configuration = m_session.configuration();
    Connection& connection = m_session.connection();
    const bool changed = connection.changesOfSession() > 0;
    if (configuration.flag(section, QStringLiteral("Compact")) && connection.freePages() > 0)
        compact(progress);
    if (configuration.flag(section, QStringLiteral("Backup")) &&
        (changed || !QFileInfo::exists(backupPath())))
        backup(progress);
    if (configuration.flag(section, QStringLiteral("CopyDb")))
        copyToDestination(progress);
}

} // namespace tessaranth
