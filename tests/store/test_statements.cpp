// SPDX-License-Identifier: GPL-3.0-or-later
// Every statement of the program on a small catalog (statements.tsv, smallcatalog.sql), and against what
// SQLite itself answers where it can read the statement as it is written.
#include "platform/Clock.h"
#include "platform/TsvFile.h"
#include "store/Connection.h"
#include "store/Recordset.h"
#include "support/Writing.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>
#include <SQLiteCpp/SQLiteCpp.h>

Q_DECLARE_METATYPE(tessaranth::Value)

using namespace tessaranth;

namespace {

using Row = QStringList;

constexpr int anyUpgrade = 999999;

QByteArray contents(const QString& path) {
    QFile file(QStringLiteral(TESSARANTH_SOURCE_DIR) + path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Null and an empty text are told apart.
QString cellText(bool isNull, const QString& text) { return isNull ? QStringLiteral("\u2400") : text; }

struct Answer {
    Row names;
    QList<Row> rows;
};

Answer answerOf(Query query) {
    Answer answer;
    for (int i = 0; i < query.columnCount(); ++i)
        answer.names.push_back(query.columnName(i));
    while (query.next()) {
        Row row;
        for (int i = 0; i < query.columnCount(); ++i)
            row.push_back(cellText(query.isNull(i), query.text(i)));
        answer.rows.push_back(row);
    }
    return answer;
}

// Of columns with one name inside parentheses SQLite numbers the second, "LabelID:1".
Answer answerOf(SQLite::Database& database, const QString& sql) {
    static const QRegularExpression number(QStringLiteral(":\\d+$"));
    SQLite::Statement statement(database, sql.toStdString());
    Answer answer;
    for (int i = 0; i < statement.getColumnCount(); ++i)
        answer.names.push_back(QString::fromUtf8(statement.getColumnName(i)).remove(number));
    while (statement.executeStep()) {
        Row row;
        for (int i = 0; i < statement.getColumnCount(); ++i) {
            const SQLite::Column column = statement.getColumn(i);
            row.push_back(cellText(column.isNull(), QString::fromStdString(column.getString())));
        }
        answer.rows.push_back(row);
    }
    return answer;
}

QList<Row> sorted(QList<Row> rows) {
    std::sort(rows.begin(), rows.end());
    return rows;
}

bool isQuery(const QString& statement) { return statement.startsWith(QLatin1String("SELECT")); }

bool isDefinition(const QString& statement) {
    return statement.startsWith(QLatin1String("CREATE")) || statement.startsWith(QLatin1String("ALTER"));
}

/// The part of a statement that matches, or nothing.
QString part(const QString& statement, const char* pattern) {
    return QRegularExpression(QLatin1String(pattern)).match(statement).captured(1);
}

} // namespace

class TestStatements : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void answers_data() {
        addStatements([](const QString& s) { return !isDefinition(s); });
    }
    void answers();
    void joinsAsWritten_data() {
        addStatements([](const QString& s) { return isQuery(s) && s.contains(QLatin1String(" JOIN ")); });
    }
    void joinsAsWritten();
    void changesAsWritten_data() { addStatements(isChangeForSqlite); }
    void changesAsWritten();
    void definitions_data() { addStatements(isDefinition); }
    void definitions();
    void refuses_data();
    void refuses();
    void refusesAnUnknownTable();
    void sharesOneTranslation_data();
    void sharesOneTranslation();
    void findsUserText_data();
    void findsUserText();
    void comparesWithoutCase_data();
    void comparesWithoutCase();
    void deletesAcrossAJoin();
    void keysOfUpdatableSets();

private:
    static bool isChangeForSqlite(const QString& statement);
    void addStatements(const std::function<bool(const QString&)>& wanted) const;
    QString copy();
    std::unique_ptr<Connection> openCopy() { return Connection::open(copy(), m_clock, anyUpgrade); }

    SystemClock m_clock;
    QTemporaryDir m_folder;
    std::unique_ptr<TsvFile> m_table;
    std::unique_ptr<Connection> m_shared; ///< every test undoes what it does here
    int m_copies = 0;
};

void TestStatements::initTestCase() {
    m_table = std::make_unique<TsvFile>(QStringLiteral(TESSARANTH_SOURCE_DIR "/tests/store/statements.tsv"));
    SQLite::Database database(m_folder.filePath(QStringLiteral("base")).toStdString(),
                              SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
    database.exec(contents(QStringLiteral("/data/schema/catalog.sql")).toStdString());
    database.exec(contents(QStringLiteral("/tests/store/smallcatalog.sql")).toStdString());
    m_shared = openCopy();
}

QString TestStatements::copy() {
    const QString path = m_folder.filePath(QString::number(++m_copies));
    if (!QFile::copy(m_folder.filePath(QStringLiteral("base")), path))
        qFatal("the small catalog cannot be copied");
    return path;
}

void TestStatements::addStatements(const std::function<bool(const QString&)>& wanted) const {
    QTest::addColumn<QString>("statement");
    QTest::addColumn<int>("rows");
    QTest::addColumn<QString>("first");
    for (int row = 0; row < m_table->rowCount(); ++row) {
        const QString statement = m_table->cell(row, QStringLiteral("statement"));
        if (!wanted(statement))
            continue;
        const QString name = m_table->cell(row, QStringLiteral("group")) + QStringLiteral(": ") +
                             m_table->cell(row, QStringLiteral("name"));
        QTest::newRow(qPrintable(name)) << statement << m_table->cell(row, QStringLiteral("rows")).toInt()
                                        << m_table->cell(row, QStringLiteral("first"));
    }
}

void TestStatements::answers() {
    QFETCH(QString, statement);
    QFETCH(int, rows);
    QFETCH(QString, first);
    const Transaction undone(*m_shared, QStringLiteral("test"));
    if (!isQuery(statement)) {
        QCOMPARE(write(*m_shared, statement), rows);
        return;
    }
    const Answer answer = answerOf(m_shared->query(statement));
    QCOMPARE(answer.rows.size(), rows);
    if (!first.isEmpty())
        QCOMPARE(answer.rows.front().join(QLatin1Char('|')).remove(QChar(0x2400)), first);
}

// The rewriting of nested joins must not change a row, nor the name of a column.
void TestStatements::joinsAsWritten() {
    QFETCH(QString, statement);
    SQLite::Database database(m_folder.filePath(QStringLiteral("base")).toStdString());
    const Answer written = answerOf(database, statement);
    const Answer translated = answerOf(m_shared->query(statement));
    QCOMPARE(translated.names, written.names);
    QCOMPARE(sorted(translated.rows), sorted(written.rows));
}

bool TestStatements::isChangeForSqlite(const QString& statement) {
    static const QRegularExpression dialectOnly(QStringLiteral("\\bnow\\b|First\\(|DELETE \\w+\\.\\*"),
                                                QRegularExpression::CaseInsensitiveOption);
    return !isQuery(statement) && !isDefinition(statement) && !statement.contains(dialectOnly);
}

void TestStatements::changesAsWritten() {
    QFETCH(QString, statement);
    const QString table = part(statement, "^(?:UPDATE|INSERT INTO|DELETE (?:\\* )?FROM) (\\w+)");
    const QString all = QStringLiteral("SELECT * FROM ") + table;
    SQLite::Database database(copy().toStdString(), SQLite::OPEN_READWRITE);
    QString plain = statement;
    plain.replace(QRegularExpression(QStringLiteral("IsNull\\((\\w+)\\)")), QStringLiteral("\\1 IS NULL"));
    database.exec(plain.replace(QLatin1String("DELETE * "), QLatin1String("DELETE ")).toStdString());

    const Transaction undone(*m_shared, QStringLiteral("test"));
    write(*m_shared, statement);
    QCOMPARE(sorted(answerOf(m_shared->query(all)).rows), sorted(answerOf(database, all).rows));
}

// On a catalog that lacks what the statement brings, the column or table is then as in a fresh catalog.
void TestStatements::definitions() {
    QFETCH(QString, statement);
    const QString table = part(statement, "TABLE (\\w+)");
    const QString column = part(statement, "COLUMN (\\w+)");
    const bool adds = statement.contains(QLatin1String("ADD COLUMN"));
    const bool setsDefault = statement.contains(QLatin1String("SET DEFAULT"));
    const QString wanted = setsDefault        ? QStringLiteral("name, dflt_value")
                           : column.isEmpty() ? QStringLiteral("cid, name, upper(type), \"notnull\", pk")
                                              : QStringLiteral("name, upper(type)");
    const QString describe = QStringLiteral("SELECT %1 FROM pragma_table_info('%2') WHERE '%3' IN ('', name)")
                                 .arg(wanted, table, column);
    SQLite::Database base(m_folder.filePath(QStringLiteral("base")).toStdString());
    const QList<Row> fresh = answerOf(base, describe).rows;
    QVERIFY(!fresh.isEmpty());

    auto connection = openCopy();
    const QString path = connection->path();
    if (column.isEmpty())
        writeNative(*connection, "DROP TABLE " + table.toUtf8());
    else if (adds)
        writeNative(*connection, "ALTER TABLE " + table.toUtf8() + " DROP COLUMN " + column.toUtf8());
    else if (setsDefault)
        write(*connection, QStringLiteral("ALTER TABLE %1 ALTER COLUMN %2 SET DEFAULT 7").arg(table, column));
    else
        write(*connection, QStringLiteral("ALTER TABLE %1 ALTER COLUMN %2 VARCHAR(5)").arg(table, column));
    QCOMPARE(write(*connection, statement), 0);
    QCOMPARE(connection->integrityFaults(), QStringList());
    QVERIFY(connection->columnsOf(table).contains(column) || column.isEmpty());
    connection.reset();

    SQLite::Database changed(path.toStdString());
    QCOMPARE(answerOf(changed, describe).rows, fresh);
    const QString rows = QStringLiteral("SELECT COUNT(*) FROM ") + table;
    if (!column.isEmpty())
        QCOMPARE(answerOf(changed, rows).rows, answerOf(base, rows).rows);
}

// "^" stands where reading must stop.
void TestStatements::refuses_data() {
    QTest::addColumn<QString>("marked");
    QTest::newRow("no columns") << "SELECT ^FROM";
    QTest::newRow("no statement") << "^";
    QTest::newRow("second statement") << "SELECT * FROM Cps^; DELETE FROM Cps";
    QTest::newRow("second change") << "DELETE FROM Web WHERE WebID = 1^; DELETE FROM Cps";
    QTest::newRow("pragma") << "^PRAGMA writable_schema = 1";
    QTest::newRow("attach") << "^ATTACH 'x.db' AS x";
    QTest::newRow("drop") << "^DROP TABLE Cps";
    QTest::newRow("delete from another table") << "DELETE Cps.* FROM Pfr^";
    QTest::newRow("no condition") << "SELECT * FROM Cps WHERE^";
    QTest::newRow("no value") << "SELECT * FROM Cps WHERE CpsID =^";
    QTest::newRow("no assignment") << "UPDATE Cps SET^";
    QTest::newRow("unclosed quote") << "SELECT * FROM Cps WHERE CpsLname = ^'Verdi";
    QTest::newRow("unclosed double quote") << "UPDATE Cps SET CpsLname = ^\"";
    QTest::newRow("unclosed parenthesis") << "SELECT * FROM (Cps^";
    QTest::newRow("too many parentheses") << "SELECT * FROM Cps^)";
    QTest::newRow("line comment") << "SELECT * FROM Cps ^-- all";
    QTest::newRow("comment") << "SELECT ^/* all */ * FROM Cps";
    QTest::newRow("union") << "SELECT * FROM Cps ^UNION SELECT * FROM Pfr";
    QTest::newRow("strange character") << "SELECT * FROM Cps WHERE CpsID = 1 ^# 2";
    QTest::newRow("NUL") << QStringLiteral("SELECT * FROM Cps^") + QChar(u'\0') + QStringLiteral(" WHERE");
}

void TestStatements::refuses() {
    QFETCH(QString, marked);
    const qsizetype stop = marked.indexOf(QLatin1Char('^'));
    QString statement = marked;
    statement.remove(stop, 1);
    const qint64 before = m_shared->changesOfSession();
    for (const bool asQuery : {true, false}) {
        try {
            if (asQuery)
                m_shared->query(statement).next();
            else
                write(*m_shared, statement);
            QFAIL("not refused");
        } catch (const SqlError& error) {
            QCOMPARE(error.position(), stop);
            QVERIFY(!error.reason().isEmpty());
        }
    }
    QCOMPARE(m_shared->changesOfSession(), before);
}

// The check of imported performers names the file's table, not one of the catalog: here it must fail, and
// not pass as "no such performer".
void TestStatements::refusesAnUnknownTable() {
    const QString statement = QStringLiteral("SELECT PfrLname, PfrFname FROM Performers "
                                             "WHERE PfrLname = 'Abbado' AND PfrFname = 'Claudio'");
    QVERIFY_EXCEPTION_THROWN(m_shared->exists(statement), SqlError);
    QVERIFY_EXCEPTION_THROWN(m_shared->exists(QStringLiteral("SELECT CpsNmae FROM Cps")), SqlError);
    QVERIFY_EXCEPTION_THROWN(write(*m_shared, QStringLiteral("DELETE FROM Performers")), SqlError);
}

void TestStatements::sharesOneTranslation_data() {
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<Value>("one");
    QTest::addColumn<Value>("other");
    QTest::newRow("key") << "SELECT * FROM Cps WHERE CpsID = %1" << Value(1) << Value(20000);
    QTest::newRow("name") << "SELECT * FROM Cps WHERE CpsLname LIKE '%1'" << Value("Verdi")
                          << Value("O''Neil");
    QTest::newRow("change") << "UPDATE Cps SET LastState = %1" << Value(0) << Value(4);
    QTest::newRow("sub-select") << "DELETE FROM Personages WHERE CompID IN "
                                   "(SELECT CompID FROM Compositions WHERE CpsID = %1)"
                                << Value(3) << Value(77);
}

void TestStatements::sharesOneTranslation() {
    QFETCH(QString, pattern);
    QFETCH(Value, one);
    QFETCH(Value, other);
    const JetSql dialect(*m_shared);
    const SqlStatement first = dialect.translate(pattern.arg(one.toText()));
    const SqlStatement second = dialect.translate(pattern.arg(other.toText()));
    QCOMPARE(second.sql, first.sql);
    QCOMPARE(first.parameters.size(), size_t(1));
    QVERIFY(first.parameters == std::vector<Value>{one});
    const QString text = other.toText().replace(QLatin1String("''"), QLatin1String("'"));
    QCOMPARE(second.parameters.front().toText(), text);
}

void TestStatements::findsUserText_data() {
    QTest::addColumn<QString>("text");
    for (const char* text : {"O'Neil", "''", "100%", "1000", "a[b", "a]b", "[b]", "\"x\"", "x_y", "xzy",
                             "x\\y", "?1", "a;b--c", "Dvo\u0159\u00e1k", "\u2400\U0001d11e", "%", "_", "["})
        QTest::newRow(text) << QString::fromUtf8(text);
}

// Among names that its wildcards would match, a text finds its own row and no other.
void TestStatements::findsUserText() {
    QFETCH(QString, text);
    const Transaction undone(*m_shared, QStringLiteral("test"));
    for (const char* other : {"O'Neill", "1000%", "100", "ab", "a[[b", "xwy", "b", "x", "y"})
        write(*m_shared, QStringLiteral("INSERT INTO Labels (LabelName) VALUES('%1')")
                             .arg(quoted(QString::fromUtf8(other))));
    write(*m_shared, QStringLiteral("INSERT INTO Labels (LabelName) VALUES('%1')").arg(quoted(text)));
    const Value key(m_shared->lastKey());
    const QString equal = QStringLiteral("SELECT LabelID FROM Labels WHERE LabelName = '%1'");
    const QString like = QStringLiteral("SELECT LabelID FROM Labels WHERE LabelName LIKE '%1'");
    const QList<Row> own{{key.toText()}};
    QCOMPARE(answerOf(m_shared->query(equal.arg(quoted(text)))).rows, own);
    QCOMPARE(answerOf(m_shared->query(like.arg(quotedPattern(text)))).rows, own);
    const QString stored = QStringLiteral("SELECT LabelName FROM Labels WHERE LabelID = ") + key.toText();
    QCOMPARE(m_shared->single(stored), Value(text));
}

void TestStatements::comparesWithoutCase_data() {
    QTest::addColumn<QString>("condition");
    QTest::addColumn<QString>("titles");
    QTest::newRow("equal") << "RecTitle = '\u00c9LAN'"
                           << "\u00e9lan";
    QTest::newRow("accent counts") << "RecTitle = 'elan'"
                                   << "";
    QTest::newRow("like") << "RecTitle LIKE '%\u00c9L%'"
                          << "\u00e9lan";
    QTest::newRow("one of a set") << "RecTitle LIKE '[b-m]%'"
                                  << "Bare,\u00e9lan";
    QTest::newRow("in a list") << "RecTitle IN ('BARE', 'new world')"
                               << "Bare,New World";
    QTest::newRow("unequal") << "RecTitle <> 'BARE'"
                             << "\u00e9lan,New World,Rigoletto";
    QTest::newRow("between letters") << "RecTitle > 'C' AND RecTitle < 'f'"
                                     << "\u00e9lan";
    QTest::newRow("everything, sorted") << "RecID > 0"
                                        << "Bare,\u00e9lan,New World,Rigoletto";
}

void TestStatements::comparesWithoutCase() {
    QFETCH(QString, condition);
    QFETCH(QString, titles);
    QStringList found;
    Query query =
        m_shared->query(QStringLiteral("SELECT RecTitle FROM Rec WHERE %1 ORDER BY RecTitle").arg(condition));
    while (query.next())
        found.push_back(query.text(0));
    QCOMPARE(found.join(QLatin1Char(',')), titles);
}

// SQLite has no such statement: what must stay is as much at stake as what must go.
void TestStatements::deletesAcrossAJoin() {
    const Transaction undone(*m_shared, QStringLiteral("test"));
    QCOMPARE(
        write(*m_shared, QStringLiteral("DELETE CompOnRecPfr.* FROM CompOnRec INNER JOIN CompOnRecPfr ON "
                                        "CompOnRec.CompOnRecID = CompOnRecPfr.CompOnRecID "
                                        "WHERE CompOnRec.RecID = 3")),
        3);
    Query left = m_shared->query(QStringLiteral("SELECT CompOnRecID FROM CompOnRecPfr ORDER BY CompOnRecID"));
    QStringList keys;
    while (left.next())
        keys.push_back(left.text(0));
    QCOMPARE(keys, QStringList({"1", "1", "2", "5", "77"}));
    QCOMPARE(m_shared->single(QStringLiteral("SELECT Count(CompOnRecID) As Total FROM CompOnRec")), Value(5));
}

void TestStatements::keysOfUpdatableSets() {
    const JetSql dialect(*m_shared);
    const auto tableOf = [&](const char* statement) {
        return dialect.translate(QString::fromUtf8(statement), JetSql::Use::Updatable).rowTable;
    };
    QCOMPARE(tableOf("SELECT * FROM Tracks WHERE RecID = 1 ORDER BY Disc, TrackNbr"),
             QStringLiteral("Tracks"));
    QCOMPARE(tableOf("SELECT DISTINCT CpsLname FROM Cps"), QString());
    QCOMPARE(
        tableOf(
            "SELECT Cps.CpsID, CpsOnRec.RecID FROM Cps INNER JOIN CpsOnRec ON Cps.CpsID = CpsOnRec.CpsID"),
        QString());
    const char* join = "SELECT CompOnRecPfr.CompOnRecID, CompOnRecPfr.PfrID, CompOnRecPfr.PersonageID "
                       "FROM CompOnRec INNER JOIN CompOnRecPfr "
                       "ON CompOnRec.CompOnRecID = CompOnRecPfr.CompOnRecID WHERE CompOnRec.RecID = 3";
    QCOMPARE(tableOf(join), QStringLiteral("CompOnRecPfr"));

    // Two of the three rows are alike: only the row's own key tells which one goes.
    const Transaction undone(*m_shared, QStringLiteral("test"));
    Recordset roles = Recordset::open(*m_shared, QString::fromUtf8(join));
    QCOMPARE(roles.rowCount(), 3);
    QCOMPARE(roles.fields().size(), size_t(3));
    roles.remove(0);
    roles.update(0, {{QStringLiteral("PersonageID"), Value(9)}});
    QCOMPARE(answerOf(m_shared->query(QString::fromUtf8(join))).rows.size(), 2);
    QCOMPARE(answerOf(m_shared->query(QStringLiteral("SELECT * FROM CompOnRecPfr WHERE PersonageID = 9")))
                 .rows.size(),
             1);
    QCOMPARE(m_shared->single(QStringLiteral("SELECT Count(PfrID) As Total FROM CompOnRecPfr")), Value(7));
}

QTEST_GUILESS_MAIN(TestStatements)
#include "support/Writing.h"
#include "test_statements.moc"
