// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/RecordingContents.h"

#include <QScrollArea>

class QGridLayout;
class QLabel;

namespace tessaranth {

class IconStore;

/// A recording's specifications as labelled lines, with its label's logo beside them.
class SpecsView final : public QScrollArea {
    Q_OBJECT

public:
    SpecsView(const IconStore& icons, const QColor& labelColour, QWidget* parent = nullptr);
    void show(const RecordingContents::Specs& specs);

private:
    void addLine(int row, const QString& label);

    const IconStore& m_icons;
    QColor m_labelColour;
    QGridLayout* m_grid;
    QLabel* m_logo;
    std::vector<QLabel*> m_values;
};

} // namespace tessaranth
