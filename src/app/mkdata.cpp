// SPDX-License-Identifier: GPL-3.0-or-later
// Turns the readable sources under data/ into the files that stand beside the program:
//   tessaranth-mkdata keys KEYS.tsv WKeys.dat
//   tessaranth-mkdata template WKeys.dat Tessaranth.tsb
//   tessaranth-mkdata archive Cps|Pfr PERSONS.tsv tsrcps.dll
//   tessaranth-mkdata catalog WORKS.tsv First_Last.tcat
#include "platform/Errors.h"
#include "platform/TsvFile.h"
#include "store/CatalogTemplate.h"
#include "store/Recordset.h"

#include <QCoreApplication>
#include <iostream>

using namespace tessaranth;

namespace {

void makeKeys(const QString& source, const QString& target) {
    const std::pair<int, const char*> languages[] = {
        {9, "english"}, {7, "german"}, {12, "french"}, {16, "italian"}};
    const TsvFile file(source);
    std::vector<KeyNameLine> lines;
    for (const auto& [number, heading] : languages)
        for (int row = 0; row < file.rowCount(); ++row)
            lines.push_back({number, file.cell(row, QStringLiteral("key")).toInt(),
                             file.cell(row, QString::fromLatin1(heading))});
    writeKeyNames(target, lines);
}

/// The fields of a reference archive, each with the heading of its source.
void makeArchive(const QString& prefix, const QString& source, const QString& target) {
    using Type = Field::Type;
    std::vector<std::pair<Field, QString>> columns{
        {{prefix + QStringLiteral("Lname"), Type::Text, 250}, QStringLiteral("last")},
        {{prefix + QStringLiteral("Fname"), Type::Text, 250}, QStringLiteral("first")},
        {{prefix + QStringLiteral("B"), Type::Text, 10}, QStringLiteral("born")},
        {{prefix + QStringLiteral("D"), Type::Text, 10}, QStringLiteral("died")},
        {{QStringLiteral("DateNote"), Type::Text, 50}, QStringLiteral("note")}};
    const TsvFile file(source);
    if (file.hasHeading(QStringLiteral("acronym")))
        columns.push_back({{QStringLiteral("CatAcr"), Type::Text, 20}, QStringLiteral("acronym")});
    std::vector<Field> fields;
    fields.reserve(columns.size());
    for (const auto& column : columns)
        fields.push_back(column.first);
    Recordset archive(fields);
    for (int row = 0; row < file.rowCount(); ++row) {
        Recordset::Assignments values;
        for (const auto& [field, heading] : columns)
            values.emplace_back(field.name, file.cell(row, heading));
        archive.add(values);
    }
    archive.save(target);
}

/// A catalog file of one composer's works. Texts that no card could take are an error of the source.
void makeCatalog(const QString& source, const QString& target) {
    struct Column {
        const char* heading;
        const char* field;
        int width;
    };
    const Column columns[] = {{"title", "CompTitle", 250}, {"subtitle", "CompSubTitle", 250},
                              {"number", "CompNbr", 50},   {"mainwork", "MainWorkName", 250},
                              {"year", "CompYear", 20},    {"catgenre", "CpsGenreName", 250},
                              {"genre", "GenreName", 250}};
    const TsvFile file(source);
    std::vector<Field> fields;
    for (const Column& column : columns)
        fields.push_back({QLatin1String(column.field), Field::Type::Text, column.width});
    Recordset works(fields);
    for (int row = 0; row < file.rowCount(); ++row) {
        Recordset::Assignments values;
        for (const Column& column : columns) {
            const QString text = file.cell(row, QLatin1String(column.heading));
            if (text.size() > column.width)
                throw Error(file.place(row) + QStringLiteral(": too long for ") +
                            QLatin1String(column.field));
            values.emplace_back(QLatin1String(column.field), text);
        }
        if (file.cell(row, QStringLiteral("title")).isEmpty() ||
            file.cell(row, QStringLiteral("catgenre")).isEmpty())
            throw Error(file.place(row) + QStringLiteral(": without title or genre"));
        works.add(values);
    }
    works.save(target);
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments().mid(1);
    try {
        if (words.size() == 3 && words[0] == QLatin1String("keys"))
            makeKeys(words[1], words[2]);
        else if (words.size() == 3 && words[0] == QLatin1String("template"))
            writeCatalogTemplate(words[2], readKeyNames(words[1]));
        else if (words.size() == 4 && words[0] == QLatin1String("archive"))
            makeArchive(words[1], words[2], words[3]);
        else if (words.size() == 3 && words[0] == QLatin1String("catalog"))
            makeCatalog(words[1], words[2]);
        else
            throw Error(QStringLiteral("usage: tessaranth-mkdata keys|template|archive|catalog ..."));
        return 0;
    } catch (const Error& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
