// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <vector>

namespace tessaranth {

class Session;

/// A table of names that the user keeps himself, such as the genres of a composer or the sub-categories of a
/// category. Whatever its letter case, a name may stand once among the rows of an owner. Failing calls throw
/// Error.
struct NameTable {
    struct Row {
        qint64 id = 0;
        QString name;
    };

    QString table, key, column;
    QString ownerColumn; ///< empty: the table has one owner, 0
    QString label;       ///< what the user knows the name by

    std::vector<Row> rows(Session& session, qint64 owner) const; ///< by name
    /// A name as it is stored; empty when nothing is left of it. Throws when it is too long.
    QString fit(Session& session, const QString& text) const;
    int maxLength(Session& session) const; ///< characters; 0: no limit
    /// The row with this name, other than the row `except`; 0 when there is none.
    qint64 find(Session& session, qint64 owner, const QString& name, qint64 except = 0) const;
    QString nameOf(Session& session, qint64 id) const; ///< empty when there is no such row

    // With names that `fit` gave and that `find` did not find.
    qint64 add(Session& session, qint64 owner, const QString& name) const; ///< the new row
    bool rename(Session& session, qint64 id, const QString& name) const;
};

} // namespace tessaranth
