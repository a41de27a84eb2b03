// SPDX-License-Identifier: GPL-3.0-or-later
// What a step did, for the user to read.
#include "store/History.h"
#include "store/RowImage.h"
#include "store/Session.h"

#include <QCoreApplication>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("History", text); }

QString nameOf(Connection& connection, Thing thing, qint64 id) {
    const ThingName* name = thingName(thing);
    if (!name || id == 0)
        return {};
    Query run = connection.query(
        QStringLiteral("SELECT %1 FROM %2 WHERE %3 = %4")
            .arg(QLatin1String(name->names), QLatin1String(name->table), QLatin1String(name->key))
            .arg(id));
    QStringList parts;
    for (int column = 0; run.next() && column < run.columnCount(); ++column)
        parts.prepend(run.text(column).trimmed());
    return parts.join(u' ').trimmed();
}

/// Cells of one side of a row, by the names of their columns.
QHash<QString, Value> byName(const QByteArray& image, const std::vector<ColumnInfo>& columns) {
    QHash<QString, Value> cells;
    for (const RowImage::Cell& cell : RowImage::read(image))
        if (size_t(cell.column) < columns.size())
            cells.insert(columns[size_t(cell.column)].name, cell.value());
    return cells;
}

} // namespace

QString History::described(const RecordedTable& table, const ColumnInfo& column,
                           const QHash<QString, Value>& row) {
    const Value value = row.value(column.name);
    if (column.type == QLatin1String("BOOLEAN"))
        return value.isNull() ? QString() : value.toBool() ? tr("yes") : tr("no");
    std::optional<Thing> thing = thingOfColumn(column.name.toLatin1().constData());
    for (const RowMeaning& meaning : table.meanings)
        if (meaning.codeColumn && column.name == QLatin1String(meaning.column))
            thing = thingOfCode(row.value(QLatin1String(meaning.codeColumn)).toText().toLatin1().constData());
    const bool isOwnKey = table.key && column.name == QLatin1String(table.key);
    const QString name =
        thing && !isOwnKey ? nameOf(m_session.connection(), *thing, value.toInteger()) : QString();
    return name.isEmpty() ? value.toText() : QStringLiteral("%1 (%2)").arg(value.toText(), name);
}

HistoryRow History::described(const RowChange& change) {
    HistoryRow row{
        change.kind, QString::fromLatin1(change.table->name), change.table->key ? change.key : 0, {}};
    const std::vector<ColumnInfo>& columns = m_session.connection().columns(row.table);
    const QHash<QString, Value> before = byName(change.before, columns);
    const QHash<QString, Value> after = byName(change.after, columns);
    for (const ColumnInfo& column : columns) {
        HistoryRow::Field field{column.name, described(*change.table, column, before),
                                described(*change.table, column, after)};
        if (field.before != field.after)
            row.fields.push_back(std::move(field));
    }
    return row;
}

void History::eachRow(qint64 step, const std::function<bool(const HistoryRow&)>& use) {
    if (m_file)
        m_file->eachRow(step, false, [&](const RowChange& change) { return use(described(change)); });
}

std::vector<StepFile> History::files(qint64 step) {
    return m_file ? m_file->files(step) : std::vector<StepFile>();
}

} // namespace tessaranth
