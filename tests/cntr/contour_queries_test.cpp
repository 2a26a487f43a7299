// Every query of a contour against its plain transcription, and the answers that are known.
#include "tests/support/contour_answers.h"
#include "tests/support/plain_region.h"
#include "tests/support/rounds.h"

#include <cntr/region.h>
#include <qc/core/compare.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace qnOutlines;
using qnTest::rounds;

namespace {

using Points = std::vector<qcVector<2>>;

double const kInf = std::numeric_limits<double>::infinity();
double const kNaN = std::numeric_limits<double>::quiet_NaN();
Points const kSquare{{0, 0}, {4, 0}, {4, 4}, {0, 4}};

void expectPlainAnswers(OpenContour const& contour, Outline const& outline,
                        Questions const& questions)
{
    auto const answers = ask(contour, questions);
    EXPECT_EQ(difference(answers, askPlain(outline, questions)), "");
    EXPECT_EQ(difference(ask(contour, questions), answers), "") << "asked again";
}

void expectPlainCrossings(Outline const& outline, Outline const& other)
{
    Points crossings;
    for (auto const& edge : qnPlain::edges(other.points, other.closed))
        for (auto const& p :
             qnPlain::Contour(outline.points, outline.closed).intersections(edge, true))
            crossings.push_back(p);
    qcContour const contour(outline.points, outline.closed);
    EXPECT_EQ(contour.intersections(qcContour(other.points, other.closed)), crossings);
}

TEST(ContourQueries, AnswerAsThePlainStepsDo)
{
    std::mt19937 random(11);
    auto outlines = named();
    for (auto const& outline : randomised(5, rounds(900)))
        outlines.push_back(outline);
    for (auto const& outline : outlines) {
        SCOPED_TRACE(outline.name);
        auto const questions = questionsAbout(outline, random);
        OpenContour const contour(outline.points, outline.closed);
        expectPlainAnswers(contour, outline, questions);
        auto const segments = contour.lineSegs();
        auto const edges = qnPlain::edges(outline.points, outline.closed);
        ASSERT_EQ(segments.size(), edges.size());
        ASSERT_EQ(contour.validLine().size(), edges.size());
        for (std::size_t k = 0; k < edges.size(); ++k) {
            bool const valid = !qfRealEq(edges[k].p1(), edges[k].p2(), 1e-15);
            EXPECT_EQ(contour.validLine()[k], valid);
            EXPECT_EQ(segments[k], valid ? edges[k] : qcLineSeg());
        }
        if (outline.points.size() >= 2)
            expectPlainCrossings(outline, outlines[random() % outlines.size()]);
    }
}

/// Points and questions with NaN, infinities, the largest and the smallest numbers in every place:
/// the plain steps and the library agree, and neither stumbles. Some outlines are finite and of
/// many vertices: these answer through an index, unless the question is not finite.
TEST(ContourQueries, AnswerAsThePlainStepsDoWhereNumbersAreNotFinite)
{
    double const odd[] = {kNaN, kInf, -kInf, 1e308, -1e308, 5e-324, 1e-308, -0.0, 3e9, 0.5, 1, 2};
    std::mt19937 random(17);
    auto const pick = [&] { return odd[random() % 12]; };
    std::vector<Outline> former;
    for (int i = 0; i < rounds(600); ++i) {
        SCOPED_TRACE(i);
        Outline outline{"", {}, i % 3 != 0};
        std::size_t const n = 2 + random() % (i % 40 == 0 ? 200 : 7);
        while (outline.points.size() < n)
            outline.points.push_back(i % 80 && random() % 4 == 0
                                         ? qcVector<2>(pick(), pick())
                                         : qcVector<2>(uniform(random, -2, 3),
                                                       i % 80 ? pick() : uniform(random, -2, 3)));
        Questions questions = questionsAbout(outline, random);
        questions.places.emplace_back(pick(), pick());
        questions.segments.emplace_back(qcVector<2>(pick(), pick()), qcVector<2>(-1, 2));
        questions.tolerances = {1, kInf, kNaN, 1e-300, 0};
        questions.angles = {kNaN, kInf, 0, 1, kNaN, -4};
        questions.xforms.push_back({{kNaN, 0, 0, 1}, {0, 0}});
        questions.xforms.push_back({{1, 0, 0, 1}, {kInf, 0}});
        OpenContour const contour(outline.points, outline.closed);
        expectPlainAnswers(contour, outline, questions);
        EXPECT_TRUE(contour == OpenContour(contour)) << "equal to its copy";
        former.push_back(outline);
        for (auto const& other :
             {former[random() % former.size()], former[former.size() / 41 * 40]})
            expectPlainCrossings(outline, other);
    }
    EXPECT_TRUE(
        std::isnan(OpenContour({{kNaN, 0}, {kNaN, 1}}).extremalVertexPosition(qcRadian(0)).x()));
}

TEST(ContourQueries, DifferencesMayLeaveTheRangeOfDouble)
{
    double const size = 1.7e308;
    Points const triangle{{-size, -size}, {size, -size}, {0, size}};
    qcRegion const region(triangle, qcContourDefs::eIgnore);
    for (int i = 0; i < 8; ++i) {  // often enough for an index
        qcVector<2> const place(size * 0.1 * i, size * 0.05 * (i - 4));
        EXPECT_EQ(region.inside(place, false), qnPlain::inside({triangle, {}}, place, false));
    }
}

TEST(ContourQueries, KnownAnswersAndTies)
{
    OpenContour const corner({{0, 0}, {3, 0}, {3, 4}}, false), square(kSquare);
    EXPECT_EQ(corner.length(), 7);
    EXPECT_EQ(corner.medianFeatureSize(), 3);
    EXPECT_LT(corner.meanPosition().distance({16.5 / 7, 8 / 7.0}), 1e-14);
    EXPECT_EQ(corner.encloseCircle(qcContourDefs::eFarthestPair), qcCircle({1.5, 2}, 2.5));
    EXPECT_EQ(corner.diameter(qcContourDefs::eFromFirstPoint), 10);
    EXPECT_EQ(corner.encloseRect({{1, 0, 0, 2}, {0, 0}}), qcRect({0, 0}, {3, 8}));
    EXPECT_EQ(corner.closestPoint({9, 1}, false), qcVector<2>(3, 1));
    EXPECT_EQ(square.closestVertexIndex({2, 2}), 0);
    EXPECT_EQ(square.closestPoint({2, 2}, false), qcVector<2>(0, 2)) << "the closing edge is first";
    EXPECT_EQ(square.extremalVertexIndex(qcRadian(0)), 1);
    EXPECT_EQ(square.extremalVertexPosition(qcRadian(3.141592653589793)), qcVector<2>(0, 0));
    Points const hook{{0, 0}, {0, 2}, {2, 2}, {1, 3}};
    EXPECT_TRUE(qcContour(hook).isSelfIntersecting());
    EXPECT_FALSE(qcContour(hook, false).isSelfIntersecting()) << "crosses only when closed";
    EXPECT_TRUE(qcContour({{0, 0}, {4, 0}, {4, 4}, {2, 0}}).isSelfIntersecting()) << "touches";
    // The order is that of the cells, not of the indices; exactly as far is too far.
    EXPECT_EQ(OpenContour({{0.9, 0}, {0.1, 0}}).vertexIndex({0.5, 0}, 1), (std::vector<int>{1, 0}));
    EXPECT_EQ(OpenContour({{0, 0}, {4, 0}}).vertexIndex({0.5, 0}, 0.5), std::vector<int>());
    // Squares that vanish: the distance is 0, below any tolerance.
    EXPECT_EQ(OpenContour({{1e-200, 0}, {2e-200, 0}}).vertexIndex({1e-200, 0}, 1e-300),
              (std::vector<int>{0, 1}));
    // Bounds that begin with NaN are met by nothing, also where no edge ends at that point.
    Points line{{0, kNaN}};
    while (line.size() < 40)
        line.emplace_back(static_cast<double>(line.size()), 0);
    OpenContour const unbounded(line, false);
    EXPECT_TRUE(unbounded.intersections(qcContour({{20.5, -1}, {20.5, 1}})).empty());
    EXPECT_EQ(square.intersections(qcLineSeg({5, 2}, {-1, 2}), false), (Points{{4, 2}, {0, 2}}));
    EXPECT_EQ(square.intersections(qcLineSeg({-1, 1}, {1, -1}), false), Points(2)) << "a corner";
    // Stops within 1e-6, but the boxes do not touch.
    EXPECT_EQ(square.intersections(qcLineSeg({2, 2}, {2, 4 - 5e-7}), true), Points());
    for (int const mode : {-1, 2})
        try {
            qcContour().encloseCircle(static_cast<qcContourDefs::DiameterMode>(mode));
            ADD_FAILURE() << mode;
        } catch (qcContourDefs::BadParams const& e) {
            EXPECT_EQ(e.message(), L"diameterMode is not one of the valid enums");
        }
}

}  // namespace
