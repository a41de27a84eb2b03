// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tour/RecordingTour.h"

#include "app/tour/TourCamera.h"
#include "items/forms/frmListChooser.h"
#include "recordings/forms/frmRec.h"
#include "store/Session.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QTabWidget>
#include <QTimer>
#include <QTreeWidget>

namespace tessaranth {

namespace {

/// Presses a button that opens a window, and takes a picture of that window.
void takeOpened(TourCamera& camera, QWidget& form, const char* button, const QString& name) {
    QTimer::singleShot(0, &form, [&] {
        if (auto* opened = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
            camera.take(*opened, name);
            opened->reject();
        }
    });
    form.findChild<QAbstractButton*>(QLatin1String(button))->click();
}

void showTab(QTabWidget& tabs, int tab, const char* list) {
    tabs.setCurrentIndex(tab);
    if (!list)
        return;
    auto* view = tabs.currentWidget()->findChild<QTreeWidget*>(QLatin1String(list));
    if (view && view->topLevelItemCount() > 0)
        view->setCurrentItem(view->topLevelItem(qMin(1, view->topLevelItemCount() - 1)));
}

/// What a tab opens by a button of its.
struct Opened {
    int tab;
    const char* button;
    const char* name;
};
const Opened allOpened[] = {{0, "cmdLabel", "choose-label"},       {1, "cmdPfrAdd", "choose-performers"},
                            {1, "cmdPfrWorks", "performed-works"}, {2, "cmdWksAdd", "choose-works"},
                            {3, "cmdCastAdd", "choose-cast"},      {3, "cmdCastRoles", "choose-roles"}};

constexpr int tracksTab = 4;

qint64 mostOf(Session& session, const char* rows) {
    return session.connection()
        .single(QStringLiteral("SELECT RecID FROM %1 GROUP BY RecID ORDER BY Count(*) DESC")
                    .arg(QLatin1String(rows)))
        .toInteger();
}

} // namespace

// An opera with its cast, and the tracks of the recording that has the most.
void tourRecordings(TourCamera& camera, const FormContext& context) {
    const qint64 opera =
        mostOf(context.session, "CompOnRec INNER JOIN CompOnRecPfr ON CompOnRec.CompOnRecID = "
                                "CompOnRecPfr.CompOnRecID WHERE CompOnRecPfr.PersonageID > 0");
    const char* const lists[] = {nullptr, "lvPfr", nullptr, "lvPfr"};
    if (opera != 0) {
        frmRec editor(context, opera, nullptr);
        auto* tabs = editor.findChild<QTabWidget*>(QStringLiteral("tabs"));
        for (int tab = 0; tab < tracksTab; ++tab) {
            showTab(*tabs, tab, lists[tab]);
            camera.take(editor, QStringLiteral("recording-%1").arg(tab + 1));
            if (auto* order =
                    tabs->currentWidget()->findChild<QAbstractButton*>(QStringLiteral("chkOrder"))) {
                order->click();
                camera.take(editor, QStringLiteral("recording-%1-in-order").arg(tab + 1));
            }
            for (const Opened& opened : allOpened)
                if (opened.tab == tab)
                    takeOpened(camera, editor, opened.button,
                               QStringLiteral("recording-") + QLatin1String(opened.name));
        }
    }
    if (const qint64 most = mostOf(context.session, "Tracks"); most != 0) {
        frmRec editor(context, most, nullptr);
        showTab(*editor.findChild<QTabWidget*>(QStringLiteral("tabs")), tracksTab, "LvTracks");
        camera.take(editor, QStringLiteral("recording-5"));
        editor.findChild<QLineEdit*>(QStringLiteral("meb"))->setText(QStringLiteral("4.30"));
        editor.findChild<QAbstractButton*>(QStringLiteral("cmdTrackAdd"))->click();
        camera.take(editor, QStringLiteral("recording-5-refused"));
    }
    frmRec fresh(context, 0, nullptr);
    camera.take(fresh, QStringLiteral("recording-new"));
}

} // namespace tessaranth
