// SPDX-License-Identifier: GPL-3.0-or-later
// tessaranth-tour FOLDER: shows every window of the program to pictures; for developers and for the README.
#include "app/tour/Tour.h"
#include "app/WindowStart.h"
#include "widgets/OffscreenLog.h"
#include "window/SplashScreen.h"

#include <QTextStream>

using namespace tessaranth;

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tessaranth"));
    QApplication::setApplicationVersion(QStringLiteral(TESSARANTH_VERSION));
    const QStringList words = QApplication::arguments();
    if (words.size() != 2) {
        QTextStream(stderr) << "Usage: tessaranth-tour FOLDER\n";
        return 2;
    }
    return withStartedWindow([&](StartedWindow& started) {
        started.splash.close();
        hideOffscreenWarnings();
        const QStringList files = runTour({started.session, started.icons}, words[1]);
        QTextStream out(stdout);
        for (const QString& file : files)
            out << file << '\n';
        return files.isEmpty() ? 1 : 0;
    });
}
