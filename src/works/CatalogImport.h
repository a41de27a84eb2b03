// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/CatalogWriter.h"
#include "works/KeyFinder.h"

#include <QHash>

namespace tessaranth {

class Progress;

/// Puts the rows of a catalog file among a composer's works. A row whose number and title the composer has
/// already adds nothing: the work that stands there gets the genre, main work and key that it lacks, and each
/// counts for one row only. The caller holds the transaction; failing calls throw SqlError.
class CatalogImport {
public:
    CatalogImport(Connection& connection, qint64 composer);
    /// All rows, which the caller has checked; ends early when the user stops.
    void add(const Recordset& rows, Progress& progress);
    int added() const { return m_added; }
    int known() const { return m_known; }

private:
    struct Known {
        qint64 id;
        qint64 links[4]; ///< in the order of `linkColumns`
    };
    QString identity(const QString& number, const QString& title) const;
    void readKnown();
    void addRow(const Recordset& rows, int row);

    Connection& m_connection;
    qint64 m_composer;
    QString m_acronym;
    CatalogWriter m_writer;
    KeyFinder m_keys;
    QHash<QString, QList<Known>> m_works;
    int m_added = 0;
    int m_known = 0;
};

} // namespace tessaranth
