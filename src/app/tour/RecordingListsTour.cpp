// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tour/RecordingListsTour.h"

#include "app/tour/TourCamera.h"
#include "items/OpenCards.h"
#include "recordings/forms/frmRecCheck.h"
#include "recordings/forms/frmRecList.h"
#include "recordings/forms/frmTrackToWorklist.h"
#include "store/Session.h"
#include "works/CWKS.h"

namespace tessaranth {

namespace {

struct NoCards final : OpenCards {
    void openCard(const QString&, qint64) override {}
    void closeCard(const QString&) override {}
    void reloadCard(const QString&) override {}
};

} // namespace

void tourRecordingLists(TourCamera& camera, const FormContext& context) {
    NoCards cards;
    const auto first = [&](const char* statement) {
        return context.session.connection().single(QLatin1String(statement)).toInteger();
    };
    const qint64 work = first("SELECT CompID FROM CompOnRec GROUP BY CompID ORDER BY Count(*) DESC, CompID");
    frmRecList list(context, work, CWKS(context.session).work(work).title, &cards);
    camera.take(list, QStringLiteral("recordings-of-work"));
    frmRecCheck check(context, cards);
    check.fill();
    camera.take(check, QStringLiteral("recordings-check"));
    RecordingEditor editor(context.session,
                           first("SELECT RecID FROM Tracks GROUP BY RecID ORDER BY Count(*) DESC, RecID"));
    QStringList titles;
    for (const Track& track : editor.tracks(1))
        titles << track.name;
    frmTrackToWorklist works(context, editor, titles);
    camera.take(works, QStringLiteral("tracks-to-works"));
}

} // namespace tessaranth
