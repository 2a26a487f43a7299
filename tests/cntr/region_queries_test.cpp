// Regions asked: points and nested holes, segments, areas and moments.
#include "tests/support/outlines.h"
#include "tests/support/regions.h"
#include "tests/support/rounds.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace qnTest;
using qnOutlines::uniform;

namespace {

/// A pond in an island in a lake.
Figure const kLake{square(0, 0, 100),
                   {{square(10, 10, 80), {{square(20, 20, 60), {{square(30, 30, 40), {}}}}}}}};

/// Somewhere in the outline's box or a little outside.
qcVector<2> around(Points const& outline, std::mt19937& random)
{
    qcRect const box = qcContour(outline).encloseRect(qcXform<2>());
    return box.origin().position() + qcVector<2>(box.size().x() * uniform(random, -0.2, 1.2),
                                                 box.size().y() * uniform(random, -0.2, 1.2));
}

/// Holes that are the outline shrunk towards a place, where the two do not meet; the last hole
/// twice, so that vertices are equally near.
Figure withHoles(Points const& outline, std::vector<qcVector<2>> const& places)
{
    Figure figure{outline, {}};
    for (auto const& place : places) {
        Points hole;
        for (auto const& p : outline)
            hole.push_back(place + (p - place) * 0.07);
        if (qcContour(outline).intersections(qcContour(hole)).empty())
            figure.holes.push_back({hole, {}});
    }
    if (!figure.holes.empty())
        figure.holes.push_back(Figure(figure.holes.back()));
    return figure;
}

}  // namespace

TEST(RegionPoints, HolesOfHolesAreInsideAgain)
{
    qcRegion lake = regionOf(kLake);
    struct {
        qcVector<2> point;
        bool inOutline, inRegion;
        double toBoundary;  // the region's own and that of its holes, but not theirs
    } const cases[] = {
        {{5, 50}, true, true, 5},      {{15, 50}, true, false, 5},
        {{25, 50}, true, true, 15},    {{50, 50}, true, false, 40},
        {{100, 100}, true, true, 0},   {{90, 90}, true, false, 0},  // the hole's corner
        {{103, 104}, false, false, 5}, {{100 + 9e-7, 100}, false, false, 9e-7},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << c.point.x() << ' ' << c.point.y());
        EXPECT_EQ(lake.inside(c.point, false), c.inOutline);
        EXPECT_EQ(lake.inside(c.point, true), c.inRegion);
        for (bool const considerHoles : {false, true}) {
            EXPECT_NEAR(lake.distToPoint(c.point, false, considerHoles, false), c.toBoundary,
                        1e-12);
            bool const in = considerHoles ? c.inRegion : c.inOutline;
            EXPECT_NEAR(lake.distToPoint(c.point, false, considerHoles, true),
                        in ? 0 : c.toBoundary, 1e-12);
        }
    }
}

TEST(RegionPoints, AnswerAsThePlainStepsDo)
{
    std::mt19937 random(11);
    for (int seed = 0; seed < rounds(4); ++seed)
        for (auto const& curve : crossingCurves(20 + static_cast<unsigned>(seed))) {
            SCOPED_TRACE(curve.name);
            Figure const figure = withHoles(
                curve.points, {around(curve.points, random), around(curve.points, random)});
            qcRegion region = regionOf(figure);
            for (int i = 0; i < 40; ++i) {
                qcLineSeg const segment(around(curve.points, random), curve.points.front());
                for (bool const ends : {false, true}) {
                    Points met = qnPlain::Contour(curve.points).intersections(segment, ends);
                    EXPECT_EQ(region.intersections(segment, ends, false), met);
                    for (auto const& hole : figure.holes)
                        for (auto const& p :
                             qnPlain::Contour(hole.outline).intersections(segment, ends))
                            met.push_back(p);
                    EXPECT_EQ(region.intersections(segment, ends, true), met);
                }
                // Now and then on a vertex or in the middle of an edge.
                auto const at = static_cast<std::size_t>(i);
                qcVector<2> const p = i % 10 == 8   ? curve.points[at]
                                      : i % 10 == 9 ? (curve.points[at] + curve.points[at + 1]) / 2
                                                    : around(curve.points, random);
                for (bool const holes : {false, true}) {
                    EXPECT_EQ(region.inside(p, holes), qnPlain::inside(figure, p, holes));
                    long which = 99;
                    auto const vertex = qnPlain::closestVertex(figure, p, holes);
                    EXPECT_EQ(region.closestVertexIndex(p, holes, which), vertex.index);
                    EXPECT_EQ(which, vertex.which);
                    for (bool const vertices : {false, true}) {
                        qcVector<2> const nearest =
                            qnPlain::closestPoint(figure, p, vertices, holes);
                        EXPECT_EQ(region.closestPoint(p, vertices, holes), nearest);
                        EXPECT_EQ(region.distToPoint(p, vertices, holes, false),
                                  p.distance(nearest));
                    }
                }
            }
        }
}

TEST(RegionPoints, ARayThatEndsTooSoonCallsAnOutsidePointInside)
{
    Points const outline{{0, 0}, {20, 3}, {6, 7}, {-14, 14}, {-17, -11}, {3, -20}};
    qcVector<2> const point(20, -19.5);
    EXPECT_TRUE(regionOf(outline).inside(point, false));
    EXPECT_EQ(regionOf(outline).distToPoint(point, false, false, true), 0);
}

TEST(RegionPoints, ALongChainOfHolesIsAnsweredAndReleased)
{
    constexpr int kDepth = 100'000;
    qcPtrHandle<qcRegion> outer;
    for (int i = 1; i <= kDepth; ++i) {
        qcPtrHandle<qcRegion> const next(new qcRegion(regionOf(square(-i, -i, 2.0 * i))));
        if (!outer.isNull())
            next->holes(std::vector<qcPtrHandle<qcRegion>>{outer});
        outer = next;
    }
    EXPECT_EQ(outer->inside({0.25, 0.5}, true), kDepth % 2 == 1);
    EXPECT_EQ(outer->inside({1.25, 0.5}, true), kDepth % 2 == 0);
    EXPECT_TRUE(outer->inside({kDepth - 0.5, 0.25}, true));
}

TEST(RegionIntersections, AreThoseOfOutlineAndHolesButNotOfTheirHoles)
{
    Points const met{{0, 50}, {100, 50}, {10, 50}, {90, 50}};
    EXPECT_EQ(regionOf(kLake).intersections(qcLineSeg({-1, 50}, {101, 50}), true, true), met);
    EXPECT_EQ(regionOf(kLake).intersections(qcContour({{-1, 50}, {101, 50}}, false), true), met);
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

TEST(RegionMoments, HolesAreTakenOffOnceAndTheirHolesNever)
{
    Points const wound = {{60, 40}, {60, 60}, {80, 60}, {80, 40}};  // clockwise
    qcRegion region = regionOf(Figure{square(0, 0, 100), {{wound, {{square(65, 45, 5), {}}}}}});
    EXPECT_EQ(region.area(false), 10000);
    EXPECT_EQ(region.area(true), 9600);
    EXPECT_LT(region.centerOfMass(true).distance({(500000 - 400 * 70) / 9600.0, 50}), 1e-12);
    EXPECT_EQ(region.centerOfMass(false), qcVector<2>(50, 50));
}

TEST(RegionMoments, RefuseWhatHasNoArea)
{
    Hole const line = holeOf({{1, 1}, {2, 2}});
    long which = 0;
    for (Points const& points : {Points{}, Points{{1, 1}}, Points{{1, 1}, {5, 2}}}) {
        qcRegion region = regionOf(points);
        if (points.size() < 2) {
            EXPECT_THROW(region.inside({}, true), qcContourDefs::EmptyContour);
            EXPECT_THROW(region.closestVertexIndex({}, true, which), qcContourDefs::EmptyContour);
        }
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
