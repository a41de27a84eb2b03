// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/ItemCatalog.h"
#include "widgets/FormContext.h"
#include "widgets/IconStore.h"
#include "window/frmCleanup.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>

using namespace tessaranth;

class TestCleanupForm : public QObject {
    Q_OBJECT

    static QStringList lines(const QWidget& form) {
        QStringList lines;
        const auto* list = form.findChild<QListWidget*>("lvSteps");
        for (int row = 0; row < list->count(); ++row)
            lines << list->item(row)->text();
        return lines;
    }

private slots:
    void repairAsksTellsAndRestarts() {
        ItemCatalog catalog(true);
        const IconStore icons(catalog.file("tsrthres.dll"));
        const FormContext context(*catalog.session, icons);
        frmCleanup form(context);
        form.show();
        auto* repair = form.findChild<QPushButton*>("cmdRepair");
        QTest::mouseClick(repair, Qt::LeftButton);
        QCOMPARE(lines(form), QStringList("The catalog is in order."));
        QVERIFY(repair->isEnabled() && form.isVisible()); // nothing has changed

        catalog.run("INSERT INTO Tracks (RecID, Disc, TrackNbr, TrackName, TrackLen) VALUES (99999, 1, 1, "
                    "'Lost', '')");
        catalog.run("UPDATE Rec SET LabelID = 99999 WHERE RecID = 1");
        catalog.messages.willAnswer(Answer::No);
        catalog.messages.willAnswer(Answer::Yes);
        QTest::keyClick(repair, Qt::Key_Space);
        QVERIFY(lines(form).contains("Tracks without a recording: 1 rows deleted"));
        QVERIFY(lines(form).contains("Kinds of faults that are left: 1"));
        QCOMPARE(catalog.number("SELECT COUNT(*) FROM Tracks WHERE RecID = 99999"), 0);
        QCOMPARE(catalog.number("SELECT LabelID FROM Rec WHERE RecID = 1"), 99999);
        auto* start = form.findChild<QPushButton*>("cmdStart");
        QVERIFY(start->text().contains("Restart") && !repair->isEnabled());
        QTest::keyClick(start, Qt::Key_Space);
        QCOMPARE(form.result(), int(QDialog::Accepted));
    }
};

QTEST_MAIN(TestCleanupForm)
#include "test_cleanupform.moc"
