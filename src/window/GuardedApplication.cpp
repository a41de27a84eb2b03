// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/GuardedApplication.h"

#include "platform/Messages.h"

#include <QCoreApplication>
#include <cstdio>
#include <exception>

namespace tessaranth {

bool GuardedApplication::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::exception& error) {
        tell(QString::fromUtf8(error.what()));
    } catch (...) {
        tell(QCoreApplication::translate("GuardedApplication", "an unknown error"));
    }
    return false;
}

// Once at a time: a window that cannot be painted fails again for each box that is shown over it.
void GuardedApplication::tell(const QString& reason) {
    std::fprintf(stderr, "%s\n", qPrintable(reason));
    if (!m_messages || m_isTelling)
        return;
    m_isTelling = true;
    m_messages->critical(applicationTitle,
                         QCoreApplication::translate(
                             "GuardedApplication",
                             "Something went wrong in the program, and what you have just asked for was not "
                             "done: %1")
                             .arg(reason));
    m_isTelling = false;
}

} // namespace tessaranth
