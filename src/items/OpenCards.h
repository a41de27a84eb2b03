// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

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
};

} // namespace tessaranth
