// Simpler shapes around a contour: rectangle, circle, diameter.
#include <cntr/contour.h>

#include "cntr/internal/box.h"
#include "cntr/internal/box_of_points.h"
#include "cntr/internal/contour_caches.h"
#include "cntr/internal/edge_index.h"
#include "cntr/internal/farthest_pair.h"

#include <cmath>

namespace {

/// The box of all points, each seen through `map`.
template <class Map>
qnInternal::Box boxOfMapped(std::vector<qcVector<2>> const& points, Map map)
{
    auto box = qnInternal::boxOf(map(points.front()));
    for (auto const& point : points)
        qnInternal::enclose(box, map(point));
    return box;
}

/// Through enclose(), which keeps exact corners where corner and size would round.
qcRect toRect(qnInternal::Box const& box)
{
    return qcRect(box.min, qcVector<2>()).enclose(qcRect(box.max, qcVector<2>()));
}

/// What the index, where there is one, knows already.
qnInternal::PointBox extentOf(std::vector<qcVector<2>> const& points,
                              qnInternal::EdgeIndex const* index)
{
    return index && index->regular() ? qnInternal::boxOfPoints(points, index->rootBox())
                                     : qnInternal::boxOfPoints(points);
}

qnInternal::FarthestPair farthestOfMany(std::vector<qcVector<2>> const& points,
                                        qnInternal::EdgeIndex const* index)
{
    return index ? qnInternal::farthestPair(points, *index) : qnInternal::farthestPair(points);
}

}  // namespace

qcContour::Bounds const& qcContour::bounds() const
{
    if (!bounds_) {
        auto const extent = extentOf(points_, edgeIndex_.get());
        bounds_ = Bounds{extent.box.min, extent.box.max, extent.finite};
    }
    return *bounds_;
}

qcRect qcContour::encloseRect(qcXform<2> const& xform) const
{
    checkEmptyContour();
    if (qnInternal::isIdentity(xform))  // the one that is asked most has a place of its own
        return toRect({bounds().min, bounds().max});
    auto const compute = [&] {
        return toRect(boxOfMapped(points_, [&](qcVector<2> const& p) { return xform * p; }));
    };
    return qnInternal::cachedRect(encloseRectCache_, xform, cachedVectorSize_, compute, [] {});
}

qcContour::Circle const& qcContour::circle(qcContourDefs::DiameterMode mode) const
{
    if (mode != qcContourDefs::eFarthestPair && mode != qcContourDefs::eFromFirstPoint)
        throw qcContourDefs::BadParams(L"diameterMode is not one of the valid enums");
    auto& circle = encloseCircles_[static_cast<std::size_t>(mode)];
    if (!circle)
        circle = mode == qcContourDefs::eFarthestPair ? farthestPairCircle() : firstPointCircle();
    return *circle;
}

qcCircle qcContour::encloseCircle(qcContourDefs::DiameterMode mode) const
{
    Circle const& kept = circle(mode);
    return qcCircle(kept.center, kept.radius);
}

double qcContour::diameter(qcContourDefs::DiameterMode mode) const
{
    return 2.0 * circle(mode).radius;
}

qcContour::Circle qcContour::farthestPairCircle() const
{
    auto const pair = points_.size() <= qnInternal::kMaxPlainEdges
                          ? qnInternal::farthestPair(points_)
                          : farthestOfMany(points_, edgeIndexInAnyOrder().get());
    Circle circle;
    if (pair.distance > 0)
        circle = {(points_[pair.first] + points_[pair.second]) * 0.5, pair.distance * 0.5};
    return circle;
}

qcContour::Circle qcContour::firstPointCircle() const
{
    Circle circle;
    if (points_.empty())
        return circle;
    circle.center = points_.front();
    // The root of the largest square is the largest of the rounded roots: rounding keeps their order.
    circle.radius = std::sqrt(qnInternal::largestSquaredDistance(points_, circle.center));
    return circle;
}
