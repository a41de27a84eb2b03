// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/IconStore.h"

#include <QFile>
#include <QPixmap>
#include <QResource>

namespace tessaranth {

namespace {
const QString root = QStringLiteral("/tsrthres");
}

IconStore::IconStore(const QString& libraryFile) : m_library(libraryFile) {
    if (!m_library.isEmpty())
        QResource::registerResource(m_library, root);
}

IconStore::~IconStore() {
    if (!m_library.isEmpty())
        QResource::unregisterResource(m_library, root);
}

const QIcon& IconStore::icon(const QString& key) const {
    auto found = m_icons.find(key);
    if (found == m_icons.end()) {
        const QString file = QStringLiteral(":/tsrthres/icons/") + key + QStringLiteral(".svg");
        found = m_icons.insert(key, !key.isEmpty() && QFile::exists(file) ? QIcon(file) : QIcon());
    }
    return *found;
}

QPixmap IconStore::pixmap(const QString& key, const QSize& size) const { return icon(key).pixmap(size); }

} // namespace tessaranth
