/// The boxes of edges that follow each other on an outline, in groups.
#pragma once

#include "cntr/internal/box_group.h"
#include "cntr/internal/edge_walk.h"

#include <qc/core/vector.h>

#include <limits>
#include <vector>

namespace qnInternal {

/// An outline as its contour has it.
struct Outline {
    std::vector<qcVector<2>> const& points;
    bool closed;

    std::size_t edges() const { return edgeCount(points.size(), closed); }
};

/// The bounds of an edge or of a run of them.
struct Extent {
    Pair low;
    Pair high;

    Box box() const { return {{low[0], low[1]}, {high[0], high[1]}}; }
};

/// Overlaps no other.
inline Extent noExtent()
{
    constexpr double kFar = std::numeric_limits<double>::infinity();
    return {both(kFar), both(-kFar)};
}

inline void enclose(Extent& extent, Extent const& other)
{
    extent = {smaller(other.low, extent.low), larger(other.high, extent.high)};
}

/// Whether they share a point.
inline bool overlap(Extent const& a, Extent const& b)
{
    return bitsOf(bothHold(a.low <= b.high, b.low <= a.high)) == 3;
}

/// The boxes of edges [begin, end), one to eight of them; all coordinates are finite.
BoxGroup boxesOfEdges(Outline const& outline, std::size_t begin, std::size_t end);

}  // namespace qnInternal
