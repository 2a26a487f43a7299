/// The farthest pair of points by the antipodal vertices of their hull: for outlines on which nearly
/// all points are nearly farthest apart, such as circles.
#pragma once

#include "cntr/internal/farthest_pair.h"

#include <qc/core/vector.h>

#include <optional>
#include <vector>

namespace qnInternal {

/// What farthestPair() finds among all pairs, for points of a regular index, in O(n log n). Nothing
/// where that is not certain.
///
/// Let D be the largest distance. Distances are compared after rounding, so a pair may win by its place
/// whose distance is by some ulps smaller: these are the close pairs. Where one of them has an end
/// p that is no vertex of the hull, one of the vertices that span the place of p lies at least as far
/// in the direction of the pair, and no farther than D from its other end, so within some 3e-8 D of p.
/// Where nothing but equal points is so near to a vertex, or all points are vertices, close pairs are
/// pairs of vertices. And no other vertex lies farther in the direction of a close pair by more than some
/// ulps of D; where edges of the hull are not shorter than 1e-6 D, such a direction is off the normals
/// of its vertex by no more than some 1e-9.
std::optional<FarthestPair> farthestPairOnHull(std::vector<qcVector<2>> const& points);

/// The same for points that are the vertices of their hull one after the other: a convex outline, as is
/// seen on the way. Nothing for others, of which most are left at the first few points. O(n).
std::optional<FarthestPair> farthestPairOfConvex(std::vector<qcVector<2>> const& points);

}  // namespace qnInternal
