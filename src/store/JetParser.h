// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// The parser behind JetSql; nobody else includes it.

#include "store/JetSql.h"
#include "store/JetTokens.h"
#include "store/SqlError.h"

#include <QSet>

namespace tessaranth {

/// A piece of an expression in SQLite's words, with what its surroundings have to know of it.
struct JetExpression {
    QByteArray sql;
    bool isTextLiteral = false;
    bool isTextColumn = false;
    bool isMachineCode = false; ///< a column of fixed codes, compared byte by byte
    bool isPlainColumn = false; ///< nothing but a column, or "*" or "T.*"
    QString qualifier;          ///< of a plain column: the table's name or alias as written
    QSet<QString> tables;       ///< qualifiers within, lower case
    bool hasBareColumn = false; ///< a column within names no table
    bool isComparison = false;  ///< of two sides by a sign: never true where one is Null
    bool isAggregate = false;
    std::vector<JetExpression> conjuncts; ///< of "a AND b": its parts
};

/// A FROM clause as a chain: each item is joined to all before it.
struct JetChain {
    struct Item {
        QByteArray sql;       ///< a table, with its alias, or a group in parentheses
        QSet<QString> tables; ///< names or aliases, lower case
        bool left = false;    ///< an outer join; else an inner one
        std::vector<JetExpression> on;
    };
    std::vector<Item> items;
    std::vector<JetExpression> filters; ///< conditions that can only stand in WHERE
    QStringList names;                  ///< of the tables, as in the catalog, in the order written
    QStringList aliases;                ///< by which the statement calls them, in the same order

    QSet<QString> tables() const;
    QByteArray sql() const;
};

/// Reads one statement; every function leaves the position behind what it read, or throws SqlError.
class JetParser {
public:
    JetParser(QStringView statement, const std::vector<JetToken>& tokens, const SchemaView& schema)
        : m_statement(statement), m_tokens(tokens), m_schema(schema) {}

    SqlStatement statement(JetSql::Use use);

private:
    /// Counts how deep the parser is: a statement of nothing but parentheses must not exhaust the stack.
    class Nesting {
    public:
        explicit Nesting(JetParser& parser) : m_parser(parser) {
            if (++m_parser.m_depth > 100)
                m_parser.fail();
        }
        ~Nesting() { --m_parser.m_depth; }

    private:
        JetParser& m_parser;
    };

    // Words
    const JetToken& token() const { return m_tokens[m_at]; }
    const JetToken& following() const { return m_tokens[qMin(m_at + 1, m_tokens.size() - 1)]; }
    bool at(const char* word) const { return token().isWord(QLatin1String(word)); }
    bool atSymbol(const char* symbol) const { return token().isSymbol(QLatin1String(symbol)); }
    bool accept(const char* word);
    bool acceptSymbol(const char* symbol);
    void expect(const char* word);
    void expectSymbol(const char* symbol);
    void expectEnd();
    [[noreturn]] void fail(const QString& what = {}) const;
    QString identifier();
    QString tableName(); ///< an identifier that is a table of the catalog
    static QByteArray written(const QString& identifier);

    // Expressions
    JetExpression expression();
    JetExpression conjunction();
    JetExpression negation();
    JetExpression predicate();
    JetExpression comparison(const JetExpression& left, const QByteArray& sign);
    JetExpression membership(JetExpression left, bool negated);
    JetExpression sum();
    JetExpression product();
    JetExpression factor();
    JetExpression column();
    JetExpression function(const QString& name);
    JetExpression literal();

    // Queries
    QByteArray select(JetSql::Use use, QString* rowTable);
    std::vector<JetExpression> selectList(QByteArrayList& texts);
    QString tableOfRows(const JetChain& chain, const std::vector<JetExpression>& list) const;
    QByteArray where(const JetChain& chain);
    QByteArray terms(bool directions);

    // FROM
    JetChain from();
    JetChain tableExpression();
    JetChain primary();
    JetChain innerJoin(JetChain left, JetChain right, std::vector<JetExpression> on) const;
    JetChain leftJoin(JetChain left, JetChain right, std::vector<JetExpression> on) const;

    // Changes
    SqlStatement insertInto();
    SqlStatement update();
    SqlStatement deleteFrom();
    SqlStatement createTable();
    SqlStatement alterTable();
    QByteArray columnType();
    QByteArray defaultLiteral();

    QStringView m_statement;
    const std::vector<JetToken>& m_tokens;
    const SchemaView& m_schema;
    size_t m_at = 0;
    int m_depth = 0;
};

} // namespace tessaranth
