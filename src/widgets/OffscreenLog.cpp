// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/OffscreenLog.h"

#include <QString>
#include <QtGlobal>

namespace tessaranth {

void hideOffscreenWarnings() {
    static QtMessageHandler before = nullptr;
    before =
        qInstallMessageHandler([](QtMsgType type, const QMessageLogContext& context, const QString& text) {
            if (type == QtWarningMsg && text.startsWith(QLatin1String("This plugin does not support")))
                return;
            before(type, context, text);
        });
}

} // namespace tessaranth
