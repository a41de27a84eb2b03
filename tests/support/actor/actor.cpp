// SPDX-License-Identifier: GPL-3.0-or-later
// Starts the window as the program does, carries out one thing in it by mouse and keyboard and ends as the
// program does, saying on its output when that begins: a program to be killed.
#include "app/WindowStart.h"
#include "items/forms/frmNewLabel.h"
#include "platform/Progress.h"
#include "store/Session.h"
#include "store/Startup.h"
#include "window/MainWindow.h"
#include "window/SplashScreen.h"
#include "window/frmSettings.h"

#include <QClipboard>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <cstdio>

using namespace tessaranth;

namespace {

template<typename Widget>
Widget* child(QWidget& form, const char* name) {
    auto* found = form.findChild<Widget*>(QString::fromLatin1(name));
    if (!found)
        qFatal("no %s", name);
    return found;
}

void typeInto(QLineEdit* field, const QString& text) {
    field->selectAll();
    QTest::keyClicks(field, text);
}

void changeSettings(const FormContext& context) {
    frmSettings form(context);
    form.show();
    typeInto(child<QLineEdit>(form, "MainPageTitle"), "My music");
    QTest::mouseClick(child<QPushButton>(form, "cmdSave"), Qt::LeftButton);
}

void addLabel(const FormContext& context) {
    QImage logo(300, 300, QImage::Format_RGB32);
    for (int i = 0; i < 300 * 300; ++i)
        logo.setPixel(i % 300, i / 300, QRgb(i) * 2654435761U);
    QApplication::clipboard()->setImage(logo);
    frmNewLabel form(context, 0);
    form.show();
    typeInto(child<QLineEdit>(form, "txtName"), "A new label");
    QTest::mouseClick(child<QPushButton>(form, "cmdPaste"), Qt::LeftButton);
    QTest::mouseClick(child<QPushButton>(form, "cmdSave"), Qt::LeftButton);
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const QString deed = application.arguments().value(1);
    return withStartedWindow([&](StartedWindow& started) {
        const FormContext context{started.session, started.icons};
        MainWindow window(context);
        window.show();
        started.splash.close();
        QApplication::processEvents();
        std::puts("begins");
        std::fflush(stdout);
        if (deed == "settings")
            changeSettings(context);
        else if (deed == "label")
            addLabel(context);
        else
            window.resize(window.width() + 40, window.height() + 20);
        // Leaving asks.
        QTimer answer;
        QObject::connect(&answer, &QTimer::timeout, [] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
                box->button(QMessageBox::Yes)->click();
        });
        answer.start(5);
        window.close();
        QApplication::processEvents();
        NoProgress quiet;
        shutDown(started.session, quiet);
        return 0;
    });
}
