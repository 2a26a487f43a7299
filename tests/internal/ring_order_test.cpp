// The order of a ring that grows, against a plain list.
#include "cntr/internal/ring_order.h"

#include "tests/support/rounds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <vector>

namespace {

using qnInternal::RingOrder;
using qnTest::rounds;

/// Checks all against the numbers as they come behind number 0, seen from a number of the list.
void expectOrder(RingOrder const& ring, std::vector<std::size_t> const& list, std::size_t start)
{
    ASSERT_EQ(ring.size(), list.size());
    std::size_t number = list[start];
    for (std::size_t i = 0; i < list.size(); ++i) {
        std::size_t const next = ring.next(number);
        EXPECT_EQ(next, list[(start + i + 1) % list.size()]);
        EXPECT_EQ(ring.previous(next), number);
        if (i + 1 < list.size()) {
            EXPECT_LT(ring.way(list[start], number), ring.way(list[start], next));
        }
        number = next;
    }
}

TEST(RingOrder, IsThatOfAPlainListHoweverRunsAreInserted)
{
    std::mt19937 random(5);
    for (int run = 0; run < rounds(20); ++run) {
        SCOPED_TRACE(run);
        std::size_t const first = 1 + random() % 6;
        RingOrder ring(first);
        std::vector<std::size_t> list;
        for (std::size_t i = 0; i < first; ++i)
            list.push_back(i);
        // Anywhere, always behind one number, or always behind the run before: the crowded cases.
        std::size_t place = random() % first;
        for (int step = 0; step < 60; ++step) {
            std::size_t const count = 1 + random() % 40;
            auto const at = std::find(list.begin(), list.end(), place);
            std::vector<std::size_t> added(count);
            for (std::size_t i = 0; i < count; ++i)
                added[i] = ring.size() + i;
            ring.insertBehind(place, count);
            list.insert(std::next(at), added.begin(), added.end());
            if (run % 3 == 0)
                place = list[random() % list.size()];
            else if (run % 3 == 1)
                place = added[random() % count];
            expectOrder(ring, list, random() % list.size());
        }
    }
}

}  // namespace
