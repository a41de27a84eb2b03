// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/JetSql.h"

#include <QByteArray>

namespace tessaranth {

/// The text of a CREATE TABLE statement with one column's type or default changed and the table renamed;
/// every other word stays as it is. Empty when the table has no such column.
QByteArray withColumnChanged(const QByteArray& createStatement, const ColumnChange& change,
                             const QByteArray& newTableName);

} // namespace tessaranth
