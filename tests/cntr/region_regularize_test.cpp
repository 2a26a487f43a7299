// Regularised outlines and outer hulls: known shapes, seeded curves and lattice outlines.
#include "tests/support/allocations.h"
#include "tests/support/outlines.h"
#include "tests/support/regions.h"
#include "tests/support/rounds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace qnTest;

namespace {

using Cleaned = std::pair<Points, std::string>;

Cleaned regularized(Points const& outline)
{
    return attempt([&] { return qcRegion(outline, qcContourDefs::eRegularize).points(); });
}

Cleaned hull(Points const& outline)
{
    return attempt([&] { return qcRegion(outline, qcContourDefs::eOuterHull).points(); });
}

/// The library against the plain steps; true where the outline crosses itself.
bool compare(Points const& outline)
{
    if (!regionOf(outline).isSelfIntersecting()) {
        EXPECT_EQ(regularized(outline), (Cleaned{outline, ""}));
        EXPECT_EQ(hull(outline), (Cleaned{outline, ""}));
        return false;
    }
    EXPECT_EQ(regularized(outline), attempt([&] { return qnPlain::boundaryWalk(outline); }));
    EXPECT_EQ(hull(outline), attempt([&] { return qnPlain::outerHull(outline); }));
    return true;
}

/// A wavy outline that is mostly clean: with spikes, knots, repeated vertices, small loops, vertices moved on
/// an edge or onto another vertex, and stretches along the axes.
Points faultyOutline(std::mt19937& random)
{
    auto const upTo = [&](std::size_t n) { return random() % n; };
    std::size_t const count = 65 + upTo(200);
    double const waves = static_cast<double>(upTo(9)), depth = qnOutlines::uniform(random, 0, 0.6);
    bool const lattice = upTo(4) == 0;
    Points points;
    for (std::size_t i = 0; i < count; ++i) {
        double const angle = 2 * qnAngle::kPi * static_cast<double>(i) / static_cast<double>(count);
        qcVector<2> const point(100 * (1 + depth * std::sin(waves * angle)), qcRadian(angle));
        points.push_back(lattice ? qcVector<2>(std::round(point.x()), std::round(point.y()))
                                 : point);
    }
    for (auto faults = 1 + upTo(6); faults > 0; --faults) {
        std::size_t const i = 2 + upTo(points.size() - 6);
        qcVector<2> const a = points[i], b = points[i + 1];
        qcVector<2> const along = b - a, across(-along.y(), along.x());
        auto const at = points.begin() + static_cast<std::ptrdiff_t>(i) + 1;
        switch (upTo(6)) {
        case 0:
            std::swap(points[i], points[i + 1 + upTo(3)]);
            break;
        case 1:
            points.insert(at, 1 + upTo(2), a);
            break;
        case 2:
            points.insert(at, {a + across * 3, a});
            break;
        case 3:
            points.insert(at, {b + across, a + across, a - across * 0.5});
            break;
        case 4:
            points[i] = points[upTo(points.size())];
            break;
        default:
            points[i] = (points[i - 2] + points[i + 2]) / 2.0;
        }
    }
    if (upTo(2) == 0)
        std::reverse(points.begin(), points.end());
    std::rotate(points.begin(), points.begin() + static_cast<std::ptrdiff_t>(upTo(points.size())),
                points.end());
    return points;
}

std::string const kInvalid = "invalid contour";
std::string const kEmpty = "qcContourDefs::EmptyContour";

}  // namespace

TEST(RegionRegularize, KnownShapes)
{
    // clang-format off
    struct {
        char const* name;
        Points outline;
        Cleaned regularized, hull;
    } const cases[] = {
        {"figure eight", {{-6, -3}, {6, 3}, {6, -3}, {-6, 3}},
         {{{6, -3}, {0, 0}, {-6, -3}, {-6, 3}, {0, 0}, {6, 3}}, ""},
         {{{0, 0}, {-6, -3}, {-6, 3}, {0, 0}, {6, 3}, {6, -3}}, ""}},
        {"winds twice", {{0, 0}, {12, 0}, {12, 10}, {2, 10}, {2, 2}, {10, 2}, {10, 8}, {0, 8}},
         {{{12, 0}, {12, 10}, {2, 10}, {2, 8}, {10, 8}, {10, 2}, {2, 2}, {2, 8}, {0, 8}, {0, 0}}, ""},
         {{{2, 8}, {0, 8}, {0, 0}, {12, 0}, {12, 10}, {2, 10}}, ""}},
        {"repeated vertex", {{-6, -3}, {6, 3}, {6, -3}, {6, -3}, {-6, 3}},
         {{{6, -3}, {6, -3}, {0, 0}, {-6, -3}, {-6, 3}, {0, 0}, {6, 3}}, ""}, {{}, kEmpty}},
        {"crossing on a shared vertex", {{0, 0}, {2, 2}, {4, 0}, {4, 4}, {2, 2}, {0, 4}},
         {{{0, 0}, {2, 2}, {4, 0}, {4, 4}, {2, 2}, {0, 4}}, ""},
         {{{0, 0}, {2, 2}, {4, 0}, {4, 4}, {2, 2}, {0, 4}}, ""}},
        {"only the closing edge could start", {{-6, -3}, {6, 3}, {6, 0}, {6, -3}, {-6, 3}},
         {{}, kInvalid}, {{}, kInvalid}},
        {"every edge crossed", {{0, -10}, {6, 8}, {-9, -3}, {9, -3}, {-6, 8}},
         {{}, kInvalid}, {{}, kInvalid}},
        {"walk that never meets its start", {{3, 2}, {4, 3}, {1, 0}, {4, 4}, {4, 1}},
         {{}, kInvalid}, {{}, kInvalid}},
    };
    // clang-format on
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(regularized(c.outline), c.regularized);
        EXPECT_EQ(hull(c.outline), c.hull);
        compare(c.outline);
    }
    // Curls inside and outside, and thin lobes.
    compare({{0, 0}, {12, 0}, {12, 8}, {5, 8}, {5, 5}, {7, 5}, {7, 10}, {0, 10}});
    compare({{0, 0}, {6, 0}, {6, 8}, {8, 8}, {8, 6}, {0, 6}});
    compare({{0, 0}, {100, 0.1}, {200, -0.1}, {300, 0}, {200, 0.1}, {100, -0.1}});
}

TEST(RegionRegularize, LeavesSimpleRegionsAndFailedResultsAlone)
{
    qcRegion const holed = regionOf(Figure{square(0, 0, 10), {{square(2, 2, 2), {}}}});
    qcRegion result = regionOf(square(5, 5, 1));
    holed.regularize(result);
    EXPECT_EQ(result, holed);
    EXPECT_EQ(result.holes(), holed.holes());
    qcRegion const bad = regionOf(Points{{0, -10}, {6, 8}, {-9, -3}, {9, -3}, {-6, 8}});
    for (int again = 0; again < 2; ++again) {
        EXPECT_THROW(bad.regularize(result), qcContourDefs::BadParams);
        EXPECT_THROW(bad.outerHull(result), qcContourDefs::BadParams);
        EXPECT_EQ(result.holes(), holed.holes());
    }
}

TEST(RegionRegularize, ResultsAreKeptAndMayReplaceTheRegion)
{
    Points const curl{{0, 0}, {12, 0}, {12, 8}, {5, 8}, {5, 5}, {7, 5}, {7, 10}, {0, 10}};
    qcRegion region = regionOf(Figure{curl, {{square(9, 2, 1), {}}}});
    region.label(6);
    qcRegion kept = regionOf(Points{});
    qcRegion keptHull = kept;
    long long peaks[2] = {};
    for (int again = 0; again < 2; ++again) {  // the one result does not stand for the other
        {
            Allocations const taken;
            region.regularize(kept);
            region.outerHull(keptHull);
            peaks[again] = taken.peakBytes();
        }
        EXPECT_EQ(kept.points(), qnPlain::boundaryWalk(curl));
        EXPECT_EQ(keptHull.points(), qnPlain::outerHull(curl));
        EXPECT_TRUE(kept.holes().empty() && keptHull.holes().empty());
        EXPECT_EQ(kept.label(), 0u);
    }
    EXPECT_LT(peaks[1], peaks[0] / 2) << "computed once, then only copied";
    qcRegion copy = region;
    copy.points(square(0, 0, 5));
    copy.regularize(kept);
    EXPECT_EQ(kept.points(), square(0, 0, 5));
    copy = region;
    region.outerHull(region);
    EXPECT_EQ(region, keptHull);
    EXPECT_TRUE(region.holes().empty());
    copy.regularize(copy);  // what was computed lives on where the region it came from is gone
    EXPECT_EQ(copy.points(), qnPlain::boundaryWalk(curl));
}

TEST(RegionRegularize, SeededOutlinesComeOutAsThePlainStepsSay)
{
    int crossing = 0;
    // On a small lattice vertices rest on edges, stand on each other, and edges overlap.
    std::mt19937 random(41);
    for (int i = 0; i < rounds(600); ++i) {
        Points lattice;
        for (auto n = 4 + random() % 9; n > 0; --n)
            lattice.emplace_back(random() % 6, random() % 6);
        SCOPED_TRACE("lattice outline " + std::to_string(i));
        crossing += compare(lattice);
    }
    for (int seed = 0; seed < rounds(6); ++seed)
        for (auto const& curve : crossingCurves(40 + static_cast<unsigned>(seed))) {
            SCOPED_TRACE(curve.name + " of seed " + std::to_string(seed));
            crossing += compare(curve.points);
        }
    EXPECT_GT(crossing, 500);
}

TEST(RegionRegularize, LongOutlinesWithFewFaultsComeOutAsThePlainStepsSay)
{
    std::mt19937 random(43);
    int crossing = 0;
    for (int i = 0; i < rounds(60); ++i) {
        SCOPED_TRACE("outline " + std::to_string(i));
        crossing += compare(faultyOutline(random));
    }
    for (auto const& outline : qnOutlines::foldedBack(46, rounds(5))) {
        SCOPED_TRACE(outline.name);
        crossing += compare(outline.points);
    }
    EXPECT_GT(crossing, rounds(32));
}

TEST(RegionRegularize, FindsTheStartAmongManyEdgesThatFaceEachOther)
{
    // Between the teeth of a long saw both rays are blocked, and most vertices are seen along them.
    std::mt19937 random(42);
    for (int const teeth : {150, 200}) {
        for (bool const backwards : {false, true}) {
            Points saw;
            for (int i = 0; i <= 2 * teeth; ++i)
                saw.emplace_back(i, i % 2 * 10 + qnOutlines::uniform(random, 0, 1));
            double const end = 2 * teeth;
            for (double const y : {-5.0, -10.0})
                saw.insert(saw.end(), {{end, y}, {0, -15 - y}});
            if (backwards)
                std::reverse(saw.begin(), saw.end());
            std::rotate(saw.begin(), saw.begin() + teeth, saw.end());  // so it starts in the middle
            EXPECT_TRUE(compare(saw));
        }
    }
}
