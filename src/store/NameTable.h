// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <vector>

namespace tessaranth {

struct CatalogTable;
class Session;

/// A table of names that the user keeps himself: a lookup list, the genres of a composer, the sub-categories
/// of a category. Whatever its letter case, a name may stand once among the rows of an owner. Failing calls
/// throw Error.
class NameTable {
public:
    struct Row {
        qint64 id = 0;
        QString name;
    };

    /// `table` is one that has a name column in the table of fields.
    explicit NameTable(const QString& table);

    QString label() const; ///< what the user knows the name by

    std::vector<Row> rows(Session& session, qint64 owner) const; ///< by name
    /// A name as it is stored. Throws for an empty one and for one that is too long.
    QString fit(Session& session, const QString& text) const;
    int maxLength(Session& session) const; ///< characters; 0: no limit
    /// The row with this name, other than the row `except`; 0 when there is none.
    qint64 find(Session& session, qint64 owner, const QString& name, qint64 except = 0) const;
    QString nameOf(Session& session, qint64 id) const; ///< empty when there is no such row

    // With names that `fit` gave and that `find` did not find.
    qint64 add(Session& session, qint64 owner, const QString& name) const; ///< the new row
    bool rename(Session& session, qint64 id, const QString& name) const;

private:
    const CatalogTable* m_table;

public:
    const QString table, key, column;
    const QString ownerColumn; ///< empty: the table has one owner, 0
};

} // namespace tessaranth
