// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/forms/CardBand.h"

#include "widgets/CardColours.h"
#include "widgets/ElidedLabel.h"
#include "widgets/IconStore.h"

#include <QHBoxLayout>

namespace tessaranth {

namespace {

ElidedLabel* label(const char* objectName, double size, bool bold) {
    auto* made = new ElidedLabel;
    made->setObjectName(QLatin1String(objectName));
    QFont font = made->font();
    font.setPointSizeF(font.pointSizeF() * size);
    font.setBold(bold);
    made->setFont(font);
    return made;
}

} // namespace

CardBand::CardBand(const IconStore& icons, const QString& iconKey, QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("cardBand"));
    setAutoFillBackground(true);
    m_name = label("cardName", 1.7, true);
    m_behind = label("cardYears", 1.25, false);
    m_below = label("cardSubTitle", 1.1, false);
    m_kind = label("cardKind", 1.0, false);
    // Both are centred in the row; so moved down, the smaller letters stand on the line of the large ones.
    const QFontMetrics large = m_name->fontMetrics(), small = m_behind->fontMetrics();
    const int down = large.height() - small.height() - 2 * (large.descent() - small.descent());
    m_behind->setContentsMargins(0, qMax(0, down), 0, 0);

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(12, 7, 12, 7);
    row->setSpacing(10);
    auto* icon = new QLabel;
    icon->setPixmap(icons.pixmap(iconKey, QSize(32, 32)));
    m_icon = icon;
    row->addWidget(icon, 0, Qt::AlignTop);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(0);
    auto* first = new QHBoxLayout;
    first->setSpacing(10);
    first->addWidget(m_name);
    first->addWidget(m_behind);
    first->addStretch();
    first->addWidget(m_kind, 0, Qt::AlignTop);
    texts->addLayout(first);
    texts->addWidget(m_below);
    row->addLayout(texts, 1);
}

void CardBand::setColours(const CardColours& colours) {
    QPalette band = palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        band.setColor(group, QPalette::Window, colours.heading);
        band.setColor(group, QPalette::WindowText, readableOn(colours.fore, colours.heading));
    }
    setPalette(band);
}

void CardBand::show(const QString& name, const QString& behind, const QString& below, const QString& kind) {
    m_name->setText(name);
    m_behind->setText(behind);
    m_below->setText(below);
    m_below->setVisible(!below.isEmpty());
    m_kind->setText(kind);
    fit();
}

// The icon tells the kind as well; in a narrow card the name needs the place.
void CardBand::fit() {
    const QMargins around = layout()->contentsMargins();
    int wanted = around.left() + around.right();
    for (const QWidget* part : {m_icon, static_cast<QWidget*>(m_name), static_cast<QWidget*>(m_behind),
                                static_cast<QWidget*>(m_kind)})
        wanted += part->sizeHint().width() + layout()->spacing();
    m_kind->setVisible(wanted <= width());
}

void CardBand::resizeEvent(QResizeEvent* event) {
    fit();
    QWidget::resizeEvent(event);
}

} // namespace tessaranth
