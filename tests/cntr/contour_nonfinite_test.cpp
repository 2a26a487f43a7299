// What queries give where coordinates or arguments are not finite.
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

double const kInf = std::numeric_limits<double>::infinity();
double const kNaN = std::numeric_limits<double>::quiet_NaN();

/// Points and questions with NaN, infinities, the largest and the smallest numbers in every place:
/// the plain steps and the library agree, and neither stumbles. Some outlines are finite and of
/// many vertices: these answer through an index, unless the question is not finite.
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
            outline.points.push_back(
                i % 80 && random() % 4 == 0
                    ? qcVector<2>(pick(), pick())
                    : qcVector<2>(uniform(random, -2, 3), i % 80 ? pick() : 2));
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
        EXPECT_TRUE(contour == OpenContour(contour)) << "equal to its copy";
    }
    EXPECT_TRUE(
        std::isnan(OpenContour({{kNaN, 0}, {kNaN, 1}}).extremalVertexPosition(qcRadian(0)).x()));
}

TEST(ContourNonFinite, DifferencesMayLeaveTheRangeOfDouble)
{
    double const size = 1.7e308;
    std::vector<qcVector<2>> const triangle{{-size, -size}, {size, -size}, {0, size}};
    qcRegion const region(triangle, qcContourDefs::eIgnore);
    for (int i = 0; i < 8; ++i) {  // often enough for an index
        qcVector<2> const place(size * 0.1 * i, size * 0.05 * (i - 4));
        EXPECT_EQ(region.inside(place, false), qnPlain::inside({triangle, {}}, place, false));
    }
}

}  // namespace
