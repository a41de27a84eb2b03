// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/CatalogShape.h"

#include "store/JetSql.h"
#include "store/TextIndex.h"
#include "store/UpgradeSteps.h"

#include <QCoreApplication>
#include <QFile>
#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <SQLiteCpp/SQLiteCpp.h>
#include <algorithm>
#include <sqlite3.h>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("CatalogShape", text); }

// ---- the tables that are ours

int stepOf(const QByteArray& table, const QByteArray& column) {
    for (const UpgradeStep& step : upgradeSteps()) {
        if (table != step.table)
            continue;
        if (step.change == UpgradeStep::Change::AddColumn && column == step.column)
            return step.code;
        if (step.change == UpgradeStep::Change::Media)
            for (const MediaColumn& added : mediaColumns())
                if (column == added.name)
                    return step.code;
    }
    return 0;
}

OwnTable ownTable(SQLite::Database& database, const QByteArray& name) {
    OwnTable table{name, {}, false, {}};
    for (const AddedTable& added : addedTables())
        table.isAdded = table.isAdded || name == added.name;
    for (const UpgradeStep& step : upgradeSteps())
        table.isAdded = table.isAdded || (step.change == UpgradeStep::Change::AddTable && name == step.table);
    SQLite::Statement run(database,
                          "SELECT name, type, \"notnull\", dflt_value, pk FROM pragma_table_info(?1)");
    run.bind(1, name.toStdString());
    while (run.executeStep()) {
        OwnTable::Column column{run.getColumn(0).getText(), run.getColumn(1).getText(),
                                run.getColumn(3).getText(), run.getColumn(2).getInt() != 0, 0};
        column.step = table.isAdded ? 0 : stepOf(name, column.name);
        if (run.getColumn(4).getInt() != 0)
            table.key = column.name;
        table.columns.push_back(std::move(column));
    }
    return table;
}

std::vector<OwnTable> readOwnTables() {
    QFile schema(QStringLiteral(":/schema/catalog.sql"));
    if (!schema.open(QIODevice::ReadOnly))
        return {};
    SQLite::Database database(":memory:", SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
    database.exec(schema.readAll().toStdString());
    std::vector<OwnTable> tables;
    SQLite::Statement names(
        database, "SELECT name FROM sqlite_schema WHERE type = 'table' AND name NOT LIKE 'sqlite%'");
    while (names.executeStep())
        tables.push_back(ownTable(database, names.getColumn(0).getText()));
    return tables;
}

// ---- what a file has

bool isPlainName(const QByteArray& name) {
    return !name.isEmpty() && name.size() <= 64 && std::all_of(name.begin(), name.end(), [](char c) {
        return c == '_' || (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    });
}

QString shown(const QByteArray& name) {
    constexpr qsizetype longest = 40;
    QString text = QString::fromUtf8(name.left(4 * longest));
    for (QChar& c : text)
        if (!c.isPrint())
            c = u'?';
    return text.size() > longest ? text.left(longest) + QStringLiteral("...") : text;
}

/// The rows of the schema, by what they are.
class SchemaReading {
public:
    explicit SchemaReading(SQLite::Database& database) : m_database(database) {}
    CatalogShape run();

private:
    void sort(const QByteArray& type, const QByteArray& name, const QByteArray& sql);
    void sortVirtual(const QByteArray& name, const QByteArray& sql);
    void foreign(const QString& what, const QByteArray& name) { m_shape.foreign << what.arg(shown(name)); }
    void readUpgrades();
    void checkColumns(const QByteArray& table);
    void checkOwn(const OwnTable& own);
    bool hasKey(const QByteArray& table, const QByteArray& key);

    SQLite::Database& m_database;
    CatalogShape m_shape;
    QHash<QByteArray, QByteArray> m_tables;        ///< ordinary ones, as they are written, by lower case
    QHash<QByteArray, QSet<QByteArray>> m_columns; ///< of these, both in lower case
    QSet<int> m_upgrades;
};

void SchemaReading::sortVirtual(const QByteArray& name, const QByteArray& sql) {
    // Everything that an index of ours may be made with; another module's would run with its table's first
    // use.
    static const QRegularExpression ours(
        QStringLiteral("^CREATE VIRTUAL TABLE \\w+ USING fts5\\(words(, \\w+='[a-z0-9_ ]*')*\\)$"));
    const auto definitions = TextIndex::definitions();
    if (!TextIndex::isTable(name) || !ours.match(QString::fromUtf8(sql)).hasMatch())
        foreign(tr("virtual table %1"), name);
    else if (definitions.value(name) != sql)
        m_shape.hasOldIndex = true;
}

void SchemaReading::sort(const QByteArray& type, const QByteArray& name, const QByteArray& sql) {
    if (type == "table" && sql.left(14).toUpper() == "CREATE VIRTUAL") {
        sortVirtual(name, sql);
    } else if (type == "table") {
        if (!isPlainName(name))
            foreign(tr("table %1"), name);
        else if (!name.startsWith("sqlite_") && !TextIndex::isPart(name))
            m_tables.insert(name.toLower(), name);
    } else if (type == "trigger") {
        // One of ours that reads otherwise is of another version, or pretends to be: it is dropped unrun.
        if (!TextIndex::isPart(name))
            foreign(tr("trigger %1"), name);
        else if (TextIndex::definitions().value(name) != sql)
            m_shape.hasOldIndex = true;
    } else if (type == "view") {
        foreign(tr("view %1"), name);
    } else if (type != "index") {
        foreign(tr("unknown thing %1"), name);
    }
}

void SchemaReading::checkColumns(const QByteArray& table) {
    QSet<QByteArray>& known = m_columns[table.toLower()];
    SQLite::Statement run(m_database, "SELECT name, hidden FROM pragma_table_xinfo(?1)");
    run.bind(1, table.toStdString());
    while (run.executeStep()) {
        const QByteArray name = run.getColumn(0).getText();
        static const QList<QByteArray> ofTheRow{"rowid", "oid", "_rowid_"};
        if (run.getColumn(1).getInt() != 0)
            foreign(tr("computed column %1"), table + '.' + name);
        else if (!isPlainName(name) || ofTheRow.contains(name.toLower()))
            foreign(tr("column %1"), table + '.' + name);
        known.insert(name.toLower());
    }
}

void SchemaReading::readUpgrades() {
    const QByteArray table = "dbupgrades";
    if (!m_columns.value(table).contains("dbupgradecode"))
        return;
    SQLite::Statement run(m_database, "SELECT DbUpgradeCode FROM DbUpgrades");
    while (run.executeStep()) {
        const int code = int(std::clamp<qint64>(run.getColumn(0).getInt64(), 0, 1'000'000'000));
        m_upgrades.insert(code);
        int& newest = code < firstOwnUpgradeCode ? m_shape.newestUpgrade : m_shape.newestOwnUpgrade;
        newest = std::max(newest, code);
    }
}

/// Whether the key is what SQLite numbers the rows by; then it is a whole number in every row, and no two are
/// alike, whatever else is wrong with them.
bool SchemaReading::hasKey(const QByteArray& table, const QByteArray& key) {
    try {
        const SQLite::Statement run(m_database, ("SELECT rowid FROM " + quotedName(table)).toStdString());
        return QByteArray(run.getColumnName(0)).toLower() == (key.isEmpty() ? "rowid" : key.toLower());
    } catch (const SQLite::Exception& error) {
        if ((error.getErrorCode() & 0xff) != SQLITE_ERROR)
            throw;
        return false; // a table without such numbers
    }
}

void SchemaReading::checkOwn(const OwnTable& own) {
    const auto table = m_tables.constFind(own.name.toLower());
    if (table == m_tables.constEnd()) {
        if (!own.isAdded)
            m_shape.missing << tr("table %1").arg(QString::fromUtf8(own.name));
        return;
    }
    m_shape.ownTables += own.isAdded ? 0 : 1;
    const QSet<QByteArray> columns = m_columns.value(own.name.toLower());
    for (const OwnTable::Column& column : own.columns)
        if ((column.step == 0 || m_upgrades.contains(column.step)) &&
            !columns.contains(column.name.toLower()))
            m_shape.missing << tr("column %1").arg(QString::fromUtf8(own.name + '.' + column.name));
    if (!hasKey(*table, own.key))
        m_shape.missing << tr("a usable key of %1").arg(QString::fromUtf8(own.name));
}

CatalogShape SchemaReading::run() {
    SQLite::Statement rows(m_database, "SELECT type, name, ifnull(sql, '') FROM sqlite_schema");
    while (rows.executeStep())
        sort(rows.getColumn(0).getText(), rows.getColumn(1).getText(), rows.getColumn(2).getText());
    for (const QByteArray& table : std::as_const(m_tables))
        checkColumns(table);
    readUpgrades();
    for (const OwnTable& own : ownTables())
        checkOwn(own);
    m_shape.foreign.sort();
    return m_shape;
}

} // namespace

bool CatalogShape::isACatalog() const { return ownTables * 2 > int(tessaranth::ownTables().size()); }

const std::vector<OwnTable>& ownTables() {
    static const std::vector<OwnTable> tables = readOwnTables();
    return tables;
}

CatalogShape shapeOf(SQLite::Database& database) { return SchemaReading(database).run(); }

QByteArrayList plainColumns(SQLite::Database& database, const QByteArray& table) {
    SQLite::Statement kind(database, "SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = ?1 COLLATE "
                                     "NOCASE AND sql NOT LIKE 'CREATE VIRTUAL%'");
    kind.bind(1, table.toStdString());
    if (!kind.executeStep())
        return {};
    SQLite::Statement run(database, "SELECT name FROM pragma_table_xinfo(?1) WHERE hidden = 0");
    run.bind(1, table.toStdString());
    QByteArrayList columns;
    while (run.executeStep())
        columns << run.getColumn(0).getText();
    return columns;
}

} // namespace tessaranth
