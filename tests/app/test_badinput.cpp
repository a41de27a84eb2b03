// SPDX-License-Identifier: GPL-3.0-or-later
// What stands in the program's way: catalogs, configuration and companion files that are not what they should
// be, folders that cannot be written and full disks. Each is told clearly, and nothing is changed.
#include "store/UpgradeSteps.h"
#include "support/CommandLine.h"
#include "support/TestHome.h"

#include <QDir>
#include <QRandomGenerator>
#include <QTest>
#include <SQLiteCpp/SQLiteCpp.h>
#include <functional>

using namespace tessaranth;

using Spoil = std::function<void(TestHome&)>;
Q_DECLARE_METATYPE(Spoil)

namespace {

void write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        QTest::qFail(qPrintable("cannot write " + path), __FILE__, __LINE__);
}

QByteArray randomBytes(qsizetype size) {
    QByteArray bytes(size, Qt::Uninitialized);
    QRandomGenerator random(1);
    for (char& c : bytes)
        c = char(random.bounded(256));
    return bytes;
}

void change(const QString& catalog, const char* statement) {
    SQLite::Database(catalog.toStdString(), SQLite::OPEN_READWRITE).exec(statement);
}

Spoil cutTo(qint64 bytes) {
    return [bytes](TestHome& home) {
        home.useSample();
        const qint64 size = QFileInfo(home.catalog()).size();
        QVERIFY(QFile::resize(home.catalog(), bytes < 0 ? size + bytes : bytes));
    };
}

/// The catalog can be opened, and its rows are sound.
QString faultsOf(const QString& catalog) {
    SQLite::Database database(catalog.toStdString(), SQLite::OPEN_READWRITE);
    const QString verdict = QString::fromStdString(database.execAndGet("PRAGMA integrity_check").getString());
    return verdict == QLatin1String("ok") ? QString() : verdict;
}

/// Changes a catalog and leaves it as a kill would: the change stands in the log beside it.
void leaveLog(const QString& catalog) {
    QByteArray database;
    QByteArray log;
    {
        SQLite::Database changed(catalog.toStdString(), SQLite::OPEN_READWRITE);
        changed.exec("PRAGMA journal_mode = WAL; UPDATE Rec SET RecTitle = 'From the log'");
        database = bytesOf(catalog);
        log = bytesOf(catalog + "-wal");
    }
    write(catalog, database);
    write(catalog + "-wal", log);
}

QStringList leftovers(const QString& folder) {
    return QDir(folder).entryList({"*.tsrpart*", "*-wal", "*-journal", "*.tmp"}, QDir::Files);
}

} // namespace

class TestBadInput : public QObject {
    Q_OBJECT

private slots:
    void catalog_data();
    void catalog();
    void lockedCatalog();
    void configuration_data();
    void configuration();
    void companion_data();
    void companion();
    void folderThatCannotBeWritten();
    void configurationThatCannotBeWritten();
    void targetThatCannotBeReplaced();
    void fullDiskDuringUpgrade();
    void fullDiskDuringSample();
    void fullDiskDuringBackup();
    void replacedCopyLosesItsLog();
    void newCatalogGetsNoOldLog();
};

void TestBadInput::catalog_data() {
    QTest::addColumn<Spoil>("spoil");
    QTest::addColumn<QString>("told");
    const auto file = [](const QByteArray& bytes) {
        return Spoil([bytes](TestHome& home) { write(home.catalog(), bytes); });
    };
    // With a configuration it is not the first start, which would put a new catalog there.
    QTest::newRow("missing") << Spoil([](TestHome& home) { write(home.file("tsc.cfg"), "[Misc]\r\n"); })
                             << "does not exist";
    QTest::newRow("zero bytes") << file("") << "is empty";
    QTest::newRow("one byte") << file("x") << "is not a catalog";
    QTest::newRow("a text") << file("Composer\tTitle\nBach\tMass\n") << "is not a catalog";
    QTest::newRow("noise") << file(randomBytes(20000)) << "is not a catalog";
    QTest::newRow("noise behind the name")
        << file(QByteArray("SQLite format 3\0", 16) + randomBytes(200000)) << "catalog";
    QTest::newRow("cut in the header") << cutTo(60) << "is damaged";
    QTest::newRow("cut in the first page") << cutTo(3000) << "is damaged";
    QTest::newRow("cut after the first page") << cutTo(4096) << "is damaged";
    QTest::newRow("cut in the middle") << cutTo(200000) << "is damaged";
    QTest::newRow("last page missing") << cutTo(-4096) << "is damaged";
    QTest::newRow("folder") << Spoil([](TestHome& home) { QVERIFY(QDir().mkpath(home.catalog())); })
                            << "is a folder";
    QTest::newRow("another database") << Spoil([](TestHome& home) {
        SQLite::Database database(home.catalog().toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        database.exec("CREATE TABLE Cps (a); CREATE TABLE Stamps (b)");
    }) << "a database, but not a catalog";
    QTest::newRow("newer") << Spoil([](TestHome& home) {
        home.useSample();
        change(home.catalog(), "INSERT INTO DbUpgrades (DbUpgradeCode) VALUES (999999)");
    }) << "newer version";
    QTest::newRow("read-only") << Spoil([](TestHome& home) {
        home.useSample();
        QVERIFY(QFile::setPermissions(home.catalog(), QFile::ReadOwner));
    }) << "is read-only";
}

void TestBadInput::catalog() {
    QFETCH(Spoil, spoil);
    QFETCH(QString, told);
    TestHome home;
    spoil(home);
    const auto before = filesOf(home.folder());
    for (const QStringList& words :
         {QStringList{"sql", "DELETE * FROM Cps"}, QStringList{"upgrade"}, QStringList{"check"},
          QStringList{"list", "Rec"}, QStringList{"maintain", "compact"}, QStringList{"maintain", "backup"},
          QStringList{"maintain", "empty", "--yes"}}) {
        const CliResult result = runCli(home.folder(), words);
        if (told == "is read-only" && words.front() == "check") { // looks without writing
            QVERIFY2(result.code == 0 && filesOf(home.folder()) == before, qPrintable(result.err));
            continue;
        }
        QCOMPARE(result.code, 1);
        QVERIFY2(result.err.contains(told) && result.err.contains(home.catalog()), qPrintable(result.err));
        QVERIFY2(result.out.isEmpty(), qPrintable(result.out));
        QVERIFY2(filesOf(home.folder()) == before, qPrintable(words.join(' ')));
    }
}

void TestBadInput::lockedCatalog() {
    TestHome home;
    home.useSample();
    QVERIFY(home.start().started);
    home.close();
    const auto before = filesOf(home.folder());
    QVERIFY(home.start().started); // this process holds it
    for (const QStringList& words : {QStringList{"sql", "DELETE * FROM Cps"}, QStringList{"check"},
                                     QStringList{"maintain", "empty", "--yes"}}) {
        const CliResult result = runCli(home.folder(), words);
        QCOMPARE(result.code, 1);
        QVERIFY2(result.err.contains("is in use by another program"), qPrintable(result.err));
    }
    home.close();
    // Not earlier: on some systems reading the file here would give up the hold of this process.
    QVERIFY(filesOf(home.folder()) == before);
    QCOMPARE(runCli(home.folder(), {"check"}).code, 0);
}

void TestBadInput::configuration_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("name");
    QTest::newRow("garbage lines") << QByteArray(
                                          "\x01\x02 garbage\r\n===\r\n[Misc]\r\n=nothing\r\n[unclosed\r\n"
                                          "FreeDB=Dvo\xc5\x99\xc3\xa1k\r\n]\r\n")
                                   << QStringLiteral("Dvořák");
    QTest::newRow("NUL bytes") << QByteArray("[Mi\0sc]\nFreeDB=no\n[Misc]\n\0\0\0\nFreeDB=host\n\0=\0\n", 45)
                               << "host";
    QTest::newRow("10 MB value") << "[Misc]\r\nBig=" + QByteArray(10 << 20, 'x') + "\r\nFreeDB=host\r\n"
                                 << "host";
    QTest::newRow("10 MB in the value asked for") << "[Misc]\r\nFreeDB=" + QByteArray(10 << 20, 'y') + "\r\n"
                                                  << QString(255, 'y');
    QTest::newRow("Windows-1252") << QByteArray("[Misc]\r\nFreeDB=M\xfcller \x80\r\n")
                                  << QStringLiteral("Müller €");
    QTest::newRow("UTF-8") << QByteArray("[Misc]\r\nFreeDB=M\xc3\xbcller \xe2\x82\xac\r\n")
                           << QStringLiteral("Müller €");
    QTest::newRow("empty") << QByteArray() << QString();
    QTest::newRow("noise") << randomBytes(5000) << QString();
}

void TestBadInput::configuration() {
    QFETCH(QByteArray, bytes);
    QFETCH(QString, name);
    TestHome home;
    home.useSample();
    write(home.file("tsc.cfg"), bytes);
    QCOMPARE(runCli(home.folder(), {"config", "get", "Misc", "FreeDB"}).out, name + '\n');
    QVERIFY(bytesOf(home.file("tsc.cfg")) == bytes);
    const CliResult list = runCli(home.folder(), {"list", "Rec"});
    QVERIFY2(list.code == 0 && list.lines().size() > 60, qPrintable(list.err));
    // What could not be read is kept when settings are added, in the encoding that the file had.
    QVERIFY(QString::fromLatin1(bytesOf(home.file("tsc.cfg"))).contains(QString::fromLatin1(bytes)));
    QCOMPARE(runCli(home.folder(), {"config", "set", "Misc", "FreeDB", "other"}).code, 0);
    QCOMPARE(runCli(home.folder(), {"config", "get", "Misc", "FreeDB"}).out, QString("other\n"));
    QCOMPARE(runCli(home.folder(), {"config", "get", "Misc", "WKey"}).out, QString("1\n"));
}

void TestBadInput::companion_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<Spoil>("spoil");
    for (const QString name : {"tsrthres.dll", "tsrcps.dll", "tsrpfr.dll", "WKeys.dat"}) {
        const auto row = [&](const char* how, const Spoil& spoil) {
            QTest::addRow("%s %s", qPrintable(name), how) << name << spoil;
        };
        row("missing", [name](TestHome& home) { QVERIFY(QFile::remove(home.file(name))); });
        row("empty", [name](TestHome& home) { write(home.file(name), ""); });
        row("noise", [name](TestHome& home) { write(home.file(name), randomBytes(3000)); });
        row("folder", [name](TestHome& home) {
            QVERIFY(QFile::remove(home.file(name)) && QDir().mkpath(home.file(name)));
        });
        row("cut", [name](TestHome& home) {
            const qint64 size = QFileInfo(home.file(name)).size();
            // In the last line, and for the library in its directory.
            QVERIFY(QFile::resize(home.file(name), size - 13));
        });
    }
    QTest::newRow("WKeys.dat with a bad line")
        << "WKeys.dat"
        << Spoil([](TestHome& home) { write(home.file("WKeys.dat"), "9;1;C major\r\n9;two;C minor\r\n"); });
}

// On a catalog of the oldest version, which is filled from one of them: a catalog upgraded without the key
// names would never get them.
void TestBadInput::companion() {
    QFETCH(QString, name);
    QFETCH(Spoil, spoil);
    TestHome home;
    home.useTemplate();
    QCOMPARE(runCli(home.folder(), {"upgrade"}).code, 0); // not the first start, which would fill the folder
    home.useOldest();
    spoil(home);
    const auto before = filesOf(home.folder());
    for (const QStringList& words : {QStringList{"upgrade"}, QStringList{"maintain", "backup"}}) {
        const CliResult result = runCli(home.folder(), words);
        QCOMPARE(result.code, 1);
        QVERIFY2(result.err.contains(name) &&
                     (result.err.contains("damaged") || result.err.contains("Unable to locate")),
                 qPrintable(result.err));
        QVERIFY(filesOf(home.folder()) == before);
    }
}

// A path below a file can be written by nobody, not even by an administrator.
void TestBadInput::folderThatCannotBeWritten() {
    TestHome home;
    home.useSample();
    write(home.file("file"), "not a folder");
    const auto before = filesOf(home.folder());
    for (const QString& folder : {home.file("file"), home.file("file/below")}) {
        for (const QStringList& words :
             {QStringList{"--catalog", home.catalog(), "upgrade"}, QStringList{"list", "Rec"},
              QStringList{"--catalog", home.catalog(), "maintain", "backup"},
              QStringList{"config", "set", "Misc", "Menu", "1"},
              QStringList{"sample", folder + "/new.tsb"}}) {
            const CliResult result = runCli(folder, words);
            QCOMPARE(result.code, 1);
            QVERIFY2(result.err.contains(folder), qPrintable(result.err));
            QVERIFY(filesOf(home.folder()) == before);
        }
    }
}

void TestBadInput::configurationThatCannotBeWritten() {
    TestHome home;
    home.useSample();
    QVERIFY(QDir().mkpath(home.file("tsc.cfg/occupied")));
    const CliResult result = runCli(home.folder(), {"sql", "DELETE * FROM Cps"});
    QCOMPARE(result.code, 1);
    QVERIFY(result.err.contains("Unable to create the configuration file!"));
    const CliResult set = runCli(home.folder(), {"config", "set", "Misc", "Menu", "1"});
    QCOMPARE(set.code, 1);
    QVERIFY2(set.err.contains("tsc.cfg cannot be read: it is a folder"), qPrintable(set.err));
    QCOMPARE(runCli(home.folder(), {"check"}).code, 0);
}

void TestBadInput::targetThatCannotBeReplaced() {
    TestHome home;
    home.useSample();
    QVERIFY(QDir().mkpath(home.file("Tessaranth.bak/occupied")));
    const CliResult result = runCli(home.folder(), {"maintain", "backup"});
    QCOMPARE(result.code, 1);
    QVERIFY2(result.err.contains(home.file("Tessaranth.bak") + " cannot be written"), qPrintable(result.err));
    QCOMPARE(leftovers(home.folder()), QStringList());
}

void TestBadInput::fullDiskDuringUpgrade() {
    if (!canLimitFiles())
        QSKIP("this system has no limit to the size of a file");
    TestHome fresh;
    fresh.useTemplate();
    const QStringList schema = TestHome::schemaOf(fresh.catalog());
    int failures = 0;
    bool succeeded = false;
    for (qint64 limit = 12 << 10; !succeeded; limit += 96 << 10) {
        QVERIFY(limit < 16 << 20);
        TestHome home;
        home.useOldest();
        const CliResult result = runCli(home.folder(), {"upgrade"}, {.largestFile = limit});
        succeeded = result.code == 0;
        if (!succeeded) {
            ++failures;
            QCOMPARE(result.code, 1);
            QVERIFY2(!result.err.isEmpty() && !result.err.contains("is damaged"), qPrintable(result.err));
        }
        QCOMPARE(faultsOf(home.catalog()), QString());
        QCOMPARE(runCli(home.folder(), {"upgrade"}).code, 0);
        QCOMPARE(TestHome::schemaOf(home.catalog()), schema);
        QCOMPARE(runCli(home.folder(), {"sql", "SELECT COUNT(*) FROM Rec"}).lines().value(1), QString("7"));
    }
    QVERIFY(failures > 2);
}

void TestBadInput::fullDiskDuringSample() {
    if (!canLimitFiles())
        QSKIP("this system has no limit to the size of a file");
    TestHome home;
    const auto before = filesOf(home.folder());
    const QString file = home.file("sample.tsb");
    int failures = 0;
    for (qint64 limit = 1 << 10; !QFileInfo::exists(file); limit += 48 << 10) {
        QVERIFY(limit < 16 << 20);
        const CliResult result = runCli(home.folder(), {"sample", file}, {.largestFile = limit});
        if (result.code == 0)
            continue;
        ++failures;
        QCOMPARE(result.code, 1);
        QVERIFY2(result.err.contains(file + " cannot be written"), qPrintable(result.err));
        QVERIFY(filesOf(home.folder()) == before);
    }
    QVERIFY(failures > 5);
    QCOMPARE(runCli(home.folder(), {"--catalog", file, "check"}).code, 0);
}

void TestBadInput::fullDiskDuringBackup() {
    if (!canLimitFiles())
        QSKIP("this system has no limit to the size of a file");
    TestHome home;
    home.useSample();
    QCOMPARE(runCli(home.folder(), {"maintain", "backup"}).code, 0);
    QCOMPARE(runCli(home.folder(), {"sql", "DELETE * FROM Tracks"}).code, 0);
    const auto before = filesOf(home.folder());
    for (const qint64 limit : {1 << 10, 40 << 10, 200 << 10, 400 << 10}) {
        const CliResult result = runCli(home.folder(), {"maintain", "backup"}, {.largestFile = limit});
        QCOMPARE(result.code, 1);
        QVERIFY2(result.err.contains("Tessaranth.bak cannot be written"), qPrintable(result.err));
        QVERIFY(filesOf(home.folder()) == before);
    }
}

// Somebody looked into the backup with a program that was killed: its log still lies beside it.
void TestBadInput::replacedCopyLosesItsLog() {
    TestHome home;
    home.useSample();
    const QString backup = home.file("Tessaranth.bak");
    QCOMPARE(runCli(home.folder(), {"maintain", "backup"}).code, 0);
    leaveLog(backup);
    QCOMPARE(runCli(home.folder(), {"maintain", "backup"}).code, 0);
    QCOMPARE(leftovers(home.folder()), QStringList());
    QCOMPARE(faultsOf(backup), QString());
    SQLite::Database read(backup.toStdString(), SQLite::OPEN_READONLY);
    QCOMPARE(read.execAndGet("SELECT COUNT(*) FROM Rec WHERE RecTitle = 'From the log'").getInt(), 0);
}

// Everything was deleted but the log; then the program is started as for the first time.
void TestBadInput::newCatalogGetsNoOldLog() {
    TestHome home;
    home.useSample();
    leaveLog(home.catalog());
    QVERIFY(QFile::remove(home.catalog()));
    const CliResult result = runCli(home.folder(), {"sql", "SELECT COUNT(*) FROM Rec"});
    QVERIFY2(result.code == 0, qPrintable(result.err));
    QCOMPARE(result.lines().value(1), QString("0"));
    QCOMPARE(faultsOf(home.catalog()), QString());
}

QTEST_GUILESS_MAIN(TestBadInput)
#include "test_badinput.moc"
