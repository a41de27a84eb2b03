// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/Value.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace tessaranth {

class Recordset;
class clsDb;

/// What a column holds, and with that how a value is cleaned and checked before it is stored.
enum class FieldKind {
    Key,     ///< the row's number, given by the catalog
    Link,    ///< key of a row of the table `target`; 0 for none
    Number,  ///< a whole number from `least` to `most`
    Flag,    ///< yes or no
    Date,    ///< date and time, "yyyy-MM-dd hh:mm:ss"
    Line,    ///< a text of one line
    Text,    ///< a text of several lines
    Year,    ///< four digits, or empty
    Choice,  ///< one of `choices`; the first stands for an empty text
    Barcode, ///< a line; `hint` knows its check digit
    Length,  ///< "mm:ss", or empty
    DiscId,  ///< eight hexadecimal digits in lower case; `hint` counts them
    Code,    ///< a word of the program, such as the code of a kind of card
    State,   ///< how a card was left; not part of what the user keeps
};

/// One column of the catalog.
struct CatalogField {
    const char* column;
    const char* caption = ""; ///< untranslated; empty where no user meets the column
    FieldKind kind = FieldKind::Line;
    const char* missing = nullptr; ///< refuses an empty value, in these words; untranslated
    const char* target = nullptr;
    qint64 least = 0;
    qint64 most = 0;
    std::span<const char* const> choices = {};
    bool isKept = false; ///< the program alone writes it, from other values or the clock

    QString name() const { return QLatin1String(column); }
    QString captionText() const; ///< translated
    QString missingText() const;
    QStringList choiceTexts() const;
    bool isText() const; ///< of any kind
    /// An editor of the row reads and writes it.
    bool isEdited() const { return kind != FieldKind::Key && kind != FieldKind::State && !isKept; }
};

/// One table of the catalog, with its columns in no particular order.
struct CatalogTable {
    const char* table;
    const char* caption; ///< what its rows are called, in the plural; untranslated
    std::span<const CatalogField> fields;
    const char* nameColumn = nullptr;  ///< what a row is called and found by
    const char* ownerColumn = nullptr; ///< of a list of names: a name may stand once for each owner

    QString name() const { return QLatin1String(table); }
    QString captionText() const;       ///< translated
    QStringList editedColumns() const; ///< what an editor of a row reads and writes
    /// Column names compare without regard to case. Nullptr for another one.
    const CatalogField* find(const QString& column) const;
    const CatalogField& field(const QString& column) const; ///< must be there
    /// Name of the key column; empty for a table of links, whose rows are told apart by all their values.
    QString key() const;
};

/// Every table of the catalog; the one place that says what a column is called, how long it may be (its
/// width is declared in the catalog itself) and what may stand in it.
std::span<const CatalogTable> catalogTables();
/// Nullptr for another table; names compare without regard to case.
const CatalogTable* findCatalogTable(const QString& table);
const CatalogTable& catalogTable(const QString& table); ///< must be there

/// A text as one line stores it: trimmed, and with what no field of one line can show (line breaks, NUL and
/// other control characters) turned into blanks.
QString cleanName(const QString& text);
/// True for four digits and for an empty text.
bool isYear(const QString& text);
/// A typed length of a track as it is stored, "04:30" of "04.30", "04:30" or "0430"; nothing when it is none,
/// as one of 60 seconds or more. Empty for an empty text.
std::optional<QString> trackLength(const QString& text);

/// The values of one row as an editor holds them, by column. A new one holds what an empty row does.
class FieldRow {
public:
    explicit FieldRow(const CatalogTable& table);

    const CatalogTable& table() const { return *m_table; }
    qint64 id = 0; ///< key of the row; 0 for one that is not stored yet

    QString text(const QString& column) const { return value(column).toText(); }
    qint64 number(const QString& column) const { return value(column).toInteger(); }
    bool flag(const QString& column) const { return value(column).toBool(); }
    const Value& value(const QString& column) const;
    void set(const QString& column, const Value& value);

    /// Takes over one row of a set that holds every column; throws SqlError for one that does not. What rows
    /// of older catalogs lack reads as in a new row, and a number out of its range as the next one in it.
    void read(const Recordset& rows, int row);
    /// What an editor writes.
    std::vector<std::pair<QString, Value>> edited() const;

    bool operator==(const FieldRow&) const = default;

private:
    const CatalogTable* m_table;
    QHash<QString, Value> m_values; ///< by column as the table spells it
};

/// The checks of the fields, with the widths that the open catalog declares.
class Fields {
public:
    explicit Fields(const clsDb& widths) : m_widths(widths) {}

    /// Longest text in characters; 0 for no limit, as where the catalog declares none.
    int width(const QString& table, const QString& column) const;
    bool fits(const QString& table, const QString& column, const QString& text) const;
    /// Cut to the width, never within a character.
    QString cut(const QString& table, const QString& column, const QString& text) const;

    /// A text as the column stores it. Throws Error, in words for the user, for one that is too long or not
    /// of the column's kind, or missing.
    QString fit(const QString& table, const QString& column, const QString& text) const;
    /// The same for every column of a row that an editor writes.
    void fit(FieldRow& row) const;
    /// What may be wrong with a text that is stored all the same, such as the check digit of a barcode;
    /// empty when nothing is.
    static QString hint(FieldKind kind, const QString& text);

private:
    QString fit(const QString& table, const CatalogField& field, const QString& text) const;

    const clsDb& m_widths;
};

} // namespace tessaranth
