// SPDX-License-Identifier: GPL-3.0-or-later
// Item cards and work cards, worked through their widgets.
#include "support/ItemCatalog.h"
#include "widgets/ElidedLabel.h"
#include "widgets/IconStore.h"
#include "window/frmItem.h"
#include "works/forms/frmWork.h"

#include <QPushButton>
#include <QSplitter>
#include <QTabBar>
#include <QTreeView>

using namespace tessaranth;

class TestItemCard : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_card.reset(); }
    void opensWhereItWasLeft();
    void contentsOpenWhereTheyWereLeft();
    void panelsOfEachKind_data();
    void panelsOfEachKind();
    void namesAreShownAsTheyStand();
    void longNamesKeepTheCardNarrow();
    void commandsFollowThePanel();
    void doubleClickOpensTheRightPerson();
    void worksAreOpenedAndRemoved();
    void widthsStayWhileTheProgramRuns();
    void deletedCardSaysSo();
    void everyTextIsReadable_data();
    void everyTextIsReadable();
    void workCardOpensItsRecordings();

private:
    void open(const QString& code, qint64 id = 1) {
        m_card.reset();
        m_card = std::make_unique<frmItem>(context(code, id));
        m_card->show();
        m_card->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_card.get()));
    }
    CardContext context(const QString& code, qint64 id) {
        return {{*m_home->session, *m_icons}, m_cards, code, id};
    }
    template<typename Widget>
    Widget* find(const char* name) const {
        return m_card->findChild<Widget*>(QString::fromLatin1(name));
    }
    void clickTab(const char* tabs, int index) const {
        auto* bar = find<QTabBar>(tabs);
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(index).center());
    }
    static void doubleClick(QTreeView* view, int row) {
        const QPoint at = view->visualRect(view->model()->index(row, 0)).center();
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, at);
    }

    std::unique_ptr<ItemCatalog> m_home;
    std::unique_ptr<IconStore> m_icons;
    FakeCards m_cards;
    std::unique_ptr<frmItem> m_card;
};

void TestItemCard::init() {
    m_home = std::make_unique<ItemCatalog>();
    m_icons = std::make_unique<IconStore>(m_home->file("tsrthres.dll"));
    m_cards = {};
    for (const char* statement : {"INSERT INTO Cps (CpsID, CpsLname, CpsFname) VALUES (1, 'Bach', 'J. S.')",
                                  "INSERT INTO Pfr (PfrID, PfrLname) VALUES (1, 'Rhythm & Blues Trio')",
                                  "INSERT INTO Rec (RecID, RecTitle) VALUES (1, 'Tosca')",
                                  "INSERT INTO UserDef (UserDefID, UserDefTitle) VALUES (1, 'Lent')",
                                  "INSERT INTO Compositions (CompID, CpsID, CompTitle) VALUES (3, 1, 'Aria')",
                                  "INSERT INTO CpsOnRec (RecID, CpsID) VALUES (1, 1)",
                                  "INSERT INTO PfrOnRec (RecID, PfrID) VALUES (1, 1)",
                                  "INSERT INTO CompOnRec (RecID, CpsID, CompID, Pos) VALUES (1, 1, 3, 1)"})
        m_home->run(statement);
}

void TestItemCard::opensWhereItWasLeft() {
    open("Rec");
    QCOMPARE(m_card->Panel(), "Docs");
    clickTab("panelTabs", 2);
    QCOMPARE(m_card->Panel(), "Media");
    m_card->close();
    QCOMPARE(m_home->number("SELECT LastState FROM Rec"), 4);
    open("Rec");
    QCOMPARE(m_card->Panel(), "Media");
    QVERIFY(find<QTreeView>("lvMedia")->isVisible());
}

void TestItemCard::contentsOpenWhereTheyWereLeft() {
    m_home->run("UPDATE Rec SET LastState = 3, LastStateRec = 99, LastStateRecSplitterPos = 70");
    open("Rec");
    QVERIFY(find<QTreeView>("lvContents")->isVisible()); // 99 is no area
    auto* splitter = find<QSplitter>("contentsSplitter");
    const auto part = [&] {
        return splitter->sizes()[0] * 100 / (splitter->sizes()[0] + splitter->sizes()[1]);
    };
    QVERIFY(qAbs(part() - 70) <= 1);
    QWidget* handle = splitter->handle(1);
    QTest::mousePress(handle, Qt::LeftButton, {}, handle->rect().center());
    QTest::mouseMove(handle, handle->rect().center() - QPoint(splitter->width() * 3 / 10, 0));
    QTest::mouseRelease(handle, Qt::LeftButton);
    clickTab("contentsTabs", 1);
    m_card->close();
    open("Rec");
    QVERIFY(find<QTreeView>("lvTracks")->isVisible());
    splitter = find<QSplitter>("contentsSplitter");
    QVERIFY2(qAbs(part() - 40) <= 2, qPrintable(QString::number(part())));
}

void TestItemCard::panelsOfEachKind_data() {
    QTest::addColumn<QStringList>("captions");
    QTest::newRow("Cps") << QStringList{"  Works",       "  On recordings", "  Title",
                                        "  Media files", "  Web links",     "  Relationships"};
    QTest::newRow("Pfr") << QStringList{"  Perform", "  Title", "  Media files", "  Web links",
                                        "  Relationships"};
    QTest::newRow("Rec") << QStringList{"Contents", "Title", "Media files", "Web links", "Relationships"};
    QTest::newRow("UserDef") << QStringList{"Title", "Media files", "Web links", "Relationships"};
}

void TestItemCard::panelsOfEachKind() {
    open(QTest::currentDataTag());
    auto* tabs = find<QTabBar>("panelTabs");
    QStringList captions;
    for (int tab = 0; tab < tabs->count(); ++tab) {
        captions << tabs->tabText(tab);
        clickTab("panelTabs", tab);
        QCOMPARE(m_card->Panel(), tabs->tabData(tab).toString());
    }
    QTEST(captions, "captions");
    QVERIFY(!m_card->showPanel("Nonsense"));
    QVERIFY(m_card->showPanel("Rel"));
}

void TestItemCard::namesAreShownAsTheyStand() {
    open("Pfr");
    auto* name = find<ElidedLabel>("cardName");
    QCOMPARE(name->text(), "Rhythm & Blues Trio");
    QCOMPARE(m_card->windowTitle(), "Rhythm & Blues Trio");
    QCOMPARE(find<ElidedLabel>("cardYears")->text(), "(? - ?)");
    // A mnemonic would swallow the sign; a doubled one would make the line longer.
    const QImage shown = name->grab().toImage();
    const auto lettersOf = [&](const QString& text) {
        name->setText(text);
        return name->grab().toImage();
    };
    QVERIFY(lettersOf("Rhythm  Blues Trio") != shown);
    QVERIFY(lettersOf("Rhythm && Blues Trio") != shown);
    QCOMPARE(lettersOf("Rhythm & Blues Trio"), shown);
}

void TestItemCard::longNamesKeepTheCardNarrow() {
    const QString name = QString(120, u'W') + QStringLiteral("שלום ") + QString(125, u'M');
    m_home->run("UPDATE Cps SET CpsLname = '" + name + "', CpsFname = ''");
    open("Cps");
    QVERIFY(m_card->minimumSizeHint().width() < 700);
    QCOMPARE(find<ElidedLabel>("cardName")->toolTip(), name);
    QVERIFY(find<ElidedLabel>("cardYears")->visibleRegion().boundingRect().width() > 0);
}

void TestItemCard::commandsFollowThePanel() {
    open("Cps");
    m_card->showPanel("Media");
    QVERIFY(!m_card->canRun("mnuCardCompManageAdd"));
    m_card->run("mnuShowComp");
    QVERIFY(m_card->canRun("mnuCardCompManageAdd"));
    QVERIFY(!m_card->canRun("mnuCardCompManageEdit")); // nothing is selected
    find<QTreeView>("lvComp")->selectAll();
    QVERIFY(m_card->canRun("mnuCardCompManageEdit"));
    QTest::mouseClick(find<QPushButton>("cmdTogglePanel"), Qt::LeftButton);
    QCOMPARE(m_card->Status(), frmItem::State::PanelHidden);
    QCOMPARE(find<QPushButton>("cmdTogglePanel")->text(), "Show panel");
    QVERIFY(!find<QTreeView>("lvComp")->isVisible());
    QVERIFY(!m_card->canRun("mnuCardCompManageEdit"));
    m_card->run("mnuShowComp");
    QVERIFY(find<QTreeView>("lvComp")->isVisible());
    QVERIFY(!m_card->canRun("mnuShowRecContents"));
}

// Composer and performer have the same id.
void TestItemCard::doubleClickOpensTheRightPerson() {
    m_home->run("UPDATE Rec SET LastState = 3, LastStateRec = 2");
    open("Rec");
    auto* artists = find<QTreeView>("lvArtists");
    QVERIFY(!m_card->canRun("mnuCardRecContentsGoTo"));
    doubleClick(artists, 1);
    doubleClick(artists, 0);
    QCOMPARE(m_cards.opened, (QStringList{"#Pfr1", "#Cps1"}));
    QVERIFY(m_card->canRun("mnuCardRecContentsGoTo"));
    clickTab("contentsTabs", 0);
    QVERIFY(!m_card->canRun("mnuCardRecContentsGoTo"));
    doubleClick(find<QTreeView>("lvContents"), 0);
    QCOMPARE(m_cards.opened.last(), "#Comp3");
}

void TestItemCard::worksAreOpenedAndRemoved() {
    open("Cps");
    m_card->showPanel("Comp");
    QCOMPARE(find<ElidedLabel>("panelHeading")->text(), "Title (1)");
    doubleClick(find<QTreeView>("lvComp"), 0);
    QCOMPARE(m_cards.opened, QStringList{"#Comp3"});
    m_home->messages.willAnswer(Answer::Yes);
    QTest::keyClick(find<QTreeView>("lvComp"), Qt::Key_Delete);
    QCOMPARE(m_home->count("Compositions"), 0);
    QCOMPARE(m_cards.closed, QStringList{"#Comp3"});
    QCOMPARE(find<ElidedLabel>("panelHeading")->text(), "Title (0)");
}

void TestItemCard::widthsStayWhileTheProgramRuns() {
    open("Pfr");
    m_card->showPanel("Rec");
    find<QTreeView>("lvRec")->setColumnWidth(1, 321);
    m_home->run("INSERT INTO Pfr (PfrID, PfrLname, LastState) VALUES (2, 'Gould', 2)");
    open("Pfr", 2);
    QCOMPARE(find<QTreeView>("lvRec")->columnWidth(1), 321);
}

void TestItemCard::deletedCardSaysSo() {
    open("UserDef");
    m_home->run("DELETE FROM UserDef");
    QVERIFY(!m_card->reload());
    QCOMPARE(m_card->Status(), frmItem::State::Gone);
    QVERIFY(!m_card->canRun("mnuShowWeb"));
    QVERIFY(find<ElidedLabel>("cardName")->text().contains("deleted"));
    QVERIFY(m_card->close());
    QVERIFY(m_home->messages.told.isEmpty());
}

void TestItemCard::everyTextIsReadable_data() {
    QTest::addColumn<QColor>("back");
    QTest::addColumn<QColor>("text");
    QTest::newRow("text in the colour of its back") << QColor(Qt::red) << QColor(Qt::red);
    QTest::newRow("dark on dark") << QColor(0x20, 0x20, 0x20) << QColor(0, 0, 0x60);
    QTest::newRow("light on light") << QColor(0xf0, 0xf0, 0xf0) << QColor(Qt::yellow);
    QTest::newRow("grey") << QColor(0x77, 0x77, 0x77) << QColor(0x80, 0x80, 0x80);
}

void TestItemCard::everyTextIsReadable() {
    QFETCH(QColor, back);
    QFETCH(QColor, text);
    for (const char* key : {"CpsBC", "CpsHC"})
        m_home->session->configuration().setColour(key, back);
    for (const char* key : {"CpsFC", "CpsLC", "WksFC"})
        m_home->session->configuration().setColour(key, text);
    open("Cps");
    m_card->showPanel("Comp");
    const auto isReadable = [](const QPalette& palette, QPalette::ColorRole front,
                               QPalette::ColorRole behind) {
        return contrast(palette.color(front), palette.color(behind)) >= 4.0;
    };
    QVERIFY(isReadable(find<QTreeView>("lvComp")->palette(), QPalette::Text, QPalette::Base));
    QVERIFY(isReadable(m_card->palette(), QPalette::HighlightedText, QPalette::Highlight));
    QVERIFY(isReadable(m_card->palette(), QPalette::ButtonText, QPalette::Button));
    QVERIFY(isReadable(find<ElidedLabel>("panelHeading")->palette(), QPalette::WindowText, QPalette::Window));
    QVERIFY(isReadable(find<QWidget>("cardBand")->palette(), QPalette::WindowText, QPalette::Window));
}

void TestItemCard::workCardOpensItsRecordings() {
    frmWork work(context("Comp", 3));
    work.show();
    QCOMPARE(work.key(), "#Comp3");
    QVERIFY(!work.canRun("mnuCardWorkCardGoto"));
    doubleClick(work.findChild<QTreeView*>("lvRec"), 0);
    QTest::mouseClick(work.findChild<QPushButton*>("cmdComposer"), Qt::LeftButton);
    QCOMPARE(m_cards.opened, (QStringList{"#Rec1", "#Cps1"}));
    QVERIFY(work.canRun("mnuCardWorkCardGoto"));
    m_home->messages.willChoose({m_home->file("aria.rtf")});
    work.run("mnuCardWorkCardExport");
    QVERIFY(bytesOf(m_home->file("aria.rtf")).contains("Tosca"));
    m_home->run("DELETE FROM Compositions");
    QVERIFY(!work.reload());
}

QTEST_MAIN(TestItemCard)
#include "test_itemcard.moc"
