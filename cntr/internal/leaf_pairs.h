/// Pairs of leaves of one index of edges whose edges may meet.
#pragma once

#include "cntr/internal/edge_index.h"
#include "cntr/internal/edge_ways.h"

#include <qc/core/vector.h>

#include <cstddef>
#include <vector>

namespace qnInternal {

/// Goes from pairs of boxes that share a point down to pairs of leaves. Left out are stretches of the
/// outline, with themselves and with the next, that run one way: they meet at shared ends only.
class LeafPairs {
public:
    /// Of the edges of a regular index. Linear.
    LeafPairs(EdgeIndex const& index, std::vector<qcVector<2>> const& points)
        : index_(index), ways_(index, points)
    {
    }

    /// Calls ask(a, b) for pairs of boxes of level 0 of the index, with a == b for a leaf by itself, until
    /// it returns true; whether it did.
    template <class Ask>
    bool any(Ask const& ask) const
    {
        return within(index_.levelCount() - 1, 0, ask);
    }

private:
    template <class Ask>
    bool within(std::size_t level, std::size_t group, Ask const& ask) const
    {
        BoxGroup const& boxes = index_.group(level, group);
        std::size_t const begin = group * EdgeIndex::kFan;
        for (std::size_t i = 0; i < index_.boxesIn(level, group); ++i) {
            std::size_t const node = begin + i;
            if (ways_.turn(level, node, node) &&
                (level == 0 ? ask(node, node) : within(level - 1, node, ask)))
                return true;
            unsigned const later = boxes.overlapping(boxes.box(i)) & (~1U << i);
            if (anyBit(later, [&](std::size_t j) { return between(level, node, begin + j, ask); }))
                return true;
        }
        return false;
    }

    /// Of two boxes, which share a point.
    template <class Ask>
    bool between(std::size_t level, std::size_t a, std::size_t b, Ask const& ask) const
    {
        if (areNeighbours(level, a, b) && !ways_.turn(level, a, b))
            return false;
        if (level == 0)
            return ask(a, b);
        BoxGroup const& boxes = index_.group(level - 1, a);
        BoxGroup const& others = index_.group(level - 1, b);
        unsigned const near = boxes.overlapping(index_.box(level, b));
        return anyBit(near, [&](std::size_t i) {
            return anyBit(others.overlapping(boxes.box(i)), [&](std::size_t j) {
                return between(level - 1, a * EdgeIndex::kFan + i, b * EdgeIndex::kFan + j, ask);
            });
        });
    }

    /// Whether the edges of b follow those of a on the outline, or the other way round.
    bool areNeighbours(std::size_t level, std::size_t a, std::size_t b) const
    {
        if (index_.inOutlineOrder())
            return a + 1 == b || (index_.closed() && a == 0 && b + 1 == index_.boxCount(level));
        return level == 0 && (index_.leafAt(a) + 1 == index_.leafAt(b) ||
                              index_.leafAt(b) + 1 == index_.leafAt(a));
    }

    EdgeIndex const& index_;
    EdgeWays ways_;
};

}  // namespace qnInternal
