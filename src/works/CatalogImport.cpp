// SPDX-License-Identifier: GPL-3.0-or-later
#include "works/CatalogImport.h"

#include "items/Person.h"
#include "platform/Progress.h"
#include "store/Connection.h"
#include "store/TextOrder.h"
#include "text/CatalogueNumber.h"

#include <QStringList>

namespace tessaranth {

namespace {

const char* const linkColumns[] = {"GenreID", "MainWorkID", "CpsGenreID", "KeyID"};

QString ofComposer(qint64 composer) { return QStringLiteral(" WHERE CpsID = ") + QString::number(composer); }

} // namespace

NameKeys::NameKeys(Connection& connection, CatalogWriter& writer, const char* table, const char* key,
                   const char* nameColumn, const QString& condition, Recordset::Assignments fixed)
    : m_writer(writer), m_table(QLatin1String(table)), m_nameColumn(QLatin1String(nameColumn)),
      m_fixed(std::move(fixed)) {
    Query run = connection.query(QStringLiteral("SELECT %1, %2 FROM %3%4 ORDER BY %1")
                                     .arg(QLatin1String(key), m_nameColumn, m_table, condition));
    while (run.next())
        if (const QString name = TextOrder::fold(run.text(1).trimmed()); !m_keys.contains(name))
            m_keys.insert(name, run.integer(0));
}

qint64 NameKeys::findOrAdd(const QString& name) {
    if (name.isEmpty())
        return 0;
    const QString folded = TextOrder::fold(name);
    if (const qint64 known = m_keys.value(folded))
        return known;
    Recordset::Assignments values = m_fixed;
    values.emplace_back(m_nameColumn, name);
    return *m_keys.insert(folded, m_writer.add(m_table, values));
}

CatalogImport::CatalogImport(Connection& connection, qint64 composer)
    : m_connection(connection), m_composer(composer),
      m_acronym(connection.single(QStringLiteral("SELECT CatAcr FROM Cps") + ofComposer(composer))
                    .toText()
                    .trimmed()),
      m_writer(connection), m_imported{{QStringLiteral("CpsID"), composer}, {QStringLiteral("wkl"), true}},
      m_genres(connection, m_writer, "Genres", "GenreID", "GenreName", {}, {}),
      m_mainWorks(connection, m_writer, "MainWorks", "MainWorkID", "MainWorkName", ofComposer(composer),
                  m_imported),
      m_composerGenres(connection, m_writer, "CpsGenres", "CpsGenreID", "CpsGenreName", ofComposer(composer),
                       m_imported),
      m_keys(connection) {
    readKnown();
}

// What users type differs from a file in blanks, letter case and the acronym, which some put into the number.
QString CatalogImport::identity(const QString& number, const QString& title) const {
    return TextOrder::fold(CatalogueNumber::withoutAcronym(m_acronym, number.simplified())) + u'\n' +
           TextOrder::fold(title.simplified());
}

void CatalogImport::readKnown() {
    Query run = m_connection.query(
        QStringLiteral("SELECT CompID, CompNbr, CompTitle, GenreID, MainWorkID, CpsGenreID, KeyID FROM "
                       "Compositions") +
        ofComposer(m_composer) + QStringLiteral(" ORDER BY CompID"));
    while (run.next())
        m_works[identity(run.text(1), run.text(2))].push_back(
            {run.integer(0), {run.integer(3), run.integer(4), run.integer(5), run.integer(6)}});
}

void CatalogImport::add(const Recordset& rows, Progress& progress) {
    for (int row = 0; row < rows.rowCount() && !progress.stopped(); ++row) {
        addRow(rows, row);
        progress.step(row + 1, rows.rowCount());
    }
}

void CatalogImport::addRow(const Recordset& rows, int row) {
    const auto text = [&](const char* field) {
        return cleanName(rows.value(row, QLatin1String(field)).toText());
    };
    const auto link = [&](size_t column) {
        switch (column) {
        case 0:
            return m_genres.findOrAdd(text("GenreName"));
        case 1:
            return m_mainWorks.findOrAdd(text("MainWorkName"));
        case 2:
            return m_composerGenres.findOrAdd(text("CpsGenreName"));
        default:
            return m_keys.keyOf(text("CompTitle"));
        }
    };
    const auto known = m_works.find(identity(text("CompNbr"), text("CompTitle")));
    if (known == m_works.end() || known->isEmpty()) {
        Recordset::Assignments values = m_imported;
        for (const char* field : {"CompTitle", "CompSubTitle", "CompNbr", "CompYear"})
            values.emplace_back(QLatin1String(field), text(field));
        for (size_t column = 0; column < std::size(linkColumns); ++column)
            values.emplace_back(QLatin1String(linkColumns[column]), link(column));
        m_writer.add(QStringLiteral("Compositions"), values);
        ++m_added;
        return;
    }
    const Known work = known->takeFirst();
    QStringList changes;
    for (size_t column = 0; column < std::size(linkColumns); ++column)
        if (const qint64 id = work.links[column] == 0 ? link(column) : 0)
            changes << QStringLiteral("%1 = %2").arg(QLatin1String(linkColumns[column])).arg(id);
    if (!changes.isEmpty())
        m_connection.execute(QStringLiteral("UPDATE Compositions SET ") + changes.join(QStringLiteral(", ")) +
                             QStringLiteral(" WHERE CompID = ") + QString::number(work.id));
    ++m_known;
}

} // namespace tessaranth
