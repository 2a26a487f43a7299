// The extremes of many points, several at a time.
#include "cntr/internal/box_of_points.h"

#include <qc/core/internal/pair.h>

#include <algorithm>

namespace qnInternal {

namespace {

/// The first of equal numbers counts, and 0 equals -0: as if the points had come one by one.
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

}  // namespace

PointBox boxOfPoints(std::vector<qcVector<2>> const& points)
{
    Extremes const ends = extremesOf(points);
    Box box{{ends.low[0], ends.low[1]}, {ends.high[0], ends.high[1]}};
    keepFirstZeros(points, box);
    return {box, ends.areFinite()};
}

PointBox boxOfPoints(std::vector<qcVector<2>> const& points, Box const& known)
{
    Box box = known;
    keepFirstZeros(points, box);
    return {box, true};
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
