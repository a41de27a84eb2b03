// SPDX-License-Identifier: GPL-3.0-or-later
// Statements that change rows or tables.
#include "store/JetParser.h"

#include <QCoreApplication>

namespace tessaranth {

namespace {

bool sameName(const QString& a, const QString& b) { return a.compare(b, Qt::CaseInsensitive) == 0; }

} // namespace

SqlStatement JetParser::statement(JetSql::Use use) {
    SqlStatement result;
    if (at("SELECT")) {
        result.kind = SqlStatement::Kind::Select;
        result.sql = select(use, &result.rowTable);
    } else if (accept("INSERT")) {
        result = insertInto();
    } else if (accept("UPDATE")) {
        result = update();
    } else if (accept("DELETE")) {
        result = deleteFrom();
    } else if (accept("CREATE")) {
        result = createTable();
    } else if (accept("ALTER")) {
        result = alterTable();
    } else {
        fail();
    }
    expectEnd();
    return result;
}

// ---- rows

SqlStatement JetParser::insertInto() {
    SqlStatement result;
    result.kind = SqlStatement::Kind::Insert;
    expect("INTO");
    const QByteArray table = written(tableName());
    QByteArrayList columns;
    expectSymbol("(");
    do
        columns.push_back(written(identifier()));
    while (acceptSymbol(","));
    expectSymbol(")");
    expect("VALUES");
    QByteArrayList values;
    expectSymbol("(");
    do
        values.push_back(expression().sql);
    while (acceptSymbol(","));
    expectSymbol(")");
    result.sql = "INSERT INTO " + table + " (" + columns.join(", ") + ") VALUES (" + values.join(", ") + ')';
    return result;
}

SqlStatement JetParser::update() {
    SqlStatement result;
    result.kind = SqlStatement::Kind::Update;
    const QString table = tableName();
    result.sql = "UPDATE " + written(table) + " SET ";
    expect("SET");
    QByteArrayList changes;
    do {
        const QByteArray column = written(identifier());
        expectSymbol("=");
        changes.push_back(column + " = " + sum().sql);
    } while (acceptSymbol(","));
    result.sql += changes.join(", ");
    if (accept("WHERE"))
        result.sql += " WHERE " + expression().sql;
    return result;
}

// DELETE FROM T, DELETE * FROM T, and DELETE T.* FROM a join that says which rows of T.
SqlStatement JetParser::deleteFrom() {
    SqlStatement result;
    result.kind = SqlStatement::Kind::Delete;
    QString table;
    if (!acceptSymbol("*") && !at("FROM")) {
        table = identifier();
        expectSymbol(".");
        expectSymbol("*");
    }
    expect("FROM");
    const JetChain chain = from();
    if (chain.names.size() == 1 && (table.isEmpty() || sameName(table, chain.aliases.front()))) {
        result.sql = "DELETE FROM " + chain.sql() + where(chain);
        return result;
    }
    for (qsizetype i = 0; i < chain.aliases.size(); ++i) {
        if (!sameName(table, chain.aliases[i]))
            continue;
        result.sql = "DELETE FROM " + written(chain.names[i]) + " WHERE rowid IN (SELECT " +
                     written(chain.aliases[i]) + ".rowid FROM " + chain.sql() + where(chain) + ')';
        return result;
    }
    fail(QCoreApplication::translate("JetSql", "the table to delete from"));
}

// ---- tables

// Declared as the shipped schema declares them, so that a table made here is like one of a fresh catalog.
QByteArray JetParser::columnType() {
    struct Type {
        const char* word;
        const char* sql;
    };
    static const Type types[] = {{"LONG", "INTEGER"}, {"BIT", "BOOLEAN"}, {"DATE", "DATETIME"},
                                 {"MEMO", "TEXT"},    {"TEXT", "TEXT"},   {"COUNTER", "INTEGER"}};
    if (accept("VARCHAR")) {
        expectSymbol("(");
        bool valid = token().kind == JetToken::Kind::Number;
        const int width = valid ? token().text.toInt(&valid) : 0;
        if (!valid || width < 1)
            fail(QCoreApplication::translate("JetSql", "a width"));
        ++m_at;
        expectSymbol(")");
        return "VARCHAR(" + QByteArray::number(width) + ')';
    }
    for (const Type& type : types)
        if (accept(type.word))
            return type.sql;
    fail(QCoreApplication::translate("JetSql", "a column type"));
}

SqlStatement JetParser::createTable() {
    SqlStatement result;
    result.kind = SqlStatement::Kind::CreateTable;
    expect("TABLE");
    const QString table = identifier();
    expectSymbol("(");
    struct Column {
        QString name;
        QByteArray definition;
    };
    std::vector<Column> columns;
    do {
        if (accept("CONSTRAINT")) {
            const QByteArray constraint = written(identifier());
            expect("PRIMARY");
            expect("KEY");
            expectSymbol("(");
            const QString key = identifier();
            expectSymbol(")");
            const auto column = std::find_if(columns.begin(), columns.end(), [&key](const Column& candidate) {
                return sameName(candidate.name, key);
            });
            if (column == columns.end())
                fail(QCoreApplication::translate("JetSql", "a column of the table"));
            column->definition += " CONSTRAINT " + constraint + " PRIMARY KEY AUTOINCREMENT";
            continue;
        }
        Column column;
        column.name = identifier();
        column.definition = written(column.name) + ' ' + columnType();
        if (accept("NOT")) {
            expect("NULL");
            column.definition += " NOT NULL";
        }
        columns.push_back(std::move(column));
    } while (acceptSymbol(","));
    expectSymbol(")");
    QByteArrayList definitions;
    for (const Column& column : columns)
        definitions.push_back(column.definition);
    result.sql = "CREATE TABLE " + written(table) + " (" + definitions.join(", ") + ')';
    return result;
}

SqlStatement JetParser::alterTable() {
    SqlStatement result;
    expect("TABLE");
    const QString table = tableName();
    if (accept("ADD")) {
        expect("COLUMN");
        result.kind = SqlStatement::Kind::AddColumn;
        const QByteArray column = written(identifier());
        QByteArray type = columnType();
        // A yes/no column of this dialect is never Null; the rows that are there read no.
        if (type == "BOOLEAN")
            type += " NOT NULL DEFAULT 0";
        result.sql = "ALTER TABLE " + written(table) + " ADD COLUMN " + column + ' ' + type;
        return result;
    }
    expect("ALTER");
    expect("COLUMN");
    result.kind = SqlStatement::Kind::ChangeColumn;
    result.change.table = table;
    result.change.column = identifier();
    if (accept("SET")) {
        expect("DEFAULT");
        result.change.setsDefault = true;
        result.change.defaultValue = defaultLiteral();
    } else {
        result.change.type = columnType();
    }
    return result;
}

// What follows SET DEFAULT to the end: nothing, a number, yes or no, a text with or without quotes.
QByteArray JetParser::defaultLiteral() {
    if (token().kind == JetToken::Kind::End)
        return {};
    const JetToken first = token();
    const bool single = following().kind == JetToken::Kind::End;
    const QString rest = m_statement.mid(first.position).toString().trimmed();
    m_at = m_tokens.size() - 1;
    if (single && (first.isWord(QLatin1String("TRUE")) || first.isWord(QLatin1String("FALSE"))))
        return first.isWord(QLatin1String("TRUE")) ? "1" : "0";
    if (single && first.kind == JetToken::Kind::Number)
        return rest.toLatin1();
    const bool isText = single && first.kind == JetToken::Kind::Text;
    return '\'' + quoted(isText ? first.text : rest).toUtf8() + '\'';
}

} // namespace tessaranth
