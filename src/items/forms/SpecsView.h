// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/CardHeading.h"

#include <QScrollArea>
#include <vector>

class QGridLayout;
class QLabel;

namespace tessaranth {

class IconStore;

/// Labelled lines of a card one below the other, and a logo beside them.
class SpecsView final : public QScrollArea {
    Q_OBJECT

public:
    explicit SpecsView(const IconStore& icons, QWidget* parent = nullptr);
    void setLabelColour(const QColor& colour);
    void show(const std::vector<CardLine>& lines);
    /// The picture of a record label; none for an empty file name or for a file that is no picture.
    void showLogo(const QString& file, const QString& labelName);

private:
    struct Row {
        QLabel* label;
        QLabel* value;
    };
    void addRow();

    const IconStore& m_icons;
    QColor m_labelColour;
    QGridLayout* m_grid;
    QLabel* m_logo;
    std::vector<Row> m_rows;
};

} // namespace tessaranth
