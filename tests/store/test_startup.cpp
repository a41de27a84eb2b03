// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/AppFolder.h"
#include "store/Startup.h"
#include "support/TestHome.h"
#include "support/Writing.h"

#include <QDir>
#include <QTest>

using namespace tessaranth;

namespace {

QString unableToLocate(const QString& name) {
    return "Unable to locate " + name + "!\nPlease correct the problem. Tessaranth cannot start.";
}

} // namespace

class TestStartup : public QObject {
    Q_OBJECT

private slots:
    void firstStartFillsTheFolder();
    void secondStartFindsEverythingAsItWas();
    void movedCatalogIsAskedFor_data();
    void movedCatalogIsAskedFor();
    void missingCompanionsAreNamedInOrder();
    void unwritableConfigurationEndsTheProgram();
    void catalogThatCannotBeOpenedIsExplained();
    void sessionListsAreLoaded();
    void splashComesAfterTheGateAndBeforeTheCatalog();
};

void TestStartup::firstStartFillsTheFolder() {
    QTemporaryDir folder;
    const QString home = folder.filePath("new/collection");
    ScriptedMessages messages;
    FixedClock clock;
    NoProgress progress;
    Session session(home, messages, clock);
    const StartResult result = Startup(session, {{}, TESSARANTH_SHARE, {}}, progress).run();
    QVERIFY2(result.started, qPrintable(result.reason));
    for (const char* name :
         {"Tessaranth.tsb", "tsc.cfg", "tsrthres.dll", "tsrcps.dll", "tsrpfr.dll", "WKeys.dat",
          "Tessaranth_Images", "Tessaranth_Docs", "Tessaranth_Labels", "Tessaranth_Media", "Tessaranth_Html"})
        QVERIFY2(QFileInfo::exists(home + '/' + name), name);
    QCOMPARE(session.configuration().read("Data folders", "Database"),
             QDir::toNativeSeparators(home + "/Tessaranth.tsb"));
    QCOMPARE(session.dataFolder(Session::Folder::Labels),
             QDir::toNativeSeparators(home + "/Tessaranth_Labels"));
    QCOMPARE(session.userAgent(), "Mozilla/4.0 (compatible; MSIE 6.0; Win32)");
    QVERIFY(!session.connection().exists("SELECT * FROM Rec"));
}

void TestStartup::secondStartFindsEverythingAsItWas() {
    TestHome home;
    home.useSample();
    QVERIFY(home.start().started);
    home.session->configuration().write("Misc", "WKey", "0");
    write(home.session->connection(), "UPDATE Rec SET Notes = 'kept' WHERE RecID = 1");
    const QByteArray configuration = bytesOf(home.file("tsc.cfg"));
    QVERIFY(home.start().started);
    QCOMPARE(bytesOf(home.file("tsc.cfg")), configuration);
    QCOMPARE(home.session->connection().single("SELECT Notes FROM Rec WHERE RecID = 1").toText(), "kept");

    QCOMPARE(home.session->runtime("ShowRec"), "1");
    home.session->setRuntime("ShowRec", "0");
    QCOMPARE(bytesOf(home.file("tsc.cfg")), configuration); // written when the session ends
    shutDown(*home.session, home.progress);
    QCOMPARE(home.session->configuration().read("Runtime", "ShowRec"), "0");
}

void TestStartup::movedCatalogIsAskedFor_data() {
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<bool>("starts");
    QTest::newRow("found") << "moved/Tessaranth.tsb" << true;
    QTest::newRow("other letter case") << "moved/tessaranth.tsb" << false;
    QTest::newRow("other name") << "moved/Copy of Tessaranth.tsb" << false;
    QTest::newRow("cancelled") << "" << false;
}

void TestStartup::movedCatalogIsAskedFor() {
    QFETCH(QString, chosen);
    QFETCH(bool, starts);
    TestHome home;
    home.useSample();
    QVERIFY(home.start().started);
    home.close();
    QVERIFY(QDir().mkpath(home.file("moved")));
    const QString moved = home.file(chosen.isEmpty() ? "moved/Tessaranth.tsb" : chosen);
    QVERIFY(QFile::rename(home.catalog(), moved));
    home.messages.willChoose(chosen.isEmpty() ? QStringList() : QStringList(moved));
    QCOMPARE(home.start().started, starts);
    const FileRequest& request = home.messages.fileRequests.back();
    QCOMPARE(request.title, "Select the database file (Tessaranth.tsb)");
    QCOMPARE(request.patterns, QStringList("Tessaranth.tsb"));
    Configuration configuration(home.file("tsc.cfg"), home.folder());
    QCOMPARE(configuration.read("Data folders", "Database") == moved, starts);
    QCOMPARE(home.messages.told, starts ? QStringList() : QStringList(unableToLocate("Tessaranth.tsb")));
}

void TestStartup::missingCompanionsAreNamedInOrder() {
    TestHome home;
    home.useTemplate();
    QVERIFY(home.start().started);
    const QStringList names{"tsrthres.dll", "tsrcps.dll", "tsrpfr.dll", "WKeys.dat"};
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
        QVERIFY(QFile::remove(home.file(*name)));
        QVERIFY(!home.start().started);
        QCOMPARE(home.messages.told.back(), unableToLocate(*name));
        QCOMPARE(home.messages.icons.back(), MessageIcon::Critical);
    }
}

void TestStartup::unwritableConfigurationEndsTheProgram() {
    TestHome home;
    home.useTemplate();
    // A folder of that name cannot be replaced by a file, whoever runs the test.
    QVERIFY(QDir().mkpath(home.file("tsc.cfg/occupied")));
    QVERIFY(home.start().reason.contains("it is a folder"));
    QCOMPARE(home.messages.told, QStringList("Unable to create the configuration file!\nCannot continue"));
}

void TestStartup::catalogThatCannotBeOpenedIsExplained() {
    TestHome home;
    const StartResult missing = home.start(); // no configuration, no catalog: the connection fails
    QVERIFY(!missing.started);
    QVERIFY(missing.reason.contains("does not exist"));
    QVERIFY(home.messages.told.isEmpty());
    QVERIFY(!QFileInfo::exists(home.file("tsc.cfg")));
}

void TestStartup::sessionListsAreLoaded() {
    TestHome home;
    home.useTemplate();
    QVERIFY(home.start().started);
    QCOMPARE(home.session->carrierIcons().size(), 11);
    QCOMPARE(home.session->carrierIcons().value(9), "Sacd");
    QCOMPARE(home.session->keyNames().size(), 30U);
    QCOMPARE(home.session->keyNames().front().name, "C major");

    QLocale::setDefault(QLocale(QLocale::German));
    home.session->loadKeyNames();
    QCOMPARE(home.session->keyNames().front().name, "C-Dur");
    write(home.session->connection(), "DELETE FROM WKeys WHERE LangID = 7");
    home.session->loadKeyNames();
    QCOMPARE(home.session->keyNames().front().name, "C major");
    QLocale::setDefault(QLocale::c());
}

void TestStartup::splashComesAfterTheGateAndBeforeTheCatalog() {
    TestHome home;
    Session session(home.folder(), home.messages, home.clock);
    int shown = 0;
    const StartResult result =
        Startup(session, {{}, {}, [&] { shown += session.isOpen() ? 100 : 1; }}, home.progress).run();
    QVERIFY(!result.started); // there is no catalog
    QCOMPARE(shown, 1);
}

QTEST_GUILESS_MAIN(TestStartup)
#include "test_startup.moc"
