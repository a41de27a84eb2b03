// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/CatalogCheck.h"

#include "store/CatalogLinks.h"
#include "store/Guarded.h"
#include "store/TextIndexCheck.h"

#include <QCoreApplication>
#include <QSet>

namespace tessaranth {

namespace {

constexpr int examplesShown = 5;

QString tr(const char* text) { return QCoreApplication::translate("CatalogCheck", text); }

qint64 change(Connection& connection, const QByteArray& statement,
              const std::vector<Value>& parameters = {}) {
    Query run = connection.queryNative(statement, parameters);
    while (run.next()) {
    }
    Query changed = connection.queryNative("SELECT changes()");
    return changed.next() ? changed.integer(0) : 0;
}

/// Rows of a table, known as T, that meet a condition. `example` is an expression of SQLite's that names one.
CatalogFault::Found rowsThat(Connection& connection, const QByteArray& table, const QByteArray& condition,
                             const QByteArray& example) {
    const QByteArray rows = " FROM " + table + " AS T WHERE " + condition;
    CatalogFault::Found found;
    Query count = connection.queryNative("SELECT COUNT(*)" + rows);
    if (count.next())
        found.count = count.integer(0);
    if (found.count == 0)
        return found;
    Query first = connection.queryNative("SELECT DISTINCT " + example + rows + " LIMIT " +
                                         QByteArray::number(examplesShown));
    while (first.next())
        found.examples << first.text(0);
    return found;
}

CatalogFault rowFault(Session& session, const CatalogRule& rule) {
    const QByteArray table = rule.table;
    const QByteArray condition = rule.condition;
    const QByteArray example = rule.example;
    const QByteArray statement = *rule.mend != 0 ? QByteArray(rule.mend).replace("@", condition)
                                                 : "DELETE FROM " + table + " AS T WHERE " + condition;
    return {tr(rule.caption),
            [&session, table, condition, example] {
                return rowsThat(session.connection(), table, condition, example);
            },
            tr(rule.question), tr(rule.done),
            [&session, statement] { return change(session.connection(), statement); }};
}

/// "TrackID 7 (RecID 99)": the row by its first column, and where it leads. Texts and Null show as such.
QByteArray exampleOf(Connection& connection, const CatalogLink& link) {
    const QByteArray where = QByteArray("'") + link.column + " ' || quote(T." + link.column + ')';
    const auto& columns = connection.columns(QLatin1String(link.table));
    if (columns.empty() || columns.front().name.compare(QLatin1String(link.column), Qt::CaseInsensitive) == 0)
        return where;
    const QByteArray first = columns.front().name.toUtf8();
    return "'" + first + " ' || quote(T." + first + ") || ' (' || " + where + " || ')'";
}

/// Gives the rows an owner made for the purpose: what the user typed stays, and he sees where it is.
qint64 adopt(Connection& connection, const CatalogLink& link) {
    const QByteArray target = link.target;
    const QString name = target == "Cps" ? tr("(unknown composer)") : tr("(found again)");
    qint64 owner = 0;
    {
        Query known = connection.queryNative(
            "SELECT " + QByteArray(link.key) + " FROM " + target + " WHERE " + link.name + " = ?1", {name});
        owner = known.next() ? known.integer(0) : 0;
    }
    if (owner == 0) {
        change(connection, "INSERT INTO " + target + " (" + link.name + ") VALUES (?1)", {name});
        owner = connection.lastKey();
    }
    return change(connection,
                  QByteArray("UPDATE ") + link.table + " AS T SET " + link.column + " = ?1 WHERE " +
                      brokenLink(link),
                  {owner});
}

CatalogFault linkFault(Session& session, const CatalogLink& link) {
    const QByteArray condition = brokenLink(link);
    CatalogFault fault;
    fault.caption = tr(link.caption);
    fault.find = [&session, &link, condition] {
        return rowsThat(session.connection(), link.table, condition, exampleOf(session.connection(), link));
    };
    switch (link.remedy) {
    case CatalogLink::Remedy::DeleteRow:
        fault.question = tr("Delete these rows?");
        fault.done = tr("%1 rows deleted");
        fault.mend = [&session, &link, condition] {
            return change(session.connection(),
                          QByteArray("DELETE FROM ") + link.table + " AS T WHERE " + condition);
        };
        break;
    case CatalogLink::Remedy::SetToNone:
        fault.question = tr("Set them to none?");
        fault.done = tr("%1 set to none");
        fault.mend = [&session, &link, condition] {
            return change(session.connection(), QByteArray("UPDATE ") + link.table + " AS T SET " +
                                                    link.column + " = 0 WHERE " + condition);
        };
        break;
    case CatalogLink::Remedy::Adopt:
        fault.question = tr("Put them under an owner made for them?");
        fault.done = tr("%1 put under an owner made for them");
        fault.mend = [&session, &link] { return adopt(session.connection(), link); };
        break;
    }
    return fault;
}

CatalogFault doubleFault(Session& session, const UniqueLink& link) {
    const QByteArray table = link.table;
    const QByteArray columns = link.columns;
    // GROUP BY takes Null and text as they are, and the first of each stays.
    const QByteArray condition =
        "T.rowid NOT IN (SELECT MIN(rowid) FROM " + table + " GROUP BY " + columns + ')';
    const QByteArray example =
        "'" + columns + ": ' || quote(T." + QByteArray(columns).replace(", ", ") || ', ' || quote(T.") + ')';
    return {tr(link.caption),
            [&session, table, condition, example] {
                return rowsThat(session.connection(), table, condition, example);
            },
            tr("Keep one of each?"), tr("%1 doubles deleted"),
            [&session, table, condition] {
                return change(session.connection(), "DELETE FROM " + table + " AS T WHERE " + condition);
            }};
}

CatalogFault integrityFault(Session& session) {
    return {tr("Faults in the structure of the file"),
            [&session] {
                const QStringList faults = session.connection().integrityFaults();
                return CatalogFault::Found{faults.size(), faults.mid(0, examplesShown)};
            },
            tr("Make the indexes of the tables anew? What cannot be mended so needs the backup."),
            tr("indexes made anew, %1 faults were known"),
            [&session]() -> qint64 {
                const qint64 before = session.connection().integrityFaults().size();
                session.connection().runNative("REINDEX");
                return before;
            }};
}

CatalogFault indexFault(Session& session) {
    return {tr("Faults of the word index"),
            [&session] {
                const QStringList faults = TextIndexCheck(session.connection()).faults();
                return CatalogFault::Found{faults.size(), faults};
            },
            tr("Make the word index anew?"), tr("word index made anew"),
            [&session]() -> qint64 {
                NoProgress progress;
                TextIndex(session.connection()).build(progress);
                return 1;
            }};
}

/// Columns of numbers that hold something else; what names another row is looked at with the links.
CatalogFaults numberFaults(Session& session) {
    QSet<QString> seen;
    for (const CatalogLink& link : catalogLinks())
        seen << QStringLiteral("%1.%2").arg(QLatin1String(link.table), QLatin1String(link.column)).toLower();
    for (const char* counted :
         {"rec.unitsnbr", "tracks.disc", "compositions.incollection", "compositions.pers"})
        seen << QLatin1String(counted); // of these the rules know better what to do
    CatalogFaults faults;
    Connection& connection = session.connection();
    for (const QString& name : connection.tables())
        for (const ColumnInfo& column : connection.columns(name)) {
            const bool isNumber =
                column.type == QLatin1String("INTEGER") || column.type == QLatin1String("BOOLEAN");
            const QString place = name + u'.' + column.name;
            if (!isNumber || seen.contains(place.toLower()))
                continue;
            const QByteArray table = '"' + name.toUtf8().replace("\"", "\"\"") + '"';
            const QByteArray cell = "\"" + column.name.toUtf8().replace("\"", "\"\"") + '"';
            const QByteArray condition = "typeof(T." + cell + ") NOT IN ('integer', 'null')";
            faults.push_back({tr("Numbers that are none in %1").arg(place),
                              [&session, table, condition, cell] {
                                  return rowsThat(session.connection(), table, condition,
                                                  "quote(T." + cell + ')');
                              },
                              tr("Set them to the number that they begin with, or to 0?"), tr("%1 set"),
                              [&session, table, condition, cell] {
                                  return change(session.connection(), "UPDATE " + table + " AS T SET " +
                                                                          cell + " = CAST(T." + cell +
                                                                          " AS INTEGER) WHERE " + condition);
                              }});
        }
    return faults;
}

} // namespace

QString CatalogCheck::Finding::text() const {
    QStringList shown = found.examples;
    if (!shown.isEmpty() && found.count > shown.size())
        shown << QStringLiteral("...");
    QString text = caption + QStringLiteral(": ") + QString::number(found.count);
    if (!shown.isEmpty())
        text += QStringLiteral(" (") + shown.join(QStringLiteral(", ")) + u')';
    return text;
}

CatalogCheck::CatalogCheck(Session& session) : m_session(session) {
    m_faults.push_back(integrityFault(session));
    add(numberFaults(session));
    for (const CatalogLink& link : catalogLinks())
        m_faults.push_back(linkFault(session, link));
    for (const CatalogRule& rule : membershipRules())
        m_faults.push_back(rowFault(session, rule));
    for (const UniqueLink& link : uniqueLinks())
        m_faults.push_back(doubleFault(session, link));
    for (const CatalogRule& rule : countingRules())
        m_faults.push_back(rowFault(session, rule));
    m_faults.push_back(indexFault(session));
}

void CatalogCheck::add(CatalogFaults more) {
    for (CatalogFault& fault : more)
        m_faults.push_back(std::move(fault));
}

// A table that cannot be read hides what it holds, so it is a finding and not the end: the others are looked
// at.
CatalogCheck::Finding CatalogCheck::look(const CatalogFault& fault) {
    try {
        return {fault.caption, fault.find(), !fault.question.isEmpty()};
    } catch (const Error& error) {
        return {fault.caption, {1, {tr("cannot be looked at: %1").arg(error.reason())}}, false};
    }
}

std::optional<int> CatalogCheck::find(Progress& progress, const std::function<void(const Finding&)>& found) {
    progress.stage(tr("Checking the catalog"));
    int findings = 0;
    for (size_t i = 0; i < m_faults.size(); ++i) {
        if (progress.stopped())
            return std::nullopt;
        const Finding finding = look(m_faults[i]);
        if (finding.found.count > 0) {
            ++findings;
            found(finding);
        }
        progress.step(qint64(i) + 1, qint64(m_faults.size()));
    }
    return findings;
}

bool CatalogCheck::mend(const CatalogFault& fault, const std::function<void(const QString&)>& told) {
    return guarded(m_session, [&] {
        Transaction transaction(m_session.connection(), tr("Repair the catalog: %1").arg(fault.caption));
        const qint64 mended = fault.mend();
        transaction.commit();
        if (fault.afterwards)
            fault.afterwards();
        told(fault.caption + QStringLiteral(": ") +
             (fault.done.contains(QLatin1String("%1")) ? fault.done.arg(mended) : fault.done));
    });
}

CatalogCheck::Outcome CatalogCheck::repair(Progress& progress,
                                           const std::function<void(const QString&)>& told) {
    Outcome outcome;
    progress.stage(tr("Checking the catalog"));
    for (size_t i = 0; i < m_faults.size(); ++i) {
        const CatalogFault& fault = m_faults[i];
        if (progress.stopped()) {
            outcome.stopped = true;
            return outcome;
        }
        const Finding finding = look(fault);
        progress.step(qint64(i) + 1, qint64(m_faults.size()));
        if (finding.found.count == 0)
            continue;
        Question question;
        question.title = tr("Repair the catalog");
        question.text = finding.text() + QStringLiteral("\n\n") + fault.question;
        question.buttons = {Answer::Yes, Answer::No};
        question.defaultButton = Answer::No;
        if (!finding.canMend) {
            told(finding.text() + QStringLiteral(": ") + tr("cannot be mended here"));
            ++outcome.left;
        } else if (m_session.messages().ask(question) != Answer::Yes) {
            told(finding.text() + QStringLiteral(": ") + tr("left as it is"));
            ++outcome.left;
        } else if (mend(fault, told)) {
            const Finding after = look(fault);
            after.found.count == 0 ? ++outcome.mended : ++outcome.left;
            if (after.found.count > 0)
                told(after.text() + QStringLiteral(": ") + tr("left"));
        } else {
            ++outcome.left;
        }
    }
    return outcome;
}

} // namespace tessaranth
