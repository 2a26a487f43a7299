// Edges to the right of a point, from the leaves that a ray meets.
#include "cntr/internal/winding.h"

#include "cntr/internal/edge_walk.h"

#include <limits>

namespace qnInternal {

bool WindingCount::surelyWound(qcVector<2> const& point)
{
    if (!reach_.rayLeavesOutline(point))
        return false;
    double const near = reach_.toCrossing();
    ParityCount count(point, near, near);
    TwiceBox const toTheRight({{point.x() - near, point.y() - near},
                               {std::numeric_limits<double>::infinity(), point.y() + near}});
    index_.forEachLeaf([&](BoxGroup const& boxes) { return boxes.overlapping(toTheRight); },
                       [&](std::size_t leaf, Box const&) {
                           ++leaves_;
                           for (std::size_t k = index_.leafBegin(leaf); k < index_.leafEnd(leaf);
                                ++k)
                               count.add(edgeStart(outline_, true, k), outline_[k]);
                       });
    return count.wound();
}

}  // namespace qnInternal
