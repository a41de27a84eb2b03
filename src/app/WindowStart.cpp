// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/WindowStart.h"

#include "platform/AppFolder.h"
#include "platform/Clock.h"
#include "platform/SingleInstance.h"
#include "store/Session.h"
#include "store/Startup.h"
#include "widgets/Appearance.h"
#include "widgets/IconStore.h"
#include "widgets/WindowMessages.h"
#include "window/SplashScreen.h"

#include <QFontDatabase>

namespace tessaranth {

namespace {

void chooseFont() {
    const QString family = QStringLiteral("Tahoma");
    if (QFontDatabase::hasFamily(family))
        QApplication::setFont(QFont(family, QApplication::font().pointSize()));
}

} // namespace

int withStartedWindow(const std::function<int(StartedWindow&)>& run) {
    chooseFont();
    WindowMessages messages;
    SystemClock clock;
    Session session(appFolder(), messages, clock);
    SingleInstance instance(session.applicationFolder());
    if (!instance.acquire())
        return 0;
    SplashScreen splash;
    NoProgress quiet;
    Startup startup(session,
                    {{},
                     shareFolder(),
                     [&] { splash.showFor(session.applicationFolder()); },
                     true,
                     [&] { splash.close(); }},
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
    StartedWindow started{session, icons, instance, splash, start};
    return run(started);
}

} // namespace tessaranth
