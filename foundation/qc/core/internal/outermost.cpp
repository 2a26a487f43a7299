// The outermost points in eight directions, two points at a time.
#include <qc/core/internal/outermost.h>
#include <qc/core/internal/pair.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace qnInternal {

namespace {

using Points = std::vector<qcVector<2>>;

/// How far points lie along x, y, x + y and x - y: the halves are two points, or two such axes.
struct Along {
    Pair x;
    Pair y;
    Pair sum;
    Pair difference;
};

Along along(qcVector<2> const& a, qcVector<2> const& b)
{
    Pair const x{a.x(), b.x()};
    Pair const y{a.y(), b.y()};
    return {x, y, x + y, x - y};
}

/// The ends of a set of points along the four axes.
struct Ends {
    Pair lowAxes;        // x, y
    Pair highAxes;       // x, y
    Pair lowDiagonals;   // x + y, x - y
    Pair highDiagonals;  // x + y, x - y
};

/// The lower, and the larger, halves of two pairs.
Pair lowHalves(Pair a, Pair b)
{
    return smaller(Pair{a[0], b[0]}, Pair{a[1], b[1]});
}

Pair highHalves(Pair a, Pair b)
{
    return larger(Pair{a[0], b[0]}, Pair{a[1], b[1]});
}

/// The ends of a block of points, and the sum of all its coordinates.
Ends endsOf(qcVector<2> const* points, Pair& total)
{
    Along low = along(points[0], points[1]);
    Along high = low;
    total += low.sum;
    for (std::size_t i = 2; i < kPointsPerBox; i += 2) {
        Along const next = along(points[i], points[i + 1]);
        low = {smaller(next.x, low.x), smaller(next.y, low.y), smaller(next.sum, low.sum),
               smaller(next.difference, low.difference)};
        high = {larger(next.x, high.x), larger(next.y, high.y), larger(next.sum, high.sum),
                larger(next.difference, high.difference)};
        total += next.sum;
    }
    return {lowHalves(low.x, low.y), highHalves(high.x, high.y), lowHalves(low.sum, low.difference),
            highHalves(high.sum, high.difference)};
}

/// The furthest block in two directions: how far it reaches and its number, which a double holds.
struct Furthest {
    Pair reach;
    Pair block{};

    void take(PairMask further, Pair candidate, double number)
    {
        reach = further ? candidate : reach;
        block = further ? both(number) : block;
    }
};

}  // namespace

bool findOutermost(Points const& points, Outermost& found)
{
    std::size_t const count = (points.size() + kPointsPerBox - 1) / kPointsPerBox;
    std::size_t const lastStart = points.size() - kPointsPerBox;
    auto const startOf = [&](std::size_t block) {
        return std::min(block * kPointsPerBox, lastStart);
    };
    found.boxes.resize(count);
    Pair total{};
    Pair const none = both(std::numeric_limits<double>::infinity());
    Furthest lowAxes{none}, highAxes{-none}, lowDiagonals{none}, highDiagonals{-none};
    for (std::size_t block = 0; block < count; ++block) {
        Ends const ends = endsOf(points.data() + startOf(block), total);
        found.boxes[block] = {{ends.lowAxes[0], ends.lowAxes[1]},
                              {ends.highAxes[0], ends.highAxes[1]}};
        auto const number = static_cast<double>(block);
        lowAxes.take(ends.lowAxes < lowAxes.reach, ends.lowAxes, number);
        highAxes.take(ends.highAxes > highAxes.reach, ends.highAxes, number);
        lowDiagonals.take(ends.lowDiagonals < lowDiagonals.reach, ends.lowDiagonals, number);
        highDiagonals.take(ends.highDiagonals > highDiagonals.reach, ends.highDiagonals, number);
    }
    // A coordinate that is not finite shows in the sum; large ones may overflow it.
    if (!std::isfinite(total[0] + total[1]) &&
        !std::all_of(points.begin(), points.end(), [](qcVector<2> const& p) {
            return std::isfinite(p.x()) && std::isfinite(p.y());
        }))
        return false;
    auto const corner = [&](Furthest const& furthest, int half, qcVector<2> const& axis) {
        auto const* at = points.data() + startOf(static_cast<std::size_t>(furthest.block[half]));
        return *std::find_if(at, at + kPointsPerBox - 1, [&](qcVector<2> const& p) {
            return axis * p == furthest.reach[half];
        });
    };
    qcVector<2> const x(1, 0), y(0, 1), sum(1, 1), difference(1, -1);
    found.corners = {corner(lowAxes, 0, x),  corner(lowDiagonals, 0, sum),
                     corner(lowAxes, 1, y),  corner(highDiagonals, 1, difference),
                     corner(highAxes, 0, x), corner(highDiagonals, 0, sum),
                     corner(highAxes, 1, y), corner(lowDiagonals, 1, difference)};
    return true;
}

}  // namespace qnInternal
