// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/forms/SpecsView.h"

#include "widgets/CardColours.h"
#include "widgets/IconStore.h"

#include <QGridLayout>
#include <QImageReader>
#include <QLabel>

namespace tessaranth {

namespace {
constexpr QSize largestLogo(120, 120);
} // namespace

SpecsView::SpecsView(const IconStore& icons, QWidget* parent) : QScrollArea(parent), m_icons(icons) {
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

void SpecsView::setLabelColour(const QColor& colour) {
    m_labelColour = colour;
    for (const Row& row : m_rows)
        setTextColour(row.label, colour);
}

void SpecsView::addRow() {
    const int row = int(m_rows.size());
    auto* name = new QLabel;
    name->setTextFormat(Qt::PlainText);
    QFont font = name->font();
    font.setPointSizeF(font.pointSizeF() * 0.88);
    font.setBold(true);
    name->setFont(font);
    setTextColour(name, m_labelColour);
    auto* value = new QLabel;
    value->setTextFormat(Qt::PlainText);
    value->setWordWrap(true);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    value->setObjectName(QStringLiteral("spec%1").arg(row));
    // A label of smaller letters than its value stands on the same line with it.
    name->setContentsMargins(0, value->fontMetrics().ascent() - QFontMetrics(font).ascent(), 0, 0);
    m_grid->setRowStretch(row, 0);
    m_grid->addWidget(name, row, 0, Qt::AlignTop | Qt::AlignLeft);
    m_grid->addWidget(value, row, 1, Qt::AlignTop);
    m_rows.push_back({name, value});
}

void SpecsView::show(const std::vector<CardLine>& lines) {
    while (m_rows.size() < lines.size())
        addRow();
    for (size_t row = 0; row < m_rows.size(); ++row) {
        const bool used = row < lines.size();
        m_rows[row].label->setVisible(used);
        m_rows[row].value->setVisible(used);
        if (!used)
            continue;
        const CardLine& line = lines[row];
        m_rows[row].label->setText(line.label);
        m_rows[row].value->setText(line.value);
        m_rows[row].value->setAccessibleName(line.label);
        if (line.heart) {
            const int size = fontMetrics().height();
            m_rows[row].value->setPixmap(m_icons.pixmap(QStringLiteral("heart"), QSize(size, size)));
        }
    }
    m_grid->setRowStretch(int(m_rows.size()), 1);
}

void SpecsView::showLogo(const QString& file, const QString& labelName) {
    QPixmap logo;
    if (!file.isEmpty()) {
        QImageReader reader(file);
        reader.setDecideFormatFromContent(true);
        if (const QSize size = reader.size(); size.isValid())
            reader.setScaledSize(size.scaled(size.boundedTo(largestLogo), Qt::KeepAspectRatio));
        logo = QPixmap::fromImage(reader.read());
    }
    m_logo->setPixmap(logo);
    m_logo->setAccessibleName(labelName);
    m_logo->setToolTip(labelName);
    m_logo->setVisible(!logo.isNull());
}

} // namespace tessaranth
