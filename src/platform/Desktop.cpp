// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Desktop.h"

#include <QDesktopServices>
#include <QUrl>

namespace tessaranth {

bool SystemDesktop::openFile(const QString& path) {
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

bool SystemDesktop::openFolder(const QString& path) { return openFile(path); }

bool SystemDesktop::openUrl(const QUrl& url) { return QDesktopServices::openUrl(url); }

} // namespace tessaranth
