// SPDX-License-Identifier: GPL-3.0-or-later
// The forms of persons and lookup lists, worked with keyboard and mouse only.
#include "items/forms/frmListChooser.h"
#include "items/forms/frmListManager.h"
#include "items/forms/frmMigrate.h"
#include "items/forms/frmNewLabel.h"
#include "items/forms/frmPers.h"
#include "items/forms/frmPersSearch.h"
#include "support/ItemCatalog.h"
#include "widgets/IconStore.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QTreeView>

using namespace tessaranth;

namespace {

struct Desk : ItemCatalog {
    explicit Desk(bool sample = true) : ItemCatalog(sample), icons(file("tsrthres.dll")) {}
    IconStore icons;
};

void open(QDialog& form) {
    form.show();
    QVERIFY(QTest::qWaitForWindowActive(&form));
}

QLineEdit& field(QWidget& form, const char* name) { return *form.findChild<QLineEdit*>(name); }
QPushButton& button(QWidget& form, const char* name) { return *form.findChild<QPushButton*>(name); }
QTreeView& list(QWidget& form) { return *form.findChild<QTreeView*>(); }

/// Presses a key where the user's keys go.
void key(QWidget& form, Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) {
    QTest::keyClick(form.focusWidget() ? form.focusWidget() : &form, key, with);
}
void type(QWidget& form, const QString& text) { QTest::keyClicks(form.focusWidget(), text); }
void click(QWidget& form, const char* name) { QTest::mouseClick(&button(form, name), Qt::LeftButton); }

void clickRow(QTreeView& view, int row, Qt::KeyboardModifiers with = Qt::NoModifier) {
    const QPoint place = view.visualRect(view.model()->index(row, 0)).center();
    QTest::mouseClick(view.viewport(), Qt::LeftButton, with, place);
}
void doubleClickRow(QTreeView& view, int row) {
    clickRow(view, row);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {},
                       view.visualRect(view.model()->index(row, 0)).center());
}
QString firstCell(QTreeView& view, int row = 0) { return view.model()->index(row, 0).data().toString(); }

/// Works the form that the next step opens above the present one.
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

/// Answers what the next step asks a name by: labels have a form of their own, the other lists a name input.
void willName(Desk& desk, int kind, const QString& name) {
    if (kind != ItemKind::Label)
        return desk.messages.willType(name);
    inNextForm<frmNewLabel>([name](frmNewLabel& form) {
        field(form, "txtName").selectAll();
        type(form, name);
        key(form, Qt::Key_Return);
    });
}

} // namespace

class TestPersonForms : public QObject {
    Q_OBJECT

private slots:
    void newPersonByKeyboard();
    void editingChangesOnlyWhatWasTyped();
    void yearThatCannotStand();
    void storedYearsAreShownWhole();
    void cardGoneMeanwhileStaysTyped();
    void closingAsksAboutChanges_data();
    void closingAsksAboutChanges();
    void personOfTheInternalList();
    void manyOfTheInternalList();
    void mergeAsksOnceAKey();
    void managerOfEveryList_data();
    void managerOfEveryList();
    void managerDeletesAndMerges();
    void chooserTypesAhead();
    void chooserTakesSeveral();
    void chooserKeepsWhatWasChosen();
    void chooserMakesNewOnes();
    void chooserOfAReadyList();
};

void TestPersonForms::newPersonByKeyboard() {
    Desk desk(false);
    frmPers form({*desk.session, desk.icons}, ItemKind::Composer, 0);
    QCOMPARE(form.windowTitle(), QString(" New composer"));
    open(form);
    key(form, Qt::Key_Return); // nothing to save yet
    QVERIFY(form.isVisible());
    for (const char* text : {"Bach", "Johann Sebastian", "1685", "1750", "BWV"}) {
        type(form, text);
        key(form, Qt::Key_Tab);
    }
    key(form, Qt::Key_S, Qt::AltModifier);
    QTRY_COMPARE(form.result(), int(QDialog::Accepted)); // a mnemonic presses its button for a moment
    QCOMPARE(
        desk.text(
            "SELECT CpsFname FROM Cps WHERE CpsLname = 'Bach' AND CpsY = '1685-1750' AND CatAcr = 'BWV'"),
        QString("Johann Sebastian"));
    QCOMPARE(form.id(), desk.number("SELECT CpsID FROM Cps"));

    frmPers second({*desk.session, desk.icons}, ItemKind::Composer, 0);
    open(second);
    type(second, "bach");
    key(second, Qt::Key_Tab);
    type(second, "johann sebastian");
    key(second, Qt::Key_Return);
    QCOMPARE(desk.messages.told, QStringList("johann sebastian bach is already in archive"));
    QVERIFY(second.isVisible());
    QCOMPARE(desk.count("Cps"), 1);
    desk.messages.willAnswer(Answer::No);
    second.close();
}

void TestPersonForms::editingChangesOnlyWhatWasTyped() {
    Desk desk;
    frmPers form({*desk.session, desk.icons}, ItemKind::Performer, 1);
    QCOMPARE(form.windowTitle(), QString(" Edit performer"));
    QVERIFY(!form.findChild<QLineEdit*>("txtCatAcr"));
    const Person before = desk.items().person(ItemKind::Performer, 1);
    open(form);
    QCOMPARE(field(form, "txtLname").text(), before.last);
    QCOMPARE(field(form, "txtFname").text(), before.first);
    field(form, "txtLname").end(false);
    type(form, " jr.");
    key(form, Qt::Key_Return);
    QCOMPARE(form.result(), int(QDialog::Accepted));
    const Person after = desk.items().person(ItemKind::Performer, 1);
    QCOMPARE(after.last, before.last + " jr.");
    QCOMPARE(after.first + after.born + after.died, before.first + before.born + before.died);
}

void TestPersonForms::yearThatCannotStand() {
    Desk desk;
    frmPers form({*desk.session, desk.icons}, ItemKind::Composer, 1);
    open(form);
    QLineEdit& born = field(form, "txtB");
    const auto isYellow = [&born] {
        const QImage shown = born.grab().toImage();
        return shown.pixelColor(shown.width() - 6, shown.height() / 2) == QColor(255, 255, 0);
    };
    QVERIFY(!isYellow());
    born.setFocus();
    born.selectAll();
    type(form, "16");
    QVERIFY(isYellow());
    field(form, "txtLname").setFocus();
    key(form, Qt::Key_Return);
    QVERIFY(form.isVisible());
    QCOMPARE(desk.messages.told.size(), 1);
    QCOMPARE(form.focusWidget(), &born); // what was wrong is selected, to be typed anew
    type(form, "16851");
    QVERIFY(isYellow()); // nothing that was typed is cut off
    key(form, Qt::Key_Backspace);
    QCOMPARE(born.text(), QString("1685"));
    QVERIFY(!isYellow());
    field(form, "txtLname").setFocus();
    QApplication::clipboard()->setText(QString(251, 'x'));
    key(form, Qt::Key_V, Qt::ControlModifier);
    key(form, Qt::Key_Return);
    QCOMPARE(desk.messages.told.back(), QString("Last Name: at most 250 characters."));
    QVERIFY(field(form, "txtLname").text().size() > 250);
    field(form, "txtLname").selectAll();
    type(form, "  Bach ");
    key(form, Qt::Key_Return);
    QVERIFY(!form.isVisible());
}

void TestPersonForms::storedYearsAreShownWhole() {
    Desk desk;
    desk.run("UPDATE Cps SET CpsB = 'c.1397', CpsD = '1685?', CatAcr = '" + QString(25, 'x') +
             "' WHERE CpsID = 1");
    frmPers untouched({*desk.session, desk.icons}, ItemKind::Composer, 1);
    open(untouched);
    QCOMPARE(field(untouched, "txtB").text() + field(untouched, "txtD").text(), QString("c.13971685?"));
    QVERIFY(field(untouched, "txtB").styleSheet().isEmpty()); // the user typed nothing wrong
    key(untouched, Qt::Key_Escape);
    QVERIFY(!untouched.isVisible());
    QVERIFY(desk.messages.asked.empty());

    frmPers form({*desk.session, desk.icons}, ItemKind::Composer, 1);
    open(form);
    field(form, "txtFname").setFocus();
    field(form, "txtFname").selectAll();
    type(form, " J. S. ");
    key(form, Qt::Key_Return);
    QVERIFY(!form.isVisible());
    const Person stored = desk.items().person(ItemKind::Composer, 1);
    QCOMPARE(stored.first + stored.born + stored.died + stored.acronym,
             "J. S.c.13971685?" + QString(25, 'x'));
    QCOMPARE(desk.messages.told, QStringList());
}

void TestPersonForms::cardGoneMeanwhileStaysTyped() {
    Desk desk;
    for (const int kind : {ItemKind::Composer, ItemKind::Performer}) {
        const QString table = itemKind(kind)->table;
        frmPers open1({*desk.session, desk.icons}, kind, 1);
        QVERIFY(desk.items().EliminaItem(kind, {1}, desk.progress));
        frmPers open2({*desk.session, desk.icons}, kind, 1); // from a list that still shows the card
        const qint64 before = desk.count(table);
        for (frmPers* form : {&open1, &open2}) {
            open(*form);
            type(*form, "Typed");
            key(*form, Qt::Key_Return);
            QCOMPARE(desk.messages.told.takeLast(), QString("This card has been deleted meanwhile."));
            QVERIFY(form->isVisible() && field(*form, "txtLname").text().contains("Typed"));
            QCOMPARE(desk.count(table), before);
            desk.messages.willAnswer(Answer::No);
            key(*form, Qt::Key_Escape);
            QVERIFY(!form->isVisible());
        }
    }
}

void TestPersonForms::closingAsksAboutChanges_data() {
    QTest::addColumn<Answer>("answer");
    QTest::addColumn<bool>("open");
    QTest::addColumn<bool>("saved");
    QTest::newRow("yes") << Answer::Yes << false << true;
    QTest::newRow("no") << Answer::No << false << false;
    QTest::newRow("cancel") << Answer::Cancel << true << false;
}

void TestPersonForms::closingAsksAboutChanges() {
    QFETCH(Answer, answer);
    QFETCH(bool, open);
    QFETCH(bool, saved);
    Desk desk;
    frmPers untouched({*desk.session, desk.icons}, ItemKind::Composer, 1);
    ::open(untouched);
    key(untouched, Qt::Key_Escape);
    QVERIFY(!untouched.isVisible());
    QVERIFY(desk.messages.asked.empty());

    frmPers form({*desk.session, desk.icons}, ItemKind::Composer, 1);
    ::open(form);
    field(form, "txtFname").setFocus();
    field(form, "txtFname").selectAll();
    type(form, "J. S.");
    desk.messages.willAnswer(answer);
    key(form, Qt::Key_Escape);
    QCOMPARE(desk.messages.asked.back().text, QString("Do you want to save the changes?"));
    QCOMPARE(form.isVisible(), open);
    QCOMPARE(desk.number("SELECT COUNT(*) FROM Cps WHERE CpsFname = 'J. S.'"), saved ? 1 : 0);
    QCOMPARE(form.result(), saved ? int(QDialog::Accepted) : int(QDialog::Rejected));
}

void TestPersonForms::personOfTheInternalList() {
    Desk desk(false);
    frmPers form({*desk.session, desk.icons}, ItemKind::Composer, 0);
    open(form);
    QString chosen;
    inNextForm<frmPersSearch>([&chosen](frmPersSearch& search) {
        QCOMPARE(search.windowTitle(), QString("Import a composer from the internal list"));
        type(search, "nobody is called so");
        QCOMPARE(search.findChild<QLabel*>("state")->text(), QString("No match"));
        QVERIFY(!button(search, "cmdImport").isEnabled());
        field(search, "txtSearch").selectAll();
        type(search, "bach");
        QVERIFY(list(search).model()->rowCount() > 1);
        key(search, Qt::Key_Down);
        QCOMPARE(list(search).currentIndex().row(), 1);
        QCOMPARE(search.focusWidget(), &field(search, "txtSearch"));
        chosen = firstCell(list(search), 1);
        key(search, Qt::Key_Return);
    });
    click(form, "cmdInternalList");
    QVERIFY(!chosen.isEmpty());
    QCOMPARE(field(form, "txtLname").text(), chosen);
    QCOMPARE(field(form, "txtB").text().size(), 4);
    key(form, Qt::Key_Return);
    QVERIFY(!form.isVisible());
    QCOMPARE(desk.count("Cps"), 1);
}

void TestPersonForms::manyOfTheInternalList() {
    Desk desk(false);
    frmPersSearch form({*desk.session, desk.icons}, ItemKind::Performer, {}, nullptr,
                       frmPersSearch::Mode::ImportMany);
    QCOMPARE(form.windowTitle(), QString("Import multiple performers"));
    open(form);
    QVERIFY(!button(form, "cmdImport").isEnabled());
    clickRow(list(form), 0);
    clickRow(list(form), 3, Qt::ShiftModifier);
    clickRow(list(form), 1, Qt::ControlModifier);
    click(form, "cmdImport");
    QVERIFY(!form.isVisible());
    QCOMPARE(desk.count("Pfr"), 3);
    QVERIFY(desk.messages.told.back().startsWith("3 "));
}

void TestPersonForms::mergeAsksOnceAKey() {
    Desk desk;
    frmMigrate form({*desk.session, desk.icons}, ItemKind::Composer, 1, nullptr);
    QCOMPARE(form.windowTitle(), QString("  Migrate composer"));
    open(form);
    type(form, "Bach");
    key(form, Qt::Key_Down);
    QVERIFY(!button(form, "cmdMigrate").isEnabled()); // into itself
    field(form, "txtFilter").selectAll();
    type(form, "Brahms");
    key(form, Qt::Key_Down);
    desk.messages.willAnswer(Answer::Cancel);
    key(form, Qt::Key_Return);
    QCOMPARE(desk.messages.asked.size(), size_t(1));
    list(form).setFocus();
    desk.messages.willAnswer(Answer::Cancel);
    key(form, Qt::Key_Return);
    QCOMPARE(desk.messages.asked.size(), size_t(2));
    QVERIFY(form.isVisible());
    desk.messages.willAnswer(Answer::Ok);
    doubleClickRow(list(form), 0);
    QCOMPARE(form.result(), int(QDialog::Accepted));
    QCOMPARE(desk.number("SELECT COUNT(*) FROM Cps WHERE CpsID = 1"), 0);
    QVERIFY(desk.number(QString("SELECT COUNT(*) FROM Compositions WHERE CpsID = %1").arg(form.target())) >
            0);
}

void TestPersonForms::managerOfEveryList_data() {
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("title");
    QTest::newRow("genres") << int(ItemKind::Genre) << "Manage global genres";
    QTest::newRow("labels") << int(ItemKind::Label) << "Manage labels";
    QTest::newRow("sources") << int(ItemKind::Source) << "Manage sources";
    QTest::newRow("supports") << int(ItemKind::Support) << "Manage supports";
}

void TestPersonForms::managerOfEveryList() {
    QFETCH(int, kind);
    QFETCH(QString, title);
    Desk desk;
    const ItemKind& what = *itemKind(kind);
    const qint64 before = desk.count(what.table);
    frmListManager form({*desk.session, desk.icons}, kind, nullptr);
    QCOMPARE(form.windowTitle(), title);
    open(form);
    const auto count = [&] { return form.findChild<QLabel*>("count")->text(); };
    QCOMPARE(count(), what.countCaption + QString::number(before));
    for (const char* name : {"cmdRename", "cmdDelete", "cmdMigrate"})
        QVERIFY(!button(form, name).isEnabled());

    willName(desk, kind, "Zzz new");
    click(form, "cmdNew");
    form.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    QCOMPARE(list(form).currentIndex().data().toString(), QString("Zzz new"));
    QCOMPARE(count(), what.countCaption + QString::number(before + 1));
    // What is typed narrows the list; the first that matches is selected, and keys work on it.
    field(form, "txtFilter").setFocus();
    type(form, "zzz");
    QCOMPARE(list(form).model()->rowCount(), 1);
    list(form).setFocus();
    willName(desk, kind, "Aaa renamed");
    key(form, Qt::Key_F2);
    form.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    if (kind != ItemKind::Label)
        QCOMPARE(desk.messages.nameRequests.back().defaultText, QString("Zzz new"));
    QCOMPARE(list(form).currentIndex().data().toString(), QString("Aaa renamed"));
    QCOMPARE(field(form, "txtFilter").text(), QString());
    desk.messages.willAnswer(Answer::No);
    key(form, Qt::Key_Delete);
    QCOMPARE(desk.count(what.table), before + 1);
    desk.messages.willAnswer(Answer::Yes);
    key(form, Qt::Key_Delete);
    QCOMPARE(desk.count(what.table), before);
    QVERIFY(desk.messages.asked.back().text.startsWith(what.messageLabel + "Aaa renamed\n"));
    QVERIFY(form.hasChanged());
    key(form, Qt::Key_Return); // Enter means nothing here
    QVERIFY(form.isVisible());
    key(form, Qt::Key_Escape);
    QVERIFY(!form.isVisible());
}

void TestPersonForms::managerDeletesAndMerges() {
    Desk desk;
    frmListManager form({*desk.session, desk.icons}, ItemKind::Genre, nullptr);
    open(form);
    const qint64 before = desk.count("Genres");
    const QString first = firstCell(list(form), 0);
    const QString second = firstCell(list(form), 1);
    const QString third = firstCell(list(form), 2);
    clickRow(list(form), 0);
    key(form, Qt::Key_Down, Qt::ShiftModifier);
    QVERIFY(!button(form, "cmdRename").isEnabled() && !button(form, "cmdMigrate").isEnabled());
    desk.messages.willAnswer(Answer::Yes);
    click(form, "cmdDelete");
    QVERIFY(desk.messages.asked.back().text.startsWith("Genres: " + first + ", " + second + "\n"));
    QCOMPARE(desk.count("Genres"), before - 2);
    QCOMPARE(firstCell(list(form), 0), third);

    clickRow(list(form), 0);
    desk.messages.willAnswer(Answer::Ok);
    inNextForm<frmMigrate>([](frmMigrate& merge) { doubleClickRow(list(merge), 1); });
    click(form, "cmdMigrate");
    QCOMPARE(desk.count("Genres"), before - 3);
    QVERIFY(firstCell(list(form), 0) != third);
    QCOMPARE(list(form).currentIndex().row(), 0); // the target
}

void TestPersonForms::chooserTypesAhead() {
    Desk desk;
    frmListChooser form({*desk.session, desk.icons}, ItemKind::Composer, "  Composers list", false);
    QCOMPARE(form.windowTitle(), QString("  Composers list"));
    open(form);
    key(form, Qt::Key_Return); // nothing is chosen by chance
    QVERIFY(form.isVisible());
    type(form, "b");
    QCOMPARE(list(form).currentIndex().row(), 0);
    key(form, Qt::Key_Down);
    key(form, Qt::Key_Down);
    key(form, Qt::Key_Up);
    QCOMPARE(form.focusWidget(), &field(form, "txtFilter"));
    const QString expected = firstCell(list(form), 1);
    key(form, Qt::Key_Return);
    QCOMPARE(form.result(), int(QDialog::Accepted));
    QCOMPARE(form.names(), QStringList(expected));
    QCOMPARE(desk.items().person(ItemKind::Composer, form.id()).last, expected.section(',', 0, 0));
    QVERIFY(!form.hasCreated());

    frmListChooser mouse({*desk.session, desk.icons}, ItemKind::Label, "  Labels list", false);
    open(mouse);
    mouse.select(3);
    QCOMPARE(mouse.id(), 3);
    type(mouse, "no label is called so");
    QVERIFY(!button(mouse, "cmdChoose").isEnabled());
    QCOMPARE(mouse.id(), 0);
    field(mouse, "txtFilter").clear();
    doubleClickRow(list(mouse), 2);
    QCOMPARE(mouse.result(), int(QDialog::Accepted));
    QCOMPARE(mouse.names(), QStringList(firstCell(list(mouse), 2)));
}

void TestPersonForms::chooserTakesSeveral() {
    Desk desk;
    frmListChooser form({*desk.session, desk.icons}, ItemKind::Performer, "  Performers list", true);
    open(form);
    type(form, "b");
    key(form, Qt::Key_Down, Qt::ShiftModifier);
    clickRow(list(form), 3, Qt::ControlModifier);
    const QStringList expected{firstCell(list(form), 0), firstCell(list(form), 1), firstCell(list(form), 3)};
    click(form, "cmdChoose");
    QCOMPARE(form.names(), expected);
    QCOMPARE(form.ids().size(), size_t(3));
    QCOMPARE(desk.items().person(ItemKind::Performer, form.ids()[2]).last, expected[2].section(',', 0, 0));
}

void TestPersonForms::chooserKeepsWhatWasChosen() {
    Desk desk;
    frmListChooser form({*desk.session, desk.icons}, ItemKind::Performer, "  Performers list", true);
    open(form);
    type(form, "cal");
    key(form, Qt::Key_Space, Qt::ControlModifier);
    type(form, "k"); // replaces what was typed; the first row that fits is chosen only as long as it is first
    type(form, "ar");
    const QString second = firstCell(list(form), 0);
    QVERIFY(form.findChild<QLabel*>("state")->text().contains("2 chosen"));
    key(form, Qt::Key_Space, Qt::ControlModifier);
    type(form, "nobody is called so");
    QCOMPARE(form.names().size(), 2);
    form.findChild<QLineEdit*>("txtFilter")->clear();
    QCOMPARE(list(form).selectionModel()->selectedRows().size(), 2);
    click(form, "cmdChoose");
    QVERIFY(form.names()[0].startsWith("Cal"));
    QCOMPARE(form.names()[1], second);
}

void TestPersonForms::chooserMakesNewOnes() {
    Desk desk;
    frmListChooser sources({*desk.session, desk.icons}, ItemKind::Source, "  Sources list", false);
    open(sources);
    type(sources, "x");
    desk.messages.willType({}); // cancelled
    click(sources, "cmdNew");
    QVERIFY(!sources.hasCreated());
    desk.messages.willType("My own source");
    click(sources, "cmdNew");
    QVERIFY(sources.hasCreated());
    QCOMPARE(sources.names(), QStringList("My own source"));
    key(sources, Qt::Key_Return);
    QCOMPARE(desk.items().nameOf(ItemKind::Source, sources.id()), QString("My own source"));

    frmListChooser persons({*desk.session, desk.icons}, ItemKind::Composer, "  Composers list", true);
    open(persons);
    inNextForm<frmPers>([](frmPers& editor) {
        type(editor, "Newcomer");
        key(editor, Qt::Key_Return);
    });
    click(persons, "cmdNew");
    QCOMPARE(persons.names(), QStringList("Newcomer"));

    // Recordings and custom cards have editors of their own.
    frmListChooser recordings({*desk.session, desk.icons}, ItemKind::Recording, "  Recordings", false);
    open(recordings);
    QVERIFY(!button(recordings, "cmdNew").isVisible());
}

void TestPersonForms::chooserOfAReadyList() {
    Desk desk;
    ItemList works({{"Title"}, {"Number"}});
    works.addRow(7, "Comp", {"Symphony No. 5", "Op. 67"});
    works.addRow(8, "Comp", {"Piano Concerto", "Op. 73"});
    frmListChooser form({*desk.session, desk.icons}, "Comp", works, "  Composer works", true);
    open(form);
    QVERIFY(!button(form, "cmdNew").isVisible());
    type(form, "CONCERTO");
    QCOMPARE(list(form).model()->rowCount(), 1);
    QCOMPARE(form.id(), 8);
    field(form, "txtFilter").clear();
    QCOMPARE(list(form).model()->rowCount(), 2);
    form.setCreator([](QWidget*) { return qint64(9); },
                    [&works](ItemList& all) {
                        works.addRow(9, "Comp", {"Fidelio", "Op. 72"});
                        all = works;
                        return true;
                    });
    click(form, "cmdNew");
    QCOMPARE(form.names(), QStringList("Fidelio"));
    QCOMPARE(list(form).model()->rowCount(), 3);
}

QTEST_MAIN(TestPersonForms)
#include "test_personforms.moc"
