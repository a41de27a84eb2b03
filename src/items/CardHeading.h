// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <span>

namespace tessaranth {

class Session;

/// One panel that an item card can show.
struct CardPanelKind {
    QString name;       ///< "Docs", "Comp", ...
    QString caption;    ///< of its tab
    int code;           ///< what LastState holds for it
    QStringList owners; ///< codes of the cards that have it
    QString iconKey;
    QString command; ///< of the Show menu

    /// The caption on a card of this kind; on a person's card it begins with two blanks.
    QString label(const QString& code) const;
};

/// All seven, in the order of their tabs.
std::span<const CardPanelKind> cardPanelKinds();
/// Nullptr for another name.
const CardPanelKind* cardPanelKind(const QString& name);
/// The panel that a card shows for a stored state. A state that means nothing to a card of this kind, as a
/// merge or a foreign program may leave, gives the documents.
const CardPanelKind& cardPanelOfState(const QString& code, qint64 state);

/// A labelled line of a card, such as "PROD. #:" and the number.
struct CardLine {
    QString label;
    QString value;
    bool heart = false; ///< shown as the heart of a reference recording
};

/// What stands at the head of an item card, and the state in which the card was left.
struct CardHeading {
    QString type;     ///< "Composer", "Performer", "Recording" or "User defined"
    QString name;     ///< a person's first and last name, or the title
    QString years;    ///< of persons, as they are shown behind the name
    QString subTitle; ///< of recordings
    qint64 state = 0; ///< LastState
    qint64 contentsState = 0;
    int splitter = 50; ///< part of the recording contents' width that its specifications take, in percent

    /// Name and years, for a window's title and for questions.
    QString line() const { return years.isEmpty() ? name : name + u' ' + years; }
};

/// Reads it; false when there is no such item or the reading failed, of which the user has been told.
bool readCardHeading(Session& session, const QString& code, qint64 id, CardHeading& heading);

/// Remembers the panel that a card shows, by its name.
bool saveCardState(Session& session, const QString& code, qint64 id, const QString& panel);
/// Lets a card that nobody has opened yet begin with what its item is about: a composer's works, a
/// performer's recordings, a recording's contents, a custom item's relations.
bool beginWithMainPanel(Session& session, const QString& code, qint64 id);
/// Remembers which area of a recording's contents is in front, and the splitter's place in percent.
bool saveContentsState(Session& session, qint64 recording, int state, int splitter);

} // namespace tessaranth
