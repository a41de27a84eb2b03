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

/// What marks a row as imported.
Recordset::Assignments imported() { return {{QStringLiteral("wkl"), true}}; }

} // namespace

CatalogImport::CatalogImport(Connection& connection, qint64 composer)
    : m_connection(connection), m_composer(composer),
      m_acronym(connection.single(QStringLiteral("SELECT CatAcr FROM Cps") + ofComposer(composer))
                    .toText()
                    .trimmed()),
      m_writer(connection), m_keys(connection) {
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
            return m_writer.lookup(QStringLiteral("Genres"), text("GenreName"));
        case 1:
            return m_writer.lookup(QStringLiteral("MainWorks"), text("MainWorkName"), m_composer, imported());
        case 2:
            return m_writer.lookup(QStringLiteral("CpsGenres"), text("CpsGenreName"), m_composer, imported());
        default:
            return m_keys.keyOf(text("CompTitle"));
        }
    };
    const auto known = m_works.find(identity(text("CompNbr"), text("CompTitle")));
    if (known == m_works.end() || known->isEmpty()) {
        Recordset::Assignments values = imported();
        values.emplace_back(QStringLiteral("CpsID"), m_composer);
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
