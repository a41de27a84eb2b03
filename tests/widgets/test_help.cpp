// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Desktop.h"
#include "support/TestHome.h"
#include "widgets/Help.h"

#include <QAction>
#include <QDialog>
#include <QDirIterator>
#include <QFile>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTest>

using namespace tessaranth;

class TestHelp : public QObject {
    Q_OBJECT

    struct FakeDesktop final : Desktop {
        bool openFile(const QString& path) override {
            opened << QFileInfo(path).fileName();
            return works;
        }
        bool openFolder(const QString&) override { return false; }
        bool openUrl(const QUrl&) override { return false; }
        QStringList opened;
        bool works = true;
    };
    const QString folder = QStringLiteral(TESSARANTH_SHARE "/help");

private slots:
    // A window without a page would send its user to the contents.
    void everyFormHasAPageAndEveryLinkATarget() {
        QDirIterator sources(QStringLiteral(TESSARANTH_SOURCE_DIR "/src"), {"frm*.h"}, QDir::Files,
                             QDirIterator::Subdirectories);
        int forms = 0;
        for (; sources.hasNext(); ++forms) {
            const QString name = QFileInfo(sources.next()).completeBaseName();
            QVERIFY2(QFile::exists(folder + u'/' + name + ".html"), qPrintable(name));
        }
        QVERIFY(forms > 10);
        static const QRegularExpression link(QStringLiteral("href=\"([^\"]+)\""));
        for (const QFileInfo& page : QDir(folder).entryInfoList({"*.html"})) {
            const QString text = QString::fromUtf8(bytesOf(page.filePath()));
            for (const auto& match : link.globalMatch(text))
                QVERIFY2(QFile::exists(folder + u'/' + match.captured(1)), qPrintable(page.fileName()));
        }
    }

    void f1OpensThePageOfTheWindow() {
        TestHome home;
        home.useTemplate();
        home.start();
        FakeDesktop desktop;
        home.session->setDesktop(desktop);
        Help help(*home.session, folder);
        QDialog form;
        form.setObjectName(QStringLiteral("frmPers"));
        auto* field = new QLineEdit(&form);
        form.show();
        QTest::keyClick(field, Qt::Key_F1);
        form.setObjectName(QStringLiteral("frmNobodyKnows"));
        QTest::keyClick(field, Qt::Key_F1);
        QCOMPARE(desktop.opened, QStringList({"frmPers.html", "index.html"}));
        QCOMPARE(home.messages.told.size(), 0);
        // A command that has the key itself, as in the classifications.
        form.setObjectName(QStringLiteral("frmClass"));
        auto* command = new QAction(&form);
        command->setShortcut(Qt::Key_F1);
        connect(command, &QAction::triggered, &form, [&form] { Help::request(&form); });
        form.addAction(command);
        QVERIFY(QTest::qWaitForWindowActive(&form));
        QTest::keyClick(field, Qt::Key_F1);
        QCOMPARE(desktop.opened.mid(2), QStringList("frmClass.html"));
        desktop.works = false;
        QTest::keyClick(field, Qt::Key_F1);
        help.openPage(QStringLiteral("missing"));
        QCOMPARE(home.messages.told.size(), 2);
    }
};

QTEST_MAIN(TestHelp)
#include "test_help.moc"
