/// The direction in which a ray from a point can count crossings of an outline.
#pragma once

#include "cntr/internal/edge_index.h"

#include <qc/core/vector.h>

#include <optional>
#include <vector>

namespace qnInternal {

/// The middle of the first gap wider than pi / n between the directions in which the n vertices are
/// seen, in ascending order; (1, 0) where no gap is that wide. Nothing for a point within kOnSegment
/// of a vertex, or at no comparable distance from one. O(n log n).
///
/// The ray leaves through a gap between the vertices: through a vertex it would meet two edges at
/// one point and the count would be off by one.
std::optional<qcVector<2>> rayDirection(std::vector<qcVector<2>> const& outline,
                                        qcVector<2> const& point);

/// What was seen from the point before, for questions about points one beside the other.
struct RaySight {
    double first = 0;      // the angle of the first vertex
    bool crowded = false;  // whether many vertices were seen in a narrow wedge
};

/// The same through a regular index of the closed outline, for a point within its bounds: looks at
/// the vertices of one narrow wedge after the other until a gap is found. The first wedge reaches up to
/// where `sight` has the first vertex, and `sight` becomes that of this point. No answer depends on it.
std::optional<qcVector<2>> rayDirection(std::vector<qcVector<2>> const& outline,
                                        EdgeIndex const& index, qcVector<2> const& point,
                                        RaySight& sight);

/// True only where the direction has an angle from 0 up to `angle`, or there is none. Looks at the
/// vertices of some wedges one below the other, the first of which is `width` wide or less; `width` becomes
/// that of the last one, to begin with for a point beside this one.
bool rayDirectionIsBelow(std::vector<qcVector<2>> const& outline, EdgeIndex const& index,
                         qcVector<2> const& point, double angle, double& width);

}  // namespace qnInternal
