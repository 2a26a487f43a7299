// The exact test of a segment against an edge, and the order of hits along the segment.
#include "cntr/internal/edge_hits.h"

#include "cntr/internal/tolerances.h"

#include <qc/core/compare.h>
#include <qc/core/internal/plane.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace qnInternal {

namespace {

/// Up to so many hits the exchange sort is as fast as any.
constexpr std::size_t kMaxExchanged = 24;

double absoluteSum(qcVector<2> const& v)
{
    return std::fabs(v.x()) + std::fabs(v.y());
}

/// Whether two offsets have one sign and squares above a limit.
bool onOneSide(double first, double second, double squaredLimit)
{
    return (first > 0) == (second > 0) && first * first > squaredLimit &&
           second * second > squaredLimit;
}

}  // namespace

bool HitQuery::surelyMisses(qcVector<2> const& from, qcVector<2> const& to) const
{
    double const extent = absoluteSum(a_) + absoluteSum(b_) + absoluteSum(from) + absoluteSum(to);
    if (!(extent <= kLargestRegular))
        return false;
    // A meeting point is within kOnSegment of both, up to some ulps of the coordinates.
    double const margin = 4 * kOnSegment + 1e-12 * extent;
    qcVector<2> const edge = to - from;
    return onOneSide(direction_.cross(from - a_), direction_.cross(to - a_),
                     direction_ * direction_ * (margin * margin)) ||
           onOneSide(edge.cross(a_ - from), edge.cross(b_ - from), edge * edge * (margin * margin));
}

std::optional<qcVector<2>> HitQuery::meetsInBox(qcVector<2> const& from,
                                                qcVector<2> const& to) const
{
    if (qfRealEq(from, to, kSamePoint) || surelyMisses(from, to))
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

bool HitQuery::regular() const
{
    return largestCoordinate(box_) <= kLargestRegular && direction_ * direction_ >= kShortestSquare;
}

void HitQuery::sortAlong(std::vector<EdgeHit>& hits) const
{
    if (hits.size() > kMaxExchanged && sortByDistinctKeys(hits))
        return;
    // An exchange sort on purpose: hits with equal keys end where it leaves them.
    for (std::size_t i = 0; i + 1 < hits.size(); ++i)
        for (std::size_t j = i + 1; j < hits.size(); ++j)
            if (key(hits[i]) > key(hits[j]))
                std::swap(hits[i], hits[j]);
}

bool HitQuery::sortByDistinctKeys(std::vector<EdgeHit>& hits) const
{
    auto const ordered = [this](EdgeHit const& a, EdgeHit const& b) { return key(a) < key(b); };
    for (auto const& hit : hits)
        if (key(hit) != key(hit))
            return false;  // NaN has no place in an order
    auto sorted = hits;
    std::sort(sorted.begin(), sorted.end(), ordered);
    auto const equallyFar = [this](EdgeHit const& a, EdgeHit const& b) { return key(a) == key(b); };
    if (std::adjacent_find(sorted.begin(), sorted.end(), equallyFar) != sorted.end())
        return false;
    hits = std::move(sorted);
    return true;
}

}  // namespace qnInternal
