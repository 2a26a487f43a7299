// Where segments and contours meet a region and its holes.
#include "tests/support/regions.h"

#include <gtest/gtest.h>

using namespace qnTest;

TEST(RegionIntersections, OutlineFirstThenEachHoleNeverTheirHoles)
{
    qcRegion region = regionOf(Figure{
        square(0, 0, 10), {{square(6, 4, 2), {{square(6.5, 4.5, 1), {}}}}, {square(2, 4, 2), {}}}});
    struct {
        char const* name;
        qcVector<2> from, to;
        bool touchingEnds;
        Points outline, holes;
    } const cases[] = {
        {"across everything",
         {-1, 5},
         {11, 5},
         true,
         {{0, 5}, {10, 5}},
         {{6, 5}, {8, 5}, {2, 5}, {4, 5}}},
        {"inside a hole, across its hole", {6.2, 5}, {7.8, 5}, true, {}, {}},
        {"from inside a hole", {7, 5}, {9, 5}, true, {}, {{8, 5}}},
        {"ends on outline and hole", {0, 5}, {6, 5}, true, {{0, 5}}, {{6, 5}, {2, 5}, {4, 5}}},
        {"the same, ends left out", {0, 5}, {6, 5}, false, {}, {{2, 5}, {4, 5}}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        qcLineSeg const segment(c.from, c.to);
        EXPECT_EQ(region.intersections(segment, c.touchingEnds, false), c.outline);
        Points all = c.outline;
        all.insert(all.end(), c.holes.begin(), c.holes.end());
        EXPECT_EQ(region.intersections(segment, c.touchingEnds, true), all);
        if (c.touchingEnds) {
            EXPECT_EQ(region.intersections(qcContour({c.from, c.to}, false), true), all);
        }
    }
}

TEST(RegionIntersections, NeedAnEdgeInEveryContourAsked)
{
    qcRegion region = regionOf(square(0, 0, 10));
    region.holes(std::vector<Hole>{holeOf({{5, 5}})});
    qcLineSeg const segment({1, 1}, {2, 2});
    EXPECT_THROW(region.intersections(segment, true, true), qcContourDefs::EmptyContour);
    EXPECT_TRUE(region.intersections(segment, true, false).empty());
    EXPECT_THROW(regionOf(Points{}).intersections(segment, true, false),
                 qcContourDefs::EmptyContour);
}
