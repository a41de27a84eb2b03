// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

class QWidget;

namespace tessaranth {

class Session;

/// Reads what a window or panel shows. When that fails, the user is told, and the widget says that it cannot
/// be read in place of what it would show, with nothing in it to be typed into or saved, until it has been
/// read after all. False then.
bool readInto(QWidget* widget, Session& session, const std::function<void()>& read);
/// Lets a widget say so that was built of what could not be read.
void refuseToShow(QWidget* widget);
/// True while `widget` says so.
bool isUnreadable(const QWidget* widget);

} // namespace tessaranth
