// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>
#include <optional>
#include <vector>

namespace tessaranth {

class Progress;
class Session;

/// One box over everything that has a name: composers, performers, recordings with their barcodes and
/// production numbers, works, custom items and tracks.
class QuickSearch {
public:
    struct Hit {
        QString text;
        QString detail; ///< what tells it from others of the same name
        QString code;   ///< of the card that shows it: "Cps", "Pfr", "Rec", "UserDef" or "Comp"
        qint64 id = 0;  ///< of that card
    };
    struct Group {
        QString caption;
        QString iconKey;
        std::vector<Hit> hits;
        bool isCut = false; ///< there are more than these
    };
    static constexpr int hitsPerGroup = 40;

    explicit QuickSearch(Session& session) : m_session(session) {}

    /// Makes the word index when the catalog has none; false when the user stopped it or it failed, which was
    /// told.
    bool prepare(Progress& progress);
    /// The groups in which something has words beginning with every word of the text, exact ones first. None
    /// for a text without letters and digits. Nullopt when the index is damaged or out of date: then there is
    /// no answer, never a part of one; see `wantsIndexAnew`.
    std::optional<std::vector<Group>> find(const QString& text);
    /// After a search without an answer: tells why and asks whether to make the index anew, but only once.
    bool wantsIndexAnew();
    bool makeIndexAnew(Progress& progress); ///< false when the user stopped it or it failed, which is told

private:
    std::vector<Group> search(const QStringList& words);

    QString m_fault; ///< of the last search
    bool m_declined = false;
    Session& m_session;
};

} // namespace tessaranth
