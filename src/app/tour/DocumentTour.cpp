// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tour/DocumentTour.h"

#include "app/tour/TourCamera.h"
#include "attachments/forms/DocumentPanel.h"
#include "attachments/forms/frmRTB.h"
#include "text/RichText.h"
#include "window/frmItem.h"
#include "works/WorkDescription.h"

#include <QFile>
#include <QTextCursor>
#include <QTextEdit>

namespace tessaranth {

namespace {

QByteArray notes() {
    return "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0 Verdana;}}{\\colortbl "
           ";\\red140\\green30\\blue30;"
           "\\red60\\green60\\blue120;}\\fs20\\qc\\b\\fs24\\cf1 Notes on "
           "listening\\b0\\fs20\\cf0\\par\\ql\\par "
           "{\\b First movement.} The horns stand far to the right; the timpani are {\\i behind} them and "
           "never cover the strings.\\par\\par {\\ul Compare} with the older pressing:\\par "
           "\\tab side 1\\tab a little more hiss, a warmer bass\\par "
           "\\tab side 2\\tab no difference that I could hear\\par\\par\\qr\\cf2\\i heard in May\\par}";
}

QByteArray manyParts() {
    return "{\\rtf1\\ansi{\\fonttbl{\\f0 Verdana;}}\\fs20 Bought at the spring sale.\\par\\trowd Disc\\cell "
           "State\\cell\\row 1\\cell very good\\cell\\row\\pard\\par}";
}

} // namespace

void tourDocuments(TourCamera& camera, const FormContext& context, OpenCards& cards) {
    const CardOwner owner{QStringLiteral("Rec"),
                          context.session.connection()
                              .single(QStringLiteral("SELECT RecID FROM Rec ORDER BY RecTitle"))
                              .toInteger()};
    const CardContext ofCard{context, cards, owner.code, owner.id};
    DocumentPanel panel(ofCard);
    panel.resize(420, 300);
    camera.take(panel, QStringLiteral("documents-empty"));

    CardDocuments documents(context.session, owner);
    const qint64 ids[] = {documents.add(notes(), QStringLiteral("Notes on listening")),
                          documents.add(manyParts(), QStringLiteral("Where it came from")),
                          documents.add(RichText::fromText({}), QStringLiteral("Lost in a move"))};
    QFile::remove(documents.path(ids[2]));
    panel.load();
    camera.take(panel, QStringLiteral("documents"));
    panel.showPage(2);
    camera.take(panel, QStringLiteral("documents-missing"));
    frmItem card(ofCard);
    card.resize(1000, 680);
    card.showPanel(QStringLiteral("Docs"));
    camera.take(card, QStringLiteral("card-documents"));

    frmRTB editor(context, owner, frmRTB::Mode::Doc, ids[0]);
    auto* text = editor.findChild<QTextEdit*>();
    text->moveCursor(QTextCursor::Start);
    camera.take(editor, QStringLiteral("editor-document"));
    frmRTB simplified(context, owner, frmRTB::Mode::Doc, ids[1]);
    camera.take(simplified, QStringLiteral("editor-simplified"));
    const qint64 work = context.session.connection()
                            .single(QStringLiteral("SELECT CompID FROM Compositions ORDER BY CompID"))
                            .toInteger();
    frmRTB description(context, {QStringLiteral("Comp"), work}, frmRTB::Mode::Descr,
                       WorkDescription(context.session, work).document());
    camera.take(description, QStringLiteral("editor-description"));
    for (const qint64 id : ids)
        documents.remove(id);
}

} // namespace tessaranth
