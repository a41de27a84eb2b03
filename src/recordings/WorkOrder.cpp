// SPDX-License-Identifier: GPL-3.0-or-later
#include "recordings/WorkOrder.h"

#include <algorithm>
#include <numeric>

namespace tessaranth {

namespace {

bool holds(const std::vector<int>& numbers, int number) {
    return std::binary_search(numbers.begin(), numbers.end(), number);
}

/// Puts the moved works before `target` within some places on the disc; what stands elsewhere stays there.
std::vector<int> rearrange(std::vector<PlacedWork>& works, const std::vector<int>& places,
                           const std::vector<int>& moved, int target) {
    std::vector<int> order = places;
    const auto rank = [&](int number) {
        if (holds(moved, number))
            return 1;
        return number < target ? 0 : 2;
    };
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return rank(a) < rank(b); });
    const std::vector<PlacedWork> before = works;
    std::vector<int> now;
    for (size_t i = 0; i < places.size(); ++i) {
        works[size_t(places[i])] = before[size_t(order[i])];
        if (holds(moved, order[i]))
            now.push_back(places[i]);
    }
    return now;
}

/// The node of the composer whom all of these works are of; the end when they are of several.
std::vector<ComposerNode>::const_iterator nodeOf(const std::vector<ComposerNode>& nodes,
                                                 const std::vector<int>& moved) {
    return std::find_if(nodes.begin(), nodes.end(), [&](const ComposerNode& node) {
        return std::includes(node.works.begin(), node.works.end(), moved.begin(), moved.end());
    });
}

} // namespace

std::vector<ComposerNode> byComposer(const std::vector<PlacedWork>& works) {
    std::vector<ComposerNode> nodes;
    for (size_t i = 0; i < works.size(); ++i) {
        auto node = std::find_if(nodes.begin(), nodes.end(),
                                 [&](const ComposerNode& one) { return one.composer == works[i].composer; });
        if (node == nodes.end())
            node = nodes.insert(node, {works[i].composer, works[i].composerName, {}});
        node->works.push_back(int(i));
    }
    return nodes;
}

bool doesComposerReturn(const std::vector<PlacedWork>& works) {
    const std::vector<ComposerNode> nodes = byComposer(works);
    return std::any_of(nodes.begin(), nodes.end(), [](const ComposerNode& node) {
        return node.works.back() - node.works.front() + 1 != int(node.works.size());
    });
}

std::vector<int> moveOnDisc(std::vector<PlacedWork>& works, const std::vector<int>& moved, int target) {
    std::vector<int> all(works.size());
    std::iota(all.begin(), all.end(), 0);
    return rearrange(works, all, moved, target);
}

std::vector<int> stepOnDisc(std::vector<PlacedWork>& works, const std::vector<int>& moved, int step) {
    if (moved.empty() || (step < 0 ? moved.front() == 0 : moved.back() + 1 == int(works.size())))
        return {};
    return moveOnDisc(works, moved, step < 0 ? moved.front() - 1 : moved.back() + 2);
}

std::vector<int> moveInTree(std::vector<PlacedWork>& works, const std::vector<int>& moved, int target) {
    const std::vector<ComposerNode> nodes = byComposer(works);
    const auto node = nodeOf(nodes, moved);
    if (moved.empty() || node == nodes.end())
        return {};
    return rearrange(works, node->works, moved, target);
}

std::vector<int> stepInTree(std::vector<PlacedWork>& works, const std::vector<int>& moved, int step) {
    const std::vector<ComposerNode> nodes = byComposer(works);
    const auto node = nodeOf(nodes, moved);
    if (moved.empty() || node == nodes.end())
        return {};
    if (moved == node->works) {
        if (step < 0 ? node == nodes.begin() : node + 1 == nodes.end())
            return {};
        return dropOnComposer(works, moved, (node + step)->composer);
    }
    const auto first = std::find(node->works.begin(), node->works.end(), moved.front());
    const auto last = std::find(node->works.begin(), node->works.end(), moved.back());
    if (step < 0 ? first == node->works.begin() : last + 1 == node->works.end())
        return {};
    return moveInTree(works, moved, step < 0 ? *(first - 1) : *(last + 1) + 1);
}

std::vector<int> dropOnComposer(std::vector<PlacedWork>& works, const std::vector<int>& moved,
                                qint64 composer) {
    const std::vector<ComposerNode> nodes = byComposer(works);
    const auto node = nodeOf(nodes, moved);
    const auto onto = std::find_if(nodes.begin(), nodes.end(),
                                   [&](const ComposerNode& one) { return one.composer == composer; });
    if (moved.empty() || node == nodes.end() || onto == nodes.end())
        return {};
    if (onto == node)
        return moveInTree(works, moved, node->works.front());
    if (moved != node->works)
        return {};
    return moveOnDisc(works, moved, onto < node ? onto->works.front() : onto->works.back() + 1);
}

} // namespace tessaranth
