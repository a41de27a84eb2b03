// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/CatalogueNumber.h"

#include "store/TextOrder.h"

#include <algorithm>

namespace tessaranth::CatalogueNumber {

namespace {

/// Catalogues whose numbers stand alone beside those of another one. What is not here belongs to the
/// composer's own catalogue, as "Anh. 114" does.
const char* const catalogues[] = {
    "Op",    "Opus",    "WoO", "Hess", "Unv", "KK",   "KV",   "BWV",  "HWV",  "TWV", "TVWV", "SWV",
    "BuxWV", "RV",      "Hob", "Wq",   "ZWV", "MWV",  "WWV",  "WAB",  "FWV",  "GWV", "LWV",  "SwWV",
    "FbWV",  "GraunWV", "TrV", "AV",   "JS",  "Sz",   "BB",   "MH",   "VB",   "RCT", "JB",   "JW",
    "FP",    "CG",      "CT",  "Helm", "SV",  "LoWV", "EHWV", "RISM", "SSWV", "SmWV"};
/// Those of one letter count only before a digit: "K. 331", but not the "D:1" of a group.
constexpr QStringView shortCatalogues = u"BDFGHJKLMPSZ";

QStringView firstWord(QStringView text) {
    const auto end = std::find_if_not(text.begin(), text.end(), [](QChar c) { return c.isLetter(); });
    return text.first(end - text.begin());
}

/// What follows the word that a number begins with, and its dot and blanks.
QStringView behind(QStringView number, QStringView word) {
    QStringView rest = number.mid(word.size());
    if (rest.startsWith(u'.'))
        rest = rest.mid(1);
    return rest.trimmed();
}

bool isOwn(QStringView acronym, QStringView word) {
    return !word.isEmpty() && firstWord(acronym).compare(word, Qt::CaseInsensitive) == 0;
}

bool namesCatalogue(QStringView number) {
    const QStringView word = firstWord(number);
    if (word.size() == 1) {
        const QStringView rest = behind(number, word);
        return shortCatalogues.contains(word) && !rest.isEmpty() && rest.front().isDigit();
    }
    return std::any_of(std::begin(catalogues), std::end(catalogues), [&](const char* name) {
        return word.compare(QLatin1String(name), Qt::CaseInsensitive) == 0;
    });
}

// ---- order

struct Token {
    enum Kind { End, Digits, Roman, Word } kind = End;
    QStringView text;
    int roman = 0;
};

/// The value of a Roman numeral up to XLIX, which no catalogue exceeds; 0 for another text.
int romanValue(QStringView text) {
    int value = 0;
    int before = 50;
    for (const QChar c : text) {
        const int digit = c == u'I' ? 1 : c == u'V' ? 5 : c == u'X' ? 10 : c == u'L' ? 50 : 0;
        if (digit == 0)
            return 0;
        value += digit > before ? digit - 2 * before : digit;
        before = digit;
    }
    return value;
}

Token next(QStringView& rest) {
    while (!rest.isEmpty() && !rest.front().isLetterOrNumber())
        rest = rest.mid(1);
    if (rest.isEmpty())
        return {};
    Token token;
    if (rest.front().isLetter()) {
        token.text = firstWord(rest);
        token.roman = romanValue(token.text);
        token.kind = token.roman > 0 ? Token::Roman : Token::Word;
    } else {
        const auto end = std::find_if(rest.begin(), rest.end(),
                                      [](QChar c) { return c.isLetter() || !c.isLetterOrNumber(); });
        token = {Token::Digits, rest.first(end - rest.begin())};
    }
    rest = rest.mid(token.text.size());
    while (token.kind == Token::Digits && token.text.size() > 1 && token.text.front() == u'0')
        token.text = token.text.mid(1);
    return token;
}

int compareTokens(const Token& a, const Token& b) {
    if (a.kind != b.kind)
        return a.kind < b.kind ? -1 : 1;
    if (a.kind == Token::Roman)
        return a.roman - b.roman;
    if (a.kind == Token::Digits && a.text.size() != b.text.size())
        return a.text.size() < b.text.size() ? -1 : 1;
    return TextOrder::compare(a.text, b.text);
}

} // namespace

QString withAcronym(const QString& acronym, const QString& number) {
    if (number.isEmpty() || acronym.isEmpty() || isOwn(acronym, firstWord(number)) || namesCatalogue(number))
        return number;
    return acronym + u' ' + number;
}

QString withoutAcronym(const QString& acronym, const QString& number) {
    const QStringView word = firstWord(number);
    const QStringView rest = behind(number, word);
    return isOwn(acronym, word) && !rest.isEmpty() ? rest.toString() : number;
}

int compare(QStringView a, QStringView b) {
    QStringView restOfA = a;
    QStringView restOfB = b;
    for (;;) {
        const Token left = next(restOfA);
        const Token right = next(restOfB);
        if (const int order = compareTokens(left, right))
            return order;
        if (left.kind == Token::End)
            return TextOrder::compare(a, b);
    }
}

} // namespace tessaranth::CatalogueNumber
