// SPDX-License-Identifier: GPL-3.0-or-later
// The FROM clause. The catalog's queries nest their joins, `A RIGHT JOIN (B INNER JOIN C ON ..) ON ..`.
// SQLite would build the inner joins of such a clause as tables of their own, without an index, which on a
// large catalog takes seconds. A chain in which each table is joined to those before it gives the same rows
// at once.
#include "store/JetParser.h"

#include <QCoreApplication>

namespace tessaranth {

namespace {

QByteArray conditions(const std::vector<JetExpression>& list) {
    QByteArrayList texts;
    for (const JetExpression& condition : list)
        texts.push_back(condition.sql.contains(" OR ") ? '(' + condition.sql + ')' : condition.sql);
    return texts.join(" AND ");
}

std::vector<JetExpression> parts(JetExpression condition) {
    if (condition.conjuncts.empty())
        return {std::move(condition)};
    return std::move(condition.conjuncts);
}

QByteArray chainSql(const std::vector<JetChain::Item>& items) {
    QByteArray sql;
    for (size_t i = 0; i < items.size(); ++i) {
        if (i > 0)
            sql += items[i].left ? " LEFT JOIN " : " JOIN ";
        sql += items[i].sql;
        if (!items[i].on.empty())
            sql += " ON " + conditions(items[i].on);
    }
    return sql;
}

QSet<QString> tablesOf(const std::vector<JetChain::Item>& items) {
    QSet<QString> tables;
    for (const JetChain::Item& item : items)
        tables += item.tables;
    return tables;
}

} // namespace

QSet<QString> JetChain::tables() const { return tablesOf(items); }

QByteArray JetChain::sql() const { return chainSql(items); }

JetChain JetParser::from() {
    JetChain chain = tableExpression();
    while (acceptSymbol(",")) {
        JetChain other = tableExpression();
        const QStringList names = chain.names + other.names;
        const QStringList aliases = chain.aliases + other.aliases;
        chain = innerJoin(std::move(chain), std::move(other), {});
        chain.names = names;
        chain.aliases = aliases;
    }
    return chain;
}

JetChain JetParser::tableExpression() {
    const Nesting nesting(*this);
    JetChain chain = primary();
    while (true) {
        const bool left = accept("LEFT");
        const bool right = !left && accept("RIGHT");
        if (left || right)
            accept("OUTER");
        else if (!accept("INNER"))
            return chain;
        expect("JOIN");
        JetChain other = primary();
        expect("ON");
        std::vector<JetExpression> on = parts(expression());
        const QStringList names = chain.names + other.names;
        const QStringList aliases = chain.aliases + other.aliases;
        if (left)
            chain = leftJoin(std::move(chain), std::move(other), std::move(on));
        else if (right)
            chain = leftJoin(std::move(other), std::move(chain), std::move(on));
        else
            chain = innerJoin(std::move(chain), std::move(other), std::move(on));
        chain.names = names;
        chain.aliases = aliases;
    }
}

JetChain JetParser::primary() {
    if (acceptSymbol("(")) {
        JetChain inner = tableExpression();
        expectSymbol(")");
        return inner;
    }
    JetChain chain;
    const QString name = tableName();
    QString alias = name;
    JetChain::Item item;
    item.sql = written(name);
    if (accept("AS")) {
        alias = identifier();
        item.sql += " AS " + written(alias);
    }
    item.tables.insert(alias.toLower());
    chain.items.push_back(std::move(item));
    chain.names.push_back(name);
    chain.aliases.push_back(alias);
    return chain;
}

// Each condition moves to the first table of the chain at which all that it speaks of is there. Among inner
// joins that changes nothing; a condition on a table that may be missing must wait for WHERE.
JetChain JetParser::innerJoin(JetChain left, JetChain right, std::vector<JetExpression> on) const {
    JetChain chain = std::move(left);
    const size_t first = chain.items.size();
    for (JetChain::Item& item : right.items)
        chain.items.push_back(std::move(item));
    chain.filters.insert(chain.filters.end(), right.filters.begin(), right.filters.end());
    for (JetExpression& condition : on) {
        QSet<QString> known;
        JetChain::Item* place = nullptr;
        for (size_t i = 0; i < chain.items.size() && !place; ++i) {
            known += chain.items[i].tables;
            if (i >= first && !condition.hasBareColumn && known.contains(condition.tables))
                place = &chain.items[i];
        }
        if (place && !place->left)
            place->on.push_back(std::move(condition));
        else
            chain.filters.push_back(std::move(condition));
    }
    return chain;
}

JetChain JetParser::leftJoin(JetChain left, JetChain right, std::vector<JetExpression> on) const {
    if (!right.filters.empty())
        fail(QCoreApplication::translate("JetSql", "a join without a condition on an outer table"));
    // What may be missing as a whole: the inner joins at the head of the right side. Outer joins behind
    // them hang on it by a comparison, which fails where it is missing, so they can follow in the chain; an
    // inner join there would drop the rows in which the right side is missing.
    size_t head = right.items.size();
    while (head > 1 && right.items[head - 1].left)
        --head;
    QSet<QString> known =
        left.tables() + tablesOf({right.items.begin(), right.items.begin() + qsizetype(head)});
    for (const JetExpression& condition : on)
        if (condition.hasBareColumn || !known.contains(condition.tables))
            head = right.items.size();
    for (size_t i = head; i < right.items.size(); ++i)
        for (const JetExpression& condition : right.items[i].on)
            if (!condition.isComparison)
                head = right.items.size();

    JetChain::Item group = right.items.front();
    if (head > 1) {
        const std::vector<JetChain::Item> inner(right.items.begin(), right.items.begin() + qsizetype(head));
        group.sql = '(' + chainSql(inner) + ')';
        group.tables = tablesOf(inner);
    }
    group.left = true;
    group.on = std::move(on);
    JetChain chain = std::move(left);
    chain.items.push_back(std::move(group));
    for (size_t i = head; i < right.items.size(); ++i)
        chain.items.push_back(std::move(right.items[i]));
    return chain;
}

} // namespace tessaranth
