// SPDX-License-Identifier: GPL-3.0-or-later
// A read that fails is never an empty answer: each table in turn is made unreadable under each command.
#include "app/cli/Commands.h"
#include "support/BrokenTable.h"
#include "support/TestHome.h"

#include <CLI/CLI.hpp>
#include <QTest>
#include <iostream>
#include <sstream>

using namespace tessaranth;

namespace {

struct Outcome {
    int code = -1;
    QString out, err;
    qint64 changes = 0; ///< rows written
};

/// Catches what a command prints.
class Caught {
public:
    explicit Caught(std::ostream& stream) : m_stream(stream), m_before(stream.rdbuf(m_text.rdbuf())) {}
    ~Caught() { m_stream.rdbuf(m_before); }
    QString text() const { return QString::fromStdString(m_text.str()); }

private:
    std::ostream& m_stream;
    std::ostringstream m_text;
    std::streambuf* m_before;
};

/// Runs a command on the catalog of `home`; `table` is unreadable meanwhile, where there is one.
Outcome run(const TestHome& home, const QString& words, const CatalogTable* table) {
    CLI::App app;
    CliContext context;
    context.applicationFolder = home.folder();
    Outcome outcome;
    context.opened = [&](Session& session) {
        Connection& connection = session.connection();
        const auto broken = table ? std::make_shared<BrokenTable>(connection, *table) : nullptr;
        const qint64 before = connection.changesOfSession();
        return std::shared_ptr<void>(nullptr, [&outcome, &connection, broken, before](void*) {
            outcome.changes = connection.changesOfSession() - before;
        });
    };
    Action action;
    addCommands(app, context, action);
    const Caught out(std::cout), err(std::cerr);
    app.parse(words.toStdString());
    outcome.code = action();
    outcome.out = out.text();
    outcome.err = err.text();
    return outcome;
}

} // namespace

class TestCliReads : public QObject {
    Q_OBJECT

private slots:
    void everyCommand_data();
    void everyCommand();
};

void TestCliReads::everyCommand_data() {
    QTest::addColumn<QString>("words");
    for (const char* words :
         {"list Cps", "list Pfr", "list Rec", "list UserDef", "lookup Genre list", "lookup Label list",
          "lookup Source list", "person show Cps 1", "person show Pfr 1", "recording show 1",
          "recording tracks 1", "recording check", "work list 1", "attach list Rec 1", "attach list Cps 1",
          "class tree Rec", "class tree Cps"})
        QTest::newRow(words) << words;
}

void TestCliReads::everyCommand() {
    QFETCH(QString, words);
    TestHome home;
    home.useSample();
    const Outcome whole = run(home, words, nullptr);
    QVERIFY2(whole.code == 0, qPrintable(whole.err));
    int failures = 0;
    for (const CatalogTable& table : catalogTables()) {
        const Outcome outcome = run(home, words, &table);
        if (outcome.out == whole.out && outcome.code == whole.code)
            continue; // does not read it
        ++failures;
        const QByteArray seen = qPrintable(QString(table.table) + ": " + outcome.out + '|' + outcome.err);
        QVERIFY2(outcome.code == 1, seen);
        QVERIFY2(outcome.out.isEmpty(), seen);
        QVERIFY2(outcome.err.count('\n') == 1, seen);
        QCOMPARE(outcome.changes, qint64(0));
    }
    QVERIFY(failures > 0);
    QCOMPARE(run(home, words, nullptr).out, whole.out);
}

QTEST_GUILESS_MAIN(TestCliReads)
#include "test_clireads.moc"
