// SPDX-License-Identifier: GPL-3.0-or-later
// An exception that leaves an event is told, and the program goes on.
#include "support/ScriptedMessages.h"
#include "window/GuardedApplication.h"

#include <QPushButton>
#include <QTest>
#include <stdexcept>

using namespace tessaranth;

class TestGuardedApplication final : public QObject {
    Q_OBJECT

private slots:
    void goesOn() {
        auto* application = static_cast<GuardedApplication*>(QCoreApplication::instance());
        ScriptedMessages messages;
        application->setMessages(&messages);
        QPushButton button("&Break");
        int presses = 0;
        connect(&button, &QPushButton::clicked, &button, [&] {
            if (++presses == 1)
                throw std::runtime_error("a column is missing");
        });
        button.show();
        QVERIFY(QTest::qWaitForWindowActive(&button));
        QTest::keyClick(&button, Qt::Key_Space);
        QCOMPARE(messages.told.size(), 1);
        QVERIFY(messages.told[0].contains("a column is missing"));
        QTest::keyClick(&button, Qt::Key_Space);
        QTest::keyClick(&button, Qt::Key_Space);
        QVERIFY(presses >= 2);
        QCOMPARE(messages.told.size(), 1);
        application->setMessages(nullptr);
    }
};

int main(int argc, char** argv) {
    GuardedApplication application(argc, argv);
    TestGuardedApplication test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_guardedapplication.moc"
