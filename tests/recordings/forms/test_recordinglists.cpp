// SPDX-License-Identifier: GPL-3.0-or-later
// The lists about recordings, with keyboard and mouse.
#include "recordings/forms/frmRecCheck.h"
#include "recordings/forms/frmRecList.h"
#include "recordings/forms/frmTrackToWorklist.h"
#include "support/ItemCatalog.h"
#include "widgets/IconStore.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>

using namespace tessaranth;

class TestRecordingLists : public QObject {
    Q_OBJECT

private slots:
    void checkOpensTheCardOfARecording();
    void listOpensOrChooses();
    void keptTracksBecomeWorks();
};

void TestRecordingLists::checkOpensTheCardOfARecording() {
    ItemCatalog catalog(true);
    const IconStore icons(catalog.session->applicationFile("tsrthres.dll"));
    FakeCards cards;
    frmRecCheck form({*catalog.session, icons}, cards);
    form.show();
    auto* view = form.findChild<QTreeView*>("lvCheck");
    QTRY_COMPARE(view->model()->rowCount(), int(catalog.count("Rec")));
    QCOMPARE(form.findChild<QLabel*>("lblState")->text(),
             QString("Recordings: %1").arg(catalog.count("Rec")));
    const int tracks = view->model()->columnCount() - 1;
    view->sortByColumn(tracks, Qt::AscendingOrder);
    QCOMPARE(view->model()->index(0, tracks).data().toString(), "no");
    view->setCurrentIndex(view->model()->index(0, 0));
    const QString title = view->currentIndex().data().toString();
    QTest::keyClick(view, Qt::Key_Return);
    QCOMPARE(cards.opened.size(), 1);
    const QString recording = cards.opened[0].mid(4);
    QCOMPARE(catalog.text("SELECT RecTitle FROM Rec WHERE RecID = " + recording), title);
    // What it lacked was added while the list stood beside; it is read again by whoever comes back to it.
    catalog.run("INSERT INTO Tracks (RecID, Disc, TrackNbr, TrackName, TrackLen) VALUES (" + recording +
                ", 1, 1, 'A', '')");
    form.setOutdated();
    form.hide();
    form.show();
    QTRY_COMPARE(view->currentIndex().siblingAtColumn(tracks).data().toString(), "yes");
    QCOMPARE(view->currentIndex().data().toString(), title);
    form.close();
    QCOMPARE(catalog.session->configuration().number("Misc", "LastCheckWidth", 0), view->width());
}

void TestRecordingLists::listOpensOrChooses() {
    ItemCatalog catalog(true);
    const IconStore icons(catalog.session->applicationFile("tsrthres.dll"));
    const qint64 work = catalog.number("SELECT CompID FROM CompOnRec");
    for (const bool opens : {true, false}) {
        FakeCards cards;
        frmRecList form({*catalog.session, icons}, work, "It", opens ? &cards : nullptr);
        form.show();
        auto* view = form.findChild<QTreeView*>("lvRecordings");
        const QPoint first = view->visualRect(view->model()->index(0, 0)).center();
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, first);
        QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, first);
        QCOMPARE(form.result(), int(QDialog::Accepted));
        QVERIFY(catalog.number(QString("SELECT CompOnRecID FROM CompOnRec WHERE CompID = %1 AND RecID = %2")
                                   .arg(work)
                                   .arg(form.id())) != 0);
        QCOMPARE(cards.opened, opens ? QStringList{OpenCards::key("Rec", form.id())} : QStringList());
    }
}

void TestRecordingLists::keptTracksBecomeWorks() {
    ItemCatalog catalog(true);
    const IconStore icons(catalog.session->applicationFile("tsrthres.dll"));
    RecordingEditor editor(*catalog.session, catalog.number("SELECT RecID FROM CpsOnRec"));
    const qint64 before = catalog.count("Compositions");
    const QStringList names{"One", "Two", "Suite: I. Air", "Suite: II. Gigue"};
    const QString composer = editor.composers().front().name;
    const size_t placed = editor.works().size();
    {
        frmTrackToWorklist form({*catalog.session, icons}, editor, names);
        form.show();
        auto* titles = form.findChild<QTreeWidget*>("lvTitles");
        auto* ok = form.findChild<QPushButton*>("cmdOk");
        QCOMPARE(titles->topLevelItemCount(), 3); // the movements are of one work
        QTest::mouseClick(form.findChild<QPushButton*>("cmdUncheckAll"), Qt::LeftButton);
        QVERIFY(!ok->isEnabled());
        titles->setFocus();
        for (const int row : {1, 2}) {
            titles->setCurrentItem(titles->topLevelItem(row));
            QTest::keyClick(titles, Qt::Key_Space);
        }
        titles->setCurrentItem(titles->topLevelItem(1));
        QTest::keyClick(titles, Qt::Key_F2);
        auto* box = titles->findChild<QLineEdit*>();
        QVERIFY(box);
        QTest::keyClicks(box, "Finale");
        QTest::keyClick(box, Qt::Key_Return);
        QTRY_COMPARE(titles->topLevelItem(1)->text(0), "Finale");
        QTest::keyClick(form.findChild<QCheckBox*>("chkMerge"), Qt::Key_Space);
        QCOMPARE(titles->topLevelItemCount(), 4);
        QCOMPARE(titles->topLevelItem(1)->text(0), "Finale"); // as typed
        QTest::keyClick(form.findChild<QCheckBox*>("chkMerge"), Qt::Key_Space);
        titles->topLevelItem(0)->setCheckState(0, Qt::Unchecked);
        QTest::mouseClick(ok, Qt::LeftButton);
        QCOMPARE(form.result(), int(QDialog::Accepted));
    }
    QCOMPARE(catalog.count("Compositions"), before + 2);
    QCOMPARE(catalog.text("SELECT CompTitle FROM Compositions ORDER BY CompID DESC"), "Suite");
    QCOMPARE(catalog.messages.told,
             QStringList{"2 works have been added to the " + composer +
                         " worklist.\nNow you can easily add these works to the recording."});
    // Another time, what the composer has by now is told and never doubled, but can be put on the recording.
    frmTrackToWorklist again({*catalog.session, icons}, editor, names);
    again.show();
    auto* titles = again.findChild<QTreeWidget*>("lvTitles");
    QVERIFY(titles->topLevelItem(2)->text(1).contains("already"));
    QCOMPARE(titles->topLevelItem(2)->checkState(0), Qt::Unchecked);
    QTest::mouseClick(again.findChild<QPushButton*>("cmdCheckAll"), Qt::LeftButton);
    auto* place = again.findChild<QCheckBox*>("chkPlace");
    QTest::keyClick(place, Qt::Key_Space);
    QVERIFY(place->isChecked());
    QTest::mouseClick(again.findChild<QPushButton*>("cmdOk"), Qt::LeftButton);
    QCOMPARE(catalog.count("Compositions"), before + 4);
    QCOMPARE(editor.works().size(), placed + 3);
    QCOMPARE(editor.works().back().title, "Suite");
    QVERIFY(catalog.messages.told.back().startsWith("2 works"));
}

QTEST_MAIN(TestRecordingLists)
#include "test_recordinglists.moc"
