// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Maintenance.h"
#include "store/Upgrade.h"
#include "support/TestHome.h"
#include "support/Writing.h"

#include <QDir>
#include <QTest>
#include <SQLiteCpp/SQLiteCpp.h>

using namespace tessaranth;
using Kind = UpgradeResult::Kind;

namespace {

/// Leaves the upgrade at a given step as a kill would: by an exception that nobody inside catches.
class StopAtStep final : public Progress {
public:
    struct Stopped {};
    explicit StopAtStep(int step) : m_left(step) {}
    void stage(const QString&) override {}
    void percentage(int) override {
        if (m_left-- == 0)
            throw Stopped();
    }
    bool stopped() const override { return false; }

private:
    int m_left;
};

std::vector<int> codesInOrder() {
    std::vector<int> codes;
    for (const UpgradeStep& step : upgradeSteps())
        codes.push_back(step.code);
    return codes;
}

QStringList column(Connection& connection, const QString& statement) {
    QStringList texts;
    Query run = connection.query(statement);
    while (run.next())
        texts.push_back(run.isNull(0) ? QStringLiteral("Null") : run.text(0));
    return texts;
}

} // namespace

class TestUpgrade : public QObject {
    Q_OBJECT

private slots:
    void oldestBecomesLikeFresh();
    void halfWayIsCompleted();
    void currentStaysUntouched();
    void emptiedStaysQuiet();
    void newerIsRefused_data();
    void newerIsRefused();
    void missingMediaFolderEndsTheProgram();
    void failingStepIsNamedAndTriedAgain();
};

void TestUpgrade::oldestBecomesLikeFresh() {
    TestHome fresh;
    fresh.useTemplate();
    QVERIFY(fresh.start().started);
    fresh.close();

    TestHome home;
    home.useOldest();
    const StartResult result = home.start();
    QVERIFY2(result.started, qPrintable(result.reason));
    QCOMPARE(result.upgrade.kind, Kind::Upgraded);
    QCOMPARE(result.upgrade.applied, codesInOrder());
    QCOMPARE(result.upgrade.applied[1], 236565);

    Connection& connection = home.session->connection();
    QCOMPARE(column(connection, "SELECT Rating FROM Rec ORDER BY RecID"),
             QStringList({"Good", "N/A", "N/A", "Poor", "Fair", "Very good", "Excellent"}));
    QCOMPARE(column(connection, "SELECT Barcode FROM Rec WHERE RecID <= 2"), QStringList({"", ""}));
    QCOMPARE(column(connection, "SELECT AddDate FROM Rec WHERE RecID = 1"),
             QStringList("2021-05-08 20:30:15"));
    QCOMPARE(column(connection, "SELECT ModDate FROM Rec WHERE RecID = 1"), QStringList("Null"));
    QCOMPARE(column(connection, "SELECT KeyID FROM Compositions"), QStringList({"0", "0"}));
    QCOMPARE(column(connection, "SELECT SupportType FROM Supports WHERE DefIcon = True").mid(8),
             QStringList({"Sacd", "BluRay", "HdDvd"}));
    QCOMPARE(column(connection, "SELECT MediaFolder FROM Media"),
             QStringList({"D:\\Music\\Gould", "/nowhere/at"}));
    QCOMPARE(column(connection, "SELECT MediaFile FROM Media"), QStringList({"aria.mp3", "all.flac"}));
    QCOMPARE(column(connection, "SELECT KeyName FROM WKeys WHERE KeyID = 1"),
             QStringList({"C major", "C-Dur", "do majeur", "Do maggiore"}));
    QCOMPARE(column(connection, "SELECT CpsLname FROM Cps ORDER BY CpsID"),
             QStringList({"Bach", "Dvořák", "d'Indy"}));
    // Rebuilding tables must not forget which numbers were given before.
    write(connection, "INSERT INTO Rec (RecTitle) VALUES ('New')");
    QCOMPARE(connection.lastKey(), 91);
    home.close();

    QCOMPARE(TestHome::schemaOf(home.catalog()), TestHome::schemaOf(fresh.catalog()));
}

void TestUpgrade::halfWayIsCompleted() {
    TestHome whole;
    whole.useOldest();
    QVERIFY(whole.start().started);
    whole.close();
    const QStringList schema = TestHome::schemaOf(whole.catalog());

    for (int stop = 0; stop <= int(upgradeSteps().size()); ++stop) {
        TestHome home;
        home.useOldest();
        QDir().mkpath(home.file("Tessaranth_Media"));
        {
            Session session(home.folder(), home.messages, home.clock);
            session.setConnection(Connection::open(home.catalog(), home.clock, newestUpgradeCode));
            StopAtStep progress(stop);
            bool stopped = false;
            try {
                Upgrade(session).run(progress);
            } catch (const StopAtStep::Stopped&) {
                stopped = true;
            }
            QVERIFY(stopped);
        }
        const StartResult result = home.start();
        QVERIFY2(result.started, qPrintable(result.reason));
        // The last stops are within the step of the media files, which is done anew with the one behind it.
        QCOMPARE(int(result.upgrade.applied.size()), qMax(int(upgradeSteps().size()) - stop, 2));
        QCOMPARE(column(home.session->connection(), "SELECT Rating FROM Rec WHERE RecID = 1"),
                 QStringList("Good"));
        home.close();
        QCOMPARE(TestHome::schemaOf(home.catalog()), schema);
    }
}

void TestUpgrade::currentStaysUntouched() {
    TestHome home;
    home.useOldest();
    QVERIFY(home.start().started);
    home.close();
    const QByteArray before = bytesOf(home.catalog());
    const StartResult again = home.start();
    QCOMPARE(again.upgrade.kind, Kind::Current);
    QVERIFY(again.upgrade.text().isEmpty());
    home.close();
    QCOMPARE(bytesOf(home.catalog()), before);
}

void TestUpgrade::emptiedStaysQuiet() {
    TestHome home;
    home.useTemplate();
    QVERIFY(home.start().started);
    QVERIFY(Maintenance(*home.session).empty(home.progress));
    const QStringList tables = home.session->connection().tables();
    for (const QString& table : tables)
        if (table != "TsrHistory") // its token says that nothing can be taken back
            QVERIFY2(!home.session->connection().exists("SELECT * FROM " + table), qPrintable(table));
    // Two steps can be repeated; those that would add a column fail and stay unrecorded, without a word.
    const StartResult first = home.start();
    QCOMPARE(first.upgrade.applied, std::vector<int>({236559, 236568}));
    QCOMPARE(first.upgrade.kind, Kind::Upgraded);
    QCOMPARE(home.start().upgrade.kind, Kind::Current);
    QVERIFY(home.messages.told.isEmpty());
    QCOMPARE(home.session->connection().tables(), tables);
    QVERIFY(!home.session->connection().exists("SELECT * FROM Supports"));
}

void TestUpgrade::newerIsRefused_data() {
    QTest::addColumn<int>("code");
    QTest::newRow("a step of the given tables") << newestUpgradeCode + 1;
    QTest::newRow("a step of our own tables") << newestOwnUpgradeCode + 1;
}

void TestUpgrade::newerIsRefused() {
    QFETCH(int, code);
    TestHome home;
    home.useTemplate();
    {
        SQLite::Database database(home.catalog().toStdString(), SQLite::OPEN_READWRITE);
        database.exec("INSERT INTO DbUpgrades (DbUpgradeCode) VALUES (" + std::to_string(code) + ")");
    }
    const QByteArray before = bytesOf(home.catalog());
    const StartResult result = home.start();
    QVERIFY(!result.started);
    QCOMPARE(result.upgrade.kind, Kind::Newer);
    QVERIFY(result.reason.contains("newer version"));
    QCOMPARE(bytesOf(home.catalog()), before);
}

void TestUpgrade::missingMediaFolderEndsTheProgram() {
    TestHome home;
    home.useOldest();
    QVERIFY(home.session == nullptr);
    Configuration configuration(home.file("tsc.cfg"), home.folder());
    QVERIFY(configuration.create(home.catalog()));
    QVERIFY(configuration.write("Data folders", "Media", home.file("not there")));
    const StartResult result = home.start();
    QVERIFY(!result.started);
    QCOMPARE(home.messages.told,
             QStringList("Unable to locate " + home.file("not there") + "\nPlease fix the problem"));
    QCOMPARE(home.messages.icons.front(), MessageIcon::Critical);

    // The folder is put back: the one step left is made up for.
    QVERIFY(QDir().mkpath(home.file("not there")));
    const StartResult again = home.start();
    QVERIFY(again.started);
    QCOMPARE(again.upgrade.applied, std::vector<int>({236569, 900001}));
}

void TestUpgrade::failingStepIsNamedAndTriedAgain() {
    TestHome home;
    home.useOldest();
    QVERIFY(home.start().started);
    home.close();
    {
        // In the way of the table that is written anew.
        SQLite::Database database(home.catalog().toStdString(), SQLite::OPEN_READWRITE);
        database.exec("DELETE FROM DbUpgrades WHERE DbUpgradeCode = 236568; CREATE TABLE tsr_rebuilt (a)");
    }
    const StartResult result = home.start();
    QVERIFY(result.started);
    QCOMPARE(result.upgrade.kind, Kind::FailedAtStep);
    QCOMPARE(result.upgrade.failedStep, 236568);
    home.close();
    SQLite::Database(home.catalog().toStdString(), SQLite::OPEN_READWRITE).exec("DROP TABLE tsr_rebuilt");
    QCOMPARE(home.start().upgrade.applied, std::vector<int>({236568}));
}

QTEST_GUILESS_MAIN(TestUpgrade)
#include "test_upgrade.moc"
