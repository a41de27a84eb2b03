// SPDX-License-Identifier: GPL-3.0-or-later
#include "recordings/forms/RecTab.h"

#include "widgets/FormHelpers.h"

#include <QPushButton>

namespace tessaranth {

QPushButton* RecTab::command(QAbstractItemView* view, const QString& caption, const char* objectName,
                             const QString& tip, const char* key, const std::function<void()>& run) {
    const QString keys = QLatin1String(key);
    QPushButton* button = FormHelpers::commandButton(view, caption, QLatin1String(objectName), keys, run);
    button->setToolTip(keys.isEmpty() ? tip : tip + QStringLiteral("  (") + keys + u')');
    return button;
}

} // namespace tessaranth
