/// Outlines that go once around a point, seen at a glance not to cross themselves: most blobs do.
///
/// Seen from the point, every edge of such an outline fills an angle of its own, and the edges turn one
/// way. Where the doubled triangle of the point and any edge has an area of a or more, and no vertex is
/// farther away than r, the sine of the angle is at least a / r^2, or the angle is obtuse; and the edge
/// keeps a / 2r away from the point. Two edges that do not follow each other have such an angle between
/// them on either side. So they are a^2 / 2r^3 or more apart.
#pragma once

#include "cntr/internal/box.h"

#include <qc/core/vector.h>

#include <vector>

namespace qnInternal {

/// The least doubled area of a triangle of some point and an edge of the closed outline, if that goes once
/// around the point; else 0. Passes over NaN. Linear; soon 0 for most outlines that do not.
double leastTriangleOnceAround(std::vector<qcVector<2>> const& points);

/// Whether such an area keeps all edges that do not follow each other so far apart that no two meet, be the
/// outline closed or open. `box` bounds the points, which are finite.
bool keepsEdgesApart(double leastTriangle, Box const& box);

}  // namespace qnInternal
