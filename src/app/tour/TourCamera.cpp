// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tour/TourCamera.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QPixmap>
#include <QWidget>

namespace tessaranth {

TourCamera::TourCamera(const QString& folder, TourVisit visit) : m_folder(folder), m_visit(std::move(visit)) {
    QDir().mkpath(folder);
}

void TourCamera::take(QWidget& widget, const QString& name) {
    widget.show();
    // Two rounds: the first lays out, the second paints what the layout asked for.
    for (int round = 0; round < 2; ++round)
        QCoreApplication::processEvents();
    if (m_visit)
        m_visit(widget, name);
    const QString file =
        m_folder + u'/' +
        QStringLiteral("%1-%2.png").arg(m_files.size() + 1, 2, 10, QLatin1Char('0')).arg(name);
    if (widget.grab().save(file))
        m_files.push_back(file);
}

void TourCamera::waitForTyping() {
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < 250)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
}

} // namespace tessaranth
