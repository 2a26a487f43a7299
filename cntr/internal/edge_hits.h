/// Whether a query segment meets an edge, and in what order its meetings lie: the exact test that
/// every intersection of the library comes down to.
#pragma once

#include "cntr/internal/box.h"
#include "cntr/internal/box_group.h"
#include "cntr/internal/edge_walk.h"
#include "cntr/internal/tolerances.h"

#include <qc/core/vector.h>

#include <optional>
#include <vector>

namespace qnInternal {

/// A meeting of a query segment with an edge.
struct EdgeHit {
    qcVector<2> point;
    int edge;
};

/// How far off a segment's line a meeting point can be, amply: within kOnSegment of it, up to some ulps
/// of the coordinates, whose absolute values add up to `extent` or less.
inline double marginAt(double extent)
{
    return 4 * kOnSegment + 1e-12 * extent;
}

/// Whether two offsets from a line have one sign, and squares above a limit.
inline bool onOneSide(double first, double second, double squaredLimit)
{
    return (first > 0) == (second > 0) && first * first > squaredLimit &&
           second * second > squaredLimit;
}

/// A query segment from a to b.
class HitQuery {
public:
    /// With `touchingEnds` false, edges within kOnSegment of a or b never meet the segment.
    HitQuery(qcVector<2> const& a, qcVector<2> const& b, bool touchingEnds)
        : a_(a), b_(b), direction_(b - a), box_(boxOfBoth(b, a)), touchingEnds_(touchingEnds)
    {
    }

    qcVector<2> const& a() const { return a_; }
    qcVector<2> const& b() const { return b_; }
    Box const& box() const { return box_; }

    /// Whether distances from the segment keep their digits: no coordinate is too large for its
    /// square, nor is the segment too short for its own.
    bool regular() const
    {
        return largestCoordinate(box_) <= kLargestRegular &&
               direction_ * direction_ >= kShortestSquare;
    }

    /// Where the edge between two points meets the segment. An edge whose ends are one point, or
    /// parallel to the segment, does not.
    std::optional<qcVector<2>> meets(qcVector<2> const& from, qcVector<2> const& to) const
    {
        return edgeOverlaps(from, to, box_) ? meetsInBox(from, to) : std::nullopt;
    }

    /// Orders hits along the segment, from a to b. The order of hits equally far along is that of a
    /// plain exchange sort of hits in ascending order of edges.
    void sortAlong(std::vector<EdgeHit>& hits) const
    {
        if (hits.size() > 1)
            sortSeveral(hits);
    }

private:
    void sortSeveral(std::vector<EdgeHit>& hits) const;

    /// meets() for an edge whose box overlaps that of the segment: exactly, where no quicker test is
    /// sure of the same answer.
    std::optional<qcVector<2>> meetsInBox(qcVector<2> const& from, qcVector<2> const& to) const;
    std::optional<qcVector<2>> meetsExactly(qcVector<2> const& from, qcVector<2> const& to) const;

    /// Where no two keys are equal every sort gives one order; else false.
    bool sortByDistinctKeys(std::vector<EdgeHit>& hits) const;

    double key(EdgeHit const& hit) const { return (hit.point - a_) * direction_; }

    qcVector<2> a_;
    qcVector<2> b_;
    qcVector<2> direction_;
    Box box_;
    bool touchingEnds_;
};

/// Replaces `found` by the hits of a query with those edges of an outline whose numbers stand from `first`
/// up to `last`, in the order of HitQuery::sortAlong().
template <class Iterator>
void findHitsAmong(Iterator first, Iterator last, HitQuery const& query,
                   std::vector<qcVector<2>> const& points, bool closed, std::vector<EdgeHit>& found)
{
    found.clear();
    for (; first != last; ++first)
        if (auto const point =
                query.meets(edgeStart(points, closed, *first), edgeEnd(points, closed, *first)))
            found.push_back({*point, static_cast<int>(*first)});
    query.sortAlong(found);
}

}  // namespace qnInternal
