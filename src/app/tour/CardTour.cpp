// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tour/CardTour.h"

#include "app/tour/TourCamera.h"
#include "items/OpenCards.h"
#include "recordings/forms/RecContentsPanel.h"
#include "store/Session.h"
#include "window/frmItem.h"
#include "works/forms/frmWork.h"

#include <QTabBar>

namespace tessaranth {

namespace {

struct NoCards final : OpenCards {
    void openCard(const QString&, qint64) override {}
    void closeCard(const QString&) override {}
    void reloadCard(const QString&) override {}
};

/// The card with the most to show of its kind.
struct Subject {
    const char* code;
    const char* statement;
};
const Subject subjects[] = {{"Cps", "SELECT CpsID FROM Compositions GROUP BY CpsID ORDER BY Count(*) DESC"},
                            {"Pfr", "SELECT PfrID FROM PfrOnRec GROUP BY PfrID ORDER BY Count(*) DESC"},
                            {"Rec", "SELECT RecID FROM PfrOnRec GROUP BY RecID ORDER BY Count(*) DESC"},
                            {"UserDef", "SELECT UserDefID FROM UserDef ORDER BY UserDefID"}};

} // namespace

void tourCards(TourCamera& camera, const FormContext& context) {
    NoCards cards;
    for (const Subject& subject : subjects) {
        const QString code = QLatin1String(subject.code);
        const qint64 id = context.session.connection().single(QLatin1String(subject.statement)).toInteger();
        frmItem card({context, cards, code, id});
        card.resize(1000, 680);
        for (const CardPanelKind& panel : cardPanelKinds())
            if (card.showPanel(panel.name))
                camera.take(card, QStringLiteral("card-%1-%2").arg(code, panel.name));
        if (auto* areas = card.findChild<QTabBar*>(QStringLiteral("contentsTabs"))) {
            card.showPanel(QStringLiteral("RecContents"));
            for (int area = 1; area < areas->count(); ++area) {
                areas->setCurrentIndex(area);
                camera.take(card, QStringLiteral("card-contents-%1").arg(area + 1));
            }
        }
        card.setPanelHidden(true);
        camera.take(card, QStringLiteral("card-%1-hidden").arg(code));
    }
    // Several discs with their tracks.
    const qint64 discs =
        context.session.connection()
            .single(QStringLiteral(
                "SELECT RecID FROM Tracks GROUP BY RecID ORDER BY Max(Disc) DESC, Count(*) DESC"))
            .toInteger();
    frmItem album({context, cards, QStringLiteral("Rec"), discs});
    album.resize(1000, 680);
    album.showPanel(QStringLiteral("RecContents"));
    auto* areas = album.findChild<QTabBar*>(QStringLiteral("contentsTabs"));
    for (const int area : {RecContentsPanel::Works, RecContentsPanel::Tracks}) {
        areas->setCurrentIndex(area);
        camera.take(album, QStringLiteral("card-discs-%1").arg(area + 1));
    }
    // A work with characters where there is one.
    const qint64 work =
        context.session.connection()
            .single(QStringLiteral("SELECT CompID FROM Compositions ORDER BY Pers DESC, InCollection DESC"))
            .toInteger();
    frmWork workCard({context, cards, QStringLiteral("Comp"), work});
    camera.take(workCard, QStringLiteral("card-work"));
}

} // namespace tessaranth
