// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/PlantedCatalogs.h"

#include "store/CatalogShape.h"
#include "support/TestHome.h"

#include <QFile>
#include <QRandomGenerator>
#include <SQLiteCpp/SQLiteCpp.h>

namespace tessaranth {

namespace {

using Fate = PlantedCatalog::Fate;

/// A damage by statements; "@" stands for each of the variants, which the message names as well.
struct Damage {
    const char* name;
    Fate fate;
    const char* told;
    const char* statements;
    QList<QByteArray> variants{""};
};

void write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
}

const char tampering[] = "PRAGMA writable_schema = ON; ";

std::vector<Damage> damages() {
    const QList<QByteArray> events{"AFTER INSERT",  "BEFORE INSERT", "AFTER UPDATE",
                                   "BEFORE UPDATE", "AFTER DELETE",  "BEFORE DELETE"};
    QList<QByteArray> required, renamed;
    for (const OwnTable& table : ownTables()) {
        if (!table.isAdded)
            required << table.name;
        renamed << table.name + " RENAME COLUMN " + table.columns.back().name;
    }
    const QList<QByteArray> values{
        "NULL", "'text'", "'0 OR 1=1'", "9223372036854775807", "-9223372036854775808", "1.5", "x'00'", "-1"};
    return {
        {"trigger on Rec", Fate::Refused, "trigger evil",
         "CREATE TRIGGER evil @ ON Rec BEGIN DELETE FROM Cps; END", events},
        {"trigger on DbUpgrades", Fate::Refused, "trigger evil",
         "CREATE TRIGGER evil @ ON DbUpgrades BEGIN DELETE FROM Cps; END", events},
        {"trigger on works", Fate::Refused, "trigger evil",
         "CREATE TRIGGER evil @ ON Compositions BEGIN DELETE FROM Cps; END", events},
        {"trigger with a name of ours", Fate::Opens, "",
         "CREATE TRIGGER QuickRec_evil @ ON Rec BEGIN DELETE FROM Cps; END", events},
        {"trigger with nearly a name of ours",
         Fate::Refused,
         "trigger @",
         "CREATE TRIGGER @ AFTER INSERT ON Rec BEGIN DELETE FROM Cps; END",
         {"Quick", "QuickEvil_x", "quickrec_x"}},
        {"trigger under a reserved name", Fate::Refused, "trigger sqlite_evil",
         "CREATE TRIGGER evil AFTER INSERT ON Rec BEGIN DELETE FROM Cps; END; PRAGMA writable_schema = ON; "
         "UPDATE sqlite_schema SET name = 'sqlite_evil', sql = replace(sql, 'evil', 'sqlite_evil') WHERE "
         "name = 'evil'"},
        {"view",
         Fate::Refused,
         "view @",
         "CREATE VIEW @ AS SELECT * FROM Rec",
         {"evil", "QuickRec", "Sources2"}},
        {"view without end", Fate::Refused, "view evil",
         "CREATE VIEW evil AS WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM c) SELECT x FROM "
         "c"},
        {"view in place of a table", Fate::Refused, "table @", "DROP TABLE @; CREATE VIEW @ AS SELECT 1 AS a",
         required},
        {"table missing", Fate::Refused, "lacks table @", "DROP TABLE @", required},
        {"column renamed", Fate::Refused, "lacks column", "ALTER TABLE @ TO Renamed", renamed},
        {"virtual table",
         Fate::Refused,
         "virtual table evil",
         "CREATE VIRTUAL TABLE evil USING @",
         {"fts5(a)", "fts4(a)", "fts3(a)", "rtree(a, b, c)"}},
        {"virtual table of a module that nobody has", Fate::Refused, "virtual table evil",
         "CREATE VIRTUAL TABLE evil USING fts5(a); PRAGMA writable_schema = ON; UPDATE sqlite_schema SET sql "
         "= "
         "'CREATE VIRTUAL TABLE evil USING nomodule(a)' WHERE name = 'evil'"},
        {"index that is not ours",
         Fate::Refused,
         "virtual table QuickCps",
         "CREATE VIRTUAL TABLE QuickCps USING @",
         {"fts5(a)", "fts4(words)", "fts5(words, content=Rec)"}},
        {"index of another version",
         Fate::Opens,
         "",
         "CREATE VIRTUAL TABLE QuickCps USING fts5(words, content='', detail='@')",
         {"full", "column"}},
        {"computed column", Fate::Refused, "computed column Rec.evil",
         "ALTER TABLE Rec ADD COLUMN evil AS (hex(zeroblob(9)))"},
        {"computed key names",
         Fate::Refused,
         "computed column",
         "ALTER TABLE @ ADD COLUMN evil AS (abs(-1))",
         {"Cps", "DbUpgrades", "CpsOnRec"}},
        {"column of the row's number",
         Fate::Refused,
         "Cps",
         "ALTER TABLE Cps ADD COLUMN @ TEXT",
         {"rowid", "oid", "_rowid_"}},
        {"odd name of a table",
         Fate::Refused,
         "table ",
         "CREATE TABLE \"@\" (a)",
         {"a b", "x'; DROP TABLE Rec; --", "a\"\"b", "[", "a.b", "\n", "caf\xC3\xA9"}},
        {"odd name of a column",
         Fate::Refused,
         "column Cps.",
         "ALTER TABLE Cps ADD COLUMN \"@\"",
         {"a b", "x) SELECT 1; --", "a\"\"b", "[]", "\t"}},
        {"table of somebody else",
         Fate::Opens,
         "",
         "CREATE TABLE \"@\" (\"@\" TEXT); INSERT INTO \"@\" VALUES (1)",
         {"Stamps", "Order", "select", "TABLE1", "tsr_rebuilt"}},
        {"key that is a text",
         Fate::Refused,
         "usable key of @",
         "DROP TABLE @; CREATE TABLE @ (@ID TEXT PRIMARY KEY, @Lname, @Fname, @B, @D, CpsY, CatAcr, wkl, "
         "TSC, LastState)",
         {"Cps", "Pfr"}},
        {"key that is none",
         Fate::Refused,
         "usable key of Sources",
         "DROP TABLE Sources; CREATE TABLE Sources (@)",
         {"SourceID INTEGER, SourceType", "SourceID INT PRIMARY KEY, SourceType",
          "SourceID INTEGER PRIMARY KEY DESC, SourceType", "SourceID, SourceType INTEGER PRIMARY KEY",
          "SourceID INTEGER, SourceType, PRIMARY KEY (SourceID, SourceType)"}},
        {"no numbers of rows", Fate::Refused, "usable key of CpsOnRec",
         "DROP TABLE CpsOnRec; CREATE TABLE CpsOnRec (CpsID, RecID, PRIMARY KEY (CpsID, RecID)) WITHOUT "
         "ROWID"},
        {"links", Fate::Opens, "",
         "INSERT INTO CpsOnRec VALUES (@, 1); INSERT INTO CompOnRec (RecID, CpsID, CompID, Pos) VALUES (@, "
         "@, @, @)",
         values},
        {"numbers", Fate::Opens, "",
         "UPDATE Rec SET UnitsNbr = @, LabelID = @, LastState = @, LastStateRecSplitterPos = @", values},
        {"owners", Fate::Opens, "",
         "INSERT INTO Images (RelatedCat, RelatedID, ImageTitle, OrderNbr) VALUES ('Rec', @, @, @)", values},
        {"upgrades",
         Fate::Opens,
         "",
         "INSERT INTO DbUpgrades (DbUpgradeCode) VALUES (@)",
         {"'text'", "'0 OR 1=1'", "-1", "1.5"}},
        {"newer",
         Fate::Refused,
         "newer version",
         "INSERT INTO DbUpgrades (DbUpgradeCode) VALUES (@)",
         {"999999999", "9223372036854775807"}},
        {"no upgrades",
         Fate::Opens,
         "",
         "DELETE FROM DbUpgrades; UPDATE sqlite_sequence SET seq = @",
         {"1", "'1); DROP TABLE Cps; --'", "-5", "NULL"}},
        {"second statement in a definition",
         Fate::Either,
         "",
         "DELETE FROM DbUpgrades WHERE DbUpgradeCode = 236568; PRAGMA writable_schema = ON; UPDATE "
         "sqlite_schema SET "
         "sql = sql || '@' WHERE name = 'Compositions'",
         {"; DROP TABLE Cps", "; DELETE FROM Cps", ";", " -- ) DROP TABLE Cps"}},
        {"second statement in an index", Fate::Either, "",
         "DELETE FROM DbUpgrades WHERE DbUpgradeCode = 236568; PRAGMA writable_schema = ON; UPDATE "
         "sqlite_schema SET "
         "sql = sql || '; DROP TABLE Cps' WHERE name = 'Compositions_Key'"},
        {"definition that is another thing",
         Fate::Either,
         "",
         "PRAGMA writable_schema = ON; UPDATE sqlite_schema SET sql = '@' WHERE name = 'Sources'",
         {"", "CREATE VIEW Sources AS SELECT 1", "CREATE TABLE Other (a)", "SELECT 1",
          "CREATE TABLE Sources ("}},
        {"entry of an unknown type",
         Fate::Either,
         "",
         "PRAGMA writable_schema = ON; INSERT INTO sqlite_schema VALUES (@)",
         {"'evil', 'evil', 'Rec', 0, 'x'", "'trigger', 'evil', 'Rec', 0, NULL",
          "NULL, NULL, NULL, NULL, NULL", "'table', 'evil', 'evil', 2, 'CREATE TABLE evil (a)'",
          "'index', 'evil', 'Rec', 3, NULL"}},
    };
}

void addBytes(std::vector<PlantedCatalog>& all) {
    const auto add = [&all](const QString& name, const QString& told,
                            std::function<void(QByteArray&)> change) {
        all.push_back(
            {name, told.isEmpty() ? Fate::Either : Fate::Refused, told, [change](const QString& file) {
                 QByteArray bytes = bytesOf(file);
                 change(bytes);
                 write(file, bytes);
             }});
    };
    constexpr int pageBytes = 4096;
    for (int seed = 1; seed <= 30; ++seed)
        add(QStringLiteral("flipped bits %1").arg(seed), {}, [seed](QByteArray& bytes) {
            QRandomGenerator random{quint32(seed)};
            // Half of them in the schema, where they matter most.
            for (int i = 0; i < seed; ++i)
                bytes[random.bounded(seed % 2 ? int(bytes.size()) : 8 * pageBytes)] =
                    char(random.bounded(256));
        });
    for (int page = 0; page < 12; ++page)
        add(QStringLiteral("page %1 of zeros").arg(page), page == 0 ? QStringLiteral("catalog") : QString(),
            [page](QByteArray& bytes) {
                bytes.replace(page * pageBytes, pageBytes, QByteArray(pageBytes, '\0'));
            });
    for (int part = 0; part < 12; ++part)
        add(QStringLiteral("cut to %1 of 12 parts").arg(part), QStringLiteral("catalog"),
            [part](QByteArray& bytes) { bytes.truncate(bytes.size() * part / 12); });
    for (int at = 0; at < 100; at += 8)
        add(QStringLiteral("header at %1").arg(at), {},
            [at](QByteArray& bytes) { bytes.replace(at, 8, QByteArray(8, '\xFF')); });
    for (const char* companion : {"-wal", "-journal", "-shm"})
        all.push_back(
            {QStringLiteral("noise in ") + QLatin1String(companion),
             Fate::Either,
             {},
             [=](const QString& file) { write(file + QLatin1String(companion), QByteArray(5000, 'x')); }});
    const auto other = [&](const char* name, const char* schema) {
        all.push_back(
            {QLatin1String(name), Fate::Refused, QStringLiteral("not a catalog"), [=](const QString& file) {
                 QFile::remove(file);
                 plant(file, schema);
             }});
    };
    other("a browser's bookmarks",
          "CREATE TABLE moz_places (id INTEGER PRIMARY KEY, url); CREATE TABLE moz_bookmarks (id)");
    other("an empty database", "CREATE TABLE a (b); DROP TABLE a");
    other("a few of our names", "CREATE TABLE Cps (CpsID INTEGER PRIMARY KEY); CREATE TABLE Rec (RecID)");
}

} // namespace

void plant(const QString& file, const QByteArray& statements) {
    SQLite::Database database(file.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
    database.exec(statements.toStdString());
}

std::vector<PlantedCatalog> plantedCatalogs() {
    std::vector<PlantedCatalog> all;
    for (const Damage& damage : damages()) {
        for (const QByteArray& variant : damage.variants) {
            const QByteArray statements = QByteArray(damage.statements).replace("@", variant);
            const QString name =
                QString::fromUtf8(QByteArray(damage.name) + ' ' + variant).simplified().left(80);
            all.push_back({name, damage.fate,
                           QString::fromUtf8(QByteArray(damage.told).replace("@", variant)),
                           [statements](const QString& file) { plant(file, statements); }});
        }
    }
    addBytes(all);
    return all;
}

} // namespace tessaranth
