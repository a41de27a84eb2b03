// SPDX-License-Identifier: GPL-3.0-or-later
#include "recordings/TrackWorks.h"

#include <QHash>
#include <QRegularExpression>

namespace tessaranth {

namespace {

/// The title before the name of a movement; the whole name when it tells none. A number before the movement
/// shows where it begins, as in "Suite: No. 2 - I. Prelude"; else it is behind the last colon or dash.
QString workTitle(const QString& name) {
    static const QRegularExpression numbered(
        QStringLiteral("\\A(.+?)\\s*[:,;\\-\\x{2013}\\x{2014}]\\s+(?:[IVX]+|\\d{1,2})[.)]\\s"));
    static const QRegularExpression named(QStringLiteral("\\A(.+)(?::|\\s[\\-\\x{2013}\\x{2014}])\\s+\\S"));
    for (const QRegularExpression& pattern : {numbered, named})
        if (const QRegularExpressionMatch match = pattern.match(name); match.hasMatch())
            return match.captured(1).trimmed();
    return name;
}

} // namespace

std::vector<TrackWork> worksOfTracks(const QStringList& names, bool mergeMovements) {
    std::vector<TrackWork> works;
    QHash<QString, QStringList> movements; // names by the title of the work that they seem to be of
    for (const QString& name : names)
        movements[workTitle(name.trimmed()).toCaseFolded()] << name;
    QHash<QString, size_t> merged; // by title
    for (int track = 0; track < int(names.size()); ++track) {
        const QString name = names[track].trimmed();
        if (name.isEmpty())
            continue;
        const QString title = workTitle(name);
        const QString key = title.toCaseFolded();
        // A colon alone makes no movement: it takes two of them to tell a work.
        const bool isMovement = mergeMovements && movements.value(key).size() > 1;
        if (isMovement && merged.contains(key)) {
            works[merged.value(key)].tracks.push_back(track);
            continue;
        }
        if (isMovement)
            merged.insert(key, works.size());
        works.push_back({isMovement ? title : name, {track}, 0});
    }
    return works;
}

} // namespace tessaranth
