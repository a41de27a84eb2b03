// SPDX-License-Identifier: GPL-3.0-or-later
#include "works/CWKS.h"

#include "items/Attachments.h"
#include "items/Person.h"
#include "platform/CodePages.h"
#include "store/Recordset.h"
#include "store/Session.h"

#include <QCoreApplication>
#include <QFile>
#include <QSet>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("CWKS", text); }

/// The columns of the editor's texts.
struct TextColumn {
    const char* name;
    QString Work::*value;
    const char* caption;
};
const TextColumn textColumns[] = {{"CompTitle", &Work::title, "Title"},
                                  {"CompSubTitle", &Work::subtitle, "Sub title"},
                                  {"CompNbr", &Work::number, "Opus"},
                                  {"CompYear", &Work::year, "Year"}};
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

template<typename Job>
bool CWKS::guarded(const Job& job, const QString& failure) {
    try {
        job();
        return true;
    } catch (const Error& error) {
        m_session.messages().warning(applicationTitle, failure.isEmpty() ? error.reason() : failure);
        return false;
    }
}

// ---- lists

bool CWKS::ElencoInLvS(qint64 composer, ItemList& list) {
    return guarded([&] {
        ItemList found({{QStringLiteral("Title")}, {QStringLiteral("Opus")}});
        Query run =
            m_session.connection().query(QStringLiteral("SELECT CompID, CompTitle, CompNbr FROM Compositions "
                                                        "WHERE CpsID = ") +
                                         QString::number(composer) +
                                         QStringLiteral(" ORDER BY CompNbr "
                                                        " , CompTitle"));
        while (run.next())
            found.addRow(run.integer(0), QStringLiteral("Comp"),
                         {run.text(1).trimmed(), run.text(2).trimmed()});
        list = std::move(found);
    });
}

bool CWKS::ElencoInLvC(qint64 composer, ItemList& list) {
    return guarded([&] {
        ItemList found({{QStringLiteral("Title")},
                        {QStringLiteral("Opus")},
                        {QStringLiteral("Sub title")},
                        {QStringLiteral("Main work")},
                        {QStringLiteral("Catalog genre")},
                        {QStringLiteral("Year")},
                        {QStringLiteral("In Collection")},
                        {QStringLiteral("Description")}});
        const QString acronymText = acronym(composer);
        const bool bold =
            m_session.configuration().flag(QStringLiteral("Misc"), QStringLiteral("WorkInBold"));
        Query run = m_session.connection().query(
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
        while (run.next()) {
            const bool owned = run.integer(5) != 0;
            const int row = found.addRow(
                run.integer(0), QStringLiteral("Comp"),
                {run.text(1).trimmed(), numberText(acronymText, run.text(3).trimmed()), run.text(2).trimmed(),
                 run.text(7).trimmed(), run.text(8).trimmed(), run.text(4).trimmed(),
                 owned ? QStringLiteral("*") : QString(), run.text(6).trimmed()});
            found.setBold(row, owned && bold);
        }
        list = std::move(found);
    });
}

bool CWKS::PersInLv(qint64 work, ItemList& list) {
    return guarded([&] {
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
    // A number that is written out, such as "WoO 59" among opus numbers, needs no acronym.
    if (number.isEmpty() || acronym.isEmpty() || number.front().isLetter())
        return number;
    return acronym + u' ' + number;
}

QString CWKS::acronym(qint64 composer) {
    QString text;
    guarded([&] {
        text =
            m_session.connection()
                .single(QStringLiteral("SELECT CatAcr FROM Cps WHERE CpsID = ") + QString::number(composer))
                .toText()
                .trimmed();
    });
    return text;
}

// ---- one work

Work CWKS::work(qint64 id) {
    Work result;
    guarded([&] {
        Recordset row = Recordset::open(
            m_session.connection(), QStringLiteral("SELECT * FROM Compositions WHERE CompID = %1").arg(id));
        if (row.isEmpty())
            return;
        result.id = id;
        for (const TextColumn& column : textColumns)
            result.*column.value = row.value(0, QLatin1String(column.name)).toText();
        for (const LinkColumn& column : linkColumns)
            result.*column.value = row.value(0, QLatin1String(column.name)).toInteger();
        result.description = row.value(0, QStringLiteral("Descr")).toText();
        result.inCollection = row.value(0, QStringLiteral("InCollection")).toBool();
    });
    return result;
}

void CWKS::fit(Work& work) {
    for (const TextColumn& column : textColumns) {
        QString& value = work.*column.value;
        value = m_session.fields().fit(QStringLiteral("Compositions"), QLatin1String(column.name), value);
    }
}

bool CWKS::AggiungiWork(Work& work) {
    work.id = 0;
    return ModificaWork(work);
}

bool CWKS::ModificaWork(Work& work) {
    bool saved = false;
    guarded([&] {
        fit(work);
        Recordset::Assignments values;
        for (const TextColumn& column : textColumns)
            values.emplace_back(QLatin1String(column.name), work.*column.value);
        for (const LinkColumn& column : linkColumns)
            values.emplace_back(QLatin1String(column.name), work.*column.value);
        values.emplace_back(QStringLiteral("Descr"), work.description.trimmed().remove(QChar(0)));
        Recordset rows =
            Recordset::open(m_session.connection(),
                            QStringLiteral("SELECT * FROM Compositions WHERE CompID = %1").arg(work.id));
        if (work.id == 0) {
            rows.add(values);
            work.id = m_session.connection().lastKey();
        } else if (rows.isEmpty()) {
            throw Error(tr("This work has been deleted meanwhile."));
        } else {
            rows.update(0, values);
        }
        saved = true;
    });
    return saved;
}

// ---- deleting

void CWKS::deleteRows(qint64 id, bool withCharacters, QStringList& files) {
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
                                               QStringLiteral(" AND RelatedCat = 'Comp'"),
                                           files);
}

bool CWKS::EliminaWork(qint64 id) {
    const Work old = work(id);
    if (old.id == 0)
        return false;
    Question question;
    question.title = QStringLiteral("Delete work");
    question.text = QStringLiteral("Do you want permanently delete: \n") + old.title + QStringLiteral(" ?");
    question.buttons = {Answer::Yes, Answer::No};
    question.defaultButton = Answer::No;
    if (m_session.messages().ask(question) != Answer::Yes)
        return false;
    return guarded(
        [&] {
            QStringList files;
            Transaction transaction(m_session.connection());
            deleteRows(id, true, files);
            transaction.commit();
            Attachments::removeFiles(files);
        },
        QStringLiteral("An unexpected error has occurred!"));
}

bool CWKS::EliminaWorkBatch(const std::vector<qint64>& ids) {
    constexpr qsizetype titlesShown = 20;
    QStringList titles;
    for (const qint64 id : ids)
        titles.push_back(work(id).title);
    if (titles.size() > titlesShown)
        titles = titles.mid(0, titlesShown) << tr("...");
    Question question;
    question.title = QStringLiteral("Delete works");
    question.text = QString::number(ids.size()) + QStringLiteral(" works will be permanently deleted: \n") +
                    titles.join(u'\n') + QStringLiteral("\nConfirm?");
    question.buttons = {Answer::Yes, Answer::No};
    question.defaultButton = Answer::No;
    if (ids.empty() || m_session.messages().ask(question) != Answer::Yes)
        return false;
    return guarded(
        [&] {
            QStringList files;
            Transaction transaction(m_session.connection());
            for (const qint64 id : ids)
                deleteRows(id, false, files);
            transaction.commit();
            Attachments::removeFiles(files);
        },
        QStringLiteral("An unexpected error has occurred!"));
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
    guarded([&] {
        const QString name = characterName(text);
        if (hasCharacter(work, name, 0))
            throw Error(name + QStringLiteral(" is already in archive!"));
        requireWork(work);
        Transaction transaction(m_session.connection());
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
    guarded([&] {
        const QString name = characterName(text);
        Recordset rows =
            Recordset::open(m_session.connection(),
                            QStringLiteral("SELECT * FROM Personages WHERE PersonageID = %1").arg(id));
        if (rows.isEmpty())
            return;
        if (hasCharacter(rows.value(0, QStringLiteral("CompID")).toInteger(), name, id))
            throw Error(name + QStringLiteral(" is already in archive!"));
        rows.update(0, {{QStringLiteral("PersonageName"), name}});
        renamed = true;
    });
    return renamed;
}

bool CWKS::deleteCharacters(const std::vector<qint64>& ids) {
    return guarded([&] {
        Transaction transaction(m_session.connection());
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
    const bool read = guarded([&] {
        QFile file(textFile);
        if (!file.open(QIODevice::ReadOnly))
            throw FileError(tr("%1 cannot be read: %2").arg(textFile, file.errorString()));
        requireWork(work);
        Transaction transaction(m_session.connection());
        Recordset rows =
            Recordset::open(m_session.connection(), QStringLiteral("SELECT * FROM Personages WHERE 1 = 0"));
        int number = 0;
        for (const QString& line : CodePages::decodeText(file.readAll()).split(u'\n')) {
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
        transaction.commit();
    });
    return read ? added : -1;
}

} // namespace tessaranth
