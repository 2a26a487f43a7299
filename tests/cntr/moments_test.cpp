// Areas, centres and second moments: known figures, the plain steps, and what turning a figure
// around or moving it must and must not change.
#include "tests/support/outlines.h"
#include "tests/support/plain_contour.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace qnOutlines;

namespace {

using Points = std::vector<qcVector<2>>;

Points const kSquare{{0, 0}, {1, 0}, {1, 1}, {0, 1}};

void expectRecord(qc_InertiaData const& data, qc_InertiaData const& expected, double tolerance)
{
    EXPECT_NEAR(data.area(), expected.area(), tolerance);
    EXPECT_NEAR(data.centerOfMass().x(), expected.centerOfMass().x(), tolerance);
    EXPECT_NEAR(data.centerOfMass().y(), expected.centerOfMass().y(), tolerance);
    for (int i = 0; i < 4; ++i)
        EXPECT_NEAR(data.inertiaMatrix().element(i / 2, i % 2),
                    expected.inertiaMatrix().element(i / 2, i % 2), tolerance)
            << i;
}

std::vector<double> numbers(qc_InertiaData const& data)
{
    auto const& m = data.inertiaMatrix();
    return {data.area(),     data.centerOfMass().x(), data.centerOfMass().y(), m.element(0, 0),
            m.element(0, 1), m.element(1, 0),         m.element(1, 1)};
}

/// The record by sums over the edges: exact in principle, and nothing like a fan of triangles.
qc_InertiaData bySums(Points const& points)
{
    double a = 0, x = 0, y = 0, xx = 0, xy = 0, yy = 0;
    for (auto const& edge : qnPlain::edges(points, true)) {
        double const px = edge.p1().x(), py = edge.p1().y(), qx = edge.p2().x(), qy = edge.p2().y();
        double const k = px * qy - py * qx;
        a += k / 2;
        x += k * (px + qx) / 6;
        y += k * (py + qy) / 6;
        xx += k * (px * px + px * qx + qx * qx) / 12;
        yy += k * (py * py + py * qy + qy * qy) / 12;
        xy += k * (2 * px * py + px * qy + qx * py + 2 * qx * qy) / 24;
    }
    double const sign = a < 0 ? -1 : 1;
    xx = sign * (xx - x * x / a);
    xy = sign * (xy - x * y / a);
    yy = sign * (yy - y * y / a);
    return qc_InertiaData(a, {x / a, y / a}, {xx, xy, xy, yy});
}

TEST(Moments, KnownFiguresInEitherOrientation)
{
    struct {
        char const* name;
        Points points;
        double area;
        qcVector<2> center;
        double m00, m01, m11;
    } const cases[] = {
        {"square", kSquare, 1, {0.5, 0.5}, 1 / 12.0, 0, 1 / 12.0},
        {"pentagon",
         {{0, 0}, {4, 0}, {5, 3}, {1, 4}, {-1, 2}},
         17.5,
         {2, 1.8190476},
         35.416667,
         1.041667,
         17.510317},
        {"L",
         {{0, 0}, {10, 0}, {10, 1}, {1, 1}, {1, 10}, {0, 10}},
         19,
         {2.8684211, 2.8684211},
         180.00439,
         -106.57895,
         180.00439},
        {"half a square, with a repeat",
         {{0, 0}, {1, 0}, {1, 0}, {1, 1}},
         0.5,
         {2 / 3.0, 1 / 3.0},
         1 / 36.0,
         1 / 72.0,
         1 / 36.0},
    };
    for (auto const& c : cases)
        for (double const sign : {1.0, -1.0}) {
            SCOPED_TRACE(c.name);
            Points points = c.points;
            if (sign < 0)
                std::reverse(points.begin(), points.end());
            qc_InertiaData const expected(sign * c.area, c.center, {c.m00, c.m01, c.m01, c.m11});
            expectRecord(qf_InertiaDataPolygon(points), expected, 5e-6);
            EXPECT_DOUBLE_EQ(qf_Area(points), c.area);
            EXPECT_LT(qf_CenterOfMass(points).distance(c.center), 1e-7);
        }
}

TEST(Moments, FollowThePlainStepsUpToRounding)
{
    auto outlines = randomised(21, 450);
    for (auto const& outline : named())
        outlines.push_back(outline);
    int compared = 0;
    for (auto const& outline : outlines) {
        SCOPED_TRACE(outline.name);
        auto const& points = outline.points;
        auto const data = qf_InertiaDataPolygon(points);
        auto const center = qnContour::centerOfMass(points);
        std::vector<qcEdgelet> edgelets;
        for (auto const& p : points)
            edgelets.emplace_back(p, static_cast<unsigned short>(5), qcAngle8(1));
        EXPECT_TRUE(qf_Area(edgelets) == qf_Area(points) || data.area() != data.area());
        EXPECT_TRUE(qf_CenterOfMass(edgelets) == center || center != center);
        EXPECT_TRUE(qf_CenterOfMass(points) == center || center != center);

        double sum = 0, size = 0;
        for (auto const& edge : qnPlain::edges(points, true)) {
            sum += std::fabs(edge.p1().cross(edge.p2()));
            size = std::max(size, edge.p1().len());
        }
        // Where hardly anything is left of the sums, or the place swamps the shape, rounding rules.
        if (size > 100 || !(qf_Area(points) > 1e-3 * sum) || sum < 1e-2)
            continue;
        ++compared;
        EXPECT_LT(center.distance(qnPlain::centerOfMass(points)), 1e-10 * size);
        expectRecord(data, qnPlain::inertiaDataPolygon(points), 1e-10 * (1 + sum * size * size));
    }
    EXPECT_GT(compared, 150);
}

TEST(Moments, OfSimpleFiguresAreTheSumsWhereverTheyStandAndTurn)
{
    for (auto const& outline : randomised(77, 300)) {
        if (outline.name.compare(0, 4, "star") && outline.name.compare(0, 4, "comb"))
            continue;
        double const area = qf_Area(outline.points);
        if (!(area > 1 && area < 1e4) || std::fabs(outline.points[0].x()) > 1e4)
            continue;
        SCOPED_TRACE(outline.name);
        auto points = outline.points;
        auto const expected = bySums(points);
        double const tolerance = 1e-9 * (1 + area * area);
        expectRecord(qf_InertiaDataPolygon(points), expected, tolerance);
        std::rotate(points.begin(), points.begin() + 1, points.end());
        expectRecord(qf_InertiaDataPolygon(points), expected, tolerance);
        std::reverse(points.begin(), points.end());
        expectRecord(
            qf_InertiaDataPolygon(points),
            qc_InertiaData(-expected.area(), expected.centerOfMass(), expected.inertiaMatrix()),
            tolerance);
    }
}

TEST(Moments, RecordsAddUpAndHolesAreTakenAway)
{
    qc_InertiaData const unit = qf_InertiaDataPolygon(kSquare);
    auto const twice = unit + unit;
    expectRecord(twice, qc_InertiaData(2, {0.5, 0.5}, {1 / 6.0, 0, 0, 1 / 6.0}), 1e-15);
    Points const right{{1, 0}, {2, 0}, {2, 1}, {1, 1}}, both{{0, 0}, {2, 0}, {2, 1}, {0, 1}};
    expectRecord(unit + qf_InertiaDataPolygon(right), qf_InertiaDataPolygon(both), 1e-14);
    Points const big{{-1, -1}, {1, -1}, {1, 1}, {-1, 1}},
        hole{{-0.5, 0.5}, {0.5, 0.5}, {0.5, -0.5}, {-0.5, -0.5}};
    qc_InertiaData const ring(3, {0, 0}, {1.25, 0, 0, 1.25});
    expectRecord(qf_InertiaDataPolygon(big) + qf_InertiaDataPolygon(hole), ring, 1e-14);
    expectRecord(qf_InertiaDataPolygon(hole) + qf_InertiaDataPolygon(big), ring, 1e-14);
    // A record of area 0 is neutral, whatever else it holds.
    qc_InertiaData const none(0, {7, 8}, {1, 2, 3, 4}), odd(-2, {1, 2}, {3, 4, 5, 6});
    EXPECT_EQ(numbers(none + odd), numbers(odd));
    EXPECT_EQ(numbers(odd + none), numbers(odd));
    EXPECT_EQ(numbers(qc_InertiaData() + none), numbers(none));
    EXPECT_EQ((odd + qc_InertiaData(2 + 4e-16, {5, 5}, {1, 0, 0, 1})).centerOfMass().x() == 0,
              false);
    EXPECT_EQ((odd + qc_InertiaData(2, {5, 5}, {1, 0, 0, 1})).centerOfMass(), qcVector<2>(0, 0));
    std::mt19937 random(4);
    auto const number = [&] { return random() % 5 ? uniform(random, -3, 3) : 1e-170; };
    for (int i = 0; i < 400; ++i) {
        qc_InertiaData const a(number(), {number(), 1}, {number(), number(), 9, number()});
        qc_InertiaData const b(number(), {2, number()}, {number(), number(), 8, number()});
        EXPECT_EQ(numbers(a + b), numbers(qnPlain::inertiaSum(a, b)));
    }
}

TEST(Moments, OfTooLittleAreZero)
{
    struct {
        char const* name;
        Points points;
    } const cases[] = {
        {"nothing", {}},
        {"one", {{3, 4}}},
        {"two", {{3, 4}, {5, 9}}},
        {"on a line", {{0, 0}, {1, 1}, {3, 3}}},
        {"one place", {{2, 2}, {2, 2}, {2, 2}}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(qf_Area(c.points), 0);
        EXPECT_EQ(qf_CenterOfMass(c.points), qcVector<2>());
        EXPECT_EQ(qf_InertiaDataPolygon(c.points).area(), 0);
    }
    EXPECT_EQ(numbers(qf_InertiaDataPolygon(cases[2].points)), std::vector<double>(7, 0.0));
    EXPECT_EQ(qf_Area(std::vector<qcEdgelet>()), 0);
    EXPECT_EQ(qf_CenterOfMass(std::vector<qcEdgelet>()), qcVector<2>());
    EXPECT_EQ(qf_CenterOfMass({{0, 0}, {1e-3, 0}, {0, 9e-4}}), qcVector<2>()) << "below 1e-6";
    EXPECT_GT(qf_CenterOfMass({{0, 0}, {1e-3, 0}, {0, 1.1e-3}}).len(), 3e-4);
    // Vertices that repeat, far off: every turn of a flat triangle may look outside.
    EXPECT_TRUE(std::isfinite(
        qf_InertiaDataPolygon({{1e9, 1e9}, {1e9, 1e9}, {3e9, 1e9}, {1e9, 1e9}}).area()));
}

TEST(Moments, StandardDeviationIsThatOfTheWholePopulation)
{
    EXPECT_EQ(qf_StdDev({1, 2, 3, 4}), std::sqrt(1.25));
    EXPECT_EQ(qf_StdDev({7}), 0);
    EXPECT_EQ(qf_StdDev({}), 0);
}

}  // namespace
