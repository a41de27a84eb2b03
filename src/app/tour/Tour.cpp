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

void showPersons(TourCamera& camera, Session& session, const IconStore& icons, Toolbox& toolbox) {
    for (const int kind : {ItemKind::Composer, ItemKind::Performer}) {
        toolbox.showKind(kind);
        const ItemListModel& list = *toolbox.model();
        const qint64 first = list.id(list.index(list.rowCount() / 2, 0));
        const QString code = itemKind(kind)->code;
        frmPers editor(session, icons, kind, first);
        camera.take(editor, QStringLiteral("editor-") + code);
        frmPersSearch search(session, icons, kind, QStringLiteral("ba"));
        camera.take(search, QStringLiteral("archive-") + code);
        frmPersSearch many(session, icons, kind, {}, nullptr, frmPersSearch::Mode::ImportMany);
        camera.take(many, QStringLiteral("archive-many-") + code);
        frmMigrate merge(session, icons, kind, first, nullptr);
        camera.take(merge, QStringLiteral("merge-") + code);
    }
}

void showLookupLists(TourCamera& camera, Session& session, const IconStore& icons) {
    for (const ItemKind& kind : itemKinds()) {
        if (kind.isCard())
            continue;
        frmListManager manager(session, icons, kind.number, nullptr);
        camera.take(manager, QStringLiteral("manage-") + kind.code);
    }
    frmListChooser labels(session, icons, ItemKind::Label, QStringLiteral("  Labels list"), false);
    camera.take(labels, QStringLiteral("choose-Label"));
    frmListChooser persons(session, icons, ItemKind::Composer, QStringLiteral("  Composers list"), true);
    auto* text = persons.findChild<QLineEdit*>(QStringLiteral("txtFilter"));
    text->setText(QStringLiteral("b"));
    camera.take(persons, QStringLiteral("choose-Cps"));
    text->setText(QStringLiteral("nobody is called so"));
    camera.take(persons, QStringLiteral("choose-no-match"));
}

// The composer with the most works, once with all of them and once with those of a genre.
void showCatalog(TourCamera& camera, Session& session, const IconStore& icons) {
    const qint64 composer =
        session.connection()
            .single(QStringLiteral("SELECT CpsID FROM Compositions GROUP BY CpsID ORDER BY Count(*) DESC"))
            .toInteger();
    frmCatalog catalog(session, icons, composer);
    camera.take(catalog, QStringLiteral("catalog"));
    auto* tree = catalog.findChild<CatalogTree*>();
    tree->setCurrentItem(tree->topLevelItem(0)->child(0));
    camera.take(catalog, QStringLiteral("catalog-genre"));
    ComposerCatalog works(session, composer);
    frmAssign assign(works, catalogBranches().front(), icons);
    camera.take(assign, QStringLiteral("catalog-assign"));
    frmImportedCatalogs imported(session, icons);
    camera.take(imported, QStringLiteral("imported-catalogs"));
}

// A work with characters where there is one, tab by tab.
void showWorks(TourCamera& camera, Session& session, const IconStore& icons) {
    Query run = session.connection().query(
        QStringLiteral("SELECT CompID, CpsID FROM Compositions ORDER BY Pers DESC, CompID"));
    if (!run.next())
        return;
    frmWorkEditor editor(session, icons, run.integer(1), run.integer(0));
    auto* tabs = editor.findChild<QTabWidget*>();
    for (int tab = 0; tab < tabs->count(); ++tab) {
        tabs->setCurrentIndex(tab);
        camera.take(editor, QStringLiteral("work-%1").arg(tab + 1));
    }
    frmWorkEditor fresh(session, icons, run.integer(1), 0);
    camera.take(fresh, QStringLiteral("work-new"));
    frmKeys keys(session, icons);
    camera.take(keys, QStringLiteral("keys"));
}

void showWindows(TourCamera& camera, Session& session, const IconStore& icons, MainWindow& window) {
    showLists(camera, window);
    tourWindow(camera, session, window);
    showPersons(camera, session, icons, *window.toolbox());
    showLookupLists(camera, session, icons);
    showCatalog(camera, session, icons);
    showWorks(camera, session, icons);
    tourRecordings(camera, session, icons);
    tourCards(camera, session, icons);
    tourRecordingLists(camera, session, icons);
    tourImages(camera, session, icons, window);
    tourDocuments(camera, session, icons, window);
    tourAttachments(camera, session, icons);
    showClasses(camera, session, icons, window);
    tourSettings(camera, session, icons, window);
    frmCharmap charmap(icons);
    camera.take(charmap, QStringLiteral("charmap"));
    frmInput input({QStringLiteral("  New genre"), QStringLiteral("Add a new global genre"),
                    QStringLiteral("Genre name"), QStringLiteral("Add"), QStringLiteral("Genre"), QString()},
                   &icons);
    camera.take(input, QStringLiteral("name-input"));
    frmCleanup cleanup(session, icons);
    camera.take(cleanup, QStringLiteral("cleanup"));
    frmAbout about(session, icons);
    camera.take(about, QStringLiteral("about"));
}

} // namespace

QStringList runTour(Session& session, const IconStore& icons, const QString& folder, const TourVisit& visit) {
    Configuration& configuration = session.configuration();
    const QString section = QStringLiteral("Misc");
    const QString key = QStringLiteral("Look");
    const QString own = configuration.read(section, key);
    QStringList files;
    for (const QString& look : lookWords()) {
        configuration.write(section, key, look);
        applyLook(configuration.look());
        MainWindow window(session, icons);
        window.resize(1180, 760);
        TourCamera camera(folder + u'/' + look.toLower(), visit);
        showWindows(camera, session, icons, window);
        files += camera.files();
    }
    configuration.write(section, key, own);
    applyLook(configuration.look());
    return files;
}

} // namespace tessaranth
