// The region as an object: construction and its modes, closedness, equality, holes, copies.
#include "tests/support/changes.h"
#include "tests/support/regions.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace qnTest;

namespace {

Points const kEight{{-6, -3}, {6, 3}, {6, -3}, {-6, 3}};

}  // namespace

TEST(Region, TakesItsOutlineFromAnything)
{
    Points const points{{0, 0}, {4, 0}, {4, 4}, {0, 0}};
    qcContour const open(points, false, 7);
    EXPECT_EQ(open.length(), 8 + std::sqrt(32));
    EXPECT_EQ(qcRegion(open, qcContourDefs::eIgnore).label(), 7u);
    for (auto const& region : {regionOf(points), qcRegion(open, qcContourDefs::eIgnore),
                               qcRegion(qcPolygon(points), qcContourDefs::eIgnore)}) {
        EXPECT_EQ(region.points(), points);
        EXPECT_TRUE(region.isClosed());
        EXPECT_TRUE(region.holes().empty());
    }
}

TEST(Region, AppliesItsModeAtTheEndOfConstruction)
{
    auto const build = [](Points const& points, int mode) {
        return qcRegion(points, static_cast<qcContourDefs::IntersectionMode>(mode)).points();
    };
    for (Points const& simple : {Points{}, Points{{1, 1}}, Points{{1, 1}, {2, 5}}, square(0, 0, 4)})
        for (int mode = 0; mode < 3; ++mode)
            EXPECT_EQ(build(simple, mode), simple);
    EXPECT_EQ(build(kEight, 0), kEight);
    EXPECT_EQ(build(kEight, 7), kEight);
    EXPECT_EQ(build(kEight, 1), qnPlain::outerHull(kEight));
    EXPECT_EQ(build(kEight, 2), qnPlain::boundaryWalk(kEight));
    qcContour const eight(kEight, true, 5);
    EXPECT_EQ(qcRegion(eight, qcContourDefs::eRegularize).label(), 0u);
}

TEST(Region, StaysClosed)
{
    qcRegion region = regionOf(square(0, 0, 4));
    qcContour& contour = region;
    Changes changes;
    region.tracking(true);
    contour.isClosed(true);
    EXPECT_THROW(contour.isClosed(false), qcContourDefs::RegionCannotBeSetOpen);
    EXPECT_EQ(changes.count, 0);
    contour = qcContour(square(1, 1, 2), false);
    EXPECT_TRUE(region.isClosed());
    EXPECT_EQ(region.length(), 8);
    region.tracking(false);
}

TEST(Region, ChecksHolesAgainstItsOutlineAlone)
{
    enum Outcome { eTaken, eMeets, eNull };
    struct {
        char const* name;
        std::vector<Points> holes;  // an empty one stands for a null handle
        Outcome outcome;
    } const cases[] = {
        {"none", {}, eTaken},
        {"inside, outside, overlapping",
         {square(2, 2, 3), square(20, 20, 5), square(3, 3, 3)},
         eTaken},
        {"around the outline", {square(-5, -5, 50)}, eTaken},
        {"crossing", {square(2, 2, 3), square(8, 8, 5)}, eMeets},
        {"resting on the outline with a vertex", {{{5, 0}, {6, 3}, {4, 3}}}, eMeets},
        {"the outline itself", {square(0, 0, 10)}, eMeets},
        {"crossing before null", {square(8, 8, 5), {}}, eMeets},
        {"null before crossing", {{}, square(8, 8, 5)}, eNull},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        std::vector<Hole> const old{holeOf(square(1, 1, 1))};
        std::vector<Hole> holes;
        std::vector<qcPtrHandle<qcRegion>> changeable;
        for (auto const& points : c.holes) {
            changeable.emplace_back(points.empty() ? nullptr : new qcRegion(regionOf(points)));
            holes.emplace_back(changeable.back());
        }
        for (bool const asConst : {true, false}) {
            qcRegion region = regionOf(square(0, 0, 10));
            region.holes(old);
            EXPECT_EQ(region.area(true), 99);
            Changes changes;
            region.tracking(true);
            auto const set = [&] { asConst ? region.holes(holes) : region.holes(changeable); };
            if (c.outcome == eNull)
                EXPECT_THROW(set(), qcBadPointer);
            else if (c.outcome == eMeets)
                EXPECT_THROW(set(), qcContourDefs::BadParams);
            else
                set();
            EXPECT_EQ(changes.count, 2) << "caches go before the holes are looked at";
            EXPECT_EQ(region.holes(), c.outcome ? old : holes);
            region.tracking(false);
        }
    }
    qcRegion speck = regionOf(Points{{1, 1}});
    EXPECT_THROW(speck.holes({holeOf(square(0, 0, 1))}), qcContourDefs::EmptyContour);
    speck.holes(std::vector<Hole>{});
}

TEST(Region, CopiesShareHolesAndKeepCaches)
{
    qcPtrHandle<qcRegion> const hole(new qcRegion(regionOf(square(2, 2, 2))));
    qcRegion source = regionOf(square(0, 0, 10));
    source.holes(std::vector<qcPtrHandle<qcRegion>>{hole});
    EXPECT_EQ(source.area(true), 96);
    qcVector<2> const center = source.centerOfMass(true);
    hole->points(square(2, 2, 6));  // what the caches were made from is no more
    {
        qcRegion copy = source;
        qcRegion assigned = regionOf(square(5, 5, 1));
        assigned = copy;
        EXPECT_EQ(hole->refCount(), 4u);
        for (auto* region : {&copy, &assigned}) {
            EXPECT_EQ(region->area(true), 96);
            EXPECT_EQ(region->centerOfMass(true), center);
            EXPECT_EQ(region->refCount(), 0u);
        }
        copy = *&copy;
        copy.holes(std::vector<Hole>{});
        EXPECT_EQ(copy.area(true), 100);
        EXPECT_EQ(source.holes().size(), 1u);
    }
    EXPECT_EQ(hole->refCount(), 2u);
    source.points(square(0, 0, 20));
    EXPECT_EQ(source.area(true), 364);
    EXPECT_NE(source.centerOfMass(true), center);
    qcRegion nest = regionOf(Figure{square(0, 0, 9), {{square(1, 1, 7), {{square(2, 2, 3), {}}}}}});
    nest = *nest.holes().front();  // which nothing else holds
    EXPECT_EQ(nest.area(true), 40);
}

TEST(Region, MapsAndDrawsItsOutlineAlone)
{
    qcRegion region = regionOf(Figure{square(0, 0, 10), {{square(2, 2, 2), {}}}});
    region.label(4);
    qcRecordingTablet tablet;
    region.draw(tablet, qcColor(), qcUITablet::eOverlayLayer);
    EXPECT_TRUE(tablet.segments().empty());
    region.draw(tablet, qcContourDefs::eOutline, qcColor(), qcUITablet::eOverlayLayer);
    EXPECT_EQ(tablet.segments().size(), 4u);
    region.map(qcXform<2>(qcMatrix<2>(), {5, 5}), region);
    EXPECT_EQ(region.points(), square(5, 5, 10));
    EXPECT_EQ(region.label(), 4u);
    EXPECT_TRUE(region.holes().empty());
}
