// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tour/SettingsTour.h"

#include "app/tour/TourCamera.h"
#include "search/forms/frmQuickSearch.h"
#include "window/frmSettings.h"

#include <QLineEdit>
#include <QTabWidget>

namespace tessaranth {

void tourSettings(TourCamera& camera, const FormContext& context, OpenCards& cards) {
    frmSettings settings(context);
    auto* pages = settings.findChild<QTabWidget*>(QStringLiteral("pages"));
    for (int page = 0; page < pages->count(); ++page) {
        pages->setCurrentIndex(page);
        camera.take(settings, QStringLiteral("settings-%1").arg(page + 1));
    }
    frmQuickSearch quick(context, cards);
    if (!quick.prepare())
        return;
    camera.take(quick, QStringLiteral("quick-empty"));
    auto* text = quick.findChild<QLineEdit*>(QStringLiteral("txtQuick"));
    text->setText(QStringLiteral("moz"));
    TourCamera::waitForTyping();
    camera.take(quick, QStringLiteral("quick-hits"));
    text->setText(QStringLiteral("nothing is called so"));
    TourCamera::waitForTyping();
    camera.take(quick, QStringLiteral("quick-no-hit"));
}

} // namespace tessaranth
