// The extremes of many points, several at a time.
#include "cntr/internal/box_of_points.h"

#include <qc/core/internal/pair.h>

#include <algorithm>

namespace qnInternal {

namespace {

bool areFinite(Pair two)
{
    Pair const nothing = two - two;
    return nothing[0] == 0 && nothing[1] == 0;
}

bool isFinite(qcVector<2> const& point)
{
    return areFinite(pairOf(point));
}

/// Every fourth point's extremes, and a sum that is finite only if all of them are.
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

}  // namespace

void keepFirstZeros(std::vector<qcVector<2>> const& points, Box& box)
{
    auto const firstZero = [&](double value, auto coordinate) {
        if (value != 0)
            return value;
        return coordinate(*std::find_if(points.begin(), points.end(),
                                        [&](qcVector<2> const& p) { return coordinate(p) == 0; }));
    };
    auto const x = [](qcVector<2> const& p) { return p.x(); };
    auto const y = [](qcVector<2> const& p) { return p.y(); };
    box.min = {firstZero(box.min.x(), x), firstZero(box.min.y(), y)};
    box.max = {firstZero(box.max.x(), x), firstZero(box.max.y(), y)};
}

PointBox boxOfPoints(std::vector<qcVector<2>> const& points)
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
    Box box{{first.low[0], first.low[1]}, {first.high[0], first.high[1]}};
    keepFirstZeros(points, box);
    return {box, areFinite(first.sum) || std::all_of(points.begin(), points.end(), isFinite)};
}

double largestSquaredDistance(std::vector<qcVector<2>> const& points, qcVector<2> const& place)
{
    auto const squares = [&](std::size_t i) {
        return squaredDistances(points[i], points[i + 1], place);
    };
    Pair first{};
    Pair second{};
    std::size_t i = 0;
    for (; i + 4 <= points.size(); i += 4) {
        first = larger(squares(i), first);
        second = larger(squares(i + 2), second);
    }
    first = larger(second, first);
    double largest = std::max(first[0], first[1]);
    for (; i < points.size(); ++i) {
        qcVector<2> const d = points[i] - place;
        largest = d * d > largest ? d * d : largest;
    }
    return largest;
}

}  // namespace qnInternal
