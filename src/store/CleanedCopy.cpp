// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/CleanedCopy.h"

#include "platform/Errors.h"
#include "platform/Progress.h"
#include "store/ConnectionImpl.h"
#include "store/UpgradeSteps.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <filesystem>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("CleanedCopy", text); }

/// Copies one table after the other.
class Copying {
public:
    Copying(SQLite::Database& source, SQLite::Database& target) : m_source(source), m_target(target) {}
    CleanedCopy run(Progress& progress);

private:
    using Columns = std::vector<const OwnTable::Column*>;
    void readVersion();
    Columns columnsOf(const OwnTable& table, const QByteArrayList& present) const;
    static QByteArray definition(const OwnTable& table, const Columns& columns);
    void copy(const OwnTable& table);
    void copyRows(const OwnTable& table, const QByteArrayList& names);
    void copySequence(const OwnTable& table);
    bool bind(SQLite::Statement& add, const SQLite::Statement& row, const OwnTable& table,
              const std::vector<bool>& required);

    SQLite::Database& m_source;
    SQLite::Database& m_target;
    QSet<int> m_steps;
    CleanedCopy m_result;
};

void Copying::readVersion() {
    if (!plainColumns(m_source, "DbUpgrades").contains("DbUpgradeCode"))
        return;
    SQLite::Statement run(m_source, "SELECT DbUpgradeCode FROM DbUpgrades");
    while (run.executeStep())
        m_steps.insert(run.getColumn(0).getInt());
}

// A column that an upgrade step is still to add stays away, or the step would not be applied.
Copying::Columns Copying::columnsOf(const OwnTable& table, const QByteArrayList& present) const {
    Columns columns;
    for (const OwnTable::Column& column : table.columns)
        if (column.step == 0 || m_steps.contains(column.step) || present.contains(column.name.toLower()))
            columns.push_back(&column);
    return columns;
}

QByteArray Copying::definition(const OwnTable& table, const Columns& columns) {
    QByteArrayList parts;
    for (const OwnTable::Column* column : columns) {
        QByteArray part = quotedName(column->name) + ' ' + column->type;
        if (column->isRequired)
            part += " NOT NULL";
        if (column->name == table.key)
            part += " PRIMARY KEY AUTOINCREMENT";
        else if (!column->defaultValue.isEmpty())
            part += " DEFAULT " + column->defaultValue;
        parts << part;
    }
    return "CREATE TABLE " + quotedName(table.name) + " (" + parts.join(", ") + ')';
}

bool Copying::bind(SQLite::Statement& add, const SQLite::Statement& row, const OwnTable& table,
                   const std::vector<bool>& required) {
    for (int i = 0; i < row.getColumnCount(); ++i) {
        const SQLite::Column cell = row.getColumn(i);
        if (i == 0 && !table.key.isEmpty() && !cell.isInteger())
            return false;
        if (cell.isNull() && required[size_t(i)])
            add.bind(i + 1, 0); // as in every row of ours; a text of that value is shown as it stands
        else if (cell.isNull())
            add.bind(i + 1);
        else if (cell.isInteger())
            add.bind(i + 1, cell.getInt64());
        else if (cell.isFloat())
            add.bind(i + 1, cell.getDouble());
        else
            add.bind(i + 1, cell.getString());
    }
    return true;
}

void Copying::copyRows(const OwnTable& table, const QByteArrayList& names) {
    QByteArrayList quotedNames, places;
    std::vector<bool> required;
    for (const QByteArray& name : names) {
        quotedNames << quotedName(name);
        places << QByteArray("?");
        for (const OwnTable::Column& column : table.columns)
            if (column.name == name)
                required.push_back(column.isRequired);
    }
    const QByteArray list = quotedNames.join(", ");
    SQLite::Statement row(m_source,
                          "SELECT " + list.toStdString() + " FROM " + quotedName(table.name).toStdString());
    SQLite::Statement add(m_target, "INSERT OR IGNORE INTO " + quotedName(table.name).toStdString() + " (" +
                                        list.toStdString() + ") VALUES (" + places.join(", ").toStdString() +
                                        ")");
    while (row.executeStep()) {
        const bool kept = bind(add, row, table, required) && add.exec() == 1;
        ++(kept ? m_result.rows : m_result.left);
        add.reset();
        add.clearBindings();
    }
}

// The highest number ever given outlives its row.
void Copying::copySequence(const OwnTable& table) {
    if (table.key.isEmpty() || !m_source.tableExists("sqlite_sequence"))
        return;
    SQLite::Statement last(m_source, "SELECT seq FROM sqlite_sequence WHERE name = ?1 COLLATE NOCASE");
    last.bind(1, table.name.toStdString());
    if (!last.executeStep() || !last.getColumn(0).isInteger())
        return;
    SQLite::Statement keep(m_target, "UPDATE sqlite_sequence SET seq = max(seq, ?2) WHERE name = ?1");
    SQLite::Statement add(m_target, "INSERT INTO sqlite_sequence (name, seq) VALUES (?1, ?2)");
    keep.bind(1, table.name.toStdString());
    keep.bind(2, last.getColumn(0).getInt64());
    if (keep.exec() > 0)
        return;
    add.bind(1, table.name.toStdString());
    add.bind(2, last.getColumn(0).getInt64());
    add.exec();
}

void Copying::copy(const OwnTable& table) {
    QByteArrayList present;
    for (const QByteArray& column : plainColumns(m_source, table.name))
        present << column.toLower();
    if (present.isEmpty())
        return; // of a later version, and made by the upgrade
    const Columns columns = columnsOf(table, present);
    m_target.exec(definition(table, columns).toStdString());
    QByteArrayList names;
    for (const OwnTable::Column* column : columns)
        if (present.contains(column->name.toLower()))
            names << column->name;
    copyRows(table, names);
    copySequence(table);
}

CleanedCopy Copying::run(Progress& progress) {
    progress.stage(tr("Writing a cleaned copy"));
    readVersion();
    SQLite::Transaction transaction(m_target);
    qint64 done = 0;
    for (const OwnTable& table : ownTables()) {
        copy(table);
        progress.step(++done, qint64(ownTables().size()));
    }
    transaction.commit();
    return m_result;
}

} // namespace

QString CleanedCopy::placeFor(const QString& catalog) {
    const QFileInfo file(catalog);
    const QString start = file.absolutePath() + u'/' + file.completeBaseName() + tr("-cleaned");
    const QString ending = QStringLiteral(".tsb");
    QString place = start + ending;
    for (int number = 2; QFileInfo::exists(place); ++number)
        place = start + QString::number(number) + ending;
    return place;
}

CleanedCopy CleanedCopy::write(const QString& catalog, const QString& target, Progress& progress) {
    if (QFileInfo::exists(target))
        throw FileError(tr("%1 already exists.").arg(target));
    checkCatalogFile(catalog);
    const QString temporary = target + QStringLiteral(".new");
    QFile::remove(temporary);
    try {
        SQLite::Database source(catalog.toStdString(), SQLite::OPEN_READWRITE);
        lockSafely(source);
        CatalogShape shape = shapeOf(source);
        shape.foreign.clear();
        checkShape(shape, catalog, newestUpgradeCode);
        CleanedCopy result;
        {
            SQLite::Database copy(temporary.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
            result = Copying(source, copy).run(progress);
        }
        std::filesystem::rename(temporary.toStdU16String(), target.toStdU16String());
        return result;
    } catch (const Error&) {
        QFile::remove(temporary);
        throw;
    } catch (const std::exception& error) {
        QFile::remove(temporary);
        throw FileError(
            tr("%1 cannot be copied to %2: %3").arg(catalog, target, QString::fromUtf8(error.what())));
    }
}

} // namespace tessaranth
