// SPDX-License-Identifier: GPL-3.0-or-later
// The panels of media, links and relations and the editors behind them, worked with keyboard and mouse.
#include "attachments/forms/MediaPanel.h"
#include "attachments/forms/RelationsPanel.h"
#include "attachments/forms/WebPanel.h"
#include "attachments/forms/frmMediaPath.h"
#include "attachments/forms/frmMediaProperties.h"
#include "attachments/forms/frmNewRelations.h"
#include "attachments/forms/frmNewWeb.h"
#include "items/forms/frmListManager.h"
#include "items/forms/frmNewLabel.h"
#include "items/forms/frmNewUserDef.h"
#include "store/AttachmentFiles.h"
#include "support/FakeDesktop.h"
#include "support/ItemCatalog.h"
#include "widgets/CheckedList.h"
#include "widgets/IconStore.h"
#include "window/MainWindow.h"
#include "window/frmItem.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTimer>
#include <QTreeView>

using namespace tessaranth;

namespace {

struct Desk : ItemCatalog {
    Desk() : ItemCatalog(true), icons(file("tsrthres.dll")) {
        session->setDesktop(desktop);
        for (const char* table : {"Media", "Web", "Relations"})
            run(QString("DELETE FROM ") + table);
    }
    CardContext card(const QString& code, qint64 id) { return {{*session, icons}, cards, code, id}; }
    QString write(const QString& name, const QByteArray& bytes = "music") {
        QFile made(file(name));
        if (!made.open(QIODevice::WriteOnly) || made.write(bytes) != bytes.size())
            QTest::qFail("cannot write", __FILE__, __LINE__);
        return made.fileName();
    }
    /// A red picture of so many pixels.
    QString picture(const QString& name, int width, int height) {
        QImage image(width, height, QImage::Format_RGB32);
        image.fill(Qt::red);
        image.save(file(name), "BMP");
        return file(name);
    }
    IconStore icons;
    FakeCards cards;
    FakeDesktop desktop;
};

void open(QWidget& form) {
    form.show();
    QVERIFY(QTest::qWaitForWindowActive(&form));
}
QLineEdit& field(QWidget& form, const char* name) { return *form.findChild<QLineEdit*>(name); }
QTreeView& list(QWidget& form) { return *form.findChild<QTreeView*>(); }
int rows(QWidget& form) { return list(form).model()->rowCount(); }
void click(QWidget& form, const char* name) {
    QTest::mouseClick(form.findChild<QPushButton*>(name), Qt::LeftButton);
}
void key(QWidget& form, Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) {
    QTest::keyClick(form.focusWidget() ? form.focusWidget() : &form, key, with);
}
void type(QWidget& form, const QString& text) { QTest::keyClicks(form.focusWidget(), text); }
void choose(QWidget& panel, int row) {
    panel.activateWindow(); // a dialog may just have been closed
    QVERIFY(QTest::qWaitForWindowActive(&panel));
    list(panel).setFocus();
    list(panel).setCurrentIndex(list(panel).model()->index(row, 0));
}

/// Works the form that the next step opens.
template<typename Form, typename Work>
void inNextForm(const Work& work) {
    QTimer::singleShot(0, qApp, [work] {
        auto* form = qobject_cast<Form*>(QApplication::activeModalWidget());
        QVERIFY2(form, "another form is open, or none");
        QVERIFY(QTest::qWaitForWindowActive(form));
        work(*form);
        QVERIFY2(!form->isVisible(), "the form stayed open");
    });
}

} // namespace

class TestAttachForms : public QObject {
    Q_OBJECT

private slots:
    void mediaPanel();
    void filesDroppedAndPasted();
    void webPanel();
    void relationsOfARecording();
    void relationsOfACustomCard();
    void labelWithLogo();
    void labelThatCannotBeSaved();
    void customCardEditor();
    void placesOfMedia();
    void keysOfAPanelWithinTheFrame();
};

void TestAttachForms::mediaPanel() {
    Desk desk;
    MediaPanel panel(desk.card("Rec", 1));
    open(panel);
    QCOMPARE(panel.heading(), QString("Media title (0)"));
    QVERIFY(panel.findChild<QLabel*>("empty")->isVisible());
    for (const char* key : {"mnuCardMediaOpen", "mnuCardMediaRemove", "mnuCardMediaProperties"})
        QVERIFY(panel.knows(key) && !panel.canRun(key));
    desk.messages.willChoose({desk.write("b.mp3"), desk.write("a.mp3", QByteArray(2048, 'x'))});
    list(panel).setFocus();
    key(panel, Qt::Key_Insert);
    QCOMPARE(panel.heading(), QString("Media title (2)"));
    QVERIFY(!panel.findChild<QLabel*>("empty")->isVisible());
    choose(panel, 0);
    QVERIFY(panel.canRun("mnuCardMediaOpen"));
    key(panel, Qt::Key_Return);
    QCOMPARE(desk.desktop.opened, QStringList("file " + desk.file("a.mp3")));
    desk.messages.willType("Zadok");
    key(panel, Qt::Key_F2);
    QCOMPARE(list(panel).currentIndex().data().toString(), QString("Zadok")); // still selected, lower now
    QCOMPARE(list(panel).currentIndex().row(), 1);
    inNextForm<frmMediaProperties>([](frmMediaProperties& form) {
        QStringList facts;
        for (const QLabel* label : form.findChildren<QLabel*>())
            facts << label->text();
        QVERIFY(facts.contains("a.mp3") && facts.filter("2,048 bytes").size() == 1);
        key(form, Qt::Key_Escape);
    });
    panel.run("mnuCardMediaProperties");
    choose(panel, 0);
    list(panel).selectAll();
    QVERIFY(!panel.canRun("mnuCardMediaOpen") && panel.canRun("mnuCardMediaRemove"));
    desk.messages.willAnswer(Answer::Ok);
    key(panel, Qt::Key_Delete);
    QCOMPARE(panel.heading(), QString("Media title (0)"));
    QVERIFY(!panel.canRun("mnuCardMediaRemove"));
}

void TestAttachForms::filesDroppedAndPasted() {
    Desk desk;
    MediaPanel panel(desk.card("Pfr", 1));
    open(panel);
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(desk.write("é 1.mp3")), QUrl("https://example.org/x")});
    QDragEnterEvent enter({5, 5}, Qt::CopyAction | Qt::MoveAction, &files, Qt::LeftButton, {});
    QApplication::sendEvent(list(panel).viewport(), &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop({5, 5}, Qt::CopyAction | Qt::MoveAction, &files, Qt::LeftButton, {});
    QApplication::sendEvent(list(panel).viewport(), &drop);
    QCOMPARE(drop.dropAction(), Qt::CopyAction);
    QTRY_COMPARE(rows(panel), 1);
    auto* text = new QMimeData;
    text->setText("no files");
    QApplication::clipboard()->setMimeData(text);
    QVERIFY(!panel.canRun("mnuCardMediaAddPaste"));
    auto* copied = new QMimeData;
    copied->setUrls({QUrl::fromLocalFile(desk.write("2.mp3"))});
    QApplication::clipboard()->setMimeData(copied);
    QVERIFY(panel.canRun("mnuCardMediaAddPaste"));
    panel.run("mnuCardMediaAddPaste");
    QCOMPARE(rows(panel), 2);
}

void TestAttachForms::webPanel() {
    Desk desk;
    WebPanel panel(desk.card("Cps", 1));
    open(panel);
    list(panel).setFocus();
    inNextForm<frmNewWeb>([&desk](frmNewWeb& form) {
        QCOMPARE(form.windowTitle(), QString("Add a card-related web link"));
        type(form, "https://www.beethoven.de/");
        key(form, Qt::Key_Tab);
        type(form, "Beethoven-Haus");
        desk.messages.willAnswer(Answer::Cancel); // what was typed stays
        key(form, Qt::Key_Escape);
        QVERIFY(form.isVisible());
        key(form, Qt::Key_Return);
    });
    key(panel, Qt::Key_Insert);
    QCOMPARE(panel.heading(), QString("Alias (1)"));
    choose(panel, 0);
    key(panel, Qt::Key_Return);
    QCOMPARE(desk.desktop.opened, QStringList("url https://www.beethoven.de/"));
    choose(panel, 0);
    inNextForm<frmNewWeb>([](frmNewWeb& form) {
        QCOMPARE(field(form, "txtAlias").text(), QString("Beethoven-Haus"));
        field(form, "txtAlias").setFocus();
        field(form, "txtAlias").end(false);
        type(form, " Bonn");
        key(form, Qt::Key_Return);
    });
    key(panel, Qt::Key_F2);
    QCOMPARE(desk.text("SELECT Alias FROM Web"), QString("Beethoven-Haus Bonn"));
    QCOMPARE(desk.text("SELECT Url FROM Web"), QString("https://www.beethoven.de/"));
}

void TestAttachForms::relationsOfARecording() {
    Desk desk;
    RelationsPanel panel(desk.card("Rec", 3));
    open(panel);
    inNextForm<frmNewRelations>([&desk](frmNewRelations& form) {
        auto& category = *form.findChild<QComboBox*>("cmbFirst");
        auto& part = *form.findChild<QComboBox*>("cmbSubCat");
        QCOMPARE(rows(form), desk.count("UserDef"));
        QVERIFY(!part.isEnabled());
        list(form).setFocus();
        key(form, Qt::Key_Space); // the first of all
        key(form, Qt::Key_Home);
        field(form, "txtFilter").setFocus();
        type(form, "hall king");
        QCOMPARE(rows(form), 1);
        list(form).setFocus();
        key(form, Qt::Key_Space);
        field(form, "txtFilter").clear();
        category.setCurrentIndex(1);
        QVERIFY(part.isEnabled() && rows(form) < desk.count("UserDef"));
        QVERIFY(form.findChild<QLabel*>("state")->text().endsWith(", 2 checked"));
        click(form, "cmdSave");
    });
    list(panel).setFocus();
    key(panel, Qt::Key_Insert);
    QCOMPARE(panel.heading(), QString("Related to (2)"));
    QCOMPARE(desk.cards.reloaded.size(), 2);
    QVERIFY(desk.cards.reloaded[0].startsWith("#UserDef"));
    choose(panel, 0);
    key(panel, Qt::Key_Return);
    QCOMPARE(desk.cards.opened.size(), 1);
    QVERIFY(desk.cards.opened[0].startsWith("#UserDef"));
    QCOMPARE(desk.number("SELECT COUNT(*) FROM Relations WHERE ItemType = 'Rec' AND ItemID = 3"), 2);
}

void TestAttachForms::relationsOfACustomCard() {
    Desk desk;
    desk.run("INSERT INTO Relations (UserDefID, ItemType, ItemID) VALUES (1, 'Cps', 2)");
    frmNewRelations form({*desk.session, desk.icons}, {"UserDef", 1});
    open(form);
    auto& kind = *form.findChild<QComboBox*>("cmbFirst");
    QCOMPARE(kind.count(), 3);
    QAbstractItemModel& model = *list(form).model();
    for (int row = 0; row < model.rowCount(); ++row) // takes back the one, checks two others
        if (model.index(row, 0).data(Qt::CheckStateRole) == Qt::Checked || row < 2)
            model.setData(model.index(row, 0),
                          model.index(row, 0).data(Qt::CheckStateRole) == Qt::Checked ? Qt::Unchecked
                                                                                      : Qt::Checked,
                          Qt::CheckStateRole);
    kind.setCurrentIndex(2);
    QCOMPARE(rows(form), desk.count("Rec"));
    list(form).setFocus();
    key(form, Qt::Key_Space);
    desk.messages.willAnswer(Answer::Yes); // closing asks, and saves every kind
    form.close();
    QVERIFY(!form.isVisible());
    QCOMPARE(desk.number("SELECT COUNT(*) FROM Relations WHERE UserDefID = 1 AND ItemType = 'Rec'"), 1);
    QCOMPARE(desk.number("SELECT COUNT(*) FROM Relations WHERE ItemType = 'Cps' AND ItemID = 2"), 0);
    QCOMPARE(desk.number("SELECT COUNT(*) FROM Relations WHERE ItemType = 'Cps'"), 2);
    QCOMPARE(form.changedCards().size(), 4u);
}

void TestAttachForms::labelWithLogo() {
    Desk desk;
    const AttachmentFiles files(*desk.session);
    const QString logo = desk.picture("logo.bmp", 400, 100);
    frmListManager manager({*desk.session, desk.icons}, ItemKind::Label, nullptr);
    open(manager);
    inNextForm<frmNewLabel>([&](frmNewLabel& form) {
        QCOMPARE(form.windowTitle(), QString(" Add new label"));
        type(form, "Nova & Sons' 100%");
        desk.messages.willChoose({logo});
        click(form, "cmdImport");
        QCOMPARE(form.findChild<QLabel*>("picLogo")->pixmap().size(), QSize(180, 45));
        key(form, Qt::Key_Return);
    });
    click(manager, "cmdNew");
    const qint64 id = desk.number("SELECT LabelID FROM Labels WHERE LabelName = 'Nova & Sons'' 100%'");
    QCOMPARE(bytesOf(files.path(Session::Folder::Labels, id)), bytesOf(logo)); // as it was imported

    QApplication::clipboard()->setImage(QImage(30, 20, QImage::Format_RGB32));
    frmNewLabel form({*desk.session, desk.icons}, id);
    open(form);
    click(form, "cmdPaste");
    click(form, "cmdSave");
    QVERIFY(QImage::fromData(bytesOf(files.path(Session::Folder::Labels, id))).size() == QSize(30, 20));
    frmNewLabel again({*desk.session, desk.icons}, id);
    open(again);
    click(again, "cmdClear");
    QVERIFY(files.exists(Session::Folder::Labels, id)); // not before it is saved
    click(again, "cmdSave");
    QVERIFY(!files.exists(Session::Folder::Labels, id));
}

void TestAttachForms::labelThatCannotBeSaved() {
    Desk desk;
    const qint64 labels = desk.count("Labels");
    const QString first = desk.items().nameOf(ItemKind::Label, 1);
    frmNewLabel form({*desk.session, desk.icons}, 0);
    open(form);
    type(form, first.toUpper());
    for (const auto& [name, bytes] : {std::pair("text.bmp", "no picture"), std::pair("empty.gif", "")}) {
        desk.messages.willChoose({desk.write(name, bytes)});
        click(form, "cmdImport");
    }
    QCOMPARE(desk.messages.told.size(), 2);
    click(form, "cmdSave");
    QCOMPARE(desk.messages.told.back(), first.toUpper() + " is already in archive!");
    // The logo cannot be written: nothing of the label is kept.
    field(form, "txtName").setText("Another");
    desk.messages.willChoose({desk.picture("a.bmp", 9, 9)});
    click(form, "cmdImport");
    QDir(desk.file("Tessaranth_Labels")).removeRecursively();
    desk.write("Tessaranth_Labels"); // a file where the folder should be
    click(form, "cmdSave");
    QVERIFY(form.isVisible());
    QCOMPARE(desk.messages.told.size(), 4);
    QCOMPARE(desk.count("Labels"), labels);
    QFile::remove(desk.file("Tessaranth_Labels"));
    click(form, "cmdSave");
    QCOMPARE(desk.count("Labels"), labels + 1);
}

void TestAttachForms::customCardEditor() {
    Desk desk;
    frmNewUserDef form({*desk.session, desk.icons}, 0, &desk.cards);
    QCOMPARE(form.windowTitle(), QString(" New Custom item"));
    open(form);
    type(form, desk.items().nameOf(ItemKind::Custom, 1).toUpper());
    key(form, Qt::Key_Return);
    QCOMPARE(desk.messages.told, QStringList("Item already exists"));
    type(form, " 2");
    key(form, Qt::Key_Return);
    QVERIFY(form.result() == QDialog::Accepted && form.id() != 0);
    frmNewUserDef untouched({*desk.session, desk.icons}, form.id(), &desk.cards);
    open(untouched);
    untouched.close(); // does not ask
    QVERIFY(!untouched.isVisible());
}

void TestAttachForms::placesOfMedia() {
    Desk desk;
    desk.run(
        "INSERT INTO Media (RelatedCat, RelatedID, MediaTitle, MediaFile, MediaFolder) VALUES ('Cps', 4, "
        "'t', 'f', 'D:\\a')");
    frmMediaPath form({*desk.session, desk.icons}, &desk.cards);
    open(form);
    auto& update = *form.findChild<QPushButton*>("cmdUpdate");
    auto& old = *form.findChild<QComboBox*>("cmbOldDrive");
    QVERIFY(old.itemText(0) == "Any" && old.itemText(1) == "D:" && !update.isEnabled());
    form.findChild<QRadioButton*>("optFolder")->setChecked(true);
    QVERIFY(!field(form, "txtOldFolder").text().size() && !old.isEnabled());
    field(form, "txtOldFolder").setText("D:\\");
    desk.messages.willChoose({"/mnt/b"});
    click(form, "cmdNewFolder");
    desk.messages.willAnswer(Answer::No);
    click(form, "cmdUpdate");
    QVERIFY(form.isVisible());
    form.findChild<QRadioButton*>("optDrive")->setChecked(true);
    form.findChild<QComboBox*>("cmbNewDrive")->setCurrentText("E:");
    desk.messages.willAnswer(Answer::Yes);
    click(form, "cmdUpdate");
    QVERIFY(!form.isVisible());
    QCOMPARE(desk.text("SELECT MediaFolder FROM Media"), QString("E:\\a"));
    QCOMPARE(desk.cards.reloaded, QStringList("#Cps4"));
}

// The toolbox uses the same keys for its own list, wherever the focus is.
void TestAttachForms::keysOfAPanelWithinTheFrame() {
    Desk desk;
    MainWindow window({*desk.session, desk.icons});
    open(window);
    window.openCard("Cps", 1);
    auto* card = window.findChild<frmItem*>();
    QVERIFY(card->showPanel("Web"));
    auto* view = card->findChild<QTreeView*>("lvWeb");
    view->setFocus();
    inNextForm<frmNewWeb>([](frmNewWeb& form) { key(form, Qt::Key_Escape); });
    QTest::keyClick(view, Qt::Key_Insert);
    card->showPanel("Media");
    desk.run("INSERT INTO Media (RelatedCat, RelatedID, MediaTitle) VALUES ('Cps', 1, 'elsewhere')");
    view = card->findChild<QTreeView*>("lvMedia");
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    view->setFocus();
    QTest::keyClick(view, Qt::Key_F5);
    QCOMPARE(view->model()->rowCount(), 1);
    desk.messages.willAnswer(Answer::Yes); // exit
    window.close();
}

QTEST_MAIN(TestAttachForms)
#include "test_attachforms.moc"
