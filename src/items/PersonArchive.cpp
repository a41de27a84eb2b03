// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/PersonArchive.h"

#include "items/ItemKind.h"
#include "platform/Progress.h"
#include "store/CatalogWriter.h"
#include "store/Guarded.h"
#include "store/LikePattern.h"
#include "store/TextOrder.h"

#include <QCoreApplication>
#include <QSet>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("PersonArchive", text); }

QString fileOf(int kind) {
    return kind == ItemKind::Composer ? QStringLiteral("tsrcps.dll") : QStringLiteral("tsrpfr.dll");
}

// Two names are the same exactly when the catalog's duplicate check would find one by the other.
QString foldedName(const QString& last, const QString& first) {
    return TextOrder::fold(last.trimmed()) + u'\t' + TextOrder::fold(first.trimmed());
}

} // namespace

std::optional<PersonArchive> PersonArchive::open(Session& session, int kind) {
    std::optional<PersonArchive> archive;
    guarded(session, [&] {
        archive = PersonArchive(session, kind, Recordset::load(session.applicationFile(fileOf(kind))));
    });
    return archive;
}

QString PersonArchive::cell(qint64 id, const QString& field) const {
    const int index = m_rows.fieldIndex(field);
    return index < 0 ? QString() : m_rows.value(int(id) - 1, index).toText();
}

// Matched here and not by the record set's filter, since that would renumber its rows.
ItemList PersonArchive::search(const QString& text) {
    ItemList list({{QStringLiteral("Last Name")},
                   {QStringLiteral("First Name")},
                   {QStringLiteral("Born")},
                   {QStringLiteral("Death")},
                   {QStringLiteral("Date note")},
                   {QStringLiteral("Catalog")}});
    const ItemKind& kind = *itemKind(m_kind);
    const auto field = [&](const char* suffix) {
        return m_rows.fieldIndex(kind.code + QLatin1String(suffix));
    };
    const int last = field("Lname");
    const int first = field("Fname");
    const int others[] = {field("B"), field("D"), m_rows.fieldIndex(QStringLiteral("DateNote")),
                          m_rows.fieldIndex(QStringLiteral("CatAcr"))};
    const auto otherText = [&](int row, int other) {
        return other < 0 ? QString() : m_rows.value(row, other).toText();
    };
    QString pattern;
    for (const QChar c : text.trimmed())
        pattern += QStringLiteral("%_[").contains(c) ? u'[' + QString(c) + u']' : QString(c);
    const LikePattern wanted(QStringView(u'%' + pattern + u'%'));
    for (int row = 0; row < m_rows.rowCount(); ++row) {
        const QString lastName = m_rows.value(row, last).toText();
        const QString firstName = m_rows.value(row, first).toText();
        if (wanted.matches(QStringView(lastName)) || wanted.matches(QStringView(firstName)))
            list.addRow(row + 1, kind.iconKey,
                        {lastName, firstName, otherText(row, others[0]), otherText(row, others[1]),
                         otherText(row, others[2]), otherText(row, others[3])});
    }
    return list;
}

Person PersonArchive::person(qint64 id) const {
    const QString& code = itemKind(m_kind)->code;
    Person person;
    person.last = cell(id, code + QStringLiteral("Lname"));
    person.first = cell(id, code + QStringLiteral("Fname"));
    person.born = cell(id, code + QLatin1Char('B'));
    person.died = cell(id, code + QLatin1Char('D'));
    person.acronym = cell(id, QStringLiteral("CatAcr"));
    return person;
}

QString PersonArchive::dateNote(qint64 id) const { return cell(id, QStringLiteral("DateNote")); }

std::optional<PersonArchive::Summary> PersonArchive::import(const std::vector<qint64>& ids,
                                                            Progress& progress) {
    const ItemKind& kind = *itemKind(m_kind);
    const QString& code = kind.code;
    Summary summary;
    progress.stage(tr("Importing"));
    const bool done = guarded(*m_session, [&] {
        Connection& connection = m_session->connection();
        QSet<QString> known;
        Query names = connection.query(QStringLiteral("SELECT %1Lname, %1Fname FROM %1").arg(code));
        while (names.next())
            known.insert(foldedName(names.text(0), names.text(1)));
        Transaction transaction(connection, tr("Import persons"));
        CatalogWriter writer(connection);
        for (const qint64 id : ids) {
            if (progress.stopped()) {
                summary.stopped = true;
                break;
            }
            const Person one = person(id);
            const QString name = foldedName(one.last, one.first);
            if (known.contains(name)) {
                ++summary.present;
            } else {
                known.insert(name);
                Recordset::Assignments values{{code + QStringLiteral("Lname"), one.last},
                                              {code + QStringLiteral("Fname"), one.first},
                                              {code + QLatin1Char('B'), one.born},
                                              {code + QLatin1Char('D'), one.died}};
                if (m_kind == ItemKind::Composer) {
                    values.emplace_back(QStringLiteral("CpsY"), yearsText(one.born, one.died));
                    values.emplace_back(QStringLiteral("CatAcr"), one.acronym);
                }
                writer.add(kind.table, values);
                ++summary.added;
            }
            progress.step(summary.added + summary.present, qint64(ids.size()));
        }
        transaction.describe(
            (m_kind == ItemKind::Composer ? tr("Import %1 composers") : tr("Import %1 performers"))
                .arg(summary.added));
        transaction.commit();
    });
    return done ? std::optional(summary) : std::nullopt;
}

} // namespace tessaranth
