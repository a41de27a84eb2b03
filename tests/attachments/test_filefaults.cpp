// SPDX-License-Identifier: GPL-3.0-or-later
#include "attachments/FileFaults.h"
#include "store/CatalogCheck.h"
#include "support/ItemCatalog.h"
#include "support/Pictures.h"

#include <QDir>
#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace tessaranth;

class TestFileFaults : public QObject {
    Q_OBJECT

    static QStringList findings(ItemCatalog& catalog) {
        CatalogCheck check(*catalog.session);
        check.add(fileFaults(*catalog.session));
        QStringList found;
        check.find(catalog.progress, [&found](const CatalogCheck::Finding& finding) {
            found << finding.caption + ": " + QString::number(finding.found.count);
        });
        return found;
    }
    static QString put(const ItemCatalog& catalog, Session::Folder folder, const QString& name,
                       const QByteArray& bytes) {
        QDir().mkpath(catalog.session->dataFolder(folder));
        return written(catalog.session->dataFolder(folder) + '/' + name, bytes);
    }

private slots:
    void filesAreFoundAndMendedWithoutLoss() {
        ItemCatalog catalog;
        catalog.run("INSERT INTO Cps (CpsLname) VALUES ('Bach')");
        for (int order = 1; order < 7; ++order)
            catalog.run(
                QString("INSERT INTO Images (RelatedCat, RelatedID, ImageTitle, OrderNbr) VALUES ('Cps', 1, "
                        "'%1', %1)")
                    .arg(order));
        catalog.run(
            "INSERT INTO Cards (RelatedCat, RelatedID, CardTitle, OrderNbr) VALUES ('Cps', 1, 'a', 1)");
        catalog.run("INSERT INTO Labels (LabelName) VALUES ('Columbia')");
        using enum Session::Folder;
        put(catalog, Images, "1", {}); // 2 is missing
        put(catalog, Images, "3", encoded(halves({8, 8}), "PNG"));
        put(catalog, Images, "4", "no picture");
        const QString outside = put(catalog, Documents, "77", "{\\rtf1 stray}");
        put(catalog, Documents, "1", "{\\rtf1 text}");
        put(catalog, Labels, "1", "no logo");
        const QString images = catalog.session->dataFolder(Images) + '/';
        QStringList expected{"Pictures and documents whose file is missing: 2",
                             "Files that are empty or hold no picture: 3", "Files without a row: 1"};
#ifdef Q_OS_UNIX
        QCOMPARE(mkfifo(QFile::encodeName(images + "5").constData(), 0600),
                 0); // reading it would wait for ever
        QVERIFY(QFile::link(outside, images + "6"));
        expected = QStringList{
            "Pictures and documents whose file is missing: 1", "Files that are empty or hold no picture: 3",
            "Files that cannot be opened or are no plain files: 2", "Files without a row: 1"};
#endif
        QCOMPARE(findings(catalog), expected);

        for (int question = 0; question < 3; ++question)
            catalog.messages.willAnswer(Answer::Yes);
        CatalogCheck check(*catalog.session);
        check.add(fileFaults(*catalog.session));
        QStringList told;
        const auto outcome = check.repair(catalog.progress, [&told](const QString& line) { told << line; });
        QCOMPARE(outcome.mended, 3);
        QVERIFY(told.contains("Files without a row: 1 set aside"));
        for (const QString& path :
             {images + "Unused/1", images + "Unused/4", catalog.session->dataFolder(Labels) + "/Unused/1",
              catalog.session->dataFolder(Documents) + "/Unused/77"})
            QVERIFY2(QFileInfo::exists(path), qPrintable(path));
        QVERIFY(QFileInfo::exists(images + "3"));
        QCOMPARE(catalog.number("SELECT OrderNbr FROM Images WHERE ImageID = 3"), 1); // those behind moved up
#ifdef Q_OS_UNIX
        QCOMPARE(outcome.left, 1);
        QCOMPARE(catalog.count("Images"), 3);
        QCOMPARE(findings(catalog), QStringList("Files that cannot be opened or are no plain files: 2"));
#endif
    }
};

QTEST_GUILESS_MAIN(TestFileFaults)
#include "test_filefaults.moc"
