// Convex hull against a hull found point by point in exact arithmetic, on points in any order.
#include "tests/support/rounds.h"

#include <qc/core/convex_hull.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>
#include <limits>
#include <random>
#include <utility>
#include <vector>

namespace {

using Points = std::vector<qcVector<2>>;
__extension__ using Whole = __int128;
constexpr double kInf = std::numeric_limits<double>::infinity();

/// Sign of (b - a) x (c - a) for coordinates that are whole multiples of `unit`, below 2^60 of it.
int exactSide(qcVector<2> const& a, qcVector<2> const& b, qcVector<2> const& c, double unit)
{
    auto const whole = [unit](double v) { return static_cast<Whole>(v / unit); };
    auto const cross = (whole(b.x()) - whole(a.x())) * (whole(c.y()) - whole(a.y())) -
                       (whole(b.y()) - whole(a.y())) * (whole(c.x()) - whole(a.x()));
    return (cross > 0) - (cross < 0);
}

/// Walks around the points: the next vertex is the one that has no point to its right; of several
/// on one line the furthest.
Points hullByWalking(Points const& points, double unit)
{
    if (points.empty())
        return {};
    auto const less = [](qcVector<2> const& a, qcVector<2> const& b) {
        return a.x() < b.x() || (a.x() == b.x() && a.y() < b.y());
    };
    Points hull{*std::min_element(points.begin(), points.end(), less)};
    for (;;) {
        qcVector<2> const from = hull.back();
        qcVector<2> next = from;
        for (auto const& p : points) {
            int const side = next == from ? -1 : exactSide(from, next, p, unit);
            bool const further = ((p - from) / unit).len() > ((next - from) / unit).len();
            if (p != from && (side < 0 || (side == 0 && further)))
                next = p;
        }
        if (next == from || next == hull.front())
            return hull;
        hull.push_back(next);
    }
}

Points hullOf(Points const& points)
{
    Points hull;
    qfConvexHull(points, hull);
    return hull;
}

}  // namespace

TEST(ConvexHull, GivesTheNamedHulls)
{
    std::pair<Points, Points> const cases[] = {
        // clang-format off
        {{{2, 3}, {2, 3}, {2, 3}}, {{2, 3}}},
        {{{1, 5}, {1, -2}, {1, 0}}, {{1, -2}, {1, 5}}},
        {{{0, 4}, {5, -9}, {0, 1}, {7, 2}}, {{0, 1}, {5, -9}, {7, 2}, {0, 4}}},
        {{{0, 0}, {kInf, 1}, {1, std::nan("")}, {1, 0}, {0, 1}}, {{0, 0}, {1, 0}, {0, 1}}},
        // The largest doubles, and a hair above their diagonal; the smallest.
        {{{1, 2}, {2, 1}, {-1.7e308, -1.7e308}, {1.7e308, -1.7e308}, {1.7e308, 1.7e308}, {0, 0}},
         {{-1.7e308, -1.7e308}, {1.7e308, -1.7e308}, {1.7e308, 1.7e308}, {1, 2}}},
        {{{0, 0}, {5e-324, 0}, {1e-323, 0}, {5e-324, 5e-324}, {0, 1e-323}},
         {{0, 0}, {1e-323, 0}, {0, 1e-323}}},
        // clang-format on
    };
    for (auto const& c : cases) {
        Points same = c.first;
        EXPECT_EQ(hullOf(c.first), c.second);
        for (int i = 0; i < 20; ++i)  // so many points go another way
            same.insert(same.end(), c.first.begin(), c.first.end());
        qfConvexHull(same, same);
        EXPECT_EQ(same, c.second);
    }
}

TEST(ConvexHull, IsThatOfFewPointsWhereSizesAreTooFarApartToBeExact)
{
    Points const few{{-1e27, 0.125}, {0, -1.125}, {4e258, -0.25},
                     {4e304, -0.5},  {0, 1},      {1e300, 0}};
    Points many = few;
    many.insert(many.end(), 20, few.back());
    EXPECT_EQ(hullOf(many), hullOf(few));
}

TEST(ConvexHull, TakesTheFirstOfEqualPoints)
{
    Points points{{-1, -0.0}, {-0.0, -1}, {1, -0.0}, {-0.0, 1}};
    Points const later{{-1, 0}, {0, -1}, {1, 0}, {0, 1}};
    for (int i = 0; i < 20; ++i) {
        points.insert(points.end(), later.begin(), later.end());
        for (auto const& vertex : hullOf(points))
            EXPECT_TRUE(std::signbit(vertex.x() == 0 ? vertex.x() : vertex.y())) << i;
    }
}

TEST(ConvexHull, IsExactOnAlmostCollinearPoints)
{
    std::mt19937_64 random(11);
    struct {
        char const* name;
        double unit;
        unsigned long columns, spread;
        double offset;
    } const cases[] = {
        {"coarse grid with repeats", 1.0, 6, 6, 0.0},
        {"pixels", 1.0, 2000, 2000, 0.0},
        {"a hair around the diagonal", 0x1p-52, 1UL << 50, 2, 0.5},
        {"the same far out", 0x1p-22, 1UL << 20, 2, 1073741824.0},
        {"tiny", 0x1p-900, 1UL << 50, 2, 0.0},
        {"huge", 0x1p+900, 1UL << 50, 2, 0.0},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        for (int round = 0; round < qnTest::rounds(200); ++round) {
            Points points;
            for (int i = 0; i < 3 + round % 40; ++i) {
                auto const along = static_cast<double>(random() % c.columns);
                auto const off = static_cast<double>(random() % c.spread);
                bool const grid = c.columns == c.spread;
                points.emplace_back(c.offset + along * c.unit,
                                    c.offset + (grid ? off : along + off) * c.unit);
            }
            ASSERT_EQ(hullOf(points), hullByWalking(points, c.unit)) << "round " << round;
        }
    }
}

TEST(ConvexHull, LeavesOutAndSortsNoVertexAway)
{
    std::mt19937_64 random(12);
    using Vector = qcVector<2>;
    std::pair<char const*, std::function<Vector(double)>> const shapes[] = {
        {"circle", [](double t) { return Vector(1e6, qcRadian(6.283 * t)); }},
        {"star",
         [](double t) { return Vector(1e6 + 2e5 * std::cos(50 * t), qcRadian(6.283 * t)); }},
        {"spiral", [](double t) { return Vector(1e6 * t, qcRadian(60 * t)); }},
        {"comb", [](double t) { return Vector(1e5 * t, 1e5 * std::fabs(std::sin(80 * t))); }},
        {"organ pipes", [](double t) { return Vector(std::fabs(t - 0.4), t * t) * 1e6; }},
        {"grid", [](double t) { return Vector(std::fmod(300 * t, 15), 20 * t); }},
        {"far from many", [](double t) { return Vector(t < 0.01 ? 1e9 : 1e3, qcRadian(4e4 * t)); }},
        {"cloud",
         [](double t) { return Vector(std::fmod(2e6 * t, 4e3), std::fmod(3e6 * t, 4e3)); }},
        {"slanted line", [](double t) { return Vector(3e5, -1e5) * std::floor(60 * t); }},
    };
    for (int round = 0; round < 400; ++round) {
        auto const& shape = shapes[static_cast<std::size_t>(round) % std::size(shapes)];
        double const unit = std::ldexp(1.0, round % 3 == 0 ? round * 4 - 800 : 0);
        SCOPED_TRACE(testing::Message() << shape.first << ", round " << round);
        Points points;
        auto const count = static_cast<int>(random() % (round < 200 ? 64 : 400));
        for (int i = 0; i < count; ++i) {
            Vector const p = shape.second(i / static_cast<double>(count));
            points.emplace_back(std::round(p.x()) * unit, std::round(p.y()) * unit);
            if (random() % 16 == 0)
                points.push_back(points[random() % points.size()]);
        }
        auto const start = static_cast<std::ptrdiff_t>(random() % (points.size() + 1));
        std::rotate(points.begin(), points.begin() + start, points.end());
        if (round % 4 == 1)
            std::reverse(points.begin(), points.end());
        if (round % 4 == 2)
            std::shuffle(points.begin(), points.end(), random);
        Points const expected = hullByWalking(points, unit);
        EXPECT_EQ(hullOf(points), expected);
        points.emplace(points.begin() + start, -kInf, round % 2 == 0 ? kInf : std::nan(""));
        EXPECT_EQ(hullOf(points), expected);
    }
}
