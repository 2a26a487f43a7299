// A contour mapped, as a polygon and back, drawn, and its convex hull as a region.
#include "tests/support/outlines.h"

#include <cntr/region.h>

#include <qc/core/convex_hull.h>

#include <gtest/gtest.h>

using namespace qnOutlines;

namespace {

using Points = std::vector<qcVector<2>>;

TEST(ContourMap, KeepsStateAndLabelButNotTheBound)
{
    for (auto const& outline : named()) {
        SCOPED_TRACE(outline.name);
        qcXform<2> const xform(qcMatrix<2>(0, -2, 1, 0.25), {3, -1});
        qcContour source(outline.points, outline.closed, 7);
        Points expected;
        for (auto const& p : outline.points)
            expected.emplace_back(0 * p.x() + -2 * p.y() + 3, 1 * p.x() + 0.25 * p.y() + -1);
        source.cachedVectorSize(5);
        qcContour result({{1, 1}}, !outline.closed, 2);
        source.map(xform, result);
        EXPECT_EQ(result, qcContour(expected, outline.closed));
        EXPECT_EQ(result.label(), 7u);
        EXPECT_EQ(result.cachedVectorSize(), 3);
        source.map(xform, source);
        EXPECT_EQ(source, result) << "onto itself";
    }
}

TEST(ContourMap, SetsOnlyTheContourPartOfARegion)
{
    qcRegion target({{0, 0}, {9, 0}, {9, 9}});
    qcPtrHandle_const<qcRegion> const hole(new qcRegion({{7, 1}, {8, 1}, {8, 2}}));
    target.holes(std::vector<qcPtrHandle_const<qcRegion>>{hole});
    qcContour(Points{{0, 0}, {1, 2}}, false, 4).map(qcXform<2>::I, target);
    EXPECT_EQ(target.points(), (Points{{0, 0}, {1, 2}}));
    EXPECT_EQ(target.holes().size(), 1u);
    EXPECT_TRUE(target.isClosed());
    qcContour mapped(Points(), false);
    target.map(qcXform<2>::I, mapped);
    EXPECT_TRUE(mapped.isClosed()) << "a region maps as closed";
    EXPECT_EQ(mapped.label(), 4u);
}

TEST(ContourPolygon, ThereAndBack)
{
    for (auto const& outline : named()) {
        SCOPED_TRACE(outline.name);
        auto expected = outline.points;
        if (outline.closed && !expected.empty())
            expected.push_back(expected.front());
        qcPolygon const polygon = qcContour(outline.points, outline.closed).polygon();
        EXPECT_EQ(polygon.vertices(), expected);
        EXPECT_EQ(polygon.fillMode(), static_cast<qcPolygon::PolyFillMode>(0));
        EXPECT_EQ(qcContour(polygon, 3), qcContour(expected, outline.closed));
    }
    EXPECT_EQ(qcContour(qcPolygon({{0, 0}, {1, 0}, {0, 9e-16}}), 3).label(), 3u);
    struct {
        char const* name;
        Points vertices;
        bool closed;
    } const cases[] = {
        {"ends apart", {{0, 0}, {1, 0}, {1, 1}}, false},
        {"ends within 1e-15", {{0, 0}, {1, 0}, {0, 9e-16}}, true},
        {"ends just apart", {{0, 0}, {1, 0}, {0, 1.1e-15}}, false},
        {"one vertex", {{4, 4}}, true},
        {"none", {}, true},
    };
    for (auto const& c : cases)
        EXPECT_EQ(qcContour(qcPolygon(c.vertices), 0), qcContour(c.vertices, c.closed)) << c.name;
}

TEST(ContourDraw, DrawsEveryEdgeInOrder)
{
    for (auto const& outline : named())
        for (int const mode : {0, 3}) {
            SCOPED_TRACE(outline.name);
            qcRecordingTablet tablet;
            qcColor const color(1, 2, 3);
            qcContour(outline.points, outline.closed)
                .draw(tablet, static_cast<qcContourDefs::DrawMode>(mode), color,
                      qcUITablet::eImageLayer);
            std::size_t const n = outline.points.size(), open = outline.closed || n == 0 ? 0 : 1;
            ASSERT_EQ(tablet.segments().size(), n - open);
            for (std::size_t k = 0; k < n - open; ++k) {
                auto const& drawn = tablet.segments()[k];
                auto const& from = outline.points[(k + open + n - 1) % n];
                auto const& to = outline.points[k + open];
                EXPECT_EQ(drawn.from, qcPair<double>(from.x(), from.y()));
                EXPECT_EQ(drawn.to, qcPair<double>(to.x(), to.y()));
                EXPECT_TRUE(drawn.color == color && drawn.layer == qcUITablet::eImageLayer);
            }
        }
}

TEST(ContourHull, IsTheHullOfThePointsAsAClosedRegion)
{
    for (auto const& outline : randomised(31, 90)) {
        SCOPED_TRACE(outline.name);
        if (outline.points.size() < 2)
            continue;
        Points expected;
        qfConvexHull(outline.points, expected);
        qcContour const contour(outline.points, outline.closed, 7);
        qcRegion hull({{0, 0}, {90, 0}, {90, 90}}), again;
        hull.holes(std::vector<qcPtrHandle_const<qcRegion>>{
            qcPtrHandle_const<qcRegion>(new qcRegion({{70, 5}, {80, 5}, {80, 6}}))});
        hull.label(5);
        contour.convexHull(hull);
        qcContour(contour).convexHull(again);
        EXPECT_EQ(hull.points(), expected);
        EXPECT_EQ(again, hull);
        EXPECT_EQ(hull.label(), 0u);
        EXPECT_TRUE(hull.holes().empty());
    }
    qcContour square({{0, 0}, {2, 0}, {2, 2}, {0, 2}, {1, 1}});
    qcRegion hull;
    square.convexHull(hull);
    EXPECT_EQ(hull.points(), (Points{{0, 0}, {2, 0}, {2, 2}, {0, 2}}));
}

TEST(ContourHull, MayBeAssignedToARegionThatAsksForItsOwn)
{
    qcRegion region({{0, 0}, {2, 0}, {1, 0.5}, {2, 2}});
    region.convexHull(region);
    EXPECT_EQ(region.points(), (Points{{0, 0}, {2, 0}, {2, 2}}));
    EXPECT_EQ(region.length(), qcContour(region.points()).length());
}

}  // namespace
