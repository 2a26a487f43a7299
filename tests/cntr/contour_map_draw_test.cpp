// A contour mapped, as a polygon and back, drawn, and its convex hull as a region.
#include "tests/support/outlines.h"
#include "tests/support/plain_contour.h"
#include "tests/support/rounds.h"

#include <cntr/region.h>

#include <qc/core/convex_hull.h>

#include <gtest/gtest.h>

using namespace qnOutlines;

namespace {

using Points = std::vector<qcVector<2>>;

TEST(ContourMap, KeepsStateAndLabelButNotTheBound)
{
    qcXform<2> const xform(qcMatrix<2>(0, -2, 1, 0.25), {3, -1});
    for (bool const closed : {false, true}) {
        qcContour source({{1, 4}, {2, -8}}, closed, 7), result({{1, 1}}, !closed, 2);
        source.cachedVectorSize(5);
        source.map(xform, result);
        EXPECT_EQ(result, qcContour({{-5, 1}, {19, -1}}, closed));
        EXPECT_EQ(result.label(), 7u);
        source.map(xform, source);
        EXPECT_EQ(source, result) << "onto itself";
    }
}

TEST(ContourMap, SetsOnlyTheContourPartOfARegion)
{
    qcRegion target({{0, 0}, {9, 0}, {9, 9}});
    target.holes({qcPtrHandle_const<qcRegion>(new qcRegion({{7, 1}, {8, 1}, {8, 2}}))});
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
    // Ends closer than 1e-15 are one.
    EXPECT_EQ(qcContour(qcPolygon({{0, 0}, {1, 0}, {0, 9e-16}}), 3).label(), 3u);
    EXPECT_TRUE(qcContour(qcPolygon({{0, 0}, {1, 0}, {0, 9e-16}}), 0).isClosed());
    EXPECT_FALSE(qcContour(qcPolygon({{0, 0}, {1, 0}, {0, 1.1e-15}}), 0).isClosed());
}

TEST(ContourDraw, DrawsEveryEdgeInOrder)
{
    for (auto const& outline : named()) {
        SCOPED_TRACE(outline.name);
        qcRecordingTablet tablet;
        qcColor const color(1, 2, 3);
        qcContour const contour(outline.points, outline.closed);
        int const mode = outline.closed ? 3 : 0;
        contour.draw(tablet, static_cast<qcContourDefs::DrawMode>(mode), color,
                     qcUITablet::eImageLayer);
        auto const edges = qnPlain::edges(outline.points, outline.closed);
        ASSERT_EQ(tablet.segments().size(), edges.size());
        for (std::size_t k = 0; k < edges.size(); ++k) {
            auto const& drawn = tablet.segments()[k];
            auto const &from = edges[k].p1(), &to = edges[k].p2();
            EXPECT_EQ(drawn.from, qcPair<double>(from.x(), from.y()));
            EXPECT_EQ(drawn.to, qcPair<double>(to.x(), to.y()));
            EXPECT_TRUE(drawn.color == color && drawn.layer == qcUITablet::eImageLayer);
        }
    }
}

TEST(ContourHull, IsTheHullOfThePointsAsAClosedRegion)
{
    for (auto const& outline : randomised(31, qnTest::rounds(90))) {
        SCOPED_TRACE(outline.name);
        if (outline.points.size() < 2)
            continue;
        Points expected;
        qfConvexHull(outline.points, expected);
        qcRegion hull({{0, 0}, {90, 0}, {90, 90}}), itself(outline.points);
        hull.holes({qcPtrHandle_const<qcRegion>(new qcRegion({{70, 5}, {80, 5}, {80, 6}}))});
        hull.label(5);
        qcContour(outline.points, outline.closed, 7).convexHull(hull);
        itself.convexHull(itself);
        EXPECT_EQ(hull.points(), expected);
        EXPECT_EQ(itself, hull);
        EXPECT_EQ(itself.length(), qcContour(expected).length());
        EXPECT_EQ(hull.label(), 0u);
        EXPECT_TRUE(hull.holes().empty());
    }
}

}  // namespace
