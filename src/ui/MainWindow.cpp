// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/MainWindow.h"

#include "items/forms/frmImportedCatalogs.h"
#include "items/forms/frmKeys.h"
#include "store/Session.h"
#include "ui/Commands.h"
#include "ui/IconStore.h"
#include "ui/ItemActions.h"
#include "ui/MaintenanceActions.h"
#include "ui/MdiArea.h"
#include "ui/Toolbox.h"
#include "ui/WindowState.h"
#include "ui/frmAbout.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QLabel>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>

namespace tessaranth {

MainWindow::MainWindow(Session& session, const IconStore& icons, QWidget* parent)
    : QMainWindow(parent), m_session(session), m_icons(icons) {
    setObjectName(QStringLiteral("mdiMain"));
    setWindowTitle(QStringLiteral("Tessaranth"));
    setWindowIcon(icons.icon(QStringLiteral("Violin")));
    buildUi();
    m_items = std::make_unique<ItemActions>(session, icons, *m_toolbox, *this, this);
    m_maintenance = std::make_unique<MaintenanceActions>(session, icons, this);
    m_maintenance->changed = [this] { m_toolbox->refresh(); };
    m_maintenance->restart = [this] { restart(); };
    m_maintenance->notice = [this](const QString& text) { showNotice(text); };
    buildCommands();
    WindowState::restore(*this, *m_dock, m_session.configuration());
}

MainWindow::~MainWindow() = default;

void MainWindow::buildUi() {
    m_area = new MdiArea(m_session.configuration().colour(QStringLiteral("MdiBack")),
                         m_icons.pixmap(QStringLiteral("Violin"), QSize(96, 96)), this);
    setCentralWidget(m_area);
    m_toolbox = new Toolbox(m_session, m_icons);
    m_dock = new QDockWidget(tr("Toolbox"), this);
    m_dock->setObjectName(QStringLiteral("dockToolbox"));
    m_dock->setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    m_dock->setWidget(m_toolbox);
    addDockWidget(Qt::LeftDockWidgetArea, m_dock);
    auto* path = new QLabel(m_session.databasePath());
    path->setTextFormat(Qt::PlainText);
    path->setToolTip(tr("The catalog that is open"));
    statusBar()->addPermanentWidget(path);
}

void MainWindow::buildCommands() {
    const QString file = tr("&File");
    const QString view = tr("&View");
    const QString lists = tr("&Tools") + u'/' + tr("Internal &lists import");
    const QString manage = tr("&Manage");
    const QString utility = tr("&Tools") + u'/' + tr("&Utility");
    const QString help = tr("&Help");
    MaintenanceActions& care = *m_maintenance;
    std::vector<Command> table{
        {"mnuFileCps", file, tr("New &composer..."), "Add new composer to collection", "c", "Ctrl+1",
         [this] { m_items->create(ItemKind::Composer); }, "New Composer"},
        {"mnuFilePfr", file, tr("New &performer..."), "Add new performer to collection", "p", "Ctrl+2",
         [this] { m_items->create(ItemKind::Performer); }, "New Performer"},
        {{}, file, {}, {}, {}, {}, {}, {}},
        {"mnuFileExit", file, tr("E&xit"), "Close the program", "Exit", "Ctrl+Q", [this] { close(); }, {}},
        {"mnuViewToolbox",
         view,
         tr("&Toolbox"),
         tr("Show or hide the toolbox"),
         "Table",
         "F9",
         [this] { m_dock->setVisible(!m_dock->isVisible()); },
         {}},
        {"mnuToolsBatchImportCps",
         lists,
         tr("Import multiple &composers..."),
         "Import multiple composers",
         "c",
         "",
         [this] { m_items->importMany(ItemKind::Composer); },
         {}},
        {"mnuToolsBatchImportPfr",
         lists,
         tr("Import multiple &performers..."),
         "Import multiple performers",
         "p",
         "",
         [this] { m_items->importMany(ItemKind::Performer); },
         {}},
        {"mnuToolsCatalogsList",
         tr("&Tools"),
         tr("&List imported composers catalogs..."),
         "List imported composers catalogs",
         "Catalog",
         "",
         [this] { frmImportedCatalogs(m_session, m_icons, this).exec(); },
         {}},
        {"mnuToolsKeys",
         tr("&Tools"),
         tr("&Key names..."),
         tr("Rename the musical keys"),
         "Clef",
         "",
         [this] { frmKeys(m_session, m_icons, this).exec(); },
         {}},
        {"mnuToolsCleanup",
         utility,
         tr("Database &cleanup..."),
         "Database cleanup",
         "",
         "",
         [&care] { care.cleanup(); },
         {}},
        {"mnuToolsCompact",
         utility,
         tr("C&ompact the catalog"),
         tr("Give back the free space in the file"),
         "",
         "",
         [&care] { care.compact(); },
         {}},
        {"mnuToolsBackup",
         utility,
         tr("&Back up the catalog"),
         tr("Write Tessaranth.bak beside the program"),
         "",
         "",
         [&care] { care.backup(); },
         {}},
        {"mnuToolsCopy",
         utility,
         tr("Co&py the catalog"),
         tr("Copy the catalog to the folder of the settings"),
         "",
         "",
         [&care] { care.copyToDestination(); },
         {}},
        {{}, utility, {}, {}, {}, {}, {}, {}},
        {"mnuToolsEmpty",
         utility,
         tr("&Empty the catalog..."),
         tr("Delete every card of the catalog"),
         "",
         "",
         [&care] { care.empty(); },
         {}},
        {"mnuManageGenres", manage, tr("&Genres..."), "Manage global genres", "Genre", "",
         [this] { m_items->manage(ItemKind::Genre); }, "Manage Genres"},
        {"mnuManageLabels", manage, tr("&Labels..."), "Manage labels", "Label", "",
         [this] { m_items->manage(ItemKind::Label); }, "Manage Labels"},
        {"mnuManageSupports", manage, tr("&Supports..."), "Manage supports", "Support", "",
         [this] { m_items->manage(ItemKind::Support); }, "Manage Supports"},
        {"mnuManageSources", manage, tr("S&ources..."), "Manage sources", "Source", "",
         [this] { m_items->manage(ItemKind::Source); }, "Manage Sources"},
        {"mnuHelpAbout",
         help,
         tr("&About Tessaranth"),
         "About Tessaranth",
         "Violin",
         "",
         [this] { showAbout(); },
         {}}};
    m_commands = std::make_unique<Commands>(std::move(table), m_icons, this);
    m_commands->fillMenus(menuBar());
    auto* bar = addToolBar(tr("New"));
    bar->setObjectName(QStringLiteral("tbrFiles"));
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_commands->fillToolBar(bar);
}

// There is no card window yet that could be open.
void MainWindow::openCard(const QString&, qint64) {}
void MainWindow::closeCard(const QString&) {}
void MainWindow::reloadCard(const QString&) {}

void MainWindow::comeForward() {
    setWindowState((windowState() & ~Qt::WindowMinimized) | Qt::WindowActive);
    raise();
    activateWindow();
}

void MainWindow::showNotice(const QString& text) { statusBar()->showMessage(text, 10000); }

void MainWindow::showAbout() { frmAbout(m_session, m_icons, this).exec(); }

void MainWindow::restart() {
    m_restarting = true;
    close();
    QApplication::exit(restartCode);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    Question question;
    question.title = applicationTitle;
    question.text = QStringLiteral("Exit the program?");
    question.buttons = {Answer::Yes, Answer::No};
    question.defaultButton = Answer::Yes;
    if (!m_restarting && m_session.messages().ask(question) != Answer::Yes) {
        event->ignore();
        return;
    }
    WindowState::save(*this, *m_dock, m_session.configuration());
    event->accept();
}

} // namespace tessaranth
