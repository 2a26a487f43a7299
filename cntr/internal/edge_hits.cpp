// The exact test of a segment against an edge, and the order of hits along the segment.
#include "cntr/internal/edge_hits.h"

#include "cntr/internal/tolerances.h"

#include <qc/core/compare.h>
#include <qc/core/internal/plane.h>

#include <utility>

namespace qnInternal {

HitQuery::HitQuery(qcVector<2> const& a, qcVector<2> const& b, bool touchingEnds)
    : a_(a), b_(b), direction_(b - a), box_(boxOf(b)), touchingEnds_(touchingEnds)
{
    enclose(box_, a);
}

std::optional<qcVector<2>> HitQuery::meets(qcVector<2> const& from, qcVector<2> const& to) const
{
    if (qfRealEq(from, to, kSamePoint))
        return std::nullopt;
    Box edgeBox = boxOf(from);
    enclose(edgeBox, to);
    if (!overlap(edgeBox, box_))
        return std::nullopt;
    qcVector<2> const edgeDirection = to - from;
    if (areParallel(edgeDirection, direction_))
        return std::nullopt;
    if (!touchingEnds_ &&
        !(segmentDistance(from, to, a_) > kOnSegment && segmentDistance(from, to, b_) > kOnSegment))
        return std::nullopt;
    qcVector<2> const point = intersectLines(from, edgeDirection, a_, direction_);
    if (segmentDistance(from, to, point) < kOnSegment &&
        segmentDistance(a_, b_, point) < kOnSegment)
        return point;
    return std::nullopt;
}

void HitQuery::sortAlong(std::vector<EdgeHit>& hits) const
{
    // An exchange sort on purpose: hits with equal keys end where it leaves them.
    for (std::size_t i = 0; i + 1 < hits.size(); ++i)
        for (std::size_t j = i + 1; j < hits.size(); ++j)
            if (key(hits[i]) > key(hits[j]))
                std::swap(hits[i], hits[j]);
}

}  // namespace qnInternal
