// SPDX-License-Identifier: GPL-3.0-or-later
#include "recordings/forms/RecTab.h"

#include "store/Guarded.h"
#include "widgets/FormHelpers.h"

#include <QPushButton>
#include <QSignalBlocker>

namespace tessaranth {

void RecTab::load() {
    reading([this] { read(); });
}

bool RecTab::reading(const std::function<void()>& job) {
    m_isRead = false; // stays so when this is a part of an operation that the failure ends
    {
        const QSignalBlocker blocker(this); // half read is not unreadable
        m_isRead = guarded(m_context.session, job);
    }
    emit changed();
    return m_isRead;
}

QPushButton* RecTab::command(QAbstractItemView* view, const QString& caption, const char* objectName,
                             const QString& tip, const char* key, const std::function<void()>& run) {
    const QString keys = QLatin1String(key);
    QPushButton* button = FormHelpers::commandButton(view, caption, QLatin1String(objectName), keys, run);
    button->setToolTip(keys.isEmpty() ? tip : tip + QStringLiteral("  (") + keys + u')');
    return button;
}

} // namespace tessaranth
