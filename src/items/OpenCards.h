// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace tessaranth {

/// The card windows that are open, by their key: "#", the item's code and its id. The main window is one;
/// the core tells it what became of a card.
class OpenCards {
public:
    virtual ~OpenCards() = default;
    virtual void closeCard(const QString& key) = 0;
    virtual void reloadCard(const QString& key) = 0;

    static QString key(const QString& code, qint64 id) { return u'#' + code + QString::number(id); }
};

} // namespace tessaranth
