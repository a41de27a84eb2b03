// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/RowFilter.h"

#include "store/JetTokens.h"
#include "store/LikePattern.h"
#include "store/SqlError.h"
#include "store/TextOrder.h"

#include <QCoreApplication>

namespace tessaranth {

struct RowFilter::Node {
    enum class Kind { And, Or, Compare, Like };
    Kind kind = Kind::Compare;
    std::unique_ptr<Node> left;
    std::unique_ptr<Node> right;
    int field = -1;
    QString sign;
    Value value;
    std::optional<LikePattern> pattern;

    bool accepts(const std::vector<Value>& cells) const;
    bool compares(const Value& cell) const;
};

bool RowFilter::Node::compares(const Value& cell) const {
    if (cell.isNull())
        return false;
    double order = 0;
    if (value.isText())
        order = TextOrder::compare(cell.toText(), value.toText());
    else
        order = cell.toDouble() - value.toDouble();
    if (sign == QLatin1String("="))
        return order == 0;
    if (sign == QLatin1String("<>"))
        return order != 0;
    if (sign == QLatin1String("<"))
        return order < 0;
    if (sign == QLatin1String("<="))
        return order <= 0;
    return sign == QLatin1String(">") ? order > 0 : order >= 0;
}

bool RowFilter::Node::accepts(const std::vector<Value>& cells) const {
    switch (kind) {
    case Kind::And:
        return left->accepts(cells) && right->accepts(cells);
    case Kind::Or:
        return left->accepts(cells) || right->accepts(cells);
    case Kind::Like:
        return !cells[size_t(field)].isNull() && pattern->matches(cells[size_t(field)].toText());
    case Kind::Compare:
        return compares(cells[size_t(field)]);
    }
    return false;
}

namespace {

/// Deeper nesting than any filter has; a text of parentheses only must not exhaust the stack.
constexpr int deepest = 100;

template<typename Node>
class FilterReader {
public:
    FilterReader(QStringView condition, const std::function<int(const QString&)>& fieldIndex)
        : m_tokens(jetTokens(condition)), m_fieldIndex(fieldIndex) {}

    std::unique_ptr<Node> run() {
        auto root = either();
        if (token().kind != JetToken::Kind::End)
            fail();
        return root;
    }

private:
    const JetToken& token() const { return m_tokens[m_at]; }

    [[noreturn]] void fail() const {
        throw SqlError(QCoreApplication::translate("JetSql", "the filter cannot be read at position %1")
                           .arg(token().position),
                       token().position);
    }

    std::unique_ptr<Node> both(typename Node::Kind kind, std::unique_ptr<Node> left,
                               std::unique_ptr<Node> right) {
        auto node = std::make_unique<Node>();
        node->kind = kind;
        node->left = std::move(left);
        node->right = std::move(right);
        return node;
    }

    std::unique_ptr<Node> either() {
        auto left = all();
        while (token().isWord(QLatin1String("OR"))) {
            ++m_at;
            left = both(Node::Kind::Or, std::move(left), all());
        }
        return left;
    }

    std::unique_ptr<Node> all() {
        auto left = single();
        while (token().isWord(QLatin1String("AND"))) {
            ++m_at;
            left = both(Node::Kind::And, std::move(left), single());
        }
        return left;
    }

    std::unique_ptr<Node> single() {
        if (token().isSymbol(QLatin1String("("))) {
            if (++m_depth > deepest)
                fail();
            ++m_at;
            auto inner = either();
            if (!token().isSymbol(QLatin1String(")")))
                fail();
            ++m_at;
            --m_depth;
            return inner;
        }
        auto node = std::make_unique<Node>();
        if (token().kind != JetToken::Kind::Word && token().kind != JetToken::Kind::Name)
            fail();
        node->field = m_fieldIndex(token().text);
        if (node->field < 0)
            fail();
        ++m_at;
        static const QStringList signs{QStringLiteral("="),  QStringLiteral("<>"), QStringLiteral("<"),
                                       QStringLiteral("<="), QStringLiteral(">"),  QStringLiteral(">=")};
        if (token().isWord(QLatin1String("LIKE")))
            node->kind = Node::Kind::Like;
        else if (token().kind == JetToken::Kind::Symbol && signs.contains(token().text))
            node->sign = token().text;
        else
            fail();
        ++m_at;
        node->value = constant();
        if (node->kind == Node::Kind::Like)
            node->pattern.emplace(QStringView(node->value.toText()));
        return node;
    }

    Value constant() {
        const bool negative = token().isSymbol(QLatin1String("-"));
        if (negative)
            ++m_at;
        Value value;
        if (token().isWord(QLatin1String("TRUE")) || token().isWord(QLatin1String("FALSE")))
            value = Value(token().isWord(QLatin1String("TRUE")));
        else if (token().isLiteral())
            value = token().value();
        else
            fail();
        ++m_at;
        return negative ? Value(-value.toDouble()) : value;
    }

    std::vector<JetToken> m_tokens;
    const std::function<int(const QString&)>& m_fieldIndex;
    size_t m_at = 0;
    int m_depth = 0;
};

} // namespace

RowFilter::RowFilter(QStringView condition, const std::function<int(const QString&)>& fieldIndex)
    : m_root(FilterReader<Node>(condition, fieldIndex).run()) {}
RowFilter::~RowFilter() = default;
RowFilter::RowFilter(RowFilter&&) noexcept = default;

bool RowFilter::accepts(const std::vector<Value>& cells) const { return m_root->accepts(cells); }

} // namespace tessaranth
