// Edges said to be clear meet nothing between their ends, by the exact test of every edge.
#include "cntr/internal/clear_edges.h"
#include "tests/support/outlines.h"
#include "tests/support/plain_contour.h"
#include "tests/support/rounds.h"

#include <gtest/gtest.h>

using namespace qnInternal;

namespace {

/// A circle with vertices in each other's place, so that an edge crosses the next but one.
qnOutlines::Outline circleWithKnots()
{
    constexpr int kCount = 300;
    std::vector<qcVector<2>> points;
    for (int i = 0; i < kCount; ++i)
        points.emplace_back(100.0, qcRadian(2 * qnAngle::kPi * i / kCount));
    for (std::size_t i = 3; i + 1 < points.size(); i += 27)
        std::swap(points[i], points[i + 1]);
    return {"knots", points, true};
}

bool meetsAny(std::vector<qcVector<2>> const& points, HitQuery const& query)
{
    bool meets = false;
    forEachEdge(points, true, [&](std::size_t, qcVector<2> const& from, qcVector<2> const& to) {
        meets = meets || query.meets(from, to);
    });
    return meets;
}

}  // namespace

TEST(ClearEdges, MeetNothingBetweenTheirEnds)
{
    int clear = 0, others = 0, crossed = 0, clearAlongTheCurve = 0;
    auto outlines = qnOutlines::randomised(43, qnTest::rounds(600));
    outlines.push_back(circleWithKnots());
    for (auto const& outline : qnOutlines::foldedBack(44, qnTest::rounds(8)))
        outlines.push_back(outline);
    for (auto const& outline : outlines) {
        auto const& points = outline.points;
        if (points.size() <= kMaxPlainEdges)
            continue;
        SCOPED_TRACE(outline.name);
        EdgeIndex const index(points, true);
        if (!index.regular())
            continue;
        ClearEdges edges(points, &index);
        for (std::size_t i = 0; i < points.size() + points.size() / 8; ++i) {
            std::size_t const k = i % points.size();
            bool const isClear = edges.isClear(k);
            bool const meets =
                meetsAny(points, HitQuery(edgeStart(points, true, k), points[k], false)) ||
                meetsAny(points, HitQuery(points[k], edgeStart(points, true, k), false));
            EXPECT_FALSE(isClear && meets) << k;
            clear += isClear;
            others += !isClear;
            crossed += meets;
            clearAlongTheCurve += isClear && !index.inOutlineOrder();
        }
    }
    EXPECT_GT(clear, 300);
    EXPECT_GT(others, 1000);
    EXPECT_GT(crossed, 300);
    EXPECT_GT(clearAlongTheCurve, 300);
}

TEST(ClearEdges, AreNotLookedForOnShortOrMuchCrossedWalksNorWithoutAnIndex)
{
    auto const points = circleWithKnots().points;
    EdgeIndex const index(points, true);
    ClearEdges edges(points, &index);
    EXPECT_FALSE(edges.isClear(100));
    int asked = 1;
    while (!edges.isClear(100))
        ASSERT_LT(++asked, 100);
    EXPECT_GT(asked, 10);
    EXPECT_FALSE(edges.isClear(3)) << "one of a knot";
    ClearEdges crossedOften(points, &index);
    for (std::size_t i = 0; i < 2 * points.size(); ++i) {
        EXPECT_FALSE(crossedOften.isClear(100));
        if (i % 4 == 3)
            crossedOften.noteCrossing();
    }
    ClearEdges unknown(points, nullptr);
    for (std::size_t k = 0; k < 2 * points.size(); ++k)
        EXPECT_FALSE(unknown.isClear(k % points.size()));
}
