// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/Arrangements.h"

#include "store/Configuration.h"

#include <QStringList>

namespace tessaranth {

namespace {
constexpr int widest = 20'000;
}

QList<int> Arrangements::read(const char* section, const QString& name) const {
    const Place place{QString::fromLatin1(section), name};
    if (const auto changed = m_changed.constFind(place); changed != m_changed.constEnd())
        return *changed;
    QList<int> pixels;
    for (const QString& part : m_configuration.read(place.first, name).split(u',', Qt::SkipEmptyParts)) {
        bool isNumber = false;
        const int number = part.toInt(&isNumber);
        if (!isNumber || number < 0 || number > widest)
            return {};
        pixels.push_back(number);
    }
    return pixels;
}

void Arrangements::keep(const char* section, const QString& name, const QList<int>& pixels) {
    m_changed.insert({QString::fromLatin1(section), name}, pixels);
}

bool Arrangements::save() {
    std::vector<ProfileFile::Entry> entries;
    for (auto one = m_changed.cbegin(); one != m_changed.cend(); ++one) {
        QStringList parts;
        for (const int number : one.value())
            parts.push_back(QString::number(number));
        entries.push_back({one.key().first, one.key().second, parts.join(u',')});
    }
    m_changed.clear();
    return entries.empty() || m_configuration.write(entries);
}

} // namespace tessaranth
