/// \file
/// The least and largest coordinates of many points, several at a time.
#pragma once

#include <qc/core/internal/pair.h>
#include <qc/core/vector.h>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace qnInternal {

/// The extremes of some points, and a sum that is finite only if all of them are.
struct Extremes {
    Pair low;
    Pair high;
    Pair sum{};

    explicit Extremes(Pair first) : low(first), high(first) {}

    void take(Pair point)
    {
        low = smaller(point, low);
        high = larger(point, high);
        sum += point;
    }

    void take(Extremes const& later)
    {
        low = smaller(later.low, low);
        high = larger(later.high, high);
        sum += later.sum;
    }
};

inline bool areFinite(Pair two)
{
    Pair const nothing = two * 0.0;  // NaN for what is not finite
    return nothing[0] == 0 && nothing[1] == 0;
}

/// Whether all of the points with these extremes are finite.
inline bool areFinite(std::vector<qcVector<2>> const& points, Extremes const& extremes)
{
    return areFinite(extremes.sum) ||  // else it may have overflowed
           std::all_of(points.begin(), points.end(),
                       [](qcVector<2> const& point) { return areFinite(pairOf(point)); });
}

/// The extremes of `from` and of `count` points, which alone are in the sum.
inline Extremes extremesFrom(qcVector<2> const& from, qcVector<2> const* points, std::size_t count)
{
    Extremes extremes(pairOf(from));
    for (std::size_t i = 0; i < count; ++i)
        extremes.take(pairOf(points[i]));
    return extremes;
}

/// The extremes of points, of which there is one at least.
inline Extremes extremesOf(std::vector<qcVector<2>> const& points)
{
    // Four at a time, each for itself: a comparison would have to wait for the one before.
    Extremes first(pairOf(points.front()));
    Extremes second = first;
    Extremes third = first;
    Extremes fourth = first;
    std::size_t i = 0;
    for (; i + 4 <= points.size(); i += 4) {
        first.take(pairOf(points[i]));
        second.take(pairOf(points[i + 1]));
        third.take(pairOf(points[i + 2]));
        fourth.take(pairOf(points[i + 3]));
    }
    for (; i < points.size(); ++i)
        first.take(pairOf(points[i]));
    first.take(second);
    third.take(fourth);
    first.take(third);
    return first;
}

}  // namespace qnInternal
