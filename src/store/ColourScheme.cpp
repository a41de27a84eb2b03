// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/ColourScheme.h"

namespace tessaranth {

namespace {

struct SchemeRow {
    const char* key;
    QRgb light;
    QRgb dark;
};

// One accent to a kind of item: red for composers, blue for performers, green for recordings, violet for
// custom items. Texts keep a contrast of at least 4.5 to both of their backs (WCAG 2.1, 1.4.3).
constexpr SchemeRow rows[] = {
    {"MdiBack", 0xdfe3ea, 0x121418}, {"CpsBC", 0xffffff, 0x1f2228}, {"PfrBC", 0xffffff, 0x1f2228},
    {"RecBC", 0xffffff, 0x1f2228},   {"CusBC", 0xffffff, 0x1f2228}, {"CpsFC", 0x1b1f27, 0xe8eaee},
    {"PfrFC", 0x1b1f27, 0xe8eaee},   {"RecFC", 0x1b1f27, 0xe8eaee}, {"CusFC", 0x1b1f27, 0xe8eaee},
    {"CpsLC", 0x8c2130, 0xf2a0a8},   {"PfrLC", 0x1d4f91, 0x9cc4f5}, {"RecLC", 0x1b6236, 0x93d6a9},
    {"CusLC", 0x62358f, 0xcdb0ee},   {"CpsHC", 0xf7e4e5, 0x43262b}, {"PfrHC", 0xe2ecf8, 0x22344c},
    {"RecHC", 0xe1f1e6, 0x213b2b},   {"CusHC", 0xeee4f7, 0x372a48}, {"WksFC", 0x1d4f91, 0x9cc4f5},
    {"WkcFC", 0x2a2418, 0xefe8d6},   {"WkcBC", 0xfbf6e9, 0x2b2820}};

} // namespace

const QStringList& lookWords() {
    static const QStringList words{QStringLiteral("classic"), QStringLiteral("light"),
                                   QStringLiteral("dark")};
    return words;
}

Look lookOf(const QString& word) {
    const qsizetype at = lookWords().indexOf(word.trimmed().toLower());
    return at < 0 ? Look::Classic : Look(at);
}

QColor schemeColour(Look look, const QString& key) {
    if (look == Look::Classic)
        return {};
    for (const SchemeRow& row : rows)
        if (key.compare(QLatin1String(row.key), Qt::CaseInsensitive) == 0)
            return QColor(look == Look::Light ? row.light : row.dark);
    return {};
}

} // namespace tessaranth
