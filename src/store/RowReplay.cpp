// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/RowReplay.h"

#include "store/Connection.h"

#include <QCoreApplication>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("History", text); }

bool isNamed(std::span<const char* const> names, const QString& column) {
    return std::any_of(names.begin(), names.end(), [&](const char* name) {
        return column.compare(QLatin1String(name), Qt::CaseInsensitive) == 0;
    });
}

RowImage::Cell number(qint64 value) { return {0, 'i', value, 0, {}}; }

} // namespace

const RowReplay::Columns& RowReplay::columnsOf(const RecordedTable& table) {
    const auto known = m_columns.constFind(&table);
    if (known != m_columns.constEnd())
        return *known;
    Columns columns;
    columns.names = m_connection.columnsOf(QLatin1String(table.name));
    for (const QString& name : std::as_const(columns.names))
        columns.unchecked.push_back(isNamed(table.ignored, name) || isNamed(table.counted, name));
    for (const RowMeaning& meaning : table.meanings)
        if (meaning.thing == Thing::Work && meaning.role != RowMeaning::Role::Owner)
            columns.work = int(columns.names.indexOf(QLatin1String(meaning.column)));
    return *m_columns.insert(&table, columns);
}

void RowReplay::refuse(const RowChange& change) {
    const QString row = change.table->key
                            ? QStringLiteral("%1 %2").arg(QLatin1String(change.table->name)).arg(change.key)
                            : QString::fromLatin1(change.table->name);
    throw Error(
        tr("A row of the catalog (%1) has been changed since by another way. Nothing was changed.").arg(row));
}

void RowReplay::noteWork(const RowChange& change, const Cells& cells) {
    const int column = columnsOf(*change.table).work;
    for (const RowImage::Cell& cell : cells)
        if (cell.column == column && cell.type == 'i')
            m_works.insert(cell.whole);
}

void RowReplay::apply(const RowChange& change, bool back) {
    const Columns& columns = columnsOf(*change.table);
    const Cells present = RowImage::read(back ? change.after : change.before);
    const Cells wanted = RowImage::read(back ? change.before : change.after);
    for (const Cells* cells : {&present, &wanted})
        for (const RowImage::Cell& cell : *cells)
            if (cell.column >= columns.names.size())
                throw Error(tr("The history does not fit the tables of this catalog."));
    noteWork(change, present);
    noteWork(change, wanted);
    if (change.table->key && columns.work >= 0 &&
        columns.names[columns.work].compare(QLatin1String(change.table->key), Qt::CaseInsensitive) == 0)
        m_works.insert(change.key);
    if (present.empty() && wanted.empty())
        refuse(change);
    if (present.empty())
        insert(change, wanted);
    else if (wanted.empty())
        remove(change, present);
    else
        update(change, present, wanted);
}

QByteArray RowReplay::condition(const RowChange& change, const Cells& cells,
                                std::vector<const RowImage::Cell*>& values) {
    const Columns& columns = columnsOf(*change.table);
    QByteArray condition;
    for (const RowImage::Cell& cell : cells) {
        if (columns.unchecked[size_t(cell.column)])
            continue;
        condition += " AND " + columns.names[cell.column].toUtf8() + " IS ?";
        values.push_back(&cell);
    }
    return condition;
}

// A link has no key. The number of its row is where it is mostly found, but a compact gives other numbers.
qint64 RowReplay::linkRow(const RowChange& change, const Cells& cells) {
    const QByteArray select = QByteArray("SELECT rowid FROM ") + change.table->name + " WHERE ";
    const RowImage::Cell hint = number(change.key);
    std::vector<const RowImage::Cell*> values{&hint};
    const QByteArray same = condition(change, cells, values);
    if (const auto row = m_connection.singleNative(select + "rowid = ?" + same, values))
        return *row;
    values.erase(values.begin());
    const auto row = m_connection.singleNative(select + same.mid(int(qstrlen(" AND "))) + " LIMIT 1", values);
    if (!row)
        refuse(change);
    return *row;
}

void RowReplay::remove(const RowChange& change, const Cells& present) {
    const QByteArray statement = QByteArray("DELETE FROM ") + change.table->name + " WHERE ";
    if (!change.table->key) {
        const RowImage::Cell row = number(linkRow(change, present));
        m_connection.executeNative(statement + "rowid = ?", {&row});
        return;
    }
    const RowImage::Cell key = number(change.key);
    std::vector<const RowImage::Cell*> values{&key};
    const QByteArray same = condition(change, present, values);
    if (m_connection.executeNative(statement + change.table->key + " = ?" + same, values) != 1)
        refuse(change);
}

void RowReplay::insert(const RowChange& change, const Cells& cells) {
    const Columns& columns = columnsOf(*change.table);
    QByteArray names, places;
    std::vector<const RowImage::Cell*> values;
    for (const RowImage::Cell& cell : cells) {
        names += (values.empty() ? "" : ", ") + columns.names[cell.column].toUtf8();
        places += values.empty() ? "?" : ", ?";
        values.push_back(&cell);
    }
    const QByteArray statement = QByteArray("INSERT INTO ") + change.table->name + " (";
    const RowImage::Cell row = number(change.key);
    try {
        if (change.table->key) {
            m_connection.executeNative(statement + names + ") VALUES (" + places + ')', values);
            return;
        }
        // Links are read in the order of their rows, so one that comes back takes its old place if that is
        // free.
        const bool isTaken =
            m_connection
                .singleNative(QByteArray("SELECT rowid FROM ") + change.table->name + " WHERE rowid = ?",
                              {&row})
                .has_value();
        if (!isTaken) {
            names += ", rowid";
            places += ", ?";
            values.push_back(&row);
        }
        m_connection.executeNative(statement + names + ") VALUES (" + places + ')', values);
    } catch (const SqlError& error) {
        if (error.isStorageFailure())
            throw;
        refuse(change); // the key has been given to another row
    }
}

void RowReplay::update(const RowChange& change, const Cells& present, const Cells& wanted) {
    const Columns& columns = columnsOf(*change.table);
    QByteArray statement = QByteArray("UPDATE ") + change.table->name + " SET ";
    std::vector<const RowImage::Cell*> values;
    for (const RowImage::Cell& cell : wanted) {
        if (change.table->key && columns.unchecked[size_t(cell.column)])
            continue;
        statement += (values.empty() ? "" : ", ") + columns.names[cell.column].toUtf8() + " = ?";
        values.push_back(&cell);
    }
    if (values.empty())
        return; // nothing but marks, which are counted anew
    const RowImage::Cell key = number(change.table->key ? change.key : linkRow(change, present));
    values.push_back(&key);
    statement += QByteArray(" WHERE ") + (change.table->key ? change.table->key : "rowid") + " = ?";
    if (change.table->key)
        statement += condition(change, present, values);
    if (m_connection.executeNative(statement, values) != 1)
        refuse(change);
}

// Only where it is otherwise: a row that is written is a change, and the word index would write it too.
void RowReplay::recount() {
    for (const qint64 id : std::as_const(m_works)) {
        const RowImage::Cell work = number(id);
        m_connection.executeNative("UPDATE Compositions SET InCollection = has, Pers = sings FROM (SELECT "
                                   "EXISTS (SELECT 1 FROM CompOnRec WHERE CompOnRec.CompID = ?1) AS has, "
                                   "EXISTS (SELECT 1 FROM Personages WHERE Personages.CompID = ?1) AS sings) "
                                   "WHERE CompID = ?1 AND (InCollection IS NOT has OR Pers IS NOT sings)",
                                   {&work});
    }
}

} // namespace tessaranth
