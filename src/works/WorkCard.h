// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/CardHeading.h"
#include "store/ItemList.h"

#include <vector>

namespace tessaranth {

/// A work as its card shows it.
struct WorkCard {
    qint64 composer = 0;
    QString composerName; ///< first and last name, and the years
    QString title;
    QString number; ///< with the composer's acronym
    QString subTitle;
    std::vector<CardLine> lines; ///< of what is known only
    QString description;         ///< the short text
    QStringList documents;       ///< texts of the work's documents, the long description among them
    ItemList recordings;

    /// The whole card as plain text, a line each, for a document.
    QString text() const;
};

/// Reads it; false when there is no such work, or when the reading failed, of which the user has been told.
bool readWorkCard(Session& session, qint64 work, WorkCard& card);

/// Writes the card as a rich text document, whole or not at all; a failure is told to the user.
bool exportWorkCard(Session& session, const WorkCard& card, const QString& path);

} // namespace tessaranth
