// Edges that meet are among those that come close, of long oblique edges few others are, and what is
// found by way of them is what all edges against all give.
#include "cntr/internal/close_edges.h"
#include "cntr/internal/edge_hits.h"
#include "tests/support/outlines.h"
#include "tests/support/plain_contour.h"
#include "tests/support/regions.h"
#include "tests/support/rounds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>

using namespace qnInternal;
using qnOutlines::uniform;
using qnTest::rounds;

namespace {

using Points = std::vector<qcVector<2>>;
using Pairs = std::set<std::pair<std::size_t, std::size_t>>;

/// Straight teeth of `length`, 2 apart, turned by `angle`; each tooth has four points. Gaps between
/// some of the tips are as wide as the tolerances are.
Points teeth(int count, double length, double angle, std::mt19937& random)
{
    double const nudges[] = {0, 0, 0, 0, 1e-7, 0.9e-6, 1.1e-6, 3e-6, -1e-6};
    Points points;
    for (int i = 0; i < count; ++i)
        for (int corner = 0; corner < 4; ++corner)
            points.emplace_back(2 * i + (corner > 1 ? 1 + nudges[random() % 9] : 0),
                                corner % 3 == 0 ? 0 : length);
    points.emplace_back(2 * count, -2);
    points.emplace_back(0, -2);
    qcVector<2> const along(1, qcRadian(angle));
    for (auto& point : points)
        point = {along * qcVector<2>(point.x(), -point.y()), along.cross({point.x(), -point.y()})};
    return points;
}

/// Out and back from a hub.
Points spokes(int count, double hub, double rim)
{
    Points points;
    for (int i = 0; i < 2 * count; ++i)
        points.emplace_back(i % 2 == 0 ? hub : rim, qcRadian(3.141592653589793 * i / count));
    return points;
}

/// Long edges of many kinds: slanted, upright and level teeth, spokes, chords of a circle, and the lines
/// of a lattice, where many ends lie above each other.
Points longEdges(unsigned seed)
{
    std::mt19937 random(seed);
    auto const count = static_cast<int>(20 + random() % 40);
    double const quarter = 1.5707963267948966;
    switch (seed % 6) {
    case 0:
        return teeth(count, 100, uniform(random, 0, 4 * quarter), random);
    case 1:
        return teeth(count, 100, quarter * static_cast<double>(random() % 4), random);
    case 2:
        return teeth(count, 100, quarter + std::pow(10, uniform(random, -9, -3)), random);
    case 3:
        return spokes(count, uniform(random, 0, 3), 100);
    default:
        break;
    }
    Points points;
    for (int i = 0; i < 4 * count; ++i)
        if (seed % 6 == 4)
            points.emplace_back(100, qcRadian(uniform(random, 0, 4 * quarter)));
        else
            points.emplace_back(static_cast<double>(random() % 8),
                                static_cast<double>(random() % 8) + (seed % 12 == 5 ? 1e-6 : 0));
    return points;
}

double scaleOf(Points const& points)
{
    double scale = 0;
    for (auto const& point : points)
        scale = std::max({scale, std::fabs(point.x()), std::fabs(point.y())});
    return scale;
}

HitQuery queryAt(Outline const& outline, std::size_t k)
{
    return {edgeStart(outline.points, outline.closed, k),
            edgeEnd(outline.points, outline.closed, k), true};
}

bool meet(HitQuery const& a, HitQuery const& b)
{
    return a.meets(b.a(), b.b()) || b.meets(a.a(), a.b());
}

/// Asks about the close pairs of one outline, or of two; nothing where they are given up, which they may
/// be where they are many.
std::optional<Pairs> closePairs(Outline const& one, Outline const* other, double scale)
{
    Pairs pairs;
    std::size_t asked = 0;
    auto const keep = [&](std::size_t i, std::size_t k) {
        ++asked;
        pairs.insert({i, k});
        return false;
    };
    auto const found =
        other ? anyClosePair(one, *other, scale, keep) : anyClosePair(one, scale, keep);
    EXPECT_FALSE(found.value_or(false));
    EXPECT_TRUE(found || asked == 64 * (one.edges() + (other ? other->edges() : 0)));
    return found ? std::optional(pairs) : std::nullopt;
}

/// Expects that all pairs that meet are asked about, within one outline and between two; returns how
/// many meet.
std::size_t expectAllAskedAbout(Outline const& one, Outline const& other)
{
    double const scale = std::max(scaleOf(one.points), scaleOf(other.points));
    auto const within = closePairs(one, nullptr, scale);
    auto const between = closePairs(one, &other, scale);
    std::size_t met = 0, missed = 0;
    for (std::size_t i = 0; i < one.edges(); ++i) {
        auto const count = [&](Outline const& outline, std::size_t k, Pairs const& asked) {
            bool const meets = meet(queryAt(one, i), queryAt(outline, k));
            met += meets;
            missed += meets && asked.count({i, k}) == 0;
        };
        for (std::size_t k = 0; within && k < i; ++k)
            count(one, k, *within);
        for (std::size_t k = 0; between && k < other.edges(); ++k)
            count(other, k, *between);
    }
    EXPECT_EQ(missed, 0U);
    return met;
}

/// Moved by a part of a tooth, so that a few edges of both meet or nearly do.
Points moved(Points points, std::mt19937& random)
{
    qcVector<2> const by(uniform(random, -0.5, 0.5), uniform(random, -0.5, 0.5));
    for (auto& point : points)
        point += random() % 8 == 0 ? by * 2 : by;
    return points;
}

}  // namespace

TEST(CloseEdges, AmongThemAreAllThatMeet)
{
    std::size_t met = 0;
    std::mt19937 random(5);
    for (unsigned seed = 0; seed < static_cast<unsigned>(rounds(120)); ++seed) {
        SCOPED_TRACE(seed);
        Points const points = longEdges(seed);
        Points const others = seed % 2 ? moved(points, random) : longEdges(seed + 1);
        met += expectAllAskedAbout({points, seed % 3 != 0}, {others, seed % 5 != 0});
    }
    EXPECT_GT(met, 1000U);
    auto const outlines = qnOutlines::randomised(31, rounds(400));
    for (std::size_t i = 1; i < outlines.size(); ++i) {
        SCOPED_TRACE(outlines[i].name);
        auto const& [points, closed] = std::tie(outlines[i].points, outlines[i].closed);
        auto const& others = outlines[i - 1].points;
        if (std::max(scaleOf(points), scaleOf(others)) <= kLargestRegular)
            expectAllAskedAbout({points, closed}, {others, outlines[i - 1].closed});
    }
}

TEST(CloseEdges, AreFewWhereOnlyBoxesOverlap)
{
    std::mt19937 random(1);
    std::vector<Points> const outlines{teeth(1000, 2000, 0.3, random),
                                       teeth(1000, 2000, 2.4, random), spokes(2000, 50, 2000)};
    for (auto const& points : outlines) {
        std::size_t asked = 0;
        Outline const outline{points, true};
        auto const count = [&](std::size_t, std::size_t) { return ++asked, false; };
        EXPECT_EQ(anyClosePair(outline, scaleOf(points), count), std::optional(false));
        EXPECT_LT(asked, 24 * outline.edges());
        asked = 0;
        Points const others = moved(points, random);
        EXPECT_EQ(anyClosePair(outline, {others, true}, 2 * scaleOf(points), count),
                  std::optional(false));
        EXPECT_LT(asked, 24 * outline.edges());
    }
}

TEST(CloseEdges, AnAcceptedPairEndsTheSearch)
{
    Points const points = spokes(100, 5, 100);
    std::size_t asked = 0;
    EXPECT_TRUE(
        anyClosePair({points, true}, 100, [&](std::size_t, std::size_t) { return ++asked == 7; }));
    EXPECT_TRUE(anyClosePair({points, true}, {points, false}, 100,
                             [&](std::size_t, std::size_t) { return ++asked == 14; }));
    EXPECT_EQ(asked, 14U);
}

TEST(CloseEdges, CrossingsOfSlantedTeethAreThoseOfAllPairs)
{
    std::mt19937 random(9);
    int crossing = 0, simple = 0;
    for (int i = 0; i < rounds(12); ++i) {
        SCOPED_TRACE(i);
        Points points =
            i % 3 == 2 ? spokes(300, 20, 400) : teeth(150, 300, uniform(random, 0.2, 1.3), random);
        if (i % 2 == 1)
            std::swap(points[points.size() / 2], points[points.size() / 2 + 1 + random() % 3]);
        Points const others = moved(points, random);
        qnPlain::Contour const plain(points);
        qcContour const contour(points);
        bool const crosses = plain.isSelfIntersecting();
        EXPECT_EQ(contour.isSelfIntersecting(), crosses);
        ++(crosses ? crossing : simple);
        Points met;
        for (auto const& edge : qnPlain::edges(others, true))
            for (auto const& point : plain.intersections(edge, true))
                met.push_back(point);
        EXPECT_EQ(contour.intersections(qcContour(others)), met);
    }
    EXPECT_GT(crossing, 3);
    EXPECT_GT(simple, 3);
}

TEST(CloseEdges, WhereAllAreCloseTheAnswersAreThoseOfAllPairs)
{
    // So far away an edge reaches over several teeth.
    std::mt19937 random(4);
    auto const farAway = [&](Points points) {
        for (auto& point : points)
            point = point * 1e-5 + qcVector<2>(1e9, 1e9);
        return points;
    };
    Points near = teeth(160, 300, 0.7, random);
    Points const points = farAway(near);
    auto const none = [](std::size_t, std::size_t) { return false; };
    EXPECT_EQ(anyClosePair({points, true}, 2e9, none), std::nullopt);
    EXPECT_FALSE(qcContour(points).isSelfIntersecting());
    EXPECT_FALSE(qnPlain::Contour(points).isSelfIntersecting());
    near[near.size() - 8] += qcVector<2>(-9, 5);
    Points const crossing = farAway(near);
    EXPECT_TRUE(qcContour(crossing).isSelfIntersecting());
    EXPECT_TRUE(qnPlain::Contour(crossing).isSelfIntersecting());
    Points met;
    Points const others = farAway(moved(near, random));
    for (auto const& edge : qnPlain::edges(others, true))
        for (auto const& point : qnPlain::Contour(points).intersections(edge, true))
            met.push_back(point);
    EXPECT_GT(met.size(), 100U);
    EXPECT_EQ(qcContour(points).intersections(qcContour(others)), met);
}

TEST(CloseEdges, AWalkAlongSlantedTeethIsThatOfThePlainSteps)
{
    std::mt19937 random(3);
    int crossing = 0;
    for (int i = 0; i < rounds(1); ++i) {
        Points points = teeth(900, 1800, uniform(random, 0.3, 1.2), random);
        points[points.size() / 2] += qcVector<2>(uniform(random, 10, 30), 20);  // across others
        bool const crosses = qnPlain::Contour(points).isSelfIntersecting();
        EXPECT_TRUE(qcRegion(points, qcContourDefs::eRegularize).points() ==
                    (crosses ? qnPlain::boundaryWalk(points) : points));
        crossing += crosses;
    }
    EXPECT_GT(crossing, 0);
}
