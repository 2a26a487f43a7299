/// \file
/// Comparison within a tolerance, and the whole number below a double.
#pragma once

#include <qc/core/matrix.h>
#include <qc/core/vector.h>

#include <cmath>
#include <limits>

/// Whether a and b differ by at most eps, absolutely. Equal values pass, infinities too; NaN equals
/// nothing.
inline bool qfRealEq(double a, double b, double eps) noexcept
{
    return a == b || std::fabs(a - b) <= eps;
}

/// Whether both coordinates differ by at most eps, absolutely.
inline bool qfRealEq(qcVector<2> const& a, qcVector<2> const& b, double eps) noexcept
{
    return qfRealEq(a.x(), b.x(), eps) && qfRealEq(a.y(), b.y(), eps);
}

/// Whether all four elements differ by at most eps, absolutely.
inline bool qfRealEq(qcMatrix<2> const& a, qcMatrix<2> const& b, double eps) noexcept
{
    return qfRealEq(a.element(0, 0), b.element(0, 0), eps) &&
           qfRealEq(a.element(0, 1), b.element(0, 1), eps) &&
           qfRealEq(a.element(1, 0), b.element(1, 0), eps) &&
           qfRealEq(a.element(1, 1), b.element(1, 1), eps);
}

/// The largest whole number not above `value`. What `long` cannot hold gives the nearest `long`;
/// NaN gives 0.
inline long qfIFloor(double value) noexcept
{
    double const floored = std::floor(value);
    // -(double)min is a power of two, so this bound is exact where (double)max need not be.
    constexpr double kAbove = -static_cast<double>(std::numeric_limits<long>::min());
    if (floored >= kAbove)
        return std::numeric_limits<long>::max();
    if (floored < -kAbove)
        return std::numeric_limits<long>::min();
    return std::isnan(floored) ? 0L : static_cast<long>(floored);
}
