// SPDX-License-Identifier: GPL-3.0-or-later
#include "classes/forms/frmClass.h"
#include "classes/forms/frmClassItem.h"
#include "support/ItemCatalog.h"
#include "widgets/CheckedList.h"
#include "widgets/IconStore.h"
#include "widgets/ItemListModel.h"
#include "window/BrowseTree.h"

#include <QAction>
#include <QDropEvent>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QTimer>
#include <QTreeView>

using namespace tessaranth;

class TestClassWindow final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void keepsTheTreeByKeyboard();
    void classifiesSeveral();
    void takesDroppedCards();
    void browses();

private:
    static ClassTree* tree(QWidget& window) { return window.findChild<ClassTree*>(); }
    static QTreeView* list(QWidget& window, const char* name) { return window.findChild<QTreeView*>(name); }
    static bool drop(ClassTree* tree, const ClassTree::Place& place, QMimeData* data);
    qint64 joins(qint64 sub) {
        return m_home->number(
            QStringLiteral("SELECT COUNT(*) FROM RecSubCatJoin WHERE RecSubCatID = %1").arg(sub));
    }

    const IconStore m_icons{QStringLiteral(TESSARANTH_SHARE "/tsrthres.dll")};
    std::unique_ptr<ItemCatalog> m_home;
    FakeCards m_cards;
    qint64 m_shelf = 0;
};

void TestClassWindow::init() {
    m_home = std::make_unique<ItemCatalog>();
    m_cards = {};
    for (const char* title : {"Aida", "Boris", "Carmen"})
        m_home->run(QStringLiteral("INSERT INTO Rec (RecTitle) VALUES ('%1')").arg(title));
    Classification classes(*m_home->session, ItemKind::Recording);
    m_shelf = classes.addNamed(Classification::Category, 0, "Shelf");
    classes.addNamed(Classification::SubCategory, m_shelf, "Left");
    classes.addNamed(Classification::SubCategory, m_shelf, "Right");
    QVERIFY(classes.assign({1, 2}, {1}) && classes.assign({3}, {2}));
}

void TestClassWindow::keepsTheTreeByKeyboard() {
    frmClass window({*m_home->session, m_icons}, m_cards);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    tree(window)->setPlace({ItemKind::Recording, ClassTree::Category, m_shelf});
    tree(window)->setFocus();
    m_home->messages.willType("Middle");
    QTest::keyClick(tree(window), Qt::Key_Insert);
    QCOMPARE(tree(window)->currentItem()->text(0), "Middle");
    m_home->messages.willType("Center");
    QTest::keyClick(tree(window), Qt::Key_F2);
    QCOMPARE(tree(window)->currentItem()->text(0), "Center");
    m_home->messages.willAnswer(Answer::Ok);
    QTest::keyClick(tree(window), Qt::Key_Delete);
    QCOMPARE(m_home->count("RecSubCat"), 2);
    QCOMPARE(tree(window)->place(), (ClassTree::Place{ItemKind::Recording, ClassTree::Category, m_shelf}));
    QVERIFY(!window.findChild<QAction*>("mnuFileReport")->isEnabled());
    QVERIFY(!window.findChild<QAction*>("mnuCatRenameSubCat")->isEnabled());

    // In the list the same key is of no command, and Enter opens the card.
    QTreeView* cards = list(window, "LV");
    cards->setFocus();
    cards->setCurrentIndex(cards->model()->index(1, 0));
    QTest::keyClick(cards, Qt::Key_Delete);
    QTest::keyClick(cards, Qt::Key_Return);
    QCOMPARE(m_cards.opened, QStringList("#Rec2"));
    QCOMPARE(window.findChild<QLabel*>("count")->text(), "Recordings: 3");
}

void TestClassWindow::classifiesSeveral() {
    frmClass window({*m_home->session, m_icons}, m_cards);
    window.show();
    tree(window)->setPlace({ItemKind::Recording, ClassTree::GlobalView, 0});
    QTreeView* cards = list(window, "LV");
    QCOMPARE(cards->model()->index(2, 1).data(), "Right");
    cards->selectAll();
    QStringList states;
    QTimer::singleShot(0, &window, [&] {
        auto* form = window.findChild<frmClassItem*>();
        QVERIFY(QTest::qWaitForWindowActive(form));
        QTreeView* boxes = list(*form, "lvSubCategories");
        const auto state = [&](int row) {
            return boxes->model()->index(row, 0).data(Qt::CheckStateRole).toInt();
        };
        QCOMPARE(form->findChild<QLabel*>("heading")->text(), "Multiple items classification");
        QVERIFY(form->findChild<QLabel*>("hint")->text().startsWith("Classify recordings: 3"));
        // The last row is taken through all three states, by keyboard, from its second column.
        boxes->setCurrentIndex(boxes->model()->index(1, 1));
        for (int i = 0; i < 4; ++i) {
            states << QString::number(state(1));
            QTest::keyClick(boxes, Qt::Key_Space);
        }
        states << QString::number(state(0)) + QString::number(state(1));
        form->findChild<QPushButton*>("cmdOk")->click();
    });
    window.findChild<QAction*>("mnuItemsClassify")->trigger();
    QCOMPARE(states, QStringList({"1", "2", "0", "1", "12"}));
    QCOMPARE(joins(1), 2);
    QCOMPARE(joins(2), 3);
    QCOMPARE(cards->model()->index(0, 1).data(), "Left Right");
    QCOMPARE(m_cards.reloaded.size(), 3);
}

bool TestClassWindow::drop(ClassTree* tree, const ClassTree::Place& place, QMimeData* data) {
    tree->setPlace(place);
    const QPoint at = tree->visualItemRect(tree->currentItem()).center();
    QDragEnterEvent enter(at, Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
    QDropEvent event(at, Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
    for (QEvent* one : {static_cast<QEvent*>(&enter), static_cast<QEvent*>(&event)})
        QCoreApplication::sendEvent(tree->viewport(), one);
    QCoreApplication::processEvents();
    return event.isAccepted();
}

void TestClassWindow::takesDroppedCards() {
    frmClass window({*m_home->session, m_icons}, m_cards);
    window.show();
    tree(window)->expandAll();
    tree(window)->setPlace({ItemKind::Recording, ClassTree::GlobalView, 0});
    QTreeView* cards = list(window, "LV");
    const std::unique_ptr<QMimeData> data(
        cards->model()->mimeData({cards->model()->index(0, 0), cards->model()->index(1, 0)}));
    drop(tree(window), {ItemKind::Recording, ClassTree::SubCategory, 2}, data.get());
    QCOMPARE(joins(2), 3);
    QCOMPARE(joins(1), 2);
}

void TestClassWindow::browses() {
    BrowseTree browse({*m_home->session, m_icons});
    browse.setOpenCards(&m_cards);
    browse.show();
    QVERIFY(QTest::qWaitForWindowExposed(&browse));
    const auto captions = [&] {
        QStringList found;
        for (QTreeWidgetItemIterator it(tree(browse)); *it; ++it)
            found << (*it)->text(0);
        return found;
    };
    QCOMPARE(captions().mid(4), QStringList({"Recordings (3)", "Shelf (3)", "Left (2)", "Right (1)",
                                             "Unclassified (0)", "Custom items (0)", "Unclassified (0)"}));
    tree(browse)->setPlace({ItemKind::Recording, ClassTree::SubCategory, 1});
    QVERIFY(Classification(*m_home->session, ItemKind::Recording).assign({1}, {}));
    browse.refresh();
    QVERIFY(captions().contains("Left (1)") && captions().contains("Unclassified (1)"));
    QTreeView* cards = list(browse, "lvBrowse");
    QCOMPARE(cards->model()->rowCount(), 1);
    const QPoint first = cards->visualRect(cards->model()->index(0, 0)).center();
    QTest::mouseClick(cards->viewport(), Qt::LeftButton, {}, first);
    QTest::mouseDClick(cards->viewport(), Qt::LeftButton, {}, first);
    QCOMPARE(m_cards.opened, QStringList("#Rec2"));
    tree(browse)->setPlace({ItemKind::Recording, ClassTree::Unclassified, 0});
    QCOMPARE(cards->model()->index(0, 0).data(), "Aida");
}

QTEST_MAIN(TestClassWindow)
#include "test_classwindow.moc"
