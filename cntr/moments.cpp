// Areas, centres of mass and second moments of polygons.
#include <cntr/moments.h>

#include "cntr/internal/edge_walk.h"
#include "cntr/internal/positions.h"
#include "cntr/internal/tolerances.h"

#include <cmath>
#include <numeric>

namespace {

using Points = std::vector<qcVector<2>>;

/// Twice the signed area of the polygon.
double doubledArea(Points const& points)
{
    double sum = 0;
    qnInternal::forEachEdge(points, true,
                            [&](std::size_t, qcVector<2> const& from, qcVector<2> const& to) {
                                sum += from.cross(to);
                            });
    return sum;
}

}  // namespace

double qf_Area(Points const& points)
{
    return std::fabs(doubledArea(points) * 0.5);
}

double qf_Area(std::vector<qcEdgelet> const& edgelets)
{
    return edgelets.size() < 3 ? 0.0 : qf_Area(qnInternal::positions(edgelets));
}

qcVector<2> qnContour::centerOfMass(Points const& points)
{
    if (points.size() < 3)
        return {};
    double total = 0;
    qcVector<2> sum;
    qnInternal::forEachEdge(
        points, true, [&](std::size_t, qcVector<2> const& from, qcVector<2> const& to) {
            double const area = from.cross(to);
            if (!(std::fabs(area) > qnInternal::kFlatTriangle))
                return;
            total += area;
            sum += (from + to) * area;  // three times the centroid of the triangle with the origin
        });
    if (!(std::fabs(total) > qnInternal::kFlatPolygon))
        return {};
    return sum * (1 / (3 * total));
}

qcVector<2> qf_CenterOfMass(Points const& points)
{
    return qnContour::centerOfMass(points);
}

qcVector<2> qf_CenterOfMass(std::vector<qcEdgelet> const& edgelets)
{
    return qnContour::centerOfMass(qnInternal::positions(edgelets));
}

double qf_StdDev(std::vector<double> const& values)
{
    if (values.empty())
        return 0.0;
    auto const count = static_cast<double>(values.size());
    double const mean = std::accumulate(values.begin(), values.end(), 0.0) / count;
    double squares = 0;
    for (double const value : values)
        squares += (value - mean) * (value - mean);
    return std::sqrt(squares / count);
}
