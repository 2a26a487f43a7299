/// Extremes of many points: their bounding box, the largest distance from a place.
#pragma once

#include "cntr/internal/box.h"

#include <qc/core/vector.h>

#include <vector>

namespace qnInternal {

struct PointBox {
    Box box;
    bool finite;  // all coordinates are
};

/// The box that enclose() makes of the points one by one, from the first on; there is one at least.
PointBox boxOfPoints(std::vector<qcVector<2>> const& points);

/// The largest squared distance of a point from `place`, 0 at least. NaN is passed over.
double largestSquaredDistance(std::vector<qcVector<2>> const& points, qcVector<2> const& place);

}  // namespace qnInternal
