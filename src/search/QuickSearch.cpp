// SPDX-License-Identifier: GPL-3.0-or-later
#include "search/QuickSearch.h"

#include "store/Guarded.h"
#include "store/TextIndex.h"
#include "text/CatalogueNumber.h"

#include <QCoreApplication>
#include <QHash>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("QuickSearch", text); }

/// How the hits of one index are shown. The columns of the statement are the key of the row, the text in two
/// parts, the detail in two parts, the key of the card, and for works what stands before their number.
struct GroupOf {
    const char* index;
    const char* caption;
    const char* iconKey;
    const char* code;
    const char* select;
    const char* between; ///< stands between the two parts of the text
};

const GroupOf groups[] = {
    {"QuickCps", "Composers", "c", "Cps",
     "SELECT CpsID, CpsLname, CpsFname, CpsY, '', CpsID FROM Cps WHERE CpsID", ", "},
    {"QuickPfr", "Performers", "p", "Pfr",
     "SELECT PfrID, PfrLname, PfrFname, PfrB, PfrD, PfrID FROM Pfr WHERE PfrID", ", "},
    {"QuickRec", "Recordings", "Recordings", "Rec",
     "SELECT Rec.RecID, Rec.RecTitle, Rec.RecSubTitle, Labels.LabelName, Rec.ProdNbr, Rec.RecID FROM Labels "
     "RIGHT JOIN Rec ON Labels.LabelID = Rec.LabelID WHERE Rec.RecID",
     " - "},
    {"QuickComp", "Works", "Comp", "Comp",
     "SELECT Compositions.CompID, Compositions.CompTitle, Compositions.CompNbr, Cps.CpsLname, Cps.CpsFname, "
     "Compositions.CompID, Cps.CatAcr FROM Cps RIGHT JOIN Compositions ON Cps.CpsID = Compositions.CpsID "
     "WHERE "
     "Compositions.CompID",
     " - "},
    {"QuickUserDef", "Custom items", "User", "UserDef",
     "SELECT UserDefID, UserDefTitle, '', '', '', UserDefID FROM UserDef WHERE UserDefID", ""},
    {"QuickTracks", "Tracks", "Track", "Rec",
     "SELECT Tracks.TrackID, Tracks.TrackName, Tracks.TrackLen, Rec.RecTitle, '', Rec.RecID FROM Rec "
     "RIGHT JOIN Tracks ON Tracks.RecID = Rec.RecID WHERE Tracks.TrackID",
     "  "}};

QString joined(const QString& first, const QString& between, const QString& second) {
    return second.isEmpty() ? first : first + between + second;
}

QuickSearch::Hit hitOf(const GroupOf& group, const Query& row) {
    constexpr int acronym = 6;
    QString second = row.text(2);
    if (row.columnCount() > acronym && !second.isEmpty())
        second = CatalogueNumber::withAcronym(row.text(acronym).trimmed(), second.trimmed());
    return {joined(row.text(1), QLatin1String(group.between), second),
            joined(row.text(3), QStringLiteral(", "), row.text(4)), QLatin1String(group.code),
            row.integer(5)};
}

QuickSearch::Group hitsOf(Connection& connection, const GroupOf& group, const std::vector<qint64>& keys) {
    QuickSearch::Group found{QCoreApplication::translate("QuickSearch", group.caption),
                             QLatin1String(group.iconKey),
                             {},
                             int(keys.size()) > QuickSearch::hitsPerGroup};
    QStringList list;
    for (const qint64 key : keys)
        list.push_back(QString::number(key));
    QHash<qint64, QuickSearch::Hit> rows;
    Query run =
        connection.query(QLatin1String(group.select) + QStringLiteral(" IN (") + list.join(u',') + u')');
    while (run.next())
        rows.insert(run.integer(0), hitOf(group, run));
    for (const qint64 key : keys) {
        const auto row = rows.constFind(key);
        if (row == rows.constEnd())
            throw Error(tr("it names rows that are not there"));
        // A track without a recording has no card to be opened.
        if (row->id != 0 && int(found.hits.size()) < QuickSearch::hitsPerGroup)
            found.hits.push_back(*row);
    }
    return found;
}

} // namespace

bool QuickSearch::prepare(Progress& progress) {
    return guarded(m_session, [&] {
        TextIndex index(m_session.connection());
        return index.isCurrent() || index.build(progress);
    });
}

std::vector<QuickSearch::Group> QuickSearch::search(const QStringList& words) {
    const TextIndex index(m_session.connection());
    if (!index.isCurrent())
        throw Error(tr("parts of it are missing or out of date"));
    std::vector<Group> found;
    for (const GroupOf& group : groups) {
        const auto keys = index.find(group.index, words, hitsPerGroup + 1);
        if (!keys.empty())
            found.push_back(hitsOf(m_session.connection(), group, keys));
    }
    return found;
}

std::optional<std::vector<QuickSearch::Group>> QuickSearch::find(const QString& text) {
    const QStringList words = TextIndex::words(text);
    if (words.isEmpty())
        return std::vector<Group>{};
    try {
        return search(words);
    } catch (const Error& error) {
        m_fault = error.reason();
        return std::nullopt;
    }
}

// Asked once, and not again with every letter that is typed.
bool QuickSearch::wantsIndexAnew() {
    if (m_declined)
        return false;
    Question question;
    question.title = tr("Quick search");
    question.text =
        tr("The word index of the catalog is damaged: %1\n\nWithout it the search cannot answer. Do "
           "you want to make it anew?")
            .arg(m_fault);
    question.buttons = {Answer::Yes, Answer::No};
    question.defaultButton = Answer::Yes;
    m_declined = m_session.messages().ask(question) != Answer::Yes;
    if (m_declined)
        m_session.messages().warning(
            question.title, tr("Nothing was searched, as the word index is damaged: %1").arg(m_fault));
    return !m_declined;
}

bool QuickSearch::makeIndexAnew(Progress& progress) {
    return guarded(m_session, [&] { return TextIndex(m_session.connection()).build(progress); });
}

} // namespace tessaranth
