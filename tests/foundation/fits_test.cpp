// Circle and ellipse fits: known curves come back at every scale and place, and what is no such
// curve is refused.
#include <qc/core/circle_fit.h>
#include <qc/core/ellipse_fit.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace {

using Points = std::vector<qcVector<2>>;
constexpr double kPi = 3.14159265358979323846;
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

qcEllipseFitParams ellipseParams(double reference = 0.0, unsigned long ignored = 0,
                                 double largest = HUGE_VAL)
{
    return {qcEllipseFitDefs::fit_mode(0), qcRadian(reference), ignored, largest};
}

qcCircleFitParams circleParams(double used = 1.0, unsigned long ignored = 0,
                               double largest = HUGE_VAL)
{
    return {qcCircleFitDefs::fit_mode(0), used, ignored, largest};
}

Points onEllipse(qcEllipse::qcEllipseGeom const& geom, int count, double from = 0.0,
                 double to = 2.0 * kPi)
{
    Points points;
    for (int i = 0; i < count; ++i)
        points.push_back(qcEllipse(geom).pointAt(qcRadian(from + (to - from) * i / count)));
    return points;
}

/// Difference of two axis directions, which repeat every half turn.
double axisDifference(double a, double b)
{
    return std::fabs(std::remainder(a - b, kPi));
}

template <class Params, class Results>
std::string thrownBy(void (*fit)(Params const&, Points const&, Results&), Params const& params,
                     Points const& points)
{
    Results results;
    results.residual = -7.0;
    try {
        fit(params, points, results);
        return "nothing";
    } catch (qcFitError::Errors const& error) {
        EXPECT_EQ(results.residual, -7.0) << "a fit that fails leaves the results alone";
        EXPECT_NE(dynamic_cast<qcException const*>(&error), nullptr);
        return error.what();
    }
}

char const kParams[] = "fit: a parameter is out of range";
char const kNotFinite[] = "fit: a coordinate or the result is not finite";
char const kFew[] = "fit: too few distinct points";
char const kDegenerate[] = "fit: the points do not pin down one curve";
char const kNoEllipse[] = "fit: the best curve is no ellipse";
char const kResidual[] = "fit: the residual is larger than accepted";

}  // namespace

TEST(EllipseFit, FindsKnownEllipsesAtEveryScaleAndPlace)
{
    struct {
        char const* name;
        double longer, rotation, from, to, error;  // the shorter radius is 1
    } const cases[] = {
        {"plain", 1.5, 0.4, 0.0, 2 * kPi, 1e-11},
        {"nearly round", 1.0 + 1e-5, 1.1, 0.0, 2 * kPi, 1e-9},
        {"a million to one", 1e6, 0.3, 0.0, 2 * kPi, 1e-8},
        {"a twelfth", 1.5, -1.2, 1.0, 1.0 + kPi / 6, 1e-6},
    };
    for (auto const& c : cases)
        for (double const scale : {1e-150, 1.0, 1e150})
            for (double const shift : {0.0, 1e3}) {  // in sizes of the ellipse
                SCOPED_TRACE(testing::Message() << c.name << " scale " << scale << " at " << shift);
                qcVector<2> const center(shift * scale * c.longer, -2.0 * shift * scale * c.longer);
                qcEllipseFitResults r;
                qfEllipseFit(ellipseParams(c.rotation),
                             onEllipse({center, {c.longer * scale, scale}, qcRadian(c.rotation)},
                                       60, c.from, c.to),
                             r);
                // A rounding of the coordinates is this much larger, to the short axis.
                double const error = c.error * (shift > 0.0 ? 1.0 + shift * c.longer : 1.0);
                if (error > 1e-3)
                    continue;
                EXPECT_NEAR(r.ellipse.radii().x() / scale, c.longer, error * c.longer);
                EXPECT_NEAR(r.ellipse.radii().y() / scale, 1.0, error * c.longer);
                EXPECT_NEAR((r.ellipse.center() / scale - center / scale).len(), 0.0,
                            2 * error * c.longer);
                EXPECT_LT(axisDifference(r.ellipse.rotation().toDouble(), c.rotation),
                          10 * error * c.longer / (c.longer - 1));
                EXPECT_LT(r.residual / scale, 1e-11 * c.longer * (1.0 + shift));
            }
    // A speck far out: 1e-3 across at 1e6, where neighbouring doubles are 1e-10 apart.
    qcEllipseFitResults r;
    qfEllipseFit(ellipseParams(), onEllipse({{1e6, 1e6}, {1e-3, 5e-4}, qcRadian(0.5)}, 40), r);
    EXPECT_NEAR(r.ellipse.radii().y(), 5e-4, 1e-9);
    EXPECT_NEAR(r.ellipse.rotation().toDouble(), 0.5, 1e-5);
}

TEST(EllipseFit, HonoursItsParameters)
{
    auto points = onEllipse({{5, 1}, {4, 3}, qcRadian(0.3)}, 50);
    for (double const reference : {0.0, 1.0, 2.5, -2.0, 6.0, 100.0}) {
        qcEllipseFitResults r;
        qfEllipseFit(ellipseParams(reference), points, r);
        double const off = r.ellipse.rotation().toDouble() - reference;
        EXPECT_LE(std::fabs(std::remainder(off, 2 * kPi)), kPi / 2 + 1e-9) << reference;
        EXPECT_LT(axisDifference(r.ellipse.rotation().toDouble(), 0.3), 1e-9) << reference;
    }
    points.insert(points.begin() + 7, {{5, 6}, {0.5, 3.5}});
    qcEllipseFitResults all, without;
    qfEllipseFit(ellipseParams(), points, all);
    EXPECT_GT(all.residual, 0.1);  // with both outliers in
    qfEllipseFit(ellipseParams(0.0, 2), points, without);
    EXPECT_NEAR(without.ellipse.radii().x(), 4.0, 1e-9);
    std::pair<qcEllipseFitParams, char const*> const cases[] = {
        {ellipseParams(0.0, 0, 0.1), kResidual},
        {ellipseParams(0.0, 48), kFew},
        {ellipseParams(0.0, ~0ul), kFew},
        {ellipseParams(kNaN), kParams},
        {ellipseParams(0.0, 0, kNaN), kParams}};
    for (auto const& [params, error] : cases)
        EXPECT_EQ(thrownBy(qfEllipseFit, params, points), error);
}

TEST(EllipseFit, FollowsItsPointsThroughAffineMapsAndAnyOrder)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> within(-1.0, 1.0);
    for (int const count : {8, 30, 1024})
        for (int round = 0; round < 8; ++round) {
            SCOPED_TRACE(testing::Message() << count << " points, round " << round);
            // Every eighth of many points lies elsewhere: those are no sample of the rest.
            Points points, mapped;
            for (int i = 0; i < count; ++i)
                points.emplace_back(within(random) + (i % 8 ? std::cos(i) : round),
                                    within(random) + (i % 8 ? std::sin(i) : round));
            double const a = 1.5 + 0.5 * within(random), b = within(random), c = within(random);
            for (auto const& p : points)
                mapped.emplace_back(3.0 * p.x() + b * p.y() - a, c * p.x() + a * p.y() + 5.0);
            std::shuffle(mapped.begin(), mapped.end(), random);
            qcEllipseFitResults r, m;
            qfEllipseFit(ellipseParams(), points, r);
            qfEllipseFit(ellipseParams(), mapped, m);
            auto const center = r.ellipse.center();
            qcVector<2> const expected(3.0 * center.x() + b * center.y() - a,
                                       c * center.x() + a * center.y() + 5.0);
            EXPECT_LT(m.ellipse.center().distance(expected), 1e-9);
            auto const before = r.ellipse.radii(), after = m.ellipse.radii();
            double const area = before.x() * before.y() * std::fabs(3.0 * a - b * c);
            EXPECT_NEAR(after.x() * after.y(), area, 1e-9 * area);
        }
}

TEST(Fits, ResidualIsTheDistanceOfFirstOrder)
{
    // Pairs off a circle by +h and -h: the fits are symmetric, so the centre stays.
    Points points;
    for (int i = 0; i < 40; ++i)
        points.emplace_back(i % 2 ? 11.0 : 9.0, qcRadian(i * kPi / 20));
    qcCircleFitResults circle;
    qfCircleFit(circleParams(), points, circle);
    EXPECT_NEAR(circle.circle.radius(), 10, 1e-12);
    EXPECT_NEAR(circle.residual, 1, 1e-12);
    // The form is x^2 + y^2 - c, whose first-order distance is |r^2 - c| / 2r.
    qcEllipseFitResults ellipse;
    qfEllipseFit(ellipseParams(), points, ellipse);
    EXPECT_NEAR(ellipse.ellipse.radii().x(), std::sqrt(101), 1e-10);
    double const in = (81.0 - 101) / 18.0, out = (121.0 - 101) / 22.0;
    EXPECT_NEAR(ellipse.residual, std::sqrt((in * in + out * out) / 2), 1e-10);
}

TEST(Fits, RefuseWhatIsNoSuchCurve)
{
    Points line, farLine, lineAndOne, parabola, fewTwice;
    Points many = onEllipse({{5, 1}, {4, 3}, qcRadian(0.3)}, 1000);
    many[501] = {1, kNaN};
    for (int i = 0; i < 20; ++i) {
        line.emplace_back(0.1 * i, 0.3 * i);
        farLine.emplace_back(1e6 + 0.1 * i, 1e6 + 0.7 * i);
        lineAndOne.emplace_back(i, 2.0 * i);
        parabola.emplace_back(0.1 * i - 0.7, (0.1 * i - 0.7) * (0.1 * i - 0.7));
        fewTwice.emplace_back(i % 4, i % 2);
    }
    lineAndOne.emplace_back(3, 3);
    Points const two{{1, 2}, {3, 4}, {1, 2}, {3, 4}};
    struct {
        char const* name;
        Points points;
        char const* ellipse;
        char const* circle;
    } const cases[] = {
        {"none", {}, kFew, kFew},
        {"two distinct", two, kFew, kFew},
        {"four distinct, many times", fewTwice, kFew, "nothing"},
        {"line", line, kDegenerate, kDegenerate},
        {"line far out", farLine, kDegenerate, kDegenerate},
        {"line and one point", lineAndOne, kDegenerate, "nothing"},
        {"parabola", parabola, kNoEllipse, "nothing"},
        {"NaN", {{0, 0}, {1, 0}, {0, 1}, {1, 1}, {2, kNaN}}, kNotFinite, kNotFinite},
        {"NaN among many", many, kNotFinite, kNotFinite},
        {"infinite", {{0, 0}, {1, 0}, {0, 1}, {1, 1}, {kInf, 2}}, kNotFinite, kNotFinite},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(thrownBy(qfEllipseFit, ellipseParams(), c.points), c.ellipse);
        EXPECT_EQ(thrownBy(qfCircleFit, circleParams(), c.points), c.circle);
    }
}

TEST(CircleFit, FindsKnownCirclesAtEveryScaleAndPlace)
{
    double const cases[][2] = {{2 * kPi, 1e-13}, {kPi / 5, 1e-10}, {0.01, 1e-6}};
    for (auto const& [sweep, error] : cases)
        for (double const scale : {1e-150, 1.0, 1e150, 1e307}) {
            SCOPED_TRACE(testing::Message() << sweep << " of a circle, scale " << scale);
            qcVector<2> const center(3.0 * scale, -4.0 * scale);
            qcCircleFitResults r;
            qfCircleFit(circleParams(),
                        onEllipse({center, {scale, scale}, qcRadian()}, 30, 0.3, 0.3 + sweep), r);
            EXPECT_NEAR(r.circle.radius() / scale, 1.0, 10 * error);
            EXPECT_NEAR((r.circle.center() / scale - center / scale).len(), 0.0, 10 * error);
            EXPECT_LT(r.residual / scale, 1e-14);
        }
}

TEST(CircleFit, HonoursItsParameters)
{
    auto points = onEllipse({{1, 2}, {5, 5}, qcRadian()}, 48);
    points.insert(points.begin() + 9, {{20, 0}, {-9, 14}});
    for (auto const& params : {circleParams(0.96), circleParams(1.0, 2), circleParams(0.98, 1)}) {
        qcCircleFitResults r;
        qfCircleFit(params, points, r);
        EXPECT_NEAR(r.circle.radius(), 5.0, 1e-12) << params.usedShare();
    }
    EXPECT_EQ(thrownBy(qfCircleFit, circleParams(1.0, 0, 0.5), points), kResidual);
    EXPECT_EQ(thrownBy(qfCircleFit, circleParams(1.0, ~0ul), points), kFew);
    for (double const used : {0.0, -1.0, 1.5, kNaN})
        EXPECT_EQ(thrownBy(qfCircleFit, circleParams(used), points), kParams) << used;
}
