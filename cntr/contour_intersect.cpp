// Where segments and other contours meet a contour, and whether it meets itself.
#include <cntr/contour.h>

#include "cntr/internal/edge_hits.h"
#include "cntr/internal/edge_walk.h"
#include "cntr/internal/tolerances.h"

#include <qc/core/compare.h>

using qnInternal::EdgeHit;
using qnInternal::HitQuery;

namespace {

qnInternal::Box toBox(std::pair<qcVector<2>, qcVector<2>> const& corners)
{
    return {corners.first, corners.second};
}

}  // namespace

std::vector<qcVector<2>> qcContour::intersections(qcLineSeg const& segment,
                                                  std::vector<int>& segIndices,
                                                  bool touchingEnds) const
{
    checkEmptyContour();
    segIndices.clear();
    HitQuery const query(segment.p1(), segment.p2(), touchingEnds);
    std::vector<qcVector<2>> found;
    if (!overlap(toBox(boundingBox()), query.box()))
        return found;
    std::vector<EdgeHit> hits;
    qnInternal::forEachEdge(points_, isClosed(),
                            [&](std::size_t k, qcVector<2> const& from, qcVector<2> const& to) {
                                if (auto const point = query.meets(from, to))
                                    hits.push_back({*point, static_cast<int>(k)});
                            });
    query.sortAlong(hits);
    found.reserve(hits.size());
    segIndices.reserve(hits.size());
    for (auto const& hit : hits) {
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
    qnInternal::forEachEdge(other.points_, other.isClosed(),
                            [&](std::size_t, qcVector<2> const& from, qcVector<2> const& to) {
                                auto const hits =
                                    qcContour::intersections(qcLineSeg(from, to), true);
                                found.insert(found.end(), hits.begin(), hits.end());
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
    auto const box = toBox(boundingBox());
    bool const closed = isClosed();
    std::size_t const count = qnInternal::edgeCount(points_.size(), closed);
    for (std::size_t k = 0; k < count; ++k) {
        auto const& from = qnInternal::edgeStart(points_, closed, k);
        auto const& to = qnInternal::edgeEnd(points_, closed, k);
        if (qfRealEq(from, to, qnInternal::kSamePoint))
            continue;
        HitQuery const query(from, to, false);
        if (!overlap(box, query.box()))
            continue;  // only where the first point is NaN, and with it the box
        for (std::size_t other = 0; other < count; ++other)
            if (query.meets(qnInternal::edgeStart(points_, closed, other),
                            qnInternal::edgeEnd(points_, closed, other)))
                return true;
    }
    return false;
}
