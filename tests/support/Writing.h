// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/Connection.h"

namespace tessaranth {

/// One statement as one operation; the rows it changed.
inline int write(Connection& connection, const QString& statement) {
    Transaction transaction(connection, QStringLiteral("test"));
    const int rows = connection.execute(statement);
    transaction.commit();
    return rows;
}

/// The same in SQLite's own words.
inline void writeNative(Connection& connection, const QByteArray& statements) {
    Transaction transaction(connection, QStringLiteral("test"));
    connection.runNative(statements);
    transaction.commit();
}

} // namespace tessaranth
