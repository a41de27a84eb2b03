// SPDX-License-Identifier: GPL-3.0-or-later
// Persons, lookup lists and the internal lists from the command line, as a user types it.
#include "support/CommandLine.h"
#include "support/TestHome.h"

#include <QTest>

using namespace tessaranth;

namespace {

/// What somebody types, one line after the other, and what comes of it.
struct Step {
    QStringList words;
    int code;
    QString out; ///< all of it
    QString err; ///< a part of it
};

const QString personHeadings = "CpsID\tLast Name\tFirst Name\tBorn\tDeath\tCatalog\n";

const std::vector<Step> personSteps{
    {{"person", "add", "Cps", "--last", "O'Neil", "--first", "Zoë", "--born", "1900", "--acronym", "ZO"},
     0,
     "1\n",
     {}},
    {{"person", "add", "Cps", "--last", "o'neil", "--first", "ZOË"},
     1,
     {},
     "ZOË o'neil is already in archive"},
    {{"person", "add", "Cps", "--last", "O'Neil", "--first", "Zoë", "--born", "1930"}, 1, {}, "Say --yes"},
    {{"person", "add", "Cps", "--first", "Zoë"}, 2, {}, "--last"},
    {{"person", "add", "Rec", "--last", "x"}, 2, {}, "Rec"},
    {{"person", "add", "Pfr", "--last", "x", "--acronym", "y"}, 2, {}, "acronym"},
    {{"person", "add", "Cps", "--last", "Bach", "--died", "17"}, 1, {}, "four digits"},
    {{"person", "edit", "Cps", "1", "--died", "1980"}, 0, {}, {}},
    {{"person", "show", "Cps", "1"}, 0, personHeadings + "1\tO'Neil\tZoë\t1900\t1980\tZO\n", {}},
    {{"person", "edit", "Cps", "1", "--born", "", "--last", "Neill"}, 0, {}, {}},
    {{"person", "show", "Cps", "1"}, 0, personHeadings + "1\tNeill\tZoë\t\t1980\tZO\n", {}},
    {{"person", "edit", "Cps", "2", "--born", "1900"}, 1, {}, "There is no composer with the id 2."},
    {{"person", "show", "Cps", "0"}, 2, {}, "ID"},
    {{"person", "add", "Cps", "--last", "Second"}, 0, "2\n", {}},
    {{"person", "add", "Cps", "--last", "Third"}, 0, "3\n", {}},
    {{"person", "merge", "Cps", "1", "1", "--yes"}, 1, {}, "into itself"},
    {{"person", "merge", "Cps", "1", "2"}, 1, {}, "Say --yes"},
    {{"person", "merge", "Cps", "1", "2", "--yes"}, 0, {}, {}},
    {{"person", "show", "Cps", "1"}, 1, {}, "There is no composer with the id 1."},
    {{"person", "delete", "Cps", "2", "3"}, 1, {}, "Composers: Second, Third\nwill be deleted."},
    {{"person", "delete", "Cps", "2", "9", "--yes"}, 1, {}, "There is no composer with the id 9."},
    {{"sql", "SELECT COUNT(*) AS n FROM Cps"}, 0, "n\n2\n", {}}, // all or nothing
    {{"person", "delete", "Cps", "2", "3", "--yes"}, 0, {}, {}},
    {{"sql", "SELECT COUNT(*) AS n FROM Cps"}, 0, "n\n0\n", {}},
    {{"archive", "search", "Cps", "wolfgang amadeus", "--json"}, 2, {}, {}},
    {{"archive", "search", "Pfr", "nobody is called so"},
     0,
     "Row\tLast Name\tFirst Name\tBorn\tDeath\tDate note\tCatalog\n",
     {}},
};

const std::vector<Step> lookupSteps{
    {{"lookup", "Genre", "add", " Opera "}, 0, "1\n", {}},
    {{"lookup", "Genre", "add", "OPERA"}, 1, {}, "OPERA alredy exists!"},
    {{"lookup", "Genre", "add", " "}, 1, {}, "missing"},
    {{"lookup", "Genre", "add", "Oratorio"}, 0, "2\n", {}},
    {{"lookup", "Genre", "rename", "2", "opera"}, 1, {}, "opera alredy exists!"},
    {{"lookup", "Genre", "rename", "2", "Mass"}, 0, {}, {}},
    {{"lookup", "Genre", "rename", "7", "Song"}, 1, {}, "There is no genre with the id 7."},
    {{"lookup", "Genre", "list"}, 0, "GenreID\tName\n2\tMass\n1\tOpera\n", {}},
    {{"lookup", "Genre", "list", "o"}, 0, "GenreID\tName\n1\tOpera\n", {}},
    {{"lookup", "Genre", "merge", "1", "2"}, 1, {}, "Say --yes"},
    {{"lookup", "Genre", "merge", "1", "2", "--yes"}, 0, {}, {}},
    {{"lookup", "Genre", "delete", "2", "--yes"}, 0, {}, {}},
    {{"lookup", "Genre", "list"}, 0, "GenreID\tName\n", {}},
    {{"lookup", "Label", "add", "Decca"}, 0, "1\n", {}},
    {{"lookup", "Label", "add", "decca"}, 1, {}, "decca is already in archive!"},
    {{"lookup", "Cps", "list"}, 2, {}, "Cps"},
    {{"lookup", "Genre"}, 2, {}, {}},
};

} // namespace

class TestCliPersons : public QObject {
    Q_OBJECT

private slots:
    void persons() { work(personSteps); }
    void lookups() { work(lookupSteps); }
    void archiveIsPrinted();

private:
    static void work(const std::vector<Step>& steps);
};

void TestCliPersons::work(const std::vector<Step>& steps) {
    TestHome home;
    home.useTemplate();
    for (const Step& step : steps) {
        const CliResult result = runCli(home.folder(), step.words);
        const QString line = step.words.join(' ');
        QVERIFY2(result.code == step.code,
                 qPrintable(line + ": " + QString::number(result.code) + result.err));
        if (step.code == 0)
            QVERIFY2(result.out == step.out, qPrintable(line + ": " + result.out));
        QVERIFY2(result.err.contains(step.err), qPrintable(line + ": " + result.err));
    }
}

void TestCliPersons::archiveIsPrinted() {
    TestHome home;
    home.useTemplate();
    const CliResult result = runCli(home.folder(), {"archive", "search", "Cps", "wolfgang amadeus"});
    QCOMPARE(result.code, 0);
    QVERIFY2(result.lines().size() == 2 && result.lines()[1].contains("Mozart\tWolfgang Amadeus\t1756\t1791"),
             qPrintable(result.out));
}

QTEST_GUILESS_MAIN(TestCliPersons)
#include "test_clipersons.moc"
