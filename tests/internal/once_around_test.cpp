// An outline that is seen to go once around a point does not cross itself by the plain steps either.
#include "cntr/internal/box_of_points.h"
#include "cntr/internal/once_around.h"
#include "tests/support/outlines.h"
#include "tests/support/plain_contour.h"
#include "tests/support/rounds.h"

#include <qc/core/angle.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

using namespace qnInternal;
using Points = std::vector<qcVector<2>>;
using qnOutlines::uniform;

bool isSeen(Points const& points)
{
    double const least = leastTriangleOnceAround(points);
    return least > 0 && keepsEdgesApart(least, boxOfPoints(points).box);
}

/// Around the origin, either way, now and then twice or with two vertices exchanged; some with spikes
/// and notches so small that edges are within the tolerance of each other.
Points around(std::mt19937& random)
{
    bool const small = random() % 2;  // hardly larger than the tolerance
    std::size_t const count = small ? 4 + random() % 4 : 3 + random() % 30;
    double const size = std::pow(10, small ? uniform(random, -6, -4) : uniform(random, -4, 3));
    double const turn = (random() % 2 ? 2 : -2) * qnAngle::kPi * (random() % 8 == 0 ? 2 : 1);
    double const notch = uniform(random, 0, 1);
    bool const even = random() % 2;
    Points points;
    for (std::size_t k = 0; k < count; ++k) {
        double const part = (double(k) + (even ? 0 : uniform(random, 0, 1))) / double(count);
        points.emplace_back(size * uniform(random, notch, 1), qcRadian(turn * part));
    }
    if (random() % 4 == 0)
        std::swap(points[random() % count], points[random() % count]);
    return points;
}

TEST(OnceAround, WhatIsSeenDoesNotCrossItself)
{
    std::mt19937 random(31);
    int seen = 0, crossing = 0, neither = 0;
    for (int run = 0; run < qnTest::rounds(40000); ++run) {
        auto const points = around(random);
        bool crosses = false;
        for (bool const closed : {false, true})
            crosses = crosses || qnPlain::Contour(points, closed).isSelfIntersecting();
        bool const sure = isSeen(points);
        EXPECT_FALSE(sure && crosses) << run;
        ++(sure ? seen : crosses ? crossing : neither);
    }
    EXPECT_GT(seen, 3000);
    EXPECT_GT(crossing, 3000);
    EXPECT_GT(neither, 300);
}

TEST(OnceAround, ConvexOutlinesAreSeenAndWhatHasNoPlaceIsNot)
{
    EXPECT_TRUE(isSeen({{0, 0}, {4, 0}, {4, 4}, {0, 4}}));
    EXPECT_TRUE(isSeen({{0, 4}, {4, 4}, {5, 2}, {4, 0}, {0, 0}}));
    EXPECT_FALSE(isSeen({{0, 0}, {4, 0}, {4, 4}, {4, 4}, {0, 4}})) << "a vertex twice";
    EXPECT_FALSE(isSeen({{0, 0}, {2, 2}, {2, 0}, {0, 2}}));
    EXPECT_EQ(leastTriangleOnceAround({{0, 0}, {1, 0}}), 0.0);
    double const inf = std::numeric_limits<double>::infinity();
    Points huge{{0, 0}, {4, 0}, {4, 4}, {0, 4}};
    for (auto& point : huge)
        point = point * 1e160;
    EXPECT_FALSE(isSeen(huge));
    EXPECT_FALSE(keepsEdgesApart(inf, {{0, 0}, {inf, 1}}));
}

}  // namespace
