// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/JetTokens.h"

#include "store/SqlError.h"

#include <QCoreApplication>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("JetSql", text); }

bool startsWord(QChar c) { return c.isLetter() || c == u'_'; }
bool continuesWord(QChar c) { return c.isLetterOrNumber() || c == u'_' || c.isMark(); }
bool isDigit(QChar c) { return c >= u'0' && c <= u'9'; }

class Splitter {
public:
    explicit Splitter(QStringView statement) : m_text(statement) {}

    std::vector<JetToken> run() {
        while (m_at < m_text.size()) {
            const QChar c = m_text[m_at];
            if (c == u' ' || c == u'\t' || c == u'\r' || c == u'\n')
                ++m_at;
            else if (startsWord(c))
                word();
            else if (isDigit(c) || (c == u'.' && isDigit(next())))
                number();
            else if (c == u'\'' || c == u'"')
                text(c);
            else if (c == u'[')
                name();
            else if (c == u';' && m_text.mid(m_at + 1).trimmed().isEmpty())
                m_at = m_text.size();
            else
                symbol();
        }
        add(JetToken::Kind::End, {}, m_text.size());
        return std::move(m_tokens);
    }

private:
    QChar next() const { return m_at + 1 < m_text.size() ? m_text[m_at + 1] : QChar(); }

    void add(JetToken::Kind kind, const QString& text, qsizetype position) {
        const bool literal = kind == JetToken::Kind::Number || kind == JetToken::Kind::Text;
        m_tokens.push_back({kind, text, position, literal ? m_literals++ : -1});
    }

    void word() {
        const qsizetype from = m_at;
        while (m_at < m_text.size() && continuesWord(m_text[m_at]))
            ++m_at;
        add(JetToken::Kind::Word, m_text.mid(from, m_at - from).toString(), from);
    }

    void number() {
        const qsizetype from = m_at;
        bool point = false;
        while (m_at < m_text.size() && (isDigit(m_text[m_at]) || (m_text[m_at] == u'.' && !point))) {
            point = point || m_text[m_at] == u'.';
            ++m_at;
        }
        if (m_at < m_text.size() && startsWord(m_text[m_at]))
            throw SqlError(tr("a number runs into a word at position %1").arg(from), from);
        add(JetToken::Kind::Number, m_text.mid(from, m_at - from).toString(), from);
    }

    void text(QChar quote) {
        const qsizetype from = m_at++;
        QString result;
        for (; m_at < m_text.size(); ++m_at) {
            if (m_text[m_at] != quote) {
                result += m_text[m_at];
            } else if (next() == quote) {
                result += quote;
                ++m_at;
            } else {
                ++m_at;
                add(JetToken::Kind::Text, result, from);
                return;
            }
        }
        throw SqlError(tr("the text that begins at position %1 is not closed").arg(from), from);
    }

    void name() {
        const qsizetype from = m_at;
        const qsizetype end = m_text.indexOf(u']', from);
        const QString inner = end < 0 ? QString() : m_text.mid(from + 1, end - from - 1).toString();
        if (inner.isEmpty() || inner.contains(u'"') || inner.contains(QChar(0)))
            throw SqlError(tr("the name that begins at position %1 is not closed").arg(from), from);
        m_at = end + 1;
        add(JetToken::Kind::Name, inner, from);
    }

    void symbol() {
        static const QStringList known{QStringLiteral("<>"), QStringLiteral("<="), QStringLiteral(">="),
                                       QStringLiteral("("),  QStringLiteral(")"),  QStringLiteral(","),
                                       QStringLiteral("."),  QStringLiteral("*"),  QStringLiteral("="),
                                       QStringLiteral("<"),  QStringLiteral(">"),  QStringLiteral("+"),
                                       QStringLiteral("-"),  QStringLiteral("/"),  QStringLiteral("&")};
        // Comments would hide what follows them.
        const QStringView pair = m_text.mid(m_at, 2);
        if (pair != QLatin1String("--") && pair != QLatin1String("/*")) {
            for (const QString& candidate : known) {
                if (m_text.mid(m_at).startsWith(candidate)) {
                    add(JetToken::Kind::Symbol, candidate, m_at);
                    m_at += candidate.size();
                    return;
                }
            }
        }
        throw SqlError(tr("the statement cannot be read at position %1").arg(m_at), m_at);
    }

    QStringView m_text;
    qsizetype m_at = 0;
    int m_literals = 0;
    std::vector<JetToken> m_tokens;
};

} // namespace

Value JetToken::value() const {
    if (kind == Kind::Text)
        return Value(text);
    bool whole = false;
    const qint64 number = text.toLongLong(&whole);
    return whole ? Value(number) : Value(text.toDouble());
}

std::vector<JetToken> jetTokens(QStringView statement) { return Splitter(statement).run(); }

} // namespace tessaranth
