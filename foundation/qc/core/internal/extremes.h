/// \file
/// The least and largest coordinates of many points, several at a time.
#pragma once

#include <qc/core/internal/pair.h>
#include <qc/core/vector.h>

#include <cstddef>
#include <vector>

namespace qnInternal {

/// The extremes of some points, and whether all of them are finite.
struct Extremes {
    Pair low;
    Pair high;
    Pair zeroIfFinite{};  // 0 times each point: NaN once one is not finite

    explicit Extremes(Pair first) : low(first), high(first) {}

    /// Passes over NaN.
    void take(Pair point)
    {
        low = smaller(point, low);
        high = larger(point, high);
        zeroIfFinite *= point;
    }

    /// The same for a point without NaN; spares the processor two copies of it.
    void takeNumbers(Pair point)
    {
        low = smaller(low, point);
        high = larger(high, point);
        zeroIfFinite *= point;
    }

    void takeNumbers(Extremes const& later)
    {
        low = smaller(low, later.low);
        high = larger(high, later.high);
        zeroIfFinite *= later.zeroIfFinite;
    }

    bool areFinite() const { return zeroIfFinite[0] == 0 && zeroIfFinite[1] == 0; }
};

/// The extremes of `from` and of `count` points, right where none is NaN, which they tell.
inline Extremes extremesFrom(qcVector<2> const& from, qcVector<2> const* points, std::size_t count)
{
    Extremes extremes(pairOf(from));
    extremes.zeroIfFinite = pairOf(from) * 0.0;
    for (std::size_t i = 0; i < count; ++i)
        extremes.takeNumbers(pairOf(points[i]));
    return extremes;
}

/// The extremes of points, of which there is one at least. Of zeros any may be one, with its sign.
inline Extremes extremesOf(std::vector<qcVector<2>> const& points)
{
    // Four at a time, each for itself: a comparison would have to wait for the one before.
    Extremes first(pairOf(points.front()));
    Extremes second = first;
    Extremes third = first;
    Extremes fourth = first;
    std::size_t i = 0;
    for (; i + 4 <= points.size(); i += 4) {
        first.takeNumbers(pairOf(points[i]));
        second.takeNumbers(pairOf(points[i + 1]));
        third.takeNumbers(pairOf(points[i + 2]));
        fourth.takeNumbers(pairOf(points[i + 3]));
    }
    for (; i < points.size(); ++i)
        first.takeNumbers(pairOf(points[i]));
    first.takeNumbers(second);
    third.takeNumbers(fourth);
    first.takeNumbers(third);
    if (!first.areFinite()) {
        first = Extremes(pairOf(points.front()));
        for (auto const& point : points)
            first.take(pairOf(point));
    }
    return first;
}

}  // namespace qnInternal
