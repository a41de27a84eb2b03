// SPDX-License-Identifier: GPL-3.0-or-later
// Adding and changing persons and the names of lookup lists.
#include "items/CMIT.h"
#include "items/OpenCards.h"
#include "store/AttachmentFiles.h"
#include "store/Guarded.h"

#include <QCoreApplication>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("CMIT", text); }

/// The words of the input box for one lookup list, and its refusal of a name that exists.
struct LookupWords {
    int kind;
    const char* newTitle;
    const char* prompt;
    const char* label;
    const char* renameTitle;
    const char* exists; ///< after the name
};
const LookupWords lookupWords[] = {{ItemKind::Genre, "  New genre", "Add a new global genre", "Genre name",
                                    "Rename genre", " alredy exists!"},
                                   {ItemKind::Label, " Add new label", "Add or edit a label", "Label name",
                                    " Edit label", " is already in archive!"},
                                   {ItemKind::Source, "  New source", "Add a new recording source",
                                    "Source name", "Rename source", " alredy exists!"},
                                   {ItemKind::Support, "  New support", "Add a new recording support",
                                    "Support name", "Rename support", " alredy exists!"}};

const LookupWords* wordsOf(int kind) {
    for (const LookupWords& words : lookupWords)
        if (words.kind == kind)
            return &words;
    return nullptr;
}

/// A column of the person tables, with where its value stands.
struct PersonColumn {
    const char* suffix; ///< after the kind's code
    QString Person::*value;
    bool isYear = false;

    bool isOf(const ItemKind& kind) const { return *suffix != '\0' || kind.number == ItemKind::Composer; }
    QString name(const ItemKind& kind) const {
        return *suffix == '\0' ? QStringLiteral("CatAcr") : kind.code + QLatin1String(suffix);
    }
    bool isChanged(const Person& now, const Person& before) const {
        return before.id == 0 || now.*value != before.*value;
    }
};
const PersonColumn personColumns[] = {{"Lname", &Person::last},
                                      {"Fname", &Person::first},
                                      {"B", &Person::born, true},
                                      {"D", &Person::died, true},
                                      {"", &Person::acronym}};

} // namespace

bool CMIT::refuse(const QString& text, const QString& title) {
    m_session.messages().warning(title.isEmpty() ? applicationTitle : title, text);
    return false;
}

// ---- persons

// What stands there already was not typed now: a year such as "c.1397" that another program stored does not
// keep the user from changing the name.
void CMIT::fit(const ItemKind& kind, Person& person, const Person& stored) {
    for (const PersonColumn& column : personColumns) {
        QString& value = person.*column.value;
        if (column.isOf(kind) && column.isChanged(person, stored))
            value = m_session.fields().fit(kind.table, column.name(kind), value);
    }
}

// The same name with other years is another person, as with the two Johann Strauss; without years nothing
// tells them apart.
bool CMIT::mayBeCalled(const ItemKind& kind, const Person& person) {
    const QString code = kind.code;
    const auto like = [&code](const char* suffix, const QString& value) {
        const QString column = code + QLatin1String(suffix);
        QString condition = column + QStringLiteral(" LIKE '") + quotedPattern(value) + u'\'';
        // Catalogs of every age hold persons whose first name is Null.
        if (value.isEmpty())
            condition = u'(' + condition + QStringLiteral(" OR IsNull(") + column + QStringLiteral("))");
        return condition;
    };
    QStringList others;
    bool isSame = person.born.isEmpty() && person.died.isEmpty();
    Query run = m_session.connection().query(
        QStringLiteral("SELECT %1B, %1D FROM %2 WHERE ").arg(code, kind.table) + like("Lname", person.last) +
        QStringLiteral(" AND ") + like("Fname", person.first) +
        QStringLiteral(" AND %1 <> %2").arg(kind.key).arg(person.id));
    while (run.next()) {
        isSame = isSame || (run.text(0) == person.born && run.text(1) == person.died);
        others << yearsText(run.text(0), run.text(1));
    }
    if (others.isEmpty())
        return true;
    const QString isKnown =
        (person.first + u' ' + person.last).trimmed() + QStringLiteral(" is already in archive");
    if (isSame)
        return refuse(isKnown);
    Question question;
    question.title = applicationTitle;
    question.text = isKnown + QStringLiteral(" (%1).\n\n").arg(others.join(QStringLiteral(", "))) +
                    tr("Is %1 another person of this name?").arg(yearsText(person.born, person.died));
    question.buttons = {Answer::Yes, Answer::No};
    question.defaultButton = Answer::No;
    return m_session.messages().ask(question) == Answer::Yes;
}

Person CMIT::stored(const ItemKind& kind, qint64 id) {
    Person result;
    const Recordset row =
        Recordset::open(m_session.connection(),
                        QStringLiteral("SELECT * FROM %1 WHERE %2 = %3").arg(kind.table, kind.key).arg(id));
    if (row.isEmpty())
        return result;
    result.id = id;
    for (const PersonColumn& column : personColumns)
        if (column.isOf(kind))
            result.*column.value = row.value(0, column.name(kind)).toText();
    return result;
}

Person CMIT::person(int number, qint64 id) { return stored(*itemKind(number), id); }

bool CMIT::AggiungiItem(int number, Person& person) {
    person.id = 0;
    return ModificaItem(number, person);
}

bool CMIT::ModificaItem(int number, Person& person) {
    bool saved = false;
    onKind(number, [&](const ItemKind& kind) {
        const bool isNew = person.id == 0;
        const Person before = isNew ? Person() : stored(kind, person.id);
        if (!isNew && before.id == 0) {
            refuse(tr("This card has been deleted meanwhile."));
            return;
        }
        fit(kind, person, before);
        const bool isRenamed = isNew || person.last != before.last || person.first != before.first;
        if (isRenamed && !mayBeCalled(kind, person))
            return;
        Recordset::Assignments values;
        bool hasOtherYears = isNew;
        for (const PersonColumn& column : personColumns) {
            if (!column.isOf(kind) || !column.isChanged(person, before))
                continue;
            values.emplace_back(column.name(kind), person.*column.value);
            hasOtherYears = hasOtherYears || column.isYear;
        }
        if (number == ItemKind::Composer && hasOtherYears)
            values.emplace_back(QStringLiteral("CpsY"), yearsText(person.born, person.died));
        Transaction transaction(m_session.connection(),
                                (isNew ? tr("Add %1 %2") : tr("Change %1 %2"))
                                    .arg(kind.noun, (person.first + u' ' + person.last).trimmed()));
        qint64 id = person.id;
        Recordset rows = Recordset::open(
            m_session.connection(),
            QStringLiteral("SELECT * FROM %1 WHERE %2 = %3").arg(kind.table, kind.key).arg(person.id));
        if (isNew) {
            rows.add(values);
            id = m_session.connection().lastKey();
        } else if (!values.empty()) {
            rows.update(0, values);
        }
        transaction.commit();
        person.id = id;
        saved = true;
        if (m_cards)
            m_cards->reloadCard(OpenCards::key(kind.code, person.id));
    });
    return saved;
}

// ---- lookup lists

bool CMIT::isFitName(const ItemKind& kind, QString& name, qint64 id) {
    const LookupWords* words = wordsOf(kind.number);
    if (!words)
        return false;
    name = m_session.fields().fit(kind.table, kind.nameColumn, name);
    const bool known = m_session.connection().exists(QStringLiteral("SELECT * FROM ") + kind.table +
                                                     QStringLiteral(" WHERE ") + kind.nameColumn +
                                                     QStringLiteral(" LIKE '") + quotedPattern(name) + u'\'' +
                                                     QStringLiteral(" AND %1 <> %2").arg(kind.key).arg(id));
    return !known || refuse(name + QLatin1String(words->exists));
}

qint64 CMIT::addNamed(int number, const QString& text) {
    qint64 id = 0;
    onKind(number, [&](const ItemKind& kind) {
        QString name = text;
        if (!isFitName(kind, name, 0))
            return;
        Transaction transaction(m_session.connection(), tr("Add %1 %2").arg(kind.noun, name));
        Recordset rows = Recordset::open(m_session.connection(),
                                         QStringLiteral("SELECT * FROM %1 WHERE 1 = 0").arg(kind.table));
        qint64 added = 0;
        // A label would come with a logo that is not its own.
        if (number == ItemKind::Label)
            added = AttachmentFiles(m_session).addRow(rows, kind.key, {{kind.nameColumn, name}},
                                                      Session::Folder::Labels);
        else
            added = rows.value(rows.add({{kind.nameColumn, name}}), kind.key).toInteger();
        transaction.commit();
        id = added;
    });
    return id;
}

bool CMIT::rename(int number, qint64 id, const QString& text) {
    bool renamed = false;
    onKind(number, [&](const ItemKind& kind) {
        QString name = text;
        if (!isFitName(kind, name, id))
            return;
        Recordset rows = Recordset::open(
            m_session.connection(),
            QStringLiteral("SELECT * FROM %1 WHERE %2 = ").arg(kind.table, kind.key) + QString::number(id));
        if (rows.isEmpty()) {
            refuse(tr("This item has been deleted meanwhile."));
            return;
        }
        Transaction transaction(m_session.connection(), tr("Rename %1 %2").arg(kind.noun, name));
        rows.update(0, {{kind.nameColumn, name}});
        transaction.commit();
        renamed = true;
    });
    return renamed;
}

qint64 CMIT::AggiungiItem(int number) {
    const LookupWords* words = wordsOf(number);
    const ItemKind* kind = itemKind(number);
    if (!words || !kind)
        return 0;
    NameRequest request{QString::fromLatin1(words->newTitle),
                        QString::fromLatin1(words->prompt),
                        QString::fromLatin1(words->label),
                        QStringLiteral("Add"),
                        kind->iconKey,
                        {},
                        m_session.fields().width(kind->table, kind->nameColumn)};
    const QString name = m_session.messages().inputName(request);
    return name.isEmpty() ? 0 : addNamed(number, name);
}

bool CMIT::ModificaItem(int number, qint64 id) {
    const LookupWords* words = wordsOf(number);
    const ItemKind* kind = itemKind(number);
    QString old;
    if (!words || !kind || !guarded(m_session, [&] { old = nameOf(number, id); }))
        return false;
    NameRequest request{QString::fromLatin1(words->renameTitle),
                        QString::fromLatin1(words->renameTitle).trimmed(),
                        QString::fromLatin1(words->label),
                        QStringLiteral("Rename"),
                        kind->iconKey,
                        old,
                        m_session.fields().width(kind->table, kind->nameColumn)};
    const QString name = m_session.messages().inputName(request);
    return !name.isEmpty() && rename(number, id, name);
}

bool CMIT::exists(int number, qint64 id) {
    const ItemKind& kind = *itemKind(number);
    return m_session.connection().exists(
        QStringLiteral("SELECT %2 FROM %1 WHERE %2 = %3").arg(kind.table, kind.key).arg(id));
}

QString CMIT::nameOf(int number, qint64 id) {
    const ItemKind& kind = *itemKind(number);
    const bool isPerson = number == ItemKind::Composer || number == ItemKind::Performer;
    const QString columns = isPerson
                                ? kind.code + QStringLiteral("Lname, ") + kind.code + QStringLiteral("Fname")
                                : kind.nameColumn;
    Query run = m_session.connection().query(
        QStringLiteral("SELECT %1 FROM %2 WHERE %3 = %4").arg(columns, kind.table, kind.key).arg(id));
    if (!run.next())
        return {};
    return isPerson ? (run.text(1) + u' ' + run.text(0)).trimmed() : run.text(0);
}

} // namespace tessaranth
