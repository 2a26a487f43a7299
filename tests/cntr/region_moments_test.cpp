// Areas, centres and second moments of regions, with and without holes.
#include "tests/support/regions.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace qnTest;

TEST(RegionMoments, HolesAreTakenOffOnceAndTheirHolesNever)
{
    Points const wound = {{60, 40}, {60, 60}, {80, 60}, {80, 40}};  // clockwise
    struct {
        char const* name;
        Figure figure;
        double area;
        qcVector<2> center;
    } const cases[] = {
        {"no hole", {square(0, 0, 100), {}}, 10000, {50, 50}},
        {"hole in the middle", {square(0, 0, 100), {{square(40, 40, 20), {}}}}, 9600, {50, 50}},
        {"clockwise hole aside",
         {square(0, 0, 100), {{wound, {}}}},
         9600,
         {(500000 - 400 * 70) / 9600.0, 50}},
        {"island in a hole",
         {square(0, 0, 100), {{square(40, 40, 20), {{square(45, 45, 5), {}}}}}},
         9600,
         {50, 50}},
        {"hole outside",
         {square(0, 0, 10), {{square(20, 0, 20), {}}}},
         -300,
         {(500 - 400 * 30) / -300.0, (500 - 400 * 10) / -300.0}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        qcRegion region = regionOf(c.figure);
        for (int again = 0; again < 2; ++again) {
            EXPECT_EQ(region.area(true), c.area);
            EXPECT_EQ(region.area(false), qnPlain::area(c.figure, false));
            EXPECT_NEAR(region.centerOfMass(true).distance(c.center), 0, 1e-9);
            EXPECT_EQ(region.centerOfMass(true), qnPlain::centerOfMass(c.figure, true));
            EXPECT_EQ(region.centerOfMass(false), qnPlain::centerOfMass(c.figure, false));
        }
    }
    qcRegion nothing = regionOf(Figure{square(0, 0, 10), {{square(20, 0, 10), {}}}});
    EXPECT_EQ(nothing.area(true), 0);
    EXPECT_FALSE(std::isfinite(nothing.centerOfMass(true).x()));
}

TEST(RegionMoments, RefuseWhatHasNoArea)
{
    Hole const line = holeOf({{1, 1}, {2, 2}});
    for (Points const& points : {Points{}, Points{{1, 1}}, Points{{1, 1}, {5, 2}}}) {
        qcRegion region = regionOf(points);
        for (bool const holes : {false, true}) {
            EXPECT_THROW(region.area(holes), qcContourDefs::EmptyContour);
            EXPECT_THROW(region.centerOfMass(holes), qcContourDefs::EmptyContour);
            EXPECT_THROW(region.inertiaMatrix(holes), qcContourDefs::EmptyContour);
        }
    }
    qcRegion region = regionOf(square(0, 0, 10));
    region.holes(std::vector<Hole>{line});
    for (int again = 0; again < 2; ++again) {
        EXPECT_THROW(region.area(true), qcContourDefs::EmptyContour);
        EXPECT_THROW(region.centerOfMass(true), qcContourDefs::EmptyContour);
    }
    EXPECT_EQ(region.area(false), 100);
}

TEST(RegionMoments, SecondMomentsAreTheOutlines)
{
    qcRegion region = regionOf(Figure{square(0, 0, 10), {{square(2, 2, 2), {}}}});
    EXPECT_NEAR(region.inertiaMatrix(false).element(0, 0), 10000 / 12.0, 1e-9);
    EXPECT_NEAR(region.inertiaMatrix(false).element(1, 0), 0, 1e-9);
    try {
        region.inertiaMatrix(true);
        ADD_FAILURE() << "nothing thrown";
    } catch (qcContourDefs::BadParams const& error) {
        EXPECT_STREQ(error.what(), "inertiaMatrix(considerHoles) is not implemented");
    }
    region.holes(std::vector<Hole>{});
    EXPECT_EQ(region.inertiaMatrix(true), region.inertiaMatrix(false));
    region.points(square(0, 0, 20));
    EXPECT_NEAR(region.inertiaMatrix(true).element(1, 1), 160000 / 12.0, 1e-9);
}
