/// \file
/// Deciding arithmetic on lines and segments in plain numbers. The shape classes and the hot loops
/// over many points share it, so that both come to the same bits.
#pragma once

#include <qc/core/vector.h>

#include <cmath>
#include <limits>

namespace qnInternal {

/// Two directions are parallel up to this sine of the angle between them: far above the rounding of
/// a direction taken from image coordinates (about 1e-13), far below any angle that is measured.
inline constexpr double kParallelSine = 1e-10;

/// Whether directions d1 and d2 are parallel; the zero vector is parallel to every direction.
inline bool areParallel(qcVector<2> const& d1, qcVector<2> const& d2) noexcept
{
    return std::fabs(d1.cross(d2)) <= kParallelSine * d1.len() * d2.len();
}

/// Foot of the perpendicular from x on the line through p along d; p where d is zero.
inline qcVector<2> footOnLine(qcVector<2> const& p, qcVector<2> const& d,
                              qcVector<2> const& x) noexcept
{
    double const dd = d * d;
    return dd == 0.0 ? p : p + d * (((x - p) * d) / dd);
}

/// Distance of x from the line through p along d; from p where d is zero.
inline double lineDistance(qcVector<2> const& p, qcVector<2> const& d,
                           qcVector<2> const& x) noexcept
{
    double const length = d.len();
    return length == 0.0 ? x.distance(p) : std::fabs(d.cross(x - p)) / length;
}

/// Crossing of the line through p along d with the line through q along e. It is total: where
/// d x e is exactly 0 it is the foot of q on the first line.
inline qcVector<2> intersectLines(qcVector<2> const& p, qcVector<2> const& d, qcVector<2> const& q,
                                  qcVector<2> const& e) noexcept
{
    double const denominator = d.cross(e);
    if (denominator == 0.0)
        return footOnLine(p, d, q);
    return p + d * ((q - p).cross(e) / denominator);
}

/// Shortest distance of x from the segment from a to b, which may be a single point.
inline double segmentDistance(qcVector<2> const& a, qcVector<2> const& b,
                              qcVector<2> const& x) noexcept
{
    qcVector<2> const ab = b - a;
    qcVector<2> const ax = x - a;
    // The foot is along / squared of the way from a to b. To divide took a quarter of the time of a point
    // and few edges (bench/nearest_bench.cpp). Shares above kShare are not rounded to 0.
    constexpr double kShare = 1e-300;
    double const along = ax * ab;
    double const squared = ab * ab;
    if (!(along > 0.0))  // also NaN
        return ax.len();
    if (along >= squared && squared <= std::numeric_limits<double>::max())
        return x.distance(b);
    if (!(along > kShare * squared) && !(along / squared > 0.0))  // also NaN
        return ax.len();
    return std::fabs(ab.cross(ax)) / ab.len();
}

}  // namespace qnInternal
