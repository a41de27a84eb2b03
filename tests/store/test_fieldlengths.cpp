// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/CatalogTemplate.h"
#include "store/UpgradeSteps.h"
#include "store/clsDb.h"
#include "support/TestHome.h"
#include "support/Writing.h"

#include <QTest>

using namespace tessaranth;

class FieldLengthsTest : public QObject {
    Q_OBJECT
private slots:
    void lengths();
    void log();
};

void FieldLengthsTest::lengths() {
    const QTemporaryDir folder;
    const FixedClock clock;
    writeCatalogTemplate(folder.filePath("a.tsb"), {});
    const auto connection = Connection::open(folder.filePath("a.tsb"), clock, newestUpgradeCode);
    writeNative(*connection, "CREATE TABLE Own (ID INTEGER, Note TEXT, Short VARCHAR(3))");
    clsDb lengths;
    QCOMPARE(lengths.maxLength("Rec", "RecTitle"), 0);
    lengths.load(*connection);
    QCOMPARE(lengths.maxLength("Rec", "RecTitle"), 250);
    QCOMPARE(lengths.maxLength("rec", "BARCODE"), 20);
    QCOMPARE(lengths.maxLength("Tracks", "TrackLen"), 5);
    QCOMPARE(lengths.maxLength("Tracks", "Disc"), 0);
    QCOMPARE(lengths.maxLength("Tracks", "Missing"), 0);

    const auto trimmed = [&](const char* field, const QString& value) {
        lengths.TableName("Own");
        lengths.FieldName(field);
        return lengths.LeftTrim(value);
    };
    QCOMPARE(trimmed("Short", "abcd"), QString("abc"));
    QCOMPARE(trimmed("Short", "éèà"), QString("éèà"));
    QCOMPARE(trimmed("Short", "ab🎵"), QString("ab"));
    QCOMPARE(lengths.FldMaxLen(), 3);
    for (const char* field : {"Note", "ID", "Missing"})
        QCOMPARE(trimmed(field, "abcd"), QString("abcd"));
}

void FieldLengthsTest::log() {
    const QTemporaryDir folder;
    clsDb lengths;
    lengths.log("lost");
    lengths.CleanLog();
    QVERIFY(!lengths.CreateLog(folder.filePath("missing")));
    QVERIFY(lengths.CreateLog(folder.path()));
    QCOMPARE(lengths.LogFileName(), folder.filePath("Tessaranth.log"));
    lengths.log("one");
    lengths.log("zwölf");
    QVERIFY(lengths.CreateLog(folder.path()));
    QCOMPARE(bytesOf(lengths.LogFileName()).replace("\r", ""), QByteArray("one\nzw\xc3\xb6lf\n"));
    lengths.CleanLog();
    QCOMPARE(bytesOf(lengths.LogFileName()), QByteArray());
}

QTEST_GUILESS_MAIN(FieldLengthsTest)
#include "test_fieldlengths.moc"
