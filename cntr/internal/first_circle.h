/// The circle around the first vertex in which the outline lies, and containment rays from beyond it.
///
/// The ray is as long as the circle is wide. Where it begins and ends beyond the circle, it crosses the
/// closed outline an even number of times. Every crossing counts, for the reasons in parity.h, if both
/// places are farther from the circle than a vertex must be from a point, which is more than edges need.
/// So the point is outside, and no edge is asked.
///
/// From a point to the left of and above the centre, but in the outline's box, this needs no direction.
/// From beyond the circle all vertices are seen within a quarter turn of the centre, which here is below
/// angle 0. One vertex is no lower than the point, so it is seen from angle 0 up to a quarter turn; the
/// next one after all of these is below the point, more than a quarter turn on. The first wide gap is
/// this one or between two of these vertices. In the middle of this one, a ray is at least an eighth of a
/// turn off the centre, itself a vertex. It ends sqrt(2) radii or more from there, and no point in the
/// box is farther away. Between two of these vertices, a ray is turned away from the centre by more than
/// the one at angle 0, which ends as far to the right of the centre as the point is to the left, or
/// farther. Either way it ends no nearer to the centre than it begins.
#pragma once

#include "cntr/internal/parity.h"

#include <qc/core/vector.h>

namespace qnInternal {

class FirstCircle {
public:
    /// The vertices lie within `radius` of the first one, and `reach` is certain for them.
    FirstCircle(qcVector<2> const& firstVertex, double radius, ParityReach const& reach);

    /// Whether a ray that begins and ends at such places is sure to cross the outline an even number
    /// of times.
    bool isBeyond(qcVector<2> const& place) const;

    /// Whether the ray from a point beyond the circle, in the box of the vertices, is sure to end beyond
    /// it too. False says nothing.
    bool isPassedFrom(qcVector<2> const& point) const;

    /// No vertex is seen below this angle, up to rounding, from a point beyond the circle for which
    /// isPassedFrom() is false.
    double lowestAngle(qcVector<2> const& point) const;

private:
    qcVector<2> center_;
    double radius_;
    double squaredReach_;
};

}  // namespace qnInternal
