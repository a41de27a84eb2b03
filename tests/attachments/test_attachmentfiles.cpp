// SPDX-License-Identifier: GPL-3.0-or-later
// The files of rows: numbers whose file belongs to somebody else, things that are no files, and exports onto
// a full disk.
#include "attachments/CardDocuments.h"
#include "attachments/CardImages.h"
#include "attachments/FileAlignment.h"
#include "items/LabelEditor.h"
#include "platform/FileReader.h"
#include "store/AttachmentFiles.h"
#include "support/CommandLine.h"
#include "support/ItemCatalog.h"
#include "support/Pictures.h"
#include "works/WorkCard.h"

#include <QElapsedTimer>
#include <QLocalServer>
#include <QTest>
#ifdef Q_OS_LINUX
#include <sys/mount.h>
#include <sys/stat.h>
#endif

using namespace tessaranth;

namespace {

constexpr auto pictures = Session::Folder::Images;
constexpr auto logos = Session::Folder::Labels;

struct Desk : ItemCatalog {
    Desk() : ItemCatalog(true) { written(file("a.bmp"), encoded(halves({9, 9}), "BMP")); }
    CardImages images() const { return {*session, {"Rec", 1}}; }
    AttachmentFiles files() const { return AttachmentFiles(*session); }
    QString path(Session::Folder folder, qint64 id) const {
        QDir().mkpath(session->dataFolder(folder));
        return files().path(folder, id);
    }
};

} // namespace

class TestAttachmentFiles : public QObject {
    Q_OBJECT

private slots:
    void numberWithAFileIsPassedOver();
    void restoredCatalogKeepsNewerFiles();
    void whatIsNoFile_data();
    void whatIsNoFile();
    void fullDisk();
};

void TestAttachmentFiles::numberWithAFileIsPassedOver() {
    Desk desk;
    for (const qint64 id : {1, 2, 4})
        written(desk.path(pictures, id), "of the user");
    QCOMPARE(desk.images().add(desk.file("a.bmp"), "a"), 3);
    QCOMPARE(desk.images().add(desk.file("a.bmp"), "b"), 5);
    QCOMPARE(bytesOf(desk.path(pictures, 1)) + bytesOf(desk.path(pictures, 4)), "of the userof the user");
    const qint64 next = desk.number("SELECT MAX(LabelID) FROM Labels") + 1;
    written(desk.path(logos, next), "of the user");
    qint64 label = 0;
    QVERIFY(LabelEditor(*desk.session).save(label, "Without a logo", {}));
    QCOMPARE(label, next + 1);
    QCOMPARE(bytesOf(desk.path(logos, next)), "of the user");
    // A number out of a strange catalog that is none names no file.
    QVERIFY(!desk.files().path(pictures, Value("../../victim.txt")) && !desk.files().path(pictures, Value()));
    QCOMPARE(desk.files().path(pictures, Value(7)).value_or(""), desk.path(pictures, 7));
}

void TestAttachmentFiles::restoredCatalogKeepsNewerFiles() {
    Desk desk;
    desk.close();
    const QString backup = desk.file("Tessaranth.bak");
    QCOMPARE(runCli(desk.folder(), {"maintain", "backup"}).code, 0);
    QVERIFY(desk.start().started);
    const qint64 newer = desk.images().add(desk.file("a.bmp"), "of today");
    const QString file = desk.path(pictures, newer);
    desk.close();
    QVERIFY(QFile::remove(desk.catalog()) && QFile::copy(backup, desk.catalog()));
    QVERIFY(desk.start().started);
    written(desk.file("b.bmp"), encoded(halves({30, 9}), "BMP"));
    QVERIFY(desk.images().add(desk.file("b.bmp"), "after that") > newer);
    QCOMPARE(bytesOf(file), bytesOf(desk.file("a.bmp")));
    FileAlignment::Findings found;
    QVERIFY(FileAlignment(*desk.session).find(found, desk.progress));
    QCOMPARE(found.stray.size(), 1u);
    QCOMPARE(found.stray.front().name, QString::number(newer));
}

void TestAttachmentFiles::whatIsNoFile_data() {
    QTest::addColumn<QString>("kind");
    for (const char* kind : {"link", "dangling link", "pipe", "socket", "folder"})
        QTest::newRow(kind) << kind;
}

// Put in the place of a picture, it is neither opened nor followed nor written to.
void TestAttachmentFiles::whatIsNoFile() {
#ifdef Q_OS_LINUX
    QFETCH(QString, kind);
    Desk desk;
    const qint64 id = desk.images().add(desk.file("a.bmp"), "a");
    const QString place = desk.path(pictures, id);
    const QString secret = written(desk.file("secret"), bytesOf(desk.file("a.bmp")));
    QLocalServer server;
    QVERIFY(QFile::remove(place));
    if (kind == "pipe")
        QCOMPARE(mkfifo(qPrintable(place), 0600), 0);
    else if (kind == "socket")
        QVERIFY(server.listen(place));
    else if (kind == "folder")
        QVERIFY(QDir().mkpath(place));
    else
        QVERIFY(QFile::link(kind == "link" ? secret : desk.file("nowhere"), place));
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!desk.files().exists(pictures, id));
    QVERIFY(desk.images().whole(id).isNull());
    QVERIFY(!desk.images().exportTo(id, desk.file("out.bmp")));
    QVERIFY(!desk.images().replace(id, desk.file("a.bmp")));
    QCOMPARE(PictureFile::facts(place).bytes, 0);
    QVERIFY(timer.elapsed() < 5000);
    QCOMPARE(desk.messages.told.size(), 3);
    QVERIFY2(desk.messages.told[2].contains("it is no file"), qPrintable(desk.messages.told[2]));
    QVERIFY(!QFileInfo::exists(desk.file("out.bmp")) && !QFileInfo::exists(desk.file("nowhere")));
    QCOMPARE(bytesOf(secret), bytesOf(desk.file("a.bmp")));
    FileAlignment::Findings found;
    QVERIFY(FileAlignment(*desk.session).find(found, desk.progress));
    QCOMPARE(found.lost.size(), 1u);
#else
    QSKIP("made for Linux");
#endif
}

void TestAttachmentFiles::fullDisk() {
#ifdef Q_OS_LINUX
    const QTemporaryDir disk;
    if (mount("tmpfs", qPrintable(disk.path()), "tmpfs", 0, "size=64k") != 0)
        QSKIP("no small disk can be mounted here");
    const auto unmount = qScopeGuard([&] { umount2(qPrintable(disk.path()), MNT_DETACH); });
    Desk desk;
    const qint64 picture = desk.images().add(desk.file("a.bmp"), "a");
    CardDocuments documents(*desk.session, {"Rec", 1});
    const qint64 document = documents.add("{\\rtf1 text}", "a");
    WorkCard work;
    work.title = "Fidelio";
    const QString target = written(disk.filePath("target"), "of yesterday");
    QFile filler(disk.filePath("filler"));
    QVERIFY(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    while (filler.write(QByteArray(4096, 'x')) == 4096)
        continue;
    const std::function<bool()> exports[] = {[&] { return desk.images().exportTo(picture, target); },
                                             [&] { return documents.exportTo(document, target); },
                                             [&] { return exportWorkCard(*desk.session, work, target); }};
    for (const auto& write : exports) {
        desk.messages.told.clear();
        QVERIFY(!write());
        QCOMPARE(desk.messages.told, QStringList(target + " cannot be written: no space left on device"));
        QCOMPARE(bytesOf(target), "of yesterday");
    }
    // The window's settings, and files that move to another disk.
    ProfileFile settings(target);
    QVERIFY(!settings.write("Misc", "Menu", "1") && settings.failure().contains("no space left on device"));
    QCOMPARE(bytesOf(target), "of yesterday");
    QVERIFY_EXCEPTION_THROWN(moveFile(desk.file("a.bmp"), disk.filePath("a.bmp")), FileError);
    QVERIFY(filler.remove());
    moveFile(desk.file("a.bmp"), disk.filePath("a.bmp"));
    QCOMPARE(bytesOf(disk.filePath("a.bmp")), encoded(halves({9, 9}), "BMP"));
    QVERIFY(!QFileInfo::exists(desk.file("a.bmp")));
    QCOMPARE(QDir(disk.path()).entryList(QDir::Files), QStringList({"a.bmp", "target"}));
#else
    QSKIP("made for Linux");
#endif
}

QTEST_GUILESS_MAIN(TestAttachmentFiles)
#include "test_attachmentfiles.moc"
