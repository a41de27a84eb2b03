// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/tour/RecordingTour.h"

#include "items/forms/frmListChooser.h"
#include "items/forms/frmRec.h"
#include "store/Session.h"
#include "ui/TourCamera.h"

#include <QApplication>
#include <QLineEdit>
#include <QAbstractButton>
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

} // namespace

// An opera with its cast, where there is one: the recording with the most roles.
void tourRecordings(TourCamera& camera, Session& session, const IconStore& icons) {
    const qint64 opera =
        session.connection()
            .single(QStringLiteral("SELECT CompOnRec.RecID FROM CompOnRec INNER JOIN CompOnRecPfr ON "
                                   "CompOnRec.CompOnRecID = CompOnRecPfr.CompOnRecID "
                                   "GROUP BY CompOnRec.RecID ORDER BY Max(CompOnRecPfr.PersonageID) DESC"))
            .toInteger();
    frmRec editor(session, icons, opera, nullptr);
    editor.show();
    auto* tabs = editor.findChild<QTabWidget*>(QStringLiteral("tabs"));
    const char* const lists[] = {nullptr, "lvPfr", nullptr, "lvPfr", "LvTracks"};
    for (int tab = 0; tab < tabs->count(); ++tab) {
        showTab(*tabs, tab, lists[tab]);
        camera.take(editor, QStringLiteral("recording-%1").arg(tab + 1));
        for (const Opened& opened : allOpened)
            if (opened.tab == tab) {
                editor.show();
                showTab(*tabs, tab, lists[tab]);
                takeOpened(camera, editor, opened.button,
                           QStringLiteral("recording-") + QLatin1String(opened.name));
            }
    }
    frmRec fresh(session, icons, 0, nullptr);
    camera.take(fresh, QStringLiteral("recording-new"));
}

} // namespace tessaranth
