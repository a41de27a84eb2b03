// SPDX-License-Identifier: GPL-3.0-or-later
// Recordings from the command line, as a user types it.
#include "support/CommandLine.h"
#include "support/TestHome.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace tessaranth;

class TestCliRecordings : public QObject {
    Q_OBJECT

private slots:
    void addShowAndTracks();
    void sampleIsShownWhole();
};

void TestCliRecordings::addShowAndTracks() {
    TestHome home;
    home.useTemplate();
    const auto write = [&](const QString& name, const QByteArray& bytes) {
        QFile file(home.file(name));
        if (file.open(QIODevice::WriteOnly))
            file.write(bytes);
        return file.fileName();
    };
    const QString good = write("good.txt", "1. Kyrie 4:30\n2. Gloria\n");
    const QString latin = write("latin.txt", "Pr\xE9lude\n");
    const struct {
        QStringList words;
        int code;
        QString out, err; ///< all of the first, a part of the second
    } steps[] = {
        {{"recording", "add"}, 2, {}, "--title"},
        {{"recording", "add", "--title", " "}, 1, {}, "At least you must insert the recording title."},
        {{"recording", "add", "--title", "x", "--units", "0"}, 1, {}, "Units"},
        {{"recording", "add", "--title", "x", "--units", "1.5"}, 1, {}, "Units"},
        {{"recording", "add", "--title", "x", "--label", "Nobody's"}, 1, {}, "No label is called Nobody's."},
        {{"recording", "add", "--title", "O'Neill", "--units", "2", "--carrier", "cd", "--barcode", "42",
          "--spars", "DDD"},
         0,
         "1\n",
         {}},
        {{"recording", "add", "--title", "Again", "--barcode", "42"}, 1, {}, "(O'Neill) has the barcode 42"},
        {{"recording", "add", "--title", "Again", "--barcode", "42", "--yes"}, 0, "2\n", {}},
        {{"recording", "tracks", "1", "--disc", "2", "--from", good}, 0, "2\n", {}},
        {{"recording", "tracks", "1", "--disc", "2"},
         0,
         "TrackNbr\tTrackName\tTrackLen\n1\tKyrie\t04:30\n2\tGloria\t\n",
         {}},
        {{"recording", "tracks", "1", "--disc", "3", "--from", good}, 1, {}, "no disc 3"},
        {{"recording", "tracks", "1", "--from", latin}, 1, {}, "is not a list of tracks"},
        {{"recording", "tracks", "1", "--from", home.folder()}, 1, {}, "cannot be read"},
        {{"recording", "tracks", "9", "--from", good}, 1, {}, "There is no recording with the id 9."},
        {{"recording", "show", "9"}, 1, {}, "There is no recording with the id 9."},
        {{"recording", "check"},
         0,
         "RecID\tTitle\tLabel\tComposers\tPerformers\tWorks\tTracks\n"
         "2\tAgain\t\tno\tno\tno\tno\n1\tO'Neill\t\tno\tno\tno\tyes\n",
         {}}};
    for (const auto& step : steps) {
        const CliResult result = runCli(home.folder(), step.words);
        QVERIFY2(result.code == step.code, qPrintable(step.words.join(' ') + ": " + result.err));
        QCOMPARE(result.out, step.out);
        QVERIFY2(result.err.contains(step.err), qPrintable(result.err));
    }
}

void TestCliRecordings::sampleIsShownWhole() {
    TestHome home;
    home.useSample();
    const QString id =
        runCli(home.folder(), {"sql", "SELECT RecID FROM Rec WHERE RecTitle LIKE 'Puccini: Tosca'"})
            .lines()
            .value(1);
    const QJsonObject tosca =
        QJsonDocument::fromJson(runCli(home.folder(), {"recording", "show", id, "--json"}).out.toUtf8())
            .object();
    QCOMPARE(tosca["composers"].toArray().at(0).toString(), "Puccini, Giacomo");
    QStringList roles;
    for (const QJsonValue& one : tosca["works"].toArray().at(0)["cast"].toArray())
        roles << one["name"].toString() + '=' + one["roles"].toString();
    QVERIFY2(roles.contains("Callas, Maria=Floria Tosca"), qPrintable(roles.join('|')));
    const QString shown = runCli(home.folder(), {"recording", "show", id}).out;
    QVERIFY2(shown.contains("title\tPuccini: Tosca\n"), qPrintable(shown));
}

QTEST_GUILESS_MAIN(TestCliRecordings)
#include "test_clirecordings.moc"
