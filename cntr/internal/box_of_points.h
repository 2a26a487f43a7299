/// Extremes of many points: their bounding box, the largest distance from a place.
#pragma once

#include "cntr/internal/box.h"
#include "cntr/internal/edge_walk.h"

#include <qc/core/internal/extremes.h>
#include <qc/core/vector.h>

#include <cstddef>
#include <vector>

namespace qnInternal {

struct PointBox {
    Box box;
    bool finite;  // all coordinates are
};

/// The box that enclose() makes of the points one by one, from the first on; there is one at least.
PointBox boxOfPoints(std::vector<qcVector<2>> const& points);

/// The same for finite points whose box is known but for the signs of its zeros.
PointBox boxOfPoints(std::vector<qcVector<2>> const& points, Box const& known);

/// The box of edges [begin, end) of an outline of finite points, but for the signs of its zeros.
inline Box boxOfEdges(std::vector<qcVector<2>> const& points, bool closed, std::size_t begin,
                      std::size_t end)
{
    // The ends of the edges stand one behind the other.
    Extremes const ends = extremesFrom(edgeStart(points, closed, begin),
                                       &edgeEnd(points, closed, begin), end - begin);
    return {{ends.low[0], ends.low[1]}, {ends.high[0], ends.high[1]}};
}

/// The largest squared distance of a point from `place`, 0 at least. NaN is passed over.
double largestSquaredDistance(std::vector<qcVector<2>> const& points, qcVector<2> const& place);

}  // namespace qnInternal
