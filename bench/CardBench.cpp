// SPDX-License-Identifier: GPL-3.0-or-later
#include "Measure.h"

#include "recordings/RecordingContents.h"
#include "store/Session.h"
#ifdef TESSARANTH_BENCH_MODEL
#include "items/OpenCards.h"
#include "widgets/IconStore.h"
#include "window/frmItem.h"
#include "works/forms/frmWork.h"

#include <QCoreApplication>
#endif

namespace tessaranth {

namespace {

// What takes longest of its kind.
struct Subject {
    const char* code;
    const char* what;
    const char* statement;
};
const Subject subjects[] = {{"Cps", "composer with the most works",
                             "SELECT CpsID FROM Compositions GROUP BY CpsID ORDER BY Count(*) DESC"},
                            {"Pfr", "performer with the most recordings",
                             "SELECT PfrID FROM PfrOnRec GROUP BY PfrID ORDER BY Count(*) DESC"},
                            {"Rec", "recording with the most works",
                             "SELECT RecID FROM CompOnRec GROUP BY RecID ORDER BY Count(*) DESC"},
                            {"UserDef", "custom item", "SELECT UserDefID FROM UserDef"},
                            {"Comp", "work on the most recordings",
                             "SELECT CompID FROM CompOnRec GROUP BY CompID ORDER BY Count(*) DESC"}};

qint64 idOf(const BenchContext& context, const Subject& subject) {
    return context.session.connection().single(QLatin1String(subject.statement)).toInteger();
}

void measureContents(const BenchContext& context) {
    RecordingContents contents(context.session, idOf(context, subjects[2]));
    line(QStringLiteral("recording card, all areas read"),
         medianMs(context.repeat,
                  [&] {
                      RecordingContents::Specs specs;
                      RecordingContents::Artists artists;
                      RecordingContents::Works works;
                      RecordingContents::Tracks tracks;
                      contents.LoadRecSpecs(specs);
                      contents.LoadRecArtists(artists);
                      contents.LoadRecContents(works);
                      contents.LoadRecTracks(tracks);
                  }),
         0);
}

#ifdef TESSARANTH_BENCH_MODEL
struct NoCards final : OpenCards {
    void openCard(const QString&, qint64) override {}
    void closeCard(const QString&) override {}
    void reloadCard(const QString&) override {}
};

/// To the first frame.
void open(const CardContext& context) {
    std::unique_ptr<QWidget> card;
    if (context.code == QLatin1String("Comp"))
        card = std::make_unique<frmWork>(context);
    else
        card = std::make_unique<frmItem>(context);
    card->resize(1000, 680);
    card->show();
    QCoreApplication::processEvents();
    card->grab();
}

void measureWindows(const BenchContext& context) {
    const IconStore icons(context.session.applicationFile(QStringLiteral("tsrthres.dll")));
    NoCards cards;
    for (const Subject& subject : subjects) {
        const QString code = QLatin1String(subject.code);
        const qint64 id = idOf(context, subject);
        for (const CardPanelKind& panel : cardPanelKinds()) {
            if (!panel.owners.contains(code))
                continue;
            saveCardState(context.session, code, id, panel.name);
            line(QStringLiteral("card opened and painted: %1, %2")
                     .arg(QLatin1String(subject.what), panel.caption),
                 medianMs(context.repeat,
                          [&] {
                              open({context.session, icons, cards, code, id});
                          }),
                 0);
        }
        if (code == QLatin1String("Comp"))
            line(QStringLiteral("card opened and painted: %1").arg(QLatin1String(subject.what)),
                 medianMs(context.repeat,
                          [&] {
                              open({context.session, icons, cards, code, id});
                          }),
                 0);
    }
}
#else
void measureWindows(const BenchContext&) {}
#endif

} // namespace

void measureCards(const BenchContext& context) {
    measureContents(context);
    measureWindows(context);
}

} // namespace tessaranth
