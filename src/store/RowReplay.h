// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/ChangeLog.h"
#include "store/RowImage.h"

#include <QHash>
#include <QSet>
#include <QString>

namespace tessaranth {

class Connection;

/// Takes rows of the history back, or does them again, within the caller's transaction. A row that is not as
/// the step left it throws Error with the reason, and the caller's transaction must not be committed.
/// Columns that tell how the program was last used do not count; those that are counted from other tables are
/// counted anew at the end.
class RowReplay {
public:
    explicit RowReplay(Connection& connection) : m_connection(connection) {}

    void apply(const RowChange& change, bool back);
    void recount(); ///< to be called after the last row

private:
    using Cells = std::vector<RowImage::Cell>;
    struct Columns {
        QStringList names;
        std::vector<bool> unchecked; ///< by column
        int work = -1;               ///< the column that names a work whose marks may have changed
    };

    const Columns& columnsOf(const RecordedTable& table);
    void insert(const RowChange& change, const Cells& cells);
    void remove(const RowChange& change, const Cells& present);
    void update(const RowChange& change, const Cells& present, const Cells& wanted);
    /// The condition that the row is as these cells say, with their values added to the parameters.
    QByteArray condition(const RowChange& change, const Cells& cells,
                         std::vector<const RowImage::Cell*>& values);
    qint64 linkRow(const RowChange& change, const Cells& cells);
    [[noreturn]] void refuse(const RowChange& change);
    void noteWork(const RowChange& change, const Cells& cells);

    Connection& m_connection;
    QHash<const RecordedTable*, Columns> m_columns;
    QSet<qint64> m_works;
};

} // namespace tessaranth
