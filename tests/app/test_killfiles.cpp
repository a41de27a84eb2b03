// SPDX-License-Identifier: GPL-3.0-or-later
// Kills the program, from the shell and with its window, while it writes files: each is the old one or the
// new one, every row has its file, and the next start leaves nothing behind.
#include "store/AttachmentFiles.h"
#include "support/CommandLine.h"
#include "support/Kills.h"
#include "support/Pictures.h"
#include "support/TestHome.h"

#include <QDir>
#include <QDirIterator>
#include <QImageReader>
#include <QTest>
#include <memory>

using namespace tessaranth;

namespace {

struct Place : TestHome {
    QByteArray was; ///< of the file that is written

    Place() {
        useSample();
        require(QDir().mkpath(file("out")), "no folder");
        succeed({"upgrade"}); // the first start
        succeed({"config", "set", "Maintenance", "DestFolder", file("out")});
        succeed({"maintain", "backup"});
        succeed({"maintain", "copy"});
        written(file("out/works.tcat"), "the one of yesterday");
        written(file("cover.bmp"), encoded(halves({300, 300}), "BMP"));
        written(file("note.rtf"), "{\\rtf1 " + QByteArray(200'000, 'x') + '}');
    }
    void succeed(const QStringList& words) {
        const CliResult result = runCli(folder(), words);
        require(result.code == 0, words.join(' ') + ": " + result.err);
    }
    qint64 number(const QString& statement) {
        const CliResult result = runCli(folder(), {"sql", statement});
        require(result.code == 0, result.err);
        return result.lines().value(1).toLongLong();
    }
    /// The next start has taken away what was left; the catalog and its files are in order.
    void isWhole() {
        succeed({"upgrade"});
        QDirIterator entries(folder(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (entries.hasNext()) {
            const QString path = entries.next();
            require(!path.contains("tsrpart"), "left " + path);
            require(entries.fileInfo().size() > 0 || path.endsWith(".lock") || path.endsWith("-wal"),
                    "empty " + path);
        }
        // A file may stand without its row, which comes after it and passes over its number; a row never
        // stands without its file.
        const CliResult check = runCli(folder(), {"check"});
        for (const QString& found : check.lines().mid(1))
            require(found.startsWith("Files without a row"), "check: " + found);
        require(check.code == 0 || check.lines().size() > 1, check.err);
        require(bytesOf(file("tsc.cfg")).contains("[Toolbox]"), "the configuration is not whole");
    }
};

using Inspect = std::function<Left(Place&)>;

KillOperation operation(const char* name, int kills, const QStringList& words, const Inspect& inspect) {
    return {name, kills, [words, inspect](QProcess& process) {
                const auto place = std::make_shared<Place>();
                QStringList whole = words;
                whole.replaceInStrings("%", place->folder());
                prepareCli(process, place->folder(), whole);
                return [place, inspect] { return inspect(*place); };
            }};
}

/// One more row with its whole file, or neither; the number of a file without a row is not given again.
Inspect attached(const QString& table, Session::Folder kind, const QString& source) {
    return [=](Place& place) {
        place.isWhole();
        const qint64 rows = place.number("SELECT COUNT(*) FROM " + table);
        place.succeed({"attach", table == "Images" ? "image" : "doc", "Rec", "2", place.file(source)});
        require(place.number("SELECT COUNT(*) FROM " + table) == rows + 1, "the next one is not added");
        place.isWhole();
        const QString folder =
            place.file(kind == Session::Folder::Images ? "Tessaranth_Images" : "Tessaranth_Docs");
        for (const QByteArray& bytes : filesOf(folder))
            require(bytes == bytesOf(place.file(source)), "a file is not whole");
        return rows > 0 ? Left::After : Left::Before;
    };
}

Left configured(Place& place) {
    place.isWhole();
    const QString value = ProfileFile(place.file("tsc.cfg")).read("Test", "Key");
    require(value.isEmpty() || value == "new", "another value");
    require(ProfileFile(place.file("tsc.cfg")).read("Maintenance", "DestFolder") == place.file("out"),
            "lost a key");
    return value.isEmpty() ? Left::Before : Left::After;
}

Left exported(Place& place) {
    place.isWhole();
    const QByteArray found = bytesOf(place.file("out/works.tcat"));
    place.succeed({"catalog", "export", "1", place.file("out/works.tcat")});
    const bool isOld = found == "the one of yesterday";
    require(isOld || found == bytesOf(place.file("out/works.tcat")), "neither the old nor the new file");
    return isOld ? Left::Before : Left::After;
}

Left copied(Place& place) {
    place.isWhole();
    place.succeed({"--catalog", place.file("out/Tessaranth.tsb"), "check"});
    return Left::Between;
}

Left personAdded(Place& place) {
    place.isWhole();
    const qint64 found = place.number("SELECT COUNT(*) FROM Cps WHERE CpsLname = 'Newman'");
    require(found <= 1, "added twice");
    return found == 0 ? Left::Before : Left::After;
}

KillOperation firstStart() {
    return {"first start", 120, [](QProcess& process) {
                const auto parent = std::make_shared<QTemporaryDir>();
                const QString folder = parent->filePath("new");
                prepareCli(process, folder, {"person", "add", "Cps", "--last", "Newman"});
                return [parent, folder] {
                    const bool wasFilled = QFileInfo::exists(folder + "/tsc.cfg");
                    const CliResult next = runCli(folder, {"list", "Cps"});
                    require(next.code == 0, next.err);
                    require(QDir(folder).entryList({"*.tsrpart*"}).isEmpty(), "pieces were left");
                    require(next.lines().size() <= 2, "added twice");
                    return next.lines().size() == 2 ? Left::After : wasFilled ? Left::Between : Left::Before;
                };
            }};
}

#ifdef TESSARANTH_ACTOR
KillOperation inWindow(const char* deed, int kills, const Inspect& inspect) {
    return {deed, kills,
            [=](QProcess& process) {
                const auto place = std::make_shared<Place>();
                process.setProgram(TESSARANTH_ACTOR);
                process.setArguments({deed});
                QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
                environment.insert("TESSARANTH_HOME", place->folder());
                environment.insert("QT_QPA_PLATFORM", "offscreen");
                process.setProcessEnvironment(environment);
                return [place, inspect] { return inspect(*place); };
            },
            true};
}

Left labelAdded(Place& place) {
    place.isWhole();
    const qint64 label = place.number("SELECT LabelID FROM Labels WHERE LabelName = 'A new label'");
    require(label == 0 || QImageReader(place.file("Tessaranth_Labels/" + QString::number(label))).size() ==
                              QSize(300, 300),
            "a label without its logo");
    return label == 0 ? Left::Before : Left::After;
}

Left titleStored(Place& place) {
    place.isWhole();
    const QString title = ProfileFile(place.file("tsc.cfg")).read("Reports", "MainPageTitle");
    require(title.isEmpty() || title == "My music", "half a title");
    return title.isEmpty() ? Left::Before : Left::After;
}

Left closed(Place& place) {
    place.isWhole();
    place.succeed({"--catalog", place.file("Tessaranth.bak"), "check"});
    return Left::Between;
}
#endif

QList<KillOperation> operations() {
    QList<KillOperation> all{
        operation("configuration", 100, {"config", "set", "Test", "Key", "new"}, configured),
        operation("picture", 100, {"attach", "image", "Rec", "1", "%/cover.bmp"},
                  attached("Images", Session::Folder::Images, "cover.bmp")),
        operation("document", 70, {"attach", "doc", "Rec", "1", "%/note.rtf"},
                  attached("Cards", Session::Folder::Documents, "note.rtf")),
        operation("catalog file", 80, {"catalog", "export", "1", "%/out/works.tcat"}, exported),
        operation("copy", 60, {"maintain", "copy"}, copied),
        operation("person", 60, {"person", "add", "Cps", "--last", "Newman"}, personAdded),
        firstStart()};
#ifdef TESSARANTH_ACTOR
    all << inWindow("settings", 50, titleStored) << inWindow("label", 50, labelAdded)
        << inWindow("closing", 80, closed);
#endif
    return all;
}

} // namespace

class TestKillFiles : public QObject {
    Q_OBJECT

private slots:
    void killed_data() {
        QTest::addColumn<int>("index");
        const QList<KillOperation> all = operations();
        for (int i = 0; i < all.size(); ++i)
            QTest::newRow(all[i].name) << i;
    }
    void killed() {
        QFETCH(int, index);
        testKills(operations()[index], quint32(100 + index));
    }
};

QTEST_GUILESS_MAIN(TestKillFiles)
#include "test_killfiles.moc"
