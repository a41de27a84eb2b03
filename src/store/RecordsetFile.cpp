// SPDX-License-Identifier: GPL-3.0-or-later
// Record sets as files: the XML rowset form (MS-PRSTFR, "Persisted Recordset Format", its XML variant): a
// schema element that names and types the fields, then one z:row element a row with one attribute a field.
#include "store/Recordset.h"

#include "platform/Errors.h"
#include "platform/FileReader.h"
#include "platform/FileWriter.h"
#include "store/XmlLimits.h"

#include <QCoreApplication>
#include <QFile>
#include <QHash>
#include <QRegularExpression>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>
#include <algorithm>
#include <optional>

namespace tessaranth {

namespace {

const QString schemaSpace = QStringLiteral("uuid:BDC6E3F0-6DA3-11d1-A2A3-00AA00C14882");
const QString typeSpace = QStringLiteral("uuid:C2F41010-65B3-11d1-A29F-00AA00C14882");
const QString rowsetSpace = QStringLiteral("urn:schemas-microsoft-com:rowset");
const QString rowSpace = QStringLiteral("#RowsetSchema");

struct TypeWord {
    Field::Type type;
    QLatin1String word;
};
// The first word of a type is the one written; the others are read as well.
const TypeWord typeWords[] = {
    {Field::Type::Text, QLatin1String("string")},   {Field::Type::Integer, QLatin1String("int")},
    {Field::Type::Number, QLatin1String("float")},  {Field::Type::Boolean, QLatin1String("boolean")},
    {Field::Type::Date, QLatin1String("dateTime")}, {Field::Type::Integer, QLatin1String("i2")},
    {Field::Type::Integer, QLatin1String("i4")},    {Field::Type::Integer, QLatin1String("i8")},
    {Field::Type::Integer, QLatin1String("ui1")},   {Field::Type::Number, QLatin1String("r4")},
    {Field::Type::Number, QLatin1String("r8")},     {Field::Type::Number, QLatin1String("number")}};

QString tr(const char* text) { return QCoreApplication::translate("Recordset", text); }

// XML has no way to write most control characters, but a text that was pasted may hold them: they are
// written as _x0001_, as the format does in its field names, and a text that looks so has its first "_"
// written as _x005F_.
bool isUnwritable(const QString& text, qsizetype at) {
    const QChar c = text[at];
    if (c.isHighSurrogate())
        return at + 1 == text.size() || !text[at + 1].isLowSurrogate();
    if (c.isLowSurrogate())
        return at == 0 || !text[at - 1].isHighSurrogate();
    const ushort u = c.unicode();
    return (u < 0x20 && u != '\t' && u != '\n' && u != '\r') || u >= 0xFFFE;
}

QString escapedControls(const QString& text) {
    static const QRegularExpression likeAnEscape(QStringLiteral("_(?=x[0-9A-F]{4}_)"));
    QString source = text;
    source.replace(likeAnEscape, QStringLiteral("_x005F_"));
    QString result;
    for (qsizetype i = 0; i < source.size(); ++i) {
        if (isUnwritable(source, i))
            result +=
                QStringLiteral("_x%1_").arg(QString::number(source[i].unicode(), 16).toUpper(), 4, u'0');
        else
            result += source[i];
    }
    return result;
}

QString unescapedControls(const QString& text) {
    static const QRegularExpression escape(QStringLiteral("_x([0-9A-F]{4})_"));
    if (!text.contains(QLatin1String("_x")))
        return text;
    QString result;
    qsizetype from = 0;
    auto it = escape.globalMatch(text);
    while (it.hasNext()) {
        const auto match = it.next();
        const QString character = QChar(match.captured(1).toUShort(nullptr, 16));
        if (character != u"_" && !isUnwritable(character, 0))
            continue;
        result += text.mid(from, match.capturedStart() - from) + character;
        from = match.capturedEnd();
    }
    return result + text.mid(from);
}

bool isStamp(const QString& text) {
    static const QRegularExpression stamp(QStringLiteral("^\\d{4}-\\d\\d-\\d\\d[ T][0-9:.]+$"));
    return stamp.match(text).hasMatch();
}

QString cellText(const Field& field, const Value& value) {
    switch (field.type) {
    case Field::Type::Boolean:
        if (value.isText())
            return escapedControls(value.toText());
        return value.toBool() ? QStringLiteral("True") : QStringLiteral("False");
    case Field::Type::Date:
        return isStamp(value.toText()) ? value.toText().replace(u' ', u'T') : escapedControls(value.toText());
    default:
        return escapedControls(value.toText());
    }
}

/// A file may call a column of texts one of numbers or dates: what the conversion would change stays a text.
std::optional<Value> converted(const Field& field, const QString& text) {
    bool isNumber = false;
    switch (field.type) {
    case Field::Type::Integer: {
        const Value whole(qint64(text.toLongLong(&isNumber)));
        return isNumber && whole.toText() == text ? std::optional(whole) : std::nullopt;
    }
    case Field::Type::Number: {
        const Value number(text.toDouble(&isNumber));
        return isNumber && number.toText() == text ? std::optional(number) : std::nullopt;
    }
    case Field::Type::Boolean: {
        const bool isTrue = text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0;
        if (isTrue || text.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0)
            return Value(isTrue);
        if (text == u"0" || text == u"1" || text == u"-1")
            return Value(text != u"0");
        return std::nullopt;
    }
    case Field::Type::Date:
        return isStamp(text) ? std::optional(Value(QString(text).replace(u'T', u' '))) : std::nullopt;
    case Field::Type::Text:
        break;
    }
    return std::nullopt;
}

Value cellValue(const Field& field, const QString& text) {
    return converted(field, text).value_or(Value(unescapedControls(text)));
}

/// What the cells of each field are called in the rows: by its name, where that is one that XML allows.
QStringList attributeNames(const std::vector<Field>& fields) {
    static const QRegularExpression plain(QStringLiteral("^[A-Za-z_][A-Za-z0-9_.-]*$"));
    QStringList names;
    for (const Field& field : fields)
        names.push_back(field.name);
    for (qsizetype i = 0; i < names.size(); ++i) {
        if (plain.match(names[i]).hasMatch())
            continue;
        QString coded = u'c' + QString::number(i);
        while (names.contains(coded))
            coded += u'_';
        names[i] = coded;
    }
    return names;
}

void writeSchema(QXmlStreamWriter& xml, const std::vector<Field>& fields, const QStringList& attributes) {
    xml.writeStartElement(schemaSpace, QStringLiteral("Schema"));
    xml.writeAttribute(QStringLiteral("id"), QStringLiteral("RowsetSchema"));
    xml.writeStartElement(schemaSpace, QStringLiteral("ElementType"));
    xml.writeAttribute(QStringLiteral("name"), QStringLiteral("row"));
    xml.writeAttribute(QStringLiteral("content"), QStringLiteral("eltOnly"));
    for (size_t i = 0; i < fields.size(); ++i) {
        const Field& field = fields[i];
        xml.writeStartElement(schemaSpace, QStringLiteral("AttributeType"));
        xml.writeAttribute(QStringLiteral("name"), attributes[qsizetype(i)]);
        if (attributes[qsizetype(i)] != field.name)
            xml.writeAttribute(rowsetSpace, QStringLiteral("name"), escapedControls(field.name));
        xml.writeAttribute(rowsetSpace, QStringLiteral("number"), QString::number(i + 1));
        xml.writeAttribute(rowsetSpace, QStringLiteral("nullable"), QStringLiteral("true"));
        xml.writeStartElement(schemaSpace, QStringLiteral("datatype"));
        for (const TypeWord& entry : typeWords) {
            if (entry.type == field.type) {
                xml.writeAttribute(typeSpace, QStringLiteral("type"), entry.word);
                break;
            }
        }
        if (field.width > 0)
            xml.writeAttribute(typeSpace, QStringLiteral("maxLength"), QString::number(field.width));
        xml.writeEndElement();
        xml.writeEndElement();
    }
    xml.writeEndElement();
    xml.writeEndElement();
}

std::vector<Field> readSchema(QXmlStreamReader& xml, QStringList& attributes) {
    std::vector<Field> fields;
    attributes.clear();
    while (xml.readNext() != QXmlStreamReader::Invalid) {
        if (xml.isEndElement() && xml.name() == QLatin1String("Schema"))
            break;
        if (!xml.isStartElement())
            continue;
        if (xml.name() == QLatin1String("AttributeType")) {
            const QString attribute = xml.attributes().value(QLatin1String("name")).toString();
            QString name =
                unescapedControls(xml.attributes().value(rowsetSpace, QLatin1String("name")).toString());
            if (name.isEmpty())
                name = attribute;
            if (name.isEmpty())
                xml.raiseError(tr("A field has no name."));
            const auto known = std::find_if(fields.begin(), fields.end(), [&](const Field& field) {
                return field.name.compare(name, Qt::CaseInsensitive) == 0;
            });
            if (fields.size() >= mostFields)
                xml.raiseError(tr("There are more than %1 fields.").arg(mostFields));
            else if (known != fields.end())
                xml.raiseError(tr("The field %1 is described twice.").arg(name));
            fields.push_back({name, Field::Type::Text, 0});
            attributes.push_back(attribute);
        } else if (xml.name() == QLatin1String("datatype") && !fields.empty()) {
            const QString word = xml.attributes().value(typeSpace, QLatin1String("type")).toString();
            for (const TypeWord& entry : typeWords)
                if (entry.word == word)
                    fields.back().type = entry.type;
            fields.back().width = xml.attributes().value(typeSpace, QLatin1String("maxLength")).toInt();
        }
    }
    return fields;
}

} // namespace

void Recordset::save(const QString& path) const {
    FileWriter file(path);
    QXmlStreamWriter xml(&file.device());
    xml.writeStartDocument();
    xml.setAutoFormatting(true);
    xml.writeStartElement(QStringLiteral("xml"));
    xml.writeNamespace(schemaSpace, QStringLiteral("s"));
    xml.writeNamespace(typeSpace, QStringLiteral("dt"));
    xml.writeNamespace(rowsetSpace, QStringLiteral("rs"));
    xml.writeNamespace(rowSpace, QStringLiteral("z"));
    const QStringList attributes = attributeNames(m_fields);
    writeSchema(xml, m_fields, attributes);
    xml.writeStartElement(rowsetSpace, QStringLiteral("data"));
    for (int row = 0; row < rowCount(); ++row) {
        xml.writeEmptyElement(rowSpace, QStringLiteral("row"));
        for (size_t i = 0; i < m_fields.size(); ++i) {
            const Value& cell = value(row, int(i));
            if (!cell.isNull())
                xml.writeAttribute(attributes[qsizetype(i)], cellText(m_fields[i], cell));
        }
    }
    xml.writeEndDocument();
    file.commit();
}

Recordset Recordset::load(const QString& path, int maxRows) {
    QFile file(path);
    openToRead(file);
    checkXmlLimits(file, path);
    QXmlStreamReader xml(&file);
    Recordset set({});
    QStringList names;
    QHash<QString, size_t> places;
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        if (xml.namespaceUri() == schemaSpace && xml.name() == QLatin1String("Schema")) {
            // Rows that were read by another description would not fit.
            if (!set.m_fields.empty())
                xml.raiseError(tr("The fields are described twice."));
            else
                set.m_fields = readSchema(xml, names);
            for (qsizetype i = names.size() - 1; i >= 0; --i)
                places.insert(names[i], size_t(i));
        } else if (xml.namespaceUri() == rowSpace && xml.name() == QLatin1String("row")) {
            if (set.m_fields.empty())
                throw FileError(tr("%1 has rows but no description of its fields.").arg(path));
            if (int(set.m_rows.size()) >= maxRows)
                throw FileError(tr("%1 has more than %2 rows.").arg(path).arg(maxRows));
            Row row;
            row.cells.resize(set.m_fields.size());
            for (const QXmlStreamAttribute& attribute : xml.attributes()) {
                const auto place = places.constFind(attribute.qualifiedName().toString());
                if (place != places.constEnd())
                    row.cells[*place] = cellValue(set.m_fields[*place], attribute.value().toString());
            }
            set.m_visible.push_back(int(set.m_rows.size()));
            set.m_rows.push_back(std::move(row));
        }
    }
    if (xml.hasError())
        throw FileError(tr("%1, line %2: %3").arg(path).arg(xml.lineNumber()).arg(xml.errorString()));
    if (set.m_fields.empty())
        throw FileError(tr("%1 is not a record set.").arg(path));
    return set;
}

} // namespace tessaranth
