// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QString>

namespace tessaranth {

class Connection;

/// Finds musical keys in titles by the names that the catalog has for them in any language: "Quintet in G
/// minor", "Messe c-Moll". Reads the names once; a failing read throws SqlError.
class KeyFinder {
public:
    explicit KeyFinder(Connection& connection);
    /// The key (WKeys.KeyID) that a title names; 0 when it names none or several.
    qint64 keyOf(const QString& title) const;

private:
    QHash<QString, qint64> m_keys; ///< by the folded words of a name
    qsizetype m_longest = 0;       ///< words of the longest name
};

} // namespace tessaranth
