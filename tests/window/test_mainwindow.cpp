// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/ItemKind.h"
#include "support/TestHome.h"
#include "support/Writing.h"
#include "widgets/IconStore.h"
#include "widgets/ItemListModel.h"
#include "window/CardWindows.h"
#include "window/Commands.h"
#include "window/MainWindow.h"
#include "window/Toolbox.h"
#include "window/frmItem.h"
#include "works/forms/frmKeys.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QSplitter>
#include <QTest>
#include <QTextEdit>
#include <QTimer>
#include <QToolBar>
#include <QTreeView>

using namespace tessaranth;

class TestMainWindow : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void listsOfEveryKindAreFilled();
    void typingNarrowsTheList();
    void headersSortTheList();
    void emptyStatesSayWhatToDo();
    void deletingAsksAndRefreshes();
    void emptyingAsksFirst();
    void listsAreManagedFromTheMenu_data();
    void listsAreManagedFromTheMenu();
    void importsOfManyShowAtOnce();
    void dateNoteBecomesADocument();
    void exitAsksInTheseWords();
    void arrangementsComeBack();
    void placeOffEveryScreenIsCorrected_data();
    void placeOffEveryScreenIsCorrected();

private:
    template<typename Widget>
    Widget* find(const char* name) const {
        auto* widget = m_window->findChild<Widget*>(QString::fromLatin1(name));
        if (!widget)
            QTest::qFail(name, __FILE__, __LINE__);
        return widget;
    }
    QStringList names() const;
    void type(const QString& text);
    void open();

    std::unique_ptr<TestHome> m_home;
    std::unique_ptr<IconStore> m_icons;
    std::unique_ptr<MainWindow> m_window;
};

void TestMainWindow::init() {
    m_home = std::make_unique<TestHome>();
    m_home->useSample();
    open();
}

void TestMainWindow::open() {
    QVERIFY(m_home->start().started);
    m_icons = std::make_unique<IconStore>(m_home->file("tsrthres.dll"));
    m_window = std::make_unique<MainWindow>(FormContext{*m_home->session, *m_icons});
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void TestMainWindow::cleanup() {
    m_window.reset();
    m_icons.reset();
    m_home.reset();
}

QStringList TestMainWindow::names() const {
    QStringList texts;
    const auto* model = m_window->toolbox()->view()->model();
    for (int row = 0; row < model->rowCount(); ++row)
        texts.push_back(model->index(row, 0).data().toString());
    return texts;
}

void TestMainWindow::type(const QString& text) {
    auto* filter = find<QLineEdit>("txtFilter");
    filter->setFocus();
    QTest::keyClick(filter, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(filter, Qt::Key_Delete);
    for (const QChar c : text) // an accented letter has no key of its own
        QTest::sendKeyEvent(QTest::Click, filter, Qt::Key_unknown, QString(c), Qt::NoModifier);
    QTest::qWait(300); // the list is read when the typing pauses
}

void TestMainWindow::listsOfEveryKindAreFilled() {
    auto* kinds = find<QComboBox>("cboKind");
    kinds->setFocus();
    QStringList captions;
    for (int kind = 0; kind < kinds->count(); ++kind) {
        captions.push_back(kinds->currentText());
        const ItemKind& current = *itemKind(m_window->toolbox()->kind());
        const qint64 stored =
            m_home->session->connection().single("SELECT COUNT(*) FROM " + current.table).toInteger();
        QVERIFY(stored > 0);
        QCOMPARE(names().size(), stored);
        QCOMPARE(find<QLabel>("count")->text(), current.countCaption + QString::number(stored));
        QTest::keyClick(kinds, Qt::Key_Down);
    }
    QCOMPARE(captions, QStringList({"Composers", "Performers", "Recordings", "Custom items"}));
    m_window->toolbox()->showKind(ItemKind::Composer);
    QVERIFY(names().contains("Dvořák, Antonín"));
}

void TestMainWindow::typingNarrowsTheList() {
    type("dvo");
    QCOMPARE(names(), QStringList("Dvořák, Antonín"));
    type("DVOŘ");
    QCOMPARE(names(), QStringList("Dvořák, Antonín"));
    type("%");
    QCOMPARE(names(), QStringList());
    QTest::keyClick(find<QLineEdit>("txtFilter"), Qt::Key_Return);
    QCOMPARE(m_window->cards().count(), 0);
    type("b");
    QVERIFY(names().size() > 5);
    QTest::keyClick(find<QLineEdit>("txtFilter"), Qt::Key_A);
    QTest::keyClick(find<QLineEdit>("txtFilter"), Qt::Key_Return); // before the list has followed
    QCOMPARE(m_window->cards().active()->windowTitle(), "Johann Sebastian Bach");
    type("b");
    QTest::keyClick(find<QLineEdit>("txtFilter"), Qt::Key_Down);
    QTest::keyClick(find<QLineEdit>("txtFilter"), Qt::Key_Down);
    QTest::keyClick(find<QLineEdit>("txtFilter"), Qt::Key_Return);
    QCOMPARE(m_window->cards().active()->windowTitle(), "Béla Bartók");
    // Another kind begins without the filter of the last one.
    m_window->toolbox()->showKind(ItemKind::Recording);
    QVERIFY(find<QLineEdit>("txtFilter")->text().isEmpty());
    QCOMPARE(names().size(), m_home->session->connection().single("SELECT COUNT(*) FROM Rec").toInteger());
}

void TestMainWindow::headersSortTheList() {
    QHeaderView* header = m_window->toolbox()->view()->header();
    const auto click = [header](int column) {
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          QPoint(header->sectionViewportPosition(column) + 20, header->height() / 2));
    };
    const QStringList own = names();
    click(0);
    click(0);
    QStringList reversed = own;
    std::reverse(reversed.begin(), reversed.end());
    QCOMPARE(names().front(), reversed.front());
    type("s"); // stays sorted when the list is read anew
    QVERIFY(names().front() > names().back());
    click(0);
    type("");
    QCOMPARE(names(), own);
}

void TestMainWindow::emptyStatesSayWhatToDo() {
    auto* state = find<QLabel>("emptyState");
    QVERIFY(!state->isVisible());
    type("nobody");
    QVERIFY(state->isVisible());
    QVERIFY(state->text().contains("\"nobody\"") && state->text().contains("Clear the filter"));
    type("");
    write(m_home->session->connection(), "DELETE * FROM UserDef");
    m_window->toolbox()->showKind(ItemKind::Custom);
    QVERIFY(state->isVisible());
    QVERIFY(state->text().contains("no custom items"));
}

void TestMainWindow::deletingAsksAndRefreshes() {
    type("dvo");
    QTreeView* view = m_window->toolbox()->view();
    view->setFocus();
    QTest::keyClick(view, Qt::Key_A, Qt::ControlModifier);
    m_home->messages.willAnswer(Answer::No);
    QTest::keyClick(view, Qt::Key_Delete);
    const QString asked = m_home->messages.asked.back().text;
    QVERIFY2(asked.startsWith("Composers: Dvořák, Antonín\nwill be deleted.\n\nWarning!!\n"
                              "All related data will be deleted!\n\nContinue?\n\nDeleted too: ") &&
                 asked.contains(" works\nChanged: "),
             qPrintable(asked));
    QCOMPARE(names().size(), 1);
    m_home->messages.willAnswer(Answer::Yes);
    QTest::keyClick(view, Qt::Key_Delete);
    QCOMPARE(names().size(), 0);
    QVERIFY(!find<QAction>("mnuToolboxDelete")->isEnabled());
}

void TestMainWindow::listsAreManagedFromTheMenu_data() {
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("title");
    QTest::newRow("genres") << "mnuManageGenres"
                            << "Manage global genres";
    QTest::newRow("labels") << "mnuManageLabels"
                            << "Manage labels";
    QTest::newRow("supports") << "mnuManageSupports"
                              << "Manage supports";
    QTest::newRow("sources") << "mnuManageSources"
                             << "Manage sources";
}

void TestMainWindow::listsAreManagedFromTheMenu() {
    QFETCH(QString, key);
    QFETCH(QString, title);
    auto* action = find<QAction>(qPrintable(key));
    QCOMPARE(action->toolTip(), title);
    QVERIFY(!action->icon().isNull());
    // A label that gets another name shows it in the list of recordings behind.
    m_window->toolbox()->showKind(ItemKind::Recording);
    const bool label = key == "mnuManageLabels";
    const QString label1 =
        m_home->session->connection().single("SELECT LabelName FROM Labels WHERE LabelID = 1").toText();
    QString opened;
    QTimer::singleShot(0, this, [&] {
        QWidget* form = QApplication::activeModalWidget();
        QVERIFY(form);
        opened = form->windowTitle();
        if (label) {
            QTest::keyClicks(form->findChild<QLineEdit*>("txtFilter"), label1);
            QTimer::singleShot(0, this, [] {
                QWidget* editor = QApplication::activeModalWidget();
                editor->findChild<QLineEdit*>("txtName")->setText("A quite new name");
                QTest::mouseClick(editor->findChild<QPushButton*>("cmdSave"), Qt::LeftButton);
            });
            QTest::mouseClick(form->findChild<QPushButton*>("cmdRename"), Qt::LeftButton);
        }
        QTest::keyClick(form, Qt::Key_Escape);
    });
    action->trigger();
    QCOMPARE(opened, title);
    const ItemList& shown = m_window->toolbox()->model()->list();
    int renamed = 0;
    for (int row = 0; row < shown.rowCount(); ++row)
        renamed += shown.text(row, 1) == "A quite new name";
    QCOMPARE(renamed > 0, label);
}

void TestMainWindow::importsOfManyShowAtOnce() {
    for (const auto& [key, kind] : {std::pair("mnuToolsBatchImportCps", ItemKind::Composer),
                                    std::pair("mnuToolsBatchImportPfr", ItemKind::Performer)}) {
        m_window->toolbox()->showKind(kind);
        const qsizetype before = names().size();
        QTimer::singleShot(0, this, [] {
            QWidget* form = QApplication::activeModalWidget();
            QVERIFY(form);
            auto* list = form->findChild<QTreeView*>("lvPersons");
            QTest::keyClick(list, Qt::Key_A, Qt::ControlModifier);
            QTest::mouseClick(form->findChild<QPushButton*>("cmdImport"), Qt::LeftButton);
        });
        find<QAction>(key)->trigger();
        QVERIFY(names().size() > before + 100);
        QCOMPARE(names().size(), m_home->session->connection()
                                     .single("SELECT COUNT(*) FROM " + itemKind(kind)->table)
                                     .toInteger());
    }
}

void TestMainWindow::emptyingAsksFirst() {
    m_home->messages.willAnswer(Answer::No);
    find<QAction>("mnuToolsEmpty")->trigger();
    QCOMPARE(m_home->messages.asked.back().defaultButton, Answer::No);
    QVERIFY(names().size() > 0);
    m_home->messages.willAnswer(Answer::Yes);
    find<QAction>("mnuToolsEmpty")->trigger();
    QCOMPARE(names().size(), 0);
}

// What the internal list knows of a year that is not certain has its place in a document of the new card.
void TestMainWindow::dateNoteBecomesADocument() {
    m_window->openCard("Cps", 1); // another card stands open beside it
    QTreeView* view = m_window->toolbox()->view();
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        write(m_home->session->connection(), "DELETE FROM Cps WHERE CpsLname = 'Machaut'");
        m_window->activateWindow(); // the editor of before was the active one
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        view->setFocus();
        QTimer::singleShot(0, this, [] {
            QWidget* editor = QApplication::activeModalWidget();
            QVERIFY(editor);
            QTimer::singleShot(0, editor, [] {
                QWidget* search = QApplication::activeModalWidget();
                QTest::keyClicks(search->focusWidget(), "machaut");
                QTest::keyClick(search->focusWidget(), Qt::Key_Return);
            });
            QTest::mouseClick(editor->findChild<QPushButton*>("cmdInternalList"), Qt::LeftButton);
            QCOMPARE(editor->findChild<QLabel*>("dateNote")->text(),
                     "The internal list says of the dates: born c. 1300");
            QCOMPARE(editor->findChild<QLineEdit*>("txtB")->text(), "");
            QTest::keyClick(editor->focusWidget(), Qt::Key_Return);
        });
        m_home->messages.willAnswer(answer);
        QTest::keyClick(view, Qt::Key_Insert);
        QCOMPARE(m_home->messages.asked.back().text,
                 "The internal list says of the dates: born c. 1300\nKeep "
                 "this as a document of the card?");
        QTest::keyClick(view, Qt::Key_Return); // the new one is selected
        auto* card = qobject_cast<frmItem*>(m_window->cards().active());
        QVERIFY(card);
        QCOMPARE(card->windowTitle(), "Guillaume de Machaut");
        const bool kept = answer == Answer::Yes;
        QCOMPARE(card->findChild<QTextEdit*>("txtDocument")->toPlainText(), kept ? "born c. 1300" : "");
        m_window->cards().closeActive();
    }
}

void TestMainWindow::exitAsksInTheseWords() {
    m_home->messages.willAnswer(Answer::No);
    QVERIFY(!m_window->close());
    QVERIFY(m_window->isVisible());
    const Question& question = m_home->messages.asked.back();
    QCOMPARE(question.text, "Exit the program?");
    QCOMPARE(question.buttons, std::vector<Answer>({Answer::Yes, Answer::No}));
    m_window->toolbox()->view()->sortByColumn(1, Qt::DescendingOrder);
    const QStringList sorted = names();
    m_home->messages.willAnswer(Answer::Yes);
    QVERIFY(m_window->close());
    QVERIFY(!m_home->session->configuration().read("MDI", "Main").isEmpty());
    m_window = std::make_unique<MainWindow>(FormContext{*m_home->session, *m_icons});
    QCOMPARE(names(), sorted); // the columns are as they were left
}

void TestMainWindow::arrangementsComeBack() {
    const auto sizeOfDialog = [this](const QSize& wanted) {
        frmKeys form({*m_home->session, *m_icons});
        form.show();
        const QSize shown = form.size();
        if (!wanted.isEmpty())
            form.resize(wanted);
        form.close();
        return shown;
    };
    const auto upperPart = [this](int wanted) {
        frmItem card({{*m_home->session, *m_icons}, *m_window, "Cps", 1});
        card.resize(800, 700);
        card.show();
        auto* splitter = card.findChild<QSplitter*>("cardSplitter");
        if (wanted > 0) {
            splitter->setSizes({wanted, splitter->height() - wanted});
            emit splitter->splitterMoved(wanted, 1);
        }
        return splitter->sizes()[0];
    };
    const QSize factory = sizeOfDialog({500, 444});
    QVERIFY(factory != QSize(500, 444));
    QCOMPARE(sizeOfDialog({}), QSize(500, 444));
    upperPart(310);
    const auto bar = [this](Bar which) { return m_window->commands().toolBar(which); };
    bar(Bar::Manage)->toggleViewAction()->trigger();
    m_home->messages.willAnswer(Answer::Yes);
    QVERIFY(m_window->close());
    m_window.reset();
    shutDown(*m_home->session, m_home->progress);
    open();
    QCOMPARE(sizeOfDialog({}), QSize(500, 444));
    QVERIFY(qAbs(upperPart(0) - 310) < 12);
    QVERIFY(!bar(Bar::Manage)->isVisible() && bar(Bar::Tools)->isVisible());
    m_home->session->configuration().write("Forms", "frmKeys", "wide,-7");
    QCOMPARE(sizeOfDialog({}), factory);
}

void TestMainWindow::placeOffEveryScreenIsCorrected_data() {
    QTest::addColumn<QString>("stored");
    QTest::newRow("left of everything") << "-5000,100,900,600";
    QTest::newRow("below") << "100,9000,900,600";
    QTest::newRow("too small") << "10,10,5,5";
    QTest::newRow("words") << "here,there,every,where";
    QTest::newRow("overflow") << "99999999999,1,2,3";
}

void TestMainWindow::placeOffEveryScreenIsCorrected() {
    QFETCH(QString, stored);
    m_window.reset();
    m_home->session->configuration().write("MDI", "Main", stored);
    m_home->session->configuration().write("Toolbox", "Width", "-17");
    open();
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QVERIFY(screen.contains(m_window->geometry().topLeft() + QPoint(40, 10)));
    QVERIFY(m_window->width() >= 400 && m_window->height() >= 300);
    QVERIFY(m_window->toolbox()->width() >= 100);
}

QTEST_MAIN(TestMainWindow)
#include "test_mainwindow.moc"
