// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recordings/TrackWorks.h"
#include "store/Fields.h"

#include <QHash>
#include <QStringList>
#include <functional>
#include <optional>
#include <vector>

namespace tessaranth {

class OpenCards;
class Session;

/// The recording's own row as its editor sees it, by the columns of Rec.
struct RecordingSpecs : FieldRow {
    RecordingSpecs() : FieldRow(catalogTable(QStringLiteral("Rec"))) {}
    int units() const { return int(number(QStringLiteral("UnitsNbr"))); } ///< number of discs
    QString title() const { return text(QStringLiteral("RecTitle")); }
};

/// A composer or performer on a recording.
struct RecordingArtist {
    qint64 id = 0;
    QString name;    ///< "Last, First"
    QString years;   ///< of composers
    QString acronym; ///< of composers
};

/// A performer in a work, in one role; several roles are several of these.
struct Casting {
    qint64 performer = 0;
    qint64 role = 0; ///< Personages.PersonageID, 0 for none

    bool operator==(const Casting&) const = default;
};

/// One work placed on a recording, in its place among the others.
struct PlacedWork {
    qint64 id = 0; ///< CompOnRecID; 0 until it is applied
    qint64 composer = 0;
    qint64 work = 0;
    QString title;             ///< read only: title and catalogue number
    QString excerpt;           ///< of what part of the work is recorded; empty for all of it
    std::vector<Casting> cast; ///< read at the start; stored by applyWorks for new works only
    QString composerName = {}; ///< read only: "Last, First"

    bool operator==(const PlacedWork&) const = default;
};

struct Track {
    QString name;
    QString length; ///< "mm:ss", or empty

    bool operator==(const Track&) const = default;
};

/// Another recording that may be the same disc.
struct RecordingDouble {
    qint64 id = 0;
    QString title;
    QString reason; ///< what both have, in words, such as the barcode
};

/// Reads and changes one recording, part by part; each apply is one transaction, marks the recording as
/// modified and reloads its open card. Reading throws SqlError. A change that fails reports it through the
/// session's messages and answers false; nothing has changed then. So does one on a recording that was
/// deleted meanwhile. When a part was changed elsewhere after this editor read it, applying it asks first
/// whether to replace that; specifications that were merely looked at (`specs`) do not count.
class RecordingEditor {
public:
    /// `id` 0 for a new recording: it exists once its specifications were applied. `cards` may be null.
    RecordingEditor(Session& session, qint64 id, OpenCards* cards = nullptr)
        : m_session(session), m_cards(cards), m_id(id) {}

    qint64 id() const { return m_id; }
    bool exists(); ///< false for a new one, and for one that was deleted elsewhere

    /// The rating and SPARS texts in the order of the editor's lists.
    static const QStringList& ratings();
    static const QStringList& sparsCodes();
    static constexpr int mostUnits = 999; ///< discs of a recording
    /// The number of discs that a text tells; nothing when it is not a whole number from 1 to `mostUnits`.
    static std::optional<int> units(const QString& text);

    // Specifications.
    RecordingSpecs specs();
    RecordingSpecs openSpecs(); ///< to be changed: `applySpecs` compares what is stored then with this
    /// Stores them: texts are trimmed in `specs`, a new recording gets its id. Refused without a title, with
    /// units out of range, or with a text too long. What stands on discs above lowered units is asked about:
    /// it goes, or the units stay as high as it reaches.
    bool applySpecs(RecordingSpecs& specs);
    /// Other recordings with this barcode, or with this label and production number.
    std::vector<RecordingDouble> doubles(const RecordingSpecs& specs);

    // Artists.
    std::vector<RecordingArtist> composers();
    std::vector<RecordingArtist> performers(); ///< in their order on the recording
    /// Replaces the lists that are given. A performer who goes leaves every work of the recording; a composer
    /// whose works stand on it goes together with them, after a question, or nothing is stored.
    bool applyArtists(const std::optional<std::vector<qint64>>& composers,
                      const std::optional<std::vector<qint64>>& performers);

    // Works, in their order on the recording.
    std::vector<PlacedWork> works();
    /// Replaces the list by this one, in this order; `works` is read anew then, ids and titles included. A
    /// new work of a composer, or with a performer, who is not on the recording is refused.
    bool applyWorks(std::vector<PlacedWork>& works);

    // Who performs in a work.
    std::vector<Casting> cast(qint64 placedWork);
    /// Refused with somebody new who does not perform on the recording, or a role of another work.
    bool applyCast(qint64 placedWork, const std::vector<Casting>& cast);

    // Tracks and the disc identifier of one disc.
    int discs();                         ///< the units, or more as far as there are tracks or identifiers
    std::vector<Track> tracks(int disc); ///< by their numbers, 1 upwards
    QString discId(int disc);
    /// Replaces what is given, of this disc alone. Refused with a length that is none (unless it was stored
    /// before), a name too long, or a disc that the recording does not have.
    bool applyTracks(int disc, const std::optional<std::vector<Track>>& tracks,
                     const std::optional<QString>& discId);

    /// Tells of each work whether the composer has one of its title.
    bool findWorks(qint64 composer, std::vector<TrackWork>& works);
    /// Adds to a composer's list those that he does not have; with `place`, all of them come behind the works
    /// of the recording that are not on it yet, the composer with them. The number added, or -1 on failure.
    int addWorks(qint64 composer, std::vector<TrackWork> works, bool place);

private:
    /// `words` name the change with %1 for the recording.
    bool apply(const QStringList& parts, const QString& words, const std::function<void()>& job);
    QString title();
    QString ofRecording(const char* statement) const;
    QString castStatement(qint64 placedWork) const;
    QString tracksStatement(int disc) const;
    QString discIdStatement(int disc) const;
    QString contentOf(const QString& part);
    void remember(const QString& part);
    void rememberCasts();
    bool mayReplace(const QStringList& parts);
    void requireRecording();
    void touch();
    void reloadCard();
    void applyPersons(const char* code, const std::vector<qint64>& ids);
    void checkNewWork(const PlacedWork& work);
    void checkCasting(qint64 work, const Casting& casting);
    void placeWorks(const std::vector<PlacedWork>& works);
    void storeTracks(int disc, const std::vector<Track>& tracks);
    void storeDiscId(int disc, const QString& text);
    int lastDisc();
    int countDiscs();
    bool settleUpperDiscs(RecordingSpecs& specs, bool& remove);
    void removeDiscsAbove(int units);
    bool settleWorksOf(const std::vector<qint64>& composers, std::vector<qint64>& leaving);
    void takeOff(qint64 placedWork);
    void takeOffAll(const std::vector<qint64>& placedWorks);
    void readWorkIds(qint64 composer, std::vector<TrackWork>& works);
    void addToList(qint64 composer, TrackWork& work);
    void placeBehind(qint64 composer, const std::vector<TrackWork>& works);
    void rememberAgain(const QString& part);

    Session& m_session;
    OpenCards* m_cards;
    qint64 m_id;
    QHash<QString, QString> m_read; ///< by the statement of a part: what it held when it was read
};

/// Reads tracks pasted as text: one a line, with or without a number before the name and a length behind it,
/// tabs or blanks between. Empty lines are passed over.
std::vector<Track> tracksOfText(const QString& text);
/// What stands in a last column for a length and is none, as "4.30" and "4:75": tracksOfText() leaves it in
/// the name. A column is what a tab sets apart.
QStringList oddLengthsOfText(const QString& text);
/// The sum of the lengths, "mm:ss" with any one character between, as "h:mm:ss" or "mm:ss"; empty when no
/// track has one.
QString totalLength(const std::vector<Track>& tracks);

} // namespace tessaranth
