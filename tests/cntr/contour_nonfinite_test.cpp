// What each query gives where coordinates or arguments are not finite, in one table.
#include "tests/support/contour_answers.h"
#include "tests/support/plain_region.h"
#include "tests/support/rounds.h"

#include <cntr/region.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace qnOutlines;
using qnTest::rounds;

namespace {

using Points = std::vector<qcVector<2>>;

double const kInf = std::numeric_limits<double>::infinity();
double const kNaN = std::numeric_limits<double>::quiet_NaN();

qcXform<2> const kIdentity;

/// Each answer as numbers; NaN stands for NaN.
struct Row {
    char const* name;
    Points points;
    double length;
    qcVector<2> mean;
    double median;
    long closestVertex;        // to (1, 1)
    qcVector<2> closestPoint;  // to (1, 1)
    std::vector<int> near;     // to (0, 0) within 2
    long rightmost;            // direction 0
    long slanted;              // direction 1
    qcVector<2> smallest, largest;
    double farthestRadius, firstRadius;
    Points crossings;  // with (-1, 0.5) to (9, 0.5)
    Points hull;
};

std::vector<Row> rows()
{
    qcVector<2> const nans(kNaN, kNaN);
    double const diagonal = std::sqrt(8);
    Points const triangle{{0, 0}, {2, 0}, {2, 2}};
    // clang-format off
    return {
        {"NaN first", {{kNaN, kNaN}, {0, 0}, {2, 0}, {2, 2}}, kNaN, nans, kNaN,
         1, {1, 0}, {1}, 2, 3, nans, nans, diagonal / 2, 0, {}, triangle},
        {"NaN later", {{0, 0}, {2, 0}, {kNaN, 5}, {2, 2}}, kNaN, nans, kNaN,
         0, {1, 1}, {0}, 1, 3, {0, 0}, {2, 5}, diagonal / 2, diagonal, {{0.5, 0.5}}, triangle},
        {"NaN alone", {nans, nans}, kNaN, nans, kNaN,
         0, {0, 0}, {}, -1, -1, nans, nans, 0, 0, {}, {}},
        {"infinite x", {{0, 0}, {kInf, 0}, {2, 2}}, kInf, nans, kInf,
         0, {1, 1}, {0}, 1, 1, {0, 0}, {kInf, 2}, kInf, kInf, {{0.5, 0.5}}, {{0, 0}, {2, 2}}},
        {"minus infinity", {{-kInf, -kInf}, {0, 0}, {0, 2}}, kInf, nans, kInf,
         1, {0, 1}, {1}, 1, 2, {-kInf, -kInf}, {0, 2}, kInf, kInf, {{0, 0.5}}, {{0, 0}, {0, 2}}},
    };
    // clang-format on
}

void expectSame(double a, double b, char const* what)
{
    EXPECT_TRUE(a == b || (a != a && b != b)) << what << ": " << a << " instead of " << b;
}

void expectSame(qcVector<2> const& a, qcVector<2> const& b, char const* what)
{
    expectSame(a.x(), b.x(), what);
    expectSame(a.y(), b.y(), what);
}

TEST(ContourNonFinite, EveryQueryHasItsAnswer)
{
    for (auto const& row : rows()) {
        SCOPED_TRACE(row.name);
        OpenContour const c(row.points);
        expectSame(c.length(), row.length, "length");
        expectSame(c.meanPosition(), row.mean, "mean position");
        expectSame(c.medianFeatureSize(), row.median, "median edge");
        EXPECT_EQ(c.closestVertexIndex({1, 1}), row.closestVertex);
        expectSame(c.closestPoint({1, 1}, false), row.closestPoint, "closest point");
        EXPECT_EQ(c.vertexIndex({0, 0}, 2), row.near);
        EXPECT_EQ(c.extremalVertexIndex(qcRadian(0)), row.rightmost);
        EXPECT_EQ(c.extremalVertexIndex(qcRadian(1)), row.slanted);
        if (row.rightmost < 0)
            expectSame(c.extremalVertexPosition(qcRadian(0)), {kNaN, kNaN}, "no extremal vertex");
        expectSame(c.encloseRect(kIdentity).origin().position(), row.smallest, "smallest corner");
        expectSame(c.encloseRect(kIdentity).lr().position(), row.largest, "largest corner");
        expectSame(c.diameter(qcContourDefs::eFarthestPair) / 2, row.farthestRadius, "pair");
        expectSame(c.diameter(qcContourDefs::eFromFirstPoint) / 2, row.firstRadius, "first");
        EXPECT_EQ(c.intersections(qcLineSeg({-1, 0.5}, {9, 0.5}), true), row.crossings);
        qcRegion hull;
        c.convexHull(hull);
        EXPECT_EQ(hull.points(), row.hull);
        qcEllipse ellipse;
        double residual = 0;
        c.fitEllipse(ellipse, residual);
        EXPECT_EQ(residual, -1);
        EXPECT_TRUE(c == OpenContour(c)) << "equal to its copy";
    }
}

/// Points and questions with NaN, infinities, the largest and the smallest numbers in every place:
/// the plain steps and the library agree, and neither stumbles.
TEST(ContourNonFinite, AgreesWithThePlainStepsAnywhere)
{
    double const odd[] = {kNaN, kInf, -kInf, 1e308, -1e308, 5e-324, 1e-308, -0.0, 3e9, 0.5, 1, 2};
    std::mt19937 random(17);
    auto const pick = [&] { return odd[random() % 12]; };
    for (int i = 0; i < rounds(600); ++i) {
        SCOPED_TRACE(i);
        Outline outline{"", {}, i % 3 != 0};
        std::size_t const n = 2 + random() % (i % 40 == 0 ? 200 : 7);
        while (outline.points.size() < n)
            outline.points.push_back(random() % 4
                                         ? qcVector<2>(uniform(random, -2, 3), odd[random() % 12])
                                         : qcVector<2>(pick(), pick()));
        Questions questions = questionsAbout(outline, random);
        questions.places.emplace_back(pick(), pick());
        questions.segments.emplace_back(qcVector<2>(pick(), pick()), qcVector<2>(-1, 2));
        questions.tolerances = {1, kInf, kNaN, 1e-300, 0};
        questions.angles = {kNaN, kInf, 0, 1, kNaN, -4};
        questions.xforms.push_back({{kNaN, 0, 0, 1}, {0, 0}});
        questions.xforms.push_back({{1, 0, 0, 1}, {kInf, 0}});
        OpenContour const contour(outline.points, outline.closed);
        auto const answers = ask(contour, questions);
        ASSERT_EQ(difference(answers, askPlain(outline, questions)), "");
        ASSERT_EQ(difference(ask(contour, questions), answers), "") << "asked again";
    }
}

/// Finite outlines of many vertices answer through an index, unless the question is not finite.
TEST(ContourNonFinite, ManyVerticesAnswerAPlaceThatIsNotFinite)
{
    Outline outline{"", {}, true};
    for (int i = 0; i < 100; ++i)
        outline.points.push_back(qcVector<2>(5, qcRadian(i * 0.0628)));
    for (double const odd : {kNaN, kInf, -kInf, 1e200})
        for (qcVector<2> const& place : {qcVector<2>(odd, 1), {1, odd}, {odd, odd}}) {
            OpenContour const contour(outline.points, true);
            expectSame(contour.closestPoint(place, false),
                       qnPlain::closestPoint(outline.points, true, place), "closest point");
            EXPECT_EQ(contour.closestVertexIndex(place),
                      qnPlain::closestVertexIndex(outline.points, place));
        }
    // Coordinates whose differences leave the range of double, asked often enough for an index.
    double const size = 1.7e308;
    Points const triangle{{-size, -size}, {size, -size}, {0, size}};
    qcRegion const region(triangle, qcContourDefs::eIgnore);
    for (int i = 0; i < 8; ++i) {
        qcVector<2> const place(size * 0.1 * i, size * 0.05 * (i - 4));
        EXPECT_EQ(region.inside(place, false), qnPlain::inside({triangle, {}}, place, false));
    }
}

}  // namespace
