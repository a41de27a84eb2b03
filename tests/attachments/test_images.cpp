// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures of cards: what is taken in and what is refused, their order, and the files beside the rows.
#include "attachments/CardImages.h"
#include "attachments/FileAlignment.h"
#include "support/CommandLine.h"
#include "support/ItemCatalog.h"
#include "support/Pictures.h"

#include <QDir>

using namespace tessaranth;

namespace {

/// A GIF of one black pixel that claims to be larger.
QByteArray gif(int width, int height) {
    QByteArray bytes("GIF89a");
    const auto number = [&](int value) { bytes += char(value & 255) + QByteArray(1, char(value >> 8)); };
    number(width);
    number(height);
    bytes += QByteArray::fromHex("800000"
                                 "000000ffffff"
                                 "2c00000000");
    number(width);
    number(height);
    return bytes + QByteArray::fromHex("00"
                                       "0202440100"
                                       "3b");
}

/// The same JPEG with the note that it is to be turned by a quarter to the right.
QByteArray turned(QByteArray jpeg) {
    return jpeg.insert(2, QByteArray::fromHex("ffe10022"
                                              "457869660000"
                                              "4d4d002a00000008"
                                              "0001"
                                              "0112000300000001"
                                              "00060000"
                                              "00000000"));
}

} // namespace

class TestImages : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_home.reset(); }
    void keepsTheBytesAndTurnsThePicture();
    void refusesWhatIsNoPicture_data();
    void refusesWhatIsNoPicture();
    void hugePicturesAreReadSmall();
    void ordersHaveNoGaps();
    void titlesAndReplacing();
    void severalDroppedFiles();
    void exportsAndCopiesUpright();
    void fileAndRowTogetherOrNotAtAll();
    void cardGoneMeanwhile();
    void alignmentFindsAndRepairsOnlyWhatIsNamed();
    void missingFolderIsNoLoss();
    void commandLine();

private:
    CardImages images() const { return {*m_home->session, {"Rec", 1}}; }
    QStringList files() const {
        return QDir(m_home->session->dataFolder(Session::Folder::Images))
            .entryList(QDir::Files | QDir::Hidden);
    }
    QString order() const {
        QStringList rows;
        Query run = m_home->session->connection().query(
            "SELECT ImageTitle, OrderNbr FROM Images WHERE RelatedID = 1 ORDER BY OrderNbr");
        while (run.next())
            rows << run.text(0) + run.text(1);
        return rows.join(' ');
    }
    QString picture(const char* name = "x.png") const {
        return written(m_home->file(name), encoded(halves({8, 4}), "PNG"));
    }

    std::unique_ptr<ItemCatalog> m_home;
};

void TestImages::init() {
    m_home = std::make_unique<ItemCatalog>();
    m_home->run("INSERT INTO Rec (RecTitle) VALUES ('Fidelio')");
}

void TestImages::keepsTheBytesAndTurnsThePicture() {
    const QByteArray jpeg = turned(encoded(halves({40, 20}), "JPEG"));
    const qint64 id = images().add(written(m_home->file("a.bmp"), jpeg), "Cover"); // the name is no proof
    QVERIFY(id != 0);
    QCOMPARE(bytesOf(images().path(id)), jpeg);
    QCOMPARE(PictureFile::facts(images().path(id)).size, QSize(20, 40));
    const QImage shown = PictureFile::decode(images().path(id), {10, 10});
    QCOMPARE(shown.size(), QSize(5, 10));
    QVERIFY(shown.pixelColor(2, 1).red() > 200 && shown.pixelColor(2, 8).blue() > 200);
    for (const char* format : {"BMP", "PNG"})
        QVERIFY(images().add(written(m_home->file("b"), encoded(halves({8, 4}), format)), format) != 0);
    QVERIFY(images().add(written(m_home->file("c"), gif(1, 1)), "GIF") != 0);
    QCOMPARE(order(), "Cover1 BMP2 PNG3 GIF4");
}

void TestImages::refusesWhatIsNoPicture_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("reason");
    const QByteArray png = encoded(halves({60, 60}), "PNG");
    QByteArray lyingPng = png, lyingBmp = encoded(halves({8, 4}), "BMP");
    lyingPng.replace(16, 8, QByteArray::fromHex("7fffffff7fffffff"));
    lyingBmp.replace(18, 8, QByteArray::fromHex("204e0000204e0000"));
    QTest::newRow("text") << QByteArray("Fidelio, Klemperer") << "is not a picture";
    QTest::newRow("zero bytes") << QByteArray() << "is empty";
    QTest::newRow("zero bits") << QByteArray(5000, 0) << "is not a picture";
    QTest::newRow("drawing") << QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>")
                             << "is not a picture";
    QTest::newRow("GIF bomb") << gif(65535, 65535) << "is too large";
    QTest::newRow("PNG without its data") << png.left(50) << "is damaged";
    QTest::newRow("PNG with a false size") << lyingPng << "";
    QTest::newRow("BMP of 400 megapixels") << lyingBmp << "is damaged";
}

void TestImages::refusesWhatIsNoPicture() {
    QFETCH(QByteArray, bytes);
    QFETCH(QString, reason);
    const QString file = written(m_home->file("cover.jpg"), bytes);
    m_home->messages.willChoose({file}); // refused before a title is asked for
    QCOMPARE(images().ImportImageFromFile(), 0);
    QCOMPARE(m_home->messages.told.size(), 1);
    QVERIFY2(m_home->messages.told[0].contains(reason) && m_home->messages.told[0].contains("cover.jpg"),
             qPrintable(m_home->messages.told[0]));
    QCOMPARE(m_home->count("Images"), 0);
    QVERIFY(files().isEmpty());
}

void TestImages::hugePicturesAreReadSmall() {
    QImage poster(10000, 10000, QImage::Format_Grayscale8);
    poster.fill(120);
    const qint64 id = images().add(written(m_home->file("p.jpg"), encoded(poster, "JPEG")), "Poster");
    QVERIFY(id != 0);
    QCOMPARE(PictureFile::decode(images().path(id), {300, 300}).size(), QSize(300, 300));
}

void TestImages::ordersHaveNoGaps() {
    std::vector<qint64> ids;
    for (const char* title : {"a", "b", "c"})
        ids.push_back(images().add(picture(), title));
    m_home->messages.willAnswer(Answer::Cancel);
    QVERIFY(!images().Remove_Image(ids[1]));
    m_home->messages.willAnswer(Answer::Ok);
    QVERIFY(images().Remove_Image(ids[1]));
    QCOMPARE(m_home->messages.asked.back().title, "Remove image");
    QCOMPARE(m_home->messages.asked.back().text, "Do you want to delete\nb\nfrom Fidelio?");
    QCOMPARE(files(), QStringList({QString::number(ids[0]), QString::number(ids[2])}));
    const qint64 fourth = images().add(picture(), "d");
    QCOMPARE(order(), "a1 c2 d3");
    // Added meanwhile, and so not named: it follows.
    QVERIFY(images().Sort_Images({fourth, ids[0]}));
    QCOMPARE(order(), "d1 a2 c3");
}

void TestImages::titlesAndReplacing() {
    m_home->messages.willChoose({picture("Front cover.png")});
    m_home->messages.willType("L'Orfeo & co");
    const qint64 id = images().ImportImageFromFile();
    QVERIFY(id != 0);
    QCOMPARE(m_home->messages.fileRequests[0].patterns, QStringList({"*.bmp", "*.jpg", "*.gif"}));
    QCOMPARE(m_home->messages.nameRequests[0].defaultText, "Front cover");
    m_home->messages.willType("");
    QCOMPARE(images().PasteImageFromClipboard(halves({8, 4})), 0);
    QCOMPARE(order(), "L'Orfeo & co1");
    QVERIFY(images().rename(id, QString(250, 'x')));
    QVERIFY(!images().rename(id, QString(251, 'x')));
    QVERIFY(!images().rename(id + 1, "other"));
    const QByteArray before = bytesOf(images().path(id));
    QVERIFY(!images().replace(id, written(m_home->file("t.png"), "text")));
    QCOMPARE(bytesOf(images().path(id)), before);
    QVERIFY(images().replace(id, halves({30, 10})));
    QCOMPARE(images().whole(id), halves({30, 10}));
}

void TestImages::severalDroppedFiles() {
    const QStringList dropped{picture("one.png"), written(m_home->file("no.png"), "text"),
                              picture("two.png")};
    QCOMPARE(images().addFiles(dropped, m_home->progress), 2);
    QCOMPARE(order(), "one1 two2");
    QCOMPARE(m_home->messages.told.size(), 1);
    QVERIFY(m_home->messages.told[0].contains("no.png"));
}

void TestImages::exportsAndCopiesUpright() {
    QImage clear(4, 4, QImage::Format_ARGB32);
    clear.fill(Qt::transparent);
    const qint64 id = images().add(clear, "Logo");
    m_home->messages.willChoose({m_home->file("out.bmp")});
    QVERIFY(images().ExportImageToFile(id));
    QVERIFY(bytesOf(m_home->file("out.bmp")).startsWith("BM"));
    QCOMPARE(QImage(m_home->file("out.bmp")).pixelColor(1, 1), QColor(Qt::white));
    QVERIFY(!images().exportTo(id, m_home->file("no such folder/out.bmp")));
    QFile::remove(images().path(id));
    QVERIFY(!images().exportTo(id, m_home->file("out.bmp")));
    QCOMPARE(m_home->messages.told.size(), 2);
}

void TestImages::fileAndRowTogetherOrNotAtAll() {
    const QString folder = m_home->session->dataFolder(Session::Folder::Images);
    QDir(folder).removeRecursively();
    QVERIFY(!written(folder, "a file in the folder's place").isEmpty());
    QCOMPARE(images().add(picture(), "a"), 0);
    QCOMPARE(m_home->count("Images"), 0);
    QVERIFY(m_home->messages.told.value(0).contains("cannot be written"));
    QFile::remove(folder);
    if (!canLimitFiles())
        QSKIP("A full disk cannot be made here.");
    QImage noise(900, 900, QImage::Format_RGB32);
    for (int i = 0; i < 900 * 900; ++i)
        noise.setPixel(i % 900, i / 900, QRgb(i) * 2654435761U);
    written(m_home->file("noise.bmp"), encoded(noise, "BMP"));
    m_home->close();
    const CliResult full = runCli(
        m_home->folder(), {"attach", "image", "Rec", "1", m_home->file("noise.bmp")}, {{}, {}, 1'000'000});
    QCOMPARE(full.code, 1);
    QVERIFY(!full.err.isEmpty());
    QVERIFY(m_home->start().started);
    QCOMPARE(m_home->count("Images"), 0);
    QVERIFY(files().isEmpty());
}

void TestImages::cardGoneMeanwhile() {
    CardImages lost(*m_home->session, {"Rec", 99});
    QCOMPARE(lost.add(picture(), "a"), 0);
    QCOMPARE(m_home->messages.told, QStringList{"This card has been deleted meanwhile."});
    QCOMPARE(m_home->count("Images"), 0);
}

void TestImages::alignmentFindsAndRepairsOnlyWhatIsNamed() {
    std::vector<qint64> ids;
    for (const char* title : {"a", "b", "c", "d"})
        ids.push_back(images().add(picture(), title));
    m_home->run("INSERT INTO Labels (LabelName) VALUES ('Without a logo')");
    for (const qint64 id : {ids[0], ids[1], ids[2]})
        QFile::remove(images().path(id));
    const QString folder = m_home->session->dataFolder(Session::Folder::Images) + '/';
    for (const char* name : {"77", "old scan.jpg", "88"})
        written(folder + name, name);
    QDir().mkpath(folder + "Unused");
    written(folder + "Unused/77", "an older one");

    FileAlignment alignment(*m_home->session);
    FileAlignment::Findings found;
    QVERIFY(alignment.find(found, m_home->progress));
    QCOMPARE(found.lost.size(), 3);
    QCOMPARE(found.lost[0].card, "Fidelio");
    QCOMPARE(found.stray.size(), 3);
    // Meanwhile one file came back and one row came to be: neither is touched.
    written(images().path(ids[1]), "back");
    m_home->run("INSERT INTO Images (ImageID, RelatedCat, RelatedID, OrderNbr) VALUES (88, 'Rec', 2, 1)");
    QCOMPARE(alignment.deleteRows({found.lost[0], found.lost[1]}, m_home->progress), 1);
    QCOMPARE(order(), "b1 c2 d3");
    QCOMPARE(alignment.setAside({found.stray[0], found.stray[1]}, m_home->progress), 1);
    QCOMPARE(bytesOf(folder + "Unused/77 (2)"), "77");
    QCOMPARE(bytesOf(folder + "Unused/77"), "an older one");
    QVERIFY(QFile::exists(folder + "88") && QFile::exists(folder + "old scan.jpg"));
}

void TestImages::missingFolderIsNoLoss() {
    images().add(picture(), "a");
    const QString folder = m_home->session->dataFolder(Session::Folder::Images);
    QVERIFY(QDir().rename(folder, folder + " on a disk that is not connected"));
    FileAlignment::Findings found;
    QVERIFY(FileAlignment(*m_home->session).find(found, m_home->progress));
    QVERIFY(found.lost.empty() && found.stray.empty());
    QCOMPARE(found.missingFolders, QStringList{folder});
}

void TestImages::commandLine() {
    picture("Front.png");
    m_home->run("INSERT INTO Web (RelatedID, RelatedCat, Url, Alias) VALUES (1, 'Rec', 'http://x.org', 'X')");
    m_home->close();
    const auto run = [&](const QStringList& words) { return runCli(m_home->folder(), words); };
    QCOMPARE(run({"attach", "image", "Rec", "1", m_home->file("Front.png")}).out, "1\n");
    QCOMPARE(run({"attach", "list", "Rec", "1"}).lines(),
             QStringList({"Kind\tID\tTitle\tDetail", "image\t1\tFront\t1", "web\t1\tX\thttp://x.org"}));
    QCOMPARE(run({"files", "check"}).code, 0);
    QVERIFY(m_home->start().started);
    QFile::remove(images().path(1));
    m_home->close();
    const CliResult check = run({"files", "check"});
    QCOMPARE(check.code, 1);
    QCOMPARE(check.lines().value(1), "row without file\tImages\t1\tFront\tFidelio");
    for (const QStringList& words :
         {QStringList{"attach", "list", "Genre", "1"}, {"attach", "list", "Rec", "9"}})
        QCOMPARE(run(words).code, 1);
}

QTEST_GUILESS_MAIN(TestImages)
#include "test_images.moc"
