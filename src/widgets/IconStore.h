// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QIcon>
#include <QString>

namespace tessaranth {

/// The program's icons by their key, from the resource library beside the program (tsrthres.dll, a binary Qt
/// resource file).
class IconStore {
public:
    /// Registers the library; without it every icon is empty.
    explicit IconStore(const QString& libraryFile);
    ~IconStore();
    IconStore(const IconStore&) = delete;
    IconStore& operator=(const IconStore&) = delete;

    /// An empty icon for an unknown key.
    const QIcon& icon(const QString& key) const;
    QPixmap pixmap(const QString& key, const QSize& size) const;

private:
    QString m_library;
    mutable QHash<QString, QIcon> m_icons;
};

} // namespace tessaranth
