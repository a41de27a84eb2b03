// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QList>
#include <optional>
#include <utility>

namespace tessaranth {

/// What a catalog holds that a window can show. The first eight have the numbers of the item kinds.
enum class Thing : quint8 {
    Composer = 1,
    Performer,
    Recording,
    Custom,
    Genre,
    Label,
    Source,
    Support,
    Work,
    Personage,
    MainWork,
    ComposerGenre,
    PlacedWork, ///< a work in its place on a recording, by CompOnRecID
    Track,
    Image,
    Document,
    Media,
    Link,
    KeyName,
    ComposerCategory, ///< the four in the order of the cards; so are the sub-categories
    PerformerCategory,
    RecordingCategory,
    CustomCategory,
    ComposerSubCategory,
    PerformerSubCategory,
    RecordingSubCategory,
    CustomSubCategory,
};

/// The categories and sub-categories that cards of a kind are put into; the card must be one of the four.
constexpr Thing categoryOf(Thing card) {
    return Thing(int(Thing::ComposerCategory) + int(card) - int(Thing::Composer));
}
constexpr Thing subCategoryOf(Thing card) {
    return Thing(int(Thing::ComposerSubCategory) + int(card) - int(Thing::Composer));
}

/// One thing of the catalog: what it is and its key.
struct CardRef {
    Thing kind = Thing::Composer;
    qint64 id = 0;

    bool operator==(const CardRef& other) const { return kind == other.kind && id == other.id; }
    friend size_t qHash(const CardRef& ref, size_t seed = 0) {
        return qHashMulti(seed, int(ref.kind), ref.id);
    }
};

/// What one operation, or several in a row, did to the catalog: each thing at most once. "Changed" is also a
/// card whose row is as before but which has another picture, track, relation, category or the like, and both
/// ends of a link that came or went; not the recordings of a label that has another name (ask `touches`).
class CatalogChanges {
public:
    enum class How : quint8 { Added, Changed, Removed };
    struct Merge {
        CardRef from, to;
        bool operator==(const Merge& other) const { return from == other.from && to == other.to; }
    };

    void note(const CardRef& thing, How how);
    void noteMerge(const CardRef& from, const CardRef& to) { m_merges.push_back({from, to}); }
    /// Everything may be otherwise than before: the catalog was emptied, restored or brought up to date.
    void noteEverything() { m_everything = true; }
    void add(const CatalogChanges& later); ///< what happened afterwards

    bool isEmpty() const { return !m_everything && m_things.isEmpty() && m_merges.isEmpty(); }
    bool isEverything() const { return m_everything; }
    /// What became of a thing; nothing where it is as before. Not to be asked after `isEverything`.
    std::optional<How> of(const CardRef& thing) const;
    /// True where anything of this kind was added, changed or removed, or everything was.
    bool touches(Thing kind) const { return m_everything || m_counts.contains(kind); }
    bool concerns(const CardRef& thing) const { return m_everything || m_things.contains(thing); }
    int count(Thing kind) const { return m_counts.value(kind); } ///< of the things of a kind it concerns
    QList<qint64> ids(Thing kind, How how) const;                ///< ascending
    /// In the order in which they happened. The merged item is also among the removed ones.
    const QList<Merge>& merges() const { return m_merges; }

private:
    QHash<CardRef, How> m_things;
    QHash<Thing, int> m_counts; ///< things of a kind in `m_things`
    QList<Merge> m_merges;
    bool m_everything = false;
};

} // namespace tessaranth
