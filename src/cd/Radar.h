// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QStringList>
#include <QTimer>

namespace tessaranth {

/// The drives for discs, as far as the system tells without waking them.
class DiscDrives {
public:
    virtual ~DiscDrives() = default;
    /// Names of the volumes that are in now, such as "Audio CD (D:)".
    virtual QStringList volumeNames() const = 0;
};

/// Notices a music disc that is put into a drive. It looks now and then, and not at all while it is disabled.
class Radar final : public QObject {
    Q_OBJECT

public:
    static constexpr int lookEveryMs = 2000;

    explicit Radar(const DiscDrives& drives, QObject* parent = nullptr);

    bool isEnabled() const { return m_timer.isActive(); }
    /// A disc that is in already when it is enabled counts as inserted.
    void setEnabled(bool enabled);
    void look();

signals:
    /// A volume whose name contains "Audio CD", in whatever letter case, was not there before.
    void discInserted(const QString& volumeName);

private:
    const DiscDrives& m_drives;
    QStringList m_known;
    QTimer m_timer;
};

} // namespace tessaranth
