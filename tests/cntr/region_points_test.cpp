// Regions and points: containment with nested holes, nearest vertices and boundary points.
#include "tests/support/regions.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace qnTest;

namespace {

/// A pond in an island in a lake.
Figure const kLake{square(0, 0, 100),
                   {{square(10, 10, 80), {{square(20, 20, 60), {{square(30, 30, 40), {}}}}}}}};

class Places {
public:
    explicit Places(unsigned seed) : random_(seed) {}

    /// Somewhere in the outline's box or a little outside.
    qcVector<2> around(Points const& outline)
    {
        qcRect const box = qcContour(outline).encloseRect(qcXform<2>());
        auto const part = [this] {
            return static_cast<double>(random_()) / 4294967296.0 * 1.4 - 0.2;
        };
        return box.origin().position() +
               qcVector<2>(box.size().x() * part(), box.size().y() * part());
    }

private:
    std::mt19937 random_;
};

/// The outline shrunk towards a place; where the two meet, no hole at all.
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
    return figure;
}

bool insideByParity(Points const& p, qcVector<2> const& point)
{
    bool in = false;
    for (std::size_t i = 0, j = p.size() - 1; i < p.size(); j = i++)
        if ((p[i].y() > point.y()) != (p[j].y() > point.y()) &&
            point.x() <
                (p[j].x() - p[i].x()) * (point.y() - p[i].y()) / (p[j].y() - p[i].y()) + p[i].x())
            in = !in;
    return in;
}

/// Whether a ray from the point, as long as containment makes it, leaves the box in any direction.
bool rayLeavesBox(Points const& outline, qcVector<2> const& point)
{
    qcRect const box = qcContour(outline).encloseRect(qcXform<2>());
    qcVector<2> const a = box.origin().position(), b = box.lr().position();
    double farthest = 0;
    for (auto const& corner : {a, b, qcVector<2>(a.x(), b.y()), qcVector<2>(b.x(), a.y())})
        farthest = std::max(farthest, point.distance(corner));
    double reach = 0;
    for (auto const& p : outline)
        reach = std::max(reach, outline[0].distance(p));
    return 2 * reach > 1.001 * farthest;
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
        {{5, 50}, true, true, 5},           {{15, 50}, true, false, 5},
        {{25, 50}, true, true, 15},         {{50, 50}, true, false, 40},
        {{-3, 50}, false, false, 3},        {{100, 100}, true, true, 0},
        {{90, 90}, true, false, 0},  // a corner of the hole is in the hole
        {{103, 104}, false, false, 5},      {{100 + 9e-7, 100}, false, false, 9e-7},
        {{100 - 9e-7, 100}, true, true, 0},
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

TEST(RegionPoints, TheOutlineWinsTies)
{
    qcRegion region =
        regionOf(Figure{square(0, 0, 8), {{square(2, 2, 4), {}}, {square(2, 2, 4), {}}}});
    struct {
        qcVector<2> point;
        long index, which;
    } const cases[] = {{{1, 1}, 0, -1}, {{1.5, 1.5}, 0, 0}, {{4, 4}, 0, 0}, {{6.5, 6}, 2, 0}};
    for (auto const& c : cases) {
        long which = 99;
        EXPECT_EQ(region.closestVertexIndex(c.point, true, which), c.index);
        EXPECT_EQ(which, c.which);
        region.closestVertexIndex(c.point, false, which);
        EXPECT_EQ(which, -1);
    }
    EXPECT_EQ(region.closestVertexIndex({3, 3}), 0);
    EXPECT_EQ(region.closestPoint({3, 1}, false, true), qcVector<2>(3, 0));
    long which = 0;
    EXPECT_THROW(regionOf(Points{{1, 1}}).closestVertexIndex({}, true, which),
                 qcContourDefs::EmptyContour);
    EXPECT_THROW(regionOf(Points{}).inside({}, true), qcContourDefs::EmptyContour);
}

TEST(RegionPoints, AnswerAsThePlainStepsDo)
{
    Places places(11);
    for (unsigned seed = 20; seed < 24; ++seed)
        for (auto const& curve : crossingCurves(seed)) {
            SCOPED_TRACE(curve.name);
            Figure const figure =
                withHoles(curve.points, {places.around(curve.points), places.around(curve.points)});
            qcRegion region = regionOf(figure);
            for (int i = 0; i < 40; ++i) {
                // Now and then on a vertex or in the middle of an edge.
                auto const at = static_cast<std::size_t>(i);
                qcVector<2> const p = i % 10 == 8   ? curve.points[at]
                                      : i % 10 == 9 ? (curve.points[at] + curve.points[at + 1]) / 2
                                                    : places.around(curve.points);
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

TEST(RegionPoints, ContainmentIsParityAwayFromTheBorder)
{
    Places places(12);
    int compared = 0;
    for (unsigned seed = 30; seed < 34; ++seed)
        for (auto const& curve : crossingCurves(seed)) {
            SCOPED_TRACE(curve.name);
            qcRegion const region = regionOf(curve.points);
            for (int i = 0; i < 100; ++i) {
                qcVector<2> const p = places.around(curve.points);
                if (region.qcContour::distToPoint(p, false) < 1e-3 ||
                    !rayLeavesBox(curve.points, p))
                    continue;
                ++compared;
                EXPECT_EQ(region.inside(p, false), insideByParity(curve.points, p))
                    << p.x() << ' ' << p.y();
            }
        }
    EXPECT_GT(compared, 5000);
}

TEST(RegionPoints, ARayThatEndsTooSoonCallsAnOutsidePointInside)
{
    Points const outline{{0, 0}, {20, 3}, {6, 7}, {-14, 14}, {-17, -11}, {3, -20}};
    qcVector<2> const point(20, -19.5);
    EXPECT_FALSE(insideByParity(outline, point));
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
