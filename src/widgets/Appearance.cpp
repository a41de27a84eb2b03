// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/Appearance.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>

namespace tessaranth {

QPalette darkPalette() {
    struct Row {
        QPalette::ColorRole role;
        QRgb colour;
        QRgb disabled;
    };
    constexpr Row rows[] = {{QPalette::Window, 0x272a31, 0x272a31},
                            {QPalette::WindowText, 0xe8eaee, 0x8b919c},
                            {QPalette::Base, 0x1b1d22, 0x22252b},
                            {QPalette::AlternateBase, 0x22252b, 0x22252b},
                            {QPalette::Text, 0xe8eaee, 0x8b919c},
                            {QPalette::PlaceholderText, 0x9aa1ad, 0x8b919c},
                            {QPalette::Button, 0x31353d, 0x2b2e35},
                            {QPalette::ButtonText, 0xe8eaee, 0x8b919c},
                            {QPalette::BrightText, 0xff8a80, 0xff8a80},
                            {QPalette::ToolTipBase, 0x363b45, 0x363b45},
                            {QPalette::ToolTipText, 0xe8eaee, 0xe8eaee},
                            {QPalette::Highlight, 0x2f65a8, 0x3c414b},
                            {QPalette::HighlightedText, 0xffffff, 0xc9ced8},
                            {QPalette::Link, 0x8db8ff, 0x8db8ff},
                            {QPalette::LinkVisited, 0xcdb0ee, 0xcdb0ee},
                            {QPalette::Light, 0x454b57, 0x454b57},
                            {QPalette::Midlight, 0x3a3f4a, 0x3a3f4a},
                            {QPalette::Mid, 0x1f2228, 0x1f2228},
                            {QPalette::Dark, 0x15171b, 0x15171b},
                            {QPalette::Shadow, 0x0b0c0e, 0x0b0c0e}};
    QPalette palette;
    for (const Row& row : rows) {
        palette.setColor(QPalette::All, row.role, QColor(row.colour));
        palette.setColor(QPalette::Disabled, row.role, QColor(row.disabled));
    }
    return palette;
}

void applyLook(Look look) {
    // A desktop may be dark by itself; the configured colours and the light ones are made for light windows.
    const QPalette own = QApplication::style()->standardPalette();
    const bool isDarkDesktop = own.color(QPalette::Window).lightness() < 128;
    if (look == Look::Dark)
        QApplication::setPalette(darkPalette());
    else
        QApplication::setPalette(isDarkDesktop ? QPalette(QColor(0xee, 0xef, 0xf2)) : own);
}

} // namespace tessaranth
