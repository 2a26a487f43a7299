// A contour mapped through a transform, as a polygon, and on a tablet.
#include <cntr/contour.h>

#include "cntr/internal/edge_walk.h"
#include "cntr/internal/mapped_points.h"
#include "cntr/internal/tolerances.h"

#include <qc/core/compare.h>

#include <utility>

namespace {

std::vector<qcVector<2>> verticesOf(qcPolygon const& polygon)
{
    std::vector<qcVector<2>> points;
    points.reserve(static_cast<std::size_t>(polygon.size()));
    for (int i = 0; i < polygon.size(); ++i)
        points.push_back(polygon[i]);
    return points;
}

bool endsMeet(qcPolygon const& polygon)
{
    return polygon.size() == 0 ||
           qfRealEq(polygon[0], polygon[polygon.size() - 1], qnInternal::kSamePoint);
}

qcPair<double> toPair(qcVector<2> const& point)
{
    return {point.x(), point.y()};
}

}  // namespace

qcContour::qcContour(qcPolygon const& polygon, unsigned long label)
    : qcContour(verticesOf(polygon), endsMeet(polygon), label)
{
}

void qcContour::map(qcXform<2> const& xform, qcContour& result) const
{
    auto mapped = qnInternal::mappedPoints(points_, xform);
    bool const closed = isClosed();
    // The contour part alone, whatever `result` is: as if a new contour were assigned to it.
    result.dropCaches();
    result.convexHull_ = Hull();
    result.closed_ = closed;
    result.label_ = label_;
    result.cachedVectorSize_ = kCachedVectorSize;
    result.points_ = std::move(mapped);
}

qcPolygon qcContour::polygon()
{
    return toPolygon();
}

qcPolygon qcContour::toPolygon() const
{
    auto vertices = points_;
    if (isClosed() && !vertices.empty())
        vertices.push_back(points_.front());
    return qcPolygon(vertices, static_cast<qcPolygon::PolyFillMode>(0));
}

void qcContour::draw(qcUITablet& tablet, qcContourDefs::DrawMode, qcColor const& color,
                     qcUITablet::Layers const& layer) const
{
    qnInternal::forEachEdge(points_, isClosed(),
                            [&](std::size_t, qcVector<2> const& from, qcVector<2> const& to) {
                                tablet.drawLineSeg(toPair(from), toPair(to), color, layer);
                            });
}
