// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/Application.h"

#include "store/Guarded.h"

namespace tessaranth {

bool Application::notify(QObject* receiver, QEvent* event) {
    const Operation::Pause pause;
    return QApplication::notify(receiver, event);
}

} // namespace tessaranth
