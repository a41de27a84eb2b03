// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/JetSql.h"

#include "store/JetParser.h"

#include <QHash>

namespace tessaranth {

namespace {

constexpr qsizetype keptTranslations = 512;

/// The statement with each literal replaced by its kind: what it shares with its like.
QString shape(const std::vector<JetToken>& tokens, JetSql::Use use) {
    QString key(use == JetSql::Use::Updatable ? u'U' : u'P');
    for (const JetToken& token : tokens) {
        switch (token.kind) {
        case JetToken::Kind::Number:
            key += QLatin1String(" 0");
            break;
        case JetToken::Kind::Text:
            key += QLatin1String(" ''");
            break;
        case JetToken::Kind::Name:
            key += QLatin1String(" [") + token.text + u']';
            break;
        default:
            key += u' ' + token.text;
        }
    }
    return key;
}

} // namespace

class JetSql::Cache {
public:
    QHash<QString, SqlStatement> statements;
};

JetSql::JetSql(const SchemaView& schema) : m_schema(schema), m_cache(std::make_unique<Cache>()) {}
JetSql::~JetSql() = default;

void JetSql::forgetSchema() { m_cache->statements.clear(); }

SqlStatement JetSql::translate(QStringView statement, Use use) const {
    const std::vector<JetToken> tokens = jetTokens(statement);
    const QString key = shape(tokens, use);
    SqlStatement result;
    const auto cached = m_cache->statements.constFind(key);
    if (cached != m_cache->statements.constEnd()) {
        result = *cached;
    } else {
        result = JetParser(statement, tokens, m_schema).statement(use);
        using Kind = SqlStatement::Kind;
        // A definition's literals are part of it.
        if (result.kind == Kind::CreateTable || result.kind == Kind::AddColumn ||
            result.kind == Kind::ChangeColumn)
            return result;
        if (m_cache->statements.size() >= keptTranslations)
            m_cache->statements.clear();
        m_cache->statements.insert(key, result);
    }
    for (const JetToken& token : tokens)
        if (token.isLiteral())
            result.parameters.push_back(token.value());
    return result;
}

QString quoted(const QString& text) {
    QString result = text;
    return result.replace(u'\'', QLatin1String("''"));
}

QByteArray quotedName(const QByteArray& name) { return '"' + QByteArray(name).replace("\"", "\"\"") + '"'; }

QString quotedPattern(const QString& text) {
    QString result;
    for (const QChar c : text) {
        if (c == u'%' || c == u'_' || c == u'[')
            result += u'[' + QString(c) + u']';
        else
            result += c;
    }
    return quoted(result);
}

} // namespace tessaranth
