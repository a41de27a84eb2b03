// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <utility>

namespace tessaranth {

/// The card windows that are open, by their key: "#", the item's code and its id. The main window is one;
/// the core tells it what became of a card, and forms ask it for one.
class OpenCards {
public:
    virtual ~OpenCards() = default;
    /// Shows the card of an item ("Cps", "Pfr", "Rec", "UserDef"), or of a work ("Comp"): the one that is
    /// open already, else a new one.
    virtual void openCard(const QString& code, qint64 id) = 0;
    virtual void closeCard(const QString& key) = 0;
    virtual void reloadCard(const QString& key) = 0;

    static QString key(const QString& code, qint64 id) { return u'#' + code + QString::number(id); }
    /// The code and the id of a key; an empty code and 0 for a text that is no key of a card.
    static std::pair<QString, qint64> parts(const QString& key) {
        qsizetype digits = key.size();
        while (digits > 0 && key[digits - 1].isDigit())
            --digits;
        if (!key.startsWith(u'#') || digits < 2)
            return {};
        return {key.mid(1, digits - 1), key.mid(digits).toLongLong()};
    }
};

} // namespace tessaranth
