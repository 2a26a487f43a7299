// Where segments and other contours meet a contour, and whether it meets itself.
#include <cntr/contour.h>

#include "cntr/internal/box_of_points.h"
#include "cntr/internal/edge_hits.h"
#include "cntr/internal/edge_index.h"
#include "cntr/internal/edge_walk.h"
#include "cntr/internal/self_crossing.h"
#include "cntr/internal/tolerances.h"

#include <qc/core/compare.h>

#include <algorithm>

using qnInternal::Box;
using qnInternal::BoxGroup;
using qnInternal::EdgeHit;
using qnInternal::EdgeIndex;
using qnInternal::HitQuery;

namespace {

/// The leaves of an index in one place.
class NearLeaves {
public:
    struct Leaf {
        std::size_t number;
        Box box;
    };

    /// Takes the leaves whose boxes overlap `place`, ascending.
    void collect(EdgeIndex const& index, Box const& place)
    {
        leaves_.clear();
        index.forEachLeaf([&](BoxGroup const& boxes) { return boxes.overlapping(place); },
                          [&](std::size_t leaf, Box const& box) {
                              leaves_.push_back({leaf, box});
                          });
        if (!index.inOutlineOrder())
            std::sort(leaves_.begin(), leaves_.end(),
                      [](Leaf const& a, Leaf const& b) { return a.number < b.number; });
    }

    std::vector<Leaf> const& leaves() const { return leaves_; }

private:
    std::vector<Leaf> leaves_;
};

/// The edges of a contour in one place, for several queries there.
class NearEdges {
public:
    NearEdges(std::vector<qcVector<2>> const& points, bool closed)
        : points_(points), closed_(closed)
    {
    }

    /// Takes the edges of `leaves` whose boxes overlap `place`, ascending.
    void collect(EdgeIndex const& index, NearLeaves const& leaves, Box const& place)
    {
        edges_.clear();
        for (auto const& leaf : leaves.leaves())
            if (overlap(leaf.box, place))
                for (std::size_t k = index.leafBegin(leaf.number); k < index.leafEnd(leaf.number);
                     ++k)
                    take(k, place);
    }

    bool empty() const { return edges_.empty(); }

    /// Replaces `hits` by those of a query inside the place.
    void look(HitQuery const& query, std::vector<EdgeHit>& hits) const
    {
        hits.clear();
        for (auto const& edge : edges_)
            if (overlap(edge.box, query.box()))
                if (auto const point =
                        query.meets(qnInternal::edgeStart(points_, closed_, edge.number),
                                    qnInternal::edgeEnd(points_, closed_, edge.number)))
                    hits.push_back({*point, static_cast<int>(edge.number)});
    }

private:
    struct Edge {
        Box box;
        std::size_t number;
    };

    void take(std::size_t k, Box const& place)
    {
        qcVector<2> const& from = qnInternal::edgeStart(points_, closed_, k);
        qcVector<2> const& to = qnInternal::edgeEnd(points_, closed_, k);
        if (!qnInternal::edgeOverlaps(from, to, place))
            return;
        Box box = qnInternal::boxOf(from);
        enclose(box, to);
        edges_.push_back({box, k});
    }

    std::vector<qcVector<2>> const& points_;
    bool closed_;
    std::vector<Edge> edges_;
};

std::vector<qcVector<2>> pointsOf(std::vector<EdgeHit> const& hits)
{
    std::vector<qcVector<2>> points;
    points.reserve(hits.size());
    for (auto const& hit : hits)
        points.push_back(hit.point);
    return points;
}

}  // namespace

EdgeIndex const* qcContour::edgeIndex() const
{
    if (points_.size() <= qnInternal::kMaxPlainEdges)
        return nullptr;
    bool const closed = isClosed();
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
    constexpr std::size_t kMostlyEnough = 16;
    std::vector<EdgeHit> found;
    if (!overlap({bounds().min, bounds().max}, query.box()))
        return found;
    bool const closed = isClosed();
    auto const look = [&](std::size_t k) {
        if (auto const point = query.meets(qnInternal::edgeStart(points_, closed, k),
                                           qnInternal::edgeEnd(points_, closed, k))) {
            if (found.empty())
                found.reserve(kMostlyEnough);
            found.push_back({*point, static_cast<int>(k)});
        }
    };
    if (EdgeIndex const* const index = query.regular() ? edgeIndex() : nullptr) {
        qnInternal::SegmentReach const reach(query, index->scale());
        index->forEachLeaf(reach, [&](std::size_t leaf, Box const&) {
            std::size_t const begin = index->leafBegin(leaf);
            std::size_t const end = index->leafEnd(leaf);
            if (!reach.oblique()) {
                for (std::size_t k = begin; k < end; ++k)
                    look(k);
                return;
            }
            double before = reach.offset(qnInternal::edgeStart(points_, closed, begin));
            for (std::size_t k = begin; k < end; ++k) {
                double const after = reach.offset(qnInternal::edgeEnd(points_, closed, k));
                if (reach.mayMeet(before, after))
                    look(k);
                before = after;
            }
        });
        if (!index->inOutlineOrder())
            std::sort(found.begin(), found.end(),
                      [](EdgeHit const& a, EdgeHit const& b) { return a.edge < b.edge; });
    } else {
        for (std::size_t k = 0; k < qnInternal::edgeCount(points_.size(), closed); ++k)
            look(k);
    }
    query.sortAlong(found);
    return found;
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
    std::vector<qcVector<2>> found;
    EdgeIndex const* const index = edgeIndex();
    // Edges that no index holds may be of any kind: one box decides for each, as in the plain loop.
    if (index && !other.points_.empty() && other.bounds().finite) {
        appendHits(other, *index, found);
        return found;
    }
    qnInternal::forEachEdge(other.points_, other.isClosed(),
                            [&](std::size_t, qcVector<2> const& from, qcVector<2> const& to) {
                                for (auto const& hit : hits(HitQuery(from, to, true)))
                                    found.push_back(hit.point);
                            });
    return found;
}

void qcContour::appendHits(qcContour const& other, EdgeIndex const& index,
                           std::vector<qcVector<2>>& found) const
{
    // One descent serves a stretch of the other contour; where outlines fold, long ones reach far.
    constexpr std::size_t kStretch = 16;
    constexpr std::size_t kRun = 8;
    bool const closed = other.isClosed();
    std::size_t const count = qnInternal::edgeCount(other.points_.size(), closed);
    NearLeaves leaves;
    NearEdges edges(points_, isClosed());
    std::vector<EdgeHit> met;
    for (std::size_t run = 0; run < count; run += kRun) {
        if (run % kStretch == 0)
            leaves.collect(index, qnInternal::boxOfEdges(other.points_, closed, run,
                                                         std::min(run + kStretch, count)));
        if (leaves.leaves().empty())
            continue;
        std::size_t const end = std::min(run + kRun, count);
        edges.collect(index, leaves, qnInternal::boxOfEdges(other.points_, closed, run, end));
        for (std::size_t k = run; k < end && !edges.empty(); ++k) {
            HitQuery const query(qnInternal::edgeStart(other.points_, closed, k),
                                 qnInternal::edgeEnd(other.points_, closed, k), true);
            edges.look(query, met);
            query.sortAlong(met);
            for (auto const& hit : met)
                found.push_back(hit.point);
        }
    }
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
                                    found = !hits(HitQuery(from, to, false)).empty();
                            });
    return found;
}
