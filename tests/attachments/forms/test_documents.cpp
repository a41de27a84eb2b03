// SPDX-License-Identifier: GPL-3.0-or-later
// Documents of cards: kept in rows and files by the core, read in their panel, written in their editor.
#include "attachments/CardDocuments.h"
#include "attachments/forms/DocumentListPanel.h"
#include "attachments/forms/DocumentPanel.h"
#include "attachments/forms/frmRTB.h"
#include "support/ItemCatalog.h"
#include "text/RichText.h"
#include "widgets/CardColours.h"
#include "widgets/IconStore.h"
#include "window/frmItem.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QMimeData>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextEdit>
#include <QTreeView>

using namespace tessaranth;

class TestDocuments final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void rowsAndFilesStayTogether();
    void importsWhatIsText_data();
    void importsWhatIsText();
    void panelGoesThroughThem();
    void colouredTextsStayReadable();
    void longDocumentsKeepNobodyWaiting_data();
    void longDocumentsKeepNobodyWaiting();
    void largePicturesStayWhole();
    void editorWritesWhatItsToolBarMakes();
    void editorAsksBeforeItForgets();
    void undoingHasNames();

private:
    QString write(const QString& name, const QByteArray& bytes) const {
        QFile made(m_home->file(name));
        if (!made.open(QIODevice::WriteOnly) || made.write(bytes) != bytes.size())
            QTest::qFail("cannot write", __FILE__, __LINE__);
        return made.fileName();
    }
    QStringList titles() const {
        ItemList list;
        QStringList all;
        if (m_documents->LoadDocs(list))
            for (int row = 0; row < list.rowCount(); ++row)
                all << list.text(row, 0);
        return all;
    }
    void open(qint64 document) {
        m_editor = std::make_unique<frmRTB>(FormContext{*m_home->session, *m_icons}, m_owner,
                                            frmRTB::Mode::Doc, document);
        m_editor->show();
        QVERIFY(QTest::qWaitForWindowActive(m_editor.get()));
        m_text = m_editor->findChild<QTextEdit*>("txtDocument");
    }
    QAction* action(const char* name) const { return m_editor->findChild<QAction*>(name); }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) const {
        QTest::keyClick(m_text, key, modifiers);
    }

    std::unique_ptr<ItemCatalog> m_home;
    std::unique_ptr<IconStore> m_icons;
    std::unique_ptr<CardDocuments> m_documents;
    std::unique_ptr<frmRTB> m_editor;
    QTextEdit* m_text = nullptr;
    FakeCards m_cards;
    CardOwner m_owner;
};

void TestDocuments::init() {
    m_home = std::make_unique<ItemCatalog>(true);
    m_icons = std::make_unique<IconStore>(m_home->file("tsrthres.dll"));
    m_owner = {"Rec", m_home->number("SELECT RecID FROM Rec ORDER BY RecTitle")};
    m_documents = std::make_unique<CardDocuments>(*m_home->session, m_owner);
}

void TestDocuments::cleanup() {
    m_editor.reset();
    m_documents.reset();
    m_icons.reset();
    m_home.reset();
}

void TestDocuments::rowsAndFilesStayTogether() {
    const QByteArray text = RichText::fromText("text");
    const qint64 one = m_documents->add(text, " One's ");
    const qint64 two = m_documents->add(text, "Two");
    const qint64 three = m_documents->add(text, "Three");
    QVERIFY(m_documents->Sort_Docs({three, one, two}));
    QCOMPARE(titles(), QStringList({"Three", "One's", "Two"}));
    m_home->messages.willType("First");
    QVERIFY(m_documents->Rename_Doc(one));
    QCOMPARE(m_home->messages.nameRequests.back().title, "Rename the current document");
    m_home->messages.willAnswer(Answer::Ok);
    QVERIFY(m_documents->Remove_Doc(three));
    QCOMPARE(m_home->messages.asked.back().text,
             "Do you want to delete\nThree\nfrom " + m_owner.name(*m_home->session) + "?");
    QVERIFY(!m_documents->hasFile(three));
    QCOMPARE(titles(), QStringList({"First", "Two"}));
    QCOMPARE(m_home->number("SELECT MAX(OrderNbr) FROM Cards WHERE RelatedCat = 'Rec'"), 2);

    m_home->messages.willChoose({m_home->file("out.rtf")});
    QVERIFY(m_documents->ExportDocToFile(two));
    QCOMPARE(bytesOf(m_home->file("out.rtf")), text);
    QCOMPARE(m_home->messages.fileRequests.back().title, "Export document");
    // Where no file can be written there is no row either, and what stood in a file stays.
    const QString folder = m_home->session->dataFolder(Session::Folder::Documents);
    QVERIFY(QFile::remove(m_documents->path(two)) && QDir(folder).mkdir(QString::number(two)));
    QVERIFY(!m_documents->rewrite(two, text));
    QVERIFY(QDir(folder).removeRecursively() &&
            !write(QDir(m_home->folder()).relativeFilePath(folder), "x").isEmpty());
    QCOMPARE(m_documents->add(text, "Nowhere"), 0);
    QCOMPARE(titles(), QStringList({"First", "Two"}));
    m_home->run("DELETE FROM Rec");
    QCOMPARE(m_documents->add(text, "Of nothing"), 0);
    QCOMPARE(m_home->messages.told.back(), "This card has been deleted meanwhile.");
}

void TestDocuments::importsWhatIsText_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");   // what was read, or
    QTest::addColumn<QString>("reason"); // a word of the refusal
    QTest::newRow("UTF-8") << QByteArray("Dvořák\r\nnext") << "Dvořák\nnext"
                           << "";
    QTest::newRow("Windows-1252") << QByteArray("\x80 caf\xE9") << "€ café"
                                  << "";
    QTest::newRow("UTF-16") << QByteArray("\xFF\xFE\x59\x01", 4) << "ř"
                            << "";
    QTest::newRow("RTF") << QByteArray("{\\rtf1 {\\b really} RTF}") << "really RTF"
                         << "";
    QTest::newRow("Word") << QByteArray("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8) << ""
                          << "Word";
    QTest::newRow("compressed") << QByteArray("PK\x03\x04zip") << ""
                                << "compressed";
    QTest::newRow("binary") << QByteArray("MZ\0\0", 4) << ""
                            << "binary";
    QTest::newRow("too large") << QByteArray(CardDocuments::maxBytes + 1, 'x') << ""
                               << "MB";
}

void TestDocuments::importsWhatIsText() {
    QFETCH(QByteArray, bytes);
    QFETCH(QString, reason);
    const qint64 id = m_documents->addFile(write("My letter.doc", bytes));
    QCOMPARE(id == 0, !reason.isEmpty());
    if (id == 0) {
        QVERIFY2(m_home->messages.told.back().contains(reason), qPrintable(m_home->messages.told.back()));
        return;
    }
    QCOMPARE(titles(), QStringList("My letter"));
    QTEST(RichText::toText(m_documents->read(id).value()), "text");
}

void TestDocuments::panelGoesThroughThem() {
    const qint64 ids[] = {m_documents->add(RichText::fromText("alpha"), "One"),
                          m_documents->add("{\\rtf1 {\\b beta", "Two"),
                          m_documents->add(RichText::fromText("gamma"), "Three")};
    QFile::remove(m_documents->path(ids[2]));
    frmItem card({{*m_home->session, *m_icons}, m_cards, m_owner.code, m_owner.id});
    card.show();
    QVERIFY(card.showPanel("Docs"));
    auto* panel = card.findChild<DocumentPanel*>();
    auto* shown = panel->findChild<QTextEdit*>();
    QCOMPARE(shown->toPlainText(), "alpha");
    QVERIFY(!card.canRun("mnuCardDocBack"));
    card.run("mnuCardDocForward");
    QCOMPARE(shown->toPlainText(), "beta");
    card.run("mnuCardDocForward");
    QCOMPARE(shown->placeholderText(), "File not found!");
    QVERIFY(!card.canRun("mnuCardDocForward") && !card.canRun("mnuCardDocExport"));
    auto* list = card.findChild<QTreeView*>("lvDocs");
    QCOMPARE(card.findChild<DocumentListPanel*>()->heading(), "Title (3)");
    list->setCurrentIndex(list->model()->index(1, 0));
    QCOMPARE(panel->index(), 1);
    m_home->messages.willAnswer(Answer::Ok);
    card.run("mnuCardDocRemove");
    QCOMPARE(list->model()->rowCount(), 2);
    QCOMPARE(panel->index(), 1);
}

void TestDocuments::colouredTextsStayReadable() {
    m_documents->add("{\\rtf1{\\colortbl;\\red140\\green30\\blue30;}\\cf1 dark red}", "One");
    frmItem card({{*m_home->session, *m_icons}, m_cards, m_owner.code, m_owner.id});
    card.show();
    const auto* shown = card.findChild<DocumentPanel*>()->findChild<QTextEdit*>();
    QTextCursor cursor(shown->document());
    cursor.setPosition(3);
    QVERIFY(contrast(cursor.charFormat().foreground().color(), shown->palette().color(QPalette::Base)) >= 3);
}

void TestDocuments::longDocumentsKeepNobodyWaiting_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("one word") << QByteArray(3 << 20, 'x');
    QTest::newRow("one line") << QByteArray("word ").repeated(600'000);
    QTest::newRow("many colours") << QByteArray("{\\cf1 a}{\\cf2 b}").repeated(150'000);
}

// One word of three megabytes froze a card for a minute and a half.
void TestDocuments::longDocumentsKeepNobodyWaiting() {
    QFETCH(QByteArray, text);
    const QByteArray document =
        "{\\rtf1{\\colortbl;\\red140\\green30\\blue30;\\red9\\green9\\blue9;}" + text + '}';
    m_documents->add(document, "Long");
    QElapsedTimer clock;
    clock.start();
    frmItem card({{*m_home->session, *m_icons}, m_cards, m_owner.code, m_owner.id});
    card.show();
    const auto* shown = card.findChild<DocumentPanel*>()->findChild<QTextEdit*>();
    card.grab();
    const QString first = shown->toPlainText();
    QVERIFY2(first.size() < RichText::charactersAtOnce + 200, qPrintable(QString::number(first.size())));
    QVERIFY(first.size() > RichText::charactersAtOnce && first.endsWith("shows all of it.)"));
    QTextDocument whole;
    RichText::toDocument(document, whole);
    QCOMPARE(whole.characterCount() - 1, RichText::toText(document).size());
    QVERIFY2(clock.elapsed() < 30'000, qPrintable(QString::number(clock.elapsed())));
}

void TestDocuments::largePicturesStayWhole() {
    QImage large(3000, 2000, QImage::Format_RGB32);
    large.fill(Qt::darkGreen);
    const QByteArray written = RichText::fromImage(large);
    QTextDocument shown;
    const QString small =
        QString::fromLatin1(written).replace(QRegularExpression("\\\\pic([wh])goal\\d+"), "\\pic\\1goal1500");
    RichText::toDocument(small.toLatin1(), shown);
    const QTextImageFormat image = shown.begin().begin().fragment().charFormat().toImageFormat();
    const auto resource = shown.resource(QTextDocument::ImageResource, QUrl(image.name())).value<QImage>();
    QCOMPARE(resource.size(), QSize(100, 100)); // no finer than it is shown
    QTextDocument again;
    RichText::toDocument(RichText::fromDocument(shown), again);
    const QByteArray kept = RichText::fromDocument(again);
    QVERIFY(kept.size() > written.size() - 200 && kept == RichText::fromDocument(shown));
}

void TestDocuments::editorWritesWhatItsToolBarMakes() {
    open(0);
    QCOMPARE(m_editor->windowTitle(), " New document[*]");
    key(Qt::Key_B);
    QTest::keyClicks(m_text, "Bold");
    key(Qt::Key_B);
    key(Qt::Key_I);
    key(Qt::Key_U);
    QTest::keyClicks(m_text, " both");
    key(Qt::Key_Return, Qt::NoModifier);
    key(Qt::Key_R);
    auto* size = m_editor->findChild<QComboBox*>("cboSize");
    QCOMPARE(size->currentText(), "10");
    size->setCurrentText("12");
    QTest::keyClick(size, Qt::Key_Return);
    QVERIFY(m_text->hasFocus());
    QTest::keyClicks(m_text, "right");
    auto* pasted = new QMimeData;
    pasted->setHtml("<p><span style='color:#ff0000'>red</span></p>");
    QApplication::clipboard()->setMimeData(pasted);
    key(Qt::Key_V);
    m_home->messages.willType("It's mine");
    key(Qt::Key_S);
    QCOMPARE(m_home->messages.nameRequests.back().title, "Save current document");
    QCOMPARE(m_home->messages.nameRequests.back().heading, "Save document");
    QCOMPARE(titles(), QStringList("It's mine"));

    QTextDocument stored;
    RichText::toDocument(m_documents->read(m_editor->document()).value(), stored);
    QCOMPARE(stored.toPlainText(), "Bold both\nrightred");
    const auto formatAt = [&](int position) {
        QTextCursor cursor(&stored);
        cursor.setPosition(position);
        return cursor.charFormat();
    };
    QVERIFY(formatAt(2).fontWeight() == QFont::Bold && !formatAt(2).fontItalic());
    QVERIFY(formatAt(7).fontWeight() != QFont::Bold && formatAt(7).fontItalic() &&
            formatAt(7).fontUnderline());
    QCOMPARE(formatAt(7).fontFamilies().toStringList().value(0), "Verdana");
    QCOMPARE(formatAt(12).fontPointSize(), 12.0);
    QCOMPARE(formatAt(17).foreground().color(), QColor("#ff0000"));
    QVERIFY(stored.lastBlock().blockFormat().alignment() & Qt::AlignRight);
    key(Qt::Key_Escape, Qt::NoModifier); // nothing is unsaved; the caller's panel must show the new one
    QCOMPARE(m_editor->result(), int(QDialog::Accepted));
}

void TestDocuments::editorAsksBeforeItForgets() {
    const qint64 id = m_documents->add(RichText::fromText("kept"), "One");
    open(id);
    QTest::keyClicks(m_text, "x");
    m_home->messages.willAnswer(Answer::Cancel);
    key(Qt::Key_Escape, Qt::NoModifier);
    QVERIFY(m_editor->isVisible());
    QCOMPARE(m_home->messages.asked.back().text,
             "The data has been modified. Do you want to save the changes?");
    m_home->messages.willAnswer(Answer::No);
    m_home->messages.willChoose({write("letter.txt", "imported")});
    action("Open")->trigger();
    QCOMPARE(m_text->toPlainText(), "imported");
    m_home->messages.willType("Two");
    key(Qt::Key_S); // a document of its own: the one that was open stays
    QCOMPARE(titles(), QStringList({"One", "Two"}));
    QCOMPARE(RichText::toText(m_documents->read(id).value()), "kept");
    QTest::keyClicks(m_text, "x");
    m_home->run("DELETE FROM Cards");
    m_home->messages.willAnswer(Answer::Yes);
    key(Qt::Key_Escape, Qt::NoModifier);
    QVERIFY(m_editor->isVisible()); // what was typed is not lost with the row
}

void TestDocuments::undoingHasNames() {
    open(0);
    QVERIFY(!action("Undo")->isEnabled());
    QTest::keyClicks(m_text, "abc");
    QCOMPARE(action("Undo")->toolTip(), "Undo Typing");
    key(Qt::Key_A);
    key(Qt::Key_X);
    QCOMPARE(action("Undo")->toolTip(), "Undo Cut");
    key(Qt::Key_V);
    QCOMPARE(action("Undo")->toolTip(), "Undo Paste");
    key(Qt::Key_Backspace, Qt::NoModifier);
    QCOMPARE(action("Undo")->toolTip(), "Undo Delete");
    action("Undo")->trigger();
    QCOMPARE(action("Redo")->toolTip(), "Redo Delete");
    QCOMPARE(action("Undo")->toolTip(), "Undo Paste");
    action("Undo")->trigger();
    QCOMPARE(action("Undo")->toolTip(), "Undo Cut");
    action("Undo")->trigger();
    QCOMPARE(m_text->toPlainText(), "abc");
}

QTEST_MAIN(TestDocuments)
#include "test_documents.moc"
