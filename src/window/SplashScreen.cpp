// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/SplashScreen.h"

#include "widgets/IconStore.h"

#include <QCoreApplication>
#include <QSplashScreen>

namespace tessaranth {

SplashScreen::SplashScreen() = default;
SplashScreen::~SplashScreen() = default;

void SplashScreen::showFor(const QString& applicationFolder) {
    const IconStore icons(applicationFolder + QStringLiteral("/tsrthres.dll"));
    QPixmap picture = icons.pixmap(QStringLiteral("splash"), QSize(480, 280));
    if (picture.isNull()) {
        picture = QPixmap(480, 280);
        picture.fill(QColor(15, 35, 104));
    }
    m_screen = std::make_unique<QSplashScreen>(picture);
    m_screen->show();
    QCoreApplication::processEvents();
}

void SplashScreen::close() { m_screen.reset(); }

} // namespace tessaranth
