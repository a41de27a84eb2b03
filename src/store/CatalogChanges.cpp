// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/CatalogChanges.h"

#include <algorithm>

namespace tessaranth {

void CatalogChanges::note(const CardRef& thing, How how) {
    const auto known = m_things.find(thing);
    if (known == m_things.end()) {
        m_things.insert(thing, how);
        ++m_counts[thing.kind];
    } else if (*known == How::Added && how == How::Removed) {
        m_things.erase(known); // nobody has seen it
        if (--m_counts[thing.kind] == 0)
            m_counts.remove(thing.kind);
    } else if (*known == How::Removed && how == How::Added) {
        *known = How::Changed;
    } else if (*known == How::Changed) {
        *known = how;
    }
}

void CatalogChanges::add(const CatalogChanges& later) {
    for (auto it = later.m_things.constBegin(); it != later.m_things.constEnd(); ++it)
        note(it.key(), it.value());
    m_merges += later.m_merges;
    m_everything |= later.m_everything;
}

std::optional<CatalogChanges::How> CatalogChanges::of(const CardRef& thing) const {
    const auto known = m_things.constFind(thing);
    return known == m_things.constEnd() ? std::nullopt : std::optional(*known);
}

QList<qint64> CatalogChanges::ids(Thing kind, How how) const {
    QList<qint64> found;
    for (auto it = m_things.constBegin(); it != m_things.constEnd(); ++it)
        if (it.key().kind == kind && it.value() == how)
            found.push_back(it.key().id);
    std::sort(found.begin(), found.end());
    return found;
}

} // namespace tessaranth
