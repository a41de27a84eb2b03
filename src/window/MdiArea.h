// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMdiArea>
#include <QPixmap>

namespace tessaranth {

/// The area of the card windows. While none is open it says how to begin.
class MdiArea final : public QMdiArea {
    Q_OBJECT

public:
    MdiArea(const QColor& back, QPixmap emblem, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPixmap m_emblem;
};

} // namespace tessaranth
