// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/tour/ClassTour.h"

#include "items/ItemKind.h"
#include "items/forms/ClassTree.h"
#include "items/forms/frmClass.h"
#include "items/forms/frmClassItem.h"
#include "store/Session.h"
#include "ui/MainWindow.h"
#include "ui/Toolbox.h"
#include "ui/TourCamera.h"

namespace tessaranth {

void showClasses(TourCamera& camera, Session& session, const IconStore& icons, MainWindow& window) {
    // The sub-category with the most recordings, and recordings that are in it and in others.
    const qint64 sub =
        session.connection()
            .single(QStringLiteral("SELECT RecSubCatID FROM RecSubCatJoin GROUP BY RecSubCatID "
                                   "ORDER BY COUNT(*) DESC"))
            .toInteger();
    const ClassTree::Place place{ItemKind::Recording, ClassTree::SubCategory, sub};
    frmClass manager(session, icons, window);
    auto* tree = manager.findChild<ClassTree*>();
    tree->setPlace(place);
    camera.take(manager, QStringLiteral("class-items"));
    tree->setPlace({ItemKind::Recording, ClassTree::GlobalView, 0});
    camera.take(manager, QStringLiteral("class-global"));

    Classification classes(session, ItemKind::Recording);
    ItemList recordings;
    classes.all(recordings);
    if (recordings.rowCount() > 2) {
        std::vector<qint64> ids{recordings.id(0), recordings.id(1), recordings.id(2)};
        frmClassItem several(classes, icons, ids, {});
        camera.take(several, QStringLiteral("class-several"));
        ids.resize(1);
        frmClassItem one(classes, icons, ids, recordings.text(0, 0));
        camera.take(one, QStringLiteral("class-one"));
    }
    window.toolbox()->showBrowse(true);
    window.show();
    window.toolbox()->findChild<ClassTree*>()->setPlace(place);
    camera.take(window, QStringLiteral("browse"));
    window.toolbox()->showBrowse(false);
}

} // namespace tessaranth
