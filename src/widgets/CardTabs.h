// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTabBar>

namespace tessaranth {

/// The tabs of a card: in its colours, those of the active one inverted.
class CardTabs final : public QTabBar {
    Q_OBJECT

public:
    explicit CardTabs(QWidget* parent = nullptr);

protected:
    QSize tabSizeHint(int index) const override;
    void paintEvent(QPaintEvent* event) override;

private:
    void paintTab(class QPainter& painter, int index) const;
};

} // namespace tessaranth
