// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/DeletionCounts.h"

#include "store/Connection.h"

#include <QCoreApplication>
#include <QStringList>

namespace tessaranth {

namespace {

/// Something that hangs off items of some kinds. In the source of the counting statement %1 stands for the
/// list of keys, %2 for the code.
struct Dependant {
    const char* codes; ///< comma-separated
    bool goes;         ///< false: it stays and loses something
    const char* one;
    const char* several;
    const char* source;
};
const char cards[] = "Cps,Pfr,Rec,UserDef";

// clang-format off
const Dependant dependants[] = {
    {"Cps", true, QT_TRANSLATE_NOOP("DeletionCounts", "work"), QT_TRANSLATE_NOOP("DeletionCounts", "works"),
     "Compositions WHERE CpsID IN (%1)"},
    {"Rec", true, QT_TRANSLATE_NOOP("DeletionCounts", "track"), QT_TRANSLATE_NOOP("DeletionCounts", "tracks"),
     "Tracks WHERE RecID IN (%1)"},
    {cards, true, QT_TRANSLATE_NOOP("DeletionCounts", "picture"), QT_TRANSLATE_NOOP("DeletionCounts", "pictures"),
     "Images WHERE RelatedCat = '%2' AND RelatedID IN (%1)"},
    {"Cps,Pfr,Rec,UserDef,Comp", true, QT_TRANSLATE_NOOP("DeletionCounts", "document"), QT_TRANSLATE_NOOP("DeletionCounts", "documents"),
     "Cards WHERE RelatedCat = '%2' AND RelatedID IN (%1)"},
    {"Cps", true, QT_TRANSLATE_NOOP("DeletionCounts", "document of a work"), QT_TRANSLATE_NOOP("DeletionCounts", "documents of works"),
     "Cards WHERE RelatedCat = 'Comp' AND RelatedID IN (SELECT CompID FROM Compositions WHERE CpsID IN (%1))"},
    {cards, true, QT_TRANSLATE_NOOP("DeletionCounts", "media entry"), QT_TRANSLATE_NOOP("DeletionCounts", "media entries"),
     "Media WHERE RelatedCat = '%2' AND RelatedID IN (%1)"},
    {cards, true, QT_TRANSLATE_NOOP("DeletionCounts", "web link"), QT_TRANSLATE_NOOP("DeletionCounts", "web links"),
     "Web WHERE RelatedCat = '%2' AND RelatedID IN (%1)"},
    {"Cps,Pfr,Rec", true, QT_TRANSLATE_NOOP("DeletionCounts", "relation"), QT_TRANSLATE_NOOP("DeletionCounts", "relations"),
     "Relations WHERE ItemType = '%2' AND ItemID IN (%1)"},
    {"UserDef", true, QT_TRANSLATE_NOOP("DeletionCounts", "relation"), QT_TRANSLATE_NOOP("DeletionCounts", "relations"),
     "Relations WHERE UserDefID IN (%1)"},
    {"Cps", false, QT_TRANSLATE_NOOP("DeletionCounts", "recording"), QT_TRANSLATE_NOOP("DeletionCounts", "recordings"),
     "Rec WHERE RecID IN (SELECT RecID FROM CpsOnRec WHERE CpsID IN (%1)) OR RecID IN (SELECT RecID FROM CompOnRec WHERE CpsID IN (%1))"},
    {"Pfr", false, QT_TRANSLATE_NOOP("DeletionCounts", "recording"), QT_TRANSLATE_NOOP("DeletionCounts", "recordings"),
     "Rec WHERE RecID IN (SELECT RecID FROM PfrOnRec WHERE PfrID IN (%1))"},
    {"Comp", false, QT_TRANSLATE_NOOP("DeletionCounts", "recording"), QT_TRANSLATE_NOOP("DeletionCounts", "recordings"),
     "Rec WHERE RecID IN (SELECT RecID FROM CompOnRec WHERE CompID IN (%1))"},
    {"Label", false, QT_TRANSLATE_NOOP("DeletionCounts", "recording"), QT_TRANSLATE_NOOP("DeletionCounts", "recordings"),
     "Rec WHERE LabelID IN (%1)"},
    {"Source", false, QT_TRANSLATE_NOOP("DeletionCounts", "recording"), QT_TRANSLATE_NOOP("DeletionCounts", "recordings"),
     "Rec WHERE SourceID IN (%1)"},
    {"Support", false, QT_TRANSLATE_NOOP("DeletionCounts", "recording"), QT_TRANSLATE_NOOP("DeletionCounts", "recordings"),
     "Rec WHERE SupportID IN (%1)"},
    {"Genre", false, QT_TRANSLATE_NOOP("DeletionCounts", "work"), QT_TRANSLATE_NOOP("DeletionCounts", "works"),
     "Compositions WHERE GenreID IN (%1)"},
    {"CpsGenres", false, QT_TRANSLATE_NOOP("DeletionCounts", "work"), QT_TRANSLATE_NOOP("DeletionCounts", "works"),
     "Compositions WHERE CpsGenreID IN (%1)"},
    {"MainWorks", false, QT_TRANSLATE_NOOP("DeletionCounts", "work"), QT_TRANSLATE_NOOP("DeletionCounts", "works"),
     "Compositions WHERE MainWorkID IN (%1)"},
};
// clang-format on

QString tr(const char* text) { return QCoreApplication::translate("DeletionCounts", text); }

} // namespace

QString deletionCounts(Connection& connection, const QString& code, const std::vector<qint64>& ids) {
    QStringList keys;
    for (const qint64 id : ids)
        keys << QString::number(id);
    QStringList going;
    QStringList changed;
    for (const Dependant& dependant : dependants) {
        if (ids.empty() || !QString::fromLatin1(dependant.codes).split(u',').contains(code))
            continue;
        const QString source = QString::fromLatin1(dependant.source)
                                   .replace(QStringLiteral("%1"), keys.join(u','))
                                   .replace(QStringLiteral("%2"), code);
        const qint64 count = connection.single(QStringLiteral("SELECT COUNT(*) FROM ") + source).toInteger();
        if (count > 0)
            (dependant.goes ? going : changed)
                << QString::number(count) + u' ' + tr(count == 1 ? dependant.one : dependant.several);
    }
    QString text;
    if (!going.isEmpty())
        text += u'\n' + tr("Deleted too: %1").arg(going.join(QStringLiteral(", ")));
    if (!changed.isEmpty())
        text += u'\n' + tr("Changed: %1").arg(changed.join(QStringLiteral(", ")));
    return text.isEmpty() ? text : u'\n' + text;
}

QString selectedCount(size_t rows) {
    return rows < 2 ? QString() : QStringLiteral("\n\n") + tr("Selected: %1").arg(rows);
}

} // namespace tessaranth
