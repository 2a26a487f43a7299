/// Whether both containment rays from a point are sure to be blocked, where that can be told without
/// looking for their direction.
///
/// Every ray from angle 0 up to some angle is blocked where edges in front of the point, together, stand
/// across all these directions; and so is every opposite ray by edges behind the point. The direction is
/// the middle of the first wide gap between those of the vertices, counted from angle 0. Any wide gap
/// below that angle shows that it is one of these directions.
///
/// An edge counts for directions that are clear of its ends by 1e-5 or more, and where its line is 0.01
/// or more away from the point. Then the outline is so large that, at the coordinates which ParityReach
/// admits, the rounding of the ray's end turns the ray by 1e-6 at most. Ray and edge meet at an angle with
/// a sine of at least 1e-5: the ends, r and s away from the point, are (r + s) times it or more apart across
/// the ray, and the edge is no longer than r + s. So they are never parallel. Neither does the meeting
/// point round to a place beyond the edge's ends: they are 1e-7 or more from the ray, where the rounding
/// across it is 1.5e-9. Nor does any edge count where the ray need not leave the outline, since one at
/// either end of the ray is not met.
#pragma once

#include "cntr/internal/edge_index.h"
#include "cntr/internal/parity.h"

#include <qc/core/vector.h>

#include <vector>

namespace qnInternal {

class BlockedRays {
public:
    /// Of a closed outline, by a regular index of it. `edgeLength` is how long its edges usually are.
    BlockedRays(std::vector<qcVector<2>> const& outline, EdgeIndex const& index,
                ParityReach const& reach, double edgeLength)
        : outline_(outline), index_(index), reach_(reach), edgeLength_(edgeLength)
    {
    }

    /// True only where the rays from `point`, which lies in the outline's box, are blocked. Looks at
    /// edges near the point and at the vertices between two angles.
    bool certainAt(qcVector<2> const& point);

private:
    /// From the slope of the lowest to that of the highest ray across which an edge stands.
    struct Slopes {
        double lowest;
        double highest;
    };

    /// Up to which slope, at most `highest`, all rays are blocked on one side of the point: 1 in front,
    /// -1 behind.
    double blockedBelow(qcVector<2> const& point, double side, double highest);

    std::vector<qcVector<2>> const& outline_;
    EdgeIndex const& index_;
    ParityReach reach_;
    double edgeLength_;
    double width_ = 0;             // of the wedge in which a gap was found before
    std::vector<Slopes> crossed_;  // kept for its storage
};

}  // namespace qnInternal
