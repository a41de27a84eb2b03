// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/ChangeLog.h"

#include "store/RowImage.h"

#include <QSet>
#include <sqlite3.h>

namespace tessaranth {

namespace {

extern "C" void preUpdate(void* log, sqlite3*, int operation, const char* database, const char* table,
                          sqlite3_int64 keyBefore, sqlite3_int64 keyAfter) {
    // A compact writes its copy into a database of its own; temporary tables are nobody's business either.
    if (qstrcmp(database, "main") == 0)
        static_cast<ChangeLog*>(log)->onRow(operation, table, keyBefore, keyAfter);
}

int indexOf(const QStringList& columns, const char* name) {
    for (qsizetype i = 0; name && i < columns.size(); ++i)
        if (columns[i].compare(QLatin1String(name), Qt::CaseInsensitive) == 0)
            return int(i);
    return -1;
}

} // namespace

ChangeLog::ChangeLog(sqlite3* handle) : m_handle(handle) { sqlite3_preupdate_hook(handle, preUpdate, this); }

ChangeLog::~ChangeLog() { sqlite3_preupdate_hook(m_handle, nullptr, nullptr); }

void ChangeLog::forgetSchema() {
    m_last = nullptr;
    m_lastName.clear();
    m_tables.clear();
}

void ChangeLog::learn(const ColumnsOf& columnsOf) {
    if (!m_tables.empty())
        return;
    forgetSchema();
    for (const RecordedTable& known : recordedTables()) {
        const QStringList columns = columnsOf(QLatin1String(known.name));
        if (columns.isEmpty())
            continue; // an old catalog that is not up to date yet
        Table table;
        table.table = &known;
        table.key = indexOf(columns, known.key);
        table.columns = int(columns.size());
        table.ignored.resize(size_t(columns.size()));
        for (const char* name : known.ignored)
            if (const int column = indexOf(columns, name); column >= 0)
                table.ignored[size_t(column)] = true;
        for (const RowMeaning& meaning : known.meanings)
            if (const int column = indexOf(columns, meaning.column); column >= 0)
                table.meanings.push_back({&meaning, column, indexOf(columns, meaning.codeColumn)});
        m_tables.push_back(std::move(table));
    }
}

void ChangeLog::begin(bool recorded) {
    end();
    m_open = true;
    m_recorded = recorded;
}

void ChangeLog::end() {
    m_open = false;
    m_unrecorded = false;
    m_rows = 0;
    m_notes.clear();
}

void ChangeLog::cutBack(const Mark& mark) {
    m_notes.resize(std::min(m_notes.size(), mark.notes));
    if (m_rows <= mark.rows)
        return;
    m_rows = mark.rows;
    if (m_keeper)
        m_keeper->cutBack(mark.rows);
}

// ---- rows as they come

const ChangeLog::Table* ChangeLog::tableOf(const char* name) {
    if (m_lastName == name)
        return m_last;
    m_lastName = name;
    m_last = nullptr;
    for (const Table& table : m_tables)
        if (sqlite3_stricmp(table.table->name, name) == 0)
            m_last = &table;
    return m_last;
}

sqlite3_value* ChangeLog::value(Side side, int column) const {
    sqlite3_value* found = nullptr;
    side == Side::Before ? sqlite3_preupdate_old(m_handle, column, &found)
                         : sqlite3_preupdate_new(m_handle, column, &found);
    return found;
}

QByteArray ChangeLog::wholeRow(const Table& table, Side side) {
    QByteArray image;
    image.reserve(16 * table.columns);
    for (int column = 0; column < table.columns; ++column)
        RowImage::append(image, column, value(side, column));
    return image;
}

/// False where nothing changed but how the program was last used. Of a link all columns are kept, since they
/// are what it is found by.
bool ChangeLog::isChange(const Table& table, QByteArray& before, QByteArray& after) {
    bool isChange = false;
    for (int column = 0; column < table.columns; ++column) {
        sqlite3_value* old = value(Side::Before, column);
        sqlite3_value* now = value(Side::After, column);
        const bool same = RowImage::same(old, now) || table.ignored[size_t(column)];
        isChange |= !same;
        if (same && table.key >= 0)
            continue;
        RowImage::append(before, column, old);
        RowImage::append(after, column, now);
    }
    return isChange;
}

void ChangeLog::noteRow(const Table& table, Side side, CatalogChanges::How how) {
    for (const Meaning& meaning : table.meanings) {
        const qint64 id = sqlite3_value_int64(value(side, meaning.column));
        if (meaning.meaning->role != RowMeaning::Role::Owner) {
            const bool itself = meaning.meaning->role == RowMeaning::Role::Itself;
            if (id != 0)
                note(CardRef{meaning.meaning->thing, id}, itself ? how : CatalogChanges::How::Changed);
        } else if (meaning.codeColumn >= 0) {
            const auto* code =
                reinterpret_cast<const char*>(sqlite3_value_text(value(side, meaning.codeColumn)));
            if (const auto owner = thingOfCode(code ? code : ""))
                note(CardRef{*owner, id}, CatalogChanges::How::Changed);
        }
    }
}

void ChangeLog::onRow(int operation, const char* name, qint64 keyBefore, qint64 keyAfter) {
    const Table* table = m_open ? tableOf(name) : nullptr;
    if (!table)
        return;
    if (!m_recorded) {
        m_unrecorded = true;
        return;
    }
    using How = CatalogChanges::How;
    RowChange change{RowChange::Kind::Changed, table->table, 0, {}, {}};
    if (operation == SQLITE_INSERT) {
        change.kind = RowChange::Kind::Inserted;
        change.after = m_keeper ? wholeRow(*table, Side::After) : QByteArray();
        noteRow(*table, Side::After, How::Added);
    } else if (operation == SQLITE_DELETE) {
        change.kind = RowChange::Kind::Deleted;
        change.before = m_keeper ? wholeRow(*table, Side::Before) : QByteArray();
        noteRow(*table, Side::Before, How::Removed);
    } else {
        if (!isChange(*table, change.before, change.after))
            return;
        noteRow(*table, Side::Before, How::Changed);
        noteRow(*table, Side::After, How::Changed);
    }
    change.key = operation == SQLITE_INSERT ? keyAfter : keyBefore;
    ++m_rows;
    if (m_keeper)
        m_keeper->keep(m_rows, change);
}

// ---- what it comes to

CatalogChanges ChangeLog::changes(const std::function<qint64(qint64)>& recordingOf) const {
    CatalogChanges changes;
    QSet<qint64> placed;
    for (const Note& note : m_notes) {
        changes.note(note.thing, note.how);
        if (note.thing.kind == Thing::PlacedWork)
            placed.insert(note.thing.id);
    }
    // Who performs a work is shown by the recording on which it stands; that of a work that came or went is
    // noted with its row.
    for (const qint64 id : std::as_const(placed))
        if (changes.of({Thing::PlacedWork, id}) == CatalogChanges::How::Changed)
            if (const qint64 recording = recordingOf(id); recording != 0)
                changes.note({Thing::Recording, recording}, CatalogChanges::How::Changed);
    if (m_unrecorded)
        changes.noteEverything();
    return changes;
}

} // namespace tessaranth
