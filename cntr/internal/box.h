/// Axis-aligned boxes in plain numbers, with the same rules as qcRect.
#pragma once

#include <qc/core/internal/pair.h>
#include <qc/core/vector.h>

#include <algorithm>
#include <cmath>

namespace qnInternal {

struct Box {
    qcVector<2> min;
    qcVector<2> max;
};

/// The box of no size at a point.
inline Box boxOf(qcVector<2> const& point)
{
    return {point, point};
}

/// Grows `box` to hold `point`. A coordinate that is NaN changes nothing.
inline void enclose(Box& box, qcVector<2> const& point)
{
    box.min = {point.x() < box.min.x() ? point.x() : box.min.x(),
               point.y() < box.min.y() ? point.y() : box.min.y()};
    box.max = {point.x() > box.max.x() ? point.x() : box.max.x(),
               point.y() > box.max.y() ? point.y() : box.max.y()};
}

/// boxOf() the first point after enclose() of the second.
inline Box boxOfBoth(qcVector<2> const& first, qcVector<2> const& second)
{
    Pair const low = smaller(pairOf(second), pairOf(first));
    Pair const high = larger(pairOf(second), pairOf(first));
    return {{low[0], low[1]}, {high[0], high[1]}};
}

/// Whether closed boxes share a point: touching ones do.
inline bool overlap(Box const& a, Box const& b)
{
    return (bitsOf(pairOf(a.max) >= pairOf(b.min)) & ~bitsOf(pairOf(a.min) > pairOf(b.max))) == 3;
}

/// Whether a point lies in a closed box; one with a NaN never does.
inline bool holds(Box const& box, qcVector<2> const& point)
{
    return box.min.x() <= point.x() && point.x() <= box.max.x() && box.min.y() <= point.y() &&
           point.y() <= box.max.y();
}

/// The largest absolute coordinate of the corners.
inline double largestCoordinate(Box const& box)
{
    return std::max({std::fabs(box.min.x()), std::fabs(box.min.y()), std::fabs(box.max.x()),
                     std::fabs(box.max.y())});
}

}  // namespace qnInternal
