// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tour/Tour.h"

#include "app/tour/AttachTour.h"
#include "app/tour/CardTour.h"
#include "app/tour/ClassTour.h"
#include "app/tour/DocumentTour.h"
#include "app/tour/ImagesTour.h"
#include "app/tour/RecordingListsTour.h"
#include "app/tour/RecordingTour.h"
#include "app/tour/SettingsTour.h"
#include "app/tour/TourCamera.h"
#include "app/tour/WindowTour.h"
#include "items/ItemKind.h"
#include "items/forms/frmListChooser.h"
#include "items/forms/frmListManager.h"
#include "items/forms/frmMigrate.h"
#include "items/forms/frmPers.h"
#include "items/forms/frmPersSearch.h"
#include "store/Session.h"
#include "widgets/Appearance.h"
#include "widgets/ItemListModel.h"
#include "widgets/frmCharmap.h"
#include "widgets/frmInput.h"
#include "window/MainWindow.h"
#include "window/Toolbox.h"
#include "window/frmAbout.h"
#include "window/frmCleanup.h"
#include "works/forms/CatalogTree.h"
#include "works/forms/frmAssign.h"
#include "works/forms/frmCatalog.h"
#include "works/forms/frmImportedCatalogs.h"
#include "works/forms/frmKeys.h"
#include "works/forms/frmWorkEditor.h"

#include <QLineEdit>
#include <QTabWidget>
#include <QTreeView>

namespace tessaranth {

namespace {

void showLists(TourCamera& camera, MainWindow& window) {
    Toolbox& toolbox = *window.toolbox();
    for (const ItemKind& kind : itemKinds()) {
        if (!kind.isCard())
            continue;
        toolbox.showKind(kind.number);
        camera.take(window, QStringLiteral("list-") + kind.code);
    }
    toolbox.showKind(ItemKind::Composer);
    auto* filter = toolbox.findChild<QLineEdit*>(QStringLiteral("txtFilter"));
    filter->setText(QStringLiteral("b"));
    camera.waitForTyping();
    camera.take(window, QStringLiteral("list-filtered"));
    filter->setText(QStringLiteral("nobody is called so"));
    camera.waitForTyping();
    camera.take(window, QStringLiteral("list-no-match"));
    filter->clear();
    camera.waitForTyping();
    toolbox.view()->sortByColumn(0, Qt::DescendingOrder);
    camera.take(window, QStringLiteral("list-descending"));
    toolbox.view()->sortByColumn(-1, Qt::AscendingOrder);
}

void showPersons(TourCamera& camera, const FormContext& context, Toolbox& toolbox) {
    for (const int kind : {ItemKind::Composer, ItemKind::Performer}) {
        toolbox.showKind(kind);
        const ItemListModel& list = *toolbox.model();
        const qint64 first = list.id(list.index(list.rowCount() / 2, 0));
        const QString code = itemKind(kind)->code;
        frmPers editor(context, kind, first);
        camera.take(editor, QStringLiteral("editor-") + code);
        frmPersSearch search(context, kind, QStringLiteral("ba"));
        camera.take(search, QStringLiteral("archive-") + code);
        frmPersSearch many(context, kind, {}, nullptr, frmPersSearch::Mode::ImportMany);
        camera.take(many, QStringLiteral("archive-many-") + code);
        frmMigrate merge(context, kind, first, nullptr);
        camera.take(merge, QStringLiteral("merge-") + code);
    }
}

void showLookupLists(TourCamera& camera, const FormContext& context) {
    for (const ItemKind& kind : itemKinds()) {
        if (kind.isCard())
            continue;
        frmListManager manager(context, kind.number, nullptr);
        camera.take(manager, QStringLiteral("manage-") + kind.code);
    }
    frmListChooser labels(context, ItemKind::Label, QStringLiteral("  Labels list"), false);
    camera.take(labels, QStringLiteral("choose-Label"));
    frmListChooser persons(context, ItemKind::Composer, QStringLiteral("  Composers list"), true);
    auto* text = persons.findChild<QLineEdit*>(QStringLiteral("txtFilter"));
    text->setText(QStringLiteral("b"));
    camera.take(persons, QStringLiteral("choose-Cps"));
    text->setText(QStringLiteral("nobody is called so"));
    camera.take(persons, QStringLiteral("choose-no-match"));
}

// The composer with the most works, once with all of them and once with those of a genre.
void showCatalog(TourCamera& camera, const FormContext& context) {
    const qint64 composer =
        context.session.connection()
            .single(QStringLiteral("SELECT CpsID FROM Compositions GROUP BY CpsID ORDER BY Count(*) DESC"))
            .toInteger();
    frmCatalog catalog(context, composer, nullptr);
    camera.take(catalog, QStringLiteral("catalog"));
    auto* tree = catalog.findChild<CatalogTree*>();
    tree->setCurrentItem(tree->topLevelItem(0)->child(0));
    camera.take(catalog, QStringLiteral("catalog-genre"));
    ComposerCatalog works(context.session, composer);
    frmAssign assign(works, catalogBranches().front(), context.icons);
    camera.take(assign, QStringLiteral("catalog-assign"));
    frmImportedCatalogs imported(context, nullptr);
    camera.take(imported, QStringLiteral("imported-catalogs"));
}

// A work with characters where there is one, tab by tab.
void showWorks(TourCamera& camera, const FormContext& context) {
    Query run = context.session.connection().query(
        QStringLiteral("SELECT CompID, CpsID FROM Compositions ORDER BY Pers DESC, CompID"));
    if (!run.next())
        return;
    frmWorkEditor editor(context, run.integer(1), run.integer(0));
    auto* tabs = editor.findChild<QTabWidget*>();
    for (int tab = 0; tab < tabs->count(); ++tab) {
        tabs->setCurrentIndex(tab);
        camera.take(editor, QStringLiteral("work-%1").arg(tab + 1));
    }
    frmWorkEditor fresh(context, run.integer(1), 0);
    camera.take(fresh, QStringLiteral("work-new"));
    frmKeys keys(context);
    camera.take(keys, QStringLiteral("keys"));
}

void showWindows(TourCamera& camera, const FormContext& context, MainWindow& window) {
    showLists(camera, window);
    tourWindow(camera, context.session, window);
    showPersons(camera, context, *window.toolbox());
    showLookupLists(camera, context);
    showCatalog(camera, context);
    showWorks(camera, context);
    tourRecordings(camera, context);
    tourCards(camera, context);
    tourRecordingLists(camera, context);
    tourImages(camera, context, window);
    tourDocuments(camera, context, window);
    tourAttachments(camera, context);
    showClasses(camera, context, window);
    tourSettings(camera, context, window);
    frmCharmap charmap(context.icons);
    camera.take(charmap, QStringLiteral("charmap"));
    frmInput input({QStringLiteral("  New genre"), QStringLiteral("Add a new global genre"),
                    QStringLiteral("Genre name"), QStringLiteral("Add"), QStringLiteral("Genre"), QString()},
                   &context.icons);
    camera.take(input, QStringLiteral("name-input"));
    frmCleanup cleanup(context);
    camera.take(cleanup, QStringLiteral("cleanup"));
    frmAbout about(context);
    camera.take(about, QStringLiteral("about"));
}

} // namespace

QStringList runTour(const FormContext& context, const QString& folder, const TourVisit& visit) {
    Configuration& configuration = context.session.configuration();
    const QString section = QStringLiteral("Misc");
    const QString key = QStringLiteral("Look");
    const QString own = configuration.read(section, key);
    QStringList files;
    for (const QString& look : lookWords()) {
        configuration.write(section, key, look);
        applyLook(configuration.look());
        MainWindow window(context);
        window.resize(1180, 760);
        TourCamera camera(folder + u'/' + look.toLower(), visit);
        showWindows(camera, context, window);
        files += camera.files();
    }
    configuration.write(section, key, own);
    applyLook(configuration.look());
    return files;
}

} // namespace tessaranth
