// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Configuration.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace tessaranth;

namespace {

/// The colours of both sections, then all that follows them, as a new file holds them; "@" is the
/// application folder with its separator.
const char* const newColours =
    R"(MdiBack=8421504;CpsBC=2237106;PfrBC=6824719;RecBC=25600;CusBC=9109643;CpsFC=65535;
PfrFC=65535;RecFC=8454143;CusFC=65535;CpsLC=65535;PfrLC=8454143;RecLC=16777215;CusLC=16777215;CpsHC=6824719;
PfrHC=128;RecHC=128;CusHC=6824719;WksFC=16744448;WkcFC=16777215;WkcBC=32896;
)";
const char* const newSettings =
    R"([Reports];BackgroundColor=16766975;BackgroundImage=;HeaderFontSize=14;TextFontSize=10;
TextFontColor=4194432;OutputDir=@Tessaranth_Html;Signature=1;TextFontType=Verdana;
[Proxy settings];Enabled=0;Address=;Port=;Username=;Password=;
[Data folders];Images=@Tessaranth_Images;Documents=@Tessaranth_Docs;Labels=@Tessaranth_Labels;
Media=@Tessaranth_Media;Database=@my.tsb;
[Maintenance];Compact=1;Backup=1;CopyDb=0;DestFolder=;
[Misc];FreeDB=gnudb.gnudb.org;Menu=0;Version=1;WKey=1;WorkInBold=1;
[Toolbox];Visible=-1;Position=-1;Width=3800;
[Runtime];ClassCps=1;ClassPfr=1;ClassRec=1;ClassCus=1;ShowCps=1;ShowPfr=1;ShowRec=1;ShowCus=1;
HtmlColor1=0;HtmlColor2=1;
[Web];SearchHost=www.google.com;ImageHost=images.google.com;StoreHost=www.amazon.com;StoreTag=;Site=;
)";

} // namespace

class ConfigurationTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void newFile();
    void completesOlderFile();
    void completesOnlyWhatReadsEmpty();
    void cannotBeCreated();
    void typedValues();
    void lastFolders();

private:
    QByteArray bytes() {
        QFile file(m_file);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
    }
    void setBytes(const QByteArray& content) {
        QFile file(m_file);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
    Configuration configuration() const { return Configuration(m_file, m_folder->path()); }
    QString native(const QString& name) const { return QDir::toNativeSeparators(m_folder->filePath(name)); }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_file;
};

void ConfigurationTest::init() {
    m_folder = std::make_unique<QTemporaryDir>();
    m_file = m_folder->filePath("tsc.cfg");
}

void ConfigurationTest::newFile() {
    QString expected = QString("[DefColors];%1[Colors];%1%2").arg(newColours, newSettings);
    expected.remove('\n').replace("@", native("x").chopped(1));
    QVERIFY(!configuration().exists());
    QVERIFY(configuration().create(m_folder->filePath("my.tsb")));
    QVERIFY(configuration().exists());
    QCOMPARE(QString::fromUtf8(bytes()).split("\r\n"), expected.split(';'));

    const QByteArray before = bytes();
    configuration().addMissingKeys();
    QCOMPARE(bytes(), before);
}

void ConfigurationTest::completesOlderFile() {
    setBytes("; mine\n[Colors]\nWksFC=1\n\n[DefColors]\nWksFC=2\n[Reports]\nHeaderFontSize=\"18\"\n"
             "MainPageTitle=Meine B\xfc"
             "cher\n[Data folders]\nMedia= /m \nDatabase=/x/Tessaranth.tsb\n[Misc]\nrubbish\n"
             "Menu=7\n[Maintenance]\nBackup=0");
    configuration().addMissingKeys();
    QCOMPARE(bytes(),
             QByteArray(
                 "; mine\n[Colors]\nWksFC=1\nWkcFC=16777215\nWkcBC=32896\n\n[DefColors]\nWksFC=2\n"
                 "WkcFC=16777215\nWkcBC=32896\n[Reports]\nHeaderFontSize=\"18\"\nMainPageTitle=Meine B\xfc"
                 "cher\n"
                 "Signature=1\nTextFontType=Verdana\n[Data folders]\nMedia= /m \nDatabase=/x/Tessaranth.tsb\n"
                 "[Misc]\nrubbish\nMenu=7\nWKey=1\nWorkInBold=1\n[Maintenance]\nBackup=0\nCopyDb=0\n"
                 "DestFolder=\n[Web]\nSearchHost=www.google.com\nImageHost=images.google.com\n"
                 "StoreHost=www.amazon.com\n"));
}

void ConfigurationTest::completesOnlyWhatReadsEmpty() {
    QVERIFY(configuration().create(QString()));
    QVERIFY(configuration().write("Maintenance", "CopyDb", ""));
    QVERIFY(configuration().write("Maintenance", "DestFolder", "/backup"));
    QVERIFY(configuration().write("Reports", "Signature", "0"));
    QVERIFY(configuration().write("Colors", "WkcFC", "5"));
    configuration().addMissingKeys();
    QCOMPARE(configuration().read("Maintenance", "CopyDb"), QString("0"));
    QCOMPARE(configuration().read("Maintenance", "DestFolder"), QString("/backup"));
    QCOMPARE(configuration().read("Reports", "Signature"), QString("0"));
    QCOMPARE(configuration().read("Colors", "WkcFC"), QString("5"));
    QCOMPARE(configuration().read("Data folders", "Database"), native("Tessaranth.tsb"));
}

void ConfigurationTest::cannotBeCreated() {
    QVERIFY(QDir().mkdir(m_file));
    QVERIFY(!configuration().exists());
    QVERIFY(!configuration().create(QString()));
    QVERIFY(!Configuration(m_folder->filePath("missing/tsc.cfg"), m_folder->path()).create(QString()));
}

void ConfigurationTest::typedValues() {
    setBytes("[Misc]\na=1\nb=-1\nc=0\nd=2\ne=True\nf=12x\ng=-7\n[Colors]\nMdiBack=65280\nCpsBC=\nPfrBC=blue\n"
             "RecBC=16777216\nOwn=16711680\nBad=x\n");
    const Configuration file = configuration();
    for (const char* key : {"a", "b"})
        QVERIFY(file.flag("Misc", key));
    for (const char* key : {"c", "d", "e", "missing"})
        QVERIFY(!file.flag("Misc", key));
    QCOMPARE(file.number("Misc", "g", 3), -7);
    QCOMPARE(file.number("Misc", "f", 3), 3);
    QCOMPARE(file.number("Misc", "missing", 3), 3);

    QCOMPARE(file.colour("MdiBack"), QColor(0, 255, 0));
    QCOMPARE(file.colour("Own"), QColor(0, 0, 255));
    QCOMPARE(file.colour("CpsBC"), QColor(0xb2, 0x22, 0x22));
    QCOMPARE(file.colour("PfrBC"), QColor(0x0f, 0x23, 0x68));
    QCOMPARE(file.colour("RecBC"), QColor(0, 0x64, 0));
    QCOMPARE(file.colour("WkcBC"), QColor(128, 128, 0));
    QCOMPARE(file.colour("Bad"), QColor(Qt::black));
    Configuration written = configuration();
    QVERIFY(written.setColour("WkcBC", QColor(1, 2, 3)));
    QCOMPARE(file.read("Colors", "WkcBC"), QString::number(3 * 65536 + 2 * 256 + 1));
    QCOMPARE(file.colour("WkcBC"), QColor(1, 2, 3));
}

void ConfigurationTest::lastFolders() {
    Configuration file = configuration();
    const QHash<QString, QString> keys{{"Image", "LastDirImages"},
                                       {"Doc", "LastDirDocs"},
                                       {"Label", "LastDirLabels"},
                                       {"Media", "LastDirMedia"},
                                       {"List", "LastDirList"},
                                       {"BackImage", "BackImageDir"},
                                       {"Catalog", "Catalog"},
                                       {"Pers", "LastDirPers"},
                                       {"TextCleanup", "LastDirTextCleanup"},
                                       {"TempImport", "LastDirTempImport"},
                                       {"ImageEx", "LastDirImageEx"},
                                       {"WkRep", "LastDirWkRep"},
                                       {"DocEx", "LastDirDocEx"}};
    for (auto it = keys.begin(); it != keys.end(); ++it) {
        QVERIFY(QDir(m_folder->path()).mkdir(it.key()));
        const QString folder = native(it.key());
        QCOMPARE(file.lastFolder(it.key()), QString());
        file.setLastFolder(it.key(), folder + "/a.b");
        QCOMPARE(file.lastFolder(it.key()), folder);
        QCOMPARE(file.read("Runtime", it.value()), folder);
        file.setLastFolder(it.key(), folder + "/missing/a.b");
        file.setLastFolder(it.key(), "a.b");
        file.setLastFolder(it.key(), "");
        QCOMPARE(file.lastFolder(it.key()), folder);
    }
    file.setLastFolder("Image", m_folder->path() + "\\a.b");
    QCOMPARE(file.lastFolder("Image"), QDir::toNativeSeparators(m_folder->path()));
    file.setLastFolder("Unheard of", m_folder->filePath("a.b"));
    QCOMPARE(file.lastFolder("Unheard of"), QString());
}

QTEST_APPLESS_MAIN(ConfigurationTest)
#include "test_configuration.moc"
