// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/CardHeading.h"

#include "items/Person.h"
#include "store/Guarded.h"
#include "store/Recordset.h"

#include <QCoreApplication>
#include <algorithm>

namespace tessaranth {

namespace {

QString s(const char* text) { return QString::fromLatin1(text); }

const QString composer = QStringLiteral("Cps");
const QString performer = QStringLiteral("Pfr");
const QString recording = QStringLiteral("Rec");
const QString custom = QStringLiteral("UserDef");

QString fullName(const Recordset& row, const QString& prefix) {
    return (row.value(0, prefix + s("Fname")).toText().trimmed() + u' ' +
            row.value(0, prefix + s("Lname")).toText().trimmed())
        .trimmed();
}

void readComposer(const Recordset& row, CardHeading& heading) {
    heading.name = fullName(row, composer);
    heading.years = row.value(0, s("CpsY")).toText().trimmed();
    if (heading.years.isEmpty())
        heading.years =
            yearsText(row.value(0, s("CpsB")).toText().trimmed(), row.value(0, s("CpsD")).toText().trimmed());
}

void readPerformer(const Recordset& row, CardHeading& heading) {
    const auto date = [&](const char* column) {
        const QString text = row.value(0, s(column)).toText().trimmed();
        return text.isEmpty() ? s("?") : text;
    };
    heading.name = fullName(row, performer);
    heading.years = u'(' + date("PfrB") + s(" - ") + date("PfrD") + u')';
}

void readRecording(const Recordset& row, CardHeading& heading) {
    heading.name = row.value(0, s("RecTitle")).toText().trimmed();
    heading.subTitle = row.value(0, s("RecSubTitle")).toText().trimmed();
    heading.contentsState = row.value(0, s("LastStateRec")).toInteger();
    const Value& splitter = row.value(0, s("LastStateRecSplitterPos"));
    heading.splitter = splitter.isNull() ? 50 : int(std::clamp<qint64>(splitter.toInteger(), 0, 100));
}

void readCustom(const Recordset& row, CardHeading& heading) {
    heading.name = row.value(0, s("UserDefTitle")).toText().trimmed();
}

struct Reader {
    QString code;
    QString type;
    QString statement;
    void (*read)(const Recordset& row, CardHeading& heading);
};

const Reader* readerOf(const QString& code) {
    static const Reader readers[] = {
        {composer, s("Composer"), s("SELECT * FROM Cps WHERE CpsID = "), readComposer},
        {performer, s("Performer"), s("SELECT * FROM Pfr WHERE PfrID = "), readPerformer},
        {recording, s("Recording"),
         s("SELECT RecTitle, RecSubTitle, LastState, LastStateRec, LastStateRecSplitterPos FROM Rec WHERE "
           "RecID = "),
         readRecording},
        {custom, s("User defined"), s("SELECT UserDefTitle, LastState FROM UserDef WHERE UserDefID = "),
         readCustom}};
    const auto* found = std::find_if(std::begin(readers), std::end(readers),
                                     [&](const Reader& reader) { return reader.code == code; });
    return found == std::end(readers) ? nullptr : found;
}

} // namespace

std::span<const CardPanelKind> cardPanelKinds() {
    static const QStringList everybody{composer, performer, recording, custom};
    static const CardPanelKind kinds[] = {
        {s("RecContents"), s("Contents"), 3, {recording}, s("RecContents"), s("mnuShowRecContents")},
        {s("Comp"), s("Works"), 1, {composer}, s("Comp"), s("mnuShowComp")},
        {s("Rec"), s("On recordings"), 2, {composer, performer}, s("Recordings"), s("mnuShowRec")},
        {s("Docs"), s("Title"), 0, everybody, s("Doc"), s("mnuShowDoc")},
        {s("Media"), s("Media files"), 4, everybody, s("Media"), s("mnuShowMedia")},
        {s("Web"), s("Web links"), 5, everybody, s("Web"), s("mnuShowWeb")},
        {s("Rel"), s("Relationships"), 6, everybody, s("Relations"), s("mnuShowRel")}};
    return kinds;
}

const CardPanelKind* cardPanelKind(const QString& name) {
    for (const CardPanelKind& kind : cardPanelKinds())
        if (kind.name == name)
            return &kind;
    return nullptr;
}

const CardPanelKind& cardPanelOfState(const QString& code, qint64 state) {
    for (const CardPanelKind& kind : cardPanelKinds())
        if (kind.code == state && kind.owners.contains(code))
            return kind;
    return *cardPanelKind(s("Docs"));
}

QString CardPanelKind::label(const QString& owner) const {
    if (owner != composer && owner != performer)
        return caption;
    const bool performs = owner == performer && name == s("Rec");
    return s("  ") + (performs ? s("Perform") : caption);
}

bool readCardHeading(Session& session, const QString& code, qint64 id, CardHeading& heading) {
    const Reader* reader = readerOf(code);
    bool found = false;
    guarded(session, [&] {
        if (!reader)
            return;
        const Recordset row = Recordset::open(session.connection(), reader->statement + QString::number(id));
        if (row.isEmpty())
            return;
        CardHeading result;
        result.type = reader->type;
        result.state = row.value(0, s("LastState")).toInteger();
        reader->read(row, result);
        heading = result;
        found = true;
    });
    return found;
}

// How a card was last looked at is no step of the history, so these transactions need no words.
bool saveCardState(Session& session, const QString& code, qint64 id, const QString& panel) {
    const CardPanelKind* kind = cardPanelKind(panel);
    return kind && guarded(session, [&] {
               Transaction transaction(session.connection(), QString());
               session.connection().execute(s("UPDATE ") + code + s(" SET LastState = ") +
                                            QString::number(kind->code) + s(" WHERE ") + code + s("ID") +
                                            s(" = ") + QString::number(id));
               transaction.commit();
           });
}

bool beginWithMainPanel(Session& session, const QString& code, qint64 id) {
    const QString panel = code == composer    ? s("Comp")
                          : code == performer ? s("Rec")
                          : code == recording ? s("RecContents")
                                              : s("Rel");
    return saveCardState(session, code, id, panel);
}

bool saveContentsState(Session& session, qint64 id, int state, int splitter) {
    return guarded(session, [&] {
        Transaction transaction(session.connection(), QString());
        session.connection().execute(s("UPDATE Rec SET LastStateRec = ") + QString::number(state) +
                                     s(", LastStateRecSplitterPos = ") + QString::number(splitter) +
                                     s(" WHERE RecID = ") + QString::number(id));
        transaction.commit();
    });
}

} // namespace tessaranth
