// SPDX-License-Identifier: GPL-3.0-or-later
// Adding and changing persons and the names of lookup lists.
#include "items/CMITGuard.h"
#include "items/OpenCards.h"

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
    const char* suffix;
    QString Person::*value;
    const char* caption;
};
const PersonColumn personColumns[] = {{"Lname", &Person::last, "Last Name"},
                                      {"Fname", &Person::first, "First Name"},
                                      {"B", &Person::born, "Born"},
                                      {"D", &Person::died, "Death"}};

} // namespace

bool CMIT::refuse(const QString& text, const QString& title) {
    m_session.messages().warning(title.isEmpty() ? applicationTitle : title, text);
    return false;
}

// ---- persons

void CMIT::fit(const ItemKind& kind, Person& person) {
    for (const PersonColumn& column : personColumns) {
        QString& value = person.*column.value;
        value = m_session.fields().fit(kind.table, kind.code + QLatin1String(column.suffix), value);
    }
    person.acronym = m_session.fields().fit(QStringLiteral("Cps"), QStringLiteral("CatAcr"), person.acronym);
}

bool CMIT::isKnown(const ItemKind& kind, const Person& person) {
    const QString code = kind.code;
    const auto like = [&code](const char* suffix, const QString& value) {
        const QString column = code + QLatin1String(suffix);
        QString condition = column + QStringLiteral(" LIKE '") + quotedPattern(value) + u'\'';
        // Catalogs of every age hold persons whose first name is Null.
        if (value.isEmpty())
            condition = u'(' + condition + QStringLiteral(" OR IsNull(") + column + QStringLiteral("))");
        return condition;
    };
    return m_session.connection().exists(QStringLiteral("SELECT * FROM ") + kind.table +
                                         QStringLiteral(" WHERE ") + like("Lname", person.last) +
                                         QStringLiteral(" AND ") + like("Fname", person.first) +
                                         QStringLiteral(" AND %1 <> %2").arg(kind.key).arg(person.id));
}

Person CMIT::person(int number, qint64 id) {
    Person result;
    guarded(number, [&](const ItemKind& kind) {
        Recordset row = Recordset::open(
            m_session.connection(),
            QStringLiteral("SELECT * FROM %1 WHERE %2 = %3").arg(kind.table, kind.key).arg(id));
        if (row.isEmpty())
            return;
        result.id = id;
        for (const PersonColumn& column : personColumns)
            result.*column.value = row.value(0, kind.code + QLatin1String(column.suffix)).toText();
        result.acronym = row.value(0, QStringLiteral("CatAcr")).toText();
    });
    return result;
}

bool CMIT::AggiungiItem(int number, Person& person) {
    person.id = 0;
    return ModificaItem(number, person);
}

bool CMIT::ModificaItem(int number, Person& person) {
    bool saved = false;
    guarded(number, [&](const ItemKind& kind) {
        fit(kind, person);
        if (isKnown(kind, person)) {
            refuse((person.first + u' ' + person.last).trimmed() + QStringLiteral(" is already in archive"));
            return;
        }
        Recordset::Assignments values;
        for (const PersonColumn& column : personColumns)
            values.emplace_back(kind.code + QLatin1String(column.suffix), person.*column.value);
        if (number == ItemKind::Composer) {
            values.emplace_back(QStringLiteral("CpsY"), yearsText(person.born, person.died));
            values.emplace_back(QStringLiteral("CatAcr"), person.acronym);
        }
        Recordset rows = Recordset::open(
            m_session.connection(),
            QStringLiteral("SELECT * FROM %1 WHERE %2 = %3").arg(kind.table, kind.key).arg(person.id));
        if (person.id == 0) {
            rows.add(values);
            person.id = m_session.connection().lastKey();
        } else if (rows.isEmpty()) {
            refuse(tr("This card has been deleted meanwhile."));
            return;
        } else {
            rows.update(0, values);
        }
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
    guarded(number, [&](const ItemKind& kind) {
        QString name = text;
        if (!isFitName(kind, name, 0))
            return;
        Recordset rows = Recordset::open(m_session.connection(),
                                         QStringLiteral("SELECT * FROM %1 WHERE 1 = 0").arg(kind.table));
        rows.add({{kind.nameColumn, name}});
        id = m_session.connection().lastKey();
    });
    return id;
}

bool CMIT::rename(int number, qint64 id, const QString& text) {
    bool renamed = false;
    guarded(number, [&](const ItemKind& kind) {
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
        rows.update(0, {{kind.nameColumn, name}});
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
    if (!words || !kind)
        return false;
    NameRequest request{QString::fromLatin1(words->renameTitle),
                        QString::fromLatin1(words->renameTitle).trimmed(),
                        QString::fromLatin1(words->label),
                        QStringLiteral("Rename"),
                        kind->iconKey,
                        nameOf(number, id),
                        m_session.fields().width(kind->table, kind->nameColumn)};
    const QString name = m_session.messages().inputName(request);
    return !name.isEmpty() && rename(number, id, name);
}

bool CMIT::exists(int number, qint64 id) {
    bool found = false;
    guarded(number, [&](const ItemKind& kind) {
        found = m_session.connection().exists(
            QStringLiteral("SELECT %2 FROM %1 WHERE %2 = %3").arg(kind.table, kind.key).arg(id));
    });
    return found;
}

QString CMIT::nameOf(int number, qint64 id) {
    QString name;
    guarded(number, [&](const ItemKind& kind) {
        const bool isPerson = number == ItemKind::Composer || number == ItemKind::Performer;
        const QString columns =
            isPerson ? kind.code + QStringLiteral("Lname, ") + kind.code + QStringLiteral("Fname")
                     : kind.nameColumn;
        Query run = m_session.connection().query(
            QStringLiteral("SELECT %1 FROM %2 WHERE %3 = %4").arg(columns, kind.table, kind.key).arg(id));
        if (run.next())
            name = isPerson ? (run.text(1) + u' ' + run.text(0)).trimmed() : run.text(0);
    });
    return name;
}

} // namespace tessaranth
