// Vertices of a contour by position and by direction.
#include <cntr/contour.h>

#include "cntr/internal/contour_caches.h"
#include "cntr/internal/tolerances.h"

#include <qc/core/compare.h>

#include <cmath>
#include <limits>

namespace {

/// Index of the first vertex with the highest score, -1 where none is above the lowest double.
template <class Score>
long highest(std::vector<qcVector<2>> const& points, Score score)
{
    double best = std::numeric_limits<double>::lowest();
    long index = -1;
    for (std::size_t i = 0; i < points.size(); ++i) {
        double const value = score(points[i]);
        if (value > best) {
            best = value;
            index = static_cast<long>(i);
        }
    }
    return index;
}

/// On an axis the coordinate itself decides, however far cosine or sine are from 0.
long farthestAlong(std::vector<qcVector<2>> const& points, double angle)
{
    qcVector<2> const direction(std::cos(angle), std::sin(angle));
    auto const along = [&](double x, double y) {
        return qfRealEq(direction, qcVector<2>(x, y), qnInternal::kSamePoint);
    };
    if (along(1, 0))
        return highest(points, [](qcVector<2> const& p) { return p.x(); });
    if (along(-1, 0))
        return highest(points, [](qcVector<2> const& p) { return -p.x(); });
    if (along(0, 1))
        return highest(points, [](qcVector<2> const& p) { return p.y(); });
    if (along(0, -1))
        return highest(points, [](qcVector<2> const& p) { return -p.y(); });
    return highest(points, [&](qcVector<2> const& p) { return direction * p; });
}

}  // namespace

std::vector<int> qcContour::vertexIndex(qcVector<2> const& point, double tolerance) const
{
    checkEmptyContour();
    if (!(tolerance > 0))
        return {};  // no distance is below it; and a NaN would never be found again
    if (!vertexIndexCache_)
        vertexIndexCache_ = std::make_unique<qc_VertexIndexCache>();
    std::vector<int> found;
    vertexIndexCache_->grid(points_, tolerance).findNear(points_, point, found);
    return found;
}

long qcContour::extremalVertexIndex(qcRadian const& angle) const
{
    checkEmptyContour();
    double const theta = angle.toDouble();
    if (theta != theta)
        return farthestAlong(points_, theta);  // NaN is no key
    if (!extremalVertexCache_)
        extremalVertexCache_ = std::make_unique<qc_ExtremalVertexCache>();
    if (long const* known = extremalVertexCache_->find(theta))
        return *known;
    long const index = farthestAlong(points_, theta);
    extremalVertexCache_->insert(theta, index, cachedVectorSize_);
    return index;
}

qcVector<2> qcContour::extremalVertexPosition(qcRadian const& angle) const
{
    long const index = extremalVertexIndex(angle);
    constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    return index < 0 ? qcVector<2>(kNone, kNone) : points_[static_cast<std::size_t>(index)];
}
