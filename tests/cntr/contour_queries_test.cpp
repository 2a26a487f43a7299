// Every query of a contour against its plain transcription, and the answers that are known.
#include "tests/support/contour_answers.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace qnOutlines;

namespace {

using Points = std::vector<qcVector<2>>;

Points const kSquare{{0, 0}, {4, 0}, {4, 4}, {0, 4}};

TEST(ContourQueries, AnswerAsThePlainStepsDo)
{
    std::mt19937 random(11);
    auto outlines = named();
    for (auto const& outline : randomised(5, 900))
        outlines.push_back(outline);
    for (auto const& outline : outlines) {
        SCOPED_TRACE(outline.name);
        auto const questions = questionsAbout(outline, random);
        OpenContour const contour(outline.points, outline.closed);
        auto const answers = ask(contour, questions);
        ASSERT_EQ(difference(answers, askPlain(outline, questions)), "");
        ASSERT_EQ(difference(ask(contour, questions), answers), "") << "asked again";
        auto const segments = contour.lineSegs();
        auto const edges = qnPlain::edges(outline.points, outline.closed);
        ASSERT_EQ(segments.size(), edges.size());
        ASSERT_EQ(contour.validLine().size(), edges.size());
        for (std::size_t k = 0; k < edges.size(); ++k)
            EXPECT_EQ(segments[k], contour.validLine()[k] ? edges[k] : qcLineSeg());
    }
}

TEST(ContourQueries, CrossOneContourWithAnother)
{
    auto const outlines = randomised(8, 120);
    for (std::size_t i = 1; i < outlines.size(); ++i) {
        SCOPED_TRACE(outlines[i].name);
        auto const& mine = outlines[i];
        auto const& other = outlines[i - 1];
        if (mine.points.size() < 2)
            continue;
        Points expected;
        for (auto const& edge : qnPlain::edges(other.points, other.closed))
            for (auto const& p : qnPlain::crossings(mine.points, mine.closed, edge, true).points)
                expected.push_back(p);
        EXPECT_EQ(qcContour(mine.points, mine.closed)
                      .intersections(qcContour(other.points, other.closed)),
                  expected);
    }
}

TEST(ContourQueries, KnownMeasures)
{
    struct {
        char const* name;
        Points points;
        bool closed;
        double length, median;
        qcVector<2> mean;
    } const cases[] = {
        {"open 3-4", {{0, 0}, {3, 0}, {3, 4}}, false, 7, 3, {3 * 1.5 / 7 + 12 / 7.0, 8 / 7.0}},
        {"closed 3-4-5", {{0, 0}, {3, 0}, {3, 4}}, true, 12, 4, {24 / 12.0, 18 / 12.0}},
        {"open corner", {{0, 0}, {2, 0}, {2, 2}}, false, 4, 2, {1.5, 0.5}},
        {"flat", {{0, 0}, {4, 0}, {4, 1}, {0, 1}}, true, 10, 1, {2, 0.5}},
        {"1-2-3", {{0, 0}, {1, 0}, {3, 0}, {6, 0}}, false, 6, 2, {3, 0}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        OpenContour const contour(c.points, c.closed);
        EXPECT_EQ(contour.length(), c.length);
        EXPECT_EQ(contour.medianFeatureSize(), c.median);
        EXPECT_LT(contour.meanPosition().distance(c.mean), 1e-14);
    }
}

TEST(ContourQueries, TiesGoToTheFirst)
{
    OpenContour const square(kSquare);
    EXPECT_EQ(square.closestVertexIndex({2, 2}), 0);
    EXPECT_EQ(square.closestPoint({2, 2}, false), qcVector<2>(0, 2)) << "the closing edge is first";
    EXPECT_EQ(square.extremalVertexIndex(qcRadian(0)), 1);
    EXPECT_EQ(square.extremalVertexIndex(qcRadian(1.5707963267948966)), 2);
    EXPECT_EQ(square.extremalVertexPosition(qcRadian(3.141592653589793)), qcVector<2>(0, 0));
    OpenContour const line({{0, 0}, {2, 0}}, false);
    EXPECT_EQ(line.closestPoint({1, 5}, false), qcVector<2>(1, 0));
    EXPECT_EQ(line.closestPoint({1, 5}, true), qcVector<2>(0, 0));
    EXPECT_EQ(line.closestPoint({9, 5}, false), qcVector<2>(2, 0)) << "beyond the end";
    OpenContour const near({{0, 0}, {0.4, 0}, {5, 5}});
    EXPECT_EQ(near.vertexIndex({0.1, 0}, 0.5), (std::vector<int>{0, 1}));
    EXPECT_EQ(near.vertexIndex({0.4 + 0.5, 0}, 0.5), std::vector<int>()) << "exactly as far";
    EXPECT_EQ(near.vertexIndex({0, 0}, -1), std::vector<int>());
    // The order is that of the cells, not of the indices.
    EXPECT_EQ(OpenContour({{0.9, 0}, {0.1, 0}}).vertexIndex({0.5, 0}, 1), (std::vector<int>{1, 0}));
}

TEST(ContourQueries, SegmentsMeetTheSquare)
{
    struct {
        char const* name;
        qcLineSeg segment;
        bool touching;
        Points points;
        std::vector<int> edges;
    } const cases[] = {
        {"across", {{-1, 2}, {5, 2}}, false, {{0, 2}, {4, 2}}, {0, 2}},
        {"back across", {{5, 2}, {-1, 2}}, false, {{4, 2}, {0, 2}}, {2, 0}},
        {"in", {{2, -1}, {2, 1}}, false, {{2, 0}}, {1}},
        {"from the border, ends left out", {{2, 0}, {2, 2}}, false, {}, {}},
        {"from the border", {{2, 0}, {2, 2}}, true, {{2, 0}}, {1}},
        {"along an edge", {{-1, 0}, {5, 0}}, true, {{0, 0}, {4, 0}}, {0, 2}},
        {"corner to corner",
         {{-1, -1}, {5, 5}},
         false,
         {{0, 0}, {0, 0}, {4, 4}, {4, 4}},
         {0, 1, 2, 3}},
        {"stops within 1e-6, but the boxes do not touch", {{2, 2}, {2, 4 - 5e-7}}, true, {}, {}},
        {"passes by", {{5, 5}, {9, 6}}, true, {}, {}},
        {"of no length", {{2, 0}, {2, 0}}, true, {}, {}},
    };
    OpenContour const square(kSquare);
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        std::vector<int> edges{9, 9};
        EXPECT_EQ(square.intersections(c.segment, edges, c.touching), c.points);
        EXPECT_EQ(edges, c.edges);
        EXPECT_EQ(square.intersections(c.segment, c.touching), c.points);
    }
}

TEST(ContourQueries, TellCrossingFromTouching)
{
    struct {
        char const* name;
        Points points;
        bool closed, crosses;
    } const cases[] = {
        {"square", kSquare, true, false},
        {"bow-tie", {{0, 0}, {2, 2}, {2, 0}, {0, 2}}, true, true},
        {"vertex resting on a far edge", {{0, 0}, {4, 0}, {4, 4}, {2, 0}}, true, true},
        {"line that doubles back", {{0, 0}, {2, 0}, {1, 0}}, false, false},
        {"cross only when closed", {{0, 0}, {0, 2}, {2, 2}, {1, 3}}, false, false},
        {"the same closed", {{0, 0}, {0, 2}, {2, 2}, {1, 3}}, true, true},
        {"one point", {{1, 1}}, true, false},
        {"nothing", {}, true, false},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(qcContour(c.points, c.closed).isSelfIntersecting(), c.crosses);
    }
}

TEST(ContourQueries, EnclosingShapes)
{
    qcContour const triangle({{0, 0}, {4, 0}, {4, 3}});
    EXPECT_EQ(triangle.encloseCircle(qcContourDefs::eFarthestPair), qcCircle({2, 1.5}, 2.5));
    EXPECT_EQ(triangle.encloseCircle(qcContourDefs::eFromFirstPoint), qcCircle({0, 0}, 5));
    EXPECT_EQ(triangle.diameter(qcContourDefs::eFarthestPair), 5);
    EXPECT_EQ(triangle.diameter(qcContourDefs::eFromFirstPoint), 10);
    qcContour const three({{1, 2}, {3, -1}, {0, 0}});
    EXPECT_EQ(three.encloseRect(qcXform<2>::I), qcRect({0, -1}, {3, 3}));
    EXPECT_EQ(three.encloseRect({{1, 0, 0, 2}, {0, 0}}), qcRect({0, -2}, {3, 6}));
    for (int const mode : {-1, 2})
        try {
            qcContour().encloseCircle(static_cast<qcContourDefs::DiameterMode>(mode));
            ADD_FAILURE() << mode;
        } catch (qcContourDefs::BadParams const& e) {
            EXPECT_EQ(e.message(), L"diameterMode is not one of the valid enums");
        }
}

}  // namespace
