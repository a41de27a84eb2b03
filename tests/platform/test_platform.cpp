// SPDX-License-Identifier: GPL-3.0-or-later
#include "cd/Radar.h"
#include "platform/AppFolder.h"
#include "platform/DesktopScheme.h"
#include "platform/Loopback.h"
#include "platform/OperatingSystem.h"
#include "platform/Registry.h"
#include "platform/SingleInstance.h"
#include "platform/Volumes.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QNetworkInterface>
#include <QProcess>
#include <QSignalSpy>
#include <QStorageInfo>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

using namespace tessaranth;

namespace {

const QStringList companions{"tsrthres.dll", "tsrcps.dll", "tsrpfr.dll", "WKeys.dat"};
const QDateTime release(QDate(2024, 5, 1), QTime(12, 0), Qt::UTC);

void setFile(const QString& path, const QByteArray& content, const QDateTime& time = release) {
    QFile file(path);
    QVERIFY2(file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush(),
             qPrintable(path));
    QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
}

QByteArray content(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
}

/// A second start, in a process of its own: 0 when it became the first instance, 1 when another one is.
int secondStart(const QString& folder, bool isKilled = false) {
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {isKilled ? "--hold" : "--acquire", folder});
    if (isKilled) {
        process.waitForReadyRead(10'000); // it says so once it holds the lock
        process.kill();
    }
    // Its end may be noticed among the events, and then there is nothing left to wait for.
    while (process.state() != QProcess::NotRunning && !process.waitForFinished(10))
        QCoreApplication::processEvents();
    return process.exitCode();
}

} // namespace

class PlatformTest : public QObject {
    Q_OBJECT
private slots:
    void operatingSystem_data();
    void operatingSystem();
    void runningSystem();
    void serversKeepToThisMachine();
    void applicationFolder();
    void firstStart();
    void laterStarts();
    void failingFill();
    void secondInstance();
    void killedInstance();
    void volumes();
    void radar();
    void desktopColours();
};

void PlatformTest::operatingSystem_data() {
    using P = SystemVersion::Platform;
    QTest::addColumn<P>("platform");
    QTest::addColumn<QList<int>>("numbers");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("refusal");
    const QString needs98 = "Cannot continue! & vbcrLfThis program require at least Windows 98!";
    const QString needsNt4 = "Cannot continue! & vbcrLfThis program require at least Windows NT 4!";
    QTest::newRow("Win32s") << P::Win32s << QList{3, 11, 0} << "Windows 3.x"
                            << "";
    QTest::newRow("95") << P::Windows9x << QList{4, 0, 950} << "95" << needs98;
    QTest::newRow("95 OSR2") << P::Windows9x << QList{4, 0, 1111} << "95OSR2" << needs98;
    QTest::newRow("95 OSR2.5") << P::Windows9x << QList{4, 3, 1214} << "95OSR2" << needs98;
    QTest::newRow("98") << P::Windows9x << QList{4, 10, 1998} << "98"
                        << "";
    QTest::newRow("98 SE") << P::Windows9x << QList{4, 10, 2222} << "98SE"
                           << "";
    QTest::newRow("ME") << P::Windows9x << QList{4, 90, 3000} << "ME"
                        << "";
    QTest::newRow("NT 3.1") << P::WindowsNt << QList{3, 10, 511} << "NT31" << needsNt4;
    QTest::newRow("NT 3.x") << P::WindowsNt << QList{3, 20, 0} << "NT3" << needsNt4;
    QTest::newRow("NT 3.5") << P::WindowsNt << QList{3, 50, 807} << "NT35" << needsNt4;
    QTest::newRow("NT 3.51") << P::WindowsNt << QList{3, 51, 1057} << "NT351" << needsNt4;
    QTest::newRow("NT 4") << P::WindowsNt << QList{4, 0, 1381} << "NT4"
                          << "";
    QTest::newRow("2000") << P::WindowsNt << QList{5, 0, 2195} << "2000"
                          << "";
    QTest::newRow("XP") << P::WindowsNt << QList{5, 1, 2600} << "XP"
                        << "";
    QTest::newRow("Server 2003") << P::WindowsNt << QList{5, 2, 3790} << "XP"
                                 << "";
    QTest::newRow("Vista") << P::WindowsNt << QList{6, 0, 6000} << "VISTA"
                           << "";
    QTest::newRow("11") << P::WindowsNt << QList{10, 0, 22000} << "VISTA"
                        << "";
}

void PlatformTest::operatingSystem() {
    QFETCH(SystemVersion::Platform, platform);
    QFETCH(QList<int>, numbers);
    QFETCH(QString, name);
    QFETCH(QString, refusal);
    QCOMPARE(operatingSystemName({platform, numbers[0], numbers[1], numbers[2]}), name);
    QCOMPARE(versionGateMessage(name), refusal);
    if (!QStringList{"NT4", "2000", "XP", "VISTA"}.contains(name))
        QVERIFY(!isAdministrator(name));
}

void PlatformTest::radar() {
    struct : DiscDrives {
        QStringList volumeNames() const override { return names; }
        QStringList names{"Data", "audio cd (E:)"};
    } drives;
    Radar radar(drives);
    QSignalSpy inserted(&radar, &Radar::discInserted);
    radar.setEnabled(true);
    radar.look(); // still the same disc
    QCOMPARE(inserted.size(), 1);
    drives.names = QStringList{};
    radar.look();
    drives.names = QStringList{"Audio CD"};
    radar.look();
    QCOMPARE(inserted.size(), 2);
    radar.setEnabled(false);
    QVERIFY(!radar.isEnabled());
}

void PlatformTest::desktopColours() {
    QVERIFY(desktopScheme(Qt::white, QColor(48, 140, 198)) == DesktopScheme::NormalColor);
    QVERIFY(desktopScheme(Qt::white, QColor(140, 160, 70)) == DesktopScheme::HomeStead);
    QVERIFY(desktopScheme(Qt::white, QColor(170, 170, 175)) == DesktopScheme::Metallic);
    QVERIFY(desktopScheme(Qt::black, QColor(48, 140, 198)) == DesktopScheme::Metallic);
    QVERIFY(desktopScheme() == DesktopScheme::NormalColor); // without a desktop
}

void PlatformTest::runningSystem() {
    QCOMPARE(versionGateMessage(operatingSystemName()), QString());
    QVERIFY(!userAgent().isEmpty());
#ifndef Q_OS_WIN
    QCOMPARE(userAgent(), QString("Mozilla/4.0 (compatible; MSIE 6.0; Win32)"));
#endif
}

void PlatformTest::serversKeepToThisMachine() {
#ifndef Q_OS_LINUX
    QSKIP("Only Linux has the VNC platform.");
#endif
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::Any));
    const quint16 port = server.serverPort();
    const auto answers = [port](const QHostAddress& address) {
        QTcpSocket caller;
        caller.connectToHost(address, port);
        return caller.waitForConnected(2'000);
    };
    QHostAddress outside;
    for (const QHostAddress& address : QNetworkInterface::allAddresses())
        if (!address.isLoopback() && address.protocol() == QAbstractSocket::IPv4Protocol && answers(address))
            outside = address;
    QCOMPARE(confineServersToLoopback(), 1);
    while (server.hasPendingConnections())
        delete server.nextPendingConnection();
    QSignalSpy arrived(&server, &QTcpServer::newConnection);
    QVERIFY(answers(QHostAddress::LocalHost));
    QTRY_COMPARE(arrived.count(), 1);
    QVERIFY(!answers(QHostAddress::LocalHostIPv6));
    if (outside.isNull())
        QSKIP("This machine has no address but its own.");
    QVERIFY(!answers(outside));
}

void PlatformTest::applicationFolder() {
    QTemporaryDir root;
    const QString program = root.filePath("program");
    const QString user = root.filePath("user");
    QVERIFY(QDir().mkpath(program));
    QCOMPARE(appFolder({root.filePath("home/"), program, user}), root.filePath("home"));
    QCOMPARE(appFolder({"", program + "/", user}), program);
    QVERIFY(QDir(program).isEmpty());
    QCOMPARE(appFolder({"", root.filePath("missing"), user}), user);
#ifdef Q_OS_UNIX
    QCOMPARE(appFolder({"", "/usr/bin/", user}), user);
#endif
    QCOMPARE(shareFolder(program), QString());
    QVERIFY(QDir().mkpath(root.filePath("share/tessaranth")));
    QCOMPARE(shareFolder(program), root.filePath("share/tessaranth"));
}

void PlatformTest::firstStart() {
    QTemporaryDir root;
    const QString share = root.filePath("share");
    const QString home = root.filePath("new/home");
    QVERIFY(QDir().mkpath(share));
    for (const QString& name : companions)
        setFile(share + "/" + name, "shipped " + name.toUtf8());
    setFile(share + "/Tessaranth.tsb", "template");

    QCOMPARE(fillAppFolder(home, share), QString());
    for (const QString& name : companions)
        QCOMPARE(content(home + "/" + name), "shipped " + name.toUtf8());
    QCOMPARE(content(home + "/Tessaranth.tsb"), QByteArray("template"));
    QCOMPARE(QDir(home).entryList(QDir::Files | QDir::Hidden).size(), 5);

    // The user's own catalog, put there before the first start, stays.
    setFile(home + "/Tessaranth.tsb", "mine", release.addYears(-9));
    QFile::remove(home + "/WKeys.dat");
    QCOMPARE(fillAppFolder(home, share), QString());
    QCOMPARE(content(home + "/Tessaranth.tsb"), QByteArray("mine"));
    QCOMPARE(content(home + "/WKeys.dat"), QByteArray("shipped WKeys.dat"));
}

void PlatformTest::laterStarts() {
    QTemporaryDir root;
    const QString share = root.filePath("share");
    const QString home = root.filePath("home");
    QVERIFY(QDir().mkpath(share));
    for (const QString& name : companions)
        setFile(share + "/" + name, "1");
    setFile(share + "/Tessaranth.tsb", "template");
    QCOMPARE(fillAppFolder(home, share), QString());
    setFile(home + "/tsc.cfg", "[Misc]\r\n");

    // A newer release, though built before the day on which the older one was installed.
    setFile(share + "/tsrcps.dll", "2", release.addDays(1));
    setFile(share + "/tsrpfr.dll", "0", release.addDays(-1));
    QVERIFY(QFile::remove(home + "/WKeys.dat"));
    QVERIFY(QFile::remove(home + "/Tessaranth.tsb"));
    QCOMPARE(fillAppFolder(home, share), QString());
    QCOMPARE(content(home + "/tsrcps.dll"), QByteArray("2"));
    QCOMPARE(content(home + "/tsrpfr.dll"), QByteArray("1"));
    QVERIFY(!QFile::exists(home + "/WKeys.dat"));
    QVERIFY(!QFile::exists(home + "/Tessaranth.tsb"));

    QCOMPARE(fillAppFolder(home, QString()), QString());
    QCOMPARE(fillAppFolder(share, share), QString());
}

void PlatformTest::failingFill() {
    QTemporaryDir root;
    const QString share = root.filePath("share");
    QVERIFY(QDir().mkpath(share));
    setFile(share + "/tsrcps.dll", "1");
    setFile(root.filePath("file"), "");
    QVERIFY(fillAppFolder(root.filePath("file/home"), share).contains(root.filePath("file/home")));

    QVERIFY(QDir().mkpath(root.filePath("home/tsrcps.dll"))); // nothing can be renamed over a folder
    QVERIFY(QFile::remove(share + "/tsrcps.dll"));
    setFile(share + "/tsrcps.dll", "2", QDateTime::currentDateTime().addDays(1));
    QVERIFY(fillAppFolder(root.filePath("home"), share).contains("tsrcps.dll"));
    QCOMPARE(QDir(root.filePath("home")).entryList(QDir::Files | QDir::Hidden), QStringList());
}

void PlatformTest::secondInstance() {
    QTemporaryDir home;
    QTemporaryDir otherHome;
    int shown = 0;
    {
        SingleInstance first(home.path());
        first.activated = [&] { ++shown; };
        QVERIFY(first.acquire());
        QCOMPARE(secondStart(home.path()), 1);
        QTRY_COMPARE(shown, 1);
        SingleInstance second(home.path() + "/.");
        QVERIFY(!second.acquire());
        QTRY_COMPARE(shown, 2);
        QCOMPARE(secondStart(otherHome.path()), 0);
        QCOMPARE(shown, 2);
    }
    QCOMPARE(secondStart(home.path()), 0);
    QCOMPARE(shown, 2);
    QVERIFY(SingleInstance(home.filePath("missing")).acquire());
}

void PlatformTest::killedInstance() {
    QTemporaryDir home;
    secondStart(home.path(), true);
    QVERIFY(QFile::exists(home.filePath("tessaranth.lock")));
    int shown = 0;
    SingleInstance instance(home.path());
    instance.activated = [&] { ++shown; };
    QVERIFY(instance.acquire());
    QCOMPARE(secondStart(home.path()), 1);
    QTRY_COMPARE(shown, 1);
}

void PlatformTest::volumes() {
    QCOMPARE(volumeType("iso9660", true), QString("CD-ROM"));
    QCOMPARE(volumeType("ext4", false), QString("Fixed"));
    QCOMPARE(volumeType("vfat", true), QString("Removable"));
    QCOMPARE(volumeType("cifs", std::nullopt), QString("Remote"));
    QCOMPARE(volumeType("tmpfs", std::nullopt), QString("RAM disk"));
    QCOMPARE(volumeType("overlay", std::nullopt), QString("Fixed"));
    QCOMPARE(volumeType("", std::nullopt), QString("Unknown"));
    QTemporaryDir folder;
    const Volume here = volumeOf(folder.path());
    // Within a changed root there may be no volume that the system knows.
    if (QStorageInfo(folder.path()).isValid())
        QVERIFY(!here.name.isEmpty());
    QVERIFY(here.type != "CD-ROM" && !here.type.isEmpty());
    QCOMPARE(volumeOf(folder.filePath("missing/too/a.mp3")).name, here.name);
    QCOMPARE(volumeOf(folder.filePath("missing/too/a.mp3")).type, here.type);
    QCOMPARE(volumeOf("").type, QString("Unknown"));
    QCOMPARE(fileTypeName("no such.mp3"), QString("MP3 audio"));
    QVERIFY(fileTypeName("a.jpg").contains("JPEG"));
}

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.value(1) == "--acquire")
        return SingleInstance(arguments.value(2)).acquire() ? 0 : 1;
    if (arguments.value(1) == "--hold") {
        SingleInstance instance(arguments.value(2));
        if (!instance.acquire())
            return 1;
        fputs("held\n", stdout);
        fflush(stdout);
        return application.exec();
    }
    PlatformTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_platform.moc"
