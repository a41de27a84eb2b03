// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/JetParser.h"

#include <QCoreApplication>

namespace tessaranth {

namespace {

JetExpression joined(const JetExpression& left, const QByteArray& between, const JetExpression& right) {
    JetExpression result;
    result.sql = left.sql + between + right.sql;
    result.tables = left.tables + right.tables;
    result.hasBareColumn = left.hasBareColumn || right.hasBareColumn;
    result.isAggregate = left.isAggregate || right.isAggregate;
    return result;
}

// Codes that only the program writes, always in one spelling. Compared byte by byte they can use their
// index, which the user's own texts, compared without regard to case, cannot.
bool isMachineCodeColumn(const QString& name) {
    static const QStringList columns{QStringLiteral("RelatedCat"), QStringLiteral("ItemType"),
                                     QStringLiteral("DiscId")};
    return columns.contains(name, Qt::CaseInsensitive);
}

bool isText(const JetExpression& side) { return side.isTextLiteral || side.isTextColumn; }

} // namespace

// ---- words

bool JetParser::accept(const char* word) {
    if (!at(word))
        return false;
    ++m_at;
    return true;
}

bool JetParser::acceptSymbol(const char* symbol) {
    if (!atSymbol(symbol))
        return false;
    ++m_at;
    return true;
}

void JetParser::expect(const char* word) {
    if (!accept(word))
        fail(QString::fromLatin1(word));
}

void JetParser::expectSymbol(const char* symbol) {
    if (!acceptSymbol(symbol))
        fail(QString::fromLatin1(symbol));
}

void JetParser::expectEnd() {
    if (token().kind != JetToken::Kind::End)
        fail();
}

void JetParser::fail(const QString& what) const {
    const qsizetype position = token().position;
    const QString near = m_statement.mid(position, 20).toString();
    QString reason =
        QCoreApplication::translate("JetSql", "the statement cannot be read at position %1").arg(position);
    if (!near.isEmpty())
        reason += QStringLiteral(" (%1)").arg(near);
    if (!what.isEmpty())
        reason += QStringLiteral(": ") + QCoreApplication::translate("JetSql", "%1 expected").arg(what);
    throw SqlError(reason, position);
}

QString JetParser::identifier() {
    static const QStringList reserved{
        QStringLiteral("SELECT"),   QStringLiteral("FROM"),   QStringLiteral("WHERE"),
        QStringLiteral("ORDER"),    QStringLiteral("GROUP"),  QStringLiteral("HAVING"),
        QStringLiteral("JOIN"),     QStringLiteral("INNER"),  QStringLiteral("LEFT"),
        QStringLiteral("RIGHT"),    QStringLiteral("ON"),     QStringLiteral("AND"),
        QStringLiteral("OR"),       QStringLiteral("NOT"),    QStringLiteral("IN"),
        QStringLiteral("LIKE"),     QStringLiteral("IS"),     QStringLiteral("NULL"),
        QStringLiteral("SET"),      QStringLiteral("VALUES"), QStringLiteral("INTO"),
        QStringLiteral("DISTINCT"), QStringLiteral("AS"),     QStringLiteral("BY"),
        QStringLiteral("UNION"),    QStringLiteral("TABLE")};
    const JetToken& here = token();
    if (here.kind != JetToken::Kind::Name &&
        (here.kind != JetToken::Kind::Word || reserved.contains(here.text, Qt::CaseInsensitive)))
        fail(QCoreApplication::translate("JetSql", "a name"));
    ++m_at;
    return here.text;
}

QString JetParser::tableName() {
    const qsizetype position = token().position;
    QString name = identifier();
    if (m_schema.columnsOf(name).isEmpty())
        throw SqlError(QCoreApplication::translate("JetSql", "there is no table %1").arg(name), position);
    return name;
}

QByteArray JetParser::written(const QString& identifier) {
    for (const QChar c : identifier)
        if (!(c.unicode() < 128 && (c.isLetterOrNumber() || c == u'_')))
            return '"' + identifier.toUtf8() + '"';
    return identifier.toUtf8();
}

// ---- conditions

JetExpression JetParser::expression() {
    const Nesting nesting(*this);
    JetExpression left = conjunction();
    while (accept("OR"))
        left = joined(left, " OR ", conjunction());
    return left;
}

JetExpression JetParser::conjunction() {
    JetExpression left = negation();
    if (!at("AND"))
        return left;
    std::vector<JetExpression> parts;
    const auto addParts = [&parts](const JetExpression& part) {
        if (part.conjuncts.empty())
            parts.push_back(part);
        else
            parts.insert(parts.end(), part.conjuncts.begin(), part.conjuncts.end());
    };
    addParts(left);
    while (accept("AND")) {
        JetExpression right = negation();
        addParts(right);
        left = joined(left, " AND ", right);
    }
    left.conjuncts = std::move(parts);
    return left;
}

JetExpression JetParser::negation() {
    if (!accept("NOT"))
        return predicate();
    const Nesting nesting(*this);
    JetExpression operand = negation();
    operand.sql.prepend("NOT ");
    operand.conjuncts.clear();
    return operand;
}

JetExpression JetParser::predicate() {
    JetExpression left = sum();
    for (const char* sign : {"=", "<>", "<=", ">=", "<", ">"})
        if (acceptSymbol(sign))
            return comparison(std::move(left), sign);
    if (accept("IS")) {
        const bool negated = accept("NOT");
        expect("NULL");
        return joined(left, negated ? " IS NOT NULL" : " IS NULL", {});
    }
    const bool negated =
        at("NOT") && (following().isWord(QLatin1String("LIKE")) || following().isWord(QLatin1String("IN")) ||
                      following().isWord(QLatin1String("BETWEEN")));
    if (negated)
        ++m_at;
    const QByteArray no = negated ? " NOT" : "";
    if (accept("LIKE"))
        return joined(left, no + " LIKE ", sum());
    if (accept("IN"))
        return membership(std::move(left), negated);
    if (accept("BETWEEN")) {
        const JetExpression low = sum();
        expect("AND");
        return joined(joined(left, no + " BETWEEN ", low), " AND ", sum());
    }
    return left;
}

JetExpression JetParser::comparison(const JetExpression& left, const QByteArray& sign) {
    const JetExpression right = sum();
    JetExpression result = joined(left, ' ' + sign + ' ', right);
    const bool machineCode = left.isMachineCode || right.isMachineCode;
    if ((isText(left) || isText(right)) && !machineCode)
        result.sql += " COLLATE TSR";
    result.isComparison = true;
    return result;
}

JetExpression JetParser::membership(JetExpression left, bool negated) {
    if (isText(left) && !left.isMachineCode)
        left.sql += " COLLATE TSR";
    expectSymbol("(");
    JetExpression result = left;
    result.conjuncts.clear();
    result.sql += negated ? " NOT IN (" : " IN (";
    if (at("SELECT")) {
        result.sql += select(JetSql::Use::Plain, nullptr);
    } else {
        result = joined(result, "", sum());
        while (acceptSymbol(","))
            result = joined(result, ", ", sum());
    }
    expectSymbol(")");
    result.sql += ')';
    return result;
}

// ---- values

JetExpression JetParser::sum() {
    JetExpression left = product();
    while (true) {
        if (acceptSymbol("+")) {
            left = joined(left, " + ", product());
        } else if (acceptSymbol("-")) {
            left = joined(left, " - ", product());
        } else if (acceptSymbol("&")) {
            // Joined to a text, Null counts as an empty one.
            left = joined(left, ", '') || COALESCE(", product());
            left.sql = "(COALESCE(" + left.sql + ", ''))";
        } else {
            return left;
        }
    }
}

JetExpression JetParser::product() {
    JetExpression left = factor();
    while (true) {
        if (acceptSymbol("*"))
            left = joined(left, " * ", factor());
        else if (acceptSymbol("/"))
            left = joined(left, " * 1.0 / ", factor()); // never a division of whole numbers
        else
            return left;
    }
}

JetExpression JetParser::factor() {
    if (token().isLiteral())
        return literal();
    if (acceptSymbol("-")) {
        const Nesting nesting(*this);
        JetExpression operand = factor();
        // In parentheses: two signs in a row would begin a comment.
        operand.sql = "(-" + operand.sql + ')';
        operand.isPlainColumn = false;
        return operand;
    }
    if (acceptSymbol("(")) {
        JetExpression inner = expression();
        expectSymbol(")");
        inner.sql = '(' + inner.sql + ')';
        return inner;
    }
    for (const auto& [word, sql] :
         {std::pair("TRUE", "1"), std::pair("FALSE", "0"), std::pair("NULL", "NULL")}) {
        if (accept(word)) {
            JetExpression constant;
            constant.sql = sql;
            return constant;
        }
    }
    if (token().kind == JetToken::Kind::Word && following().isSymbol(QLatin1String("("))) {
        const QString name = token().text.toUpper();
        return function(name);
    }
    if (accept("NOW")) {
        JetExpression now;
        now.sql = "tsr_now()";
        return now;
    }
    return column();
}

JetExpression JetParser::literal() {
    JetExpression result;
    result.sql = '?' + QByteArray::number(token().literal + 1);
    result.isTextLiteral = token().kind == JetToken::Kind::Text;
    ++m_at;
    return result;
}

JetExpression JetParser::column() {
    JetExpression result;
    result.isPlainColumn = true;
    QString name = identifier();
    if (acceptSymbol(".")) {
        result.qualifier = name;
        result.tables.insert(name.toLower());
        name = identifier();
        result.sql = written(result.qualifier) + '.' + written(name);
    } else {
        result.hasBareColumn = true;
        result.sql = written(name);
    }
    result.isTextColumn = m_schema.isTextColumn(name);
    result.isMachineCode = isMachineCodeColumn(name);
    return result;
}

JetExpression JetParser::function(const QString& name) {
    struct Known {
        const char* name;
        const char* sql;
    };
    // First asks for any row's value of a group. MIN gives the same one every time; a bare column would
    // depend on the plan.
    static const Known aggregates[] = {{"FIRST", "MIN"}, {"COUNT", "COUNT"}, {"MAX", "MAX"},
                                       {"MIN", "MIN"},   {"SUM", "SUM"},     {"AVG", "AVG"}};
    const auto start = m_at;
    m_at += 2;
    if (name == QLatin1String("NOW")) {
        expectSymbol(")");
        JetExpression now;
        now.sql = "tsr_now()";
        return now;
    }
    if (name == QLatin1String("EXISTS")) {
        JetExpression result;
        result.sql = "EXISTS (" + select(JetSql::Use::Plain, nullptr) + ')';
        expectSymbol(")");
        return result;
    }
    if (name == QLatin1String("ISNULL")) {
        const JetExpression operand = expression();
        expectSymbol(")");
        JetExpression result = joined(operand, " IS NULL)", {});
        result.sql.prepend('(');
        return result;
    }
    for (const Known& known : aggregates) {
        if (name != QLatin1String(known.name))
            continue;
        JetExpression operand;
        if (name == QLatin1String("COUNT") && acceptSymbol("*"))
            operand.sql = "*";
        else
            operand = sum();
        expectSymbol(")");
        JetExpression result = joined(operand, ")", {});
        result.sql.prepend(QByteArray(known.sql) + '(');
        result.isAggregate = true;
        return result;
    }
    m_at = start;
    fail();
}

} // namespace tessaranth
