// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures on a card, in the viewer, put into order and compared with the rows: by keys, mouse and dropping.
#include "attachments/forms/ImagesPanel.h"
#include "attachments/forms/frmAlign.h"
#include "attachments/forms/frmPic.h"
#include "items/forms/frmOrder.h"
#include "support/ItemCatalog.h"
#include "support/Pictures.h"
#include "widgets/IconStore.h"
#include "widgets/PictureView.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QDropEvent>
#include <QLabel>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>
#include <QToolButton>

using namespace tessaranth;

class TestImagesPanel : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void emptyPanelSaysWhatToDo();
    void dropsAndSteps();
    void clipboard();
    void renamesSortsAndRemovesByKeys();
    void missedAndBrokenFiles();
    void viewerZoomsAndSteps();
    void viewerHoldsNoMoreThanIsSeen();
    void orderMovesSeveralTogether();
    void alignRepairsWhatIsTicked();

private:
    void add(const QString& title, QSize size = {40, 20}) {
        QVERIFY(CardImages(*m_home->session, {"Rec", 1}).add(halves(size), title) != 0);
    }
    QString text(const char* label) const {
        return m_panel->findChild<QLabel*>(QString::fromLatin1(label))->text();
    }
    QWidget* box() const { return m_panel->findChild<QWidget*>("picImage"); }

    std::unique_ptr<ItemCatalog> m_home;
    std::unique_ptr<IconStore> m_icons;
    FakeCards m_cards;
    std::unique_ptr<ImagesPanel> m_panel;
};

void TestImagesPanel::init() {
    m_home = std::make_unique<ItemCatalog>();
    m_home->run("INSERT INTO Rec (RecTitle) VALUES ('Fidelio')");
    m_icons = std::make_unique<IconStore>(m_home->file("tsrthres.dll"));
    QApplication::clipboard()->clear();
    m_panel = std::make_unique<ImagesPanel>(
        CardContext{{*m_home->session, *m_icons}, m_cards, QStringLiteral("Rec"), 1});
    m_panel->resize(300, 300);
    m_panel->show();
    QVERIFY(QTest::qWaitForWindowActive(m_panel.get()));
    box()->setFocus();
}

void TestImagesPanel::cleanup() {
    m_panel.reset();
    m_icons.reset();
    m_home.reset();
}

void TestImagesPanel::emptyPanelSaysWhatToDo() {
    QVERIFY(box()->accessibleDescription().contains("Drop picture files here"));
    QStringList possible;
    for (const QAction* action : m_panel->actions())
        if (m_panel->canRun(action->objectName()))
            possible << action->objectName();
    QCOMPARE(possible, QStringList{"mnuCardImagesAddFile"});
    QSet<QString> letters;
    for (const QAction* action : m_panel->actions()) {
        const qsizetype mark = action->text().indexOf('&');
        QVERIFY2(mark >= 0 && !letters.contains(action->text().mid(mark + 1, 1).toLower()),
                 qPrintable(action->text()));
        letters << action->text().mid(mark + 1, 1).toLower();
    }
}

void TestImagesPanel::dropsAndSteps() {
    add("First");
    m_panel->load();
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(written(m_home->file("b.png"), encoded(halves({30, 60}), "PNG"))),
                  QUrl::fromLocalFile(written(m_home->file("c.png"), encoded(halves({8, 8}), "PNG")))});
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_panel.get(), &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_panel.get(), &drop);
    QTRY_COMPARE(m_panel->heading(), "Images (3)");
    QCOMPARE(text("lblPosition"), "2 of 3"); // the first one dropped
    QCOMPARE(text("lblTitle"), "b");
    QVERIFY2(box()->toolTip().startsWith("File size: ") &&
                 box()->toolTip().endsWith("; 30 x 60 pixel. Double-Click to enlarge"),
             qPrintable(box()->toolTip()));
    QCOMPARE(m_panel->grab().toImage().pixelColor(140, 130), QColor(Qt::red)); // in its middle, left half
    QTest::keyClick(box(), Qt::Key_PageDown);
    QCOMPARE(text("lblPosition"), "3 of 3");
    QVERIFY(!m_panel->canRun("mnuCardImagesForward"));
    QTest::mouseClick(m_panel->findChild<QToolButton*>("Back1"), Qt::LeftButton);
    QSignalSpy opened(m_panel.get(), &ImagesPanel::openPictures);
    QTest::mouseDClick(box(), Qt::LeftButton);
    QCOMPARE(opened.value(0), QVariantList({"Rec", 1LL, 1}));
    m_panel->run("mnuCardImagesAll");
    QCOMPARE(opened.size(), 4);
}

void TestImagesPanel::clipboard() {
    QApplication::clipboard()->setImage(halves({12, 6}));
    m_home->messages.willType("Pasted");
    m_panel->run("mnuCardImagesAddClip");
    QCOMPARE(text("lblTitle"), "Pasted");
    QApplication::clipboard()->setImage(halves({20, 10}));
    m_panel->run("mnuCardImagesReplaceClip");
    QVERIFY(box()->toolTip().contains("20 x 10"));
    QApplication::clipboard()->clear();
    QVERIFY(!m_panel->canRun("mnuCardImagesAddClip"));
    QTest::keyClick(box(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->image().size(), QSize(20, 10));
}

void TestImagesPanel::renamesSortsAndRemovesByKeys() {
    for (const char* title : {"a", "b", "c"})
        add(title);
    m_panel->load();
    m_home->messages.willType("A & B");
    QTest::keyClick(box(), Qt::Key_F2);
    QCOMPARE(text("lblTitle"), "A & B");
    QTimer::singleShot(0, this, [] {
        auto* form = qobject_cast<frmOrder*>(QApplication::activeModalWidget());
        form->activateWindow();
        QVERIFY(QTest::qWaitFor([&] { return QApplication::activeWindow() == form; }));
        QTest::keyClick(form->findChild<QListWidget*>(), Qt::Key_End, Qt::ControlModifier);
        QTest::keyClick(form, Qt::Key_Return);
    });
    m_panel->run("mnuCardImagesSort");
    QCOMPARE(text("lblPosition"), "3 of 3"); // the one shown stays
    QCOMPARE(text("lblTitle"), "A & B");
    m_panel->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_panel.get()));
    m_home->messages.willAnswer(Answer::Ok);
    QTest::keyClick(box(), Qt::Key_Delete);
    QCOMPARE(text("lblTitle"), "c");
    QCOMPARE(m_panel->heading(), "Images (2)");
}

void TestImagesPanel::missedAndBrokenFiles() {
    add("gone");
    add("broken");
    const CardImages images(*m_home->session, {"Rec", 1});
    QFile::remove(images.path(1));
    written(images.path(2), "text");
    m_panel->load();
    QCOMPARE(box()->accessibleDescription(), "Missed file");
    QVERIFY(!m_panel->canRun("mnuCardImagesExport"));
    QCOMPARE(m_home->count("Images"), 2);
    m_panel->showPage(1);
    m_panel->grab();
    QVERIFY(m_home->messages.told.isEmpty()); // said in its place, not in a box
}

void TestImagesPanel::viewerZoomsAndSteps() {
    add("wide", {4000, 1000});
    add("small", {40, 20});
    frmPic viewer({*m_home->session, *m_icons}, {"Rec", 1}, 0);
    viewer.show();
    QVERIFY(QTest::qWaitForWindowActive(&viewer));
    PictureView& view = *viewer.view();
    const double fitted = view.zoom();
    QCOMPARE(qRound(fitted), qRound(view.maximumViewportSize().width() / 40.0));
    QTest::keyClick(&view, Qt::Key_0);
    QCOMPARE(view.zoom(), 100.0);
    QTest::keyClick(&view, Qt::Key_Plus);
    QCOMPARE(viewer.findChild<QComboBox*>("cboZoom")->currentText(), "125%");
    viewer.resize(500, 400); // a zoom that was chosen stays
    QCOMPARE(view.zoom(), 125.0);
    QTest::keyClick(&view, Qt::Key_F);
    QVERIFY(view.zoom() < fitted);
    QTest::keyClick(&view, Qt::Key_Right);
    QCOMPARE(viewer.windowTitle(), "small");
    QCOMPARE(view.zoom(), 100.0); // a small one is not blown up
    QVERIFY(!viewer.canRun("mnuCardImagesForward"));
    viewer.run("mnuToolsZoomIn");
    QTest::mouseClick(view.viewport(), Qt::LeftButton);
    QCOMPARE(view.zoom(), 125.0);
    viewer.run("mnuToolsZoomOut");
    QTest::mouseClick(view.viewport(), Qt::LeftButton);
    QTest::mouseClick(view.viewport(), Qt::LeftButton);
    QCOMPARE(view.zoom(), 75.0);
    auto* typed = viewer.findChild<QComboBox*>("cboZoom");
    typed->setEditText("333");
    QTest::keyClick(typed, Qt::Key_Return);
    QCOMPARE(view.zoom(), 333.0);
    m_home->run("DELETE FROM Images");
    QVERIFY(!viewer.reload());
}

void TestImagesPanel::viewerHoldsNoMoreThanIsSeen() {
    QImage poster(9000, 9000, QImage::Format_Grayscale8);
    poster.fill(120);
    const QString file = written(m_home->file("p.jpg"), encoded(poster, "JPEG"));
    QVERIFY(CardImages(*m_home->session, {"Rec", 1}).add(file, "Poster") != 0);
    frmPic viewer({*m_home->session, *m_icons}, {"Rec", 1}, 0);
    viewer.show();
    for (const double zoom : {5.0, 100.0, 1600.0, 1.0}) {
        viewer.view()->setZoom(zoom);
        QCOMPARE(viewer.grab().toImage().pixelColor(viewer.width() / 2, viewer.height() / 2 + 10).red(), 120);
    }
}

void TestImagesPanel::orderMovesSeveralTogether() {
    frmOrder form(*m_icons, "Sort", "Order", "Images", {{1, "a"}, {2, "b"}, {3, "c"}, {4, "d"}});
    auto* list = form.findChild<QListWidget*>();
    const auto press = [&](const char* name) { form.findChild<QPushButton*>(QLatin1String(name))->click(); };
    QVERIFY(!form.findChild<QPushButton*>("cmdUp")->isEnabled());
    list->clearSelection();
    list->item(1)->setSelected(true);
    list->item(3)->setSelected(true);
    press("cmdUp");
    QCOMPARE(form.order(), (std::vector<qint64>{2, 1, 4, 3}));
    press("cmdUp"); // the first stands at the top already
    QCOMPARE(form.order(), (std::vector<qint64>{2, 4, 1, 3}));
    press("cmdLast");
    QCOMPARE(form.order(), (std::vector<qint64>{1, 3, 2, 4}));
}

void TestImagesPanel::alignRepairsWhatIsTicked() {
    for (const char* title : {"a", "b"})
        add(title);
    const CardImages images(*m_home->session, {"Rec", 1});
    QFile::remove(images.path(1));
    const QString folder = m_home->session->dataFolder(Session::Folder::Images);
    written(folder + "/99", "stray");
    frmAlign form({*m_home->session, *m_icons}, &m_cards);
    form.show();
    auto* repair = form.findChild<QPushButton*>("cmdRepair");
    QVERIFY(!repair->isEnabled());
    form.findChild<QCheckBox*>("chkLost")->click();
    m_home->messages.willAnswer(Answer::Ok);
    repair->click();
    QCOMPARE(m_home->messages.asked[0].text,
             "Rows to delete: 1\nFiles to move into \"Unused\": 0\nContinue?");
    QCOMPARE(m_home->number("SELECT OrderNbr FROM Images WHERE ImageTitle = 'b'"), 1);
    QCOMPARE(m_home->count("Images"), 1);
    QVERIFY(QFile::exists(folder + "/99"));
    QCOMPARE(m_cards.reloaded, QStringList{"#Rec1"});
    QCOMPARE(form.findChild<QLabel*>("lblLost")->text(), "Rows without their file: 0, ticked: 0");
}

QTEST_MAIN(TestImagesPanel)
#include "test_imagespanel.moc"
