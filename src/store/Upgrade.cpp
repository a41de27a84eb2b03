// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Upgrade.h"

#include "platform/Volumes.h"
#include "store/KeyNamesFile.h"
#include "store/Recordset.h"
#include "store/Session.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("Upgrade", text); }

UpgradeResult::Kind kindOf(const Error& error) {
    const auto* sql = dynamic_cast<const SqlError*>(&error);
    if (sql && sql->isDamage())
        return UpgradeResult::Kind::Damaged;
    return !sql || sql->isStorageFailure() ? UpgradeResult::Kind::Stopped : UpgradeResult::Kind::FailedAtStep;
}

} // namespace

QString UpgradeResult::text() const {
    switch (kind) {
    case Kind::Current:
    case Kind::NoMediaFolder:
        return {};
    case Kind::Upgraded:
        return tr("The catalog has been brought up to date (%n step(s)).")
            .replace(QLatin1String("%n"), QString::number(applied.size()));
    case Kind::Newer:
        return tr("The catalog was written by a newer version of the program.");
    case Kind::Damaged:
        return tr("The catalog is damaged: %1").arg(reason);
    case Kind::Stopped:
        return tr("The catalog could not be brought up to date: %1").arg(reason);
    case Kind::FailedAtStep:
        if (failedStep == 0)
            return tr("The catalog could not be brought fully up to date: %1").arg(reason);
        return tr("The catalog could not be brought fully up to date: step %1 failed. It is tried again at "
                  "the next "
                  "start.")
            .arg(failedStep);
    }
    return {};
}

Upgrade::Upgrade(Session& session) : m_session(session), m_connection(session.connection()) {}

UpgradeResult Upgrade::run(Progress& progress) {
    m_result = {};
    try {
        progress.stage(tr("Checking the catalog's version"));
        if (!createMissingTables())
            return m_result;
        Recordset upgrades = Recordset::open(m_connection, QStringLiteral("SELECT * FROM DbUpgrades"));
        const auto steps = upgradeSteps();
        for (size_t i = 0; i < steps.size(); ++i) {
            progress.step(qint64(i), qint64(steps.size()));
            upgrades.setFilter(QStringLiteral("DbUpgradeCode = ") + QString::number(steps[i].code));
            if (upgrades.isEmpty() && !applyStep(steps[i], upgrades, progress))
                return m_result;
        }
        QFile indexes(QStringLiteral(":/schema/indexes.sql"));
        if (indexes.open(QIODevice::ReadOnly)) {
            Transaction transaction(m_connection, Transaction::Unrecorded());
            m_connection.runNative(indexes.readAll());
            transaction.commit();
        }
        progress.percentage(100);
    } catch (const Error& error) {
        m_result.kind = kindOf(error);
        m_result.reason = error.reason();
        return m_result;
    }
    if (m_result.kind == UpgradeResult::Kind::Current && !m_result.applied.empty())
        m_result.kind = UpgradeResult::Kind::Upgraded;
    return m_result;
}

// ---- tables

bool Upgrade::createMissingTables() {
    for (const AddedTable& table : addedTables()) {
        if (m_connection.tables().contains(QLatin1String(table.name), Qt::CaseInsensitive))
            continue;
        Transaction transaction(m_connection, Transaction::Unrecorded());
        if (!m_connection.attempt(QString::fromUtf8(table.statement)))
            continue;
        if (QLatin1String(table.name) == QLatin1String("WKeys"))
            fillKeyNames();
        transaction.commit();
    }
    return true;
}

void Upgrade::fillKeyNames() {
    Recordset keys = Recordset::open(m_connection, QStringLiteral("SELECT * FROM WKeys"));
    for (const KeyNameLine& line : readKeyNames(m_session.applicationFile(QStringLiteral("WKeys.dat"))))
        keys.add({{QStringLiteral("LangID"), line.language},
                  {QStringLiteral("KeyID"), line.key},
                  {QStringLiteral("KeyName"), line.name}});
}

// ---- changes of columns

bool Upgrade::setDefault(const QString& table, const QString& column, const QString& defaultValue) {
    return m_connection.attempt(QStringLiteral("ALTER TABLE ") + table + QStringLiteral(" ALTER COLUMN ") +
                                column + QStringLiteral(" SET DEFAULT ") + defaultValue);
}

bool Upgrade::addColumn(const QString& table, const QString& column, const QString& type,
                        const QString& defaultValue) {
    return m_connection.attempt(QStringLiteral("ALTER TABLE ") + table + QStringLiteral(" ADD COLUMN ") +
                                column + u' ' + type) &&
           setDefault(table, column, defaultValue);
}

bool Upgrade::changeTypeAndDefault(const QString& table, const QString& column, const QString& type,
                                   const QString& defaultValue) {
    return m_connection.attempt(QStringLiteral("ALTER TABLE ") + table + QStringLiteral(" ALTER COLUMN ") +
                                column + u' ' + type) &&
           setDefault(table, column, defaultValue);
}

bool Upgrade::changeWidth(const QString& table, const QString& column, const QString& typeWord, int width) {
    return m_connection.attempt(QStringLiteral("ALTER TABLE ") + table + QStringLiteral(" ALTER COLUMN ") +
                                column + u' ' + typeWord + u'(' + QString::number(width) + u')');
}

// ---- numbered steps

bool Upgrade::applyChange(const UpgradeStep& step) {
    const QString table = QLatin1String(step.table);
    const QString column = QLatin1String(step.column);
    const QString type = QLatin1String(step.type);
    switch (step.change) {
    case UpgradeStep::Change::AddColumn:
        return addColumn(table, column, type, QLatin1String(step.defaultValue));
    case UpgradeStep::Change::ChangeTypeAndDefault:
        return changeTypeAndDefault(table, column, type, QLatin1String(step.defaultValue));
    case UpgradeStep::Change::ChangeWidth:
        return changeWidth(table, column, type, step.width);
    case UpgradeStep::Change::Media:
        return changeMedia(step);
    case UpgradeStep::Change::AddTable:
        return m_connection.attempt(type);
    }
    return false;
}

bool Upgrade::changeMedia(const UpgradeStep& step) {
    const QString table = QLatin1String(step.table);
    if (!changeWidth(table, QLatin1String(step.column), QLatin1String(step.type), step.width))
        return false;
    for (const MediaColumn& column : mediaColumns())
        if (!addColumn(table, QLatin1String(column.name), QLatin1String(column.type),
                       QLatin1String(column.defaultValue)))
            return false;
    return true;
}

// Rows of older versions name their file with its whole path; the facts of file and volume are read once,
// here, and stay as they are when the file is no longer there.
void Upgrade::migrateMedia(Progress& progress) {
    Recordset media = Recordset::open(m_connection, QStringLiteral("SELECT * FROM Media"));
    progress.stage(tr("Reading the facts of the media files"));
    for (int row = 0; row < media.rowCount(); ++row) {
        const QString path = media.value(row, QStringLiteral("MediaFile")).toText();
        const qsizetype cut = qMax(path.lastIndexOf(u'\\'), path.lastIndexOf(u'/'));
        // Of a file that is not there nobody can say on which volume it was.
        const Volume volume = QFileInfo::exists(path) ? volumeOf(path) : Volume();
        media.update(row, {{QStringLiteral("MediaFolder"), path.left(qMax<qsizetype>(cut, 0))},
                           {QStringLiteral("MediaFile"), path.mid(cut + 1)},
                           {QStringLiteral("MediaSize"), QFileInfo(path).size()},
                           {QStringLiteral("MediaType"), fileTypeName(path).left(250)},
                           {QStringLiteral("VolumeName"), volume.name.left(33)},
                           {QStringLiteral("VolumeType"), volume.type.left(20)}});
        progress.step(row + 1, media.rowCount());
    }
}

// A step whose column is there already fails as it must and stays unrecorded: so in a catalog that has been
// emptied, at every start. Nothing is wrong with such a catalog.
bool Upgrade::isAlreadySo(const UpgradeStep& step) const {
    if (step.change == UpgradeStep::Change::AddTable)
        return m_connection.tables().contains(QLatin1String(step.table), Qt::CaseInsensitive);
    if (step.change != UpgradeStep::Change::AddColumn && step.change != UpgradeStep::Change::Media)
        return false;
    const QStringList columns = m_connection.columnsOf(QLatin1String(step.table));
    const char* last = step.change == UpgradeStep::Change::Media ? "VolumeType" : step.column;
    return columns.contains(QLatin1String(last), Qt::CaseInsensitive);
}

bool Upgrade::applyStep(const UpgradeStep& step, Recordset& upgrades, Progress& progress) {
    if (step.change == UpgradeStep::Change::Media) {
        const QString folder = m_session.dataFolder(Session::Folder::Media);
        // Another catalog than the configured one gets its folders when it needs them.
        if (m_session.isConfiguredCatalog() && !QFileInfo(folder).isDir()) {
            m_session.messages().critical(applicationTitle, QStringLiteral("Unable to locate ") + folder +
                                                                u'\n' +
                                                                QStringLiteral("Please fix the problem"));
            m_result.kind = UpgradeResult::Kind::NoMediaFolder;
            m_result.failedStep = step.code;
            return false;
        }
    }
    const bool alreadySo = isAlreadySo(step);
    Transaction transaction(m_connection, Transaction::Unrecorded());
    if (applyChange(step)) {
        upgrades.add({{QStringLiteral("DbUpgradeCode"), step.code}});
        for (const char* statement : step.data)
            m_connection.attempt(QString::fromUtf8(statement));
        if (step.change == UpgradeStep::Change::Media)
            migrateMedia(progress);
        m_result.applied.push_back(step.code);
    } else if (!alreadySo && m_result.failedStep == 0) {
        m_result.kind = UpgradeResult::Kind::FailedAtStep;
        m_result.failedStep = step.code;
    }
    transaction.commit();
    return true;
}

} // namespace tessaranth
