// Where segments and other contours meet a contour, and whether it meets itself.
#include <cntr/contour.h>

#include "cntr/internal/edge_hits.h"
#include "cntr/internal/edge_index.h"
#include "cntr/internal/edge_walk.h"
#include "cntr/internal/once_around.h"
#include "cntr/internal/outline_meetings.h"
#include "cntr/internal/self_crossing.h"
#include "cntr/internal/tolerances.h"

#include <qc/core/compare.h>

#include <algorithm>

using qnInternal::Box;
using qnInternal::EdgeHit;
using qnInternal::EdgeIndex;
using qnInternal::HitQuery;

namespace {

/// Beyond so many points an index is nearly as quick to tell (bench/crossings_bench.cpp, self_crossing).
constexpr std::size_t kMostAtAGlance = 2'000;

/// Up to so many pairs of edges of two contours one after the other is tested sooner than their boxes
/// are made (bench/crossings_bench.cpp).
constexpr std::size_t kFewPairs = 64;

std::vector<qcVector<2>> pointsOf(std::vector<EdgeHit> const& hits)
{
    std::vector<qcVector<2>> points;
    if (hits.empty())
        return points;
    points.reserve(hits.size());
    for (auto const& hit : hits)
        points.push_back(hit.point);
    return points;
}

/// EdgeIndex::anyEdgeNear() for the edges that are within reach.
template <class Reach, class Accepts>
bool anyEdgeWithin(Reach const& reach, EdgeIndex const& index,
                   std::vector<qcVector<2>> const& points, Accepts const& accepts)
{
    bool found = false;
    index.forEachLeaf([&](qnInternal::BoxGroup const& boxes) { return found ? 0 : reach(boxes); },
                      [&](std::size_t leaf, Box const&) {
                          std::size_t const begin = index.leafBegin(leaf);
                          unsigned const edges =
                              reach.edges(qnInternal::edgeStart(points, index.closed(), begin),
                                          &qnInternal::edgeEnd(points, index.closed(), begin),
                                          index.leafEnd(leaf) - begin);
                          found = found || qnInternal::anyBit(edges, [&](std::size_t i) {
                                      return accepts(begin + i);
                                  });
                      });
    return found;
}

/// Calls accepts(point, k) for the edges that meet the query, in no certain order, until it accepts
/// one; whether it did. All edges are asked where there is no index.
template <class Accepts>
bool anyHit(HitQuery const& query, qnInternal::Outline const& outline, EdgeIndex const* index,
            Accepts const& accepts)
{
    auto const& points = outline.points;
    auto const isAccepted = [&](std::size_t k) {
        auto const point = query.meets(qnInternal::edgeStart(points, outline.closed, k),
                                       qnInternal::edgeEnd(points, outline.closed, k));
        return point && accepts(*point, k);
    };
    if (!index) {
        for (std::size_t k = 0; k < outline.edges(); ++k)
            if (isAccepted(k))
                return true;
        return false;
    }
    if (qnInternal::isOblique(query, index->scale()))
        return anyEdgeWithin(qnInternal::SegmentReach(query, index->scale()), *index, points,
                             isAccepted);
    return anyEdgeWithin(qnInternal::BoxReach(query.box()), *index, points, isAccepted);
}

}  // namespace

EdgeIndex const* qcContour::edgeIndex(bool closed) const
{
    if (points_.size() <= qnInternal::kMaxPlainEdges)
        return nullptr;
    if (!edgeIndex_ || edgeIndex_->closed() != closed)
        edgeIndex_ = std::make_shared<EdgeIndex>(points_, closed);
    return edgeIndex_->regular() ? edgeIndex_.get() : nullptr;
}

std::shared_ptr<EdgeIndex const> qcContour::edgeIndexInAnyOrder() const
{
    if (points_.size() <= qnInternal::kMaxPlainEdges)
        return nullptr;
    bool const closed = isClosed();
    auto index = edgeIndex_;
    if (!index || index->closed() != closed) {
        index = std::make_shared<EdgeIndex>(points_, closed, EdgeIndex::Folded::eInOutlineOrder);
        if (!index->foldsBack())
            edgeIndex_ = index;
    }
    return index->regular() ? index : nullptr;
}

std::vector<EdgeHit> qcContour::hits(HitQuery const& query) const
{
    std::vector<EdgeHit> found;
    findHits(query, found);
    return found;
}

void qcContour::findHits(HitQuery const& query, std::vector<EdgeHit>& found) const
{
    constexpr std::size_t kMostlyEnough = 16;
    found.clear();
    Bounds const& all = bounds();
    if (!overlap({all.min, all.max}, query.box()))
        return;
    bool const closed = isClosed();
    anyHit(query, {points_, closed}, query.regular() ? edgeIndex(closed) : nullptr,
           [&](qcVector<2> const& point, std::size_t k) {
               if (found.capacity() == 0)
                   found.reserve(kMostlyEnough);
               found.push_back({point, static_cast<int>(k)});
               return false;
           });
    query.sortAlong(found);
}

std::optional<std::size_t> qcContour::edgeMetBy(HitQuery const& query) const
{
    std::optional<std::size_t> met;
    if (overlap({bounds().min, bounds().max}, query.box()))
        anyHit(query, {points_, isClosed()}, query.regular() ? edgeIndex() : nullptr,
               [&](qcVector<2> const&, std::size_t k) {
                   met = k;
                   return true;
               });
    return met;
}

std::vector<qcVector<2>> qcContour::intersections(qcLineSeg const& segment,
                                                  std::vector<int>& segIndices,
                                                  bool touchingEnds) const
{
    checkEmptyContour();
    segIndices.clear();
    auto const meetings = hits(HitQuery(segment.p1(), segment.p2(), touchingEnds));
    segIndices.reserve(meetings.size());
    for (auto const& hit : meetings)
        segIndices.push_back(hit.edge);
    return pointsOf(meetings);
}

std::vector<qcVector<2>> qcContour::intersections(qcLineSeg const& segment, bool touchingEnds) const
{
    checkEmptyContour();
    return pointsOf(hits(HitQuery(segment.p1(), segment.p2(), touchingEnds)));
}

std::vector<qcVector<2>> qcContour::intersections(qcContour const& other) const
{
    checkEmptyContour();
    qnInternal::Outline const outline{points_, isClosed()};
    qnInternal::Outline const others{other.points_, other.isClosed()};
    if (outline.edges() * others.edges() > kFewPairs) {
        EdgeIndex const* const index = edgeIndex();
        if (index || (outline.edges() <= qnInternal::kMaxPlainEdges && bounds().finite))
            return qnInternal::meetings(outline, index, others);
    }
    std::vector<qcVector<2>> found;
    std::vector<EdgeHit> met;
    qnInternal::forEachEdge(others.points, others.closed,
                            [&](std::size_t, qcVector<2> const& from, qcVector<2> const& to) {
                                findHits(HitQuery(from, to, true), met);
                                for (auto const& hit : met)
                                    found.push_back(hit.point);
                            });
    return found;
}

bool qcContour::isSelfIntersecting() const
{
    if (points_.empty())
        return false;
    if (!selfIntersecting_)
        selfIntersecting_ = anyEdgeMeetsAnother();
    return *selfIntersecting_;
}

bool qcContour::anyEdgeMeetsAnother() const
{
    if (points_.size() < 2)
        return false;
    if (points_.size() <= kMostAtAGlance) {
        double const least = qnInternal::leastTriangleOnceAround(points_);
        if (least > 0 && bounds().finite &&
            qnInternal::keepsEdgesApart(least, {bounds().min, bounds().max}))
            return false;
    }
    bool const closed = isClosed();
    if (EdgeIndex const* const index = edgeIndex())
        return qnInternal::anyEdgeMeetsAnother(*index, points_, closed);
    if (qnInternal::edgeCount(points_.size(), closed) <= qnInternal::kMaxPlainEdges &&
        bounds().finite &&
        qnInternal::largestCoordinate({bounds().min, bounds().max}) <= qnInternal::kLargestRegular)
        return qnInternal::anyOfFewEdgesMeets(points_, closed);
    bool found = false;
    qnInternal::forEachEdge(points_, closed,
                            [&](std::size_t, qcVector<2> const& from, qcVector<2> const& to) {
                                if (!found && !qfRealEq(from, to, qnInternal::kSamePoint))
                                    found = edgeMetBy(HitQuery(from, to, false)).has_value();
                            });
    return found;
}
