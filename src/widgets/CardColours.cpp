// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/CardColours.h"

#include "store/Configuration.h"

#include <QApplication>
#include <QWidget>
#include <cmath>

namespace tessaranth {

namespace {

// What WCAG asks of texts is 4.5; the classic work card, white on olive, has 4.2 and is to stay as it is.
constexpr double leastContrast = 4.0;

double luminance(const QColor& colour) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

QColor mixed(const QColor& from, const QColor& to, double part) {
    const auto channel = [part](int a, int b) { return int(std::lround(a + (b - a) * part)); };
    return QColor(channel(from.red(), to.red()), channel(from.green(), to.green()),
                  channel(from.blue(), to.blue()));
}

} // namespace

double contrast(const QColor& one, const QColor& other) {
    const double a = luminance(one) + 0.05, b = luminance(other) + 0.05;
    return a > b ? a / b : b / a;
}

QColor readableOn(const QColor& text, const QColor& back) {
    if (contrast(text, back) >= leastContrast)
        return text;
    const QColor white(Qt::white), black(Qt::black);
    const QColor& end = contrast(white, back) >= contrast(black, back) ? white : black;
    for (double part = 0.1; part < 1.0; part += 0.1)
        if (const QColor shade = mixed(text, end, part); contrast(shade, back) >= leastContrast)
            return shade;
    return end;
}

void setTextColour(QWidget* label, const QColor& colour) {
    QPalette own; // what it leaves unset comes from the card
    for (const auto group : {QPalette::Active, QPalette::Inactive})
        own.setColor(group, QPalette::WindowText, colour);
    label->setPalette(own);
}

QColor shadeOf(const QColor& back, const QColor& text) {
    return mixed(back, luminance(text) < luminance(back) ? QColor(Qt::white) : QColor(Qt::black), 0.22);
}

CardColours CardColours::read(const Configuration& configuration, const QString& prefix) {
    CardColours colours;
    colours.back = configuration.colour(prefix + QStringLiteral("BC"));
    colours.heading = configuration.colour(prefix + QStringLiteral("HC"));
    colours.fore = readableOn(configuration.colour(prefix + QStringLiteral("FC")), colours.back);
    colours.label = readableOn(configuration.colour(prefix + QStringLiteral("LC")), colours.back);
    return colours;
}

CardColours CardColours::readWork(const Configuration& configuration) {
    CardColours colours;
    colours.back = configuration.colour(QStringLiteral("WkcBC"));
    colours.fore = readableOn(configuration.colour(QStringLiteral("WkcFC")), colours.back);
    colours.heading = shadeOf(colours.back, colours.fore);
    colours.label = colours.fore;
    return colours;
}

QPalette CardColours::palette() const {
    QPalette result = QApplication::palette();
    const QColor shade = shadeOf(back, fore);
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        const bool disabled = group == QPalette::Disabled;
        const QColor text = disabled ? mixed(fore, back, 0.35) : fore;
        for (const auto role : {QPalette::Window, QPalette::Base})
            result.setColor(group, role, back);
        for (const auto role : {QPalette::Button, QPalette::AlternateBase})
            result.setColor(group, role, shade);
        for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
            result.setColor(group, role, text);
        result.setColor(group, QPalette::Highlight, fore);
        result.setColor(group, QPalette::HighlightedText, readableOn(back, fore));
        result.setColor(group, QPalette::Link, label);
        result.setColor(group, QPalette::PlaceholderText, mixed(fore, back, 0.25));
        result.setColor(group, QPalette::Light, mixed(shade, Qt::white, 0.25));
        result.setColor(group, QPalette::Midlight, mixed(shade, Qt::white, 0.12));
        result.setColor(group, QPalette::Mid, mixed(shade, Qt::black, 0.2));
        result.setColor(group, QPalette::Dark, mixed(shade, Qt::black, 0.4));
    }
    return result;
}

} // namespace tessaranth
