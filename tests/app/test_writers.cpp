// SPDX-License-Identifier: GPL-3.0-or-later
// Every command that writes a file, on a disk that is full, on one that fails and in a folder without rights:
// the old file stands, nothing half is left, and the reason is told. And several processes at once.
#include "platform/FileWriter.h"
#include "support/CommandLine.h"
#include "support/Pictures.h"
#include "support/TestHome.h"

#include <QDir>
#include <QTest>
#include <functional>
#ifdef Q_OS_LINUX
#include <sys/mount.h>
#endif

using namespace tessaranth;

namespace {

/// A command and the file it writes, by its path in the home.
struct Writer {
    const char* name;
    QStringList words; ///< "%" stands for the home
    QString target;    ///< ends with "*" where the number of the file is not known beforehand
    bool usesCatalog;
};
const Writer writers[] = {
    {"configuration", {"config", "set", "Misc", "Menu", "7"}, "tsc.cfg", false},
    {"picture", {"attach", "image", "Rec", "1", "%/in/cover.png"}, "Tessaranth_Images/*", true},
    {"document", {"attach", "doc", "Rec", "1", "%/in/note.rtf"}, "Tessaranth_Docs/*", true},
    {"catalog file", {"catalog", "export", "1", "%/out/works.tcat"}, "out/works.tcat", true},
    {"backup", {"maintain", "backup"}, "Tessaranth.bak", true},
    {"copy", {"maintain", "copy"}, "out/Tessaranth.tsb", true},
    {"sample", {"sample", "%/out/sample.tsb"}, "out/sample.tsb", false}};

/// Files by path, without the catalog, its log and its history, which change when it is opened.
QMap<QString, QByteArray> besideCatalog(const QString& folder) {
    auto files = filesOf(folder);
    for (const char* name : {"Tessaranth.tsb", "Tessaranth.tsb-wal", "Tessaranth.tsb-shm", "Tessaranth.tsh",
                             "Tessaranth.tsh-wal", "Tessaranth.tsh-shm", "Tessaranth.tsh-journal", "filler"})
        files.remove(QString::fromLatin1(name));
    return files;
}

struct Home : TestHome {
    Home() {
        useSample();
        for (const char* folder : {"in", "out", "Tessaranth_Images", "Tessaranth_Docs"})
            if (!QDir().mkpath(file(folder)))
                QTest::qFail("no folder", __FILE__, __LINE__);
        written(file("in/cover.png"), encoded(halves({90, 90}), "PNG"));
        written(file("in/note.rtf"), "{\\rtf1 " + QByteArray(9000, 'x') + '}');
        if (cli({"maintain", "backup"}).code != 0 ||
            cli({"config", "set", "Maintenance", "DestFolder", file("out")}).code != 0 ||
            cli({"config", "set", "Runtime", "Catalog", file("out")}).code != 0)
            QTest::qFail("the home cannot be prepared", __FILE__, __LINE__);
        written(file("out/works.tcat"), "the one of yesterday");
        written(file("out/Tessaranth.tsb"), bytesOf(file("Tessaranth.bak")));
    }
    CliResult cli(const QStringList& words, const CliOptions& options = {}) {
        QStringList whole = words;
        return runCli(folder(), whole.replaceInStrings("%", folder()), options);
    }
    /// "" when the writer did its work, or what it did in spite of its failure.
    QString run(const Writer& writer, const CliOptions& options, const QString& reason) {
        const auto before = besideCatalog(folder());
        const CliResult result = cli(writer.words, options);
        if (result.code == 0)
            return {};
        const auto after = besideCatalog(folder());
        if (result.code != 1)
            return QStringLiteral("ended with %1: ").arg(result.code) + result.err;
        if (!result.err.contains(reason))
            return "told something else: " + result.err;
        for (auto file = after.cbegin(); file != after.cend(); ++file)
            if (before.value(file.key(), "none") != file.value())
                return "changed or left " + file.key();
        return after.size() == before.size() ? "refused" : "removed a file";
    }
};

} // namespace

class TestWriters : public QObject {
    Q_OBJECT

private slots:
    void failingDevice_data() { rows(); }
    void failingDevice();
    void fullDisk_data() { rows(); }
    void fullDisk();
    void withoutRights_data() { rows(); }
    void withoutRights();
    void unreadable();
    void configurationInParallel();
    void firstStartInParallel();
    void sampleFillsItsFolder();
    void otherCatalog();
    void leftoversOfAKill();

private:
    static void rows() {
        QTest::addColumn<int>("index");
        for (int i = 0; i < int(std::size(writers)); ++i)
            QTest::newRow(writers[i].name) << i;
    }
};

// Every call that changes a file fails in turn, with all that follow it.
void TestWriters::failingDevice() {
#ifdef TESSARANTH_FAILING
    QFETCH(int, index);
    int refusals = 0;
    QString outcome = "refused";
    Home home;
    for (int calls = 0; !outcome.isEmpty(); calls += 1 + calls / 4) {
        outcome = home.run(writers[index],
                           {.environment = {{"LD_PRELOAD", TESSARANTH_FAILING},
                                            {"TESSARANTH_WRITES", QString::number(calls)},
                                            {"TESSARANTH_ERRNO", QString::number(EIO)}}},
                           {});
        refusals += outcome == "refused" ? 1 : 0;
        QVERIFY2(outcome.isEmpty() || outcome == "refused",
                 qPrintable(QStringLiteral("after %1 calls: ").arg(calls) + outcome));
    }
    QVERIFY(refusals >= 3); // the bytes, their way to the disk, and the name
#else
    QSKIP("made for Linux");
#endif
}

void TestWriters::fullDisk() {
#ifdef Q_OS_LINUX
    QFETCH(int, index);
    const QTemporaryDir place;
    if (mount("tmpfs", qPrintable(place.path()), "tmpfs", 0, "size=24m") != 0)
        QSKIP("no small disk can be mounted here");
    const auto unmount = qScopeGuard([&] { umount2(qPrintable(place.path()), MNT_DETACH); });
    const QByteArray usual = qgetenv("TMPDIR");
    qputenv("TMPDIR", place.path().toUtf8());
    {
        Home home;
        usual.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", usual);
        int refusals = 0;
        QString outcome = "refused";
        for (qint64 room = 0; !outcome.isEmpty(); room = room * 2 + 4096) {
            QFile filler(home.file("filler"));
            QVERIFY(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
            while (filler.write(QByteArray(4096, 'x')) == 4096)
                continue;
            QVERIFY(filler.resize(qMax<qint64>(0, filler.size() - room)));
            filler.close();
            outcome = home.run(writers[index], {}, "no space left on device");
            refusals += outcome == "refused" ? 1 : 0;
            QVERIFY2(outcome.isEmpty() || outcome == "refused", qPrintable(outcome));
        }
        QVERIFY(refusals >= 1);
    }
#else
    QSKIP("made for Linux");
#endif
}

void TestWriters::withoutRights() {
    if (!canDropRights())
        QSKIP("rights cannot be taken away here");
    QFETCH(int, index);
    const Writer& writer = writers[index];
    Home home;
    // Everything belongs to nobody but the folder that the file would go to.
    const QString folder = QFileInfo(home.file(writer.target)).path();
    giveToNobody(home.folder());
    takeFromNobody(folder);
    const bool withCatalog = folder == home.folder() && writer.usesCatalog; // which is refused first
    QCOMPARE(home.run(writer, {.asNobody = true},
                      withCatalog ? "is read-only" : "cannot be written: permission denied"),
             QString("refused"));
}

void TestWriters::unreadable() {
    if (!canDropRights())
        QSKIP("rights cannot be taken away here");
    for (const QString name : {"Tessaranth.tsb", "tsc.cfg"}) {
        Home home;
        giveToNobody(home.folder());
        takeFromNobody(home.file(name));
        QVERIFY(QFile::setPermissions(home.file(name), QFile::ReadOwner | QFile::WriteOwner));
        for (const QStringList& words : {QStringList{"list", "Rec"}, QStringList{"check"}}) {
            const CliResult result = home.cli(words, {.asNobody = true});
            QCOMPARE(result.code, 1);
            QVERIFY2(result.err.contains(home.file(name) + " cannot be read: permission denied"),
                     qPrintable(result.err));
        }
    }
}

void TestWriters::configurationInParallel() {
    Home home;
    constexpr int count = 40;
    std::vector<std::unique_ptr<QProcess>> all;
    for (int i = 0; i < count; ++i) {
        all.push_back(std::make_unique<QProcess>());
        const QString number = QString::number(i);
        prepareCli(*all.back(), home.folder(), {"config", "set", "Test", "Key" + number, "value " + number});
        all.back()->start();
    }
    for (const auto& process : all)
        QVERIFY(process->waitForFinished(60000) && process->exitCode() == 0);
    for (int i = 0; i < count; ++i)
        QCOMPARE(ProfileFile(home.file("tsc.cfg")).read("Test", "Key" + QString::number(i)),
                 "value " + QString::number(i));
}

// Whoever was told that his person is stored finds it.
void TestWriters::firstStartInParallel() {
    for (int round = 0; round < 4; ++round) {
        const QTemporaryDir parent;
        const QString folder = parent.filePath("new");
        std::vector<std::unique_ptr<QProcess>> all;
        for (int i = 0; i < 12; ++i) {
            all.push_back(std::make_unique<QProcess>());
            prepareCli(*all.back(), folder, {"person", "add", "Cps", "--last", QString("Person%1").arg(i)});
            all.back()->start();
        }
        QStringList acknowledged;
        for (const auto& process : all) {
            QVERIFY(process->waitForFinished(60000));
            if (process->exitCode() == 0)
                acknowledged << QString::fromUtf8(process->readAllStandardOutput()).trimmed();
            else
                QVERIFY2(process->readAllStandardError().contains("in use by another program"),
                         process->readAllStandardError());
        }
        QVERIFY(!acknowledged.isEmpty());
        const CliResult found = runCli(folder, {"sql", "SELECT COUNT(*) FROM Cps"});
        QVERIFY2(found.code == 0, qPrintable(found.err));
        QCOMPARE(found.lines().value(1), QString::number(acknowledged.size()));
    }
}

void TestWriters::sampleFillsItsFolder() {
    const QTemporaryDir parent;
    const QString folder = parent.filePath("new");
    const CliResult made = runCli(folder, {"sample", folder + "/Tessaranth.tsb"});
    QVERIFY2(made.code == 0, qPrintable(made.err));
    const CliResult list = runCli(folder, {"list", "Rec"});
    QVERIFY2(list.code == 0 && list.lines().size() > 60, qPrintable(list.err));
}

// A catalog that is opened in place of the configured one has its own folders, whatever numbers both use.
void TestWriters::otherCatalog() {
    Home home;
    const QString picture = home.file("in/cover.png");
    QCOMPARE(home.cli({"attach", "image", "Rec", "1", picture}).out, QString("1\n"));
    const auto before = filesOf(home.file("Tessaranth_Images"));
    const QByteArray backup = bytesOf(home.file("Tessaranth.bak"));
    const struct {
        QString catalog, pictures, backup;
    } others[] = {{"out/Tessaranth.tsb", "out/Tessaranth_Images", "out/Tessaranth.bak"},
                  {"other.tsb", "other_Images", "other.bak"},
                  {"third.bak", "third.bak_Images", "third.bak.bak"}};
    for (const char* name : {"other.tsb", "third.bak"})
        QVERIFY(QFile::copy(home.file("Tessaranth.bak"), home.file(name)));
    for (const auto& other : others) {
        const QStringList open{"--catalog", home.file(other.catalog)};
        const CliResult added = home.cli(open + QStringList{"attach", "image", "Rec", "1", picture});
        QVERIFY2(added.code == 0, qPrintable(added.err));
        QCOMPARE(filesOf(home.file(other.pictures)).value("1"), bytesOf(picture));
        QCOMPARE(home.cli(open + QStringList{"check"}).code, 0);
        QCOMPARE(home.cli(open + QStringList{"maintain", "backup"}).code, 0);
        QVERIFY(QFileInfo::exists(home.file(other.backup)));
    }
    QVERIFY(filesOf(home.file("Tessaranth_Images")) == before &&
            bytesOf(home.file("Tessaranth.bak")) == backup);
    QCOMPARE(home.cli({"--catalog", home.catalog(), "files", "check"}).code, 0);
}

// Only by the names of the program's own, and not what somebody is writing at this moment.
void TestWriters::leftoversOfAKill() {
    Home home;
    const QString ours = "12.0a1b2c3d.tsrpart";
    const QStringList kept{"12.tmp", "12.0a1b2c3.tsrpart", "x.tsrpart", "12.0A1B2C3D.tsrpart"};
    for (const QString folder : {"Tessaranth_Images/", "Tessaranth_Docs/", "", "in/"}) {
        for (const QString& name : kept + QStringList{ours, ours + "-wal"})
            written(home.file(folder + name), "left");
    }
    FileWriter present(home.file("Tessaranth_Images/13"));
    QCOMPARE(home.cli({"list", "Rec"}).code, 0);
    present.write("whole");
    present.commit();
    QCOMPARE(bytesOf(home.file("Tessaranth_Images/13")), QByteArray("whole"));
    for (const QString folder : {"Tessaranth_Images/", "Tessaranth_Docs/", ""}) {
        QVERIFY(!QFileInfo::exists(home.file(folder + ours)) &&
                !QFileInfo::exists(home.file(folder + ours + "-wal")));
        for (const QString& name : kept)
            QVERIFY2(QFileInfo::exists(home.file(folder + name)), qPrintable(name));
    }
    QVERIFY(QFileInfo::exists(home.file("in/" + ours))); // no folder of ours
}

QTEST_GUILESS_MAIN(TestWriters)
#include "test_writers.moc"
