// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tour/AttachTour.h"

#include "app/tour/TourCamera.h"
#include "attachments/forms/MediaPanel.h"
#include "attachments/forms/RelationsPanel.h"
#include "attachments/forms/WebPanel.h"
#include "attachments/forms/frmMediaPath.h"
#include "attachments/forms/frmMediaProperties.h"
#include "attachments/forms/frmNewRelations.h"
#include "attachments/forms/frmNewWeb.h"
#include "items/OpenCards.h"
#include "items/forms/frmNewLabel.h"
#include "items/forms/frmNewUserDef.h"
#include "platform/Progress.h"
#include "store/Session.h"

#include <QComboBox>
#include <QRadioButton>

namespace tessaranth {

namespace {

struct NoCards final : OpenCards {
    void openCard(const QString&, qint64) override {}
    void closeCard(const QString&) override {}
    void reloadCard(const QString&) override {}
};

template<typename Panel>
void take(TourCamera& camera, const CardContext& context, const char* name) {
    Panel panel(context);
    panel.resize(860, 260);
    camera.take(panel, QLatin1String(name));
}

qint64 first(Session& session, const char* statement) {
    return session.connection().single(QLatin1String(statement)).toInteger();
}

// The sample has no media files of its own, as there is no place that they would have everywhere. What is
// added here is undone: the catalog may be somebody's own.
void showMedia(TourCamera& camera, const FormContext& context, OpenCards& cards) {
    const CardContext empty{context, cards, QStringLiteral("Cps"),
                            first(context.session, "SELECT CpsID FROM Cps ORDER BY CpsLname DESC")};
    take<MediaPanel>(camera, empty, "panel-media-empty");
    const CardOwner recording{QStringLiteral("Rec"),
                              first(context.session, "SELECT RecID FROM Rec ORDER BY RecTitle")};
    const Transaction undone(context.session.connection(), QStringLiteral("undone"));
    CardMedia media(context.session, recording);
    NoProgress progress;
    media.add({context.session.databasePath(), context.session.applicationFile(QStringLiteral("WKeys.dat")),
               context.session.configuration().path()},
              progress);
    take<MediaPanel>(camera, {context, cards, recording.code, recording.id}, "panel-media");
    const MediaFile file = media.media(first(context.session, "SELECT MediaID FROM Media ORDER BY MediaID"));
    frmMediaProperties properties(context.icons, file);
    camera.take(properties, QStringLiteral("media-properties"));
    frmMediaPath places(context, nullptr);
    camera.take(places, QStringLiteral("media-places"));
}

} // namespace

void tourAttachments(TourCamera& camera, const FormContext& context) {
    NoCards cards;
    showMedia(camera, context, cards);
    const qint64 linked =
        first(context.session, "SELECT RelatedID FROM Web WHERE RelatedCat = 'Cps' ORDER BY WebID");
    take<WebPanel>(camera, {context, cards, QStringLiteral("Cps"), linked}, "panel-web");
    frmNewWeb link(context, {QStringLiteral("Cps"), linked},
                   first(context.session, "SELECT WebID FROM Web WHERE RelatedCat = 'Cps' ORDER BY WebID"));
    camera.take(link, QStringLiteral("web-link"));

    const CardOwner custom{
        QStringLiteral("UserDef"),
        first(context.session, "SELECT UserDefID FROM Relations GROUP BY UserDefID ORDER BY Count(*) DESC")};
    take<RelationsPanel>(camera, {context, cards, custom.code, custom.id}, "panel-relations");
    frmNewRelations ofCustom(context, custom);
    ofCustom.findChild<QComboBox*>(QStringLiteral("cmbFirst"))->setCurrentIndex(2);
    camera.take(ofCustom, QStringLiteral("relations-custom"));
    const qint64 recording =
        first(context.session, "SELECT ItemID FROM Relations WHERE ItemType = 'Rec' ORDER BY ItemID");
    frmNewRelations ofRecording(context, {QStringLiteral("Rec"), recording});
    camera.take(ofRecording, QStringLiteral("relations-recording"));

    frmNewLabel label(context, first(context.session, "SELECT LabelID FROM Labels ORDER BY LabelName"));
    camera.take(label, QStringLiteral("label"));
    frmNewUserDef card(context, custom.id, nullptr);
    camera.take(card, QStringLiteral("custom-card"));
}

} // namespace tessaranth
