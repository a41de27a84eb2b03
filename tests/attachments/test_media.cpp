// SPDX-License-Identifier: GPL-3.0-or-later
// Media references and their places, web links, relations, custom cards.
#include "attachments/CardLinks.h"
#include "attachments/CardMedia.h"
#include "attachments/CardRelations.h"
#include "attachments/MediaLocations.h"
#include "items/CustomCards.h"
#include "platform/Volumes.h"
#include "support/FakeDesktop.h"
#include "support/ItemCatalog.h"

#include <QDir>

using namespace tessaranth;

namespace {

const QStringList somePlaces{"D:\\music", "d:\\",        "DD:\\x",       "/mnt/usb/music",
                             "/mnt/usb",  "/mnt/usb2/a", "\\\\srv\\D:\\"};

struct Desk : ItemCatalog {
    explicit Desk(bool sample = true) : ItemCatalog(sample) { session->setDesktop(desktop); }
    CardMedia media(qint64 id = 1) { return {*session, {"Rec", id}}; }
    CardLinks links() { return {*session, {"Cps", 1}}; }
    QString write(const QString& name, const QByteArray& bytes = "music") {
        QDir().mkpath(QFileInfo(file(name)).path());
        QFile made(file(name));
        if (!made.open(QIODevice::WriteOnly) || made.write(bytes) != bytes.size())
            QTest::qFail("cannot write", __FILE__, __LINE__);
        return made.fileName();
    }
    void place(const QString& folder) {
        run("INSERT INTO Media (RelatedCat, RelatedID, MediaTitle, MediaFile, MediaFolder) VALUES ('Rec', 1, "
            "'t', 'f', '" +
            quoted(folder) + "')");
    }
    QStringList places() {
        QStringList all;
        Query rows = session->connection().query("SELECT MediaFolder FROM Media ORDER BY MediaID");
        while (rows.next())
            all << rows.text(0);
        return all;
    }
    FakeDesktop desktop;
};

} // namespace

class TestMedia : public QObject {
    Q_OBJECT

private slots:
    void filesBecomeReferences();
    void titlesAndRemoval();
    void opening();
    void whatWouldRun_data();
    void whatWouldRun();
    void placesInNames();
    void filesThatMoved();
    void locations_data();
    void locations();
    void locationsOnRefusal();
    void links();
    void linksThatAreOpened_data();
    void linksThatAreOpened();
    void relationsFromBothSides();
    void customCards();
    void manyMedia();
};

void TestMedia::filesBecomeReferences() {
    Desk desk;
    const QString song = desk.write("music/L'île % [1].tar.ogg", "0123456789");
    QDir().mkpath(desk.file("music/folder"));
    QCOMPARE(desk.media().add({song, desk.file("music/folder"), desk.file("none.mp3")}, desk.progress), 1);
    QCOMPARE(desk.messages.told.size(), 1); // both names in one message
    QVERIFY(desk.messages.told[0].contains("music/folder") && desk.messages.told[0].contains("none.mp3"));
    const MediaFile stored = desk.media().media(desk.number("SELECT MediaID FROM Media"));
    QCOMPARE(stored.title, QString("L'île % [1].tar"));
    QCOMPARE(stored.path(), song);
    QCOMPARE(stored.size, 10);
    QCOMPARE(stored.volumeType, volumeOf(song).type);
    QCOMPARE(stored.type, fileTypeName(song));
    QVERIFY(stored.volumeName.size() <= 33);
    ItemList list;
    QVERIFY(desk.media().LoadMedia(list));
    QCOMPARE(list.rowCount(), 1);
    QCOMPARE(list.text(0, 1) + '|' + list.text(0, 2), QString("L'île % [1].tar.ogg|10"));
    QVERIFY(desk.media(2).LoadMedia(list));
    QCOMPARE(list.rowCount(), 0);
    desk.messages.told.clear();
    QCOMPARE(desk.media(99999).add({song}, desk.progress), -1);
    QCOMPARE(desk.messages.told, QStringList("This card has been deleted meanwhile."));
    QCOMPARE(desk.count("Media"), 1);
}

void TestMedia::titlesAndRemoval() {
    Desk desk;
    const QString song = desk.write("a.mp3");
    QCOMPARE(desk.media().add({song, song}, desk.progress), 2);
    const qint64 id = desk.number("SELECT MediaID FROM Media");
    desk.messages.willType("It's 100%");
    QVERIFY(desk.media().Rename_Media(id));
    QCOMPARE(desk.messages.nameRequests[0].defaultText, QString("a"));
    QCOMPARE(desk.media().media(id).title, QString("It's 100%"));
    QVERIFY(!desk.media().rename(id, QString(251, 'x')));
    QVERIFY(!desk.media().rename(id, " \n "));
    QVERIFY(!desk.media().rename(99999, "gone"));
    QCOMPARE(desk.messages.told.size(), 3);
    QCOMPARE(desk.media().media(id).title, QString("It's 100%"));

    desk.messages.willAnswer(Answer::Cancel);
    QVERIFY(!desk.media().Remove_Media({id}, desk.progress));
    QCOMPARE(desk.count("Media"), 2);
    desk.messages.willAnswer(Answer::Ok);
    QVERIFY(desk.media().Remove_Media({id}, desk.progress));
    QCOMPARE(desk.messages.asked.back().text,
             QString("Do you want to remove the selected media?\nNote: This will not affect the files "
                     "itself. Only database entries will be removed."));
    QCOMPARE(desk.count("Media"), 1);
    QVERIFY(QFile::exists(song));
}

void TestMedia::opening() {
    Desk desk;
    const QString song = desk.write("music/a.mp3");
    desk.media().add({song}, desk.progress);
    const qint64 id = desk.number("SELECT MediaID FROM Media");
    QVERIFY(desk.media().OpenMediaFile(id) && desk.media().ExploreMedia(id));
    QCOMPARE(desk.desktop.opened, QStringList({"file " + song, "folder " + desk.file("music")}));
    desk.desktop.answer = false;
    QVERIFY(!desk.media().OpenMediaFile(id));
    QFile::remove(song);
    QVERIFY(!desk.media().OpenMediaFile(id));
    QDir(desk.file("music")).removeRecursively();
    desk.desktop.opened.clear();
    desk.messages.told.clear();
    QVERIFY(!desk.media().OpenMediaFile(id) && !desk.media().ExploreMedia(id));
    const QString gone =
        "The following location: \n" + QDir::toNativeSeparators(desk.file("music")) + "\nis not available.";
    QCOMPARE(desk.messages.told, QStringList({gone, gone}));
    QVERIFY(desk.desktop.opened.isEmpty());
}

void TestMedia::whatWouldRun_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("runs");
    const auto row = [](const char* name, const QByteArray& bytes, bool runs) {
        QTest::addRow("%s %s", name, bytes.left(8).toHex().constData()) << QString(name) << bytes << runs;
    };
    for (const char* name :
         {"a.desktop", "a.EXE", "a.mp3.sh", "a.py", "a.jar", "a.AppImage", "a.lnk", "a.bat. "})
        row(name, "music", true);
    for (const char* bytes : {"#!/bin/sh",
                              "\x7F"
                              "ELF",
                              "MZ\x90", "# x\n[Desktop Entry]\nExec=sh", "[InternetShortcut]"})
        row("a.mp3", bytes, true);
    for (const char* name : {"a.mp3", "a.flac", "Mr. Sh.ogg", "sh", "a.jpg", "a.pdf"})
        row(name, "music", false);
}

// A catalog from elsewhere may name any file of this computer.
void TestMedia::whatWouldRun() {
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    QFETCH(bool, runs);
    Desk desk;
    desk.media().add({desk.write("music/" + name, bytes)}, desk.progress);
    const qint64 id = desk.number("SELECT MediaID FROM Media");
    if (runs)
        desk.messages.willAnswer(Answer::No);
    QCOMPARE(desk.media().OpenMediaFile(id), !runs);
    QCOMPARE(desk.desktop.opened.size(), runs ? 0 : 1);
    if (!runs)
        return;
    QVERIFY(desk.messages.asked[0].text.contains(name));
    QCOMPARE(int(desk.messages.asked[0].defaultButton), int(Answer::No));
    desk.messages.willAnswer(Answer::Yes);
    QVERIFY(desk.media().OpenMediaFile(id));
}

void TestMedia::placesInNames() {
    Desk desk;
    desk.write("secret.txt");
    desk.write("music/new/a.mp3");
    desk.media().add({desk.write("music/a.mp3")}, desk.progress);
    const qint64 id = desk.number("SELECT MediaID FROM Media");
    const QString folder = desk.file("music");
    const std::pair<QString, QString> places[] = {
        {folder, "../secret.txt"},         {folder, "new/a.mp3"},         {folder, ".."}, {folder, ""},
        {folder, desk.file("secret.txt")}, {folder + "/new/..", "a.mp3"}, {".", "a.mp3"}, {"", "a.mp3"}};
    for (const auto& [place, name] : places) {
        desk.run("UPDATE Media SET MediaFolder = '" + place + "', MediaFile = '" + name + "'");
        desk.messages.told.clear();
        QVERIFY2(!desk.media().OpenMediaFile(id), qPrintable(place + '|' + name));
        QCOMPARE(desk.messages.told.size(), 1);
    }
    QVERIFY(desk.desktop.opened.isEmpty());
    desk.run("UPDATE Media SET MediaFile = '../secret.txt'");
    QCOMPARE(desk.media().moveTo({id}, desk.file("music"), desk.progress), 0);
}

void TestMedia::filesThatMoved() {
    Desk desk;
    desk.media().add({desk.write("a.mp3"), desk.write("b.mp3")}, desk.progress);
    desk.write("new/a.mp3", "longer music");
    const qint64 id = desk.number("SELECT MediaID FROM Media");
    QCOMPARE(desk.media().moveTo({id, id + 1}, desk.file("new"), desk.progress), 1);
    QCOMPARE(desk.media().media(id).path(), desk.file("new/a.mp3"));
    QCOMPARE(desk.media().media(id).size, 12);
    QCOMPARE(desk.media().media(id + 1).path(), desk.file("b.mp3"));
    QVERIFY(desk.messages.told.size() == 1 && desk.messages.told[0].endsWith("\nb.mp3"));
}

void TestMedia::locations_data() {
    QTest::addColumn<bool>("drive");
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QStringList>("after"); // of the places in locations()
    const QStringList& as = somePlaces;
    const auto row = [&](const char* name, bool drive, const char* from, const char* to, QStringList after) {
        QTest::newRow(name) << drive << from << to << (after << as.mid(after.size()));
    };
    row("letter, either case", true, "D:", "E:", {"E:\\music", "E:\\"});
    row("with its separator", true, "d:\\", "E:\\", {"E:\\music", "E:\\"});
    row("letter to mount point", true, "D:", "/mnt/hd", {"/mnt/hd/music", "/mnt/hd"});
    row("mount point to letter", true, "/mnt/usb", "F:", {as[0], as[1], as[2], "F:\\music", "F:\\", as[5]});
    row("any drive", true, "", "/new", {"/new/music", "/new", as[2], "/new/music", "/new", "/new/a"});
    row("folder", false, "/MNT/usb", "/mnt/disk",
        {as[0], as[1], as[2], "/mnt/disk/music", "/mnt/disk"}); // "/mnt/usb2" is another folder
    row("folder with a separator", false, "/mnt/usb/", "/new", {as[0], as[1], as[2], "/new/music", "/new"});
    row("folder of a drive", false, "D:\\Music", "C:\\Mu\\", {"C:\\Mu"});
    row("folder to the root", false, "/mnt/usb", "/", {as[0], as[1], as[2], "/music", "/"});
}

void TestMedia::locations() {
    QFETCH(bool, drive);
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(QStringList, after);
    Desk desk;
    for (const QString& folder : somePlaces)
        desk.place(folder);
    int changed = 0;
    const QStringList before = desk.places();
    for (int i = 0; i < after.size(); ++i)
        changed += before[i] != after[i];
    desk.messages.willAnswer(Answer::Yes);
    MediaLocations media(*desk.session);
    QVERIFY(media.update(drive ? LocationChange::byDrive(from, to) : LocationChange::byFolder(from, to),
                         desk.progress));
    QCOMPARE(desk.places(), after);
    QCOMPARE(desk.messages.asked[0].text,
             QString::number(changed) + " items will be updated.\nWished to continue?");
    QCOMPARE(media.changedCards(), QStringList("#Rec1"));
}

void TestMedia::locationsOnRefusal() {
    Desk desk;
    for (const char* folder : {"C:\\o'neil", "C:\\100% [a]", "C:\\100x a"})
        desk.place(folder);
    MediaLocations media(*desk.session);
    const QStringList before = desk.places();
    QVERIFY(!media.update(LocationChange::byFolder("C:\\100_", "x"), desk.progress));
    QCOMPARE(desk.messages.told, QStringList("There are no items that match your request"));
    QVERIFY(!media.update(LocationChange::byFolder("", "x"), desk.progress));
    QVERIFY(!media.update(LocationChange::byFolder("C:", QString(250, 'x')), desk.progress));
    desk.messages.willAnswer(Answer::No);
    QVERIFY(!media.update(LocationChange::byFolder("C:", "D:"), desk.progress));
    QCOMPARE(desk.places(), before);
    desk.messages.willAnswer(Answer::Yes);
    QVERIFY(media.update(LocationChange::byFolder("C:\\100% [a]", "D:\\it's [a]"), desk.progress));
    QCOMPARE(desk.places(), QStringList({before[0], "D:\\it's [a]", before[2]}));
}

void TestMedia::links() {
    Desk desk;
    desk.run("DELETE FROM Web");
    WebLink link{0, " https://example.org/?a='%27'&b=[1] ", "It's here"};
    QVERIFY(desk.links().save(link));
    link.alias.clear();
    QVERIFY(desk.links().save(link));
    QCOMPARE(link.alias, link.url);
    WebLink other{0, QString("http://") + QString(5000, 'x'), ""};
    QVERIFY(desk.links().save(other)); // an address may be longer than what is shown for it
    ItemList list;
    QVERIFY(desk.links().LoadWeb(list));
    QCOMPARE(list.rowCount(), 2);
    QCOMPARE(list.text(0, 0), QString("https://example.org/?a='%27'&b=[1]"));
    WebLink bad{0, " ", "nothing"};
    WebLink tooLong{0, "http://a", QString(251, 'x')};
    QVERIFY(!desk.links().save(bad) && !desk.links().save(tooLong));
    desk.messages.willAnswer(Answer::Ok);
    QVERIFY(desk.links().Remove_Web({link.id, other.id}));
    QCOMPARE(desk.count("Web"), 0);
    QVERIFY(!desk.links().save(link)); // gone meanwhile
    QCOMPARE(desk.messages.told.size(), 3);
}

void TestMedia::linksThatAreOpened_data() {
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("opened"); // empty: not before the user said so
    QTest::newRow("https") << "https://www.beethoven.de/"
                           << "url https://www.beethoven.de/";
    QTest::newRow("letter case") << "HTTP://a.org"
                                 << "url http://a.org";
    QTest::newRow("ftp") << "ftp://a.org"
                         << "url ftp://a.org";
    QTest::newRow("mailto") << "mailto:a@b.org"
                            << "url mailto:a@b.org";
    QTest::newRow("no scheme") << "www.a.org"
                               << "url http://www.a.org";
    for (const char* url : {"javascript:alert(1)", " JavaScript:alert(1)", "file:///etc/passwd",
                            "/etc/passwd", "data:text/html,x", "ms-settings:x"})
        QTest::newRow(url) << url << QString();
}

void TestMedia::linksThatAreOpened() {
    QFETCH(QString, url);
    QFETCH(QString, opened);
    Desk desk;
    WebLink link{0, url, "A"};
    QVERIFY(desk.links().save(link));
    if (opened.isEmpty())
        desk.messages.willAnswer(Answer::No);
    QCOMPARE(desk.links().OpenWeb(link.id), !opened.isEmpty());
    QCOMPARE(desk.desktop.opened.join('\n'), opened);
    if (!opened.isEmpty())
        return;
    QVERIFY(desk.messages.asked[0].text.contains(url.trimmed()));
    QCOMPARE(int(desk.messages.asked[0].defaultButton), int(Answer::No));
    desk.messages.willAnswer(Answer::Yes);
    QVERIFY(desk.links().OpenWeb(link.id));
    QCOMPARE(desk.desktop.opened.size(), 1);
}

void TestMedia::relationsFromBothSides() {
    Desk desk;
    desk.run("DELETE FROM Relations");
    CardRelations custom(*desk.session, {"UserDef", 1});
    CardRelations recording(*desk.session, {"Rec", 2});
    QVERIFY(custom.change(ItemKind::Recording, {1, 2, 99999}, {})); // what is gone is passed over
    QVERIFY(custom.change(ItemKind::Composer, {2}, {}));
    QCOMPARE(desk.count("Relations"), 3);
    QCOMPARE(recording.related(ItemKind::Custom), QSet<qint64>{1});
    QVERIFY(recording.change(ItemKind::Custom, {1, 3}, {})); // once, not twice
    QCOMPARE(desk.count("Relations"), 4);
    QVERIFY(recording.change(ItemKind::Custom, {}, {1}));
    QCOMPARE(custom.related(ItemKind::Recording), QSet<qint64>{1});
    std::vector<CardRelations::Related> related;
    QVERIFY(custom.LoadRelations(related));
    QCOMPARE(related.size(), 2u); // composers first
    QCOMPARE(related[0].card, (CardOwner{"Cps", 2}));
    QCOMPARE(related[0].name, desk.items().nameOf(ItemKind::Composer, 2));
    QCOMPARE(CardRelations::list(related).text(1, 0), desk.items().nameOf(ItemKind::Recording, 1));
    QVERIFY(!CardRelations(*desk.session, {"Pfr", 99999}).change(ItemKind::Custom, {1}, {}));
}

void TestMedia::customCards() {
    Desk desk(false);
    FakeCards open;
    CustomCards cards(*desk.session, &open);
    qint64 first = 0, second = 0;
    QVERIFY(cards.save(first, " 100% Élégie "));
    QVERIFY(cards.save(second, "100x Élégie"));
    qint64 again = 0;
    QVERIFY(!cards.save(again, "100% éLÉGIE"));
    QCOMPARE(desk.messages.told, QStringList("Item already exists"));
    QVERIFY(!cards.save(second, "100% élégie"));
    QVERIFY(cards.save(first, "100% élégie")); // its own name in another letter case
    QVERIFY(!cards.save(again, " ") && !cards.save(again, QString(251, 'x')));
    QCOMPARE(again, 0);
    QCOMPARE(desk.text("SELECT UserDefTitle FROM UserDef WHERE UserDefID = 1"), QString("100% élégie"));
    QCOMPARE(open.reloaded, QStringList({"#UserDef1", "#UserDef2", "#UserDef1"}));

    // A card without a title is a card: it can be merged away.
    desk.run("UPDATE UserDef SET UserDefTitle = '' WHERE UserDefID = 2");
    desk.messages.willAnswer(Answer::Ok);
    QVERIFY(desk.items().Migra(ItemKind::Custom, 2, 1));
    QCOMPARE(desk.count("UserDef"), 1);
}

// The list of a card asks once, however long it is.
void TestMedia::manyMedia() {
    Desk desk;
    QStringList files;
    for (int i = 0; i < 500; ++i)
        files << desk.write(QString("many/Track %1.flac").arg(i));
    QCOMPARE(desk.media().add(files, desk.progress), 500);
    const qint64 before = desk.number("SELECT COUNT(*) FROM Media");
    ItemList list;
    QVERIFY(desk.media().LoadMedia(list));
    QCOMPARE(list.rowCount(), before);
    desk.messages.willAnswer(Answer::Ok);
    std::vector<qint64> ids;
    for (int row = 0; row < list.rowCount(); ++row)
        ids.push_back(list.id(row));
    QVERIFY(desk.media().Remove_Media(ids, desk.progress));
    QCOMPARE(desk.count("Media"), 0);
}

QTEST_GUILESS_MAIN(TestMedia)
#include "test_media.moc"
