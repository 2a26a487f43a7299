// Areas, centres and second moments: sums over the edges, and figures put together.
#include "tests/support/outlines.h"
#include "tests/support/plain_contour.h"
#include "tests/support/rounds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace qnOutlines;
using qnTest::rounds;

namespace {

using Points = std::vector<qcVector<2>>;

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

TEST(Moments, FollowThePlainStepsUpToRounding)
{
    auto outlines = randomised(21, rounds(450));
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
        EXPECT_TRUE(qf_Area(edgelets) == qf_Area(points) || std::isnan(qf_Area(points)));
        EXPECT_TRUE(qf_CenterOfMass(edgelets) == center || center != center);
        EXPECT_TRUE(qf_CenterOfMass(points) == center || center != center);

        double sum = 0, size = 0;
        for (auto const& edge : qnPlain::edges(points, true)) {
            sum += std::fabs(edge.p1().cross(edge.p2()));
            size = std::max(size, edge.p1().len());
        }
        // Where hardly anything is left of the sums, or the place swamps the shape, rounding rules.
        if (size > 100 || !(qf_Area(points) > 1e-2 * sum) || sum < 1e-2)
            continue;
        ++compared;
        auto const plain = qnPlain::inertiaDataPolygon(points);
        EXPECT_LT(center.distance(plain.centerOfMass()), 1e-10 * size);
        expectRecord(data, plain, 1e-10 * (1 + sum * size * size));
    }
    EXPECT_GT(compared, 150);
}

TEST(Moments, RecordsAddUpAndHolesAreTakenAway)
{
    Points const square{{-1, -1}, {2, -1}, {2, 3}, {-1, 3}}, hole{{0, 1}, {1, 1}, {1, 0}, {0, 0}};
    struct {
        Points whole, first, second;
    } const cases[] = {
        {square, {{-1, -1}, {2, -1}, {2, 3}}, {{-1, -1}, {2, 3}, {-1, 3}}},
        {{{-1, 3}, {2, 3}, {2, -1}, {-1, -1}},
         {{2, 3}, {2, -1}, {-1, -1}},
         {{-1, 3}, {2, 3}, {-1, -1}}},
        // To the hole and back along one line.
        {{{-1, -1}, {2, -1}, {2, 3}, {-1, 3}, {-1, -1}, {0, 0}, {0, 1}, {1, 1}, {1, 0}, {0, 0}},
         square,
         hole},
    };
    for (auto const& c : cases) {
        auto const whole = qf_InertiaDataPolygon(c.whole);
        auto const first = qf_InertiaDataPolygon(c.first), second = qf_InertiaDataPolygon(c.second);
        expectRecord(first + second, whole, 1e-13);
        expectRecord(second + first, whole, 1e-13);
    }
    // A record of area 0 is neutral, whatever else it holds.
    qc_InertiaData const none(0, {7, 8}, {1, 2, 3, 4}), odd(-2, {1, 2}, {3, 4, 5, 6});
    expectRecord(none + odd, odd, 0);
    expectRecord(odd + none, odd, 0);
    expectRecord(qc_InertiaData() + none, none, 0);
    qc_InertiaData const opposite(2, {5, 5}, {}), least(4e-17, {5, 5}, {});
    for (auto const& cancelled : {odd + opposite, least + least})
        EXPECT_EQ(cancelled.centerOfMass(), qcVector<2>(0, 0));
}

TEST(Moments, OfTooLittleAreZero)
{
    for (Points const& points : {Points(), {{3, 4}}, {{3, 4}, {5, 9}}, {{0, 0}, {1, 1}, {3, 3}}}) {
        EXPECT_EQ(qf_Area(points), 0);
        EXPECT_EQ(qf_CenterOfMass(points), qcVector<2>());
        EXPECT_EQ(qf_InertiaDataPolygon(points).area(), 0);
    }
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
