// Where segments and other contours meet a contour, and whether it meets itself.
#include <cntr/contour.h>

#include "cntr/internal/edge_hits.h"
#include "cntr/internal/edge_index.h"
#include "cntr/internal/edge_walk.h"
#include "cntr/internal/self_crossing.h"
#include "cntr/internal/tolerances.h"

#include <qc/core/compare.h>

using qnInternal::Box;
using qnInternal::EdgeHit;
using qnInternal::EdgeIndex;
using qnInternal::HitQuery;

namespace {

/// Collects the hits of a query on edges of one contour.
class Hits {
public:
    Hits(std::vector<qcVector<2>> const& points, bool closed) : points_(points), closed_(closed) {}

    void look(HitQuery const& query, std::size_t begin, std::size_t end)
    {
        for (std::size_t k = begin; k < end; ++k)
            if (auto const point = query.meets(qnInternal::edgeStart(points_, closed_, k),
                                               qnInternal::edgeEnd(points_, closed_, k)))
                hits.push_back({*point, static_cast<int>(k)});
    }

    std::vector<EdgeHit> hits;

private:
    std::vector<qcVector<2>> const& points_;
    bool closed_;
};

/// The edges of a contour in one place, for several queries there.
class NearEdges {
public:
    NearEdges(std::vector<qcVector<2>> const& points, bool closed)
        : points_(points), closed_(closed)
    {
    }

    /// Takes the edges whose boxes overlap `place`, ascending.
    void collect(EdgeIndex const& index, Box const& place)
    {
        edges_.clear();
        index.forEachLeaf(
            0, [&](Box const& box) { return overlap(box, place); },
            [&](std::size_t leaf) {
                for (std::size_t k = index.leafBegin(leaf); k < index.leafEnd(leaf); ++k)
                    take(k, place);
                return false;
            });
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
        Box box = qnInternal::boxOf(qnInternal::edgeStart(points_, closed_, k));
        enclose(box, qnInternal::edgeEnd(points_, closed_, k));
        if (overlap(box, place))
            edges_.push_back({box, k});
    }

    std::vector<qcVector<2>> const& points_;
    bool closed_;
    std::vector<Edge> edges_;
};

}  // namespace

EdgeIndex const* qcContour::edgeIndex() const
{
    bool const closed = isClosed();
    if (qnInternal::edgeCount(points_.size(), closed) <= qnInternal::kMaxPlainEdges)
        return nullptr;
    if (!edgeIndex_ || edgeIndex_->closed() != closed)
        edgeIndex_ = std::make_shared<EdgeIndex>(points_, closed);
    return edgeIndex_->regular() ? edgeIndex_.get() : nullptr;
}

std::vector<EdgeHit> qcContour::hits(HitQuery const& query) const
{
    Hits found(points_, isClosed());
    if (!overlap({bounds().min, bounds().max}, query.box()))
        return {};
    EdgeIndex const* const index = query.regular() ? edgeIndex() : nullptr;
    if (index)
        index->forEachLeaf(0, qnInternal::SegmentReach(query.a(), query.b(), index->scale()),
                           [&](std::size_t leaf) {
                               found.look(query, index->leafBegin(leaf), index->leafEnd(leaf));
                               return false;
                           });
    else
        found.look(query, 0, qnInternal::edgeCount(points_.size(), isClosed()));
    query.sortAlong(found.hits);
    return found.hits;
}

std::vector<qcVector<2>> qcContour::intersections(qcLineSeg const& segment,
                                                  std::vector<int>& segIndices,
                                                  bool touchingEnds) const
{
    checkEmptyContour();
    segIndices.clear();
    auto const meetings = hits(HitQuery(segment.p1(), segment.p2(), touchingEnds));
    std::vector<qcVector<2>> found;
    found.reserve(meetings.size());
    segIndices.reserve(meetings.size());
    for (auto const& hit : meetings) {
        found.push_back(hit.point);
        segIndices.push_back(hit.edge);
    }
    return found;
}

std::vector<qcVector<2>> qcContour::intersections(qcLineSeg const& segment, bool touchingEnds) const
{
    std::vector<int> ignored;
    return intersections(segment, ignored, touchingEnds);
}

std::vector<qcVector<2>> qcContour::intersections(qcContour const& other) const
{
    checkEmptyContour();
    std::vector<qcVector<2>> found;
    EdgeIndex const* const otherIndex = edgeIndex() ? other.edgeIndex() : nullptr;
    if (otherIndex) {
        appendHits(other, *otherIndex, found);
        return found;
    }
    qnInternal::forEachEdge(other.points_, other.isClosed(),
                            [&](std::size_t, qcVector<2> const& from, qcVector<2> const& to) {
                                for (auto const& hit : hits(HitQuery(from, to, true)))
                                    found.push_back(hit.point);
                            });
    return found;
}

void qcContour::appendHits(qcContour const& other, EdgeIndex const& otherIndex,
                           std::vector<qcVector<2>>& found) const
{
    EdgeIndex const& index = *edgeIndex();
    bool const otherClosed = other.isClosed();
    NearEdges near(points_, isClosed());
    std::vector<EdgeHit> met;
    for (std::size_t leaf = 0; leaf < otherIndex.leafCount(); ++leaf) {
        near.collect(index, otherIndex.leafBox(leaf));
        if (near.empty())
            continue;
        for (std::size_t k = otherIndex.leafBegin(leaf); k < otherIndex.leafEnd(leaf); ++k) {
            HitQuery const query(qnInternal::edgeStart(other.points_, otherClosed, k),
                                 qnInternal::edgeEnd(other.points_, otherClosed, k), true);
            near.look(query, met);
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
