// SPDX-License-Identifier: GPL-3.0-or-later
#include "cd/Radar.h"

namespace tessaranth {

Radar::Radar(const DiscDrives& drives, QObject* parent) : QObject(parent), m_drives(drives) {
    m_timer.setInterval(lookEveryMs);
    m_timer.setTimerType(Qt::VeryCoarseTimer);
    connect(&m_timer, &QTimer::timeout, this, &Radar::look);
}

void Radar::setEnabled(bool enabled) {
    if (enabled == isEnabled())
        return;
    if (!enabled) {
        m_timer.stop();
        m_known.clear();
        return;
    }
    m_timer.start();
    look();
}

void Radar::look() {
    const QStringList before = std::exchange(m_known, m_drives.volumeNames());
    for (const QString& name : std::as_const(m_known))
        if (!before.contains(name) && name.contains(QStringLiteral("Audio CD"), Qt::CaseInsensitive))
            emit discInserted(name);
}

} // namespace tessaranth
