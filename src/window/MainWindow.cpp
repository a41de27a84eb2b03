// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/MainWindow.h"

#include "attachments/CardDocuments.h"
#include "attachments/forms/ImagesPanel.h"
#include "attachments/forms/frmPic.h"
#include "items/ItemKind.h"
#include "platform/AppFolder.h"
#include "store/Session.h"
#include "text/RichText.h"
#include "widgets/Appearance.h"
#include "widgets/DialogSizes.h"
#include "widgets/Help.h"
#include "widgets/IconStore.h"
#include "widgets/TabStrip.h"
#include "window/BrowseTree.h"
#include "window/CardWindows.h"
#include "window/Commands.h"
#include "window/ItemActions.h"
#include "window/MaintenanceActions.h"
#include "window/MdiArea.h"
#include "window/OutsideCommands.h"
#include "window/Toolbox.h"
#include "window/WindowState.h"
#include "window/frmItem.h"
#include "works/forms/frmWork.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QDockWidget>
#include <QLabel>
#include <QMenu>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>

namespace tessaranth {

MainWindow::MainWindow(const FormContext& context, QWidget* parent)
    : QMainWindow(parent), m_context(context) {
    setObjectName(QStringLiteral("mdiMain"));
    setWindowTitle(QStringLiteral("Tessaranth"));
    setWindowIcon(context.icons.icon(QStringLiteral("Violin")));
    new DialogSizes(context.session.arrangements(), this);
    m_context.keepDocument = [this](const QString& code, qint64 id, const QString& text,
                                    const QString& title) {
        CardDocuments(m_context.session, {code, id}).add(RichText::fromText(text), title);
    };
    buildUi();
    buildCards();
    m_items = std::make_unique<ItemActions>(m_context, *m_toolbox, *this, this);
    m_maintenance = std::make_unique<MaintenanceActions>(m_context, this);
    m_maintenance->changed = [this] {
        m_toolbox->refresh();
        m_cards->reloadAll();
    };
    m_maintenance->restart = [this] { restart(); };
    m_maintenance->notice = [this](const QString& text) { showNotice(text); };
    m_outside = std::make_unique<OutsideCommands>(context.session, *m_cards);
    m_help = std::make_unique<Help>(context.session, shareFolder() + QStringLiteral("/help"));
    buildCommands();
    WindowState::restore(*this, *m_dock, m_context.session.configuration());
    m_toolbox->focusFilter(); // whoever starts the program begins to type
}

MainWindow::~MainWindow() {
    // The area closes its windows when it goes, later than what would be told of it.
    disconnect(m_cards.get(), nullptr, this, nullptr);
}

void MainWindow::buildUi() {
    auto* middle = new QWidget;
    auto* column = new QVBoxLayout(middle);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    m_tabs = new TabStrip;
    column->addWidget(m_tabs);
    m_area = new MdiArea(m_context.session.configuration().colour(QStringLiteral("MdiBack")),
                         m_context.icons.pixmap(QStringLiteral("Violin"), QSize(96, 96)));
    column->addWidget(m_area, 1);
    setCentralWidget(middle);
    m_toolbox = new Toolbox(m_context);
    m_dock = new QDockWidget(tr("Toolbox"), this);
    m_dock->setObjectName(QStringLiteral("dockToolbox"));
    m_dock->setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    m_dock->setWidget(m_toolbox);
    addDockWidget(Qt::LeftDockWidgetArea, m_dock);
    auto* path = new QLabel(m_context.session.databasePath());
    path->setTextFormat(Qt::PlainText);
    path->setToolTip(tr("The catalog that is open"));
    statusBar()->addPermanentWidget(path);
}

void MainWindow::buildCards() {
    m_cards = std::make_unique<CardWindows>(m_context, m_area, m_tabs);
    for (const ItemKind& kind : itemKinds())
        if (kind.isCard())
            m_cards->setFactory(kind.code, [this](const CardContext& context) { return makeCard(context); });
    m_cards->setFactory(QStringLiteral("Comp"),
                        [](const CardContext& context) { return new frmWork(context); });
    connect(m_toolbox, &Toolbox::activated, this,
            [this](qint64 id) { openCard(itemKind(m_toolbox->kind())->code, id); });
}

void MainWindow::buildCommands() {
    m_commands =
        std::make_unique<Commands>(commandTable(),
                                   CommandFrame{m_context, this, m_dock, *m_items, *m_maintenance, *m_cards,
                                                *m_outside, *m_help, *this, [this] { applySettings(); }},
                                   this);
    m_commands->fillMenus();
    m_commands->addToolBars();
    QMenu* window = m_commands->menu(QStringLiteral("mnuWindow"));
    QMenu* bars = window->addMenu(tr("Tool &bars"));
    for (const BarRow& row : barTable())
        bars->addAction(m_commands->toolBar(row.bar)->toggleViewAction());
    connect(window, &QMenu::aboutToShow, this, [this, window] { m_cards->list(window); });
    connect(m_cards.get(), &CardWindows::activeChanged, this, [this] { m_commands->follow(); });
    connect(m_cards.get(), &CardWindows::contextMenuAsked, this,
            [this](const ChildWindow* card, const QPoint& position) {
                if (QMenu* menu = m_commands->menu(contextMenuOf(card->kind(), card->panel())))
                    menu->popup(position);
            });
    m_commands->follow();
}

ChildWindow* MainWindow::makeCard(const CardContext& context) {
    auto* card = new frmItem(context);
    if (auto* images = card->findChild<ImagesPanel*>())
        connect(images, &ImagesPanel::openPictures, this, [this](const QString& code, qint64 id, int index) {
            m_cards->add(new frmPic(m_context, CardOwner{code, id}, index));
        });
    return card;
}

void MainWindow::openCard(const QString& code, qint64 id) { m_cards->openCard(code, id); }
void MainWindow::closeCard(const QString& key) { m_cards->closeCard(key); }
void MainWindow::reloadCard(const QString& key) {
    m_cards->reloadCard(key);
    m_toolbox->browse().cardChanged();
}

void MainWindow::comeForward() {
    setWindowState((windowState() & ~Qt::WindowMinimized) | Qt::WindowActive);
    raise();
    activateWindow();
}

void MainWindow::showNotice(const QString& text) { statusBar()->showMessage(text, 10000); }

void MainWindow::applySettings() {
    const Configuration& configuration = m_context.session.configuration();
    applyLook(configuration.look());
    m_area->setBackground(configuration.colour(QStringLiteral("MdiBack")));
    m_dock->setVisible(configuration.flag(QStringLiteral("Toolbox"), QStringLiteral("Visible")));
    m_toolbox->refresh();
    m_cards->reloadAll();
}

void MainWindow::restart() {
    m_restarting = true;
    if (close())
        QApplication::exit(restartCode);
    m_restarting = false;
}

void MainWindow::closeEvent(QCloseEvent* event) {
    Question question;
    question.title = applicationTitle;
    question.text = QStringLiteral("Exit the program?");
    question.buttons = {Answer::Yes, Answer::No};
    question.defaultButton = Answer::Yes;
    if ((!m_restarting && m_context.session.messages().ask(question) != Answer::Yes) ||
        !m_cards->closeAll()) {
        event->ignore();
        return;
    }
    for (QDialog* beside : findChildren<QDialog*>(QString(), Qt::FindDirectChildrenOnly))
        beside->close();
    m_toolbox->saveColumns();
    WindowState::save(*this, *m_dock, m_context.session.configuration());
    event->accept();
}

} // namespace tessaranth
