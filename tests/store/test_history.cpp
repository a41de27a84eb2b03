// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/History.h"

#include "items/LabelEditor.h"
#include "store/Maintenance.h"
#include "support/CommandLine.h"
#include "support/ItemCatalog.h"
#include "support/Operations.h"
#include "support/Pictures.h"

#include <QCoreApplication>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QTest>
#include <SQLiteCpp/SQLiteCpp.h>

using namespace tessaranth;

/// The history from the operations that fill it to what is left after a kill.
class TestHistory : public QObject {
    Q_OBJECT
private slots:
    void everyOperationGoesBackAndForth_data();
    void everyOperationGoesBackAndForth();
    void killedAtAnyMoment();
    void betweenTheTwoCommits_data();
    void betweenTheTwoCommits();
    void badFiles_data();
    void badFiles();
    void refusesWhatIsNoLongerAsItWas_data();
    void refusesWhatIsNoLongerAsItWas();
    void cannotBeKept();
    void whatIsNoStep();
    void compactKeepsIt_emptyEndsIt();
    void limits();
    void commandLine();
};

namespace {

constexpr const char* childVariable = "TESSARANTH_TEST_CHILD";

void setLimit(TestHome& home, const char* key, int value) {
    home.session->configuration().write("History", key, QString::number(value));
}

/// Whether two states of a catalog are the same, and where not.
QString difference(const QMap<QString, QStringList>& wanted, const QMap<QString, QStringList>& found) {
    for (auto table = wanted.begin(); table != wanted.end(); ++table) {
        const QStringList rows = found.value(table.key());
        for (const QString& row : table.value())
            if (!rows.contains(row))
                return table.key() + ": lost " + row;
        if (rows.size() != table.value().size())
            return table.key() + ": " + QString::number(rows.size() - table.value().size()) +
                   " rows too many";
    }
    return {};
}

QString difference(const QMap<QString, QByteArray>& wanted, const QMap<QString, QByteArray>& found) {
    if (wanted.keys() != found.keys())
        return "files " + wanted.keys().join(' ') + " are " + found.keys().join(' ');
    for (auto file = wanted.begin(); file != wanted.end(); ++file)
        if (found.value(file.key()) != file.value())
            return file.key() + " has another content";
    return {};
}

void put(const QString& path, const QByteArray& bytes) {
    QVERIFY(QDir().mkpath(QFileInfo(path).path()) && !written(path, bytes).isEmpty());
}

void copyFolder(const QString& from, const QString& to) {
    const QMap<QString, QByteArray> files = filesOf(from);
    for (auto file = files.begin(); file != files.end(); ++file)
        put(to + '/' + file.key(), file.value());
}

QStringList wordsOf(History& history) {
    QStringList words;
    for (const HistoryStep& step : history.steps())
        words << (step.undone ? "(" + step.words + ")" : step.words);
    return words;
}

} // namespace

void TestHistory::everyOperationGoesBackAndForth_data() {
    QTest::addColumn<int>("seed");
    QTest::addColumn<int>("steps");
    QTest::addColumn<bool>("reopens");
    const int wanted = qEnvironmentVariableIntValue("TESSARANTH_HISTORY_STEPS");
    QTest::newRow("one sitting") << 1 << (wanted ? wanted : 250) << false;
    QTest::newRow("closed and opened in between") << 2 << (wanted ? wanted : 150) << true;
}

void TestHistory::everyOperationGoesBackAndForth() {
    QFETCH(int, seed);
    QFETCH(int, steps);
    QFETCH(bool, reopens);
    ItemCatalog home(true);
    setLimit(home, "Steps", 100000);
    QVERIFY(home.start().started);
    const auto firstRows = rowsOf(*home.session);
    const auto firstFiles = dataFilesOf(home);
    Operations operations(home, quint32(seed));
    QMap<QString, int> done;
    for (int i = 0; i < steps; ++i) {
        home.clock.time = home.clock.time.addSecs(61);
        ++done[operations.next()];
        if (reopens && i % 20 == 19)
            QVERIFY(home.start().started);
    }
    History& history = home.session->history();
    const auto lastRows = rowsOf(*home.session, false);
    const auto lastFiles = dataFilesOf(home);
    const qsizetype kept = qsizetype(history.steps().size());
    QVERIFY2(kept > steps / 3, qPrintable(QString::number(kept) + " of " + QString::number(steps)));

    home.messages.told.clear();
    for (qsizetype i = 0; i < kept; ++i) {
        const QString words = home.session->history().undoWords();
        QVERIFY2(home.session->history().undo(), qPrintable(words + home.messages.told.join('\n')));
        if (reopens && i % 20 == 19)
            QVERIFY(home.start().started);
    }
    QCOMPARE(home.session->history().undoWords(), QString());
    QCOMPARE(difference(firstRows, rowsOf(*home.session)), QString());
    QCOMPARE(difference(firstFiles, dataFilesOf(home)), QString());

    QVERIFY2(home.session->history().goTo(std::numeric_limits<qint64>::max()),
             qPrintable(home.messages.told.join('\n')));
    // The marks are counted anew, and an emptied recording had left them.
    QCOMPARE(difference(lastRows, rowsOf(*home.session, false)), QString());
    QCOMPARE(difference(lastFiles, dataFilesOf(home)), QString());
    QVERIFY(home.session->connection().integrityFaults().isEmpty());
}

// A process of its own that works until it is killed.
void TestHistory::killedAtAnyMoment() {
    ItemCatalog home(true);
    setLimit(home, "Steps", 100000);
    const auto firstRows = rowsOf(*home.session);
    home.close();
    QRandomGenerator chance(7);
    for (int kill = 0; kill < 5; ++kill) {
        QProcess child;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(childVariable, home.folder());
        environment.insert("TESSARANTH_TEST_SEED", QString::number(kill));
        child.setProcessEnvironment(environment);
        child.start(QCoreApplication::applicationFilePath(), {});
        QVERIFY(child.waitForReadyRead(20000)); // it works
        QTest::qSleep(int(20 + chance.bounded(300)));
        child.kill();
        QVERIFY(child.waitForFinished());
        QVERIFY(home.start().started);
        QVERIFY(home.session->connection().integrityFaults().isEmpty());
        const auto rows = rowsOf(*home.session, false);
        const auto files = dataFilesOf(home);
        home.messages.told.clear();
        const qsizetype done = qsizetype(home.session->history().steps().size());
        QVERIFY(done > 0);
        QVERIFY2(home.session->history().goTo(0), qPrintable(home.messages.told.join('\n')));
        QCOMPARE(difference(firstRows, rowsOf(*home.session)), QString());
        QVERIFY2(home.session->history().goTo(std::numeric_limits<qint64>::max()),
                 qPrintable(home.messages.told.join('\n')));
        QCOMPARE(difference(files, dataFilesOf(home)), QString());
        QCOMPARE(difference(rows, rowsOf(*home.session, false)), QString());
        home.close();
    }
}

// The states that a kill can leave, put together from the files before and after an operation.
void TestHistory::betweenTheTwoCommits_data() {
    QTest::addColumn<QString>("newer");
    QTest::addColumn<bool>("isDone");
    QTest::newRow("nothing happened") << "" << false;
    QTest::newRow("the history is ahead") << "tsh" << false;
    QTest::newRow("the files have not followed") << "tsh tsb" << true;
    QTest::newRow("everything happened") << "tsh tsb Tessaranth_Labels" << true;
}

void TestHistory::betweenTheTwoCommits() {
    QFETCH(QString, newer);
    QFETCH(bool, isDone);
    ItemCatalog home(true);
    LabelEditor labels(*home.session);
    qint64 label = 1;
    const QByteArray old = encoded(halves({8, 8}), "PNG");
    const QByteArray other = encoded(halves({9, 8}), "PNG");
    QVERIFY(labels.save(label, "With a logo", {LogoChange::What::Replace, old}));
    QTemporaryDir before;
    copyFolder(home.folder(), before.path());
    QVERIFY(labels.save(label, "With another", {LogoChange::What::Replace, other}));
    QTemporaryDir after;
    copyFolder(home.folder(), after.path());
    home.close();

    TestHome killed;
    copyFolder(before.path(), killed.folder());
    const QMap<QString, QByteArray> files = filesOf(after.path());
    for (const QString& part : newer.split(' ', Qt::SkipEmptyParts))
        for (auto file = files.begin(); file != files.end(); ++file)
            if (file.key().contains(part))
                put(killed.file(file.key()), file.value());
    if (newer == "tsh tsb") { // the new logo is written before the catalog is committed
        for (auto file = files.begin(); file != files.end(); ++file)
            if (file.key().endsWith("before")) {
                QString name = file.key();
                put(killed.file(name.replace("before", "after")), other);
            }
    }
    // The configuration names the folders of the first home.
    QFile::remove(killed.file("tsc.cfg"));
    QVERIFY(killed.start().started);
    LabelEditor found(*killed.session);
    CMIT items(*killed.session);
    QCOMPARE(items.nameOf(ItemKind::Label, 1), isDone ? "With another" : "With a logo");
    QCOMPARE(found.logo(1), isDone ? other : old);
    QCOMPARE(wordsOf(killed.session->history()).size(), isDone ? 2 : 1);
    if (isDone) {
        QVERIFY(killed.session->history().undo());
        QCOMPARE(items.nameOf(ItemKind::Label, 1), "With a logo");
        QCOMPARE(found.logo(1), old);
        QVERIFY(killed.session->history().redo());
        QCOMPARE(found.logo(1), other);
        QVERIFY(killed.session->history().undo());
    }
    QVERIFY(killed.session->history().undo());
    QCOMPARE(found.logo(1), QByteArray());
}

void TestHistory::badFiles_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("isKeptAside");
    QTest::newRow("a text") << QByteArray("this is no history") << true;
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("a catalog") << QByteArray("catalog") << true;
    QTest::newRow("cut off") << QByteArray("half") << true;
    QTest::newRow("another catalog's") << QByteArray("other") << false;
}

void TestHistory::badFiles() {
    QFETCH(QByteArray, content);
    QFETCH(bool, isKeptAside);
    ItemCatalog home(true);
    QVERIFY(home.items().rename(ItemKind::Label, 1, "Renamed"));
    const QString path = History::pathFor(home.catalog());
    home.close();
    if (content == "catalog") {
        content = bytesOf(home.catalog());
    } else if (content == "half") {
        content = bytesOf(path);
        content.truncate(content.size() / 2);
    } else if (content == "other") {
        ItemCatalog other;
        QVERIFY(other.items().addNamed(ItemKind::Label, "Elsewhere") != 0);
        other.close();
        content = bytesOf(History::pathFor(other.catalog()));
    }
    QVERIFY(content.isEmpty() ? QFile::resize(path, 0) : !written(path, content).isEmpty());
    home.messages.told.clear();
    QVERIFY(home.start().started);
    QCOMPARE(wordsOf(home.session->history()), QStringList());
    QCOMPARE(bytesOf(path + ".old"), isKeptAside ? content : QByteArray());
    QCOMPARE(home.messages.told.isEmpty(), content.isEmpty());
    // From here on there is a history again.
    QVERIFY(home.items().rename(ItemKind::Label, 1, "Again"));
    QVERIFY(home.start().started);
    QVERIFY(home.session->history().undo());
    QCOMPARE(home.items().nameOf(ItemKind::Label, 1), "Renamed");
}

void TestHistory::refusesWhatIsNoLongerAsItWas_data() {
    QTest::addColumn<QByteArray>("between");
    QTest::addColumn<bool>("isRefused");
    QTest::newRow("the row was changed")
        << QByteArray("UPDATE Labels SET LabelName = 'x' WHERE LabelID = 2") << true;
    QTest::newRow("the row is gone") << QByteArray("DELETE FROM Labels WHERE LabelID = 2") << true;
    QTest::newRow("its key was given again") << QByteArray("INSERT INTO Labels VALUES (1, 'y')") << true;
    QTest::newRow("another field of the row")
        << QByteArray("UPDATE Rec SET Notes = 'z' WHERE LabelID = 2") << false;
    QTest::newRow("how it was looked at") << QByteArray("UPDATE Rec SET LastState = 3") << false;
    QTest::newRow("numbers of links") << QByteArray("VACUUM") << false;
}

void TestHistory::refusesWhatIsNoLongerAsItWas() {
    QFETCH(QByteArray, between);
    QFETCH(bool, isRefused);
    ItemCatalog home(true);
    const auto first = rowsOf(*home.session);
    home.messages.willAnswer(Answer::Ok);
    QVERIFY(home.items().Migra(ItemKind::Label, 1, 2));
    NoProgress progress;
    QVERIFY(home.items().rename(ItemKind::Label, 2, "Both"));
    home.close();
    {
        SQLite::Database shell(home.catalog().toStdString(), SQLite::OPEN_READWRITE);
        shell.exec(between.constData());
    }
    QVERIFY(home.start().started);
    const auto rows = rowsOf(*home.session);
    home.messages.told.clear();
    const bool undone = home.session->history().undo() && home.session->history().undo();
    QCOMPARE(undone, !isRefused);
    QCOMPARE(home.messages.told.size(), isRefused ? 1 : 0);
    if (isRefused && home.session->history().steps().back().undone == false)
        QCOMPARE(difference(rows, rowsOf(*home.session)), QString());
    if (!isRefused && !between.contains("Notes"))
        QCOMPARE(difference(first, rowsOf(*home.session)), QString());
}

// Whatever the reason, the operation stands, and it is said once.
void TestHistory::cannotBeKept() {
    ItemCatalog home(true);
    setLimit(home, "Megabytes", 0);
    QVERIFY(home.start().started);
    home.messages.told.clear();
    for (const char* name : {"First", "Second"})
        QVERIFY(home.items().rename(ItemKind::Label, 1, name));
    QCOMPARE(home.items().nameOf(ItemKind::Label, 1), "Second");
    QCOMPARE(home.messages.told.size(), 1);
    QVERIFY(!home.session->history().undo());

    setLimit(home, "Megabytes", 256);
    home.close();
    const QString path = History::pathFor(home.catalog());
    QVERIFY(QFile::remove(path) && QDir().mkpath(path)); // a place that cannot be written
    home.messages.told.clear();
    QVERIFY(home.start().started);
    QCOMPARE(home.messages.told.size(), 1);
    for (const char* name : {"Third", "Fourth"})
        QVERIFY(home.items().rename(ItemKind::Label, 1, name));
    QCOMPARE(home.messages.told.size(), 1);
    QCOMPARE(home.items().nameOf(ItemKind::Label, 1), "Fourth");
}

void TestHistory::whatIsNoStep() {
    ItemCatalog home(true);
    home.run("UPDATE Rec SET LastState = 4");
    home.run("UPDATE Labels SET LabelName = LabelName");
    QVERIFY_EXCEPTION_THROWN(home.run("INSERT INTO Tracks (RecID) VALUES (1)"), SqlError);
    QVERIFY_EXCEPTION_THROWN(home.session->connection().execute("DELETE FROM Labels"),
                             SqlError); // no transaction
    QVERIFY(home.count("Labels") > 0);
    {
        Transaction undone(home.session->connection(), "undone");
        home.run("DELETE FROM Labels");
    }
    QCOMPARE(wordsOf(home.session->history()), QStringList());
    // Of a statement that fails half-way nothing is kept, of the one before it all.
    {
        Transaction transaction(home.session->connection(), "half");
        home.session->connection().execute("UPDATE Labels SET LabelName = 'kept' WHERE LabelID = 1");
        QVERIFY(!home.session->connection().attempt("UPDATE Labels SET LabelID = 1000"));
        transaction.commit();
    }
    QCOMPARE(home.session->history().steps().size(), 1U);
    QCOMPARE(home.session->history().steps().front().rows, 1);
    QVERIFY(home.session->history().undo());
}

void TestHistory::compactKeepsIt_emptyEndsIt() {
    ItemCatalog home(true);
    const auto first = rowsOf(*home.session);
    NoProgress progress;
    QVERIFY(
        home.items().EliminaItem(ItemKind::Composer, {home.number("SELECT CpsID FROM CompOnRec")}, progress));
    QVERIFY(Maintenance(*home.session).compact(progress));
    QVERIFY(home.session->history().undo());
    QCOMPARE(difference(first, rowsOf(*home.session)), QString());
    home.messages.told.clear();
    QVERIFY(Maintenance(*home.session).empty(progress));
    QCOMPARE(wordsOf(home.session->history()), QStringList());
    QCOMPARE(home.messages.told.size(), 1);
}

void TestHistory::limits() {
    ItemCatalog home(true);
    setLimit(home, "Steps", 3);
    QVERIFY(home.start().started);
    const QByteArray logo = encoded(halves({8, 8}), "PNG");
    qint64 label = 1;
    for (int i = 1; i <= 5; ++i)
        QVERIFY(LabelEditor(*home.session)
                    .save(label, QString("Name %1").arg(i), {LogoChange::What::Replace, logo}));
    QCOMPARE(wordsOf(home.session->history()),
             QStringList({"Change label Name 3", "Change label Name 4", "Change label Name 5"}));
    QDir kept(home.session->dataFolder(Session::Folder::Labels) + '/' + StepFiles::historyFolder);
    QCOMPARE(kept.entryList(QDir::Files).size(), 3);
    QVERIFY(home.session->history().goTo(0));
    QCOMPARE(home.items().nameOf(ItemKind::Label, 1), "Name 2");
    // What was undone goes when something else is done.
    QVERIFY(home.items().rename(ItemKind::Label, 1, "Another way"));
    QCOMPARE(wordsOf(home.session->history()), QStringList("Rename label Another way"));
    QCOMPARE(kept.entryList(QDir::Files).size(), 0);
}

void TestHistory::commandLine() {
    ItemCatalog home(true);
    const QString name = home.items().nameOf(ItemKind::Label, 1);
    home.close();
    const auto run = [&](const QStringList& words) { return runCli(home.folder(), words); };
    QCOMPARE(run({"sql", "UPDATE Labels SET LabelName = 'One' WHERE LabelID = 1"}).code, 0);
    QCOMPARE(run({"sql", "UPDATE Rec SET LabelID = 1 WHERE RecID = 2"}).code, 0);
    const QStringList lines = run({"history", "list"}).lines();
    QCOMPARE(lines.size(), 3);
    QVERIFY(lines[1].contains("SQL: UPDATE Labels"));
    const QString shown = run({"history", "show", "1"}).out;
    QVERIFY2(shown.contains("Labels\t1\tchanged\tLabelName\t" + name + "\tOne"), qPrintable(shown));
    QVERIFY(run({"history", "show", "2"}).out.contains("LabelID\t")); // a number with its name
    QVERIFY(run({"history", "show", "2"}).out.contains("1 (One)"));
    QCOMPARE(QJsonDocument::fromJson(run({"--json", "history", "list"}).out.toUtf8()).array().size(), 2);
    QCOMPARE(run({"history", "undo", "1"}).code, 0);
    QVERIFY(run({"sql", "SELECT LabelName FROM Labels WHERE LabelID = 1"}).out.contains(name));
    QCOMPARE(run({"history", "undo"}).code, 1); // nothing is left
    QCOMPARE(run({"history", "redo"}).code, 0);
    QVERIFY(run({"sql", "SELECT LabelName FROM Labels WHERE LabelID = 1"}).out.contains("One"));
    QCOMPARE(run({"history", "show", "77"}).code, 1);
    QCOMPARE(run({"history"}).code, 2);
    QVERIFY(run({"history", "--help"}).out.contains("Example"));
}

namespace {

/// The process that is killed.
int work(const QString& folder) {
    TestHome home;
    home.useFolder(folder);
    if (!home.start().started)
        return 1;
    Operations operations(home, quint32(qEnvironmentVariableIntValue("TESSARANTH_TEST_SEED")));
    for (int i = 0;; ++i) {
        operations.next();
        if (i == 3) {
            std::fputs("working\n", stdout);
            std::fflush(stdout);
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    if (const QString folder = qEnvironmentVariable(childVariable); !folder.isEmpty())
        return work(folder);
    TestHistory test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_history.moc"
