// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/tour/Tour.h"

#include <QStringList>

class QWidget;

namespace tessaranth {

/// Takes the pictures of the tour, numbered in their order.
class TourCamera {
public:
    explicit TourCamera(const QString& folder, TourVisit visit = {});

    /// Shows a window and writes a picture of it, "03-name.png".
    void take(QWidget& widget, const QString& name);
    /// Lets the pause pass after which a list follows what was typed.
    static void waitForTyping();

    const QStringList& files() const { return m_files; } ///< the pictures that could be written

private:
    QString m_folder;
    TourVisit m_visit;
    QStringList m_files;
};

} // namespace tessaranth
