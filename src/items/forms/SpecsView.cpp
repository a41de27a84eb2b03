// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/forms/SpecsView.h"

#include "ui/IconStore.h"

#include <QGridLayout>
#include <QImageReader>
#include <QLabel>

namespace tessaranth {

namespace {
constexpr QSize largestLogo(120, 120);
} // namespace

SpecsView::SpecsView(const IconStore& icons, const QColor& labelColour, QWidget* parent)
    : QScrollArea(parent), m_icons(icons), m_labelColour(labelColour) {
    setObjectName(QStringLiteral("specs"));
    setAccessibleName(tr("Specifications"));
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* page = new QWidget;
    auto* row = new QHBoxLayout(page);
    row->setContentsMargins(10, 8, 10, 8);
    row->setSpacing(12);
    m_grid = new QGridLayout;
    m_grid->setHorizontalSpacing(10);
    m_grid->setVerticalSpacing(3);
    m_grid->setColumnStretch(1, 1);
    row->addLayout(m_grid, 1);
    m_logo = new QLabel;
    m_logo->setObjectName(QStringLiteral("labelLogo"));
    m_logo->hide();
    row->addWidget(m_logo, 0, Qt::AlignTop);
    setWidget(page);
}

void SpecsView::addLine(int row, const QString& label) {
    auto* name = new QLabel(label);
    name->setTextFormat(Qt::PlainText);
    QFont font = name->font();
    font.setPointSizeF(font.pointSizeF() * 0.88);
    font.setBold(true);
    name->setFont(font);
    QPalette colours = name->palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive})
        colours.setColor(group, QPalette::WindowText, m_labelColour);
    name->setPalette(colours);
    auto* value = new QLabel;
    value->setTextFormat(Qt::PlainText);
    value->setWordWrap(true);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    value->setObjectName(QStringLiteral("spec%1").arg(row));
    value->setAccessibleName(label);
    // A label of smaller letters than its value stands on the same line with it.
    name->setContentsMargins(0, value->fontMetrics().ascent() - QFontMetrics(font).ascent(), 0, 0);
    m_grid->addWidget(name, row, 0, Qt::AlignTop | Qt::AlignLeft);
    m_grid->addWidget(value, row, 1, Qt::AlignTop);
    m_values.push_back(value);
}

void SpecsView::show(const RecordingContents::Specs& specs) {
    for (size_t row = 0; row < specs.lines.size(); ++row) {
        const RecordingContents::Line& line = specs.lines[row];
        if (row == m_values.size()) {
            addLine(int(row), line.label);
            m_grid->setRowStretch(int(row), 0);
        }
        m_values[row]->setText(line.value);
        if (line.heart) {
            const int size = fontMetrics().height();
            m_values[row]->setPixmap(m_icons.pixmap(QStringLiteral("heart"), QSize(size, size)));
        }
    }
    m_grid->setRowStretch(int(specs.lines.size()), 1);
    QPixmap logo;
    if (!specs.logoFile.isEmpty()) {
        QImageReader reader(specs.logoFile);
        reader.setDecideFormatFromContent(true);
        if (const QSize size = reader.size(); size.isValid())
            reader.setScaledSize(size.scaled(size.boundedTo(largestLogo), Qt::KeepAspectRatio));
        logo = QPixmap::fromImage(reader.read());
    }
    m_logo->setPixmap(logo);
    m_logo->setAccessibleName(specs.labelName);
    m_logo->setToolTip(specs.labelName);
    m_logo->setVisible(!logo.isNull());
}

} // namespace tessaranth
