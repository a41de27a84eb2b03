// SPDX-License-Identifier: GPL-3.0-or-later
// The recording editor: one recording entered with the keyboard alone and another with the mouse leave the
// same rows; what is refused; what happens to edits that were not saved.
#include "items/forms/frmListChooser.h"
#include "recordings/forms/EditorDesk.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTimer>
#include <QTreeView>

using namespace tessaranth;

class TestRecordingEditor final : public QObject, private EditorDesk {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_editor.reset(); }
    void keyboardAndMouseEnterTheSame();
    void refusesBadInput();
    void lengthsAreStoredAsTyped();
    void enterSetsTheTrackThatIsChanged();
    void upperDiscsStayWithinReach();
    void worksKeepTheOrderOfTheDisc();
    void removesComposersWithTheirWorks();
    void asksBeforeEditsAreLost();
    void warnsOfDoubles();
    void tracksOfOneDisc();
    void keepsTracksTypedButNotAdded();
    void ordersByDragging();
    void survivesChangesElsewhere();
    void mnemonicsAreUniqueAndControlsNamed();

private:
    void edit(qint64 id);
    static void chooseByKeyboard(const QStringList& names);
    static void chooseByMouse(const QStringList& names);
    void clickRow(const char* list, const QString& text,
                  Qt::KeyboardModifiers modifiers = Qt::NoModifier) const;
    void enterByKeyboard();
    void enterByMouse();
    QStringList rowsOf(qint64 recording) const;
    void drag(OrderedTree* tree, int from, int to, bool behind) const;
};

void TestRecordingEditor::init() {
    m_editor.reset();
    m_cards = {};
    m_home = std::make_unique<ItemCatalog>();
    m_icons = std::make_unique<IconStore>(m_home->file("tsrthres.dll"));
    for (const char* statement :
         {"INSERT INTO Cps (CpsLname, CpsFname, CpsB, CpsD, CatAcr) VALUES ('Puccini', 'Giacomo', '1858', "
          "'1924', 'SC')",
          "INSERT INTO Pfr (PfrLname, PfrFname) VALUES ('Callas', 'Maria')",
          "INSERT INTO Pfr (PfrLname, PfrFname) VALUES ('di Stefano', 'Giuseppe')",
          "INSERT INTO Pfr (PfrLname, PfrFname) VALUES ('Sabata', 'Victor de')",
          "INSERT INTO Labels (LabelName) VALUES ('Columbia')",
          "INSERT INTO Compositions (CpsID, CompTitle, CompNbr) VALUES (1, 'Tosca', '69')",
          "INSERT INTO Compositions (CpsID, CompTitle, CompNbr) VALUES (1, 'Turandot', '91')",
          "INSERT INTO Personages (CompID, PersonageName) VALUES (1, 'Cavaradossi')",
          "INSERT INTO Personages (CompID, PersonageName) VALUES (1, 'Floria Tosca')",
          "INSERT INTO Personages (CompID, PersonageName) VALUES (1, 'A voice')"})
        m_home->run(statement);
    edit(0);
}

void TestRecordingEditor::edit(qint64 id) {
    m_editor = std::make_unique<frmRec>(FormContext{*m_home->session, *m_icons}, id, &m_cards);
    s_window = m_editor.get();
    m_editor->show();
    QVERIFY(QTest::qWaitForWindowActive(m_editor.get()));
}

void TestRecordingEditor::chooseByKeyboard(const QStringList& names) {
    for (const QString& name : names) {
        type(name);
        if (name != names.back())
            key(Qt::Key_Space, Qt::ControlModifier);
    }
    key(Qt::Key_Return);
}

void TestRecordingEditor::chooseByMouse(const QStringList& names) {
    auto* chooser = qobject_cast<frmListChooser*>(QApplication::activeModalWidget());
    QVERIFY(chooser);
    auto* view = chooser->findChild<QTreeView*>("lvItems");
    for (const QString& name : names) {
        const QModelIndexList found =
            view->model()->match(view->model()->index(0, 0), Qt::DisplayRole, name, 1, Qt::MatchStartsWith);
        QCOMPARE(found.size(), 1);
        QTest::mouseClick(view->viewport(), Qt::LeftButton,
                          name == names.front() ? Qt::NoModifier : Qt::ControlModifier,
                          view->visualRect(found.front()).center());
    }
    QTest::mouseClick(chooser->findChild<QPushButton*>("cmdChoose"), Qt::LeftButton);
}

void TestRecordingEditor::clickRow(const char* name, const QString& text,
                                   Qt::KeyboardModifiers modifiers) const {
    OrderedTree* tree = list(name);
    const QList<QTreeWidgetItem*> items = tree->findItems(
        text, Qt::MatchStartsWith | Qt::MatchRecursive,
        QLatin1String(name) == "lvPfr" && tree->columnCount() == 2 && tree->headerItem()->text(0) == "No."
            ? 1
            : 0);
    QCOMPARE(items.size(), 1);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, modifiers,
                      tree->visualItemRect(items.front()).center());
}

void TestRecordingEditor::enterByKeyboard() {
    type("Tosca");
    key(Qt::Key_F, Qt::AltModifier);
    type("2");
    key(Qt::Key_Tab, Qt::ShiftModifier); // from the discs to the label, where typing opens the list
    then([] { chooseByKeyboard({"ol"}); });
    type("c");
    key(Qt::Key_B, Qt::AltModifier);
    type("5099");
    key(Qt::Key_S, Qt::AltModifier);
    type("AAD");
    key(Qt::Key_A, Qt::AltModifier);
    key(Qt::Key_2, Qt::AltModifier);
    then([] { chooseByKeyboard({"pucc"}); });
    key(Qt::Key_O, Qt::AltModifier);
    then([] { chooseByKeyboard({"sab", "cal", "di s"}); });
    key(Qt::Key_P, Qt::AltModifier);
    key(Qt::Key_Down); // all that were added are selected
    key(Qt::Key_Up);
    key(Qt::Key_D, Qt::AltModifier); // the conductor goes behind the soprano
    key(Qt::Key_A, Qt::AltModifier);
    key(Qt::Key_3, Qt::AltModifier);
    then([] { chooseByKeyboard({"tos", "91"}); });
    key(Qt::Key_W, Qt::AltModifier);
    key(Qt::Key_X, Qt::AltModifier);
    type("Act 2");
    key(Qt::Key_A, Qt::AltModifier);
    key(Qt::Key_4, Qt::AltModifier);
    then([] { chooseByKeyboard({"cal", "stefano"}); });
    key(Qt::Key_P, Qt::AltModifier);
    key(Qt::Key_Home);
    then([] { chooseByKeyboard({"voice", "tosca"}); });
    key(Qt::Key_S, Qt::AltModifier);
    key(Qt::Key_A, Qt::AltModifier);
    key(Qt::Key_5, Qt::AltModifier);
    type("Ah! Finalmente!");
    key(Qt::Key_Tab);
    type("0214");
    key(Qt::Key_Return);
    type("Sommo giubilo");
    key(Qt::Key_Return);
    key(Qt::Key_F, Qt::AltModifier);
    type("a10b0c0d");
    key(Qt::Key_A, Qt::AltModifier);
    key(Qt::Key_C, Qt::AltModifier);
}

void TestRecordingEditor::enterByMouse() {
    auto* tabs = find<QTabWidget>("tabs")->tabBar();
    const auto go = [&](int tab) {
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(tab).center());
    };
    find<QLineEdit>("txtTitle")->setText("Tosca");
    find<QLineEdit>("txtUnits")->setText("2");
    find<QLineEdit>("txtBarcode")->setText("5099");
    find<QComboBox>("cboSpars")->setCurrentText("AAD");
    then([] { chooseByMouse({"Columbia"}); });
    click("cmdLabel");
    m_home->messages.willAnswer(Answer::No); // the barcode is that of the first one
    click("cmdApply");
    go(1);
    then([] { chooseByMouse({"Puccini"}); });
    click("cmdCpsAdd");
    then([] { chooseByMouse({"Callas", "di Stefano", "Sabata"}); });
    click("cmdPfrAdd");
    clickRow("lvPfr", "di Stefano");
    click("cmdPfrDown");
    click("cmdApply");
    go(2);
    then([] { chooseByMouse({"Tosca", "Turandot"}); });
    click("cmdWksAdd");
    clickRow("TV", "Tosca");
    find<QLineEdit>("txtExcerpt")->setFocus();
    type("Act 2");
    click("cmdApply");
    go(3);
    then([] { chooseByMouse({"Callas", "di Stefano"}); });
    click("cmdCastAdd");
    clickRow("lvPfr", "Callas");
    then([] { chooseByMouse({"A voice", "Floria"}); });
    click("cmdCastRoles");
    click("cmdApply");
    go(4);
    for (const auto& [name, length] : {std::pair("Ah! Finalmente!", "02.14"), {"Sommo giubilo", ""}}) {
        find<QLineEdit>("txtTrack")->setText(name);
        find<QLineEdit>("meb")->setText(length);
        click("cmdTrackAdd");
    }
    find<QLineEdit>("txtDiscId")->setText("a10b0c0d");
    click("cmdApply");
    click("cmdClose");
}

// Everything but the keys of rows that belong to one recording only.
QStringList TestRecordingEditor::rowsOf(qint64 recording) const {
    QStringList rows;
    for (const char* statement :
         {"SELECT RecTitle, RecSubTitle, LabelID, SupportID, SourceID, Rating, ProdNbr, Notes, Barcode, "
          "LocationCode, UnitsNbr, Spars, RelDate, Price, RefRec, AddDate FROM Rec WHERE RecID = %1",
          "SELECT CpsID FROM CpsOnRec WHERE RecID = %1",
          "SELECT PfrID, Pos FROM PfrOnRec WHERE RecID = %1 ORDER BY Pos",
          "SELECT CpsID, CompID, Pos, ExtraitName FROM CompOnRec WHERE RecID = %1 ORDER BY Pos",
          "SELECT CompOnRec.CompID, CompOnRecPfr.PfrID, CompOnRecPfr.PersonageID FROM CompOnRec INNER JOIN "
          "CompOnRecPfr ON CompOnRec.CompOnRecID = CompOnRecPfr.CompOnRecID WHERE CompOnRec.RecID = %1 "
          "ORDER BY CompOnRecPfr.PfrID, CompOnRecPfr.PersonageID",
          "SELECT Disc, TrackNbr, TrackName, TrackLen FROM Tracks WHERE RecID = %1 ORDER BY Disc, TrackNbr",
          "SELECT DiscNbr, DiscId FROM DiscIds WHERE RecID = %1"}) {
        Query run = m_home->session->connection().query(QString(statement).arg(recording));
        while (run.next()) {
            QStringList cells;
            for (int column = 0; column < run.columnCount(); ++column)
                cells.push_back(run.text(column));
            rows.push_back(cells.join('|'));
        }
    }
    return rows;
}

void TestRecordingEditor::keyboardAndMouseEnterTheSame() {
    QCOMPARE(m_editor->windowTitle(), " New recording");
    enterByKeyboard();
    QVERIFY(!m_editor->isVisible());
    QCOMPARE(m_editor->result(), int(QDialog::Accepted));
    const qint64 first = m_editor->id();
    const QStringList rows = rowsOf(first);
    QCOMPARE(rows.mid(1),
             QStringList({"1", "1|1", "3|2", "2|3", "1|1|1|Act 2", "1|2|2|", "1|1|2", "1|1|3", "1|2|0",
                          "1|1|Ah! Finalmente!|02:14", "1|2|Sommo giubilo|", "1|a10b0c0d"}));
    edit(0);
    enterByMouse();
    QCOMPARE(m_editor->result(), int(QDialog::Accepted));
    QVERIFY(m_editor->id() != first);
    QCOMPARE(rowsOf(m_editor->id()), rows);
    QVERIFY(m_cards.reloaded.contains(QString("#Rec%1").arg(first)));
}

void TestRecordingEditor::refusesBadInput() {
    QVERIFY(!find<QTabWidget>("tabs")->isTabEnabled(1));
    find<QLineEdit>("txtPrice")->setText("3");
    find<QLineEdit>("txtTitle")->setText("   ");
    QVERIFY(!find<QPushButton>("cmdApply")->isEnabled());
    find<QLineEdit>("txtTitle")->setText("Recital");
    auto* units = find<QLineEdit>("txtUnits");
    for (const char* bad : {"0", "abc", "1.5", "1000", ""}) {
        units->setFocus();
        units->setText(bad);
        click("cmdApply");
        QCOMPARE(m_home->count("Rec"), 0);
        find("txtNotes")->setFocus();
        QTRY_COMPARE(m_editor->focusWidget(), units);
        QVERIFY(units->styleSheet().contains("255, 255, 0"));
    }
    units->setText(" 2 ");
    find("txtNotes")->setFocus();
    QVERIFY(units->styleSheet().isEmpty());
    click("cmdApply");
    QCOMPARE(m_editor->windowTitle(), " Edit recording");
    key(Qt::Key_3, Qt::AltModifier);
    QCOMPARE(find<QTabWidget>("tabs")->currentWidget()->findChild<QLabel*>("obstacle")->text(),
             "In order to insert works, at least one composer and one performer are required.");
    key(Qt::Key_5, Qt::AltModifier);
    auto* discs = find<QComboBox>("cboDisc");
    QCOMPARE(QStringList({discs->itemText(0), discs->itemText(1)}), QStringList({"DISC 1", "DISC 2"}));
    QCOMPARE(discs->count(), 2);
}

// Each length is typed key by key, behind a name, and Enter is pressed.
void TestRecordingEditor::lengthsAreStoredAsTyped() {
    addRecordings({{"Set", 1}});
    edit(1);
    key(Qt::Key_5, Qt::AltModifier);
    auto* length = find<QLineEdit>("meb");
    auto* hint = find<QLabel>("trackHint");
    OrderedTree* tracks = list("LvTracks");
    int stored = 0;
    for (const auto& [typed, expected] :
         {std::pair("04.30", "04:30"), {"04:30", "04:30"}, {"0430", "04:30"}, {"", ""}, {"9959", "99:59"}}) {
        type("Track");
        key(Qt::Key_Tab);
        type(typed);
        key(Qt::Key_Return);
        QCOMPARE(tracks->topLevelItemCount(), ++stored);
        QCOMPARE(tracks->topLevelItem(stored - 1)->text(2), expected);
        QVERIFY(length->text().isEmpty() && hint->text().isEmpty());
    }
    type("Refused");
    for (const char* typed : {"4.30", "4:30", "430", "04.75", "04530", "abc"}) {
        length->setFocus();
        length->selectAll();
        type(typed);
        for (const bool byEnter : {true, false}) {
            byEnter ? key(Qt::Key_Return) : click("cmdApply");
            QCOMPARE(tracks->topLevelItemCount(), stored);
            QCOMPARE(length->text(), typed);
            QVERIFY(length->styleSheet().contains("255, 255, 0") && hint->text().contains(typed));
            QCOMPARE(m_home->count("Tracks"), 0);
        }
    }
    clickRow("LvTracks", "1"); // nor does another track take the place of what was typed
    QCOMPARE(length->text(), "abc");
    QVERIFY(tracks->selectedItems().isEmpty());
    length->setFocus();
    length->selectAll();
    type("01.00");
    QVERIFY(hint->text().isEmpty() && length->styleSheet().isEmpty());
    click("cmdApply");
    QCOMPARE(m_home->text("SELECT TrackLen FROM Tracks WHERE TrackName = 'Refused'"), "01:00");
}

void TestRecordingEditor::enterSetsTheTrackThatIsChanged() {
    addRecordings({{"Set", 2}});
    for (const char* track : {"1, 1, 'A', '01:00'", "1, 2, 'B', '4:30'", "1, 3, 'C', ''", "2, 1, 'D', ''"})
        m_home->run(QString("INSERT INTO Tracks (RecID, Disc, TrackNbr, TrackName, TrackLen) VALUES (1, %1)")
                        .arg(track));
    edit(1);
    key(Qt::Key_5, Qt::AltModifier);
    auto* name = find<QLineEdit>("txtTrack");
    auto* length = find<QLineEdit>("meb");
    OrderedTree* tracks = list("LvTracks");
    clickRow("LvTracks", "2");
    name->setFocus();
    type("b");
    key(Qt::Key_Return);
    QCOMPARE(tracks->topLevelItemCount(), 3);
    QVERIFY(name->text().isEmpty()); // the next name is of the next track
    type("E");
    key(Qt::Key_Return);
    clickRow("LvTracks", "1");
    length->setFocus();
    length->selectAll();
    type("1.00");
    clickRow("LvTracks", "3"); // not while a fault would be lost
    QCOMPARE(tracks->selectedRows(), std::vector{0});
    find<QComboBox>("cboDisc")->setCurrentIndex(1);
    QCOMPARE(find<QComboBox>("cboDisc")->currentIndex(), 0);
    QCOMPARE(length->text(), "1.00");
    length->setFocus();
    length->selectAll();
    type("0101");
    key(Qt::Key_Return, Qt::ControlModifier);
    QCOMPARE(tracks->selectedRows(), std::vector{0});
    clickRow("LvTracks", "3");
    QTest::mouseClick(tracks->viewport(), Qt::LeftButton, Qt::ControlModifier,
                      tracks->visualItemRect(tracks->topLevelItem(2)).center());
    name->setFocus();
    type("F"); // for a track to come, which is not forgotten over another one
    clickRow("LvTracks", "3");
    name->setFocus();
    key(Qt::Key_Backspace);
    key(Qt::Key_S, Qt::ControlModifier); // no track without a name
    QVERIFY(name->styleSheet().contains("255, 255, 0"));
    type("c");
    key(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(
        rowsOf(1).filter(QRegularExpression("^1\\|\\d\\|[A-F]", QRegularExpression::CaseInsensitiveOption)),
        QStringList({"1|1|A|01:01", "1|2|Bb|4:30", "1|3|c|", "1|4|E|", "1|5|F|"}));
}

void TestRecordingEditor::upperDiscsStayWithinReach() {
    addRecordings({{"Set", 2}});
    m_home->run("INSERT INTO Tracks (RecID, Disc, TrackNbr, TrackName, TrackLen) VALUES (1, 2, 1, 'D', '')");
    edit(1);
    const auto lowerUnits = [&](Answer answer) {
        m_home->messages.willAnswer(answer);
        key(Qt::Key_F, Qt::AltModifier);
        key(Qt::Key_A, Qt::ControlModifier);
        type("1");
        key(Qt::Key_A, Qt::AltModifier);
    };
    lowerUnits(Answer::Cancel);
    QCOMPARE(find<QLineEdit>("txtUnits")->text(), "1"); // as typed, and not stored
    QCOMPARE(m_home->number("SELECT UnitsNbr FROM Rec"), 2);
    lowerUnits(Answer::No);
    QCOMPARE(find<QLineEdit>("txtUnits")->text(), "2");
    m_home->run("UPDATE Rec SET UnitsNbr = 1"); // as merging of old left it
    key(Qt::Key_5, Qt::AltModifier);
    auto* discs = find<QComboBox>("cboDisc");
    QCOMPARE(discs->count(), 2);
    discs->setCurrentIndex(1);
    QCOMPARE(list("LvTracks")->topLevelItem(0)->text(1), "D");
    type("E");
    key(Qt::Key_Return);
    key(Qt::Key_A, Qt::AltModifier);
    QCOMPARE(m_home->number("SELECT COUNT(*) FROM Tracks WHERE Disc = 2"), 2);
    key(Qt::Key_1, Qt::AltModifier);
    m_home->run("UPDATE Rec SET UnitsNbr = 2");
    key(Qt::Key_2, Qt::AltModifier);
    key(Qt::Key_1, Qt::AltModifier);
    lowerUnits(Answer::Yes);
    QCOMPARE(m_home->count("Tracks"), 0);
}

// A recital: what is not touched keeps its place, whichever way the works are shown.
void TestRecordingEditor::worksKeepTheOrderOfTheDisc() {
    m_home->run("INSERT INTO Cps (CpsLname, CpsFname) VALUES ('Bach', 'J. S.')");
    m_home->run("INSERT INTO Compositions (CpsID, CompTitle, CompNbr) VALUES (2, 'Fugue', '')");
    addRecordings({{"Recital", 1}, {"Opera", 1}});
    for (const char* row : {"1, 1, 1, 1, 'Act 1'", "1, 2, 3, 2, ''", "1, 1, 2, 3, ''", "2, 1, 1, 1, ''"})
        m_home->run(
            QString("INSERT INTO CompOnRec (RecID, CpsID, CompID, Pos, ExtraitName) VALUES (%1)").arg(row));
    const auto order = [this] {
        QStringList works;
        Query run =
            m_home->session->connection().query("SELECT CompID FROM CompOnRec WHERE RecID = 1 ORDER BY Pos");
        while (run.next())
            works << run.text(0);
        return works.join(' ');
    };
    edit(2);
    key(Qt::Key_3, Qt::AltModifier);
    QVERIFY(!find<QCheckBox>("chkOrder")->isChecked());
    edit(1); // nobody performs, and neither composer is on the recording: its works are within reach all the
             // same
    key(Qt::Key_3, Qt::AltModifier);
    auto* inOrder = find<QCheckBox>("chkOrder");
    OrderedTree* works = list("TV");
    QVERIFY(inOrder->isChecked() && inOrder->isVisible());
    QCOMPARE(works->topLevelItemCount(), 3);
    QCOMPARE(works->topLevelItem(1)->text(3), "Bach, J. S.");
    for (const char* excerpt : {"Prelude", "Finale"}) {
        clickRow("TV", "Fugue");
        find<QLineEdit>("txtExcerpt")->setFocus();
        find<QLineEdit>("txtExcerpt")->selectAll();
        type(excerpt);
        key(Qt::Key_A, Qt::AltModifier);
        QCOMPARE(m_home->text("SELECT ExtraitName FROM CompOnRec WHERE CompID = 3"), excerpt);
        QCOMPARE(order(), "1 3 2");
        if (inOrder->isChecked())
            key(Qt::Key_I, Qt::AltModifier); // now beneath the composers
    }
    QCOMPARE(works->topLevelItemCount(), 2);
    QCOMPARE(works->topLevelItem(0)->text(0), "Puccini, Giacomo");
    QCOMPARE(works->topLevelItem(0)->childCount(), 2);
    QVERIFY(!find("cmdApply")->isEnabled());
    key(Qt::Key_I, Qt::AltModifier);
    clickRow("TV", "Turandot");
    key(Qt::Key_Up, Qt::AltModifier);
    key(Qt::Key_A, Qt::AltModifier);
    QCOMPARE(order(), "1 2 3");
}

void TestRecordingEditor::removesComposersWithTheirWorks() {
    addRecordings({{"Opera", 1}});
    for (const char* row :
         {"CpsOnRec (RecID, CpsID) VALUES (1, 1)", "PfrOnRec (RecID, PfrID, Pos) VALUES (1, 1, 1)",
          "CompOnRec (RecID, CpsID, CompID, Pos) VALUES (1, 1, 1, 1)"})
        m_home->run(QString("INSERT INTO ") + row);
    edit(1);
    key(Qt::Key_2, Qt::AltModifier);
    clickRow("lvPfr", "Callas");
    key(Qt::Key_Delete);
    clickRow("lvCps", "Puccini");
    key(Qt::Key_Delete);
    m_home->messages.willAnswer(Answer::No);
    key(Qt::Key_S, Qt::ControlModifier);
    QVERIFY(m_home->messages.asked.back().text.contains("Tosca"));
    QVERIFY(find("cmdApply")->isEnabled());
    QCOMPARE(m_home->count("CpsOnRec") + m_home->count("PfrOnRec"), 2);
    click("cmdCancel");
    clickRow("lvPfr", "Callas");
    key(Qt::Key_Delete);
    key(Qt::Key_S, Qt::ControlModifier);
    key(Qt::Key_3, Qt::AltModifier);
    QVERIFY(list("TV")->isVisible()); // without a performer
    key(Qt::Key_2, Qt::AltModifier);
    clickRow("lvCps", "Puccini");
    key(Qt::Key_Delete);
    m_home->messages.willAnswer(Answer::Yes);
    key(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(m_home->count("CpsOnRec") + m_home->count("CompOnRec"), 0);
}

void TestRecordingEditor::asksBeforeEditsAreLost() {
    type("Recital");
    key(Qt::Key_Return);
    m_editor->findChild<QLineEdit*>("txtSubTitle")->setText("1957");
    m_home->messages.willAnswer(Answer::Cancel);
    key(Qt::Key_2, Qt::AltModifier);
    auto* tabs = find<QTabWidget>("tabs");
    QCOMPARE(tabs->currentIndex(), 0);
    const Question& asked = m_home->messages.asked.back();
    QCOMPARE(QStringList({asked.title, asked.text}),
             QStringList({"Unload form", "Do you want to save the changes?"}));
    QCOMPARE(asked.buttons, std::vector<Answer>({Answer::Yes, Answer::No, Answer::Cancel}));
    m_home->messages.willAnswer(Answer::No);
    key(Qt::Key_2, Qt::AltModifier);
    QCOMPARE(tabs->currentIndex(), 1);
    key(Qt::Key_1, Qt::AltModifier);
    QCOMPARE(find<QLineEdit>("txtSubTitle")->text(), "");
    find<QLineEdit>("txtSubTitle")->setText("1958");
    m_home->messages.willAnswer(Answer::Yes);
    key(Qt::Key_2, Qt::AltModifier);
    QCOMPARE(m_home->text("SELECT RecSubTitle FROM Rec"), "1958");
    then([] { chooseByKeyboard({"cal"}); });
    key(Qt::Key_P, Qt::AltModifier);
    m_home->messages.willAnswer(Answer::Cancel);
    m_editor->close();
    QVERIFY(m_editor->isVisible());
    m_home->messages.willAnswer(Answer::Yes);
    key(Qt::Key_Escape);
    QVERIFY(!m_editor->isVisible());
    QCOMPARE(m_home->count("PfrOnRec"), 1);
}

void TestRecordingEditor::warnsOfDoubles() {
    m_home->run("INSERT INTO Rec (RecTitle, Barcode, UnitsNbr) VALUES ('Owned', '50', 1)");
    type("Bought twice");
    find<QLineEdit>("txtBarcode")->setText("50");
    m_home->messages.willAnswer(Answer::Cancel);
    click("cmdApply");
    QVERIFY(m_home->messages.asked.back().text.contains("Owned"));
    QVERIFY(m_editor->isVisible() && m_editor->id() == 0);
    m_home->messages.willAnswer(Answer::Yes);
    click("cmdApply");
    QVERIFY(!m_editor->isVisible());
    QCOMPARE(m_cards.opened, QStringList("#Rec1"));
    QCOMPARE(m_home->count("Rec"), 1);
}

void TestRecordingEditor::tracksOfOneDisc() {
    m_home->run("INSERT INTO Rec (RecTitle, UnitsNbr) VALUES ('Set', 2)");
    m_home->run(
        "INSERT INTO Tracks (RecID, Disc, TrackNbr, TrackName, TrackLen) VALUES (1, 2, 1, 'Untouched', '')");
    edit(1);
    key(Qt::Key_5, Qt::AltModifier);
    QStringList lines;
    for (int track = 1; track <= 10; ++track)
        lines.push_back(QString("%1\tTrack %2\t01:30").arg(track).arg(QChar('A' + track - 1)));
    QApplication::clipboard()->setText(lines.join('\n'));
    OrderedTree* tracks = list("LvTracks");
    tracks->setFocus();
    key(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(tracks->topLevelItemCount(), 10);
    QVERIFY(find<QLabel>("total")->text().contains("15:00"));
    key(Qt::Key_A, Qt::AltModifier);
    clickRow("LvTracks", "3");
    key(Qt::Key_Delete);
    QCOMPARE(tracks->topLevelItem(8)->text(0), "9");
    clickRow("LvTracks", "9");
    key(Qt::Key_Up, Qt::AltModifier);
    find<QLineEdit>("txtTrack")->setText("Last but one");
    click("cmdTrackSet");
    m_home->messages.willAnswer(Answer::Yes); // the other disc is shown once this one is saved
    find<QComboBox>("cboDisc")->setCurrentIndex(1);
    QCOMPARE(tracks->topLevelItem(0)->text(1), "Untouched");
    QStringList names;
    Query run = m_home->session->connection().query(
        "SELECT Disc, TrackNbr, TrackName FROM Tracks WHERE RecID = 1 ORDER BY Disc, TrackNbr");
    while (run.next())
        names.push_back(run.text(0) + run.text(1) + run.text(2).right(1));
    QCOMPARE(names, QStringList({"11A", "12B", "13D", "14E", "15F", "16G", "17H", "18e", "19I", "21d"}));
    QApplication::clipboard()->setText(" \n ");
    click("cmdTrackPaste");
    QVERIFY(m_home->messages.told.back().contains("no text with tracks"));
    QVERIFY(!find("cmdApply")->isEnabled());
}

// Typed is typed, whether or not the button beside it was pressed.
void TestRecordingEditor::keepsTracksTypedButNotAdded() {
    key(Qt::Key_2, Qt::AltModifier); // no other tab yet; its key types nothing either
    QVERIFY(find<QLineEdit>("txtTitle")->text().isEmpty());
    m_home->run("INSERT INTO Rec (RecTitle, UnitsNbr) VALUES ('Set', 1)");
    m_home->run(
        "INSERT INTO Tracks (RecID, Disc, TrackNbr, TrackName, TrackLen) VALUES (1, 1, 1, 'A', '01:00')");
    m_home->run("INSERT INTO Tracks (RecID, Disc, TrackNbr, TrackName, TrackLen) VALUES (1, 1, 2, 'B', '')");
    edit(1);
    key(Qt::Key_5, Qt::AltModifier);
    clickRow("LvTracks", "1");
    QVERIFY(!find("cmdApply")->isEnabled());
    auto* name = find<QLineEdit>("txtTrack");
    name->setFocus();
    type("a");
    clickRow("LvTracks", "2");
    QCOMPARE(list("LvTracks")->topLevelItem(0)->text(1), "Aa");
    click("cmdCancel");
    QCOMPARE(list("LvTracks")->topLevelItem(0)->text(1), "A");
    QVERIFY(name->text().isEmpty() && !find("cmdApply")->isEnabled());
    type("C");
    key(Qt::Key_Tab);
    type("9");
    m_home->messages.willAnswer(Answer::Yes);
    m_editor->close(); // a length that is none cannot be saved
    QVERIFY(m_editor->isVisible());
    find<QLineEdit>("meb")->clear();
    type("02.00");
    m_home->messages.willAnswer(Answer::Yes);
    m_editor->close();
    QVERIFY(!m_editor->isVisible());
    QCOMPARE(m_home->text("SELECT TrackName FROM Tracks WHERE TrackNbr = 3"), "C");
}

// What the list tells when a row was dropped on the upper or lower half of another; a drag itself needs the
// platform.
void TestRecordingEditor::drag(OrderedTree* tree, int from, int to, bool behind) const {
    tree->selectRows({from});
    emit tree->rowsDropped(tree->topLevelItem(to), behind);
    QCoreApplication::processEvents();
}

void TestRecordingEditor::ordersByDragging() {
    m_home->run("INSERT INTO Rec (RecTitle, UnitsNbr) VALUES ('Set', 1)");
    m_home->run("INSERT INTO CpsOnRec (RecID, CpsID) VALUES (1, 1)");
    for (int place = 1; place <= 3; ++place)
        m_home->run(QString("INSERT INTO PfrOnRec (RecID, PfrID, Pos) VALUES (1, %1, %1)").arg(place));
    edit(1);
    key(Qt::Key_2, Qt::AltModifier);
    drag(list("lvPfr"), 0, 2, true);
    drag(list("lvPfr"), 1, 0, false);
    click("cmdApply");
    QStringList order;
    Query run = m_home->session->connection().query("SELECT PfrID FROM PfrOnRec ORDER BY Pos");
    while (run.next())
        order.push_back(run.text(0));
    QCOMPARE(order, QStringList({"3", "2", "1"}));
}

void TestRecordingEditor::survivesChangesElsewhere() {
    type("Recital");
    key(Qt::Key_Return);
    const qint64 id = m_editor->id();
    find<QLineEdit>("txtTitle")->setText("Mine");
    m_home->run("UPDATE Rec SET RecTitle = 'Theirs'");
    m_home->messages.willAnswer(Answer::No);
    click("cmdApply");
    QCOMPARE(m_home->text("SELECT RecTitle FROM Rec"), "Theirs");
    QCOMPARE(find<QLineEdit>("txtTitle")->text(), "Mine");
    m_home->messages.willAnswer(Answer::Yes);
    click("cmdApply");
    QCOMPARE(m_home->text("SELECT RecTitle FROM Rec"), "Mine");
    find<QLineEdit>("txtTitle")->setText("Typed last");
    m_home->run(QString("DELETE FROM Rec WHERE RecID = %1").arg(id));
    click("cmdApply");
    QVERIFY(m_home->messages.told.back().contains("deleted meanwhile"));
    QVERIFY(m_editor->isVisible());
    key(Qt::Key_2, Qt::AltModifier);
    QCOMPARE(find<QTabWidget>("tabs")->currentIndex(), 0);
    QCOMPARE(find<QLineEdit>("txtTitle")->text(), "Typed last"); // to be copied
    QCOMPARE(m_home->count("Rec"), 0);
    frmRec late(FormContext{*m_home->session, *m_icons}, id, &m_cards);
    QTimer::singleShot(500, &late, &QDialog::reject); // when it opens all the same
    const auto told = m_home->messages.told.size();
    late.exec();
    QCOMPARE(m_home->messages.told.size(), told + 1);
}

void TestRecordingEditor::mnemonicsAreUniqueAndControlsNamed() {
    m_home->run("INSERT INTO Rec (RecTitle, UnitsNbr) VALUES ('Set', 1)");
    m_home->run("INSERT INTO CpsOnRec (RecID, CpsID) VALUES (1, 1)");
    m_home->run("INSERT INTO PfrOnRec (RecID, PfrID, Pos) VALUES (1, 1, 1)");
    m_home->run("INSERT INTO CompOnRec (RecID, CpsID, CompID, Pos) VALUES (1, 1, 1, 1)");
    edit(1);
    auto* tabs = find<QTabWidget>("tabs");
    for (int tab = 0; tab < tabs->count(); ++tab) {
        tabs->setCurrentIndex(tab);
        QStringList used;
        const auto use = [&](const QString& caption) {
            const QString letter = QKeySequence::mnemonic(caption).toString();
            QVERIFY2(letter.isEmpty() || !used.contains(letter), qPrintable(caption));
            used.push_back(letter);
        };
        for (int other = 0; other < tabs->count(); ++other)
            use(tabs->tabText(other));
        for (const auto* widget : m_editor->findChildren<QWidget*>()) {
            if (!widget->isVisible())
                continue;
            const auto* button = qobject_cast<const QAbstractButton*>(widget);
            const auto* label = qobject_cast<const QLabel*>(widget);
            if (button || (label && label->buddy()))
                use(button ? button->text() : label->text());
            const bool needsName = qobject_cast<const QLineEdit*>(widget) ||
                                   qobject_cast<const QComboBox*>(widget) ||
                                   qobject_cast<const QTreeView*>(widget);
            QVERIFY2(!needsName || !widget->accessibleName().isEmpty(), qPrintable(widget->objectName()));
        }
        QVERIFY(used.size() > 10);
    }
}

QTEST_MAIN(TestRecordingEditor)
#include "test_recordingeditor.moc"
