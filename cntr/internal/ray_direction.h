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

/// The same through a regular index of the closed outline, for a point within its bounds: looks at
/// the vertices of one narrow wedge after the other until a gap is found. The first wedge reaches up to
/// the angle `firstSeen`, at which the first vertex was seen from a neighbouring point, or 0; it
/// becomes that of this point. No answer depends on it.
std::optional<qcVector<2>> rayDirection(std::vector<qcVector<2>> const& outline,
                                        EdgeIndex const& index, qcVector<2> const& point,
                                        double& firstSeen);

}  // namespace qnInternal
