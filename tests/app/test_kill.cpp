// SPDX-License-Identifier: GPL-3.0-or-later
// Kills the program at random points of everything that writes the catalog file, and looks at what is left.
#include "store/Connection.h"
#include "store/UpgradeSteps.h"
#include "support/CommandLine.h"
#include "support/Kills.h"
#include "support/TestHome.h"

#include <QCryptographicHash>
#include <QDir>
#include <QTest>
#include <SQLiteCpp/SQLiteCpp.h>
#include <functional>

using namespace tessaranth;

namespace {

struct Content {
    qint64 rows = 0;
    QByteArray hash;
    bool operator==(const Content&) const = default;
};
/// Rows of every table. The columns that hold the time of day are left out.
using Contents = QMap<QString, Content>;

/// Opens as the program does, to look only; a catalog that is not whole is a failure.
Contents contentsOf(const QString& catalog) {
    try {
        const SystemClock clock;
        const auto connection =
            Connection::open(catalog, clock, newestUpgradeCode, Connection::Mode::Inspect);
        const QStringList faults = connection->integrityFaults();
        require(faults.isEmpty(), catalog + ": " + faults.join("; "));
        Contents contents;
        for (const QString& table : connection->tables()) {
            if (table == "TsrHistory") // its token is another one after each commit
                continue;
            QCryptographicHash hash(QCryptographicHash::Sha1);
            Content& content = contents[table];
            Query rows = connection->query("SELECT * FROM " + table);
            for (; rows.next(); ++content.rows)
                for (int column = 0; column < rows.columnCount(); ++column)
                    if (!rows.columnName(column).endsWith("Date"))
                        hash.addData((rows.isNull(column) ? "Null" : rows.text(column) + '|').toUtf8());
            content.hash = hash.result();
        }
        return contents;
    } catch (const Error& error) {
        throw KillFailure{error.reason()};
    }
}

void copy(const QString& from, const QString& to) {
    QFile::remove(to);
    require(QFile::copy(from, to), "cannot copy to " + to);
}

/// What the killed runs start from, made once.
struct Material {
    QTemporaryDir folder;
    QString oldest = folder.filePath("oldest.tsb");
    QString current = folder.filePath("current.tsb"); ///< the oldest, upgraded, and rows without owner
    QString earlier = folder.filePath("earlier.bak"); ///< another state of it: the backup of before
    QStringList schema;
    Contents ofOldest, ofCurrent, ofEarlier, ofUpgraded, ofCleaned, ofSample;
};

/// A home of one killed run.
struct Victim {
    explicit Victim(const Material& use) : material(use) {}
    const Material& material;
    TestHome home;
    QString sample = home.file("written.tsb");

    CliResult run(const QStringList& words) { return runCli(home.folder(), words); }
    void use(const QString& catalog) {
        copy(catalog, home.catalog());
        // No first start: its making of the folder is the same for all of them.
        QFile configuration(home.file("tsc.cfg"));
        require(configuration.open(QIODevice::WriteOnly) && QDir().mkpath(home.file("Tessaranth_Media")),
                "no configuration");
    }
    void succeed(const QStringList& words) {
        const CliResult result = run(words);
        require(result.code == 0, words.join(' ') + ": " + result.err);
    }
    /// The next start brings it to the schema of a fresh catalog.
    void start() {
        succeed({"upgrade"});
        require(TestHome::schemaOf(home.catalog()) == material.schema, "not the schema of a fresh catalog");
    }
};

struct Operation {
    const char* name;
    QStringList words;
    int kills;
    std::function<void(Victim&)> prepare;
    /// Throws unless the catalog is whole; says what the kill left.
    std::function<Left(Victim&)> inspect;
};

Left beforeOrAfter(const Contents& found, const Contents& before, const Contents& after) {
    require(found == before || found == after, "neither the rows of before nor those of after");
    return found == after ? Left::After : Left::Before;
}

// ---- what each operation may leave

Left inspectUpgrade(Victim& victim) {
    const Material& material = victim.material;
    const Contents found = contentsOf(victim.home.catalog());
    for (const auto& [table, content] : material.ofOldest.asKeyValueRange())
        require(found.contains(table), "lost table " + table);
    victim.start();
    require(contentsOf(victim.home.catalog()) == material.ofUpgraded, "not the rows of a whole upgrade");
    return found == material.ofOldest     ? Left::Before
           : found == material.ofUpgraded ? Left::After
                                          : Left::Between;
}

Left inspectSample(Victim& victim) {
    const bool written = QFileInfo::exists(victim.sample);
    if (!written)
        victim.succeed({"sample", victim.sample});
    require(contentsOf(victim.sample) == victim.material.ofSample, "not the whole sample");
    return written ? Left::After : Left::Before;
}

Left inspectCompact(Victim& victim) {
    require(contentsOf(victim.home.catalog()) == victim.material.ofCurrent, "rows changed");
    const bool smaller = QFileInfo(victim.home.catalog()).size() < QFileInfo(victim.material.current).size();
    victim.start();
    return smaller ? Left::After : Left::Before;
}

Left inspectBackup(Victim& victim) {
    const Material& material = victim.material;
    require(contentsOf(victim.home.catalog()) == material.ofCurrent, "rows changed");
    const Left left =
        beforeOrAfter(contentsOf(victim.home.file("Tessaranth.bak")), material.ofEarlier, material.ofCurrent);
    victim.start();
    victim.succeed({"maintain", "backup"});
    require(contentsOf(victim.home.file("Tessaranth.bak")) == material.ofCurrent, "the next backup failed");
    require(QDir(victim.home.folder()).entryList({"*.tsrpart*"}).isEmpty(), "pieces of a backup were left");
    return left;
}

// Each of its steps is one transaction.
Left inspectCleanup(Victim& victim) {
    const Material& material = victim.material;
    const Contents found = contentsOf(victim.home.catalog());
    for (const auto& [table, content] : found.asKeyValueRange())
        require(content == material.ofCurrent[table] || content == material.ofCleaned[table],
                table + " is cleaned by halves");
    victim.start();
    victim.succeed({"maintain", "cleanup"});
    require(contentsOf(victim.home.catalog()) == material.ofCleaned, "not cleaned by the next run");
    return found == material.ofCurrent   ? Left::Before
           : found == material.ofCleaned ? Left::After
                                         : Left::Between;
}

Left inspectEmpty(Victim& victim) {
    const Material& material = victim.material;
    const Contents found = contentsOf(victim.home.catalog());
    const auto isEmpty = [](const Content& content) { return content.rows == 0; };
    const bool empty = std::all_of(found.begin(), found.end(), isEmpty);
    require(empty || found == material.ofCurrent, "emptied by halves");
    const QString backup = victim.home.file("Tessaranth.bak");
    require(empty || QFileInfo::exists(backup), "the backup went, the rows did not");
    require(!QFileInfo::exists(backup) || contentsOf(backup) == material.ofEarlier, "the backup changed");
    victim.start();
    return empty ? Left::After : Left::Before;
}

QList<Operation> operations() {
    const auto useCurrent = [](Victim& victim) { victim.use(victim.material.current); };
    const auto withBackup = [](Victim& victim) {
        victim.use(victim.material.current);
        copy(victim.material.earlier, victim.home.file("Tessaranth.bak"));
    };
    return {{"upgrade",
             {"upgrade"},
             60,
             [](Victim& victim) { victim.use(victim.material.oldest); },
             inspectUpgrade},
            {"sample", {"sample", "written.tsb"}, 40, [](Victim&) {}, inspectSample},
            {"compact", {"maintain", "compact"}, 30, useCurrent, inspectCompact},
            {"backup", {"maintain", "backup"}, 40, withBackup, inspectBackup},
            {"cleanup", {"maintain", "cleanup"}, 30, useCurrent, inspectCleanup},
            {"empty", {"maintain", "empty", "--yes"}, 30, withBackup, inspectEmpty}};
}

const char* const manyRows = R"(
    CREATE TEMP TABLE n AS WITH RECURSIVE c(i) AS (VALUES(100) UNION ALL SELECT i + 1 FROM c WHERE i < 3099)
        SELECT i FROM c;
    INSERT INTO Rec (RecID, RecTitle, SupportID, Notes, Rating) SELECT i, 'Recording ' || i, 1 + i % 8,
        'Bought second-hand, sleeve worn. ' || i, CASE i % 7 WHEN 0 THEN NULL WHEN 6 THEN '' ELSE i % 7 END FROM n;
    INSERT INTO Compositions (CompID, CpsID, CompTitle, CompNbr) SELECT i, 1 + i % 3, 'Work ' || i, i FROM n;
    INSERT INTO PfrOnRec SELECT 1 + k, i FROM n, (SELECT 0 AS k UNION SELECT 1);
    INSERT INTO CompOnRec (CompOnRecID, RecID, CpsID, CompID, Pos) SELECT i, i, 1 + i % 3, i, 1 FROM n;
    INSERT INTO CompOnRecPfr SELECT i, 1 + i % 2, 0 FROM n;
    INSERT INTO Media (RelatedCat, RelatedID, MediaTitle, MediaFile) SELECT 'Rec', i, 'Side ' || i,
        '/nowhere/side' || i || '.mp3' FROM n WHERE i % 10 = 0;)";

const char* const rowsWithoutOwner = R"(
    INSERT INTO Tracks (RecID, Disc, TrackNbr, TrackName, TrackLen) SELECT RecID, 1, 1, 'Track', '4:33' FROM Rec;
    INSERT INTO Tracks (RecID, Disc, TrackNbr, TrackName, TrackLen) SELECT RecID + 50000, 1, 1, 'Lost', '0:01' FROM Rec
        LIMIT 800;
    INSERT INTO CompOnRecPfr SELECT CompOnRecID + 50000, 1, 0 FROM CompOnRec LIMIT 800;
    INSERT INTO MainWorks (CpsID, MainWorkName) SELECT 50000 + RecID, 'Lost' FROM Rec LIMIT 400;
    INSERT INTO CpsGenres (CpsID, CpsGenreName) SELECT 50000 + RecID, 'Lost' FROM Rec LIMIT 400;
    INSERT INTO Personages (CompID, PersonageName) SELECT 50000 + RecID, 'Lost' FROM Rec LIMIT 400;
    CREATE TABLE Bulk (a TEXT); INSERT INTO Bulk SELECT hex(randomblob(500)) FROM Rec; DROP TABLE Bulk;)";

void change(const QString& catalog, const char* statements) {
    SQLite::Database(catalog.toStdString(), SQLite::OPEN_READWRITE).exec(statements);
}

} // namespace

class TestKill : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void killed_data();
    void killed();

private:
    Material m_material;
};

void TestKill::initTestCase() {
    try {
        Material& material = m_material;
        TestHome fresh;
        fresh.useTemplate();
        material.schema = TestHome::schemaOf(fresh.catalog());
        Victim made{material};
        made.home.useOldest();
        change(made.home.catalog(), manyRows);
        copy(made.home.catalog(), material.oldest);
        material.ofOldest = contentsOf(material.oldest);
        made.use(material.oldest);
        made.start();
        material.ofUpgraded = contentsOf(made.home.catalog());
        change(made.home.catalog(), rowsWithoutOwner);
        change(made.home.catalog(), "PRAGMA journal_mode = DELETE");
        copy(made.home.catalog(), material.current);
        material.ofCurrent = contentsOf(material.current);
        made.succeed({"maintain", "cleanup"});
        material.ofCleaned = contentsOf(made.home.catalog());
        made.succeed({"sql", "DELETE * FROM Media"});
        made.succeed({"maintain", "backup"});
        copy(made.home.file("Tessaranth.bak"), material.earlier);
        material.ofEarlier = contentsOf(material.earlier);
        made.succeed({"sample", made.sample});
        material.ofSample = contentsOf(made.sample);
    } catch (const KillFailure& failure) {
        QFAIL(qPrintable(failure.text));
    }
    QVERIFY(m_material.ofCleaned["Tracks"].rows < m_material.ofCurrent["Tracks"].rows);
    QVERIFY(m_material.ofSample["Rec"].rows >= 60);
}

void TestKill::killed_data() {
    QTest::addColumn<int>("index");
    const QList<Operation> all = operations();
    for (int i = 0; i < all.size(); ++i)
        QTest::newRow(all[i].name) << i;
}

void TestKill::killed() {
    QFETCH(int, index);
    const Operation operation = operations()[index];
    testKills({operation.name, operation.kills,
               [&](QProcess& process) {
                   const auto victim = std::make_shared<Victim>(m_material);
                   operation.prepare(*victim);
                   prepareCli(process, victim->home.folder(), operation.words, {victim->home.folder(), {}});
                   return [&operation, victim] { return operation.inspect(*victim); };
               }},
              quint32(index));
}

QTEST_GUILESS_MAIN(TestKill)
#include "test_kill.moc"
