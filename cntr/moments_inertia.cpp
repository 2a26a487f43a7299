// Inertia records: of a triangle, of a polygon as a fan of triangles, of figures put together.
#include <cntr/moments.h>

#include "cntr/internal/edge_walk.h"
#include "cntr/internal/tolerances.h"

#include <qc/core/internal/pair.h>
#include <qc/core/internal/plane.h>

#include <cmath>
#include <optional>

namespace {

using Points = std::vector<qcVector<2>>;
using qnInternal::Pair;

/// Moments of a triangle (-u, 0), (v, 0), (0, h) about its centroid, in that frame.
struct LocalMoments {
    double area;
    qcVector<2> centroid;
    double xx;
    double yy;
    double xy;
};

LocalMoments localMoments(double u, double v, double h)
{
    constexpr double kThird = 1.0 / 3.0;
    constexpr double kTwelfth = 1.0 / 12.0;
    constexpr double kTwentyFourth = 1.0 / 24.0;
    double const area = (u + v) * h * 0.5;
    double const cx = (v - u) * kThird;
    double const cy = h * kThird;
    return {area,
            {cx, cy},
            (u * u * u + v * v * v) * h * kTwelfth - cx * cx * area,
            (u + v) * (h * h * h) * kTwelfth - cy * cy * area,
            (v * v - u * u) * (h * h) * kTwentyFourth - cx * cy * area};
}

/// The local moments seen in a frame turned by the angle of `direction` and moved to `foot`.
qc_InertiaData toWorld(LocalMoments const& local, qcVector<2> const& foot,
                       qcVector<2> const& direction)
{
    double const theta = direction.angle().toDouble();
    double const c = std::cos(theta);
    double const s = std::sin(theta);
    qcVector<2> const center = foot + qcVector<2>(c * local.centroid.x() - s * local.centroid.y(),
                                                  s * local.centroid.x() + c * local.centroid.y());
    double const m00 = c * c * local.xx - 2 * c * s * local.xy + s * s * local.yy;
    double const m11 = s * s * local.xx + 2 * c * s * local.xy + c * c * local.yy;
    double const m01 = c * s * (local.xx - local.yy) + (c * c - s * s) * local.xy;
    return qc_InertiaData(local.area, center, qcMatrix<2>(m00, m01, m01, m11));
}

/// The record of a triangle, through a frame on the side that the opposite vertex projects into.
qc_InertiaData inertiaDataTriangle(qcVector<2> p1, qcVector<2> p2, qcVector<2> p3)
{
    // The vertex opposite the longest side projects inside it, so two turns always do.
    for (int turn = 0; turn < 2; ++turn) {
        double const toLine = qnInternal::lineDistance(p1, p2 - p1, p3);
        if (!(toLine < qnInternal::segmentDistance(p1, p2, p3) - qnInternal::kFootInside))
            break;
        qcVector<2> const first = p1;
        p1 = p2;
        p2 = p3;
        p3 = first;
    }
    qcVector<2> const foot = qnInternal::footOnLine(p1, p2 - p1, p3);
    auto local = localMoments(foot.distance(p1), foot.distance(p2), foot.distance(p3));
    if ((p2 - p1).cross(p3 - p1) < 0) {  // the apex lies on the other side
        local.area = -local.area;
        local.centroid.y(-local.centroid.y());
        local.xy = -local.xy;
    }
    return toWorld(local, foot, p2 - p1);
}

/// x and y of two vertices from a reference point.
struct TwoPoints {
    Pair x;
    Pair y;
};

TwoPoints twoPoints(qcVector<2> const& first, qcVector<2> const& second,
                    qcVector<2> const& reference)
{
    return {Pair{first.x(), second.x()} - reference.x(),
            Pair{first.y(), second.y()} - reference.y()};
}

/// Calls visit(from, to) for two edges at a time: one of the first half of the polygon and one of the
/// second, of which an odd edge in the end has none.
template <class Visit>
void forTwoEdges(Points const& points, qcVector<2> const& reference, Visit visit)
{
    std::size_t const half = points.size() / 2;
    TwoPoints from = twoPoints(points[0], points[half], reference);
    for (std::size_t i = 1; i <= half; ++i) {
        auto const& second = half + i < points.size() ? points[half + i] : points.front();
        TwoPoints const to = twoPoints(points[i], second, reference);
        visit(from, to);
        from = to;
    }
    if (points.size() % 2 == 1)
        visit(twoPoints(points.back(), reference, reference),
              twoPoints(points.front(), reference, reference));
}

/// Sums over the edges, each with the doubled area of its triangle with a reference point.
struct FirstSums {
    double doubledArea;
    double doubledAreas;  // without signs
    qcVector<2> moment;   // six times the first moments
};

double sum(Pair pair)
{
    return pair[0] + pair[1];
}

FirstSums firstSums(Points const& points, qcVector<2> const& reference)
{
    Pair areas{};
    Pair absolute{};
    Pair x{};
    Pair y{};
    forTwoEdges(points, reference, [&](TwoPoints const& from, TwoPoints const& to) {
        Pair const area = from.x * to.y - from.y * to.x;
        areas += area;
        absolute += qnInternal::larger(area, -area);
        x += (from.x + to.x) * area;
        y += (from.y + to.y) * area;
    });
    return {sum(areas), sum(absolute), {sum(x), sum(y)}};
}

/// The record by sums over the edges: about the first vertex for the centre, then about the centre,
/// so that nothing large is subtracted. Nothing where the polygon is so small, or its parts cancel so
/// far, that the thresholds of the fan have a say. Formula: Green's theorem for x^2, x y and y^2.
std::optional<qc_InertiaData> bySums(Points const& points)
{
    auto const first = firstSums(points, points.front());
    double const area = std::fabs(first.doubledArea);
    if (!(area > qnInternal::kSmallestSummed &&
          area > qnInternal::kSummedShare * first.doubledAreas))
        return std::nullopt;
    qcVector<2> const center = points.front() + first.moment * (1 / (3 * first.doubledArea));
    Pair sumXX{};
    Pair sumXY{};
    Pair sumYY{};
    forTwoEdges(points, center, [&](TwoPoints const& from, TwoPoints const& to) {
        Pair const x = from.x + to.x;
        Pair const y = from.y + to.y;
        Pair const doubled = from.x * to.y - from.y * to.x;
        sumXX += (x * x - from.x * to.x) * doubled;
        sumXY += (x * y + from.x * from.y + to.x * to.y) * doubled;
        sumYY += (y * y - from.y * to.y) * doubled;
    });
    double const xx = sum(sumXX);
    double const xy = sum(sumXY);
    double const yy = sum(sumYY);
    double const scale = (first.doubledArea < 0 ? -1.0 : 1.0) / 12;
    return qc_InertiaData(first.doubledArea * 0.5, center,
                          qcMatrix<2>(xx * scale, xy * scale / 2, xy * scale / 2, yy * scale));
}

/// The triangles that join each edge to the centre of mass.
std::vector<qc_InertiaData> fan(Points const& points)
{
    std::vector<qc_InertiaData> triangles;
    triangles.reserve(points.size());
    qcVector<2> const apex = qnContour::centerOfMass(points);
    qnInternal::forEachEdge(points, true,
                            [&](std::size_t, qcVector<2> const& from, qcVector<2> const& to) {
                                triangles.push_back(inertiaDataTriangle(apex, from, to));
                            });
    return triangles;
}

double totalArea(std::vector<qc_InertiaData> const& triangles)
{
    double sum = 0;
    for (auto const& triangle : triangles)
        sum += triangle.area();
    return sum;
}

/// The triangles added up, large ones first: adding a hole needs a total larger than it.
qc_InertiaData combined(std::vector<qc_InertiaData> const& triangles)
{
    double const mean = totalArea(triangles) / static_cast<double>(triangles.size());
    double const small = mean > 0 ? qnInternal::kSmallFanTriangle : -qnInternal::kSmallFanTriangle;
    qc_InertiaData total;
    std::vector<bool> used(triangles.size(), false);
    auto const take = [&](auto wanted) {
        for (std::size_t i = 0; i < triangles.size(); ++i)
            if (!used[i] && wanted(triangles[i].area())) {
                used[i] = true;
                total = total + triangles[i];
            }
    };
    take([&](double area) { return area > mean || (mean < 0 && area < mean); });
    take([&](double area) { return area > small || (small < 0 && area < small); });
    take([](double) { return true; });
    return total;
}

}  // namespace

qc_InertiaData qc_InertiaData::operator+(qc_InertiaData const& other) const
{
    if (area_ == 0)
        return other;
    if (other.area_ == 0)
        return *this;
    double const total = area_ + other.area_;
    qcVector<2> center;
    if (std::fabs(total) > qnInternal::kCancelledRecords)
        center = (centerOfMass_ * area_ + other.centerOfMass_ * other.area_) * (1 / total);
    qcVector<2> const shift = center - centerOfMass_;
    qcVector<2> const otherShift = center - other.centerOfMass_;

    double weight = area_;
    double otherWeight = other.area_;
    double sign = 1;
    double otherSign = 1;
    double const product = area_ * other.area_;
    if (product > 0) {
        weight = std::fabs(weight);
        otherWeight = std::fabs(otherWeight);
    } else if (product < 0) {
        (area_ > other.area_ ? otherSign : sign) = -1;
    }
    auto const element = [&](int row, int column, double moved, double otherMoved) {
        return sign * inertiaMatrix_.element(row, column) +
               otherSign * other.inertiaMatrix_.element(row, column) + moved + otherMoved;
    };
    double const m00 = element(0, 0, weight * (shift.x() * shift.x()),
                               otherWeight * (otherShift.x() * otherShift.x()));
    double const m01 = element(0, 1, weight * shift.x() * shift.y(),
                               otherWeight * otherShift.x() * otherShift.y());
    double const m11 = element(1, 1, weight * (shift.y() * shift.y()),
                               otherWeight * (otherShift.y() * otherShift.y()));
    return qc_InertiaData(total, center, qcMatrix<2>(m00, m01, m01, m11));
}

qc_InertiaData qf_InertiaDataPolygon(Points const& points)
{
    if (points.size() < 3)
        return qc_InertiaData();
    if (auto const record = bySums(points))
        return *record;
    auto const triangles = fan(points);
    if (!(totalArea(triangles) < 0))
        return combined(triangles);
    // Turned around, so that the parts that lie outside come as negative areas to a positive total.
    auto const reversed = combined(fan(Points(points.rbegin(), points.rend())));
    return qc_InertiaData(-reversed.area(), reversed.centerOfMass(), reversed.inertiaMatrix());
}
