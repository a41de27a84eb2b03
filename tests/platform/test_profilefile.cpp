// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ProfileFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace tessaranth;

namespace {

/// A NUL byte for each "@".
QByteArray withNuls(QByteArray text) { return text.replace('@', QByteArray(1, '\0')); }

} // namespace

class ProfileFileTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void reads_data();
    void reads();
    void writes_data();
    void writes();
    void readsBackWhatWasWritten();
    void keepsHugeLines();
    void refusesWhatItCouldNotFindAgain_data();
    void refusesWhatItCouldNotFindAgain();
    void failsWithoutDamage();

private:
    void setBytes(const QByteArray& bytes) {
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    QByteArray bytes() {
        QFile file(m_path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

void ProfileFileTest::init() {
    m_folder = std::make_unique<QTemporaryDir>();
    m_path = m_folder->filePath("tsc.cfg");
}

void ProfileFileTest::reads_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* name, const QByteArray& content, const QString& expected) {
        QTest::newRow(name) << content << expected;
    };
    row("plain", "[Misc]\r\nKey=1\r\n", "1");
    row("case and blanks", "  [ MISC ]  \n \tkEy \t= \ta b \t\n", "a b");
    row("no last line break", "[Misc]\nKey=1", "1");
    row("first key", "[Misc]\nKey=1\nKey=2\n", "1");
    row("first section", "[Misc]\nOther=1\n[A]\n[misc]\nKey=2\n", "");
    row("in another section", "Key=0\n[Other]\nKey=2\n", "");
    row("comment", "[Misc]\n;Key=0\n; [Other]\nKey=2\n", "2");
    row("double quotes", "[Misc]\nKey=\" a \"\n", " a ");
    row("single quotes", "[Misc]\nKey='a\"'\n", "a\"");
    row("unpaired quotes", "[Misc]\nKey=\"a'\n", "\"a'");
    row("equals signs", "[Misc]\nKey=a=b=\n", "a=b=");
    row("empty", "[Misc]\nKey=\n", "");
    row("garbage", withNuls("\xff\xfe@\x01=\n[\n]\n=\n[Misc\nKey=0\n[Misc]\n@\n====\nKey\nKey=\xe9\n"), "é");
    row("UTF-8", "[Misc]\nKey=Dvo\xc5\x99\xc3\xa1k\n", "Dvořák");
    row("Windows-1252", "[Misc]\nKey=\x80 \x9c\xe9\x81\n", QString::fromUtf8("€ œé\u0081"));
    row("encoding of the whole file", "[Misc]\nKey=\xc3\xa9\n[Other]\nx=\xe9\n", "Ã©");
    row("byte order mark", "\xef\xbb\xbf[Misc]\nKey=1\n", "1");
    row("255 of 256", "[Misc]\nKey=" + QByteArray(256, 'x') + "\n", QString(255, 'x'));
    row("255 characters of three bytes", "[Misc]\nKey=" + QByteArray("\xe2\x82\xac").repeated(300) + "\n",
        QString(255, u'€'));
    row("no half character", "[Misc]\nKey=" + QByteArray(254, 'x') + "\xf0\x9f\x8e\xb5\n", QString(254, 'x'));
}

void ProfileFileTest::reads() {
    QFETCH(QByteArray, content);
    QFETCH(QString, expected);
    QCOMPARE(ProfileFile(m_path).read("Misc", "Key"), QString());
    setBytes(content);
    QCOMPARE(ProfileFile(m_path).read("Misc", "Key"), expected);
}

void ProfileFileTest::writes_data() {
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QByteArray>("after");
    const auto row = [](const char* name, const QByteArray& before, const QString& value,
                        const QByteArray& after) { QTest::newRow(name) << before << value << after; };
    row("new file", "", "a", "[Misc]\r\nKey=a\r\n");
    row("replaced in its line", "[Misc]\r\n kEY = old \nNext=1\r\n", "new",
        "[Misc]\r\n kEY =new\nNext=1\r\n");
    row("only the first", "[A]\nKey=0\n[Misc]\nKey=1\nKey=2\n", "9", "[A]\nKey=0\n[Misc]\nKey=9\nKey=2\n");
    row("at the end of its section", "[Misc]\nA=1\n;last\n\n \n[Z]\nKey=0\n", "9",
        "[Misc]\nA=1\n;last\nKey=9\n\n \n[Z]\nKey=0\n");
    row("behind an open line", "[Misc]\nA=1", "9", "[Misc]\nA=1\nKey=9\n");
    row("new section", "[A]\nKey=0", "9", "[A]\nKey=0\n[Misc]\nKey=9\n");
    row("garbage stays", withNuls("@\1[\n=\n[Misc]\r\nrubbish@\n\n\n[Z]\n"), "9",
        withNuls("@\1[\n=\n[Misc]\r\nrubbish@\nKey=9\n\n\n[Z]\n"));
    row("line breaks become blanks", "[Misc]\n", QString("a\r\nb\nc") + QChar(0) + "d\n[Z]",
        "[Misc]\nKey=a  b c d [Z]\n");
    row("Windows-1252 kept", "[A]\nx=\xe9\n[Misc]\n", "\u20ac\u00e9", "[A]\nx=\xe9\n[Misc]\nKey=\x80\xe9\n");
    row("Windows-1252 does not suffice", "[A]\nx=\xe9 \x80\x81\n[Misc]\n", "Dvořák",
        "[A]\nx=\xc3\xa9 \xe2\x82\xac\xc2\x81\n[Misc]\nKey=Dvo\xc5\x99\xc3\xa1k\n");
    row("would be mistaken for UTF-8", "[Misc]\nKey=\xe9\n", "Ã©", "[Misc]\nKey=\xc3\x83\xc2\xa9\n");
    row("UTF-8 kept", "\xef\xbb\xbf[Misc]\nx=\xc3\xa9\n", "é",
        "\xef\xbb\xbf[Misc]\nx=\xc3\xa9\nKey=\xc3\xa9\n");
    row("only a byte order mark", "\xef\xbb\xbf", "1", "\xef\xbb\xbf[Misc]\r\nKey=1\r\n");
}

void ProfileFileTest::writes() {
    QFETCH(QByteArray, before);
    QFETCH(QString, value);
    QFETCH(QByteArray, after);
    if (!before.isEmpty())
        setBytes(before);
    QVERIFY(ProfileFile(m_path).write("Misc", "Key", value));
    QCOMPARE(bytes(), after);
    QVERIFY(ProfileFile(m_path).write("MISC", "key", value));
    QCOMPARE(bytes(), after);
}

void ProfileFileTest::readsBackWhatWasWritten() {
    ProfileFile file(m_path);
    for (const QString& value : {QString("plain"), QString(" blanks\t"), QString("\"quoted\""), QString("'"),
                                 QString("''"), QString(""), QString("[x]=;"), QString("Łódź 東京 🎵")}) {
        QVERIFY(file.write("Proxy settings", "Password", value));
        QCOMPARE(file.read("Proxy settings", "Password"), value);
    }
    QCOMPARE(bytes().count('\n'), 2);
}

void ProfileFileTest::keepsHugeLines() {
    const QByteArray huge = "[Misc]\r\nHuge=" + QByteArray(10'000'000, 'x') + "\r\n";
    setBytes(huge + "Key=1\r\n");
    ProfileFile file(m_path);
    QCOMPARE(file.read("Misc", "Huge"), QString(255, 'x'));
    QCOMPARE(file.read("Misc", "Key"), QString("1"));
    QVERIFY(file.write("Misc", "Key", "2"));
    QVERIFY(bytes() == huge + "Key=2\r\n");
}

void ProfileFileTest::refusesWhatItCouldNotFindAgain_data() {
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("key");
    QTest::newRow("no section") << " "
                                << "Key";
    QTest::newRow("no key") << "Misc"
                            << "";
    QTest::newRow("equals sign") << "Misc"
                                 << "a=b";
    QTest::newRow("comment") << "Misc"
                             << ";a";
    QTest::newRow("looks like a section") << "Misc"
                                          << "[a]";
    QTest::newRow("line break") << "Misc"
                                << "a\nb";
}

void ProfileFileTest::refusesWhatItCouldNotFindAgain() {
    QFETCH(QString, section);
    QFETCH(QString, key);
    setBytes("[Misc]\nKey=1\n");
    QVERIFY(!ProfileFile(m_path).write({{"Misc", "Good", "1"}, {section, key, "2"}}));
    QCOMPARE(bytes(), QByteArray("[Misc]\nKey=1\n"));
}

void ProfileFileTest::failsWithoutDamage() {
    setBytes("[Misc]\nKey=1\n");
    QVERIFY(!ProfileFile(m_path + "/tsc.cfg").write("Misc", "Key", "2"));
    QVERIFY(!ProfileFile(m_folder->path()).write("Misc", "Key", "2"));
    QVERIFY(!ProfileFile(m_folder->path()).exists());
    QCOMPARE(ProfileFile(m_folder->path()).read("Misc", "Key"), QString());

    QFile(m_path).setPermissions(QFile::ReadOwner);
    if (QFileInfo(m_path).isWritable())
        QSKIP("this user may write to read-only files");
    QVERIFY(!ProfileFile(m_path).write("Misc", "Key", "2"));
    QCOMPARE(bytes(), QByteArray("[Misc]\nKey=1\n"));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files).size(), 1);
}

QTEST_APPLESS_MAIN(ProfileFileTest)
#include "test_profilefile.moc"
