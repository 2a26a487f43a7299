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

// The exact test takes roots and quotients. Squares tell most cases as surely, if they keep clear of
// the limit by more than those can round: this part of it.
constexpr double kClearOfLimit = 1e-9;

/// True only where areParallel() is false; `sine` is the cross product of the directions.
bool surelyCross(double sine, double squaredLength, double otherSquaredLength)
{
    constexpr double kSquaredSine = kParallelSine * kParallelSine * (1 + kClearOfLimit);
    return sine * sine > kSquaredSine * squaredLength * otherSquaredLength;
}

/// True only where segmentDistance() of `x` from the segment is below kOnSegment, between its ends.
bool surelyOn(qcVector<2> const& from, qcVector<2> const& along, double squaredLength,
              qcVector<2> const& x)
{
    constexpr double kSquaredDistance = kOnSegment * kOnSegment * (1 - kClearOfLimit);
    qcVector<2> const offset = x - from;
    double const dot = offset * along;
    double const cross = along.cross(offset);
    return dot > kClearOfLimit * squaredLength && dot < (1 - kClearOfLimit) * squaredLength &&
           cross * cross < kSquaredDistance * squaredLength;
}

}  // namespace

std::optional<qcVector<2>> HitQuery::meetsInBox(qcVector<2> const& from,
                                                qcVector<2> const& to) const
{
    double const extent = absoluteSum(a_) + absoluteSum(b_) + absoluteSum(from) + absoluteSum(to);
    if (!(extent <= kLargestRegular))
        return meetsExactly(from, to);
    if (!touchingEnds_ && (a_ == from || a_ == to || b_ == from || b_ == to))
        return std::nullopt;  // no distance at all
    double const margin = marginAt(extent);
    double const squaredLength = direction_ * direction_;
    if (onOneSide(direction_.cross(from - a_), direction_.cross(to - a_),
                  squaredLength * (margin * margin)))
        return std::nullopt;
    qcVector<2> const edge = to - from;
    double const squaredEdge = edge * edge;
    double const limit = squaredEdge * (margin * margin);
    double const offsetA = edge.cross(a_ - from);
    double const offsetB = edge.cross(b_ - from);
    if (onOneSide(offsetA, offsetB, limit))
        return std::nullopt;
    bool const certain = !qfRealEq(from, to, kSamePoint) &&
                         surelyCross(edge.cross(direction_), squaredEdge, squaredLength);
    bool const endsApart =
        touchingEnds_ || (offsetA * offsetA > limit && offsetB * offsetB > limit);
    if (!certain || !endsApart)
        return meetsExactly(from, to);
    qcVector<2> const point = intersectLines(from, edge, a_, direction_);
    if (surelyOn(from, edge, squaredEdge, point) && surelyOn(a_, direction_, squaredLength, point))
        return point;
    return meetsExactly(from, to);
}

std::optional<qcVector<2>> HitQuery::meetsExactly(qcVector<2> const& from,
                                                  qcVector<2> const& to) const
{
    qcVector<2> const edge = to - from;
    if (qfRealEq(from, to, kSamePoint) || areParallel(edge, direction_))
        return std::nullopt;
    if (!touchingEnds_ &&
        !(segmentDistance(from, to, a_) > kOnSegment && segmentDistance(from, to, b_) > kOnSegment))
        return std::nullopt;
    qcVector<2> const point = intersectLines(from, edge, a_, direction_);
    if (segmentDistance(from, to, point) < kOnSegment &&
        segmentDistance(a_, b_, point) < kOnSegment)
        return point;
    return std::nullopt;
}

void HitQuery::sortSeveral(std::vector<EdgeHit>& hits) const
{
    auto const byEdge = [](EdgeHit const& a, EdgeHit const& b) { return a.edge < b.edge; };
    if (hits.size() > kMaxExchanged || !std::is_sorted(hits.begin(), hits.end(), byEdge)) {
        if (sortByDistinctKeys(hits))
            return;
        std::sort(hits.begin(), hits.end(), byEdge);
    }
    // An exchange sort on purpose: hits with equal keys end where it leaves them.
    for (std::size_t i = 0; i + 1 < hits.size(); ++i) {
        double least = key(hits[i]);
        for (std::size_t j = i + 1; j < hits.size(); ++j) {
            double const other = key(hits[j]);
            if (least > other) {
                std::swap(hits[i], hits[j]);
                least = other;
            }
        }
    }
}

bool HitQuery::sortByDistinctKeys(std::vector<EdgeHit>& hits) const
{
    using Place = std::pair<double, std::size_t>;  // along the segment, and in the list
    std::vector<Place> places;
    places.reserve(hits.size());
    for (auto const& hit : hits) {
        places.emplace_back(key(hit), places.size());
        if (places.back().first != places.back().first)
            return false;  // NaN has no place in an order
    }
    std::sort(places.begin(), places.end());
    auto const equallyFar = [](Place const& a, Place const& b) { return a.first == b.first; };
    if (std::adjacent_find(places.begin(), places.end(), equallyFar) != places.end())
        return false;
    std::vector<EdgeHit> sorted;
    sorted.reserve(hits.size());
    for (auto const& place : places)
        sorted.push_back(hits[place.second]);
    hits.swap(sorted);
    return true;
}

}  // namespace qnInternal
