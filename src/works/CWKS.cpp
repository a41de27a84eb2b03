// SPDX-License-Identifier: GPL-3.0-or-later
#include "works/CWKS.h"

#include "items/Attachments.h"
#include "items/CardOwner.h"
#include "items/DeletionCounts.h"
#include "items/OpenCards.h"
#include "items/Person.h"
#include "platform/CodePages.h"
#include "platform/FileReader.h"
#include "store/Guarded.h"
#include "store/Recordset.h"
#include "text/CatalogueNumber.h"

#include <QCoreApplication>
#include <QFile>
#include <algorithm>
#include <numeric>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("CWKS", text); }

/// The columns of the editor's texts.
struct TextColumn {
    const char* name;
    QString Work::*value;
};
const TextColumn textColumns[] = {{"CompTitle", &Work::title},
                                  {"CompSubTitle", &Work::subtitle},
                                  {"CompNbr", &Work::number},
                                  {"CompYear", &Work::year}};
struct LinkColumn {
    const char* name;
    qint64 Work::*value;
};
const LinkColumn linkColumns[] = {{"CpsID", &Work::composer},
                                  {"MainWorkID", &Work::mainWork},
                                  {"CpsGenreID", &Work::composerGenre},
                                  {"GenreID", &Work::genre},
                                  {"KeyID", &Work::key}};

} // namespace

// ---- lists

std::vector<int> CWKS::catalogueOrder(const Recordset& rows, int numberColumn, const QString& acronym) {
    std::vector<QString> numbers;
    for (int row = 0; row < rows.rowCount(); ++row)
        numbers.push_back(
            CatalogueNumber::withoutAcronym(acronym, rows.value(row, numberColumn).toText().trimmed()));
    std::vector<int> order(numbers.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&numbers](int a, int b) {
        return CatalogueNumber::compare(numbers[size_t(a)], numbers[size_t(b)]) < 0;
    });
    return order;
}

bool CWKS::ElencoInLvS(qint64 composer, ItemList& list) {
    return guarded(m_session, [&] {
        ItemList found({{QStringLiteral("Title")}, {QStringLiteral("Opus"), false, true}});
        const Recordset rows = Recordset::open(
            m_session.connection(), QStringLiteral("SELECT CompID, CompTitle, CompNbr FROM Compositions "
                                                   "WHERE CpsID = ") +
                                        QString::number(composer) +
                                        QStringLiteral(" ORDER BY CompNbr "
                                                       " , CompTitle"));
        for (const int row : catalogueOrder(rows, 2, acronym(composer)))
            found.addRow(rows.value(row, 0).toInteger(), QStringLiteral("Comp"),
                         {rows.value(row, 1).toText().trimmed(), rows.value(row, 2).toText().trimmed()});
        list = std::move(found);
    });
}

bool CWKS::ElencoInLvC(qint64 composer, ItemList& list) {
    return guarded(m_session, [&] {
        ItemList found({{QStringLiteral("Title")},
                        {QStringLiteral("Opus"), false, true},
                        {QStringLiteral("Sub title")},
                        {QStringLiteral("Main work")},
                        {QStringLiteral("Catalog genre")},
                        {QStringLiteral("Year")},
                        {QStringLiteral("In Collection")},
                        {QStringLiteral("Description")}});
        const QString acronymText = acronym(composer);
        const bool bold =
            m_session.configuration().flag(QStringLiteral("Misc"), QStringLiteral("WorkInBold"));
        const Recordset rows = Recordset::open(
            m_session.connection(),
            QStringLiteral("SELECT Compositions.CompID, Compositions.CompTitle, Compositions.CompSubTitle, "
                           "Compositions.CompNbr, Compositions.CompYear, Compositions.InCollection, "
                           "Compositions.Descr, MainWorks.MainWorkName, CpsGenres.CpsGenreName "
                           "FROM CpsGenres "
                           "RIGHT JOIN (MainWorks "
                           "RIGHT JOIN Compositions "
                           "ON MainWorks.MainWorkId = Compositions.MainWorkID) "
                           "ON CpsGenres.CpsGenreID = Compositions.CpsGenreID "
                           "WHERE Compositions.CpsID = ") +
                QString::number(composer) +
                QStringLiteral(" ORDER BY Compositions.CompNbr "
                               " , Compositions.CompTitle"));
        for (const int row : catalogueOrder(rows, 3, acronymText)) {
            const auto text = [&](int column) { return rows.value(row, column).toText().trimmed(); };
            const bool owned = rows.value(row, 5).toBool();
            const int line =
                found.addRow(rows.value(row, 0).toInteger(), QStringLiteral("Comp"),
                             {text(1), numberText(acronymText, text(3)), text(2), text(7), text(8), text(4),
                              owned ? QStringLiteral("*") : QString(), text(6)});
            found.setBold(line, owned && bold);
        }
        list = std::move(found);
    });
}

bool CWKS::PersInLv(qint64 work, ItemList& list) {
    return guarded(m_session, [&] {
        ItemList found({{QStringLiteral("Personages")}});
        Query run =
            m_session.connection().query(QStringLiteral("SELECT PersonageID, PersonageName FROM Personages "
                                                        "WHERE CompID = ") +
                                         QString::number(work) + QStringLiteral(" ORDER BY PersonageName"));
        while (run.next())
            found.addRow(run.integer(0), QStringLiteral("Pers"), {run.text(1).trimmed()});
        list = std::move(found);
    });
}

QString CWKS::numberText(const QString& acronym, const QString& number) {
    return CatalogueNumber::withAcronym(acronym, number);
}

QString CWKS::acronym(qint64 composer) {
    return m_session.connection()
        .single(QStringLiteral("SELECT CatAcr FROM Cps WHERE CpsID = ") + QString::number(composer))
        .toText()
        .trimmed();
}

// ---- one work

Work CWKS::work(qint64 id) {
    Work result;
    Recordset row = Recordset::open(m_session.connection(),
                                    QStringLiteral("SELECT * FROM Compositions WHERE CompID = %1").arg(id));
    if (row.isEmpty())
        return result;
    result.id = id;
    for (const TextColumn& column : textColumns)
        result.*column.value = row.value(0, QLatin1String(column.name)).toText();
    for (const LinkColumn& column : linkColumns)
        result.*column.value = row.value(0, QLatin1String(column.name)).toInteger();
    result.description = row.value(0, QStringLiteral("Descr")).toText();
    result.inCollection = row.value(0, QStringLiteral("InCollection")).toBool();
    return result;
}

// What stands there already was not typed now: a title that another program stored too long does not keep the
// user from changing the year.
void CWKS::fit(Work& work, const Work& stored) {
    for (const TextColumn& column : textColumns) {
        QString& value = work.*column.value;
        if (stored.id == 0 || value != stored.*column.value)
            value = m_session.fields().fit(QStringLiteral("Compositions"), QLatin1String(column.name), value);
    }
}

bool CWKS::AggiungiWork(Work& work) {
    work.id = 0;
    return ModificaWork(work);
}

bool CWKS::ModificaWork(Work& work) {
    const CardOwner owner = work.id == 0 ? CardOwner{QStringLiteral("Cps"), work.composer}
                                         : CardOwner{QStringLiteral("Comp"), work.id};
    bool saved = false;
    guarded(m_session, [&] {
        owner.require(m_session);
        const Work stored = work.id == 0 ? Work() : this->work(work.id);
        fit(work, stored);
        Recordset::Assignments values;
        for (const TextColumn& column : textColumns)
            values.emplace_back(QLatin1String(column.name), work.*column.value);
        for (const LinkColumn& column : linkColumns)
            values.emplace_back(QLatin1String(column.name), work.*column.value);
        values.emplace_back(QStringLiteral("Descr"), work.description.trimmed().remove(QChar(0)));
        Transaction transaction(m_session.connection(),
                                (work.id == 0 ? tr("Add work %1") : tr("Change work %1")).arg(work.title));
        Recordset rows =
            Recordset::open(m_session.connection(),
                            QStringLiteral("SELECT * FROM Compositions WHERE CompID = %1").arg(work.id));
        if (work.id == 0) {
            rows.add(values);
        } else if (rows.isEmpty()) {
            throw Error(tr("This work has been deleted meanwhile."));
        } else {
            rows.update(0, values);
        }
        const qint64 added = m_session.connection().lastKey();
        transaction.commit();
        if (work.id == 0)
            work.id = added;
        saved = true;
    });
    return saved;
}

// ---- deleting

void CWKS::deleteRows(qint64 id, bool withCharacters) {
    Connection& connection = m_session.connection();
    const QString key = QString::number(id);
    connection.execute(QStringLiteral("DELETE FROM CompOnRecPfr WHERE CompOnRecID IN "
                                      "(SELECT CompOnRecID FROM CompOnRec WHERE CompID = ") +
                       key + u')');
    connection.execute(QStringLiteral("DELETE FROM CompOnRec WHERE CompID = ") + key);
    connection.execute(QStringLiteral("DELETE FROM Compositions WHERE CompID = ") + key);
    if (withCharacters)
        connection.execute(QStringLiteral("DELETE FROM Personages WHERE CompID = ") + key);
    Attachments(m_session).deleteDocuments(QStringLiteral("SELECT * FROM Cards WHERE RelatedID = ") + key +
                                           QStringLiteral(" AND RelatedCat = 'Comp'"));
}

bool CWKS::confirm(Question question, const std::vector<qint64>& ids) {
    QString counts;
    if (!guarded(m_session,
                 [&] { counts = deletionCounts(m_session.connection(), QStringLiteral("Comp"), ids); }))
        return false;
    question.text += counts;
    question.buttons = {Answer::Yes, Answer::No};
    question.defaultButton = Answer::No;
    return m_session.messages().ask(question) == Answer::Yes;
}

bool CWKS::deleteWorks(const std::vector<qint64>& ids, bool withCharacters, const QString& words) {
    const bool deleted = guarded(
        m_session,
        [&] {
            Transaction transaction(m_session.connection(), words);
            for (const qint64 id : ids)
                deleteRows(id, withCharacters);
            transaction.commit();
        },
        QStringLiteral("An unexpected error has occurred!"));
    if (deleted && m_cards)
        for (const qint64 id : ids)
            m_cards->closeCard(OpenCards::key(QStringLiteral("Comp"), id));
    return deleted;
}

bool CWKS::EliminaWork(qint64 id) {
    Work old;
    if (!guarded(m_session, [&] { old = work(id); }) || old.id == 0)
        return false;
    Question question;
    question.title = QStringLiteral("Delete work");
    question.text = QStringLiteral("Do you want permanently delete: \n") + old.title + QStringLiteral(" ?");
    return confirm(question, {id}) && deleteWorks({id}, true, tr("Delete work %1").arg(old.title));
}

bool CWKS::EliminaWorkBatch(const std::vector<qint64>& ids) {
    constexpr qsizetype titlesShown = 20;
    if (ids.empty())
        return false;
    QStringList titles;
    const bool isRead = guarded(m_session, [&] {
        for (const qint64 id : ids)
            titles.push_back(work(id).title);
    });
    if (!isRead)
        return false;
    if (titles.size() > titlesShown)
        titles = titles.mid(0, titlesShown) << tr("...");
    Question question;
    question.title = QStringLiteral("Delete works");
    question.text = QString::number(ids.size()) + QStringLiteral(" works will be permanently deleted: \n") +
                    titles.join(u'\n') + QStringLiteral("\nConfirm?");
    return confirm(question, ids) && deleteWorks(ids, false, tr("Delete %1 works").arg(ids.size()));
}

// ---- characters

bool CWKS::hasCharacter(qint64 work, const QString& name, qint64 except) {
    return m_session.connection().exists(
        QStringLiteral("SELECT * FROM Personages WHERE CompID = %1 AND PersonageID <> %2")
            .arg(work)
            .arg(except) +
        QStringLiteral(" AND PersonageName LIKE '") + quotedPattern(name) + u'\'');
}

// The lists of works with roles ask for this mark only.
void CWKS::markCharacters(qint64 work) {
    const bool any =
        m_session.connection().exists(QStringLiteral("SELECT * FROM Personages WHERE CompID = %1").arg(work));
    m_session.connection().execute(QStringLiteral("UPDATE Compositions SET Pers = %1 WHERE CompID = %2")
                                       .arg(any ? QStringLiteral("True") : QStringLiteral("False"))
                                       .arg(work));
}

QString CWKS::characterName(const QString& text) {
    return m_session.fields().fit(QStringLiteral("Personages"), QStringLiteral("PersonageName"), text);
}

void CWKS::requireWork(qint64 id) {
    if (!m_session.connection().exists(
            QStringLiteral("SELECT * FROM Compositions WHERE CompID = %1").arg(id)))
        throw Error(tr("This work has been deleted meanwhile."));
}

qint64 CWKS::addCharacter(qint64 work, const QString& text) {
    qint64 id = 0;
    guarded(m_session, [&] {
        const QString name = characterName(text);
        if (hasCharacter(work, name, 0))
            throw Error(name + QStringLiteral(" is already in archive!"));
        requireWork(work);
        Transaction transaction(m_session.connection(), tr("Add personage %1").arg(name));
        Recordset rows =
            Recordset::open(m_session.connection(), QStringLiteral("SELECT * FROM Personages WHERE 1 = 0"));
        rows.add({{QStringLiteral("CompID"), work}, {QStringLiteral("PersonageName"), name}});
        id = m_session.connection().lastKey();
        markCharacters(work);
        transaction.commit();
    });
    return id;
}

bool CWKS::renameCharacter(qint64 id, const QString& text) {
    bool renamed = false;
    guarded(m_session, [&] {
        const QString name = characterName(text);
        Recordset rows =
            Recordset::open(m_session.connection(),
                            QStringLiteral("SELECT * FROM Personages WHERE PersonageID = %1").arg(id));
        if (rows.isEmpty())
            return;
        if (hasCharacter(rows.value(0, QStringLiteral("CompID")).toInteger(), name, id))
            throw Error(name + QStringLiteral(" is already in archive!"));
        Transaction transaction(m_session.connection(), tr("Rename personage %1").arg(name));
        rows.update(0, {{QStringLiteral("PersonageName"), name}});
        transaction.commit();
        renamed = true;
    });
    return renamed;
}

bool CWKS::deleteCharacters(const std::vector<qint64>& ids) {
    return guarded(m_session, [&] {
        Transaction transaction(m_session.connection(), tr("Delete %1 personages").arg(ids.size()));
        for (const qint64 id : ids) {
            const qint64 work =
                m_session.connection()
                    .single(QStringLiteral("SELECT CompID FROM Personages WHERE PersonageID = %1").arg(id))
                    .toInteger();
            m_session.connection().execute(
                QStringLiteral("UPDATE CompOnRecPfr SET PersonageID = 0 WHERE PersonageID = %1").arg(id));
            m_session.connection().execute(
                QStringLiteral("DELETE FROM Personages WHERE PersonageID = %1").arg(id));
            markCharacters(work);
        }
        transaction.commit();
    });
}

int CWKS::importCharacters(qint64 work, const QString& textFile) {
    int added = 0;
    const bool read = guarded(m_session, [&] {
        constexpr qint64 largest = 16 << 20;
        const QString text = CodePages::decodeText(readFile(textFile, largest));
        requireWork(work);
        Transaction transaction(m_session.connection(), tr("Import personages"));
        Recordset rows =
            Recordset::open(m_session.connection(), QStringLiteral("SELECT * FROM Personages WHERE 1 = 0"));
        int number = 0;
        for (const QString& line : text.split(u'\n')) {
            ++number;
            const QString name = cleanName(line);
            if (!m_session.fields().fits(QStringLiteral("Personages"), QStringLiteral("PersonageName"), name))
                throw Error(tr("Line %1: the name is too long.").arg(number));
            if (name.isEmpty() || hasCharacter(work, name, 0))
                continue;
            rows.add({{QStringLiteral("CompID"), work}, {QStringLiteral("PersonageName"), name}});
            ++added;
        }
        markCharacters(work);
        transaction.describe(tr("Import %1 personages").arg(added));
        transaction.commit();
    });
    return read ? added : -1;
}

} // namespace tessaranth
