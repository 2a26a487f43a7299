// The vertex and the point of a contour nearest to a given point.
#include <cntr/contour.h>

#include "cntr/internal/edge_walk.h"
#include "cntr/internal/nearest.h"

#include <qc/core/internal/plane.h>

#include <limits>

namespace {

/// The point of the edge from a to b nearest to `point`.
qcVector<2> nearestOnEdge(qcVector<2> const& a, qcVector<2> const& b, qcVector<2> const& point)
{
    qcVector<2> const direction = b - a;
    double const t = ((point - a) * direction) / (direction * direction);
    if (!(t > 0))  // also the 0/0 of an edge of no length
        return a;
    if (t >= 1)
        return b;
    return qnInternal::footOnLine(a, direction, point);
}

/// Not inlined: few edges are asked sooner where the way through the index is another function's.
[[gnu::noinline]] qcVector<2> nearestOnAnyEdge(std::vector<qcVector<2>> const& points, bool closed,
                                               qcVector<2> const& point)
{
    double best = std::numeric_limits<double>::infinity();
    qcVector<2> const* nearestFrom = nullptr;
    qcVector<2> const* nearestTo = nullptr;
    qnInternal::forEachEdge(points, closed,
                            [&](std::size_t, qcVector<2> const& from, qcVector<2> const& to) {
                                double const d = qnInternal::segmentDistance(from, to, point);
                                if (d < best) {
                                    best = d;
                                    nearestFrom = &from;
                                    nearestTo = &to;
                                }
                            });
    return nearestFrom ? nearestOnEdge(*nearestFrom, *nearestTo, point) : qcVector<2>();
}

}  // namespace

long qcContour::closestVertexIndex(qcVector<2> const& point) const
{
    checkEmptyContour();
    bool const many = edgeIndex_ || points_.size() > qnInternal::kMaxPlainVertices;
    auto const* const edges = many ? edgeIndex() : nullptr;
    if (edges && qnInternal::isRegularPoint(point))
        return static_cast<long>(qnInternal::nearestVertex(*edges, points_, point));
    return static_cast<long>(qnInternal::nearestVertex(points_, point));
}

qcVector<2> qcContour::closestPoint(qcVector<2> const& point, bool verticesOnly) const
{
    checkEmptyContour();
    if (verticesOnly)
        return points_[static_cast<std::size_t>(qcContour::closestVertexIndex(point))];
    bool const closed = isClosed();
    if (points_.size() > qnInternal::kMaxPlainEdges && qnInternal::isRegularPoint(point))
        if (auto const* const edges = edgeIndex()) {
            auto const k = qnInternal::nearestEdge(*edges, points_, point);
            return nearestOnEdge(qnInternal::edgeStart(points_, closed, k),
                                 qnInternal::edgeEnd(points_, closed, k), point);
        }
    return nearestOnAnyEdge(points_, closed, point);
}

double qcContour::distToPoint(qcVector<2> const& point, bool verticesOnly) const
{
    return qcContour::closestPoint(point, verticesOnly).distance(point);
}
