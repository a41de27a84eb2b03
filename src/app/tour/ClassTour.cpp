// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tour/ClassTour.h"

#include "app/tour/TourCamera.h"
#include "classes/forms/ClassTree.h"
#include "classes/forms/frmClass.h"
#include "classes/forms/frmClassItem.h"
#include "items/ItemKind.h"
#include "store/Session.h"
#include "window/MainWindow.h"
#include "window/Toolbox.h"

namespace tessaranth {

void showClasses(TourCamera& camera, const FormContext& context, MainWindow& window) {
    // The sub-category with the most recordings, whose recordings are in others too.
    const qint64 sub =
        context.session.connection()
            .single(QStringLiteral("SELECT RecSubCatID FROM RecSubCatJoin GROUP BY RecSubCatID "
                                   "ORDER BY COUNT(*) DESC"))
            .toInteger();
    const ClassTree::Place place{ItemKind::Recording, ClassTree::SubCategory, sub};
    frmClass manager(context, window);
    auto* tree = manager.findChild<ClassTree*>();
    tree->setPlace(place);
    camera.take(manager, QStringLiteral("class-items"));
    tree->setPlace({ItemKind::Recording, ClassTree::GlobalView, 0});
    camera.take(manager, QStringLiteral("class-global"));

    Classification classes(context.session, ItemKind::Recording);
    ItemList recordings;
    classes.items(sub, recordings);
    std::vector<qint64> ids;
    ids.reserve(size_t(recordings.rowCount()));
    for (int row = 0; row < recordings.rowCount(); ++row)
        ids.push_back(recordings.id(row));
    if (!ids.empty()) {
        frmClassItem several(classes, context.icons, ids, {});
        camera.take(several, QStringLiteral("class-several"));
        frmClassItem one(classes, context.icons, {ids.front()}, recordings.text(0, 0));
        camera.take(one, QStringLiteral("class-one"));
    }
    window.toolbox()->showBrowse(true);
    window.show();
    window.toolbox()->findChild<ClassTree*>()->setPlace(place);
    camera.take(window, QStringLiteral("browse"));
    window.toolbox()->showBrowse(false);
}

} // namespace tessaranth
