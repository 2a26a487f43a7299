// Inputs for which a quick test without room for rounding or for tolerances would answer other than the plain one.
#include "cntr/internal/edge_hits.h"
#include "cntr/internal/edge_walk.h"
#include "cntr/internal/parity.h"
#include "tests/support/outlines.h"
#include "tests/support/plain_contour.h"
#include "tests/support/plain_region.h"

#include <cntr/region.h>

#include <gtest/gtest.h>

#include <random>

using namespace qnInternal;

namespace {

using Points = std::vector<qcVector<2>>;

bool isInsideByParity(Points const& outline, qcVector<2> const& point)
{
    ParityCount count(point, 0, 0);
    forEachEdge(outline, true, [&](std::size_t, qcVector<2> const& from, qcVector<2> const& to) {
        count.add(from, to);
    });
    return *count.inside();
}

TEST(Margins, ParityIsNotAskedWhereTheRayCountsOtherwise)
{
    struct {
        char const* name;
        double unit;
        Points outline;
        qcVector<2> point;
    } const cases[] = {
        {"the ray passes a vertex at 0.99e-6 and meets one of its edges beyond the end",
         1e-9,
         {{1e9, 0},
          {1e9, 1e9},
          {820679000, 1e9},
          {9906, 1971},
          {-98491403, 1e9},
          {-1e9, 1e9},
          {-1e9, 5e8},
          {-1e9, 0},
          {-1e9, -5e8},
          {-1e9, -1e9},
          {-5e8, -1e9},
          {0, -1e9},
          {5e8, -1e9},
          {1e9, -1e9},
          {1e9, -6e8},
          {1e9, -3e8}},
         {0, 0}},
        {"the ray ends beyond the outline, but within 1e-6 of its last edge",
         1e-7,
         {{0, 0}, {2, -51}, {-56, 34}, {33, -37}, {-33, 49}, {35, -5}, {8, 68}, {56, 40}},
         {-55, -41}},
        {"meeting points are rounded by more than 1e-6",
         1e10,
         {{0, 0}, {10, 1}, {9, 11}, {-1, 10}},
         {4, 5}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        Points outline;
        for (auto const& point : c.outline)
            outline.push_back(point * c.unit);
        qcVector<2> const point = c.point * c.unit;
        bool const inside = qnPlain::insideCount(outline, point, false) % 2 == 1;
        EXPECT_NE(isInsideByParity(outline, point), inside) << "or the case shows nothing";
        qcRegion const region(outline);
        for (int i = 0; i < 20; ++i)  // the first ones by all edges, later ones by slabs
            EXPECT_EQ(region.inside(point, false), inside) << i;
    }
}

TEST(Margins, DirectionsAtTheLimitOfBeingParallelAreToldApartExactly)
{
    std::mt19937 random(11);
    int meeting = 0;
    int const count = 2000;
    for (int i = 0; i < count; ++i) {
        qcVector<2> const a(qnOutlines::uniform(random, 1, 9), 0);
        double const x = qnOutlines::uniform(random, 1, 9);
        double const ulps = static_cast<double>(random() % 9) - 4;
        qcVector<2> const from(x, x * 1e-10 * (1 + ulps * 0x1p-52));
        Points const edge{from, -from};
        auto const met = qnPlain::Contour(edge, false).intersections(qcLineSeg(a, -a), true);
        EXPECT_EQ(HitQuery(a, -a, true).meets(from, -from).has_value(), !met.empty()) << i;
        meeting += !met.empty();
    }
    EXPECT_GT(meeting, count / 4);
    EXPECT_LT(meeting, count * 3 / 4);
}

}  // namespace
