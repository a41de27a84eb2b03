// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/AppFolder.h"
#include "platform/Clock.h"
#include "platform/Loopback.h"
#include "platform/SingleInstance.h"
#include "store/Session.h"
#include "store/Startup.h"
#include "ui/Appearance.h"
#include "ui/IconStore.h"
#include "ui/MainWindow.h"
#include "ui/OffscreenLog.h"
#include "ui/SplashScreen.h"
#include "ui/Tour.h"
#include "ui/WindowMessages.h"
#include "ui/WindowProgress.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFontDatabase>
#include <QProcess>
#include <QTextStream>

using namespace tessaranth;

namespace {

void chooseFont() {
    const QString family = QStringLiteral("Tahoma");
    if (QFontDatabase::hasFamily(family))
        QApplication::setFont(QFont(family, QApplication::font().pointSize()));
}

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

int runTourOn(Session& session, const IconStore& icons, const QString& folder) {
    hideOffscreenWarnings();
    const QStringList files = runTour(session, icons, folder);
    QTextStream out(stdout);
    for (const QString& file : files)
        out << file << '\n';
    return files.isEmpty() ? 1 : 0;
}

int runWindow(Session& session, const IconStore& icons, SingleInstance& instance, SplashScreen& splash,
              const StartResult& start) {
    MainWindow window(session, icons);
    instance.activated = [&window] { window.comeForward(); };
    if (isShownByVnc()) // where nothing could move or enlarge it
        window.showFullScreen();
    else
        window.show();
    splash.close();
    const QString text = start.upgrade.text();
    if (start.upgrade.kind == UpgradeResult::Kind::FailedAtStep)
        session.messages().warning(applicationTitle, text);
    else if (!text.isEmpty())
        window.showNotice(text);
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tessaranth"));
    QApplication::setApplicationVersion(QStringLiteral(TESSARANTH_VERSION));
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("The catalog of your recordings"));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption tour(QStringLiteral("tour"),
                                  QStringLiteral("Write a picture of every window into DIR and end."),
                                  QStringLiteral("DIR"));
    parser.addOption(tour);
    parser.process(application);
    chooseFont();
    if (!isVncConfined())
        return 1;
    if (isShownByVnc()) // the plugin knows no theme and would fall back to the oldest style
        QApplication::setStyle(QStringLiteral("Fusion"));

    int code = 0;
    {
        WindowMessages messages;
        SystemClock clock;
        Session session(appFolder(), messages, clock);
        SingleInstance instance(session.applicationFolder());
        if (!instance.acquire())
            return 0;
        SplashScreen splash;
        NoProgress quiet;
        Startup startup(session, {{}, shareFolder(), [&] { splash.showFor(session.applicationFolder()); }},
                        quiet);
        const StartResult start = startup.run();
        if (!start.started) {
            splash.close();
            if (!start.reason.isEmpty())
                messages.critical(applicationTitle, start.reason);
            return 1;
        }
        const IconStore icons(session.applicationFile(QStringLiteral("tsrthres.dll")));
        messages.setIcons(&icons);
        applyLook(session.configuration().look());
        if (parser.isSet(tour)) {
            code = runTourOn(session, icons, parser.value(tour));
        } else {
            code = runWindow(session, icons, instance, splash, start);
            WindowProgress progress(nullptr, false);
            shutDown(session, progress);
        }
    }
    if (code == MainWindow::restartCode)
        return QProcess::startDetached(QApplication::applicationFilePath(), {}) ? 0 : 1;
    return code;
}
