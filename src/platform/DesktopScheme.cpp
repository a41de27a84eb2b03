// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/DesktopScheme.h"

#include <QGuiApplication>
#include <QPalette>
#include <QSettings>

namespace tessaranth {

DesktopScheme desktopScheme(const QColor& window, const QColor& highlight) {
    const QColor hue = highlight.toHsv();
    if (window.lightness() < 128 || hue.hsvSaturation() < 60)
        return DesktopScheme::Metallic;
    return hue.hsvHue() >= 50 && hue.hsvHue() < 160 ? DesktopScheme::HomeStead : DesktopScheme::NormalColor;
}

DesktopScheme desktopScheme() {
#ifdef Q_OS_WIN
    const QSettings themes(
        QStringLiteral("HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\ThemeManager"),
        QSettings::NativeFormat);
    const QString name = themes.value(QStringLiteral("ColorName")).toString();
    if (name.compare(QStringLiteral("Metallic"), Qt::CaseInsensitive) == 0)
        return DesktopScheme::Metallic;
    if (name.compare(QStringLiteral("HomeStead"), Qt::CaseInsensitive) == 0)
        return DesktopScheme::HomeStead;
    if (name.compare(QStringLiteral("NormalColor"), Qt::CaseInsensitive) == 0)
        return DesktopScheme::NormalColor;
#endif
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        return DesktopScheme::NormalColor;
    const QPalette palette = QGuiApplication::palette();
    return desktopScheme(palette.color(QPalette::Window), palette.color(QPalette::Highlight));
}

} // namespace tessaranth
