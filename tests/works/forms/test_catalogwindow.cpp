// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/TestHome.h"
#include "support/Writing.h"
#include "widgets/IconStore.h"
#include "widgets/ItemListModel.h"
#include "works/CatalogFile.h"
#include "works/forms/CatalogTree.h"
#include "works/forms/frmAssign.h"
#include "works/forms/frmCatalog.h"
#include "works/forms/frmImportedCatalogs.h"

#include <QAction>
#include <QApplication>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeView>

using namespace tessaranth;

class TestCatalogWindow final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void showsTheWorksOfANode();
    void keepsGenresByKeyboard();
    void assignsByDragging();
    void assignsByKeyboard();
    void commandsFollowTheSelection();
    void deletesWorks();
    void exchangesFiles();

private:
    QAction* action(const char* key) { return m_window->findChild<QAction*>(QString::fromLatin1(key)); }
    QTreeView* works() { return m_window->findChild<QTreeView*>(QStringLiteral("lvWorks")); }
    CatalogTree* tree() { return m_window->findChild<CatalogTree*>(); }
    ItemListModel* model() { return qobject_cast<ItemListModel*>(works()->model()); }
    QStringList titles();
    void go(CatalogBranch::Number branch, qint64 node) { tree()->setPlace({branch, node}); }
    void selectWorks(const std::vector<qint64>& ids);
    bool drop(CatalogBranch::Number branch, int child);
    qint64 number(const QString& statement) {
        return m_home->session->connection().single(statement).toInteger();
    }

    const IconStore m_icons{QStringLiteral(TESSARANTH_SHARE "/tsrthres.dll")};
    std::unique_ptr<TestHome> m_home;
    std::unique_ptr<frmCatalog> m_window;
    qint64 m_composer = 0;
    qint64 m_suites = 0;
    qint64 m_book = 0;
    std::vector<qint64> m_ids; // Op. 10, Op. 2, Op. 1
};

void TestCatalogWindow::init() {
    m_home = std::make_unique<TestHome>();
    m_home->useTemplate();
    QVERIFY(m_home->start().started);
    Connection& connection = m_home->session->connection();
    write(connection, QStringLiteral("INSERT INTO Cps (CpsLname, CpsFname) VALUES ('Bach', 'J. S.')"));
    m_composer = connection.lastKey();
    ComposerCatalog catalog(*m_home->session, m_composer);
    m_suites = catalog.addNamed(CatalogBranch::Genres, QStringLiteral("Suites"));
    m_book = catalog.addNamed(CatalogBranch::MainWorks, QStringLiteral("Book"));
    m_ids.clear();
    for (const char* opus : {"Op. 10", "Op. 2", "Op. 1"}) {
        write(connection,
              QStringLiteral(
                  "INSERT INTO Compositions (CpsID, CompTitle, CompNbr) VALUES (%1, 'Work %2', '%2')")
                  .arg(m_composer)
                  .arg(QLatin1String(opus)));
        m_ids.push_back(connection.lastKey());
    }
    m_window = std::make_unique<frmCatalog>(FormContext{*m_home->session, m_icons}, m_composer, nullptr);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void TestCatalogWindow::cleanup() { m_window.reset(); }

QStringList TestCatalogWindow::titles() {
    QStringList texts;
    for (int row = 0; row < model()->rowCount(); ++row)
        texts.push_back(model()->index(row, 1).data().toString());
    return texts;
}

void TestCatalogWindow::selectWorks(const std::vector<qint64>& ids) {
    works()->clearSelection();
    for (const qint64 id : ids)
        works()->selectionModel()->select(model()->indexOf(id),
                                          QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

// What the platform does when the selected works are dragged onto the n-th node of a branch (-1: its head).
bool TestCatalogWindow::drop(CatalogBranch::Number branch, int child) {
    QTreeWidgetItem* head = tree()->topLevelItem(branch);
    QTreeWidgetItem* target = child < 0 ? head : head->child(child);
    tree()->scrollToItem(target);
    const QPoint at = tree()->visualItemRect(target).center();
    const std::unique_ptr<QMimeData> data(model()->mimeData(works()->selectionModel()->selectedRows()));
    QDragEnterEvent enter(at, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(tree()->viewport(), &enter);
    QDragMoveEvent move(at, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(tree()->viewport(), &move);
    if (!move.isAccepted())
        return false;
    QDropEvent event(at, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(tree()->viewport(), &event);
    QCoreApplication::processEvents();
    return true;
}

void TestCatalogWindow::showsTheWorksOfANode() {
    QCOMPARE(titles(), QStringList({"Op. 1", "Op. 2", "Op. 10"}));
    ComposerCatalog(*m_home->session, m_composer).assign(CatalogBranch::Genres, m_suites, {m_ids[0]});
    // By keyboard: down to "Unclassified", down to the genre.
    tree()->setFocus();
    QTest::keyClick(tree(), Qt::Key_Down);
    QCOMPARE(titles(), QStringList({"Op. 1", "Op. 2"}));
    QTest::keyClick(tree(), Qt::Key_Down);
    QCOMPARE(titles(), QStringList({"Op. 10"}));
    // By mouse: the main work, whose list shows the genre of each work in place of the main work.
    QTreeWidgetItem* unclassified = tree()->topLevelItem(CatalogBranch::MainWorks)->child(0);
    QTest::mouseClick(tree()->viewport(), Qt::LeftButton, {}, tree()->visualItemRect(unclassified).center());
    QCOMPARE(titles(), QStringList({"Op. 1", "Op. 2", "Op. 10"}));
    QCOMPARE(model()->index(2, 4).data().toString(), QStringLiteral("Suites"));
}

void TestCatalogWindow::keepsGenresByKeyboard() {
    ScriptedMessages& messages = m_home->messages;
    messages.willType(QStringLiteral("Airs"));
    QTest::keyClick(m_window.get(), Qt::Key_G, Qt::ControlModifier);
    QCOMPARE(tree()->currentItem()->text(0), QStringLiteral("Airs"));
    messages.willType(QStringLiteral("Ayres"));
    QTest::keyClick(tree(), Qt::Key_F2);
    QCOMPARE(messages.nameRequests.back().heading, QStringLiteral("Rename composer catalog genre"));
    QCOMPARE(tree()->currentItem()->text(0), QStringLiteral("Ayres"));
    messages.willAnswer(Answer::Yes);
    QTest::keyClick(tree(), Qt::Key_Delete, Qt::ShiftModifier);
    QCOMPARE(number(QStringLiteral("SELECT Count(*) FROM CpsGenres")), 1);
    // The same keys work on the other branch once it is chosen.
    go(CatalogBranch::MainWorks, m_book);
    messages.willType(QStringLiteral("Book of Clavier"));
    QTest::keyClick(tree(), Qt::Key_F2);
    QCOMPARE(messages.nameRequests.back().heading, QStringLiteral("Rename catalog main work"));
    QCOMPARE(tree()->currentItem()->text(0), QStringLiteral("Book of Clavier"));
}

void TestCatalogWindow::assignsByDragging() {
    selectWorks({m_ids[0], m_ids[2]});
    QVERIFY(drop(CatalogBranch::Genres, 1));
    QVERIFY(drop(CatalogBranch::MainWorks, 1));
    QCOMPARE(
        number(QStringLiteral("SELECT Count(*) FROM Compositions WHERE CpsGenreID = %1 AND MainWorkID = %2")
                   .arg(m_suites)
                   .arg(m_book)),
        2); // the works stay selected for the second drop
    go(CatalogBranch::Genres, m_suites);
    QCOMPARE(titles(), QStringList({"Op. 1", "Op. 10"}));
    selectWorks({m_ids[0]});
    QVERIFY(!drop(CatalogBranch::Genres, -1)); // the head of a branch takes nothing
    m_home->messages.willAnswer(Answer::No);
    QVERIFY(drop(CatalogBranch::Genres, 0));
    QCOMPARE(titles().size(), 2);
    m_home->messages.willAnswer(Answer::Yes);
    QVERIFY(drop(CatalogBranch::Genres, 0));
    QCOMPARE(titles(), QStringList({"Op. 1"}));
}

void TestCatalogWindow::assignsByKeyboard() {
    works()->setFocus();
    works()->selectAll();
    bool shown = false;
    QTimer::singleShot(0, this, [&] {
        auto* form = qobject_cast<frmAssign*>(QApplication::activeModalWidget());
        shown = form && form->windowTitle() == QLatin1String("Assign selected work(s) to main work");
        if (!form)
            return;
        auto* assign = form->findChild<QPushButton*>(QStringLiteral("cmdAssign"));
        QTest::keyClicks(form->findChild<QLineEdit*>(), QStringLiteral("zzz"));
        shown = shown && !assign->isEnabled();
        form->findChild<QLineEdit*>()->clear();
        QTest::keyClicks(form->findChild<QLineEdit*>(), QStringLiteral("oo"));
        QTest::keyClick(form->findChild<QLineEdit*>(), Qt::Key_Return);
    });
    QTest::keyClick(works(), Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(shown);
    QCOMPARE(number(QStringLiteral("SELECT Count(*) FROM Compositions WHERE MainWorkID = %1").arg(m_book)),
             3);
    m_window->activateWindow(); // the offscreen platform does not, after a dialog
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    go(CatalogBranch::MainWorks, m_book);
    selectWorks({m_ids[1]});
    m_home->messages.willAnswer(Answer::Yes);
    QTest::keyClick(works(), Qt::Key_U, Qt::ControlModifier);
    QCOMPARE(titles(), QStringList({"Op. 1", "Op. 10"}));
}

void TestCatalogWindow::commandsFollowTheSelection() {
    const auto enabled = [&] {
        QString text;
        for (const char* key : {"mnuGenreRename", "mnuGenreRemove", "mnuMainWorkRename", "mnuMainWorkRemove",
                                "mnuAssignGenre", "mnuUnassign", "mnuWorkDelete", "mnuCatalogRemove"})
            text += action(key)->isEnabled() ? u'1' : u'0';
        return text;
    };
    QCOMPARE(enabled(), QStringLiteral("00000000"));
    go(CatalogBranch::Genres, 0);
    QCOMPARE(enabled(), QStringLiteral("00000000"));
    works()->selectAll();
    QCOMPARE(enabled(), QStringLiteral("00001010")); // what has no genre cannot lose it
    go(CatalogBranch::MainWorks, m_book);
    QCOMPARE(enabled(), QStringLiteral("00110000"));
    tree()->topLevelItem(CatalogBranch::MainWorks)->child(0)->setSelected(true);
    QCOMPARE(enabled(), QStringLiteral("00110000")); // "Unclassified" does not count
}

void TestCatalogWindow::deletesWorks() {
    selectWorks({m_ids[0], m_ids[1]});
    m_home->messages.willAnswer(Answer::Yes);
    action("mnuWorkDelete")->trigger();
    QVERIFY(
        m_home->messages.asked.back().text.startsWith(QStringLiteral("2 works will be permanently deleted")));
    selectWorks({m_ids[2]});
    m_home->messages.willAnswer(Answer::Yes);
    action("mnuWorkDelete")->trigger();
    QCOMPARE(m_home->messages.asked.back().title, QStringLiteral("Delete work"));
    QCOMPARE(titles(), QStringList());
}

void TestCatalogWindow::exchangesFiles() {
    ScriptedMessages& messages = m_home->messages;
    action("mnuCatalogExport")->trigger();
    QVERIFY(messages.told.back().startsWith(QLatin1String("Not all the works are classified")));
    ComposerCatalog(*m_home->session, m_composer).assign(CatalogBranch::Genres, m_suites, m_ids);
    messages.willChoose({m_home->folder()});
    action("mnuCatalogExport")->trigger();
    const QString path = m_home->file(QStringLiteral("J._S._Bach.tcat"));
    QCOMPARE(messages.told.back(), QStringLiteral("The file %1 has been created correctly.").arg(path));
    messages.willChoose({path});
    action("mnuCatalogImport")->trigger();
    QCOMPARE(titles().size(), 3); // they are there already
    write(m_home->session->connection(), "UPDATE Compositions SET CompNbr = '99'");
    messages.willChoose({path});
    action("mnuCatalogImport")->trigger();
    QCOMPARE(titles().size(), 6);
    QVERIFY(action("mnuCatalogRemove")->isEnabled());
    messages.willAnswer(Answer::Yes);
    action("mnuCatalogRemove")->trigger();
    QCOMPARE(titles().size(), 3);
    QVERIFY(!action("mnuCatalogRemove")->isEnabled());

    NoProgress progress;
    QVERIFY(CatalogFile(*m_home->session, m_composer).importFrom(path, progress));
    frmImportedCatalogs list({*m_home->session, m_icons}, nullptr);
    auto* remove = list.findChild<QPushButton*>(QStringLiteral("cmdRemove"));
    messages.willAnswer(Answer::No);
    remove->click();
    QVERIFY(remove->isEnabled());
    messages.willAnswer(Answer::Yes);
    remove->click();
    QVERIFY(!remove->isEnabled());
    QCOMPARE(number(QStringLiteral("SELECT Count(*) FROM Compositions")), 3);
}

QTEST_MAIN(TestCatalogWindow)
#include "test_catalogwindow.moc"
