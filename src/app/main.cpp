// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/WindowStart.h"
#include "platform/Loopback.h"
#include "platform/SingleInstance.h"
#include "store/Session.h"
#include "store/Startup.h"
#include "widgets/WindowProgress.h"
#include "window/GuardedApplication.h"
#include "window/MainWindow.h"
#include "window/SplashScreen.h"

#include <QCommandLineParser>
#include <QProcess>
#include <QTextStream>

using namespace tessaranth;

namespace {

bool isShownByVnc() { return QGuiApplication::platformName() == QStringLiteral("vnc"); }

// The plugin's server begins to listen with the first events.
bool isVncConfined() {
    if (!isShownByVnc())
        return true;
    QCoreApplication::processEvents();
    if (confineServersToLoopback() > 0)
        return true;
    QTextStream(stderr) << "The window cannot be shown by VNC to this machine only.\n";
    return false;
}

int runWindow(StartedWindow& started) {
    MainWindow window({started.session, started.icons});
    started.instance.activated = [&window] { window.comeForward(); };
    if (isShownByVnc()) // where nothing could move or enlarge it
        window.showFullScreen();
    else
        window.show();
    started.splash.close();
    const QString text = started.start.upgrade.text();
    if (started.start.upgrade.kind == UpgradeResult::Kind::FailedAtStep)
        started.session.messages().warning(applicationTitle, text);
    else if (!text.isEmpty())
        window.showNotice(text);
    return QApplication::exec();
}

} // namespace

static int run(int argc, char** argv) {
    GuardedApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tessaranth"));
    QApplication::setApplicationVersion(QStringLiteral(TESSARANTH_VERSION));
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("The catalog of your recordings"));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.process(application);
    if (!isVncConfined())
        return 1;
    if (isShownByVnc()) // the plugin knows no theme and would fall back to the oldest style
        QApplication::setStyle(QStringLiteral("Fusion"));

    const int code = withStartedWindow([&application](StartedWindow& started) {
        application.setMessages(&started.session.messages());
        const int answer = runWindow(started);
        application.setMessages(nullptr);
        WindowProgress progress(nullptr, false);
        shutDown(started.session, progress);
        return answer;
    });
    if (code == MainWindow::restartCode)
        return QProcess::startDetached(QApplication::applicationFilePath(), {}) ? 0 : 1;
    return code;
}

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        QTextStream(stderr) << error.what() << '\n';
        return 1;
    }
}
