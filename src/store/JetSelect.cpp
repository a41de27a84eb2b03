// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/JetParser.h"

#include <QCoreApplication>

namespace tessaranth {

QByteArray JetParser::select(JetSql::Use use, QString* rowTable) {
    expect("SELECT");
    const bool distinct = accept("DISTINCT");
    QByteArrayList columns;
    const std::vector<JetExpression> list = selectList(columns);
    expect("FROM");
    const JetChain chain = from();

    QByteArray sql = distinct ? "SELECT DISTINCT " : "SELECT ";
    const QByteArray rest = where(chain);
    const bool grouped = at("GROUP");
    if (use == JetSql::Use::Updatable && !distinct && !grouped) {
        const QString table = tableOfRows(chain, list);
        if (!table.isEmpty()) {
            sql += written(table) + ".rowid AS tsr_rowid, ";
            *rowTable = chain.names[chain.aliases.indexOf(table)];
        }
    }
    // The chain may begin with another table than the statement does; "*" still means its columns first.
    QByteArrayList all;
    for (const QString& alias : chain.aliases)
        all.push_back(written(alias) + ".*");
    for (QByteArray& column : columns)
        if (column == "*" && all.size() > 1)
            column = all.join(", ");
    sql += columns.join(", ") + " FROM " + chain.sql() + rest;
    if (accept("GROUP")) {
        expect("BY");
        sql += " GROUP BY " + terms(false);
        if (accept("HAVING"))
            sql += " HAVING " + expression().sql;
    }
    if (accept("ORDER")) {
        expect("BY");
        sql += " ORDER BY " + terms(true);
    }
    return sql;
}

std::vector<JetExpression> JetParser::selectList(QByteArrayList& texts) {
    std::vector<JetExpression> list;
    do {
        JetExpression item;
        if (acceptSymbol("*")) {
            item.sql = "*";
            item.isPlainColumn = true;
        } else if (following().isSymbol(QLatin1String(".")) && m_at + 2 < m_tokens.size() &&
                   m_tokens[m_at + 2].isSymbol(QLatin1String("*"))) {
            item.qualifier = identifier();
            m_at += 2;
            item.sql = written(item.qualifier) + ".*";
            item.isPlainColumn = true;
        } else {
            item = expression();
        }
        QByteArray text = item.sql;
        if (accept("AS"))
            text += " AS " + written(identifier());
        else if (!item.isPlainColumn)
            text += " AS Expr" + QByteArray::number(1000 + int(list.size())); // as the dialect names it
        texts.push_back(text);
        list.push_back(std::move(item));
    } while (acceptSymbol(","));
    return list;
}

// The one table whose columns make up the rows, by its name in the statement; empty when there is none, or
// when an outer join may leave its row out.
QString JetParser::tableOfRows(const JetChain& chain, const std::vector<JetExpression>& list) const {
    QString table = chain.aliases.size() == 1 ? chain.aliases.front() : QString();
    for (const JetExpression& item : list) {
        if (!item.isPlainColumn)
            return {};
        if (chain.aliases.size() == 1)
            continue;
        if (item.qualifier.isEmpty() ||
            (!table.isEmpty() && table.compare(item.qualifier, Qt::CaseInsensitive) != 0))
            return {};
        for (const QString& alias : chain.aliases)
            if (alias.compare(item.qualifier, Qt::CaseInsensitive) == 0)
                table = alias;
    }
    for (const JetChain::Item& item : chain.items)
        if (item.left && item.tables.contains(table.toLower()))
            return {};
    return table;
}

QByteArray JetParser::where(const JetChain& chain) {
    QByteArrayList conditions;
    for (const JetExpression& filter : chain.filters)
        conditions.push_back('(' + filter.sql + ')');
    if (accept("WHERE")) {
        const QByteArray own = expression().sql;
        conditions.push_back(conditions.isEmpty() ? own : '(' + own + ')');
    }
    return conditions.isEmpty() ? QByteArray() : " WHERE " + conditions.join(" AND ");
}

/// The columns after ORDER BY or GROUP BY.
QByteArray JetParser::terms(bool directions) {
    QByteArrayList texts;
    do {
        // A number would be a parameter, by which nothing is sorted.
        if (token().isLiteral())
            fail(QCoreApplication::translate("JetSql", "a column"));
        const JetExpression term = sum();
        QByteArray text = term.sql;
        if (term.isTextColumn)
            text += " COLLATE TSR";
        if (directions && accept("DESC"))
            text += " DESC";
        else if (directions)
            accept("ASC");
        texts.push_back(text);
    } while (acceptSymbol(","));
    return texts.join(", ");
}

} // namespace tessaranth
