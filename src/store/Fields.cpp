// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Fields.h"

#include "platform/Errors.h"
#include "store/Recordset.h"
#include "store/clsDb.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <algorithm>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("Fields", text); }

bool isSame(const QString& name, const char* other) {
    return name.compare(QLatin1String(other), Qt::CaseInsensitive) == 0;
}

bool isDigit(QChar c) { return c >= u'0' && c <= u'9'; }

/// The digit that makes an article number whole; its digits weigh 3 and 1 in turn, from the end.
bool hasRightCheckDigit(const QString& digits) {
    int sum = 0;
    for (qsizetype i = 0; i < digits.size(); ++i)
        sum += digits[digits.size() - 1 - i].digitValue() * (i % 2 == 0 ? 1 : 3);
    return sum % 10 == 0;
}

} // namespace

// ---- the table

QString CatalogField::captionText() const { return *caption ? tr(caption) : QString(); }
QString CatalogField::missingText() const { return missing ? tr(missing) : QString(); }

QStringList CatalogField::choiceTexts() const {
    QStringList texts;
    for (const char* text : choices)
        texts << QLatin1String(text);
    return texts;
}

bool CatalogField::isText() const {
    using enum FieldKind;
    return kind != Key && kind != Link && kind != Number && kind != Flag && kind != Date && kind != State;
}

QString CatalogTable::captionText() const { return *caption ? tr(caption) : QString(); }

const CatalogField* CatalogTable::find(const QString& column) const {
    const auto found = std::find_if(fields.begin(), fields.end(),
                                    [&](const CatalogField& field) { return isSame(column, field.column); });
    return found == fields.end() ? nullptr : &*found;
}

const CatalogField& CatalogTable::field(const QString& column) const {
    const CatalogField* found = find(column);
    if (!found)
        qFatal("no column %s.%s", table, qPrintable(column));
    return *found;
}

QString CatalogTable::key() const {
    return fields.front().kind == FieldKind::Key ? fields.front().name() : QString();
}

QStringList CatalogTable::editedColumns() const {
    QStringList columns;
    for (const CatalogField& field : fields)
        if (field.isEdited())
            columns << field.name();
    return columns;
}

const CatalogTable* findCatalogTable(const QString& table) {
    for (const CatalogTable& one : catalogTables())
        if (isSame(table, one.table))
            return &one;
    return nullptr;
}

const CatalogTable& catalogTable(const QString& table) {
    const CatalogTable* found = findCatalogTable(table);
    if (!found)
        qFatal("no table %s", qPrintable(table));
    return *found;
}

// ---- values

QString cleanName(const QString& text) {
    QString result = text;
    for (QChar& c : result)
        if (c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
            c == QChar::ParagraphSeparator)
            c = u' ';
    return result.trimmed();
}

bool isYear(const QString& text) {
    return text.isEmpty() || (text.size() == 4 && std::all_of(text.begin(), text.end(), isDigit));
}

std::optional<QString> trackLength(const QString& text) {
    static const QRegularExpression pattern(QStringLiteral("\\A([0-9]{2})[^0-9]?([0-5][0-9])\\z"));
    if (text.isEmpty())
        return QString();
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    return match.captured(1) + u':' + match.captured(2);
}

FieldRow::FieldRow(const CatalogTable& table) : m_table(&table) {
    for (const CatalogField& field : table.fields) {
        if (field.kind == FieldKind::Choice)
            m_values.insert(field.name(), QString::fromLatin1(field.choices.front()));
        else if (field.isText() || field.kind == FieldKind::Date)
            m_values.insert(field.name(), QString());
        else
            m_values.insert(field.name(), field.least);
    }
}

const Value& FieldRow::value(const QString& column) const {
    return *m_values.constFind(m_table->field(column).name());
}

void FieldRow::set(const QString& column, const Value& value) {
    m_values.insert(m_table->field(column).name(), value);
}

void FieldRow::read(const Recordset& rows, int row) {
    for (const CatalogField& field : m_table->fields) {
        const Value& value = rows.value(row, field.name());
        if (field.kind == FieldKind::Key)
            id = value.toInteger();
        else if (field.kind == FieldKind::Choice && value.toText().isEmpty())
            continue;
        else if (field.isText() || field.kind == FieldKind::Date)
            set(field.name(), value.toText());
        else
            set(field.name(),
                field.most > 0 ? std::clamp(value.toInteger(), field.least, field.most) : value.toInteger());
    }
}

std::vector<std::pair<QString, Value>> FieldRow::edited() const {
    std::vector<std::pair<QString, Value>> values;
    for (const CatalogField& field : m_table->fields)
        if (field.isEdited())
            values.emplace_back(field.name(), value(field.name()));
    return values;
}

// ---- checks

int Fields::width(const QString& table, const QString& column) const {
    return m_widths.maxLength(table, column);
}

bool Fields::fits(const QString& table, const QString& column, const QString& text) const {
    const int limit = width(table, column);
    return limit <= 0 || text.size() <= limit;
}

QString Fields::cut(const QString& table, const QString& column, const QString& text) const {
    const int limit = width(table, column);
    if (fits(table, column, text))
        return text;
    return text.left(text[limit - 1].isHighSurrogate() ? limit - 1 : limit);
}

QString Fields::fit(const QString& table, const CatalogField& field, const QString& given) const {
    using enum FieldKind;
    QString text = field.kind == Text ? QString(given).remove(QChar(0)).trimmed() : cleanName(given);
    if (text.isEmpty() && field.kind == Choice)
        text = QLatin1String(field.choices.front());
    if (text.isEmpty() && field.missing)
        throw Error(field.missingText());
    if (field.kind == DiscId) // discs are looked up by the identifier as the program computes it
        text = text.toLower();
    if (!fits(table, field.name(), text))
        throw Error(
            tr("%1: at most %2 characters.").arg(field.captionText()).arg(width(table, field.name())));
    if (field.kind == Year && !isYear(text))
        throw Error(tr("A year has four digits, or the field is empty."));
    if (field.kind == Length) {
        const std::optional<QString> length = trackLength(text);
        if (!length)
            throw Error(tr("The length \"%1\" is not of the form mm:ss.").arg(text));
        text = *length;
    }
    if (field.kind == Choice && !field.choiceTexts().contains(text))
        throw Error(tr("%1: \"%2\" is none of the list.").arg(field.captionText(), text));
    return text;
}

QString Fields::fit(const QString& table, const QString& column, const QString& text) const {
    return fit(table, catalogTable(table).field(column), text);
}

void Fields::fit(FieldRow& row) const {
    for (const CatalogField& field : row.table().fields) {
        if (!field.isEdited())
            continue;
        if (field.isText())
            row.set(field.name(), fit(row.table().name(), field, row.text(field.name())));
        const qint64 number = row.number(field.name());
        if (field.kind == FieldKind::Number && field.most > 0 &&
            (number < field.least || number > field.most))
            throw Error(tr("%1: a whole number from %2 to %3.")
                            .arg(field.captionText())
                            .arg(field.least)
                            .arg(field.most));
    }
}

QString Fields::hint(FieldKind kind, const QString& given) {
    QString text = cleanName(given);
    if (kind == FieldKind::Barcode) {
        text.remove(u' ').remove(u'-');
        const bool isNumber = (text.size() == 12 || text.size() == 13 || text.size() == 8) &&
                              std::all_of(text.begin(), text.end(), isDigit);
        if (isNumber && !hasRightCheckDigit(text))
            return tr("The last digit of this barcode does not fit the others.");
    } else if (kind == FieldKind::DiscId && !text.isEmpty()) {
        static const QRegularExpression pattern(QStringLiteral("\\A[0-9a-fA-F]{8}\\z"));
        if (!pattern.match(text).hasMatch())
            return tr("A disc identifier has eight digits, 0 to 9 and a to f.");
    }
    return {};
}

} // namespace tessaranth
