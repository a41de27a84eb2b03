// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Desktop.h"

#include <QStringList>
#include <QUrl>

namespace tessaranth {

/// Remembers what it was asked to open.
struct FakeDesktop final : Desktop {
    bool openFile(const QString& path) override { return open("file " + path); }
    bool openFolder(const QString& path) override { return open("folder " + path); }
    bool openUrl(const QUrl& url) override { return open("url " + url.toString()); }
    bool open(const QString& what) {
        opened << what;
        return answer;
    }
    QStringList opened;
    bool answer = true;
};

} // namespace tessaranth
