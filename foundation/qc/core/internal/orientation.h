/// \file
/// On which side of a line a point lies, decided exactly.
#pragma once

#include <qc/core/vector.h>

#include <cmath>

namespace qnInternal {

/// A determinant of coordinate differences, of two products, has the sign it seems to have where it
/// is above this share of the sum of their sizes: three roundings (a difference, a product, the last
/// difference), each half of 2^-52 at most; the second term covers their squares.
inline constexpr double kSideRounding = (3.0 + 16.0 * 0x1p-53) * 0x1p-53;

/// As orientation() below, without a quick answer where rounding cannot matter.
int exactOrientation(qcVector<2> const& a, qcVector<2> const& b, qcVector<2> const& c) noexcept;

/// The sign of (b - a) x (c - a): 1 where c lies left of the way from a to b (y up), -1 right of
/// it, 0 on the line. Exact for finite coordinates unless a product over- or underflows.
inline int orientation(qcVector<2> const& a, qcVector<2> const& b, qcVector<2> const& c) noexcept
{
    double const left = (b.x() - a.x()) * (c.y() - a.y());
    double const right = (b.y() - a.y()) * (c.x() - a.x());
    double const determinant = left - right;
    if (std::fabs(determinant) > kSideRounding * (std::fabs(left) + std::fabs(right)))
        return determinant > 0.0 ? 1 : -1;
    return exactOrientation(a, b, c);
}

}  // namespace qnInternal
