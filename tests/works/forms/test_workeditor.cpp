// SPDX-License-Identifier: GPL-3.0-or-later
// The windows of works and of key names, worked with the keyboard and the mouse only.
#include "items/ItemKind.h"
#include "support/TestHome.h"
#include "support/Writing.h"
#include "widgets/IconStore.h"
#include "window/MainWindow.h"
#include "window/Toolbox.h"
#include "works/forms/frmKeys.h"
#include "works/forms/frmWorkEditor.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTextEdit>
#include <QTimer>
#include <QTreeView>

using namespace tessaranth;

class TestWorkEditor : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void headAndTabsInTheseWords();
    void typesAWorkAndSavesIt();
    void titleIsDemanded();
    void namesNewGroups();
    void closingAsksAboutChanges();
    void longDescriptionHasItsEditor();
    void charactersSaveTheWorkFirst();
    void workGoneMeanwhileStaysTyped();
    void editorOfWhatIsGoneStoresNothing();
    void tabKeyVisitsTheFieldsInOrder();
    void keyNamesAreRenamed();
    void commandOpensTheEditor();

private:
    void edit(qint64 work);
    template<typename Widget>
    Widget* find(const char* name) const {
        auto* widget = m_editor->findChild<Widget*>(QString::fromLatin1(name));
        if (!widget)
            QTest::qFail(name, __FILE__, __LINE__);
        return widget;
    }
    QWidget* focused() const {
        return m_editor->focusWidget() ? m_editor->focusWidget() : static_cast<QWidget*>(m_editor.get());
    }
    /// Types into whatever has the focus, as a user would.
    void type(const QString& text) const {
        for (const QChar c : text)
            QTest::sendKeyEvent(QTest::Click, focused(), Qt::Key_unknown, QString(c), Qt::NoModifier);
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
        QTest::keyClick(focused(), key, modifiers);
        if (modifiers == Qt::AltModifier) // a button pressed by its letter acts when it comes up again
            QTest::qWait(150);
    }
    qint64 count(const char* from) const {
        return m_home->session->connection().single(QString("SELECT COUNT(*) FROM ") + from).toInteger();
    }
    Work stored() const { return CWKS(*m_home->session).work(m_editor->workId()); }

    std::unique_ptr<TestHome> m_home;
    std::unique_ptr<IconStore> m_icons;
    std::unique_ptr<frmWorkEditor> m_editor;
    qint64 m_composer = 0;
};

void TestWorkEditor::init() {
    m_home = std::make_unique<TestHome>();
    m_home->useTemplate();
    QVERIFY(m_home->start().started);
    write(m_home->session->connection(), "INSERT INTO Cps (CpsLname, CpsFname, CpsB, CpsD, CatAcr) "
                                         "VALUES ('Monteverdi', 'Claudio', '1567', '1643', 'SV')");
    m_composer = m_home->session->connection().lastKey();
    m_icons = std::make_unique<IconStore>(m_home->file("tsrthres.dll"));
    edit(0);
}

void TestWorkEditor::edit(qint64 work) {
    m_editor = std::make_unique<frmWorkEditor>(FormContext{*m_home->session, *m_icons}, m_composer, work);
    m_editor->show();
    QVERIFY(QTest::qWaitForWindowActive(m_editor.get()));
}

void TestWorkEditor::cleanup() {
    m_editor.reset();
    m_icons.reset();
    m_home.reset();
}

void TestWorkEditor::headAndTabsInTheseWords() {
    QCOMPARE(m_editor->windowTitle(), " New work");
    QCOMPARE(find<QLabel>("heading")->text(), "Claudio Monteverdi  (1567-1643)");
    QCOMPARE(find<QLabel>("acronym")->text(), "SV");
    const std::pair<Qt::Key, QStringList> tabs[] = {
        {Qt::Key_D, {"Work description", "Optionally, you may add here lyrics or description."}},
        {Qt::Key_P, {"Personages on work", "The work have personages (e.a. a lyric opera)."}},
        {Qt::Key_F, {"Work specifications", "At least you must insert the work title."}}};
    auto* widget = find<QTabWidget>("tabs");
    for (const auto& [letter, texts] : tabs) {
        key(letter, Qt::AltModifier);
        QCOMPARE(widget->tabText(widget->currentIndex()).remove('&'), texts[0]);
        QCOMPARE(find<QLabel>("hint")->text(), texts[1]);
    }
}

void TestWorkEditor::typesAWorkAndSavesIt() {
    type("L'Orfeo");
    key(Qt::Key_U, Qt::AltModifier);
    type("favola in musica");
    key(Qt::Key_O, Qt::AltModifier);
    type("318");
    key(Qt::Key_Y, Qt::AltModifier);
    type("1607");
    key(Qt::Key_K, Qt::AltModifier);
    type("G minor");
    key(Qt::Key_D, Qt::AltModifier);
    find<QPlainTextEdit>("txtDescr")->setFocus();
    type("Mantua");
    key(Qt::Key_S, Qt::AltModifier);
    QCOMPARE(m_editor->result(), int(QDialog::Accepted));
    const Work work = stored();
    QCOMPARE(QStringList({work.title, work.subtitle, work.number, work.year, work.description}),
             QStringList({"L'Orfeo", "favola in musica", "318", "1607", "Mantua"}));
    QCOMPARE(m_home->session->connection()
                 .single(QString("SELECT KeyName FROM WKeys WHERE LangID = 9 AND KeyID = %1").arg(work.key))
                 .toText(),
             "G minor");
    edit(work.id);
    QCOMPARE(m_editor->windowTitle(), " Edit work");
    QCOMPARE(find<QComboBox>("cboKey")->currentText(), "G minor");
    key(Qt::Key_Escape); // nothing was changed, so nothing is asked
    QCOMPARE(m_editor->result(), int(QDialog::Rejected));
}

void TestWorkEditor::titleIsDemanded() {
    key(Qt::Key_P, Qt::AltModifier);
    key(Qt::Key_S, Qt::AltModifier);
    QVERIFY(m_editor->isVisible());
    QCOMPARE(m_home->messages.told.back(), "At least you must insert the work title.");
    QCOMPARE(m_editor->focusWidget(), find<QLineEdit>("txtTitle"));
    QVERIFY(find<QLineEdit>("txtTitle")->styleSheet().contains("255, 255, 0"));
    type("x");
    QVERIFY(find<QLineEdit>("txtTitle")->styleSheet().isEmpty());
    QCOMPARE(count("Compositions"), 0);
    type(QString(300, 'y'));
    key(Qt::Key_S, Qt::AltModifier);
    QCOMPARE(m_home->messages.told.back(), "Title: at most 250 characters.");
    QCOMPARE(find<QLineEdit>("txtTitle")->text().size(), 301); // nothing that was typed is cut off
    m_home->messages.willAnswer(Answer::No);
    key(Qt::Key_Escape);
}

void TestWorkEditor::namesNewGroups() {
    type("Lamento");
    m_home->messages.willType("L'Arianna");
    key(Qt::Key_N, Qt::AltModifier);
    m_home->messages.willType("Madrigals");
    key(Qt::Key_E, Qt::AltModifier);
    m_home->messages.willType("Vocal music");
    key(Qt::Key_W, Qt::AltModifier);
    QStringList prompts;
    for (const NameRequest& request : m_home->messages.nameRequests)
        prompts << request.heading << request.button;
    QCOMPARE(prompts.mid(0, 4),
             QStringList({"Add a new main work", "Add", "Add a new catalog genre", "Add"}));
    QCOMPARE(find<QComboBox>("cboMainWork")->currentText(), "L'Arianna");
    QCOMPARE(find<QComboBox>("cboGenre")->currentText(), "Vocal music");
    m_home->messages.willType("madrigals");
    key(Qt::Key_E, Qt::AltModifier);
    QCOMPARE(m_home->messages.told.back(), "madrigals is already in archive!");
    QCOMPARE(find<QComboBox>("cboCpsGenre")->currentText(), "Madrigals"); // still chosen
    key(Qt::Key_S, Qt::AltModifier);
    const Work work = stored();
    QVERIFY(work.mainWork != 0 && work.composerGenre != 0 && work.genre != 0);
}

void TestWorkEditor::closingAsksAboutChanges() {
    type("Vespro");
    m_home->messages.willAnswer(Answer::Cancel);
    m_editor->close();
    QVERIFY(m_editor->isVisible());
    QCOMPARE(m_home->messages.asked.back().text, "Do you want to save the current changes?");
    QCOMPARE(m_home->messages.asked.back().buttons,
             std::vector<Answer>({Answer::Yes, Answer::No, Answer::Cancel}));
    m_home->messages.willAnswer(Answer::Yes);
    key(Qt::Key_Escape);
    QCOMPARE(m_editor->result(), int(QDialog::Accepted));
    QCOMPARE(stored().title, "Vespro");
    edit(m_editor->workId());
    key(Qt::Key_End);
    type(" 1610");
    m_home->messages.willAnswer(Answer::No);
    key(Qt::Key_Escape);
    QVERIFY(!m_editor->isVisible());
    QCOMPARE(stored().title, "Vespro");
}

void TestWorkEditor::longDescriptionHasItsEditor() {
    key(Qt::Key_D, Qt::AltModifier);
    key(Qt::Key_E, Qt::AltModifier); // refused: there is no title yet
    type("Combattimento");
    key(Qt::Key_D, Qt::AltModifier);
    bool opened = false;
    QTimer waiting;
    connect(&waiting, &QTimer::timeout, this, [&] {
        auto* editor = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!editor || !editor->isActiveWindow())
            return;
        waiting.stop();
        opened = editor->windowTitle().startsWith(" New description");
        auto* text = editor->findChild<QTextEdit*>("txtDocument");
        QTest::keyClick(text, Qt::Key_B, Qt::ControlModifier);
        QTest::keyClicks(text, "Tancredi");
        QTest::keyClick(text, Qt::Key_S, Qt::ControlModifier);
        QTest::keyClick(text, Qt::Key_Escape);
        opened = opened && !editor->isVisible();
        editor->done(0); // a test that failed must end as well
    });
    waiting.start(10);
    key(Qt::Key_E, Qt::AltModifier);
    QVERIFY(opened);
    auto* shown = find<QTextEdit>("txtDocument");
    QCOMPARE(shown->toPlainText(), "Tancredi");
    shown->moveCursor(QTextCursor::End);
    QCOMPARE(shown->fontWeight(), int(QFont::Bold));
    QCOMPARE(count("Cards WHERE CardTitle = 'Descr' AND RelatedCat = 'Comp'"), 1);
    edit(m_editor->workId());
    QCOMPARE(find<QTextEdit>("txtDocument")->toPlainText(), "Tancredi");
    key(Qt::Key_D, Qt::AltModifier);
    m_home->messages.willAnswer(Answer::Yes);
    key(Qt::Key_R, Qt::AltModifier);
    QCOMPARE(m_home->messages.asked.back().text, "Do you want to remove this description?");
    QVERIFY(find<QTextEdit>("txtDocument")->toPlainText().isEmpty());
    QVERIFY(!find<QPushButton>("cmdRemoveDescr")->isEnabled());
    QCOMPARE(count("Cards"), 0);
    key(Qt::Key_Escape);
}

void TestWorkEditor::charactersSaveTheWorkFirst() {
    key(Qt::Key_P, Qt::AltModifier);
    auto* note = find<QLabel>("persNote");
    QCOMPARE(note->text(), "The work is saved before its first personage is added.");
    key(Qt::Key_A, Qt::AltModifier); // refused: there is no title yet
    QCOMPARE(find<QTabWidget>("tabs")->currentIndex(), 0);
    type("L'Orfeo");
    key(Qt::Key_P, Qt::AltModifier);
    m_home->messages.willType("Orfeo");
    key(Qt::Key_A, Qt::AltModifier);
    QCOMPARE(m_home->messages.nameRequests.back().title, "New personage");
    QVERIFY(m_editor->workId() != 0);
    auto* view = find<QTreeView>("lvPersonages");
    QCOMPARE(view->currentIndex().data().toString(), "Orfeo");
    m_home->messages.willType("Orpheus");
    key(Qt::Key_R, Qt::AltModifier);
    QCOMPARE(m_home->messages.nameRequests.back().defaultText, "Orfeo");
    QCOMPARE(view->currentIndex().data().toString(), "Orpheus");

    QFile roles(m_home->file("roles.txt"));
    QVERIFY(roles.open(QIODevice::WriteOnly) && roles.write("Euridice\nMessaggera\n") > 0);
    roles.close();
    m_home->messages.willChoose({roles.fileName()});
    key(Qt::Key_I, Qt::AltModifier);
    const FileRequest& request = m_home->messages.fileRequests.back();
    QCOMPARE(request.title, "Import personages");
    QCOMPARE(request.filterName, "Text file (*.txt)");
    QCOMPARE(m_home->session->configuration().lastFolder("List"), m_home->folder());
    QCOMPARE(view->model()->rowCount(), 3);

    view->setFocus();
    key(Qt::Key_A, Qt::ControlModifier);
    m_home->messages.willAnswer(Answer::Cancel);
    key(Qt::Key_Delete);
    QCOMPARE(count("Personages"), 3);
    m_home->messages.willAnswer(Answer::Ok);
    key(Qt::Key_Delete);
    QCOMPARE(view->model()->rowCount(), 0);
    key(Qt::Key_Escape); // nothing is unsaved; the caller's list must show the new work
    QCOMPARE(m_editor->result(), int(QDialog::Accepted));
}

void TestWorkEditor::workGoneMeanwhileStaysTyped() {
    type("Poppea");
    key(Qt::Key_S, Qt::AltModifier);
    edit(m_editor->workId());
    type("Ulisse");
    write(m_home->session->connection(), "DELETE * FROM Compositions");
    key(Qt::Key_S, Qt::AltModifier);
    QCOMPARE(m_home->messages.told.back(), "This work has been deleted meanwhile.");
    QVERIFY(m_editor->isVisible());
    QCOMPARE(find<QLineEdit>("txtTitle")->text(), "Ulisse");
    m_home->messages.willAnswer(Answer::No);
    key(Qt::Key_Escape);
}

// Opened from a list that still showed the work, or for a composer who is gone: nothing comes into the
// catalog that no list would show.
void TestWorkEditor::editorOfWhatIsGoneStoresNothing() {
    type("Poppea");
    write(m_home->session->connection(), "DELETE FROM Cps");
    key(Qt::Key_S, Qt::AltModifier);
    QCOMPARE(m_home->messages.told.back(), "This card has been deleted meanwhile.");
    key(Qt::Key_P, Qt::AltModifier); // a character would need the work's row
    key(Qt::Key_A, Qt::AltModifier);
    QCOMPARE(m_home->messages.told.size(), 2);
    QCOMPARE(find<QLineEdit>("txtTitle")->text(), "Poppea");
    m_home->messages.willAnswer(Answer::No);
    key(Qt::Key_Escape);
    QVERIFY(!m_editor->isVisible());

    edit(4711);
    type("Ulisse");
    key(Qt::Key_S, Qt::AltModifier);
    QCOMPARE(m_home->messages.told.back(), "This work has been deleted meanwhile.");
    QCOMPARE(find<QLineEdit>("txtTitle")->text(), "Ulisse");
    QCOMPARE(count("Compositions") + count("Personages"), 0);
    m_home->messages.willAnswer(Answer::No);
    key(Qt::Key_Escape);
}

void TestWorkEditor::tabKeyVisitsTheFieldsInOrder() {
    QStringList visited;
    for (int step = 0; step < 11; ++step) {
        visited.push_back(m_editor->focusWidget()->objectName());
        key(Qt::Key_Tab);
    }
    QCOMPARE(visited,
             QStringList({"txtTitle", "txtSubTitle", "txtNbr", "txtYear", "cboMainWork", "cboMainWorkNew",
                          "cboCpsGenre", "cboCpsGenreNew", "cboGenre", "cboGenreNew", "cboKey"}));
}

void TestWorkEditor::keyNamesAreRenamed() {
    frmKeys keys({*m_home->session, *m_icons});
    keys.show();
    QVERIFY(QTest::qWaitForWindowActive(&keys));
    auto* view = keys.findChild<QTreeView*>("lvKeys");
    view->setFocus();
    QTest::keyClick(view, Qt::Key_Down);
    m_home->messages.willType("c-moll");
    QTest::keyClick(view, Qt::Key_Return);
    QCOMPARE(m_home->messages.nameRequests.back().defaultText, "C minor");
    QCOMPARE(view->currentIndex().data().toString(), "c-moll");
    QVERIFY(keys.isVisible());
    edit(0);
    QVERIFY(find<QComboBox>("cboKey")->findText("c-moll") > 0);
    m_home->messages.willType({});
    QTest::mouseClick(keys.findChild<QPushButton*>("cmdRename"), Qt::LeftButton);
    QCOMPARE(view->currentIndex().data().toString(), "c-moll");
}

void TestWorkEditor::commandOpensTheEditor() {
    MainWindow window({*m_home->session, *m_icons});
    window.show();
    auto* action = window.findChild<QAction*>("mnuToolboxWork");
    QVERIFY(action && !action->isEnabled());
    window.toolbox()->select(m_composer);
    QVERIFY(action->isEnabled());
    QTimer::singleShot(0, this, [] {
        auto* editor = qobject_cast<frmWorkEditor*>(QApplication::activeModalWidget());
        QVERIFY(editor);
        QTest::keyClicks(editor->findChild<QLineEdit*>("txtTitle"), "Orfeo");
        QTest::keyClick(editor, Qt::Key_Return);
    });
    action->trigger();
    QCOMPARE(count("Compositions"), 1);
    window.toolbox()->showKind(ItemKind::Performer);
    QVERIFY(!action->isEnabled());
}

QTEST_MAIN(TestWorkEditor)
#include "test_workeditor.moc"
