// The median edge is that of the sorted lengths, however they lie.
#include "cntr/internal/edge_walk.h"
#include "cntr/internal/median_edge.h"
#include "tests/support/outlines.h"
#include "tests/support/rounds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

using namespace qnInternal;
using qnOutlines::uniform;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// The length of step k of a kind: alike, one of two by turns, loose, growing, or now and then beyond all
/// numbers.
double step(int kind, std::size_t k, std::mt19937& random)
{
    switch (kind) {
    case 0:
        return 1;
    case 1:
        return k % 2 == 0 ? 1 : 3;
    case 2:
        return uniform(random, 0, 1);
    case 3:
        return static_cast<double>(k);
    case 4:
        return k % 16 == 0 ? 100 : uniform(random, 1, 2);  // sampled are the odd ones out
    default:
        return random() % 300 == 0 ? kInfinity : uniform(random, 0, 1);
    }
}

}  // namespace

TEST(MedianEdge, IsThatOfSortedLengths)
{
    std::mt19937 random(17);
    int notNumbers = 0;
    for (int i = 0; i < qnTest::rounds(300); ++i) {
        std::size_t const count =
            i % 5 == 0 ? 1024 + random() % 2 : 2 + random() % (i % 3 == 0 ? 2000 : 300);
        std::vector<qcVector<2>> points{{0, 0}};
        while (points.size() < count)
            points.push_back(points.back() + qcVector<2>(step(i % 6, points.size(), random), 0));
        if (i % 4 == 1)
            std::shuffle(points.begin(), points.end(), random);
        for (bool const closed : {false, true}) {
            std::vector<double> lengths;
            forEachEdge(points, closed,
                        [&](std::size_t, qcVector<2> const& from, qcVector<2> const& to) {
                            lengths.push_back(to.distance(from));
                        });
            auto const numbersEnd = std::partition(lengths.begin(), lengths.end(),
                                                   [](double length) { return length == length; });
            std::sort(lengths.begin(), numbersEnd, std::greater<>());
            double const middle = lengths[lengths.size() / 2];
            double const found = medianEdgeLength(points, closed);
            EXPECT_TRUE(found == middle || (found != found && middle != middle)) << count;
            notNumbers += middle != middle;
        }
    }
    EXPECT_GT(notNumbers, 5);
}

TEST(MedianEdge, IsFoundJustBeyondTheLengthsSampled)
{
    // Half of the edges are long, those sampled among them; the one in the middle is the longest of the rest.
    std::vector<qcVector<2>> points{{0, 0}};
    for (std::size_t k = 0; k < 1024; ++k)
        points.push_back(points.back() + qcVector<2>(k % 2 == 0 ? 3 : k == 9 ? 1.5 : 1, 0));
    EXPECT_EQ(medianEdgeLength(points, false), 1.5);
}
