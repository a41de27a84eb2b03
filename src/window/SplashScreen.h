// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <memory>

class QSplashScreen;

namespace tessaranth {

/// What is seen while the catalog is being opened.
class SplashScreen {
public:
    SplashScreen();
    ~SplashScreen();
    /// The picture comes from the resource library in this folder; without it a plain one is shown.
    void showFor(const QString& applicationFolder);
    void close();

private:
    std::unique_ptr<QSplashScreen> m_screen;
};

} // namespace tessaranth
