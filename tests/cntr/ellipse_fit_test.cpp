// Ellipses for points and for moments: what comes out when the fit serves, and when it does not.
#include <cntr/contour.h>
#include <cntr/ellipse_fit.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

using Points = std::vector<qcVector<2>>;
constexpr double kPi = 3.14159265358979323846;

TEST(FitEllipse, FallsBackToACircleAndThenToNothing)
{
    Points onEllipse;
    qcEllipse const given(qcEllipse::qcEllipseGeom({5, -2}, {3, 1}, qcRadian(0.4)));
    for (int i = 0; i < 12; ++i)
        onEllipse.push_back(given.pointAt(qcRadian(0.5 * i)));
    qcEllipse const circle(qcEllipse::qcEllipseGeom({1, 1}, {std::sqrt(2), std::sqrt(2)}, {}));
    struct {
        char const* name;
        Points points;
        qcEllipse expected;  // the empty one with a residual of -1
    } const cases[] = {
        {"on an ellipse", onEllipse, given},
        {"three points", {{0, 0}, {2, 0}, {0, 2}}, circle},
        {"on a line", {{0, 0}, {1, 0}, {2, 0}, {3, 0}, {4, 0}, {5, 0}}, {}},
        {"none", {}, {}},
        {"NaN", {{0, 0}, {1, 0}, {NAN, 3}, {0, 1}, {2, 2}, {3, 1}}, {}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        qcEllipse ellipse(qcEllipse::qcEllipseGeom({9, 9}, {9, 9}, qcRadian(9))), again;
        double residual = 9, residualAgain = 9;
        qf_FitEllipse(c.points, ellipse, residual);
        EXPECT_LT(ellipse.center().distance(c.expected.center()), 1e-9);
        EXPECT_LT(ellipse.radii().distance(c.expected.radii()), 1e-9);
        EXPECT_NEAR(residual, c.expected == qcEllipse() ? -1 : 0, 1e-12);
        std::vector<qcEdgelet> edgelets;
        for (auto const& p : c.points)
            edgelets.emplace_back(p, static_cast<unsigned short>(1), qcAngle8(9));
        qf_FitEllipse(edgelets, again, residualAgain);
        EXPECT_TRUE(again == ellipse && residualAgain == residual);
        qcContour const contour(c.points, false);
        for (int times = 0; times < 2 && c.points.size() > 1; ++times) {
            residualAgain = 3;
            contour.fitEllipse(again, residualAgain);
            EXPECT_TRUE(again == ellipse && residualAgain == residual);
        }
    }
}

TEST(EllipseFromInertia, HasTheMomentsOfTheRecord)
{
    double const large = kPi * 27 / 4, small = kPi * 3 / 4;
    double const even = std::pow(16 / (3 * kPi), 0.25), c = std::cos(0.7), s = std::sin(0.7);
    double const most = c * c * large + s * s * small, least = s * s * large + c * c * small;
    double const mixed = c * s * (large - small), thin = 1.1e-12;
    struct {
        char const* name;
        qcMatrix<2> moments;
        double a, b, angle;
    } const cases[] = {
        {"square", {4 / 3.0, 0, 0, 4 / 3.0}, even, even, 0},
        {"along y", {small, 0, 0, large}, 3, 1, kPi / 2},
        {"aslant", {most, mixed, mixed, least}, 3, 1, 0.7},
        {"aslant the other way", {most, -mixed, -mixed, least}, 3, 1, -0.7},
        {"just thick enough",
         {1, 0, 0, thin},
         std::pow(16 / (kPi * kPi * thin), 0.125),
         std::pow(16 * std::pow(thin, 3) / (kPi * kPi), 0.125),
         0},
    };
    for (auto const& k : cases)
        for (double const area : {1.0, -5.0}) {
            SCOPED_TRACE(k.name);
            qcEllipse const ellipse =
                qf_EllipseFromInertiaData(qc_InertiaData(area, {4, -6}, k.moments));
            EXPECT_EQ(ellipse.center(), qcVector<2>(4, -6));
            EXPECT_NEAR(ellipse.radii().x(), k.a, 1e-12 * k.a);
            EXPECT_NEAR(ellipse.radii().y(), k.b, 1e-12 * k.b);
            EXPECT_NEAR(ellipse.rotation().toDouble(), k.angle, 1e-14);
            EXPECT_FALSE(ellipse.geom().clockwise || ellipse.geom().opposite);
        }
}

TEST(EllipseFromInertia, RefusesFlatMoments)
{
    qcMatrix<2> const flat[] = {
        {0, 0, 0, 0}, {1, 0, 0, 1e-12}, {0, 0, 0, 5}, {1, 1, 1, 1}, {NAN, 0, 0, 1}};
    for (auto const& m : flat)
        EXPECT_THROW(qf_EllipseFromInertiaData(qc_InertiaData(1, {0, 0}, m)), qcMathError::Singular)
            << m.element(0, 0) << ' ' << m.element(1, 1);
}

}  // namespace
