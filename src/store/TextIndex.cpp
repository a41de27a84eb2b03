// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/TextIndex.h"

#include "platform/Progress.h"
#include "store/Connection.h"

#include <QCoreApplication>
#include <QMap>
#include <algorithm>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("TextIndex", text); }

const std::vector<TextIndexTable> allTables{
    {"QuickCps",
     "SELECT CpsID, ifnull(CpsLname, '') || ' ' || ifnull(CpsFname, '') FROM Cps",
     {{"Cps", "CpsLname, CpsFname", "CpsID = @.CpsID"}}},
    {"QuickPfr",
     "SELECT PfrID, ifnull(PfrLname, '') || ' ' || ifnull(PfrFname, '') FROM Pfr",
     {{"Pfr", "PfrLname, PfrFname", "PfrID = @.PfrID"}}},
    {"QuickRec",
     "SELECT RecID, ifnull(RecTitle, '') || ' ' || ifnull(RecSubTitle, '') || ' ' || ifnull(Barcode, '') || "
     "' ' "
     "|| ifnull(ProdNbr, '') FROM Rec",
     {{"Rec", "RecTitle, RecSubTitle, Barcode, ProdNbr", "RecID = @.RecID"}}},
    {"QuickComp",
     "SELECT CompID, ifnull(CompTitle, '') || ' ' || ifnull(CompSubTitle, '') || ' ' || ifnull(CatAcr, '') "
     "|| ' ' "
     "|| ifnull(CompNbr, '') || ' ' || ifnull(CpsLname, '') FROM Compositions LEFT JOIN Cps ON Cps.CpsID = "
     "Compositions.CpsID",
     {{"Compositions", "CompTitle, CompSubTitle, CompNbr, CpsID", "CompID = @.CompID"},
      {"Cps", "CpsLname, CatAcr", "Compositions.CpsID = @.CpsID"}}},
    {"QuickUserDef",
     "SELECT UserDefID, ifnull(UserDefTitle, '') FROM UserDef",
     {{"UserDef", "UserDefTitle", "UserDefID = @.UserDefID"}}},
    {"QuickTracks",
     "SELECT TrackID, ifnull(TrackName, '') FROM Tracks",
     {{"Tracks", "TrackName", "TrackID = @.TrackID"}}}};

/// The statements that make one index, by the name of what each makes.
QMap<QByteArray, QByteArray> definitionsOf(const TextIndexTable& table) {
    const QByteArray name = table.name;
    QMap<QByteArray, QByteArray> made;
    // Without text and positions: the rows stand in their own tables, and a box that narrows as one types
    // asks for beginnings of words only. Beginnings of up to three letters have their own lists, as they are
    // the ones with many hits.
    made[name] = "CREATE VIRTUAL TABLE " + name +
                 " USING fts5(words, content='', detail='none', prefix='1 2 3', "
                 "tokenize='unicode61 remove_diacritics 2')";
    for (const TextIndexTable::Watch& watch : table.watches) {
        const QByteArray rows = QByteArray(" WHERE ") + watch.rows;
        const auto take = [&](const char* row) {
            return "INSERT INTO " + name + "(rowid, words) " + table.select +
                   QByteArray(rows).replace("@", row) + ';';
        };
        const QByteArray give = "INSERT INTO " + name + "(" + name + ", rowid, words) " +
                                QByteArray(table.select).replace("SELECT ", "SELECT 'delete', ") +
                                QByteArray(rows).replace("@", "old") + ';';
        const auto trigger = [&](const char* when, const QByteArray& event, const QByteArray& what) {
            const QByteArray own = name + '_' + watch.table + '_' + when + event.left(event.indexOf(' '));
            made[own] = "CREATE TRIGGER " + own + ' ' + when + ' ' + event + " ON " + watch.table +
                        " BEGIN " + what + " END";
        };
        const QByteArray update = QByteArray("UPDATE OF ") + watch.columns;
        trigger("AFTER", "INSERT ", take("new"));
        trigger("BEFORE", update, give);
        trigger("AFTER", update, take("new"));
        // What is indexed with the row of another table, as a work with its composer, outlives that row.
        trigger("BEFORE", "DELETE ", give);
        trigger("AFTER", "DELETE ", take("old"));
    }
    return made;
}

/// A row that goes is not indexed again, and one that comes in another table changes no row that exists.
bool isNeeded(const TextIndexTable& table, const QByteArray& trigger) {
    const QByteArray first = table.watches.front().table;
    const bool ofFirst = trigger.startsWith(QByteArray(table.name) + '_' + first + '_');
    return !trigger.endsWith(ofFirst ? "AFTERDELETE" : "AFTERINSERT");
}

QMap<QByteArray, QByteArray> allDefinitions() {
    QMap<QByteArray, QByteArray> made;
    for (const TextIndexTable& table : allTables) {
        const auto own = definitionsOf(table);
        for (auto one = own.begin(); one != own.end(); ++one)
            if (isNeeded(table, one.key()))
                made.insert(one.key(), one.value());
    }
    return made;
}

/// Where FTS5 keeps the index itself; these tables go with it, unless it is broken.
const char* const parts[] = {"_data", "_idx", "_content", "_docsize", "_config"};

/// Tables and triggers that are there, with their definitions; parts only where their index is not.
QMap<QByteArray, QByteArray> presentOf(Connection& connection) {
    QMap<QByteArray, QByteArray> found;
    Query run = connection.queryNative(
        "SELECT name, sql FROM sqlite_schema AS s WHERE name LIKE 'Quick%' AND (type = 'trigger' OR sql LIKE "
        "'CREATE VIRTUAL%' OR type = 'table' AND NOT EXISTS (SELECT 1 FROM sqlite_schema AS own WHERE "
        "own.sql "
        "LIKE 'CREATE VIRTUAL%' AND own.name = substr(s.name, 1, instr(s.name, '_') - 1)))");
    while (run.next())
        found.insert(run.text(0).toUtf8(), run.text(1).toUtf8());
    return found;
}

void dropTable(Connection& connection, const TextIndexTable& table,
               const QMap<QByteArray, QByteArray>& found) {
    QByteArrayList remains;
    for (const char* part : parts)
        if (found.contains(table.name + QByteArray(part)))
            remains << table.name + QByteArray(part);
    for (auto one = found.begin(); one != found.end(); ++one)
        if (one.key().startsWith(QByteArray(table.name) + '_') && !remains.contains(one.key()))
            connection.runNative("DROP TRIGGER " + one.key());
    if (!found.contains(table.name) && remains.isEmpty())
        return;
    try {
        if (found.contains(table.name))
            connection.runNative(QByteArray("DROP TABLE ") + table.name);
        if (remains.isEmpty())
            return;
    } catch (const SqlError&) {
        // FTS5 takes only an index away that it can read.
    }
    for (const char* part : parts)
        remains << table.name + QByteArray(part);
    connection.dropRemains(table.name, remains);
}

} // namespace

std::span<const TextIndexTable> TextIndex::tables() { return allTables; }

const QMap<QByteArray, QByteArray>& TextIndex::definitions() {
    static const auto made = allDefinitions();
    return made;
}

bool TextIndex::isTable(const QByteArray& name) {
    return std::any_of(allTables.begin(), allTables.end(),
                       [&](const TextIndexTable& table) { return name == table.name; });
}

bool TextIndex::isPart(const QByteArray& name) { return isTable(name.left(name.indexOf('_'))); }

bool TextIndex::isCurrent() const { return presentOf(m_connection) == definitions(); }
bool TextIndex::isAbsent() const { return presentOf(m_connection).isEmpty(); }

QStringList TextIndex::present() const {
    QStringList names;
    for (const QByteArray& name : presentOf(m_connection).keys())
        names << QString::fromUtf8(name);
    return names;
}

int TextIndex::dropTriggers() {
    QByteArrayList triggers;
    Query run = m_connection.queryNative(
        "SELECT name FROM sqlite_schema WHERE type = 'trigger' AND name LIKE 'Quick%'");
    while (run.next())
        triggers << run.text(0).toUtf8();
    for (const QByteArray& name : std::as_const(triggers))
        m_connection.runNative("DROP TRIGGER " + name);
    return int(triggers.size());
}

bool TextIndex::build(Progress& progress) {
    const auto& wanted = definitions();
    const auto found = presentOf(m_connection);
    progress.stage(tr("Preparing the search"));
    Transaction transaction(m_connection, Transaction::Unrecorded());
    qint64 done = 0;
    for (const TextIndexTable& table : allTables) {
        if (progress.stopped())
            return false;
        dropTable(m_connection, table, found);
        m_connection.runNative(wanted[table.name]);
        m_connection.runNative("INSERT INTO " + QByteArray(table.name) + "(rowid, words) " + table.select);
        for (auto one = wanted.begin(); one != wanted.end(); ++one)
            if (one.key().startsWith(QByteArray(table.name) + '_'))
                m_connection.runNative(one.value());
        progress.step(++done, qint64(allTables.size()));
    }
    transaction.commit();
    return true;
}

void TextIndex::drop() {
    const auto found = presentOf(m_connection);
    if (found.isEmpty())
        return;
    Transaction transaction(m_connection, Transaction::Unrecorded());
    for (const TextIndexTable& table : allTables)
        dropTable(m_connection, table, found);
    transaction.commit();
}

QStringList TextIndex::words(const QString& text) {
    QStringList words;
    QString word;
    for (const QChar c : text.normalized(QString::NormalizationForm_C) + u' ') {
        if (c.isLetterOrNumber() || c.isMark() || c.isSurrogate()) {
            word += c;
        } else if (!word.isEmpty()) {
            words.push_back(word);
            word.clear();
        }
    }
    return words;
}

std::vector<qint64> TextIndex::find(const char* table, const QStringList& words, int limit) const {
    std::vector<qint64> keys;
    if (words.isEmpty())
        return keys;
    const QByteArray name = table;
    const QByteArray statement = "SELECT rowid FROM " + name + " WHERE " + name + " MATCH ?1 LIMIT ?2";
    for (const char* ending : {"\"", "\"*"}) {
        QString pattern;
        for (const QString& word : words)
            pattern += u'"' + word + QLatin1String(ending) + u' ';
        Query run = m_connection.queryNative(statement, {pattern, limit});
        while (int(keys.size()) < limit && run.next())
            if (const qint64 key = run.integer(0); std::find(keys.begin(), keys.end(), key) == keys.end())
                keys.push_back(key);
    }
    return keys;
}

} // namespace tessaranth
