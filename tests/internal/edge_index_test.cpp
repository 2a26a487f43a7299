// What is found through an index is what the plain loops find, on every kind of outline.
#include "cntr/internal/blocked_rays.h"
#include "cntr/internal/box_of_points.h"
#include "cntr/internal/edge_hits.h"
#include "cntr/internal/edge_index.h"
#include "cntr/internal/farthest_on_hull.h"
#include "cntr/internal/farthest_pair.h"
#include "cntr/internal/nearest.h"
#include "cntr/internal/parity.h"
#include "cntr/internal/ray_direction.h"
#include "cntr/internal/self_crossing.h"
#include "cntr/internal/winding.h"
#include "tests/support/outlines.h"
#include "tests/support/plain_contour.h"
#include "tests/support/plain_region.h"
#include "tests/support/rounds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

using namespace qnInternal;
using qnTest::rounds;

namespace {

using Points = std::vector<qcVector<2>>;
using qnOutlines::Outline;

/// Up and down oblique lines of a lattice, where many vertices coincide if it is coarse.
Outline folded(unsigned seed)
{
    std::mt19937 random(seed);
    Outline outline{"folded " + std::to_string(seed), {}, random() % 2 == 0};
    auto const length = static_cast<unsigned>(20 + random() % 20);
    double const step = seed % 3 == 0 ? 1 : qnOutlines::uniform(random, 1, 3);
    for (unsigned tooth = 0; tooth < 12; ++tooth)
        for (unsigned i = 0; i < length; ++i) {
            double const along = step * (tooth % 2 == 0 ? i : length - i);
            auto const jump = seed % 5 == 0 ? random() % 2 : 0;
            outline.points.emplace_back(static_cast<double>(tooth + jump) + along, along);
        }
    return outline;
}

/// Does `check` with outlines of which an index is regular; an index serves any number of edges,
/// however few. Every tenth is one whose leaves do not stand in outline order.
template <class Check>
void forEachIndexed(unsigned seed, int count, Check const& check)
{
    auto outlines = qnOutlines::randomised(seed, count);
    for (unsigned i = 0; i * 10 < static_cast<unsigned>(count); ++i) {
        outlines.push_back(folded(seed * 1000 + i));
        EXPECT_FALSE(EdgeIndex(outlines.back().points, outlines.back().closed).inOutlineOrder());
    }
    int checked = 0;
    for (auto const& outline : outlines) {
        if (outline.points.size() < 2)
            continue;
        SCOPED_TRACE(outline.name);
        EdgeIndex const index(outline.points, outline.closed);
        if (index.regular())
            check(outline, index);
        checked += index.regular();
    }
    EXPECT_GT(checked, count / 2);
}

/// Points of the outline, between its points and anywhere around them.
Points places(Points const& points, std::mt19937& random)
{
    Points found;
    for (int i = 0; i < 12; ++i) {
        auto const& p = points[random() % points.size()];
        auto const& q = points[random() % points.size()];
        double const t = qnOutlines::uniform(random, -0.3, 1.3);
        double const near = std::pow(10.0, qnOutlines::uniform(random, -7, 0));
        found.insert(found.end(), {p, p + (q - p) * t, qcVector<2>(p.x(), q.y()) * t,
                                   p + qcVector<2>(near, qcRadian(6 * t))});
    }
    return found;
}

TEST(EdgeIndex, NearestIsThatOfAllEdgesAndVertices)
{
    std::mt19937 random(3);
    forEachIndexed(21, rounds(400), [&](Outline const& outline, EdgeIndex const& index) {
        auto const edges = qnPlain::edges(outline.points, outline.closed);
        for (auto const& place : places(outline.points, random)) {
            auto const nearest =
                std::min_element(edges.begin(), edges.end(), [&](auto const& a, auto const& b) {
                    return a.distToPoint(place) < b.distToPoint(place);
                });
            EXPECT_EQ(edges.begin() + long(nearestEdge(index, outline.points, place)), nearest);
            EXPECT_EQ(long(nearestVertex(index, outline.points, place)),
                      qnPlain::Contour(outline.points).closestVertexIndex(place));
        }
    });
}

TEST(EdgeIndex, ProposesEveryEdgeThatASegmentMeets)
{
    std::mt19937 random(5);
    forEachIndexed(22, rounds(400), [&](Outline const& outline, EdgeIndex const& index) {
        auto const ends = places(outline.points, random);
        for (std::size_t i = 0; i + 1 < ends.size(); ++i) {
            HitQuery const query(ends[i], ends[i + 1], true);
            if (!query.regular())
                continue;
            std::vector<bool> proposed(index.leafCount(), false);
            index.forEachLeaf(SegmentReach(query, index.scale()),
                              [&](std::size_t leaf, Box const&) { proposed[leaf] = true; });
            for (std::size_t leaf = 0; leaf < index.leafCount(); ++leaf)
                for (auto k = index.leafBegin(leaf); k < index.leafEnd(leaf); ++k)
                    EXPECT_TRUE(proposed[leaf] ||
                                !query.meets(edgeStart(outline.points, outline.closed, k),
                                             edgeEnd(outline.points, outline.closed, k)));
        }
    });
}

void expectEqual(FarthestPair const& found, FarthestPair const& plain)
{
    EXPECT_EQ(found.distance, plain.distance);
    EXPECT_EQ(found.first, plain.first);
    EXPECT_EQ(found.second, plain.second);
}

/// Points of a circle, some of them twice, some moved by about the rounding of a distance.
Points roundish(unsigned seed)
{
    std::mt19937 random(seed);
    std::size_t const count = 3 + random() % (seed % 10 == 0 ? 700 : 40);
    double const turned = seed % 2 == 0 ? 0 : qnOutlines::uniform(random, 0, 1);
    double const moved = seed % 3 == 0 ? 4e-16 : 0;
    Points points;
    for (std::size_t i = 0; i < count; ++i) {
        double const angle =
            turned + 2 * qnAngle::kPi * static_cast<double>(i) / static_cast<double>(count);
        double const radius = 5 + moved * qnOutlines::uniform(random, -4, 4);
        points.emplace_back(radius, qcRadian(angle));
        if (seed % 5 == 0 && random() % 4 == 0)
            points.push_back(points[random() % points.size()]);
    }
    if (seed % 7 == 0)
        std::shuffle(points.begin(), points.end(), random);
    if (seed % 4 == 1)
        std::reverse(points.begin(), points.end());
    return points;
}

TEST(EdgeIndex, FarthestPairOnCirclesIsThatOfAllPairs)
{
    int certain = 0, convex = 0;
    for (int seed = 0; seed < rounds(400); ++seed) {
        SCOPED_TRACE(seed);
        auto const points = roundish(static_cast<unsigned>(seed));
        auto const plain = farthestPair(points);
        for (auto const folded : {EdgeIndex::Folded::eSorted, EdgeIndex::Folded::eInOutlineOrder})
            expectEqual(farthestPair(points, EdgeIndex(points, true, folded)), plain);
        if (auto const found = farthestPairOnHull(points)) {
            expectEqual(*found, plain);
            ++certain;
        }
        if (auto const found = farthestPairOfConvex(points)) {
            expectEqual(*found, plain);
            ++convex;
        }
    }
    EXPECT_GT(certain, 300);
    EXPECT_GT(convex, 200);
    // Nothing is certain where a point is next to a vertex, or there is no hull to speak of.
    EXPECT_FALSE(farthestPairOnHull({{0, 0}, {9, 0}, {9, 9}, {0, 9}, {9, 9 - 1e-8}}));
    EXPECT_FALSE(farthestPairOnHull({{0, 0}, {3, 0}, {9, 0}}));
    EXPECT_FALSE(farthestPairOnHull({{2, 1}, {2, 1}}));
    // Not convex are outlines that turn one way but twice around, back and forth, or not at all somewhere.
    EXPECT_FALSE(farthestPairOfConvex({{0, 3}, {-2, -3}, {3, 1}, {-3, 1}, {2, -3}}));
    EXPECT_FALSE(farthestPairOfConvex({{0, 0}, {9, 0}, {2, 2}, {0, 9}}));
    EXPECT_FALSE(farthestPairOfConvex({{0, 0}, {5, 0}, {9, 0}, {0, 9}}));
    EXPECT_FALSE(farthestPairOfConvex({{0, 0}, {9, 0}, {9, 0}, {0, 9}}));
    EXPECT_FALSE(farthestPairOfConvex({{0, 0}, {9, 0}}));
}

TEST(EdgeIndex, FarthestPairMayEndAtTheVertexBehindTheLastEdge)
{
    for (std::size_t const count : {9U, 17U, 65U, 73U}) {
        Points points(count - 1, {1, 2});
        points.emplace_back(4, 6);
        expectEqual(farthestPair(points, EdgeIndex(points, false)), {5, 0, count - 1});
    }
}

/// Along an axis with no step back, but some that stand still.
Outline forward(unsigned seed)
{
    std::mt19937 random(seed);
    Outline outline{"forward " + std::to_string(seed), {{0, 0}}, false};
    double const step = seed % 4 == 0 ? 1e-7 : 1;
    while (outline.points.size() < 40) {
        qcVector<2> const more(random() % (1 + seed % 9) == 0 ? 0 : step,
                               static_cast<double>(random() % 5) - 2);
        outline.points.push_back(outline.points.back() +
                                 (seed % 2 == 0 ? more : qcVector<2>(more.y(), -more.x())));
    }
    return outline;
}

TEST(EdgeIndex, SelfCrossingIsThatOfAllPairsWhereOutlinesRunOneWay)
{
    int crossing = 0;
    for (unsigned seed = 0; seed < static_cast<unsigned>(rounds(400)); ++seed) {
        auto const outline = forward(seed);
        bool const crosses = qnPlain::Contour(outline.points, false).isSelfIntersecting();
        EXPECT_EQ(anyEdgeMeetsAnother(EdgeIndex(outline.points, false), outline.points, false),
                  crosses)
            << outline.name;
        crossing += crosses;
    }
    EXPECT_GT(crossing, 50);
}

TEST(EdgeIndex, SelfCrossingIsThatOfAllPairsWhereStretchesLieSideBySide)
{
    int crossing = 0, alongTheCurve = 0;
    int const count = rounds(50);
    for (auto const& outline : qnOutlines::foldedBack(31, count)) {
        EdgeIndex const index(outline.points, outline.closed);
        bool const crosses = qnPlain::Contour(outline.points, outline.closed).isSelfIntersecting();
        EXPECT_EQ(anyEdgeMeetsAnother(index, outline.points, outline.closed), crosses)
            << outline.name;
        crossing += crosses;
        alongTheCurve += !index.inOutlineOrder();
    }
    EXPECT_GT(crossing, count / 4);
    EXPECT_LT(crossing, count * 3 / 4);
    EXPECT_GT(alongTheCurve, count / 4);
}

TEST(EdgeIndex, FarthestPairAndSelfCrossingAreThoseOfAllPairs)
{
    int crossing = 0, simple = 0;
    forEachIndexed(23, rounds(1500), [&](Outline const& outline, EdgeIndex const& index) {
        auto const plain = farthestPair(outline.points);
        expectEqual(farthestPair(outline.points, index), plain);
        expectEqual(farthestPairOnHull(outline.points).value_or(plain), plain);
        bool const crosses = qnPlain::Contour(outline.points, outline.closed).isSelfIntersecting();
        EXPECT_EQ(anyEdgeMeetsAnother(index, outline.points, outline.closed), crosses);
        ++(crosses ? crossing : simple);
    });
    EXPECT_GT(crossing, 100);
    EXPECT_GT(simple, 100);
}

TEST(Parity, WhereItIsCertainTheRayAgrees)
{
    std::mt19937 random(7);
    int certain = 0, roughlyCertain = 0, wound = 0, doubtful = 0, outsideAndBlocked = 0;
    forEachIndexed(24, rounds(1200), [&](Outline const& outline, EdgeIndex const& index) {
        if (outline.points.size() < 3)
            return;
        Box const& box = index.rootBox();
        double radius = 0;
        for (auto const& p : outline.points)
            radius = std::max(radius, outline.points.front().distance(p));
        ParityReach const reach(box, outline.points.size(), outline.points.front(),
                                {radius, radius});
        auto const rough = radiusWithin(box, outline.points.front());
        EXPECT_LE(rough.least, radius * (1 + 1e-12));
        EXPECT_GE(rough.most, radius * (1 - 1e-12));
        ParityReach const roughReach(box, outline.points.size(), outline.points.front(), rough);
        SlabIndex slabs(outline.points, box, reach);
        SlabIndex const unsorted = slabs;
        if (slabs.pointsBeforeSorting())
            slabs.sortFromLeft(outline.points);
        RaySight sight;  // of the place before, which may be far off
        BlockedRays blocked(outline.points, index, reach,
                            outline.points[0].distance(outline.points[1]));
        WindingCount windings(outline.points, index, reach);
        for (auto const& place : places(outline.points, random)) {
            if (outline.closed) {
                EXPECT_EQ(rayDirection(outline.points, index, place, sight),
                          rayDirection(outline.points, place));
            }
            if (outline.closed && overlap(box, boxOf(place)) && blocked.certainAt(place)) {
                outsideAndBlocked += !slabs.surelyWound(outline.points, place);
                EXPECT_GT(qnPlain::insideCount(outline.points, place, true), 0);
            }
            auto const byEdges = insideByAllEdges(outline.points, place, reach);
            auto const bySlab = slabs.inside(outline.points, place);
            EXPECT_EQ(unsorted.inside(outline.points, place), bySlab);
            EXPECT_TRUE(!byEdges || bySlab) << "a slab looks at fewer edges, so at fewer doubts";
            auto const roughly = insideByAllEdges(outline.points, place, roughReach);
            EXPECT_TRUE(!roughly || roughly == byEdges) << "less is certain without the circle";
            roughlyCertain += roughly.has_value();
            bool const isWound = slabs.surelyWound(outline.points, place);
            if (outline.closed) {
                EXPECT_EQ(windings.surelyWound(place), isWound);
            }
            if (isWound) {
                ++wound;
                doubtful += !bySlab;
                EXPECT_GT(qnPlain::insideCount(outline.points, place, true), 0);
            }
            if (!bySlab || !overlap(box, boxOf(place)))
                continue;
            ++certain;
            EXPECT_EQ(*bySlab, qnPlain::insideCount(outline.points, place, false) % 2 == 1);
            EXPECT_EQ(byEdges.value_or(*bySlab), *bySlab);
        }
    });
    EXPECT_GT(certain, 1000);
    EXPECT_GT(roughlyCertain, 1000);
    EXPECT_GT(wound, 100);
    EXPECT_GT(outsideAndBlocked, 100);
    EXPECT_GT(doubtful, 100) << "less is needed to be sure of a crossing than of their number";
}

TEST(RayDirection, NoneIsGivenUpToAMillionthFromAVertex)
{
    Points outline{{0, 0}};
    for (int i = 0; i < 40; ++i)
        outline.push_back(qcVector<2>(10, 10) + qcVector<2>(5, qcRadian(0.15 * i)));
    EdgeIndex const index(outline, true);
    qcVector<2> const onVertex(1e-6, 0), besideVertex(0, std::nextafter(1e-6, 1));
    RaySight sight;
    EXPECT_FALSE(rayDirection(outline, index, onVertex, sight));
    EXPECT_FALSE(rayDirection(outline, onVertex));
    EXPECT_TRUE(rayDirection(outline, besideVertex));
    EXPECT_EQ(rayDirection(outline, index, besideVertex, sight),
              rayDirection(outline, besideVertex));
}

TEST(BoxOfPoints, IsWhatThePointsOneByOneMake)
{
    double const inf = std::numeric_limits<double>::infinity();
    double const special[] = {0.0, -0.0, std::nan(""), inf, -inf, 1e300, -5, 5e-324};
    std::mt19937 random(9);
    for (int round = 0; round < rounds(2000); ++round) {
        Points points;
        for (std::size_t i = 0; i <= random() % 12; ++i)
            points.emplace_back(special[random() % (round % 3 == 0 ? 2 : 8)],
                                round % 2 == 0 ? special[random() % 8]
                                               : static_cast<double>(random() % 9));
        Box box = boxOf(points.front());
        bool finite = true;
        double farthest = 0;
        for (auto const& point : points) {
            enclose(box, point);
            finite = finite && std::isfinite(point.x()) && std::isfinite(point.y());
            double const distance = points.front().distance(point);
            farthest = distance > farthest ? distance : farthest;
        }
        auto const found = boxOfPoints(points);
        EXPECT_EQ(std::memcmp(&found.box, &box, sizeof box), 0) << round;
        EXPECT_EQ(found.finite, finite) << round;
        EXPECT_EQ(std::sqrt(largestSquaredDistance(points, points.front())), farthest) << round;
    }
}

}  // namespace
