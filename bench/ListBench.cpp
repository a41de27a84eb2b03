// SPDX-License-Identifier: GPL-3.0-or-later
#include "Measure.h"

#include "items/CMIT.h"
#include "store/Session.h"
#include "works/CWKS.h"

namespace tessaranth {

namespace {

struct ListCase {
    int kind;
    const char* name;
    const char* prefix;
    const char* bare; ///< SQLite's own words: joins as a left chain, sorted by the bytes of the text
};
const ListCase lists[] = {
    {ItemKind::Composer, "list: composers", "",
     "SELECT CpsID, CpsLname, CpsFname, CpsY FROM Cps ORDER BY CpsLname, CpsFname"},
    {ItemKind::Performer, "list: performers", "",
     "SELECT PfrID, PfrLname, PfrFname FROM Pfr ORDER BY PfrLname, PfrFname"},
    {ItemKind::Recording, "list: recordings", "",
     "SELECT Rec.RecID, RecTitle, LabelName, IconName FROM Rec LEFT JOIN Labels ON Labels.LabelID = "
     "Rec.LabelID LEFT JOIN "
     "Supports ON Supports.SupportID = Rec.SupportID ORDER BY RecTitle"},
    {ItemKind::Custom, "list: custom items", "",
     "SELECT UserDefID, UserDefTitle, LastState FROM UserDef ORDER BY UserDefTitle"},
    {ItemKind::Genre, "list: genres", "", "SELECT GenreID, GenreName FROM Genres ORDER BY GenreName"},
    {ItemKind::Label, "list: labels", "", "SELECT LabelID, LabelName FROM Labels ORDER BY LabelName"},
    {ItemKind::Source, "list: sources", "", "SELECT SourceID, SourceType FROM Sources ORDER BY SourceType"},
    {ItemKind::Support, "list: carriers", "",
     "SELECT SupportID, SupportType, IconName, DefIcon FROM Supports"},
    {ItemKind::Composer, "filter \"Ba\": composers", "Ba",
     "SELECT CpsID, CpsLname, CpsFname, CpsY FROM Cps WHERE CpsLname LIKE 'Ba%' ORDER BY CpsLname, CpsFname"},
    {ItemKind::Performer, "filter \"Ba\": performers", "Ba",
     "SELECT PfrID, PfrLname, PfrFname FROM Pfr WHERE PfrLname LIKE 'Ba%' ORDER BY PfrLname, PfrFname"},
    {ItemKind::Recording, "filter \"Ba\": recordings", "Ba",
     "SELECT Rec.RecID, RecTitle, LabelName, IconName FROM Rec LEFT JOIN Labels ON Labels.LabelID = "
     "Rec.LabelID LEFT JOIN "
     "Supports ON Supports.SupportID = Rec.SupportID WHERE RecTitle LIKE 'Ba%' ORDER BY RecTitle"},
};

void largestWorksList(const BenchContext& context) {
    const qint64 composer = context.session.connection()
                                .single(QStringLiteral("SELECT CpsID FROM Compositions GROUP BY CpsID "
                                                       "HAVING COUNT(*) > 1000"))
                                .toInteger();
    if (composer == 0)
        return;
    const QByteArray id = QByteArray::number(composer);
    int rows = 0;
    const double ours = medianMs(context.repeat, [&] {
        ItemList list;
        CWKS(context.session).ElencoInLvC(composer, list);
        rows = list.rowCount();
    });
    const QByteArray bare = "SELECT c.CompID, CompTitle, CompSubTitle, CompNbr, CompYear, InCollection, "
                            "Descr, MainWorkName, CpsGenreName "
                            "FROM Compositions c LEFT JOIN MainWorks m ON m.MainWorkID = c.MainWorkID "
                            "LEFT JOIN CpsGenres g ON "
                            "g.CpsGenreID = c.CpsGenreID WHERE c.CpsID = " +
                            id + " ORDER BY CompNbr, CompTitle";
    line(QStringLiteral("list: %1 works of one composer").arg(rows), ours,
         bareQuery(context, bare.constData()));
}

} // namespace

void measureLists(const BenchContext& context) {
    for (const ListCase& one : lists) {
        const double ours = medianMs(context.repeat, [&] {
            ItemList list;
            CMIT(context.session).ElencoInLv(one.kind, list, QString::fromLatin1(one.prefix));
        });
        line(one.name, ours, bareQuery(context, one.bare));
    }
    largestWorksList(context);
}

} // namespace tessaranth
