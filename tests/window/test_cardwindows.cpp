// SPDX-License-Identifier: GPL-3.0-or-later
#include "attachments/forms/frmPic.h"
#include "classes/forms/frmClass.h"
#include "items/ItemKind.h"
#include "support/FakeDesktop.h"
#include "support/TestHome.h"
#include "support/Writing.h"
#include "widgets/IconStore.h"
#include "widgets/ItemListModel.h"
#include "widgets/TabStrip.h"
#include "window/CardWindows.h"
#include "window/Commands.h"
#include "window/MainWindow.h"
#include "window/Toolbox.h"

#include <QAction>
#include <QCloseEvent>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QTreeView>

using namespace tessaranth;

namespace {

struct FakeWindow final : ChildWindow {
    FakeWindow(Kind kind, const QString& key) : m_kind(kind), m_key(key) {
        setWindowTitle("Simon & Sons " + key);
    }
    Kind kind() const override { return m_kind; }
    QString key() const override { return m_key; }
    QString iconKey() const override { return "c"; }
    bool reload() override { return true; }
    bool knows(const QString& key) const override { return commands.contains(key); }
    bool canRun(const QString& key) const override { return knows(key); }
    void run(const QString& key) override { ran << key; }
    void closeEvent(QCloseEvent* event) override { event->setAccepted(mayClose); }

    Kind m_kind;
    QString m_key;
    QStringList commands, ran;
    bool mayClose = true;
};

} // namespace

class TestCardWindows : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void sameCardTwiceIsOneWindow();
    void noWindowDisablesTheCommands();
    void activeWindowCarriesOut();
    void windowsAreArrangedAndClosed();
    void manyWindowsStayUsable();
    void cardsOfTheToolbox();
    void whatHangsOffACardGoesWithIt();
    void classificationsStandBesideTheCards();
    void shortcutsAndKeysAreUnique();
    void keysGoToThePartWithTheFocus_data();
    void keysGoToThePartWithTheFocus();
    void searchesOpenInTheBrowser_data();
    void searchesOpenInTheBrowser();

private:
    QAction* action(const char* key) const { return m_window->commands().action(key); }
    CardWindows& cards() const { return m_window->cards(); }
    TabStrip* tabs() const { return m_window->findChild<TabStrip*>("tabStrip"); }
    FakeWindow* add(ChildWindow::Kind kind, const QString& key) const {
        auto* window = new FakeWindow(kind, key);
        cards().add(window);
        return window;
    }

    std::unique_ptr<TestHome> m_home;
    std::unique_ptr<IconStore> m_icons;
    std::unique_ptr<MainWindow> m_window;
};

using Kind = ChildWindow::Kind;

void TestCardWindows::init() {
    m_home = std::make_unique<TestHome>();
    m_home->useSample();
    QVERIFY(m_home->start().started);
    m_icons = std::make_unique<IconStore>(m_home->file("tsrthres.dll"));
    m_window = std::make_unique<MainWindow>(FormContext{*m_home->session, *m_icons});
    m_window->resize(1200, 800);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void TestCardWindows::cleanup() {
    m_window.reset();
    m_icons.reset();
    m_home.reset();
}

void TestCardWindows::sameCardTwiceIsOneWindow() {
    m_window->openCard("Cps", 1);
    const ChildWindow* first = cards().active();
    m_window->openCard("Rec", 1);
    QCOMPARE(cards().active()->key(), "#Rec1");
    m_window->openCard("Cps", 1);
    QCOMPARE(cards().active(), first);
    QCOMPARE(cards().count(), 2);
    QCOMPARE(tabs()->count(), 2);
    QCOMPARE(tabs()->currentIndex(), 0);
    m_window->openCard("Cps", 99999); // deleted meanwhile
    QCOMPARE(m_home->messages.told.back(), "This card has been deleted.");
    QTest::mouseClick(tabs(), Qt::MiddleButton, {}, tabs()->tabRect(1).center());
    QCOMPARE(cards().count(), 1);
    m_window->closeCard("#Cps1");
    QCOMPARE(tabs()->count(), 0);
    QVERIFY(!cards().active());
}

void TestCardWindows::noWindowDisablesTheCommands() {
    const auto expectNone = [this] {
        for (const Command& command : commandTable())
            if (command.when != When::Always && command.when != When::Menu && *command.key)
                QVERIFY2(!action(command.key)->isEnabled(), command.key);
        for (const char* menu : {"mnuCard", "mnuShow", "mnuCardImages", "mnuToolsGoogle"})
            QVERIFY2(!action(menu)->isEnabled(), menu);
        for (const QAction* button : m_window->commands().toolBar(Bar::Card)->actions())
            QVERIFY(!button->isEnabled());
    };
    expectNone();
    m_window->openCard("Cps", 1);
    QVERIFY(action("mnuCard")->isEnabled() && action("mnuShow")->isEnabled());
    cards().closeAll();
    expectNone();
}

void TestCardWindows::activeWindowCarriesOut() {
    FakeWindow* card = add(Kind::Card, "#Cps7");
    QVERIFY(!action("mnuCardImagesBack")->isEnabled());
    card->commands = QStringList{"mnuCardImagesBack"};
    emit card->changed();
    auto* button = m_window->findChild<QToolButton*>("Back1");
    QVERIFY(button->isEnabled());
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(card->ran, QStringList("mnuCardImagesBack"));
    add(Kind::Picture, "#Pic1");
    QVERIFY(!button->isEnabled() && !action("mnuToolsAmazon")->isEnabled());

    m_window->openCard("Pfr", 1);
    action("mnuShowMedia")->trigger();
    QCOMPARE(cards().active()->panel(), "Media");
    QVERIFY(action("mnuShowMedia")->isChecked() && !action("mnuShowRec")->isChecked());
    QVERIFY(!action("mnuCardCompManageAdd")->isEnabled() && !action("mnuShowRecContents")->isEnabled());
}

void TestCardWindows::windowsAreArrangedAndClosed() {
    for (int i = 1; i <= 3; ++i)
        add(Kind::Card, QString("#Cps%1").arg(i));
    add(Kind::Work, "#Comp1");
    FakeWindow* picture = add(Kind::Picture, "#Pic1");
    auto* area = m_window->findChild<QMdiArea*>("mdiArea");
    for (const char* key : {"mnuWindowTileH", "mnuWindowTileV"}) {
        action(key)->trigger();
        QRegion covered;
        for (const QMdiSubWindow* frame : area->subWindowList()) {
            QVERIFY(covered.intersected(frame->geometry()).isEmpty());
            covered += frame->geometry();
        }
        QCOMPARE(covered.boundingRect(), area->viewport()->rect());
    }
    action("mnuWindowTileC")->trigger();
    QVERIFY(area->subWindowList()[0]->geometry().intersects(area->subWindowList()[1]->geometry()));
    action("mnuWindowFit")->trigger();
    QVERIFY(area->activeSubWindow()->isMaximized());
    QTest::keyClick(m_window.get(), Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(cards().active()->key(), "#Cps1"); // round to the first

    QMenu* menu = m_window->commands().menu("mnuWindow");
    emit menu->aboutToShow();
    emit menu->aboutToShow(); // listed anew, not twice
    QCOMPARE(menu->actions().back()->text(), "&5  Simon && Sons #Pic1");
    QCOMPARE(menu->actions()[menu->actions().size() - 5]->isChecked(), true);

    picture->mayClose = false;
    m_home->messages.willAnswer(Answer::Yes);
    QVERIFY(!m_window->close());
    picture->mayClose = true;
    cards().closeAll();
    for (const auto& [key, kind] :
         {std::pair("mnuWindowPic", Kind::Picture), std::pair("mnuWindowCards", Kind::Card),
          std::pair("mnuWindowWorks", Kind::Work)}) {
        add(Kind::Picture, "#Pic2");
        add(Kind::Card, "#Rec2");
        add(Kind::Work, "#Comp2");
        action(key)->trigger();
        QCOMPARE(cards().count(kind), 0);
        QCOMPARE(cards().count(), 2);
        QVERIFY(!action(key)->isEnabled());
    }
    action("mnuWindowCurrent")->trigger();
    QCOMPARE(cards().count(), 1);
    action("mnuWindowAll")->trigger();
    QCOMPARE(cards().count(), 0);
}

void TestCardWindows::manyWindowsStayUsable() {
    for (int i = 0; i < 200; ++i)
        add(Kind::Card, QString("#Cps%1").arg(i));
    QCOMPARE(tabs()->count(), 200);
    QVERIFY(m_window->width() <= 1200);
    QMenu* menu = m_window->commands().menu("mnuWindow");
    emit menu->aboutToShow();
    QVERIFY(menu->actions().size() < 40);
    QCOMPARE(menu->actions().back()->menu()->actions().size(), 188);
    menu->actions().back()->menu()->actions().front()->trigger();
    QCOMPARE(cards().active()->key(), "#Cps12");
    QVERIFY(cards().closeAll());
    QVERIFY(!tabs()->isVisible());
}

void TestCardWindows::cardsOfTheToolbox() {
    QTreeView* view = m_window->toolbox()->view();
    view->setFocus();
    view->selectAll();
    QTest::keyClick(view, Qt::Key_Home);
    QTest::keyClick(view, Qt::Key_Return);
    QVERIFY(cards().active()->key().startsWith("#Cps"));
    QTest::keyClick(view, Qt::Key_Down, Qt::ShiftModifier);
    m_window->findChild<QAction*>("mnuToolboxGoto")->trigger();
    QCOMPARE(cards().count(), 2);

    auto* filter = m_window->findChild<QAction*>("mnuToolboxFilter");
    auto* remove = m_window->findChild<QAction*>("mnuToolboxFilterRemove");
    filter->trigger();
    auto* text = m_window->findChild<QLineEdit*>("txtFilter");
    QVERIFY(text->hasFocus() && !remove->isEnabled());
    const int all = view->model()->rowCount();
    QTest::keyClicks(text, "bach");
    QTRY_VERIFY(remove->isEnabled());
    QCOMPARE(filter->iconText(), QString::fromUtf8("Filter «"));
    remove->trigger();
    QCOMPARE(view->model()->rowCount(), all);
    QCOMPARE(filter->iconText(), "Filter");
}

void TestCardWindows::whatHangsOffACardGoesWithIt() {
    Connection& connection = m_home->session->connection();
    const auto workOf = [&connection](int composer, const char* which) {
        return connection
            .single(QString("SELECT %1(CompID) FROM Compositions WHERE CpsID = %2").arg(which).arg(composer))
            .toInteger();
    };
    const qint64 first = workOf(1, "MIN");
    const qint64 last = workOf(1, "MAX");
    const qint64 kept = workOf(2, "MIN");
    QVERIFY(first != 0 && first != last && kept != 0);
    for (const qint64 work : {first, last, kept})
        m_window->openCard("Comp", work);
    for (int composer = 1; composer <= 2; ++composer) {
        m_window->openCard("Cps", composer);
        cards().add(new frmPic({*m_home->session, *m_icons}, {"Cps", composer}, 0));
    }
    // The work's editor on a card whose work was deleted elsewhere says so and opens nothing.
    auto* stale = cards().window(OpenCards::key("Comp", last));
    write(connection, QString("DELETE FROM Compositions WHERE CompID = %1").arg(last));
    auto* recordings = stale->findChild<QTreeView*>("lvRec");
    cards().activate(stale->key());
    recordings->setFocus();
    QTest::keyClick(recordings, Qt::Key_F2);
    QCOMPARE(m_home->messages.told, QStringList("This work has been deleted meanwhile."));
    QVERIFY(!cards().window(OpenCards::key("Comp", last)));

    m_window->toolbox()->showKind(ItemKind::Composer);
    m_window->toolbox()->select(1);
    m_window->toolbox()->view()->setFocus();
    m_home->messages.willAnswer(Answer::Yes);
    QTest::keyClick(m_window->toolbox()->view(), Qt::Key_Delete);
    QVERIFY(!cards().window("#Cps1") && !cards().window(OpenCards::key("Comp", first)));
    QVERIFY(cards().window("#Cps2") && cards().window(OpenCards::key("Comp", kept)));
    QCOMPARE(cards().count(Kind::Picture), 1);
    QCOMPARE(tabs()->count(), 3);
}

void TestCardWindows::classificationsStandBesideTheCards() {
    for (int time = 0; time < 2; ++time)
        action("mnuToolsManageClass")->trigger();
    const QList<frmClass*> windows = m_window->findChildren<frmClass*>();
    QCOMPARE(windows.size(), 1);
    frmClass* classes = windows.front();
    classes->findChild<ClassTree*>()->setPlace({ItemKind::Recording, ClassTree::GlobalView, 0});
    auto* list = classes->findChild<QTreeView*>("LV");
    const int rows = list->model()->rowCount();
    emit list->activated(list->model()->index(0, 0));
    QCOMPARE(cards().count(), 1);
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    m_window->toolbox()->showKind(ItemKind::Recording);
    m_window->toolbox()->select(1);
    m_home->messages.willAnswer(Answer::Yes);
    m_window->findChild<QAction*>("mnuToolboxDelete")->trigger();
    QCOMPARE(m_window->toolbox()->model()->rowCount(), rows - 1);
    classes->activateWindow();
    QTRY_COMPARE(list->model()->rowCount(), rows - 1);
}

void TestCardWindows::shortcutsAndKeysAreUnique() {
    // A key of one list may mean the same in another, but none that the window has.
    QSet<QString> seen;
    for (const bool ofWindow : {true, false})
        for (const QAction* one : m_window->findChildren<QAction*>()) {
            const QString shortcut = one->shortcut().toString();
            if (shortcut.isEmpty() || (one->shortcutContext() == Qt::WindowShortcut) != ofWindow)
                continue;
            QVERIFY2(!seen.contains(shortcut), qPrintable(shortcut + ' ' + one->objectName()));
            if (ofWindow)
                seen.insert(shortcut);
        }
    for (const Command& command : commandTable()) {
        if (!*command.key)
            continue;
        QVERIFY2(!seen.contains(command.key), command.key);
        seen.insert(command.key);
        QVERIFY2(!*command.iconKey || !action(command.key)->icon().isNull(), command.key);
        QVERIFY2(command.bar == Bar::None || m_window->findChild<QToolButton*>(command.button), command.key);
        // Only the windows themselves may carry a command out that the table leaves empty.
        const bool isOwn =
            command.when == When::Target || command.when == When::Missing || command.when == When::Menu;
        QVERIFY2(isOwn != bool(command.call), command.key);
    }
}

void TestCardWindows::keysGoToThePartWithTheFocus_data() {
    QTest::addColumn<QString>("command"); // shows the panel
    QTest::addColumn<QString>("part");
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("answer"); // the form that comes, or the title of the file dialog
    QTest::newRow("pictures") << ""
                              << "picImage" << int(Qt::Key_Insert) << "Import Image";
    QTest::newRow("document") << ""
                              << "txtDocument" << int(Qt::Key_Insert) << "frmRTB";
    QTest::newRow("media") << "mnuShowMedia"
                           << "lvMedia" << int(Qt::Key_Insert) << "Add media files";
    QTest::newRow("web links") << "mnuShowWeb"
                               << "lvWeb" << int(Qt::Key_Insert) << "frmNewWeb";
    QTest::newRow("works") << "mnuShowComp"
                           << "lvComp" << int(Qt::Key_Insert) << "frmWorkEditor";
    // What is not possible now is nobody else's command: the tool box has a composer selected.
    QTest::newRow("no picture to delete") << ""
                                          << "picImage" << int(Qt::Key_Delete) << "";
    QTest::newRow("no file to rename") << "mnuShowMedia"
                                       << "lvMedia" << int(Qt::Key_F2) << "";
    QTest::newRow("tool box") << ""
                              << "lvItems" << int(Qt::Key_Insert) << "frmPers";
}

void TestCardWindows::keysGoToThePartWithTheFocus() {
    QFETCH(QString, command);
    QFETCH(QString, part);
    QFETCH(int, key);
    QTreeView* const list = m_window->toolbox()->view();
    list->setCurrentIndex(list->model()->index(0, 0));
    m_window->openCard("UserDef", 1);
    m_window->openCard("Cps", 1);
    if (!command.isEmpty())
        cards().active()->run(command);
    QWidget* const target = part == "lvItems" ? list : cards().active()->findChild<QWidget*>(part);
    QVERIFY(target && target->isVisible());
    target->setFocus();
    QCOMPARE(QApplication::focusWidget(), target);

    QString came;
    QTimer::singleShot(100, this, [&came] {
        if (QWidget* form = QApplication::activeModalWidget()) {
            came = form->objectName();
            form->close();
        }
    });
    if ((part == "picImage" || part == "lvMedia") && key == Qt::Key_Insert)
        m_home->messages.willChoose({});
    QTest::keyClick(target, Qt::Key(key));
    QTest::qWait(150);
    QTEST(came.isEmpty() && !m_home->messages.fileRequests.empty()
              ? m_home->messages.fileRequests.back().title
              : came,
          "answer");
}

void TestCardWindows::searchesOpenInTheBrowser_data() {
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("opened");
    QTest::newRow("pages") << "mnuToolsGoogleGeneric"
                           << "https://www.google.com/search?q=Dvořák+Antonín";
    QTest::newRow("images") << "mnuToolsGoogleImages"
                            << "https://images.google.com/images?q=Dvořák+Antonín";
    QTest::newRow("store") << "mnuToolsAmazon"
                           << "https://shop.test/exec/obidos/external-search?keyword=Dvořák+Antonín"
                              "&mode=classical-music";
    QTest::newRow("no host") << "mnuToolsGoogleGeneric"
                             << "";
}

void TestCardWindows::searchesOpenInTheBrowser() {
    QFETCH(QString, key);
    QFETCH(QString, opened);
    FakeDesktop desktop;
    m_home->session->setDesktop(desktop);
    Configuration& configuration = m_home->session->configuration();
    configuration.write("Web", "StoreHost", "shop.test");
    if (opened.isEmpty())
        configuration.write("Web", "SearchHost", "no host/");
    m_window->openCard(
        "Cps",
        m_home->session->connection().single("SELECT CpsID FROM Cps WHERE CpsFname = 'Antonín'").toInteger());
    action(qPrintable(key))->trigger();
    QCOMPARE(desktop.opened, opened.isEmpty() ? QStringList() : QStringList("url " + opened));
    QCOMPARE(m_home->messages.told.size(), opened.isEmpty() ? 1 : 0);
}

QTEST_MAIN(TestCardWindows)
#include "test_cardwindows.moc"
