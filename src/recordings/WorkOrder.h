// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recordings/RecordingEditor.h"

namespace tessaranth {

// The works of a recording stand in the order of the disc. The works tree shows them beneath their composers
// and moves them there; the places that the other composers' works have on the disc stay theirs. Works are
// told by their numbers on the disc from 0 up, always upwards; a move answers with the new ones of what it
// moved, or with none when there is nowhere to go.

/// One node of the works tree: a composer and his works.
struct ComposerNode {
    qint64 composer = 0;
    QString name;
    std::vector<int> works;
};

/// One node for each composer, in the order of their first works.
std::vector<ComposerNode> byComposer(const std::vector<PlacedWork>& works);
/// True when works of others stand between those of a composer: the tree does not show the disc's order then.
bool doesComposerReturn(const std::vector<PlacedWork>& works);

/// Puts works together before the one that is number `target` now (their count: at the end).
std::vector<int> moveOnDisc(std::vector<PlacedWork>& works, const std::vector<int>& moved, int target);
/// Moves works by one place (-1 or 1).
std::vector<int> stepOnDisc(std::vector<PlacedWork>& works, const std::vector<int>& moved, int step);

/// Puts works of one composer before the one of his that is number `target` now, or behind his last.
std::vector<int> moveInTree(std::vector<PlacedWork>& works, const std::vector<int>& moved, int target);
/// Moves works by one place among those of their composer; all that he has, among the composers.
std::vector<int> stepInTree(std::vector<PlacedWork>& works, const std::vector<int>& moved, int step);
/// Works dropped onto the node of a composer: their own brings them to its top, another one is passed by
/// when they are all that their composer has.
std::vector<int> dropOnComposer(std::vector<PlacedWork>& works, const std::vector<int>& moved,
                                qint64 composer);

} // namespace tessaranth
