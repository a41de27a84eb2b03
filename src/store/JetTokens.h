// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/Value.h"

#include <QString>
#include <vector>

namespace tessaranth {

/// One word of a statement. Words in brackets are names and never keywords.
struct JetToken {
    enum class Kind { Word, Name, Number, Text, Symbol, End };
    Kind kind = Kind::End;
    QString text;           ///< word, name or symbol; a literal's text without its quotes
    qsizetype position = 0; ///< offset in the statement
    int literal = -1;       ///< for numbers and texts: how many literals stand before it

    bool isLiteral() const { return literal >= 0; }
    bool isWord(QLatin1String word) const {
        return kind == Kind::Word && text.compare(word, Qt::CaseInsensitive) == 0;
    }
    bool isSymbol(QLatin1String symbol) const { return kind == Kind::Symbol && text == symbol; }
    Value value() const; ///< of a literal
};

/// Splits a statement; the last token is End. One ";" at the very end is passed over. Throws SqlError for
/// a character that no statement holds, an unclosed quote or bracket.
std::vector<JetToken> jetTokens(QStringView statement);

} // namespace tessaranth
