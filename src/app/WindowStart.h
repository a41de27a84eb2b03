// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QApplication>
#include <functional>

namespace tessaranth {

class IconStore;
class Session;
class SingleInstance;
class SplashScreen;
struct StartResult;

/// What a started program with windows has at hand.
struct StartedWindow {
    Session& session;
    const IconStore& icons;
    SingleInstance& instance;
    SplashScreen& splash;
    const StartResult& start;
};

/// Starts the session as every program with windows does, runs `run` in it and answers with its exit code: 0
/// when another instance came forward instead, 1 when the session could not start, which has been told.
int withStartedWindow(const std::function<int(StartedWindow&)>& run);

} // namespace tessaranth
